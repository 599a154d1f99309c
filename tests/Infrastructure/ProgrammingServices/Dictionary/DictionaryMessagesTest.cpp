#include "BasicItem.h"
#include "Dictionary.h"
#include "IntBasicItem.h"
#include "KFDictionaryException.h"
#include "PublishedTracer.h"
#include "TemporaryFolder.h"

#include <cstdint>
#include <functional>
#include <ostream>
#include <regex>
#include <sstream>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using testing::Contains;
using testing::ElementsAreArray;
using testing::HasSubstr;

/// The messages of a trace as "[D] text", with "*" for every address.
std::vector<std::string> messagesIn(const std::string& trace)
{
    static const std::regex s_address("0x[0-9a-f]+|\\[[0-9a-f]{1,8}\\]| in [0-9a-f]{1,8}$");
    std::vector<std::string> messages;
    std::stringstream lines(trace);
    bool inMessage = false;
    for (std::string line; std::getline(lines, line);) {
        const std::size_t tag = line.find(">> [");
        const bool begins = line.starts_with("[<id>]");
        if (tag != std::string::npos) {
            std::string text = std::regex_replace(line.substr(tag + 3), s_address, "*");
            messages.push_back(std::move(text));
        } else if (!begins && inMessage && !line.empty()) {
            // The rest of a message of several lines.
            messages.back() += "|" + std::regex_replace(line, s_address, "*");
        }
        inMessage = tag != std::string::npos || (!begins && inMessage);
    }
    return messages;
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

struct Operation {
    const char* name;
    std::function<void(Dictionary&)> run;
    /// In their order; what the operation's own lookups say is among them.
    std::vector<std::string> messages;
};

void PrintTo(const Operation& operation, std::ostream* out)
{
    *out << operation.name;
}

using DictionaryMessages = testing::TestWithParam<Operation>;

TEST_P(DictionaryMessages, AreExactlyTheseTexts)
{
    Dictionary tree = sample();
    const PublishedTracer tracer;

    GetParam().run(tree);

    EXPECT_THAT(messagesIn(tracer.lines()), ElementsAreArray(GetParam().messages));
}

void loadText(Dictionary& tree, const char* text)
{
    const TemporaryFolder folder;
    EXPECT_THROW(tree.loadFromFile(folder.write("file", text)), KFDictionaryException);
}

INSTANTIATE_TEST_SUITE_P(
    Lookups, DictionaryMessages,
    testing::Values(
        Operation{
            "getItem of a direct entry",
            [](Dictionary& tree) { tree.getItem("n"); },
            {"[D] getting on * root path n"}},
        Operation{
            "getItem of a path",
            [](Dictionary& tree) { tree.getItem("a.b.k"); },
            {"[D] getting on * root path a.b.k", "[D] getting on * a path b.k",
             "[D] getting on * b path k"}},
        Operation{
            "getItem of a missing key",
            [](Dictionary& tree) { tree.getItem("a.none"); },
            {"[D] getting on * root path a.none", "[D] getting on * a path none",
             "[D] Key none not found"}},
        Operation{
            "getItem of a missing head",
            [](Dictionary& tree) { tree.getItem("none.k"); },
            {"[D] getting on * root path none.k", "[D] Head key none not found"}},
        Operation{
            "getItem below a leaf",
            [](Dictionary& tree) { tree.getItem("n.k"); },
            {"[D] getting on * root path n.k", "[D] Child with key n is not a dictionary"}},
        Operation{
            "findItem",
            [](Dictionary& tree) { tree.findItem("leaf"); },
            {"[D] looking for leaf", "[D] getting on * root path leaf", "[D] Key leaf not found",
             "[D] item not found looking in children", "[D] looking for leaf",
             "[D] getting on * a path leaf",
             "[D] item found BasicItem [*] name : 'leaf' value : 'y'"}},
        Operation{
            "findItem without a hit",
            [](Dictionary& tree) { tree.findItem("z"); },
            {"[D] looking for z", "[D] getting on * root path z", "[D] Key z not found",
             "[D] item not found looking in children", "[D] looking for z",
             "[D] getting on * a path z", "[D] Key z not found",
             "[D] item not found looking in children", "[D] looking for z",
             "[D] getting on * b path z", "[D] Key z not found",
             "[D] item not found looking in children", "[D] child is not a dictionary",
             "[D] child is not a dictionary", "[D] child is not a dictionary"}},
        Operation{
            "findValue",
            [](Dictionary& tree) { tree.findValue("n"); },
            {"[D] looking for n", "[D] getting on * root path n",
             "[D] item found IntBasicItem [*] name : 'n' value : '7'"}},
        Operation{
            "findValue without a hit",
            [](Dictionary& tree) { tree.getItem("a")->findValue("z"); },
            {"[D] getting on * root path a", "[D] looking for z", "[D] getting on * a path z",
             "[D] Key z not found", "[D] item not found looking in children", "[D] looking for z",
             "[D] getting on * b path z", "[D] Key z not found",
             "[D] item not found looking in children", "[D] child is not a dictionary",
             "[D] child is not a dictionary"}},
        Operation{
            "findItems",
            [](Dictionary& tree) { tree.findItems("k"); },
            {"[D] getting on * root path k", "[D] Key k not found", "[D] getting on * a path k",
             "[D] Key k not found", "[D] getting on * b path k"}},
        Operation{
            "findValues",
            [](Dictionary& tree) { tree.findValues("leaf"); },
            {"[D] getting on * root path leaf", "[D] Key leaf not found",
             "[D] getting on * a path leaf"}},
        Operation{
            "getItemPath",
            [](Dictionary& tree) {
                BasicItem item("leaf", "y");
                tree.getItemPath(item);
            },
            {"[D] looking for item * name leaf*", "[D] looking for item * name leaf*",
             "[D] equals returns 1", "[D] item path is a.leaf"}},
        Operation{
            "getItemPath without a hit",
            [](Dictionary& tree) {
                BasicItem item("leaf", "other");
                tree.getItemPath(item);
            },
            {"[D] looking for item * name leaf*", "[D] looking for item * name leaf*",
             "[D] equals returns 0", "[D] looking for item * name leaf*", "[D] item path is "}}));

INSTANTIATE_TEST_SUITE_P(
    Updates, DictionaryMessages,
    testing::Values(
        Operation{
            "addValue of a direct entry",
            [](Dictionary& tree) {
                tree.clear();
                tree.addValue("k", 1);
            },
            {"[D] Adding on * root for path k item IntBasicItem [*] name : 'k' value : '1'",
             "[D] Adding on key k item IntBasicItem [*] name : 'k' value : '1'",
             ("[D] Dictionary is now Dictionary [*] 'root' items :\tIntBasicItem [*] name : 'k' "
              "value : '1'")}},
        Operation{
            "addValue of a new path",
            [](Dictionary& tree) {
                tree.clear();
                tree.addValue("d.k", "z");
            },
            {"[D] Adding on * root for path d.k item BasicItem [*] name : 'k' value : 'z'",
             "[D] Adding new dictionary on key d",
             "[D] Adding on * d for path k item BasicItem [*] name : 'k' value : 'z'",
             "[D] Adding on key k item BasicItem [*] name : 'k' value : 'z'",
             ("[D] Dictionary is now Dictionary [*] 'd' items :\tBasicItem [*] name : 'k' value : "
              "'z'")}},
        Operation{
            "addValue below a leaf",
            [](Dictionary& tree) { tree.addValue("n.k", "z"); },
            {"[D] Adding on * root for path n.k item BasicItem [*] name : 'k' value : 'z'"}},
        Operation{
            "addDictionary without a target",
            [](Dictionary& tree) {
                Dictionary source;
                tree.addDictionary("z", source);
            },
            {"[D] adding under z", "[D] getting on * root path z", "[D] Key z not found"}},
        Operation{
            "addDictionary",
            [](Dictionary& tree) {
                Dictionary source;
                std::stringstream in("<dict>\n<key>i</key>\n<int>1</int>\n</dict>\n");
                source.unMarshall(in);
                tree.addDictionary("a.b", source);
            },
            {"[D] getXmlVal returns 'i'", "[D] getXmlVal returns '1'", "[D] adding under a.b",
             "[D] getting on * root path a.b", "[D] getting on * a path b",
             "[D] item found Dictionary [*] 'b' items :\tBasicItem [*] name : 'k' value : 'x'",
             "[D] item is a dictionary", "[D] adding key i",
             "[D] Adding on * b for path i item IntBasicItem [*] name : 'i' value : '1'",
             "[D] Adding on key i item IntBasicItem [*] name : 'i' value : '1'",
             ("[D] Dictionary is now Dictionary [*] 'b' items :\tIntBasicItem [*] name : 'i' value "
              ": '1'|\tBasicItem [*] name : 'k' value : 'x'")}},
        Operation{
            "mergeDictionary",
            [](Dictionary& tree) {
                Dictionary other;
                std::stringstream in("<dict>\n<key>a</key>\n<dict>\n<key>leaf</key>\n<dict>\n"
                                     "</dict>\n</dict>\n<key>n</key>\n<int>1</int>\n</dict>\n");
                other.unMarshall(in);
                tree.mergeDictionary(other);
            },
            {"[D] getXmlVal returns 'a'", "[D] getXmlVal returns 'leaf'",
             "[D] getXmlVal returns 'n'", "[D] getXmlVal returns '1'",
             ("[D] merging under Dictionary [*] 'root' items :\tDictionary [*] 'a' items :"
              "\t\tDictionary [*] 'leaf' items :\tIntBasicItem [*] name : 'n' value : '1'"),
             "[D] Looking for merge key a",
             "[D] merging under Dictionary [*] 'a' items :\tDictionary [*] 'leaf' items :",
             "[D] Looking for merge key leaf", "[W] incompatible structure for key leaf",
             "[D] Looking for merge key n"}}));

INSTANTIATE_TEST_SUITE_P(
    MergedLeaves, DictionaryMessages,
    testing::Values(Operation{
        "mergeDictionary of a leaf into a dictionary is silent",
        [](Dictionary& tree) {
            Dictionary other;
            std::stringstream in("<dict>\n<key>a</key>\n<string>z</string>\n</dict>\n");
            other.unMarshall(in);
            tree.mergeDictionary(other);
        },
        {"[D] getXmlVal returns 'a'", "[D] getXmlVal returns 'z'",
         ("[D] merging under Dictionary [*] 'root' items :\tBasicItem [*] name : 'a' "
          "value : 'z'"),
         "[D] Looking for merge key a"}}));

INSTANTIATE_TEST_SUITE_P(
    Comparisons, DictionaryMessages,
    testing::Values(
        Operation{
            "equal dictionaries",
            [](Dictionary& tree) { tree.equals(tree); },
            {"[D] equals returns 1", "[D] equals returns 1", "[D] equals returns 1",
             "[D] equals returns 1", "[D] equals returns 1", "[D] equals returns 1"}},
        Operation{
            "a leaf",
            [](Dictionary& tree) { tree.equals(BasicItem("n", "")); },
            {"[D] Other is not a dictionary"}},
        Operation{
            "another number of entries",
            [](Dictionary& tree) { tree.equals(Dictionary()); },
            {"[D] Dictionary have different sizes"}},
        Operation{
            "another key",
            [](Dictionary& tree) { tree.getItem("a")->equals(tree); },
            {"[D] getting on * root path a", "[D] Key not found a"}},
        Operation{
            "a difference below",
            [](Dictionary& tree) {
                Dictionary other(tree);
                other.removeItem("a.b.k");
                tree.equals(other);
            },
            {"[D] Dictionary have different sizes", "[D] equals returns 0",
             "[D] equals returns 0"}},
        Operation{
            "leaves",
            [](Dictionary& /*tree*/) {
                BasicItem("k", "x").equals(BasicItem("k", "y"));
                IntBasicItem("k", 1).equals(IntBasicItem("k", 1));
            },
            {"[D] equals returns 0", "[D] equals returns 1"}}));

TEST(DictionaryFileMessages, NameWhatIsWrongWithTheFile)
{
    const TemporaryFolder folder;
    Dictionary tree;
    const PublishedTracer tracer;

    EXPECT_THROW(tree.loadFromFile(folder.file("missing")), KFDictionaryException);
    loadText(tree, "no header");
    loadText(tree, "<?xml?>\n<plist version=\"2.0\">\n");

    EXPECT_THAT(
        messagesIn(tracer.lines()),
        testing::ElementsAre(
            "[E] Can't open file " + folder.file("missing"), "[E] No XML header found",
            "[E] Incorrect plist or bad version"));
}

TEST(DictionaryMessagesFromOutside, AreNoFormats)
{
    Dictionary tree;
    const PublishedTracer tracer;

    tree.getItem("%s%n%d.%s");

    EXPECT_THAT(messagesIn(tracer.lines()), Contains("[D] Head key %s%n%d not found"));
}

TEST(DictionaryMessageAddresses, AreThoseOfTheObjects)
{
    const auto address = [](const void* object) {
        std::ostringstream text;
        text << std::hex << static_cast<std::uint32_t>(reinterpret_cast<std::uintptr_t>(object));
        return text.str();
    };
    Dictionary tree;
    tree.addValue("d.k", "x");
    const Item* const inner = tree.getItem("d");
    BasicItem item("k", "y");
    const std::string shown = item.toString("");
    const PublishedTracer tracer;

    tree.setItem("d.k", item);
    tree.getItemPath(item);
    tree.getItem("d.k");

    const std::string lines = tracer.lines();
    for (const std::string& message : std::vector<std::string>{
             "Adding on [" + address(&tree) + "] root for path d.k item " + shown,
             "Adding on [" + address(inner) + "] d for path k item " + shown,
             "looking for item [" + address(&item) + "] name k in " + address(&tree) + "\n",
             "looking for item [" + address(&item) + "] name k in " + address(inner) + "\n",
             "getting on [" + address(&tree) + "] root path d.k\n",
             "getting on [" + address(inner) + "] d path k\n"})
        EXPECT_THAT(lines, HasSubstr(message));
}

} // namespace
