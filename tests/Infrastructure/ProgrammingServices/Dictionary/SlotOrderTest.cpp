#include "Dictionary.h"
#include "DictionaryIterator.h"

#include <array>
#include <cstddef>
#include <cstring>
#include <list>
#include <string>
#include <type_traits>

#include <gtest/gtest.h>

// The order of the virtual operations, their types and constness are part of the classes'
// interface. Both compilers keep to the Itanium C++ ABI, in which a pointer to a virtual member
// function holds the offset of its slot in the virtual table: so the slot is read from what the
// compiler really laid out. The destructor, whose address cannot be taken, has two slots, and shows
// as a gap of two.
namespace {

class MemberFunction {
public:
    template<typename Function>
    explicit MemberFunction(Function function)
    {
        static_assert(std::is_member_function_pointer_v<Function>);
        static_assert(sizeof(m_parts) == sizeof(function));
        std::memcpy(m_parts.data(), &function, sizeof(function));
    }

#if defined(__x86_64__)
    bool isVirtual() const
    {
        return (m_parts[0] & 1) == 1;
    }
    std::ptrdiff_t offset() const
    {
        return m_parts[0] - 1;
    }
#elif defined(__aarch64__)
    bool isVirtual() const
    {
        return (m_parts[1] & 1) == 1;
    }
    std::ptrdiff_t offset() const
    {
        return m_parts[0];
    }
#else
#error "how does this platform write a pointer to a virtual member function?"
#endif

private:
    std::array<std::ptrdiff_t, 2> m_parts{};
};

template<typename Function>
std::ptrdiff_t slotOf(Function function)
{
    const MemberFunction member(function);
    EXPECT_TRUE(member.isVirtual());
    return member.offset() / static_cast<std::ptrdiff_t>(sizeof(void*));
}

using Text = const std::string&;
using Texts = std::list<const char*>;

TEST(SlotOrder, ItemHasItsOperationsInTheFixedOrder)
{
    EXPECT_EQ((slotOf<bool (Item::*)(const Item&)>(&Item::equals)), 0);
    EXPECT_EQ((slotOf<Item* (Item::*)()>(&Item::clone)), 1);
    EXPECT_EQ((slotOf<const char* (Item::*)(Text) const>(&Item::findValue)), 4);
    EXPECT_EQ((slotOf<Texts (Item::*)(Text)>(&Item::findValues)), 5);
    EXPECT_EQ((slotOf<Dictionary* (Item::*)()>(&Item::getAsDictionary)), 6);
    EXPECT_EQ((slotOf<const char* (Item::*)() const>(&Item::getValue)), 7);
    EXPECT_EQ((slotOf<const char* (Item::*)(Text) const>(&Item::getValue)), 8);
    EXPECT_EQ((slotOf<bool (Item::*)(int&) const>(&Item::getValueAs)), 9);
    EXPECT_EQ((slotOf<bool (Item::*)(Text, int&) const>(&Item::getValueAs)), 10);
    EXPECT_EQ((slotOf<bool (Item::*)(Text)>(&Item::contains)), 11);
    EXPECT_EQ((slotOf<Item* (Item::*)(Text) const>(&Item::getItem)), 12);
    EXPECT_EQ((slotOf<Item* (Item::*)(const char*) const>(&Item::getItem)), 13);
    EXPECT_EQ((slotOf<std::string (Item::*)(Text)>(&Item::marshall)), 14);
    EXPECT_EQ((slotOf<std::string (Item::*)(Text)>(&Item::toString)), 15);
    EXPECT_EQ((slotOf<void (Item::*)(std::stringstream&)>(&Item::unMarshall)), 16);
}

TEST(SlotOrder, DictionaryAddsItsOperationsBehindThoseOfItem)
{
    EXPECT_EQ((slotOf<bool (Dictionary::*)(Text) const>(&Dictionary::hasKey)), 17);
    EXPECT_EQ((slotOf<Texts (Dictionary::*)(Text) const>(&Dictionary::findValues)), 18);
    EXPECT_EQ((slotOf<Item* (Dictionary::*)(Text)>(&Dictionary::findItem)), 19);
    EXPECT_EQ((slotOf<std::list<Item*> (Dictionary::*)(Text)>(&Dictionary::findItems)), 20);
    EXPECT_EQ((slotOf<bool (Dictionary::*)(Item&)>(&Dictionary::contains)), 21);
    EXPECT_EQ((slotOf<std::string (Dictionary::*)(Item&)>(&Dictionary::getItemPath)), 22);
}

TEST(SlotOrder, DictionaryOverridesInTheSlotsOfItem)
{
    EXPECT_EQ((slotOf<bool (Dictionary::*)(const Item&)>(&Dictionary::equals)), 0);
    EXPECT_EQ((slotOf<Item* (Dictionary::*)()>(&Dictionary::clone)), 1);
    EXPECT_EQ((slotOf<const char* (Dictionary::*)(Text) const>(&Dictionary::findValue)), 4);
    EXPECT_EQ((slotOf<Dictionary* (Dictionary::*)()>(&Dictionary::getAsDictionary)), 6);
    EXPECT_EQ((slotOf<const char* (Dictionary::*)(Text) const>(&Dictionary::getValue)), 8);
    EXPECT_EQ((slotOf<bool (Dictionary::*)(Text, int&) const>(&Dictionary::getValueAs)), 10);
    EXPECT_EQ((slotOf<bool (Dictionary::*)(Text)>(&Dictionary::contains)), 11);
    EXPECT_EQ((slotOf<Item* (Dictionary::*)(Text) const>(&Dictionary::getItem)), 12);
    EXPECT_EQ((slotOf<Item* (Dictionary::*)(const char*) const>(&Dictionary::getItem)), 13);
    EXPECT_EQ((slotOf<std::string (Dictionary::*)(Text)>(&Dictionary::marshall)), 14);
    EXPECT_EQ((slotOf<std::string (Dictionary::*)(Text)>(&Dictionary::toString)), 15);
    EXPECT_EQ((slotOf<void (Dictionary::*)(std::stringstream&)>(&Dictionary::unMarshall)), 16);
}

TEST(SlotOrder, TheIteratorHasNoVirtualOperationButItsDestructor)
{
    static_assert(std::has_virtual_destructor_v<DictionaryIterator>);

    EXPECT_FALSE(MemberFunction(&DictionaryIterator::atEnd).isVirtual());
    EXPECT_FALSE(MemberFunction(&DictionaryIterator::next).isVirtual());
    EXPECT_FALSE(MemberFunction(&DictionaryIterator::current).isVirtual());
    EXPECT_FALSE(MemberFunction(&DictionaryIterator::key).isVirtual());
    EXPECT_FALSE(MemberFunction(&DictionaryIterator::value).isVirtual());
    EXPECT_FALSE(MemberFunction(&DictionaryIterator::getValueAs).isVirtual());
    EXPECT_FALSE(MemberFunction(&DictionaryIterator::currentDictionary).isVirtual());
    EXPECT_FALSE(MemberFunction(&DictionaryIterator::firstDictionary).isVirtual());
    EXPECT_FALSE(MemberFunction(&DictionaryIterator::nextDictionary).isVirtual());
}

TEST(SlotOrder, NothingElseOfItemAndDictionaryIsVirtual)
{
    EXPECT_FALSE(MemberFunction(&Item::getName).isVirtual());
    EXPECT_FALSE(MemberFunction(&Item::setName).isVirtual());
    EXPECT_FALSE(MemberFunction(&Dictionary::clear).isVirtual());
    EXPECT_FALSE(MemberFunction(&Dictionary::doRemoveItem).isVirtual());
    EXPECT_FALSE(MemberFunction(&Dictionary::getFirstItem).isVirtual());
    EXPECT_FALSE(MemberFunction(&Dictionary::setItem).isVirtual());
    EXPECT_FALSE(MemberFunction(&Dictionary::addDictionary).isVirtual());
    EXPECT_FALSE(MemberFunction(&Dictionary::mergeDictionary).isVirtual());
    EXPECT_FALSE(MemberFunction(&Dictionary::loadFromFile).isVirtual());
    EXPECT_FALSE(MemberFunction(&Dictionary::saveToFile).isVirtual());
    EXPECT_FALSE(MemberFunction(&Dictionary::doFindItems).isVirtual());
    EXPECT_FALSE(MemberFunction(&Dictionary::doFindValues).isVirtual());
    EXPECT_FALSE(MemberFunction(&Dictionary::doGetItemPath).isVirtual());
}

} // namespace
