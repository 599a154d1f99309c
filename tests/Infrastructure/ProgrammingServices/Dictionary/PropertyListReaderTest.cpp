#include "BasicItem.h"
#include "Dictionary.h"
#include "IntBasicItem.h"
#include "RecordingItem.h"

#include <ostream>
#include <sstream>
#include <string>

#include <gtest/gtest.h>

namespace {

std::string lineAfter(std::stringstream& in)
{
    std::string line;
    std::getline(in, line);
    return line;
}

Dictionary read(const std::string& text)
{
    Dictionary tree;
    std::stringstream in(text);
    tree.unMarshall(in);
    return tree;
}

TEST(PropertyListReader, ReadsTextsIntegersAndDictionariesNamedByTheirKeys)
{
    const Dictionary tree = read("<dict>\n"
                                 "\t<key>text</key>\n"
                                 "\t<string>x</string>\n"
                                 "\t<key>number</key>\n"
                                 "<int>-5</int>\n"
                                 "\t<key>inner</key>\n"
                                 "\t<dict>\n"
                                 "\t\t<key>y</key>\n"
                                 "\t\t<string>z</string>\n"
                                 "\t</dict>\n"
                                 "</dict>\n");

    ASSERT_NE(dynamic_cast<BasicItem*>(tree.getItem("text")), nullptr);
    EXPECT_EQ(tree.getItem("text")->getName(), "text");
    EXPECT_STREQ(tree.getValue("text"), "x");
    ASSERT_NE(dynamic_cast<IntBasicItem*>(tree.getItem("number")), nullptr);
    EXPECT_EQ(tree.getItem("number")->getName(), "number");
    int number = 0;
    EXPECT_TRUE(tree.getValueAs("number", number));
    EXPECT_EQ(number, -5);
    ASSERT_NE(dynamic_cast<Dictionary*>(tree.getItem("inner")), nullptr);
    EXPECT_EQ(tree.getItem("inner")->getName(), "inner");
    EXPECT_STREQ(tree.getValue("inner.y"), "z");
}

struct Reading {
    const char* name;
    std::string text;
    /// What is written after reading it.
    std::string written;
};

void PrintTo(const Reading& reading, std::ostream* out)
{
    *out << reading.name;
}

using PropertyListReading = testing::TestWithParam<Reading>;

TEST_P(PropertyListReading, TakesExactlyWhatIsDescribed)
{
    Dictionary tree;
    std::stringstream in(GetParam().text);

    EXPECT_NO_THROW(tree.unMarshall(in));

    EXPECT_EQ(tree.marshall(""), GetParam().written);
    EXPECT_TRUE(in.good()) << "the state is cleared";
}

const std::string s_empty = "<dict>\n</dict>\n";
const std::string s_onlyA = "<dict>\n\t<key>a</key>\n\t<string>1</string>\n</dict>\n";
const std::string s_both = "<dict>\n"
                           "\t<key>a</key>\n"
                           "\t<string>1</string>\n"
                           "\t<key>b</key>\n"
                           "\t<string>2</string>\n"
                           "</dict>\n";

std::string aAndThen(const std::string& lines)
{
    return "<dict>\n<key>a</key>\n<string>1</string>\n" + lines +
           "<key>b</key>\n<string>2</string>\n</dict>\n";
}

INSTANTIATE_TEST_SUITE_P(
    Texts, PropertyListReading,
    testing::Values(
        Reading{"empty dictionary", "<dict>\n</dict>\n", s_empty},
        Reading{"no indentation", aAndThen(""), s_both},
        Reading{
            "tags anywhere in the line",
            "x <dict> y\n \t x<key>a</key>y\nx <string>1</string> y\nz<key> b </key>\n"
            "<string>\t2 </string>\n</dict>",
            s_both},
        Reading{
            "no line end behind the last line",
            "<dict>\n<key>a</key>\n<string>1</string>\n<key>b</key>\n<string>2</string>", s_both},
        Reading{
            "end of the stream instead of the closing tag",
            "<dict>\n<key>a</key>\n<string>1</string>\n", s_onlyA},
        Reading{"end of the stream after the opening line", "<dict>", s_empty},
        Reading{"end of the stream after a key", "<dict>\n<key>a</key>", s_empty},
        Reading{"end of the stream after a key line", "<dict>\n<key>a</key>\n", s_empty},
        Reading{
            "a value on the key's line is none", "<dict>\n<key>a</key><string>1</string>", s_empty},
        Reading{"end of the stream inside a value", "<dict>\n<key>a</key>\n<string>1", s_onlyA},
        Reading{"an empty line ends the dictionary", aAndThen("\n"), s_onlyA},
        Reading{"a comment ends the dictionary", aAndThen("<!-- x -->\n"), s_onlyA},
        Reading{"a value without its key ends the dictionary", aAndThen("<int>3</int>\n"), s_onlyA},
        Reading{
            "another closing tag ends the dictionary",
            "<dict>\n<key>a</key>\n<string>1</string>\n</array>\n<key>b</key>\n<string>2</"
            "string>\n",
            s_onlyA},
        Reading{"a boolean is skipped with its key", aAndThen("<key>c</key>\n<true/>\n"), s_both},
        Reading{
            "a real number is skipped with its key", aAndThen("<key>c</key>\n<real>1.5</real>\n"),
            s_both},
        Reading{
            "the usual integer tag is skipped with its key",
            aAndThen("<key>c</key>\n<integer>5</integer>\n"), s_both},
        Reading{
            "an empty value line is skipped with its key", aAndThen("<key>c</key>\n\n"), s_both},
        Reading{
            "a key as value line is skipped with its key", aAndThen("<key>c</key>\n<key>d</key>\n"),
            s_both},
        Reading{
            "a short text is skipped with its key", aAndThen("<key>c</key>\n<string/>\n"), s_both},
        Reading{
            "a short integer is skipped with its key", aAndThen("<key>c</key>\n<int/>\n"), s_both},
        Reading{
            "a short dictionary is skipped with its key", aAndThen("<key>c</key>\n<dict/>\n"),
            s_both},
        Reading{
            "closing tags as value lines are skipped with their keys",
            aAndThen("<key>c</key>\n</string>\n<key>d</key>\n</int>\n<key>e</key>\n</dict>\n"),
            s_both},
        Reading{"a short key ends the dictionary", aAndThen("<key/>\n"), s_onlyA},
        Reading{"the end of a key ends the dictionary", aAndThen("c</key>\n"), s_onlyA},
        Reading{
            "an array on one line is skipped with its key",
            aAndThen("<key>c</key>\n<array></array>\n"), s_both},
        Reading{
            "an array on several lines ends the dictionary at its second one",
            aAndThen("<key>c</key>\n<array>\n</array>\n"), s_onlyA},
        Reading{
            "the text's tag wins over the others",
            "<dict>\n<key>a</key>\n<int><dict><string>1</string>\n</dict>", s_onlyA},
        Reading{
            "the integer's tag wins over the dictionary's",
            "<dict>\n<key>a</key>\n<dict><int>1</int>\n</dict>",
            "<dict>\n\t<key>a</key>\n<int>1</int>\n</dict>\n"},
        Reading{
            "a dictionary that opens and closes on one line stays open",
            "<dict>\n<key>c</key>\n<dict></dict>\n<key>a</key>\n<string>1</string>\n</dict>\n",
            "<dict>\n\t<key>c</key>\n\t<dict>\n\t\t<key>a</key>\n\t\t<string>1</string>\n"
            "\t</dict>\n</dict>\n"},
        Reading{
            "a key that stands twice replaces",
            "<dict>\n<key>a</key>\n<int>0</int>\n<key>a</key>\n<string>1</string>\n</dict>",
            s_onlyA},
        Reading{
            "a dictionary that stands twice replaces and does not merge",
            "<dict>\n<key>d</key>\n<dict>\n<key>x</key>\n<string>1</string>\n</dict>\n"
            "<key>d</key>\n<dict>\n<key>y</key>\n<string>2</string>\n</dict>\n</dict>\n",
            "<dict>\n\t<key>d</key>\n\t<dict>\n\t\t<key>y</key>\n\t\t<string>2</string>\n"
            "\t</dict>\n</dict>\n"},
        Reading{
            "an empty key", "<dict>\n<key></key>\n<string>1</string>\n</dict>\n",
            "<dict>\n\t<key></key>\n\t<string>1</string>\n</dict>\n"},
        Reading{
            "carriage returns stay in values and keys",
            "<dict>\r\n<key>a\r</key>\r\n<string>1\r</string>\r\n</dict>\r\n",
            "<dict>\n\t<key>a\r</key>\n\t<string>1\r</string>\n</dict>\n"},
        Reading{
            "a file of another system's line ends is read",
            "<dict>\r\n<key>a</key>\r\n<string>1</string>\r\n</dict>\r\n", s_onlyA},
        Reading{
            "nothing is unescaped", "<dict>\n<key>a</key>\n<string>&lt;&amp;</string>\n</dict>\n",
            "<dict>\n\t<key>a</key>\n\t<string>&lt;&amp;</string>\n</dict>\n"},
        Reading{
            "a number that is none is 0", "<dict>\n<key>a</key>\n<int>x</int>\n</dict>\n",
            "<dict>\n\t<key>a</key>\n<int>0</int>\n</dict>\n"}));

TEST(PropertyListReader, ReadsNothingWithoutAnOpeningTag)
{
    const std::string entry = "\n<key>a</key>\n<string>1</string>\n</dict>\n";

    for (const std::string begin : {"", "\n<dict>", "<plist>\n<dict>", "</dict>", "<dict/>"}) {
        Dictionary tree = read(begin + entry);

        EXPECT_EQ(tree.getFirstItem(), nullptr) << begin;
    }
}

TEST(PropertyListReader, ConsumesTheFirstLineEvenWithoutAnOpeningTag)
{
    Dictionary tree;
    std::stringstream in("not a dictionary\nnext\n");

    tree.unMarshall(in);

    EXPECT_EQ(lineAfter(in), "next");
}

TEST(PropertyListReader, LeavesTheStreamBehindTheLineThatHeldNoKey)
{
    Dictionary tree;
    std::stringstream in("<dict>\n<key>a</key>\n<string>1</string>\nno key\nnext\n");

    tree.unMarshall(in);

    EXPECT_EQ(lineAfter(in), "next");
}

TEST(PropertyListReader, LeavesTheClosingLineOfAChildConsumed)
{
    Dictionary tree = read("<dict>\n"
                           "<key>a</key>\n"
                           "<dict>\n"
                           "<key>x</key>\n"
                           "<string>1</string>\n"
                           "</dict>\n"
                           "<key>b</key>\n"
                           "<string>2</string>\n"
                           "</dict>\n");

    EXPECT_STREQ(tree.getValue("a.x"), "1");
    EXPECT_STREQ(tree.getValue("b"), "2");
    EXPECT_EQ(tree.getItem("a.b"), nullptr);
}

// The parent carries on from the line after the unknown one: the rest of the child is its own.
TEST(PropertyListReader, GivesTheRestOfAChildThatEndedEarlyToItsParent)
{
    Dictionary tree = read("<dict>\n"
                           "<key>a</key>\n"
                           "<dict>\n"
                           "<key>x</key>\n"
                           "<string>1</string>\n"
                           "\n"
                           "<key>y</key>\n"
                           "<string>2</string>\n"
                           "</dict>\n"
                           "<key>b</key>\n"
                           "<string>3</string>\n"
                           "</dict>\n");

    EXPECT_STREQ(tree.getValue("a.x"), "1");
    EXPECT_EQ(tree.getItem("a.y"), nullptr);
    EXPECT_STREQ(tree.getValue("y"), "2");
    EXPECT_FALSE(tree.hasKey("b"));
}

TEST(PropertyListReader, ReadsOneDictionaryAfterTheOther)
{
    std::stringstream in("<dict>\n<key>a</key>\n<int>1</int>\n</dict>\n"
                         "<dict>\n<key>b</key>\n<int>2</int>\n</dict>\n");
    Dictionary first;
    Dictionary second;

    first.unMarshall(in);
    second.unMarshall(in);

    EXPECT_TRUE(first.hasKey("a"));
    EXPECT_FALSE(first.hasKey("b"));
    EXPECT_TRUE(second.hasKey("b"));
}

TEST(PropertyListReader, AddsToWhatIsThereAndReplacesTheSameKeys)
{
    RecordingItem::Record record;
    RecordingItem item(record);
    Dictionary tree;
    tree.setItem("a", item);
    tree.addValue("d.old", "gone");
    tree.addValue("kept", "x");
    std::stringstream in("<dict>\n<key>a</key>\n<string>1</string>\n"
                         "<key>d</key>\n<dict>\n</dict>\n</dict>\n");

    tree.unMarshall(in);

    EXPECT_EQ(record.destroyed, 1);
    EXPECT_EQ(
        tree.marshall(""), "<dict>\n"
                           "\t<key>a</key>\n"
                           "\t<string>1</string>\n"
                           "\t<key>d</key>\n"
                           "\t<dict>\n"
                           "\t</dict>\n"
                           "\t<key>kept</key>\n"
                           "\t<string>x</string>\n"
                           "</dict>\n");
}

TEST(PropertyListReader, StoresAKeyWithAFullStopUnsplit)
{
    Dictionary tree = read("<dict>\n<key>a.b</key>\n<string>1</string>\n</dict>\n");

    EXPECT_TRUE(tree.hasKey("a.b"));
    EXPECT_FALSE(tree.hasKey("a"));
}

} // namespace
