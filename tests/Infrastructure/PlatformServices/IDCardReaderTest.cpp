#include "IDCardReader.h"

#include "MarkedCalls.h"
#include "OrdinaryUser.h"
#include "SystemCallFaults.h"
#include "TemporaryFolder.h"
#include "VirtualSlot.h"

#include <cerrno>
#include <clocale>
#include <filesystem>
#include <memory>
#include <ostream>
#include <string>
#include <type_traits>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

static_assert(std::has_virtual_destructor_v<IDCardReader>);

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

/// A folder for one card and the reader of that folder.
class IDCard : public testing::Test {
protected:
    void writeCard(std::string_view content) { m_folder.write("ID.txt", content); }

    TemporaryFolder m_folder;
    IDCardReader m_reader{m_folder.path() + "/"};
};

} // namespace

TEST_F(IDCard, HoldsEachEntryOfTheFile)
{
    writeCard("PRODUCT_NAME=Tool\nOTHER_KEY=1\n");

    EXPECT_TRUE(m_reader.readIDCard());

    EXPECT_THAT(
        m_reader.getIDCardParams(),
        ElementsAre(Pair("OTHER_KEY", "1"), Pair("PRODUCT_NAME", "Tool")));
    EXPECT_EQ(m_reader.getParam("OTHER_KEY"), "1");
}

TEST_F(IDCard, IsNotReadByTheConstructor)
{
    writeCard("PRODUCT_NAME=Tool\n");

    const IDCardReader reader(m_folder.path() + "/");

    EXPECT_THAT(reader.getIDCardParams(), IsEmpty());
}

TEST_F(IDCard, IsLookedForUnderTheDirectorysTextFollowedByTheName)
{
    m_folder.write("prefixID.txt", "PRODUCT_NAME=Tool\n");
    IDCardReader reader(m_folder.file("prefix"));

    EXPECT_TRUE(reader.readIDCard());

    EXPECT_EQ(reader.getProductName(), "Tool");
}

TEST_F(IDCard, IsRefusedWhenMissing)
{
    EXPECT_FALSE(m_reader.readIDCard());

    EXPECT_THAT(m_reader.getIDCardParams(), IsEmpty());
}

TEST_F(IDCard, IsRefusedWhenItIsAFolder)
{
    std::filesystem::create_directory(m_folder.file("ID.txt"));

    EXPECT_FALSE(m_reader.readIDCard());
}

TEST_F(IDCard, IsRefusedWithoutWaitingWhenItIsAFifo)
{
    ASSERT_EQ(mkfifo(m_folder.file("ID.txt").c_str(), 0600), 0);

    EXPECT_FALSE(m_reader.readIDCard());
}

TEST_F(IDCard, IsRefusedWhenTheUserMayNotReadIt)
{
    namespace fs = std::filesystem;
    writeCard("PRODUCT_NAME=Tool\n");
    fs::permissions(m_folder.path(), fs::perms(0755));
    fs::permissions(m_folder.file("ID.txt"), fs::perms::none);

    EXPECT_TRUE(asOrdinaryUser([this] { return !m_reader.readIDCard(); }));
    fs::permissions(m_folder.file("ID.txt"), fs::perms(0644));
    EXPECT_TRUE(asOrdinaryUser([this] { return m_reader.readIDCard(); }));
}

TEST_F(IDCard, MayStandBehindALink)
{
    m_folder.write("card", "PRODUCT_NAME=Tool\n");
    ASSERT_EQ(symlink("card", m_folder.file("ID.txt").c_str()), 0);

    EXPECT_TRUE(m_reader.readIDCard());
}

TEST_F(IDCard, IsRefusedWhenReadingItFails)
{
    writeCard("PRODUCT_NAME=Tool\n" + std::string(100000, 'x'));
    for (const int nth : {1, 2}) {
        SystemCallFaults faults;
        faults.fail("read", EIO, nth);

        EXPECT_FALSE(m_reader.readIDCard()) << nth;
        EXPECT_THAT(m_reader.getIDCardParams(), IsEmpty()) << nth;
    }
}

TEST_F(IDCard, IsRefusedWhenItIsLongerThanAnyCard)
{
    const std::string longest = "PRODUCT_NAME=" + std::string(16777216 - 13, '\0');
    writeCard(longest + "\n");

    EXPECT_FALSE(m_reader.readIDCard());
    EXPECT_THAT(m_reader.getIDCardParams(), IsEmpty());

    writeCard(longest);
    EXPECT_TRUE(m_reader.readIDCard());
}

TEST_F(IDCard, IsRefusedWithEmptyLinesOnly)
{
    writeCard("\n\n\n");

    EXPECT_FALSE(m_reader.readIDCard());

    EXPECT_THAT(m_reader.getIDCardParams(), IsEmpty());
}

TEST_F(IDCard, IsRefusedWhenEmpty)
{
    writeCard("");

    EXPECT_FALSE(m_reader.readIDCard());
}

TEST_F(IDCard, KeepsWhatAnEarlierReadingStored)
{
    writeCard("A=1\nB=1\n");
    ASSERT_TRUE(m_reader.readIDCard());
    writeCard("B=2\n");

    EXPECT_TRUE(m_reader.readIDCard());

    EXPECT_THAT(m_reader.getIDCardParams(), ElementsAre(Pair("A", "1"), Pair("B", "2")));
}

TEST_F(IDCard, WithAForbiddenCharacterEndsThereAndKeepsWhatIsStored)
{
    writeCard("A=1\nX&Y=1\nB=2\n");

    EXPECT_FALSE(m_reader.readIDCard());

    EXPECT_THAT(m_reader.getIDCardParams(), ElementsAre(Pair("A", "1")));
}

TEST_F(IDCard, MayHoldTheForbiddenCharacterNowhere)
{
    for (const char* line : {"&", "A=&", "A=1&", "&A=1", "=&", "A=1\x01&"}) {
        writeCard(std::string(line) + "\nA=1\n");

        EXPECT_FALSE(m_reader.readIDCard()) << line;
        EXPECT_THAT(m_reader.getIDCardParams(), IsEmpty()) << line;
    }
}

TEST_F(IDCard, MayHoldTheForbiddenCharacterNeitherInALastLineWithoutEndOfLine)
{
    writeCard("A=1\nB=&");

    EXPECT_FALSE(m_reader.readIDCard());

    EXPECT_THAT(m_reader.getIDCardParams(), ElementsAre(Pair("A", "1")));
}

TEST_F(IDCard, GivesAnEmptyTextForAnAbsentKeyAsForAnEmptyValue)
{
    writeCard("EMPTY=\n");

    EXPECT_TRUE(m_reader.readIDCard());

    EXPECT_EQ(m_reader.getParam("EMPTY"), "");
    EXPECT_EQ(m_reader.getParam("ABSENT"), "");
    EXPECT_THAT(m_reader.getIDCardParams(), ElementsAre(Pair("EMPTY", "")));
}

TEST_F(IDCard, IsHandedOutAsACopy)
{
    writeCard("A=1\n");
    ASSERT_TRUE(m_reader.readIDCard());

    auto copy = m_reader.getIDCardParams();
    copy["A"] = "changed";

    EXPECT_EQ(m_reader.getParam("A"), "1");
}

TEST_F(IDCard, CutsTheValueAtTheSameByteWhateverTheLocale)
{
    const std::string former = std::setlocale(LC_ALL, nullptr);
    std::setlocale(LC_ALL, "C.UTF-8");
    writeCard("A=caf\xc3\xa9\n");

    EXPECT_TRUE(m_reader.readIDCard());
    std::setlocale(LC_ALL, former.c_str());

    EXPECT_EQ(m_reader.getParam("A"), "caf");
}

namespace {

struct Line {
    std::string name;
    std::string text;
    std::string key;
    std::string value;

    friend void PrintTo(const Line& row, std::ostream* out) { *out << row.name; }
};

class IDCardLine : public testing::TestWithParam<Line> {};

} // namespace

TEST_P(IDCardLine, StoresKeyAndValue)
{
    const TemporaryFolder folder;
    folder.write("ID.txt", GetParam().text);
    IDCardReader reader(folder.path() + "/");

    EXPECT_TRUE(reader.readIDCard());

    EXPECT_THAT(reader.getIDCardParams(), ElementsAre(Pair(GetParam().key, GetParam().value)));
}

INSTANTIATE_TEST_SUITE_P(
    Table, IDCardLine,
    testing::Values(
        Line{"Plain", "A=x\n", "A", "x"}, Line{"WithoutLineEnd", "A=x", "A", "x"},
        Line{"CarriageReturn", "PRODUCT_NAME=Tool\r\n", "PRODUCT_NAME", "Tool"},
        Line{"BlanksAroundTheSign", "PRODUCT_NAME = Tool \n", "PRODUCT_NAME ", " Tool "},
        Line{"SecondSign", "A=x=y\n", "A", "x=y"}, Line{"Tab", "A=x\ty\n", "A", "x"},
        Line{"LastPrintable", "A= ~\n", "A", " ~"}, Line{"Delete", "A=x\x7fy\n", "A", "x"},
        Line{"HighByte", "A=x\xe9y\n", "A", "x"}, Line{"Escape", "A=x\x1fy\n", "A", "x"},
        Line{"NulByte", std::string("A=x\0y\n", 6), "A", "x"},
        Line{"ValueOfNothingPrintable", "A=\xc3\xa9\n", "A", ""},
        Line{"KeyIsNeverCut", "\xc3\xa9\t=x\n", "\xc3\xa9\t", "x"},
        Line{"NoSign", "ALONE\n", "ALONE", "ALONE"},
        Line{"NoSignCarriageReturn", "ALONE\r\n", "ALONE\r", "ALONE"},
        Line{"BlankLineOfCarriageReturn", "\r\n", "\r", ""},
        Line{"EmptyKeySkipped", "=x\nA=1\n", "A", "1"},
        Line{"EmptyLineSkipped", "\nA=1\n\n", "A", "1"},
        Line{"LastOccurrence", "A=1\nA=2\n", "A", "2"},
        Line{"LastOccurrenceEmpty", "A=1\nA=\n", "A", ""}, Line{"NoComments", "#A=1\n", "#A", "1"},
        Line{"NoSections", "[A]\n", "[A]", "[A]"}, Line{"NoQuoting", "A=\"x\"\n", "A", "\"x\""},
        Line{"LongLine", "A=" + std::string(1000000, 'x') + "\n", "A", std::string(1000000, 'x')}),
    [](const testing::TestParamInfo<Line>& row) { return row.param.name; });

namespace {

struct Accessor {
    std::string (IDCardReader::*get)() const;
    std::string name;
    std::string key;

    friend void PrintTo(const Accessor& row, std::ostream* out) { *out << row.name; }
};

class IDCardAccessor : public testing::TestWithParam<Accessor> {};

} // namespace

TEST_P(IDCardAccessor, ReturnsTheValueOfItsKeyAlone)
{
    const TemporaryFolder folder;
    folder.write("ID.txt", GetParam().key + "=value of it\n");
    IDCardReader reader(folder.path() + "/");
    EXPECT_EQ((reader.*GetParam().get)(), "");

    ASSERT_TRUE(reader.readIDCard());

    EXPECT_EQ((reader.*GetParam().get)(), "value of it");
}

INSTANTIATE_TEST_SUITE_P(
    Table, IDCardAccessor,
    testing::Values(
        Accessor{&IDCardReader::getFleetID, "getFleetID", "FLEET_ID"},
        Accessor{&IDCardReader::getCustomerID, "getCustomerID", "CUSTOMER_ID"},
        Accessor{&IDCardReader::getGenerationVersion, "getGenerationVersion", "GENERATION_VERSION"},
        Accessor{&IDCardReader::getTAVAdministrationTool, "getTAVAdministrationTool", "IT_MANAGER"},
        Accessor{&IDCardReader::getBUName, "getBUName", "BU_NAME"},
        Accessor{&IDCardReader::getReferenceVersion, "getReferenceVersion", "REFERENCE_VERSION"},
        Accessor{&IDCardReader::getProductName, "getProductName", "PRODUCT_NAME"},
        Accessor{&IDCardReader::getBuildTarget, "getBuildTarget", "BUILD_TARGET"},
        Accessor{&IDCardReader::getCommercialVersion, "getCommercialVersion", "COMMERCIAL_VERSION"},
        Accessor{&IDCardReader::getProductVersion, "getProductVersion", "PRODUCT_VERSION"},
        Accessor{&IDCardReader::getUpgradeCode, "getUpgradeCode", "UPGRADE_CODE"}),
    [](const testing::TestParamInfo<Accessor>& row) { return row.param.key; });

TEST_P(IDCardAccessor, IsMarkedWithItsNameAndReader)
{
    const IDCardReader reader("/");

    expectMarked("IDCardReader::" + GetParam().name, &reader, [&] { (reader.*GetParam().get)(); });
}

TEST(IDCardReader, HasNoVirtualOperationButItsDestructor)
{
    EXPECT_FALSE(isVirtualOperation(&IDCardReader::readIDCard));
    EXPECT_FALSE(isVirtualOperation(&IDCardReader::getParam));
    EXPECT_FALSE(isVirtualOperation(&IDCardReader::getIDCardParams));
    EXPECT_FALSE(isVirtualOperation(&IDCardReader::getFleetID));
    EXPECT_FALSE(isVirtualOperation(&IDCardReader::getCustomerID));
    EXPECT_FALSE(isVirtualOperation(&IDCardReader::getGenerationVersion));
    EXPECT_FALSE(isVirtualOperation(&IDCardReader::getTAVAdministrationTool));
    EXPECT_FALSE(isVirtualOperation(&IDCardReader::getBUName));
    EXPECT_FALSE(isVirtualOperation(&IDCardReader::getReferenceVersion));
    EXPECT_FALSE(isVirtualOperation(&IDCardReader::getProductName));
    EXPECT_FALSE(isVirtualOperation(&IDCardReader::getBuildTarget));
    EXPECT_FALSE(isVirtualOperation(&IDCardReader::getCommercialVersion));
    EXPECT_FALSE(isVirtualOperation(&IDCardReader::getProductVersion));
    EXPECT_FALSE(isVirtualOperation(&IDCardReader::getUpgradeCode));
}

TEST(IDCardReader, IsMarkedAndCounted)
{
    IDCardReader reader("/none/");

    expectCounted("IDCardReader", [] { return std::make_unique<IDCardReader>("/"); });
    expectMarked("bool IDCardReader::readIDCard()", &reader, [&] { reader.readIDCard(); });
    expectMarked("IDCardReader::getParam", &reader, [&] { reader.getParam("A"); });
    expectMarked("IDCardReader::getIDCardParams", &reader, [&] { reader.getIDCardParams(); });
}

TEST_F(IDCard, MarksEachLineWithItsReader)
{
    writeCard("A=1\n");
    PublishedTracer tracer;
    tracer->TraceTheCall("-*readIDCard*");
    tracer->setPrintObjects(true);

    m_reader.readIDCard();

    EXPECT_EQ(tracer.lines(), entryLine("IDCardReader::storeEntry", &m_reader));
}
