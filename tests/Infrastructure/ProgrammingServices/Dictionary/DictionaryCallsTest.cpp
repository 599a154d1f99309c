#include "BasicItem.h"
#include "Dictionary.h"
#include "DictionaryIterator.h"
#include "IntBasicItem.h"
#include "PublishedTracer.h"
#include "TemporaryFolder.h"

#include <algorithm>
#include <functional>
#include <list>
#include <memory>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::Eq;
using testing::HasSubstr;

/// The calls of a trace, with their indentation.
std::vector<std::string> callsIn(const std::string& trace)
{
    constexpr std::size_t s_columns = std::string_view("[<id>][test           ]").size();
    std::vector<std::string> calls;
    std::stringstream lines(trace);
    for (std::string line; std::getline(lines, line);) {
        if (line.starts_with("[<id>]") && line.find(">> [") == std::string::npos)
            calls.push_back(line.substr(s_columns));
    }
    return calls;
}

/// a { b { k = "x" }, leaf = "y" }, n = 7
Dictionary sample()
{
    Dictionary tree;
    tree.addValue("a.b.k", "x");
    tree.addValue("a.leaf", "y");
    tree.addValue("n", 7);
    return tree;
}

struct Call {
    const char* signature;
    std::function<void(Dictionary&)> run;
};

void PrintTo(const Call& call, std::ostream* out)
{
    *out << call.signature;
}

using DictionaryCalls = testing::TestWithParam<Call>;

TEST_P(DictionaryCalls, AreMarkedWithTheirSignature)
{
    Dictionary tree = sample();
    PublishedTracer tracer;
    tracer->setPrintExit(true);

    GetParam().run(tree);

    const std::string signature = GetParam().signature;
    const std::vector<std::string> calls = callsIn(tracer.lines());
    EXPECT_THAT(calls, Contains(Eq(signature)));
    EXPECT_THAT(calls, Contains(Eq("  <- " + signature)));
}

template<typename Leaf>
void callAllOfItem(Leaf leaf)
{
    int number = 0;
    std::stringstream in("<string>x</string><int>1</int>\n");
    const std::unique_ptr<Item> clone(leaf.clone());
    Item& item = leaf;
    item.equals(*clone);
    item.findValue("k");
    item.findValues("k");
    item.getAsDictionary();
    item.getValue();
    item.getValue("k");
    item.getValueAs(number);
    item.getValueAs("k", number);
    item.contains("k");
    item.getItem("k");
    item.getItem(std::string("k"));
    item.marshall("");
    item.toString("");
    item.unMarshall(in);
    item.getName();
    item.setName("k");
    Leaf assigned;
    assigned = leaf;
}

void callAllOfText(Dictionary& /*tree*/)
{
    callAllOfItem(BasicItem("k", "x"));
    BasicItem().setValue("x");
    Item::trim("x");
    Item::getXmlVal("<int>", "<int>");
}

void callAllOfInteger(Dictionary& /*tree*/)
{
    callAllOfItem(IntBasicItem("k", 1));
    IntBasicItem().setValue(1);
}

INSTANTIATE_TEST_SUITE_P(
    Item, DictionaryCalls,
    testing::Values(
        Call{"Item::constructor", callAllOfText}, Call{"Item::destructor", callAllOfText},
        Call{"const char* Item::findValue(const std::string&) const", callAllOfText},
        Call{"std::list<const char*> Item::findValues(const std::string&)", callAllOfText},
        Call{"Dictionary* Item::getAsDictionary()", callAllOfText},
        Call{"const char* Item::getValue() const", callAllOfInteger},
        Call{"const char* Item::getValue(const std::string&) const", callAllOfText},
        Call{"bool Item::getValueAs(int&) const", callAllOfText},
        Call{"bool Item::getValueAs(const std::string&, int&) const", callAllOfText},
        Call{"bool Item::contains(const std::string&)", callAllOfText},
        Call{"const std::string& Item::getName() const", callAllOfText},
        Call{"void Item::setName(const std::string&)", callAllOfText},
        Call{"std::string Item::trim(const std::string&)", callAllOfText},
        Call{"std::string Item::getXmlVal(const char*, const std::string&)", callAllOfText}));

INSTANTIATE_TEST_SUITE_P(
    BasicItem, DictionaryCalls,
    testing::Values(
        Call{"BasicItem::constructor", callAllOfText}, Call{"BasicItem::destructor", callAllOfText},
        Call{"BasicItem& BasicItem::operator=(const BasicItem&)", callAllOfText},
        Call{"bool BasicItem::equals(const Item&)", callAllOfText},
        Call{"Item* BasicItem::clone()", callAllOfText},
        Call{"const char* BasicItem::getValue() const", callAllOfText},
        Call{"Item* BasicItem::getItem(const std::string&) const", callAllOfText},
        Call{"Item* BasicItem::getItem(const char*) const", callAllOfText},
        Call{"std::string BasicItem::marshall(const std::string&)", callAllOfText},
        Call{"std::string BasicItem::toString(const std::string&)", callAllOfText},
        Call{"void BasicItem::unMarshall(std::stringstream&)", callAllOfText},
        Call{"void BasicItem::setValue(const std::string&)", callAllOfText}));

INSTANTIATE_TEST_SUITE_P(
    IntBasicItem, DictionaryCalls,
    testing::Values(
        Call{"IntBasicItem::constructor", callAllOfInteger},
        Call{"IntBasicItem::destructor", callAllOfInteger},
        Call{"IntBasicItem& IntBasicItem::operator=(const IntBasicItem&)", callAllOfInteger},
        Call{"bool IntBasicItem::equals(const Item&)", callAllOfInteger},
        Call{"Item* IntBasicItem::clone()", callAllOfInteger},
        Call{"bool IntBasicItem::getValueAs(int&) const", callAllOfInteger},
        Call{"Item* IntBasicItem::getItem(const std::string&) const", callAllOfInteger},
        Call{"Item* IntBasicItem::getItem(const char*) const", callAllOfInteger},
        Call{"std::string IntBasicItem::marshall(const std::string&)", callAllOfInteger},
        Call{"std::string IntBasicItem::toString(const std::string&)", callAllOfInteger},
        Call{"void IntBasicItem::unMarshall(std::stringstream&)", callAllOfInteger},
        Call{"void IntBasicItem::setValue(int)", callAllOfInteger}));

INSTANTIATE_TEST_SUITE_P(
    Dictionary, DictionaryCalls,
    testing::Values(
        Call{"Dictionary::constructor", [](Dictionary& /*tree*/) { Dictionary("name"); }},
        Call{"Dictionary::constructor", [](Dictionary& /*tree*/) { Dictionary(); }},
        Call{"Dictionary::constructor", [](Dictionary& tree) { const Dictionary copy(tree); }},
        Call{"Dictionary::destructor", [](Dictionary& /*tree*/) { Dictionary(); }},
        Call{
            "Dictionary& Dictionary::operator=(const Dictionary&)",
            [](Dictionary& tree) { tree = Dictionary(); }},
        Call{"bool Dictionary::equals(const Item&)", [](Dictionary& tree) { tree.equals(tree); }},
        Call{
            "Item* Dictionary::clone()",
            [](Dictionary& tree) { std::unique_ptr<Item>(tree.clone()); }},
        Call{
            "const char* Dictionary::findValue(const std::string&) const",
            [](Dictionary& tree) { tree.findValue("k"); }},
        Call{
            "Dictionary* Dictionary::getAsDictionary()",
            [](Dictionary& tree) { tree.getAsDictionary(); }},
        Call{
            "const char* Dictionary::getValue(const std::string&) const",
            [](Dictionary& tree) { tree.getValue("k"); }},
        Call{
            "bool Dictionary::getValueAs(const std::string&, int&) const",
            [](Dictionary& tree) {
                int number = 0;
                tree.getValueAs("k", number);
            }},
        Call{
            "bool Dictionary::contains(const std::string&)",
            [](Dictionary& tree) { tree.contains("k"); }},
        Call{
            "Item* Dictionary::getItem(const std::string&) const",
            [](Dictionary& tree) { tree.getItem(std::string("k")); }},
        Call{
            "Item* Dictionary::getItem(const char*) const",
            [](Dictionary& tree) { tree.getItem("k"); }},
        Call{
            "std::string Dictionary::marshall(const std::string&)",
            [](Dictionary& tree) { tree.marshall(""); }},
        Call{
            "std::string Dictionary::toString(const std::string&)",
            [](Dictionary& tree) { tree.toString(""); }},
        Call{"void Dictionary::unMarshall(std::stringstream&)", [](Dictionary& tree) {
                 std::stringstream in;
                 tree.unMarshall(in);
             }}));

INSTANTIATE_TEST_SUITE_P(
    DictionaryAlone, DictionaryCalls,
    testing::Values(
        Call{
            "bool Dictionary::hasKey(const std::string&) const",
            [](Dictionary& tree) { tree.hasKey("k"); }},
        Call{
            "std::list<const char*> Dictionary::findValues(const std::string&) const",
            [](Dictionary& tree) { tree.findValues("k"); }},
        Call{
            "Item* Dictionary::findItem(const std::string&)",
            [](Dictionary& tree) { tree.findItem("k"); }},
        Call{
            "std::list<Item*> Dictionary::findItems(const std::string&)",
            [](Dictionary& tree) { tree.findItems("k"); }},
        Call{"bool Dictionary::contains(Item&)", [](Dictionary& tree) { tree.contains(tree); }},
        Call{
            "std::string Dictionary::getItemPath(Item&)",
            [](Dictionary& tree) { tree.getItemPath(tree); }},
        Call{"void Dictionary::clear()", [](Dictionary& tree) { tree.clear(); }},
        Call{"void Dictionary::removeAllItems()", [](Dictionary& tree) { tree.removeAllItems(); }},
        Call{
            "void Dictionary::removeAllItems(Item&)",
            [](Dictionary& tree) { tree.removeAllItems(tree); }},
        Call{
            "void Dictionary::removeItem(const std::string&)",
            [](Dictionary& tree) { tree.removeItem("k"); }},
        Call{"void Dictionary::removeItem(Item&)", [](Dictionary& tree) { tree.removeItem(tree); }},
        Call{
            "bool Dictionary::doRemoveItem(const std::string&)",
            [](Dictionary& tree) { tree.doRemoveItem("k"); }},
        Call{"Item* Dictionary::getFirstItem()", [](Dictionary& tree) { tree.getFirstItem(); }},
        Call{
            "void Dictionary::setItem(const std::string&, Item&)",
            [](Dictionary& tree) { tree.setItem("k", tree); }},
        Call{
            "void Dictionary::addValue(const std::string&, const std::string&)",
            [](Dictionary& tree) { tree.addValue("k", "x"); }},
        Call{
            "void Dictionary::addValue(const std::string&, int)",
            [](Dictionary& tree) { tree.addValue("k", 1); }},
        Call{
            "void Dictionary::addDictionary(const std::string&, Dictionary&)",
            [](Dictionary& tree) { tree.addDictionary("k", tree); }},
        Call{
            "void Dictionary::mergeDictionary(Dictionary&)",
            [](Dictionary& tree) { tree.mergeDictionary(tree); }},
        Call{
            "void Dictionary::loadFromFile(const std::string&)",
            [](Dictionary& tree) { EXPECT_ANY_THROW(tree.loadFromFile("")); }},
        Call{
            "void Dictionary::saveToFile(const std::string&)",
            [](Dictionary& tree) { tree.saveToFile(""); }},
        Call{
            "void Dictionary::doFindItems(const std::string&, std::list<Item*>&)",
            [](Dictionary& tree) {
                std::list<Item*> found;
                tree.doFindItems("k", found);
            }},
        Call{
            "void Dictionary::doFindValues(const std::string&, std::list<const char*>&) const",
            [](Dictionary& tree) {
                std::list<const char*> found;
                tree.doFindValues("k", found);
            }},
        Call{
            "std::string Dictionary::doGetItemPath(Item&, const std::string&)",
            [](Dictionary& tree) { tree.doGetItemPath(tree, "k"); }}));

void walkAll(Dictionary& tree)
{
    DictionaryIterator it(tree);
    int number = 0;
    it.atEnd();
    it.next();
    it.current();
    it.key();
    it.value();
    it.getValueAs(number);
    it.currentDictionary();
    it.firstDictionary();
    it.nextDictionary();
}

INSTANTIATE_TEST_SUITE_P(
    DictionaryIterator, DictionaryCalls,
    testing::Values(
        Call{"DictionaryIterator::constructor", walkAll},
        Call{"DictionaryIterator::destructor", walkAll},
        Call{"bool DictionaryIterator::atEnd()", walkAll},
        Call{"DictionaryIterator& DictionaryIterator::next()", walkAll},
        Call{"Item* DictionaryIterator::current()", walkAll},
        Call{"std::string DictionaryIterator::key()", walkAll},
        Call{"const char* DictionaryIterator::value()", walkAll},
        Call{"bool DictionaryIterator::getValueAs(int&)", walkAll},
        Call{"Dictionary* DictionaryIterator::currentDictionary()", walkAll},
        Call{"DictionaryIterator& DictionaryIterator::firstDictionary()", walkAll},
        Call{"DictionaryIterator& DictionaryIterator::nextDictionary()", walkAll}));

// No operation calls itself for an inner dictionary, and its trace shows these calls all the same.
struct Nesting {
    const char* signature;
    std::function<void(Dictionary&)> run;
};

void PrintTo(const Nesting& nesting, std::ostream* out)
{
    *out << nesting.signature;
}

using NestedDictionaryCalls = testing::TestWithParam<Nesting>;

TEST_P(NestedDictionaryCalls, AreMarkedInsideTheOuterOne)
{
    Dictionary tree;
    tree.addValue("a.b.k", "x");
    PublishedTracer tracer;
    tracer->setPrintExit(true);

    GetParam().run(tree);

    const std::string signature = GetParam().signature;
    std::vector<std::string> calls = callsIn(tracer.lines());
    std::erase_if(calls, [&signature](const std::string& call) {
        return !call.ends_with(" " + signature) && call != signature;
    });
    EXPECT_THAT(
        calls, ElementsAre(
                   signature, "  " + signature, "    " + signature, "      <- " + signature,
                   "    <- " + signature, "  <- " + signature));
}

INSTANTIATE_TEST_SUITE_P(
    Operations, NestedDictionaryCalls,
    testing::Values(
        Nesting{
            "Item* Dictionary::getItem(const std::string&) const",
            [](Dictionary& tree) { tree.getItem(std::string("a.b.k")); }},
        Nesting{
            "bool Dictionary::contains(const std::string&)",
            [](Dictionary& tree) { tree.contains("a.b.k"); }},
        Nesting{
            "Item* Dictionary::findItem(const std::string&)",
            [](Dictionary& tree) { tree.findItem("z"); }},
        Nesting{
            "const char* Dictionary::findValue(const std::string&) const",
            [](Dictionary& tree) { tree.findValue("k"); }},
        Nesting{
            "void Dictionary::doFindItems(const std::string&, std::list<Item*>&)",
            [](Dictionary& tree) {
                std::list<Item*> found;
                tree.doFindItems("z", found);
            }},
        Nesting{
            "void Dictionary::doFindValues(const std::string&, std::list<const char*>&) const",
            [](Dictionary& tree) {
                std::list<const char*> found;
                tree.doFindValues("k", found);
            }},
        Nesting{
            "std::string Dictionary::doGetItemPath(Item&, const std::string&)",
            [](Dictionary& tree) { tree.doGetItemPath(tree, ""); }},
        Nesting{
            "void Dictionary::setItem(const std::string&, Item&)",
            [](Dictionary& tree) { tree.setItem("a.c.k", tree); }},
        Nesting{
            "bool Dictionary::doRemoveItem(const std::string&)",
            [](Dictionary& tree) { tree.doRemoveItem("a.b.k"); }},
        Nesting{
            "void Dictionary::removeAllItems(Item&)",
            [](Dictionary& tree) { tree.removeAllItems(tree); }},
        Nesting{
            "void Dictionary::mergeDictionary(Dictionary&)",
            [](Dictionary& tree) { tree.mergeDictionary(tree); }},
        Nesting{
            "bool Dictionary::equals(const Item&)", [](Dictionary& tree) { tree.equals(tree); }},
        Nesting{
            "std::string Dictionary::marshall(const std::string&)",
            [](Dictionary& tree) { tree.marshall(""); }},
        Nesting{
            "std::string Dictionary::toString(const std::string&)",
            [](Dictionary& tree) { tree.toString(""); }},
        Nesting{"void Dictionary::unMarshall(std::stringstream&)", [](Dictionary& tree) {
                    std::stringstream in("<dict>\n<key>a</key>\n<dict>\n<key>b</key>\n<dict>\n");
                    tree.unMarshall(in);
                }}));

TEST(DeepDictionaryCalls, AreMarkedOnTheOutermostLevelsAlone)
{
    std::string path = "d";
    for (int i = 0; i < 999; ++i)
        path += ".d";
    Dictionary tree;
    tree.addValue(path, "x");
    PublishedTracer tracer;
    tracer->setPrintExit(true);

    tree.findItem("z");

    const std::vector<std::string> calls = callsIn(tracer.lines());
    const auto marked = [&calls](const std::string& begin) {
        return std::count_if(calls.begin(), calls.end(), [&begin](const std::string& call) {
            return call.ends_with(begin + "Item* Dictionary::findItem(const std::string&)");
        });
    };
    EXPECT_EQ(marked("<- "), 257);
    EXPECT_EQ(marked(""), 2 * 257);
}

TEST(DictionaryObjects, AreCountedToZeroWhenTheTreeHasEnded)
{
    PublishedTracer tracer;
    {
        Dictionary tree = sample();
        Dictionary copy(tree);
        copy = tree;
        copy.mergeDictionary(tree);
        const std::unique_ptr<Item> clone(copy.clone());
        std::stringstream in(tree.marshall(""));
        tree.unMarshall(in);
    }

    tracer->PrintAllObjectsCount();

    const std::string lines = tracer.lines();
    for (const char* const name : {"Item", "BasicItem", "IntBasicItem", "Dictionary"}) {
        const std::string padded = name + std::string(30 - std::string_view(name).size(), ' ');
        EXPECT_THAT(lines, HasSubstr("Class = " + padded + ", count = 000000\n"));
    }
}

TEST(DictionaryObjects, AreCountedWhileTheTreeLives)
{
    PublishedTracer tracer;
    const Dictionary tree = sample();

    tracer->PrintAllObjectsCount();

    const std::string lines = tracer.lines();
    EXPECT_THAT(lines, HasSubstr("Class = Dictionary                    , count = 000003\n"));
    EXPECT_THAT(lines, HasSubstr("Class = BasicItem                     , count = 000002\n"));
    EXPECT_THAT(lines, HasSubstr("Class = IntBasicItem                  , count = 000001\n"));
    EXPECT_THAT(lines, HasSubstr("Class = Item                          , count = 000006\n"));
}

} // namespace
