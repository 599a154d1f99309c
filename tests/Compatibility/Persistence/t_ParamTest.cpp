#include "t_Param.h"

#include "ParameterRecords.h"

#include <memory>
#include <ostream>
#include <vector>

#include <gtest/gtest.h>
#include <sys/mman.h>

using namespace std::string_literals;

namespace {

std::string dataOf(const t_Param& parameter)
{
    return {parameter.getInternalBuffer(), static_cast<std::size_t>(parameter.getBufferSize())};
}

/// Longer than what a string holds inside itself, so that a buffer that were shared is noticed.
const std::string longData(100, 'd');

} // namespace

TEST(t_Param, HoldsPrivateCopyOfTheBytes)
{
    std::string bytes = longData;
    const t_Param parameter("name", bytes.data(), 100);

    bytes[0] = 'x';

    EXPECT_EQ(parameter.getName(), "name");
    EXPECT_EQ(parameter.getBufferSize(), 100);
    EXPECT_EQ(dataOf(parameter), longData);
}

TEST(t_Param, CopyHasBufferOfItsOwn)
{
    auto parameter = std::make_unique<t_Param>("name", longData.data(), 100);

    const t_Param copy(*parameter);
    parameter.reset();

    EXPECT_EQ(copy.getName(), "name");
    EXPECT_EQ(dataOf(copy), longData);
}

TEST(t_Param, AssignmentCopiesTheBuffer)
{
    const t_Param parameter("name", longData.data(), 100);
    t_Param other("other", "x", 1);

    other = parameter;

    EXPECT_NE(other.getInternalBuffer(), parameter.getInternalBuffer());
    EXPECT_EQ(other.getName(), "name");
    EXPECT_EQ(dataOf(other), longData);
}

TEST(t_Param, OfSizeZeroHasABuffer)
{
    const t_Param parameter("name", nullptr, 0);

    EXPECT_EQ(parameter.getBufferSize(), 0);
    EXPECT_NE(parameter.getInternalBuffer(), nullptr);
}

TEST(t_Param, MarshallsLengthsAsLittleEndianNumbers)
{
    EXPECT_EQ(t_Param("a", "\x01\x02\x03", 3).marshall(), "\x02\0\0\0a\0\x03\0\0\0\x01\x02\x03"s);
    EXPECT_EQ(
        t_Param(std::string(259, 'n'), nullptr, 0).marshall(),
        "\x04\x01\0\0"s + std::string(259, 'n') + "\0\0\0\0\0"s);
}

TEST(t_Param, RecordHasNineBytesMoreThanNameAndData)
{
    EXPECT_EQ(t_Param("name", nullptr, 0).marshall().size(), 13U);
    EXPECT_EQ(t_Param("name", "data!", 5).marshall().size(), 18U);
}

TEST(t_Param, TakesOneRecordOffTheFront)
{
    const std::string bytes = t_Param("a", "\0\x01\xFF", 3).marshall() + "rest";
    std::string_view view = bytes;

    const auto parameter = t_Param::unMarshall(view);

    ASSERT_TRUE(parameter);
    EXPECT_EQ(parameter->getName(), "a");
    EXPECT_EQ(dataOf(*parameter), "\0\x01\xFF"s);
    EXPECT_EQ(view, "rest");
}

TEST(t_Param, NameMayHoldZeroBytesAndMayBeEmpty)
{
    for (const std::string& name : {"a\0b"s, ""s}) {
        const std::string bytes = t_Param(name, "x", 1).marshall();
        std::string_view view = bytes;

        const auto parameter = t_Param::unMarshall(view);

        ASSERT_TRUE(parameter);
        EXPECT_EQ(parameter->getName(), name);
    }
}

namespace {

struct BrokenRecord {
    const char* what;
    std::string bytes;

    friend void PrintTo(const BrokenRecord& row, std::ostream* out) { *out << row.what; }
};

class BrokenRecords : public testing::TestWithParam<BrokenRecord> {};

const std::vector<BrokenRecord> broken = {
    {"Nothing", ""},
    {"HalfALength", "\x02\0\0"s},
    {"LengthAlone", "\x02\0\0\0"s},
    {"HalfAName", "\x02\0\0\0a"s},
    {"NameOfNoLength", "\0\0\0\0\x01\0\0\0x"s},
    {"NameWithoutItsZero", "\x02\0\0\0ab\x01\0\0\0x"s},
    {"NegativeNameLength", "\xFF\xFF\xFF\xFF\x61\0\x01\0\0\0x"s},
    {"NameLengthOf2GB", "\xFF\xFF\xFF\x7F\x61\0\x01\0\0\0x"s},
    {"NoSize", "\x02\0\0\0a\0"s},
    {"HalfASize", "\x02\0\0\0a\0\x01\0\0"s},
    {"DataMissing", "\x02\0\0\0a\0\x01\0\0\0"s},
    {"DataTruncated", "\x02\0\0\0a\0\x03\0\0\0\x01\x02"s},
    {"NegativeSize", "\x02\0\0\0a\0\xFF\xFF\xFF\xFF\x01\x02\x03"s},
    {"SizeOf2GB", "\x02\0\0\0a\0\xFF\xFF\xFF\x7F\x01\x02\x03"s},
};

} // namespace

TEST_P(BrokenRecords, AreNoRecordAndLeaveTheBytes)
{
    std::string_view view = GetParam().bytes;

    EXPECT_FALSE(t_Param::unMarshall(view));

    EXPECT_EQ(view, GetParam().bytes);
}

TEST_P(BrokenRecords, EndAFileAndLeaveTheRecordsBefore)
{
    const std::string record = t_Param("before", "x", 1).marshall();

    const t_BinaryParamMap parameters = ParameterRecords::parse(record + GetParam().bytes);

    EXPECT_EQ(ParameterRecords::toBytes(parameters), record);
}

namespace {

/// More bytes than a length can tell, none of which is in memory before it is looked at: the given
/// ones, and zeros behind them.
class HugeBytes {
public:
    explicit HugeBytes(const std::string& front)
    {
        EXPECT_NE(m_bytes, MAP_FAILED);
        EXPECT_EQ(mprotect(m_bytes, 4096, PROT_READ | PROT_WRITE), 0);
        front.copy(static_cast<char*>(m_bytes), front.size());
    }
    ~HugeBytes() { munmap(m_bytes, s_size); }

    HugeBytes(const HugeBytes&) = delete;
    HugeBytes& operator=(const HugeBytes&) = delete;

    std::string_view view() const { return {static_cast<const char*>(m_bytes), s_size}; }

private:
    static constexpr std::size_t s_size = std::size_t{5} << 30U;

    void* const m_bytes =
        mmap(nullptr, s_size, PROT_READ, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
};

} // namespace

TEST(t_Param, OfALengthAboveTwoGigabytesIsNoRecordThoughTheBytesAreThere)
{
    for (const std::string& record : {"\0\0\0\x80"s, "\x02\0\0\0a\0\0\0\0\x80"s}) {
        const HugeBytes bytes(record);
        std::string_view view = bytes.view();

        EXPECT_FALSE(t_Param::unMarshall(view));

        EXPECT_EQ(view.size(), bytes.view().size());
    }
}

INSTANTIATE_TEST_SUITE_P(t_Param, BrokenRecords, testing::ValuesIn(broken), [](const auto& test) {
    return std::string(test.param.what);
});
