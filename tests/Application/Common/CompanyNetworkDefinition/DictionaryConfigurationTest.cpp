#include "DictionaryConfiguration.h"

#include "DedicatedAPNConfiguration.h"
#include "IntBasicItem.h"
#include "MonitoringConfiguration.h"
#include "PublishedTracer.h"
#include "VirtualSlot.h"

#include <type_traits>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::HasSubstr;
using testing::Not;

// A section is its dictionary and nothing else; a dedicated APN has two sub-sections beside it.
static_assert(sizeof(DictionaryConfiguration) == 2 * sizeof(void*));
static_assert(sizeof(VPNConfiguration) == sizeof(DictionaryConfiguration));
static_assert(sizeof(MonitoringConfiguration) == sizeof(DictionaryConfiguration));
static_assert(sizeof(ProxyConfiguration) == sizeof(DictionaryConfiguration));
static_assert(sizeof(DedicatedAPNConfiguration) == 4 * sizeof(void*));

namespace {

Dictionary sample()
{
    Dictionary dictionary("Section");
    dictionary.addValue("key", "value");
    return dictionary;
}

std::string valueOf(DictionaryConfiguration& section, const std::string& key)
{
    return DictionaryConfiguration::getDictionaryValue(section, key);
}

} // namespace

TEST(DictionaryConfiguration, ValueOfEntry)
{
    Dictionary dictionary = sample();

    EXPECT_EQ(DictionaryConfiguration::getDictionaryValue(dictionary, "key"), "value");
}

TEST(DictionaryConfiguration, ValueOfMissingEntryIsEmpty)
{
    Dictionary dictionary = sample();

    EXPECT_EQ(DictionaryConfiguration::getDictionaryValue(dictionary, "other"), "");
}

TEST(DictionaryConfiguration, ValueOfEntryThatIsNoTextIsEmpty)
{
    Dictionary dictionary;
    dictionary.addValue("number", 5);
    Dictionary inner = sample();
    dictionary.setItem("inner", inner);

    EXPECT_EQ(DictionaryConfiguration::getDictionaryValue(dictionary, "number"), "");
    EXPECT_EQ(DictionaryConfiguration::getDictionaryValue(dictionary, "inner"), "");
}

TEST(DictionaryConfiguration, SetsValueOfExistingEntryInPlace)
{
    Dictionary dictionary = sample();
    const Item* const before = dictionary.getItem(std::string("key"));

    DictionaryConfiguration::setDictionaryValue(dictionary, "key", "new");

    EXPECT_EQ(dictionary.getItem(std::string("key")), before);
    EXPECT_STREQ(dictionary.getValue("key"), "new");
}

TEST(DictionaryConfiguration, AddsEntryThatIsMissing)
{
    Dictionary dictionary = sample();

    DictionaryConfiguration::setDictionaryValue(dictionary, "other", "new");

    EXPECT_STREQ(dictionary.getValue("other"), "new");
    EXPECT_STREQ(dictionary.getValue("key"), "value");
}

TEST(DictionaryConfiguration, SettingReplacesEntryThatIsNoText)
{
    Dictionary dictionary;
    dictionary.addValue("number", 5);
    Dictionary inner = sample();
    dictionary.setItem("inner", inner);

    DictionaryConfiguration::setDictionaryValue(dictionary, "number", "6");
    DictionaryConfiguration::setDictionaryValue(dictionary, "inner", "text");

    EXPECT_STREQ(dictionary.getValue("number"), "6");
    EXPECT_STREQ(dictionary.getValue("inner"), "text");
}

TEST(DictionaryConfiguration, HoldsCopyOfDictionaryWithItsName)
{
    Dictionary dictionary = sample();

    DictionaryConfiguration section(&dictionary);

    Dictionary& held = section;
    EXPECT_NE(&held, &dictionary);
    EXPECT_EQ(held.getName(), "Section");
    EXPECT_TRUE(held.equals(dictionary));
}

TEST(DictionaryConfiguration, DoesNotSeeLaterChangesOfDictionary)
{
    Dictionary dictionary = sample();
    DictionaryConfiguration section(&dictionary);

    dictionary.addValue("key", "changed");
    dictionary.addValue("other", "new");

    EXPECT_EQ(valueOf(section, "key"), "value");
    EXPECT_EQ(valueOf(section, "other"), "");
}

TEST(DictionaryConfiguration, ChangesOfSectionDoNotReachDictionary)
{
    Dictionary dictionary = sample();
    DictionaryConfiguration section(&dictionary);

    DictionaryConfiguration::setDictionaryValue(section, "key", "changed");

    EXPECT_STREQ(dictionary.getValue("key"), "value");
}

TEST(DictionaryConfiguration, CopyHoldsDictionaryOfItsOwn)
{
    Dictionary dictionary = sample();
    DictionaryConfiguration section(&dictionary);

    DictionaryConfiguration copy(section);
    DictionaryConfiguration::setDictionaryValue(section, "key", "changed");

    EXPECT_EQ(valueOf(copy, "key"), "value");
    EXPECT_EQ(static_cast<Dictionary&>(copy).getName(), "Section");
}

TEST(DictionaryConfiguration, AssignmentTakesCopyOfOther)
{
    Dictionary dictionary = sample();
    DictionaryConfiguration source(&dictionary);
    Dictionary other("Other");
    DictionaryConfiguration target(&other);

    target = source;
    DictionaryConfiguration::setDictionaryValue(source, "key", "changed");

    EXPECT_EQ(valueOf(target, "key"), "value");
    EXPECT_EQ(static_cast<Dictionary&>(target).getName(), "Section");
}

TEST(DictionaryConfiguration, AssignmentNeverDestroysDictionaryHeldBefore)
{
    Dictionary dictionary = sample();
    DictionaryConfiguration source(&dictionary);
    DictionaryConfiguration target(&dictionary);
    const Dictionary* const before = &static_cast<Dictionary&>(target);
    const PublishedTracer tracer;

    target = source;

    EXPECT_THAT(tracer.lines(), Not(HasSubstr("Dictionary::destructor")));
    EXPECT_NE(&static_cast<Dictionary&>(target), before);
    EXPECT_STREQ(before->getValue("key"), "value");
}

TEST(DictionaryConfiguration, SelfAssignmentLosesContent)
{
    Dictionary dictionary = sample();
    DictionaryConfiguration section(&dictionary);
    DictionaryConfiguration& same = section;

    section = same;

    Dictionary& held = section;
    EXPECT_EQ(held.getName(), "Section");
    EXPECT_EQ(held.getFirstItem(), nullptr);
}

TEST(DictionaryConfiguration, StoresCopyOfItsDictionaryUnderItsName)
{
    Dictionary dictionary = sample();
    const DictionaryConfiguration section(&dictionary);
    Dictionary parent;

    section.storeIn(parent);

    ASSERT_NE(parent.getItem(std::string("Section")), nullptr);
    EXPECT_NE(parent.getItem(std::string("Section")), &dictionary);
    EXPECT_STREQ(parent.getValue("Section.key"), "value");
}

TEST(DictionaryConfiguration, OperatorDictionaryIsVirtualSlotBehindDestructor)
{
    static_assert(std::has_virtual_destructor_v<DictionaryConfiguration>);

    EXPECT_EQ(virtualSlot(&DictionaryConfiguration::operator Dictionary&), 2);
}
