#include "BasicItem.h"
#include "IntBasicItem.h"
#include "MarkedCalls.h"

#include <list>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

using TextCalls = testing::TestWithParam<MarkedCall<BasicItem>>;
using IntegerCalls = testing::TestWithParam<MarkedCall<IntBasicItem>>;

TEST_P(TextCalls, AreMarkedWithTheirSignatureAndItem)
{
    BasicItem item("k", "x");

    expectMarked(GetParam().text, &item, [&] { GetParam().run(item); });
}

INSTANTIATE_TEST_SUITE_P(
    Item, TextCalls,
    testing::ValuesIn(std::vector<MarkedCall<BasicItem>>{
        {"const char* Item::findValue(const std::string&) const",
         [](BasicItem& item) { item.findValue("k"); }},
        {"std::list<const char*> Item::findValues(const std::string&)",
         [](BasicItem& item) { item.findValues("k"); }},
        {"Dictionary* Item::getAsDictionary()", [](BasicItem& item) { item.getAsDictionary(); }},
        {"const char* Item::getValue(const std::string&) const",
         [](BasicItem& item) { static_cast<Item&>(item).getValue("k"); }},
        {"bool Item::getValueAs(int&) const",
         [](BasicItem& item) {
             int number = 0;
             item.getValueAs(number);
         }},
        {"bool Item::getValueAs(const std::string&, int&) const",
         [](BasicItem& item) {
             int number = 0;
             item.getValueAs("k", number);
         }},
        {"bool Item::contains(const std::string&)", [](BasicItem& item) { item.contains("k"); }},
        {"const std::string& Item::getName() const", [](BasicItem& item) { item.getName(); }},
        {"void Item::setName(const std::string&)", [](BasicItem& item) { item.setName("k"); }},
        {"Item& Item::operator=(const Item&)", [](BasicItem& item) {
             Item& target = item;
             target = static_cast<const Item&>(item);
         }}}));

INSTANTIATE_TEST_SUITE_P(
    BasicItem, TextCalls,
    testing::ValuesIn(std::vector<MarkedCall<BasicItem>>{
        {"BasicItem& BasicItem::operator=(const BasicItem&)",
         [](BasicItem& item) {
             const BasicItem& same = item;
             item = same;
         }},
        {"bool BasicItem::equals(const Item&)", [](BasicItem& item) { item.equals(item); }},
        {"Item* BasicItem::clone()", [](BasicItem& item) { std::unique_ptr<Item>(item.clone()); }},
        {"const char* BasicItem::getValue() const", [](BasicItem& item) { item.getValue(); }},
        {"Item* BasicItem::getItem(const std::string&) const",
         [](BasicItem& item) { item.getItem(std::string("k")); }},
        {"Item* BasicItem::getItem(const char*) const", [](BasicItem& item) { item.getItem("k"); }},
        {"std::string BasicItem::marshall(const std::string&)",
         [](BasicItem& item) { item.marshall(""); }},
        {"std::string BasicItem::toString(const std::string&)",
         [](BasicItem& item) { item.toString(""); }},
        {"void BasicItem::unMarshall(std::stringstream&)",
         [](BasicItem& item) {
             std::stringstream in("<string>x");
             item.unMarshall(in);
         }},
        {"void BasicItem::setValue(const std::string&)",
         [](BasicItem& item) { item.setValue("x"); }}}));

TEST_P(IntegerCalls, AreMarkedWithTheirSignatureAndItem)
{
    IntBasicItem item("k", 1);

    expectMarked(GetParam().text, &item, [&] { GetParam().run(item); });
}

INSTANTIATE_TEST_SUITE_P(
    IntBasicItem, IntegerCalls,
    testing::ValuesIn(std::vector<MarkedCall<IntBasicItem>>{
        {"IntBasicItem& IntBasicItem::operator=(const IntBasicItem&)",
         [](IntBasicItem& item) {
             const IntBasicItem& same = item;
             item = same;
         }},
        {"bool IntBasicItem::equals(const Item&)", [](IntBasicItem& item) { item.equals(item); }},
        {"Item* IntBasicItem::clone()",
         [](IntBasicItem& item) { std::unique_ptr<Item>(item.clone()); }},
        {"const char* Item::getValue() const", [](IntBasicItem& item) { item.getValue(); }},
        {"bool IntBasicItem::getValueAs(int&) const",
         [](IntBasicItem& item) {
             int number = 0;
             item.getValueAs(number);
         }},
        {"Item* IntBasicItem::getItem(const std::string&) const",
         [](IntBasicItem& item) { item.getItem(std::string("k")); }},
        {"Item* IntBasicItem::getItem(const char*) const",
         [](IntBasicItem& item) { item.getItem("k"); }},
        {"std::string IntBasicItem::marshall(const std::string&)",
         [](IntBasicItem& item) { item.marshall(""); }},
        {"std::string IntBasicItem::toString(const std::string&)",
         [](IntBasicItem& item) { item.toString(""); }},
        {"void IntBasicItem::unMarshall(std::stringstream&)",
         [](IntBasicItem& item) {
             std::stringstream in("<int>1");
             item.unMarshall(in);
         }},
        {"void IntBasicItem::setValue(int)", [](IntBasicItem& item) { item.setValue(1); }}}));

TEST(ItemFunctions, AreMarkedWithTheirSignature)
{
    expectMarked("std::string Item::trim(const std::string&)", nullptr, [] { Item::trim("x"); });
    expectMarked("std::string Item::getXmlVal(const char*, const std::string&)", nullptr, [] {
        Item::getXmlVal("<int>", "<int>");
    });
}

/// Expects the item that make() yields to be counted for its class, and for the base of all.
template<typename Make>
void expectItemCounted(const std::string& className, const Make& make)
{
    expectCounted(className, make);
    expectCounted("Item", make);
}

TEST(ItemObjects, AreCountedByEachConstructorOfAText)
{
    const BasicItem item;

    expectItemCounted("BasicItem", [] { return std::make_unique<BasicItem>(); });
    expectItemCounted("BasicItem", [] { return std::make_unique<BasicItem>("k"); });
    expectItemCounted("BasicItem", [] { return std::make_unique<BasicItem>("k", "x"); });
    expectItemCounted("BasicItem", [&] { return std::make_unique<BasicItem>(item); });
}

TEST(ItemObjects, AreCountedByEachConstructorOfAnInteger)
{
    const IntBasicItem item;

    expectItemCounted("IntBasicItem", [] { return std::make_unique<IntBasicItem>(); });
    expectItemCounted("IntBasicItem", [] { return std::make_unique<IntBasicItem>("k"); });
    expectItemCounted("IntBasicItem", [] { return std::make_unique<IntBasicItem>("k", 1); });
    expectItemCounted("IntBasicItem", [&] { return std::make_unique<IntBasicItem>(item); });
}

} // namespace
