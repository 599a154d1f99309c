#include "BasicItem.h"
#include "Dictionary.h"
#include "RecordingItem.h"

#include <memory>
#include <string>

#include <gtest/gtest.h>

// Items of classes that the library does not know: what they answer counts, not their class.
namespace {

class ForeignItem : public RecordingItem {
public:
    struct Answers {
        const char* text = nullptr;
        Dictionary* dictionary = nullptr;
        bool equal = false;
    };

    ForeignItem(Record& record, const Answers& answers)
        : RecordingItem(record, "k"), m_answers(answers)
    {
    }

    using Item::getValue;

    bool equals(const Item& /*other*/) override { return m_answers.equal; }
    Item* clone() override { return std::make_unique<ForeignItem>(*this).release(); }
    Dictionary* getAsDictionary() override { return m_answers.dictionary; }
    const char* getValue() const override { return m_answers.text; }

private:
    Answers m_answers;
};

class ForeignItems : public testing::Test {
protected:
    ForeignItem answering(const ForeignItem::Answers& answers) { return {m_record, answers}; }

    RecordingItem::Record m_record;
};

TEST_F(ForeignItems, EqualATextByTheirText)
{
    BasicItem text("k", "x");

    EXPECT_TRUE(text.equals(answering({.text = "x"})));
    EXPECT_FALSE(text.equals(answering({.text = "y"})));
}

TEST_F(ForeignItems, AreAskedWhetherTheyEqualAnEntry)
{
    ForeignItem item = answering({.equal = true});
    ForeignItem other = answering({.equal = false});
    Dictionary tree;
    tree.addValue("k", "x");

    EXPECT_EQ(tree.getItemPath(item), "k");
    EXPECT_EQ(tree.getItemPath(other), "");
}

TEST_F(ForeignItems, AreAskedWhetherTheyEqualTheEntryOfAnotherDictionary)
{
    ForeignItem item = answering({.equal = true});
    Dictionary mine;
    mine.setItem("k", item);
    Dictionary theirs;
    theirs.addValue("k", "x");

    EXPECT_TRUE(mine.equals(theirs));
    EXPECT_FALSE(theirs.equals(mine));
}

/// A dictionary with an item "view" that answers another dictionary, which it does not own.
class ForeignDictionary : public ForeignItems {
protected:
    ForeignDictionary()
    {
        m_viewed.addValue("k", "x");
        ForeignItem view = answering({.dictionary = &m_viewed});
        m_tree.setItem("view", view);
    }

    Dictionary m_viewed{"viewed"};
    Dictionary m_tree;
};

TEST_F(ForeignDictionary, IsSearchedWrittenAndChanged)
{
    Dictionary source;
    source.addValue("l", "y");

    m_tree.addDictionary("view", source);

    EXPECT_STREQ(m_viewed.getValue("l"), "y");
    EXPECT_STREQ(m_tree.findValue("k"), "x");
    EXPECT_EQ(
        m_tree.marshall(""), "<dict>\n"
                             "\t<key>view</key>\n"
                             "\t<dict>\n"
                             "\t\t<key>k</key>\n"
                             "\t\t<string>x</string>\n"
                             "\t\t<key>l</key>\n"
                             "\t\t<string>y</string>\n"
                             "\t</dict>\n"
                             "</dict>\n");
}

TEST_F(ForeignDictionary, IsCopiedAsADictionary)
{
    Dictionary copy(m_tree);
    m_viewed.addValue("k", "changed");

    EXPECT_EQ(copy.getItem("view")->getName(), "viewed");
    EXPECT_STREQ(copy.getValue("view.k"), "x");
}

TEST_F(ForeignDictionary, EqualsADictionary)
{
    Dictionary same;
    same.addValue("view.k", "x");

    EXPECT_TRUE(m_tree.equals(same));
    EXPECT_TRUE(same.equals(m_tree));
}

TEST_F(ForeignDictionary, OutlivesTheItemThatAnswersIt)
{
    m_tree.clear();

    EXPECT_STREQ(m_viewed.getValue("k"), "x");
}

} // namespace
