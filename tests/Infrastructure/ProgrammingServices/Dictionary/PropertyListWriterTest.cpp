#include "PropertyListWriter.h"

#include "BasicItem.h"
#include "Dictionary.h"
#include "IntBasicItem.h"

#include <stdexcept>
#include <string>

#include <gtest/gtest.h>

namespace {

TEST(PropertyListWriter, WritesKeysInOrderAndIntegersAtTheLeftMargin)
{
    Dictionary tree;
    tree.addValue("B.d", "y");
    tree.addValue("B.c", 5);
    tree.addValue("A", "x");

    EXPECT_EQ(
        tree.marshall(""), "<dict>\n"
                           "\t<key>A</key>\n"
                           "\t<string>x</string>\n"
                           "\t<key>B</key>\n"
                           "\t<dict>\n"
                           "\t\t<key>c</key>\n"
                           "<int>5</int>\n"
                           "\t\t<key>d</key>\n"
                           "\t\t<string>y</string>\n"
                           "\t</dict>\n"
                           "</dict>\n");
}

TEST(PropertyListWriter, PutsTheIndentInFrontOfEveryLineButIntegers)
{
    Dictionary tree;
    tree.addValue("a.b", 5);
    tree.addValue("c", "x");

    EXPECT_EQ(
        tree.marshall("  "), "  <dict>\n"
                             "  \t<key>a</key>\n"
                             "  \t<dict>\n"
                             "  \t\t<key>b</key>\n"
                             "<int>5</int>\n"
                             "  \t</dict>\n"
                             "  \t<key>c</key>\n"
                             "  \t<string>x</string>\n"
                             "  </dict>\n");
}

TEST(PropertyListWriter, HasNoShortFormOfEmptyElements)
{
    Dictionary tree("never written");
    Dictionary empty("neither");
    tree.setItem("dictionary", empty);
    tree.addValue("text", "");

    EXPECT_EQ(
        tree.marshall(""), "<dict>\n"
                           "\t<key>dictionary</key>\n"
                           "\t<dict>\n"
                           "\t</dict>\n"
                           "\t<key>text</key>\n"
                           "\t<string></string>\n"
                           "</dict>\n");
    EXPECT_EQ(empty.marshall("\t"), "\t<dict>\n\t</dict>\n");
}

TEST(PropertyListWriter, EscapesNothing)
{
    Dictionary tree;
    tree.addValue("k<e>&y", "a<b>&\"c'\n</string>\xc3\xa9");

    EXPECT_EQ(
        tree.marshall(""), "<dict>\n"
                           "\t<key>k<e>&y</key>\n"
                           "\t<string>a<b>&\"c'\n</string>\xc3\xa9</string>\n"
                           "</dict>\n");
}

TEST(PropertyListWriter, KnowsTheSizeOfItsMarkupBeforehand)
{
    Dictionary tree;
    for (const char* const path : {"a.b.c", "a.b.long key", "a.d", "e.f.g.h.i"}) {
        Dictionary empty;
        tree.setItem(path, empty);
    }

    for (const std::string indent : {"", "\t", "    "})
        EXPECT_EQ(
            PropertyListWriter::markupSize(tree, indent.size()), tree.marshall(indent).size());
}

static_assert(PropertyListWriter::MAX_MARKUP_SIZE == 512 * 1024 * 1024);

TEST(PropertyListWriter, RefusesATreeWhoseMarkupIsLargerThanItsBound)
{
    Dictionary tree;
    tree.addValue("a.b", "x");
    const std::size_t size = PropertyListWriter::markupSize(tree, 1);
    const CallMarker marker("test");

    EXPECT_EQ(PropertyListWriter(marker, "\t", size).write(tree), tree.marshall("\t"));
    EXPECT_THROW(PropertyListWriter(marker, "\t", size - 1).write(tree), std::length_error);
}

TEST(PropertyListWriter, LeavesTheLinesOfValuesOutOfTheSizeOfItsMarkup)
{
    Dictionary tree;
    tree.addValue("a.b", "text");
    tree.addValue("a.c", 7);
    const std::size_t values = std::string("\t\t<string>text</string>\n<int>7</int>\n").size();

    EXPECT_EQ(PropertyListWriter::markupSize(tree, 0) + values, tree.marshall("").size());
}

} // namespace
