#include "BasicItem.h"
#include "Dictionary.h"
#include "KFDictionaryFileException.h"
#include "KFDictionaryParsingException.h"
#include "PublishedLogger.h"
#include "TemporaryFolder.h"

#include <filesystem>
#include <ostream>
#include <string>
#include <type_traits>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

namespace {

using namespace std::string_literals;
using testing::MatchesRegex;

static_assert(std::is_base_of_v<KFException, KFDictionaryException>);
static_assert(std::is_base_of_v<KFDictionaryException, KFDictionaryFileException>);
static_assert(std::is_base_of_v<KFDictionaryException, KFDictionaryParsingException>);

const std::string s_begin = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\">\n";
const std::string s_unit = "Infrastructure/ProgrammingServices/Dictionary/src/Dictionary";

Dictionary sample()
{
    Dictionary tree;
    tree.addValue("A", "x");
    tree.addValue("B.c", 5);
    tree.addValue("B.d", "y");
    return tree;
}

template<typename Exception>
void expectLoadToThrow(const std::string& path, const char* message, int line)
{
    Dictionary tree = sample();
    try {
        tree.loadFromFile(path);
        FAIL() << "nothing was thrown";
    } catch (const Exception& exception) {
        EXPECT_STREQ(exception.what(), message);
        EXPECT_EQ(exception.getFileName(), s_unit);
        EXPECT_EQ(exception.getLine(), line);
    }
    EXPECT_TRUE(tree.equals(sample())) << "the dictionary was changed";
}

class DictionaryFile : public testing::Test {
protected:
    TemporaryFolder m_folder;
};

TEST_F(DictionaryFile, IsWrittenAsExactlyTheseLines)
{
    sample().saveToFile(m_folder.file("file"));

    EXPECT_EQ(
        m_folder.read("file"), "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                               "<plist version=\"1.0\">\n"
                               "<dict>\n"
                               "\t<key>A</key>\n"
                               "\t<string>x</string>\n"
                               "\t<key>B</key>\n"
                               "\t<dict>\n"
                               "\t\t<key>c</key>\n"
                               "<int>5</int>\n"
                               "\t\t<key>d</key>\n"
                               "\t\t<string>y</string>\n"
                               "\t</dict>\n"
                               "</dict>\n"
                               "</plist>");
}

TEST_F(DictionaryFile, ReadsBackEqual)
{
    sample().saveToFile(m_folder.file("file"));
    Dictionary tree("loaded");

    tree.loadFromFile(m_folder.file("file"));

    EXPECT_TRUE(tree.equals(sample()));
    EXPECT_EQ(tree.getName(), "loaded");
}

TEST_F(DictionaryFile, IsWrittenWithoutAChangeOfTheDictionary)
{
    Dictionary tree = sample();

    tree.saveToFile(m_folder.file("file"));

    EXPECT_TRUE(tree.equals(sample()));
    EXPECT_EQ(tree.getName(), "root");
}

TEST_F(DictionaryFile, OfAnEmptyDictionaryHoldsNoEntries)
{
    Dictionary().saveToFile(m_folder.file("file"));
    Dictionary tree;

    tree.loadFromFile(m_folder.file("file"));

    EXPECT_EQ(m_folder.read("file"), s_begin + "<dict>\n</dict>\n</plist>");
    EXPECT_EQ(tree.getFirstItem(), nullptr);
}

TEST_F(DictionaryFile, IsReplacedAndTheOldOneKept)
{
    m_folder.write(
        "file", "a longer old content than the new one, which must go entirely, all of it");
    const std::string old = m_folder.read("file");

    Dictionary().saveToFile(m_folder.file("file"));

    EXPECT_EQ(m_folder.read("file"), s_begin + "<dict>\n</dict>\n</plist>");
    EXPECT_EQ(m_folder.read("file.bak"), old);
}

TEST_F(DictionaryFile, InAMissingFolderIsNotWritten)
{
    EXPECT_NO_THROW(sample().saveToFile(m_folder.file("missing/file")));

    EXPECT_TRUE(std::filesystem::is_empty(m_folder.path()));
}

TEST_F(DictionaryFile, IsNotWrittenOverAFolder)
{
    std::filesystem::create_directory(m_folder.file("file"));

    EXPECT_NO_THROW(sample().saveToFile(m_folder.file("file")));

    EXPECT_TRUE(std::filesystem::is_directory(m_folder.file("file")));
    EXPECT_TRUE(std::filesystem::is_empty(m_folder.file("file")));
}

TEST_F(DictionaryFile, ThatCannotBeWrittenIsToldToTheLog)
{
    const PublishedLogger log;
    const std::string path = m_folder.file("missing/%s");

    sample().saveToFile(path);

    EXPECT_THAT(
        log.lines(),
        MatchesRegex(
            "\\[ERROR  \\] Saving the dictionary to " + path + " failed: .*No such file.*\n"));
}

TEST_F(DictionaryFile, ThatIsMissingCannotBeOpened)
{
    expectLoadToThrow<KFDictionaryFileException>(m_folder.file("file"), "Can't open file", 882);
    expectLoadToThrow<KFDictionaryFileException>("", "Can't open file", 882);
}

TEST_F(DictionaryFile, ThatIsNoRegularFileCannotBeOpened)
{
    std::filesystem::create_directory(m_folder.file("folder"));
    ASSERT_EQ(mkfifo(m_folder.file("fifo").c_str(), 0600), 0);
    sample().saveToFile(m_folder.file("file"));
    std::filesystem::create_symlink(m_folder.file("file"), m_folder.file("link"));

    for (const char* const name : {"folder", "fifo", "link"})
        expectLoadToThrow<KFDictionaryFileException>(m_folder.file(name), "Can't open file", 882);
}

struct WrongHeader {
    const char* name;
    std::string content;
    const char* message;
    int line;
};

void PrintTo(const WrongHeader& header, std::ostream* out)
{
    *out << header.name;
}

class DictionaryFileHeader : public testing::TestWithParam<WrongHeader> {
protected:
    TemporaryFolder m_folder;
};

TEST_P(DictionaryFileHeader, IsRefused)
{
    const WrongHeader& header = GetParam();

    expectLoadToThrow<KFDictionaryParsingException>(
        m_folder.write("file", header.content), header.message, header.line);
}

constexpr const char* s_noXml = "No XML header found";
constexpr const char* s_badPlist = "Incorrect plist or bad version";
const std::string s_body = "<dict>\n<key>a</key>\n<string>1</string>\n</dict>\n</plist>";

INSTANTIATE_TEST_SUITE_P(
    Headers, DictionaryFileHeader,
    testing::Values(
        WrongHeader{"empty file", "", s_noXml, 876},
        WrongHeader{"a zero byte first", "\0"s + s_begin + s_body, s_noXml, 876},
        WrongHeader{"no XML declaration", "<plist version=\"1.0\">\n" + s_body, s_noXml, 876},
        WrongHeader{"an empty line first", "\n" + s_begin + s_body, s_noXml, 876},
        WrongHeader{"another case", "<?XML?>\n<plist version=\"1.0\">\n" + s_body, s_noXml, 876},
        WrongHeader{"the declaration alone", "<?xml?>", s_badPlist, 870},
        WrongHeader{"the declaration's line alone", "<?xml?>\n", s_badPlist, 870},
        WrongHeader{
            "both headers on one line", "<?xml?><plist version=\"1.0\">\n" + s_body, s_badPlist,
            870},
        WrongHeader{
            "both headers on one line without an end", "<?xml?><plist version=\"1.0\">", s_badPlist,
            870},
        WrongHeader{
            "the tag on a later line", "<?xml?>\n\n<plist version=\"1.0\">\n" + s_body, s_badPlist,
            870},
        WrongHeader{
            "a document type before the tag",
            "<?xml?>\n<!DOCTYPE plist>\n<plist version=\"1.0\">\n" + s_body, s_badPlist, 870},
        WrongHeader{
            "another version", "<?xml?>\n<plist version=\"1.1\">\n" + s_body, s_badPlist, 870},
        WrongHeader{"no version", "<?xml?>\n<plist>\n" + s_body, s_badPlist, 870},
        WrongHeader{"other quotes", "<?xml?>\n<plist version='1.0'>\n" + s_body, s_badPlist, 870},
        WrongHeader{
            "a zero byte inside the tag", "<?xml?>\n<plist \0version=\"1.0\">\n"s + s_body,
            s_badPlist, 870}));

class DictionaryFileContent : public testing::TestWithParam<std::pair<std::string, const char*>> {
protected:
    TemporaryFolder m_folder;
};

TEST_P(DictionaryFileContent, IsRead)
{
    Dictionary tree;

    tree.loadFromFile(m_folder.write("file", GetParam().first));

    EXPECT_STREQ(tree.getValue("a"), GetParam().second);
}

INSTANTIATE_TEST_SUITE_P(
    Contents, DictionaryFileContent,
    testing::Values(
        std::pair(s_begin + s_body, "1"), std::pair(s_begin + s_body + "\n", "1"),
        // What follows the root is never read.
        std::pair(s_begin + s_body + "\n<dict>\n<key>a</key>\n<string>2</string>\n", "1"),
        std::pair(s_begin + "<dict>\n<key>a</key>\n<string>1</string>\n", "1"),
        // The headers are found anywhere in their lines, the tag without its last character.
        std::pair("\xef\xbb\xbf<?xml anything\n x <plist version=\"1.0\" y\n" + s_body, "1"),
        std::pair("<?xml?>\r\n<plist version=\"1.0\">\r\n" + s_body, "1"),
        // The root must follow at once.
        std::pair(s_begin + "\n" + s_body, nullptr), std::pair(s_begin, nullptr),
        std::pair(s_begin + "<array>\n</array>\n" + s_body, nullptr)));

TEST_F(DictionaryFile, EndsAtTheFirstZeroByte)
{
    const std::string path = m_folder.write(
        "file", s_begin + "<dict>\n<key>a</key>\n<string>1</string>\n<key>b</key>\n<string>be"s +
                    "\0fore</string>\n<key>c</key>\n<string>3</string>\n\0</dict>\n</plist>"s);
    Dictionary tree;

    tree.loadFromFile(path);

    EXPECT_STREQ(tree.getValue("a"), "1");
    EXPECT_STREQ(tree.getValue("b"), "be");
    EXPECT_FALSE(tree.hasKey("c"));
}

TEST_F(DictionaryFile, IsAddedToTheEntriesThatAreThere)
{
    Dictionary tree;
    tree.addValue("A", "replaced");
    tree.addValue("B.old", "replaced with its dictionary");
    tree.addValue("kept", "x");
    sample().saveToFile(m_folder.file("file"));

    tree.loadFromFile(m_folder.file("file"));

    Dictionary expected = sample();
    expected.addValue("kept", "x");
    EXPECT_TRUE(tree.equals(expected));
}

TEST_F(DictionaryFile, MalformedInTheMiddleKeepsWhatWasReadBefore)
{
    const std::string path = m_folder.write(
        "file", s_begin + "<dict>\n<key>a</key>\n<string>1</string>\n\n"
                          "<key>b</key>\n<string>2</string>\n</dict>\n</plist>");
    Dictionary tree;

    EXPECT_NO_THROW(tree.loadFromFile(path));

    EXPECT_STREQ(tree.getValue("a"), "1");
    EXPECT_FALSE(tree.hasKey("b"));
}

TEST_F(DictionaryFile, OfTenMegabytesIsReadAndWrittenBack)
{
    std::string content = s_begin + "<dict>\n";
    const std::string value(1000, 'v');
    const int count = 10'000;
    for (int i = 0; i < count; ++i)
        content +=
            "\t<key>" + std::to_string(count + i) + "</key>\n\t<string>" + value + "</string>\n";
    content += "</dict>\n</plist>";
    const std::string path = m_folder.write("file", content);
    Dictionary tree;

    tree.loadFromFile(path);
    tree.saveToFile(m_folder.file("copy"));

    ASSERT_GT(content.size(), 10'000'000U);
    EXPECT_EQ(tree.getValue(std::to_string(2 * count - 1)), value);
    EXPECT_TRUE(m_folder.read("copy") == content);
}

} // namespace
