#include "Dictionary.h"
#include "DictionaryIterator.h"
#include "VirtualSlot.h"

#include <cstddef>
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

template<typename Operation>
std::ptrdiff_t slotOf(Operation operation)
{
    EXPECT_TRUE(isVirtualOperation(operation));
    return virtualSlot(operation);
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

    EXPECT_FALSE(isVirtualOperation(&DictionaryIterator::atEnd));
    EXPECT_FALSE(isVirtualOperation(&DictionaryIterator::next));
    EXPECT_FALSE(isVirtualOperation(&DictionaryIterator::current));
    EXPECT_FALSE(isVirtualOperation(&DictionaryIterator::key));
    EXPECT_FALSE(isVirtualOperation(&DictionaryIterator::value));
    EXPECT_FALSE(isVirtualOperation(&DictionaryIterator::getValueAs));
    EXPECT_FALSE(isVirtualOperation(&DictionaryIterator::currentDictionary));
    EXPECT_FALSE(isVirtualOperation(&DictionaryIterator::firstDictionary));
    EXPECT_FALSE(isVirtualOperation(&DictionaryIterator::nextDictionary));
}

TEST(SlotOrder, NothingElseOfItemAndDictionaryIsVirtual)
{
    EXPECT_FALSE(isVirtualOperation(&Item::getName));
    EXPECT_FALSE(isVirtualOperation(&Item::setName));
    EXPECT_FALSE(isVirtualOperation(&Dictionary::clear));
    EXPECT_FALSE(isVirtualOperation<void (Dictionary::*)()>(&Dictionary::removeAllItems));
    EXPECT_FALSE(isVirtualOperation<void (Dictionary::*)(Item&)>(&Dictionary::removeAllItems));
    EXPECT_FALSE(isVirtualOperation<void (Dictionary::*)(Text)>(&Dictionary::removeItem));
    EXPECT_FALSE(isVirtualOperation<void (Dictionary::*)(Item&)>(&Dictionary::removeItem));
    EXPECT_FALSE(isVirtualOperation(&Dictionary::doRemoveItem));
    EXPECT_FALSE(isVirtualOperation(&Dictionary::getFirstItem));
    EXPECT_FALSE(isVirtualOperation(&Dictionary::setItem));
    EXPECT_FALSE(isVirtualOperation<void (Dictionary::*)(Text, Text)>(&Dictionary::addValue));
    EXPECT_FALSE(isVirtualOperation<void (Dictionary::*)(Text, int)>(&Dictionary::addValue));
    EXPECT_FALSE(isVirtualOperation(&Dictionary::addDictionary));
    EXPECT_FALSE(isVirtualOperation(&Dictionary::mergeDictionary));
    EXPECT_FALSE(isVirtualOperation(&Dictionary::loadFromFile));
    EXPECT_FALSE(isVirtualOperation(&Dictionary::saveToFile));
    EXPECT_FALSE(isVirtualOperation(&Dictionary::doFindItems));
    EXPECT_FALSE(isVirtualOperation(&Dictionary::doFindValues));
    EXPECT_FALSE(isVirtualOperation(&Dictionary::doGetItemPath));
}

} // namespace
