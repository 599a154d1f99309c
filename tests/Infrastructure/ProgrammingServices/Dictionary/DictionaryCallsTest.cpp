#include "BasicItem.h"
#include "Dictionary.h"
#include "DictionaryIterator.h"
#include "IntBasicItem.h"
#include "KFDictionaryFileException.h"
#include "KFDictionaryParsingException.h"
#include "MarkedCalls.h"

#include <algorithm>
#include <functional>
#include <list>
#include <memory>
#include <ostream>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using namespace std::string_literals;

/// a { b { k = "x" }, leaf = "y" }, n = 7
Dictionary sample()
{
    Dictionary tree;
    tree.addValue("a.b.k", "x");
    tree.addValue("a.leaf", "y");
    tree.addValue("n", 7);
    return tree;
}

using DictionaryCalls = testing::TestWithParam<MarkedCall<Dictionary>>;
using IteratorCalls = testing::TestWithParam<MarkedCall<DictionaryIterator>>;

TEST_P(DictionaryCalls, AreMarkedWithTheirSignatureAndDictionary)
{
    Dictionary tree = sample();

    expectMarked(GetParam().text, &tree, [&] { GetParam().run(tree); });
}

INSTANTIATE_TEST_SUITE_P(
    Dictionary, DictionaryCalls,
    testing::ValuesIn(std::vector<MarkedCall<Dictionary>>{
        {"Dictionary& Dictionary::operator=(const Dictionary&)",
         [](Dictionary& tree) {
             const Dictionary& same = tree;
             tree = same;
         }},
        {"bool Dictionary::equals(const Item&)", [](Dictionary& tree) { tree.equals(tree); }},
        {"Item* Dictionary::clone()",
         [](Dictionary& tree) { std::unique_ptr<Item>(tree.clone()); }},
        {"const char* Dictionary::findValue(const std::string&) const",
         [](Dictionary& tree) { tree.findValue("k"); }},
        {"Dictionary* Dictionary::getAsDictionary()",
         [](Dictionary& tree) { tree.getAsDictionary(); }},
        {"const char* Dictionary::getValue(const std::string&) const",
         [](Dictionary& tree) { tree.getValue("k"); }},
        {"bool Dictionary::getValueAs(const std::string&, int&) const",
         [](Dictionary& tree) {
             int number = 0;
             tree.getValueAs("k", number);
         }},
        {"bool Dictionary::contains(const std::string&)",
         [](Dictionary& tree) { tree.contains("k"); }},
        {"Item* Dictionary::getItem(const std::string&) const",
         [](Dictionary& tree) { tree.getItem(std::string("k")); }},
        {"Item* Dictionary::getItem(const char*) const",
         [](Dictionary& tree) { tree.getItem("k"); }},
        {"std::string Dictionary::marshall(const std::string&)",
         [](Dictionary& tree) { tree.marshall(""); }},
        {"std::string Dictionary::toString(const std::string&)",
         [](Dictionary& tree) { tree.toString(""); }},
        {"void Dictionary::unMarshall(std::stringstream&)", [](Dictionary& tree) {
             std::stringstream in;
             tree.unMarshall(in);
         }}}));

INSTANTIATE_TEST_SUITE_P(
    DictionaryAlone, DictionaryCalls,
    testing::ValuesIn(std::vector<MarkedCall<Dictionary>>{
        {"bool Dictionary::hasKey(const std::string&) const",
         [](Dictionary& tree) { tree.hasKey("k"); }},
        {"std::list<const char*> Dictionary::findValues(const std::string&) const",
         [](Dictionary& tree) { tree.findValues("k"); }},
        {"Item* Dictionary::findItem(const std::string&)",
         [](Dictionary& tree) { tree.findItem("k"); }},
        {"std::list<Item*> Dictionary::findItems(const std::string&)",
         [](Dictionary& tree) { tree.findItems("k"); }},
        {"bool Dictionary::contains(Item&)", [](Dictionary& tree) { tree.contains(tree); }},
        {"std::string Dictionary::getItemPath(Item&)",
         [](Dictionary& tree) { tree.getItemPath(tree); }},
        {"void Dictionary::clear()", [](Dictionary& tree) { tree.clear(); }},
        {"void Dictionary::removeAllItems()", [](Dictionary& tree) { tree.removeAllItems(); }},
        {"void Dictionary::removeAllItems(Item&)",
         [](Dictionary& tree) { tree.removeAllItems(tree); }},
        {"void Dictionary::removeItem(const std::string&)",
         [](Dictionary& tree) { tree.removeItem("k"); }},
        {"void Dictionary::removeItem(Item&)", [](Dictionary& tree) { tree.removeItem(tree); }},
        {"bool Dictionary::doRemoveItem(const std::string&)",
         [](Dictionary& tree) { tree.doRemoveItem("k"); }},
        {"Item* Dictionary::getFirstItem()", [](Dictionary& tree) { tree.getFirstItem(); }},
        {"void Dictionary::setItem(const std::string&, Item&)",
         [](Dictionary& tree) { tree.setItem("k", tree); }},
        {"void Dictionary::addValue(const std::string&, const std::string&)",
         [](Dictionary& tree) { tree.addValue("k", "x"); }},
        {"void Dictionary::addValue(const std::string&, int)",
         [](Dictionary& tree) { tree.addValue("k", 1); }},
        {"void Dictionary::addDictionary(const std::string&, Dictionary&)",
         [](Dictionary& tree) { tree.addDictionary("k", tree); }},
        {"void Dictionary::mergeDictionary(Dictionary&)",
         [](Dictionary& tree) { tree.mergeDictionary(tree); }},
        {"void Dictionary::loadFromFile(const std::string&)",
         [](Dictionary& tree) { EXPECT_ANY_THROW(tree.loadFromFile("")); }},
        {"void Dictionary::saveToFile(const std::string&)",
         [](Dictionary& tree) { tree.saveToFile(""); }},
        {"void Dictionary::doFindItems(const std::string&, std::list<Item*>&)",
         [](Dictionary& tree) {
             std::list<Item*> found;
             tree.doFindItems("k", found);
         }},
        {"void Dictionary::doFindValues(const std::string&, std::list<const char*>&) const",
         [](Dictionary& tree) {
             std::list<const char*> found;
             tree.doFindValues("k", found);
         }},
        {"std::string Dictionary::doGetItemPath(Item&, const std::string&)",
         [](Dictionary& tree) { tree.doGetItemPath(tree, "k"); }}}));

TEST_P(IteratorCalls, AreMarkedWithTheirSignatureAndIterator)
{
    Dictionary tree = sample();
    DictionaryIterator iterator(tree);

    expectMarked(GetParam().text, &iterator, [&] { GetParam().run(iterator); });
}

INSTANTIATE_TEST_SUITE_P(
    DictionaryIterator, IteratorCalls,
    testing::ValuesIn(std::vector<MarkedCall<DictionaryIterator>>{
        {"bool DictionaryIterator::atEnd()", [](DictionaryIterator& it) { it.atEnd(); }},
        {"DictionaryIterator& DictionaryIterator::next()",
         [](DictionaryIterator& it) { it.next(); }},
        {"Item* DictionaryIterator::current()", [](DictionaryIterator& it) { it.current(); }},
        {"std::string DictionaryIterator::key()", [](DictionaryIterator& it) { it.key(); }},
        {"const char* DictionaryIterator::value()", [](DictionaryIterator& it) { it.value(); }},
        {"bool DictionaryIterator::getValueAs(int&)",
         [](DictionaryIterator& it) {
             int number = 0;
             it.getValueAs(number);
         }},
        {"Dictionary* DictionaryIterator::currentDictionary()",
         [](DictionaryIterator& it) { it.currentDictionary(); }},
        {"DictionaryIterator& DictionaryIterator::firstDictionary()",
         [](DictionaryIterator& it) { it.firstDictionary(); }},
        {"DictionaryIterator& DictionaryIterator::nextDictionary()",
         [](DictionaryIterator& it) { it.nextDictionary(); }}}));

// No operation calls itself for an inner dictionary, and its trace shows these calls all the same.
struct Nesting {
    const char* signature;
    std::function<void(Dictionary&)> run;
};

void PrintTo(const Nesting& nesting, std::ostream* out)
{
    *out << nesting.signature;
}

/// The lines of one operation's calls in a trace.
std::string callsOf(const std::string& signature, const std::string& trace)
{
    std::string calls;
    std::stringstream lines(trace);
    for (std::string line; std::getline(lines, line);) {
        if (line.ends_with(" " + signature) || line.ends_with("]" + signature))
            calls += line + "\n";
    }
    return calls;
}

using NestedDictionaryCalls = testing::TestWithParam<Nesting>;

TEST_P(NestedDictionaryCalls, AreMarkedInsideTheOuterOne)
{
    Dictionary tree;
    tree.addValue("a.b.k", "x");
    PublishedTracer tracer;
    tracer->setPrintExit(true);
    tracer->setPrintObjects(true);

    GetParam().run(tree);

    const std::string call = GetParam().signature;
    const std::string calls = callsOf(call, tracer.lines());
    const Item* const a = tree.getItem("a");
    const Item* const b = tree.getItem("a.b");
    EXPECT_EQ(
        calls, entryLine(call, &tree) + entryLine("  " + call, a) + entryLine("    " + call, b) +
                   entryLine("      <- " + call, b) + entryLine("    <- " + call, a) +
                   entryLine("  <- " + call, &tree));
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
            "const char* Dictionary::findValue(const std::string&) const",
            [](Dictionary& tree) { tree.findValue("k"); }},
        Nesting{
            "void Dictionary::setItem(const std::string&, Item&)",
            [](Dictionary& tree) { tree.setItem("a.b.k", tree); }},
        Nesting{
            "bool Dictionary::doRemoveItem(const std::string&)",
            [](Dictionary& tree) { tree.doRemoveItem("a.b.k"); }},
        Nesting{"void Dictionary::unMarshall(std::stringstream&)", [](Dictionary& tree) {
                    std::stringstream in("<dict>\n<key>a</key>\n<dict>\n<key>b</key>\n<dict>\n");
                    tree.unMarshall(in);
                }}));

using BranchingDictionaryCalls = testing::TestWithParam<Nesting>;

TEST_P(BranchingDictionaryCalls, AreMarkedOneBesideTheOther)
{
    Dictionary tree;
    for (const char* const path : {"a.b.k", "a.c.k", "d.k"})
        tree.addValue(path, 7);
    PublishedTracer tracer;
    tracer->setPrintExit(true);
    tracer->setPrintObjects(true);

    GetParam().run(tree);

    const std::string call = GetParam().signature;
    const std::string calls = callsOf(call, tracer.lines());
    const Item* const a = tree.getItem("a");
    const Item* const b = tree.getItem("a.b");
    const Item* const c = tree.getItem("a.c");
    const Item* const d = tree.getItem("d");
    EXPECT_EQ(
        calls, entryLine(call, &tree) + entryLine("  " + call, a) + entryLine("    " + call, b) +
                   entryLine("      <- " + call, b) + entryLine("    " + call, c) +
                   entryLine("      <- " + call, c) + entryLine("    <- " + call, a) +
                   entryLine("  " + call, d) + entryLine("    <- " + call, d) +
                   entryLine("  <- " + call, &tree));
}

INSTANTIATE_TEST_SUITE_P(
    Operations, BranchingDictionaryCalls,
    testing::Values(
        Nesting{
            "bool Dictionary::contains(const std::string&)",
            [](Dictionary& tree) { tree.contains("a.b.z"); }},
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
                tree.doFindItems("k", found);
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
                    std::stringstream in(tree.marshall(""));
                    tree.unMarshall(in);
                }}));

/// What a comparison with a.b under another guise tells at a.b, and the guise.
struct Difference {
    const char* message;
    std::function<void(Dictionary&)> make;
};

void PrintTo(const Difference& difference, std::ostream* out)
{
    *out << difference.message;
}

using DifferingDictionaryCalls = testing::TestWithParam<Difference>;

TEST_P(DifferingDictionaryCalls, EndEachWithItsOwnMessage)
{
    Dictionary tree;
    tree.addValue("a.b.k", "x");
    Dictionary other(tree);
    GetParam().make(other);
    PublishedTracer tracer;
    tracer->setPrintExit(true);

    tree.equals(other);

    const std::string call = "bool Dictionary::equals(const Item&)";
    std::vector<std::string> lines = linesIn(tracer.lines());
    std::erase_if(lines, [&call](const std::string& line) {
        return !line.ends_with(call) && line.find(">> [") == std::string::npos;
    });
    EXPECT_THAT(
        lines, ElementsAre(
                   call, "  " + call, "    " + call, "      >> [D] " + (GetParam().message + ""s),
                   "      <- " + call, "    >> [D] equals returns 0", "    <- " + call,
                   "  >> [D] equals returns 0", "  <- " + call));
}

INSTANTIATE_TEST_SUITE_P(
    Differences, DifferingDictionaryCalls,
    testing::Values(
        Difference{
            "Other is not a dictionary", [](Dictionary& other) { other.addValue("a.b", "leaf"); }},
        Difference{
            "Dictionary have different sizes",
            [](Dictionary& other) { other.addValue("a.b.more", ""); }},
        Difference{"Key not found l", [](Dictionary& other) {
                       other.removeItem("a.b.k");
                       other.addValue("a.b.l", "x");
                   }}));

TEST(DeepDictionaryCalls, AreMarkedOnTheOutermostLevelsAlone)
{
    std::string path = "d";
    for (int i = 0; i < 299; ++i)
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

TEST(DictionaryObjects, AreCountedByEachConstructor)
{
    Dictionary tree;

    expectCounted("Dictionary", [] { return std::make_unique<Dictionary>(); });
    expectCounted("Dictionary", [] { return std::make_unique<Dictionary>("name"); });
    expectCounted("Dictionary", [&] { return std::make_unique<Dictionary>(tree); });
    expectCounted("DictionaryIterator", [&] { return std::make_unique<DictionaryIterator>(tree); });
}

TEST(DictionaryReplacement, IsToldBehindTheEndOfWhatIsReplaced)
{
    Dictionary tree = sample();
    BasicItem item("n", "x");
    const PublishedTracer tracer;

    tree.setItem("n", item);

    const std::string lines = tracer.lines();
    const std::size_t end = lines.find("IntBasicItem::destructor");
    EXPECT_LT(end, lines.find("Dictionary is now"));
    EXPECT_NE(end, std::string::npos);
}

TEST(DictionaryExceptions, AreCountedFromConstructorToDestructor)
{
    expectExceptionCounted<KFDictionaryException>(
        "KFDictionaryException", "BROKEN", "Some/Unit", 12);
    expectExceptionCounted<KFDictionaryFileException>(
        "KFDictionaryFileException", "BROKEN", "Some/Unit", 12);
    expectExceptionCounted<KFDictionaryParsingException>(
        "KFDictionaryParsingException", "BROKEN", "Some/Unit", 12);
}

} // namespace
