#include "Logger.h"

#include "BlockedViolations.h"
#include "CrashReport.h"
#include "TemporaryFolder.h"

#include <array>
#include <chrono>
#include <ctime>
#include <ostream>
#include <regex>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

namespace {

/// A log that writes each line at once to a ring in a folder of its own.
class LoggerTest : public testing::Test {
protected:
    LoggerTest()
    {
        m_logger.setSynchronous(true);
        m_logger.SetFileName(m_folder.file("app"));
    }

    std::string written() const { return m_folder.read("app_0.txt"); }

    const TemporaryFolder m_folder;
    Logger m_logger;
};

/// A log whose mutex the test may release after an open that failed.
class UnlockableLogger : public Logger {
public:
    using Logger::m_mutex;
};

/// std::time() is no good here: it may lag behind the clock that the stamp is taken from.
std::time_t secondsNow()
{
    return std::chrono::system_clock::to_time_t(std::chrono::system_clock::now());
}

void publishNullWithBlockedViolations()
{
    const BlockedViolations blocked;
    Logger::SetInstance(nullptr);
}

} // namespace

TEST(Logger, StartsWithItsDefaults)
{
    Logger logger;

    EXPECT_FALSE(logger.isActive());
    EXPECT_FALSE(logger.printsTime());
    EXPECT_FALSE(logger.isSynchronous());
    EXPECT_EQ(logger.getLevelMask(), 0U);
    EXPECT_EQ(logger.getMaxFiles(), 10);
    EXPECT_EQ(logger.getMaxLinesPerFile(), 100000);
    EXPECT_EQ(logger.getCurrentFileName(), "");
    EXPECT_TRUE(logger.areAllMsgFlushed());
}

struct TagCase {
    std::uint32_t type;
    std::string tag;

    friend void PrintTo(const TagCase& row, std::ostream* out) { *out << row.tag; }
};

class LoggerTag : public LoggerTest, public testing::WithParamInterface<TagCase> {};

TEST_P(LoggerTag, StandsBeforeTheText)
{
    m_logger.PrintMsg(static_cast<LoggerMsgType>(GetParam().type), "text");

    EXPECT_EQ(written(), GetParam().tag + "text\n");
}

INSTANTIATE_TEST_SUITE_P(
    Levels, LoggerTag,
    testing::Values(
        TagCase{1, "[DEBUG  ] "}, TagCase{2, "[ERROR  ] "}, TagCase{4, "[WARNING] "},
        TagCase{8, "[LEVEL_0] "}, TagCase{16, "[LEVEL_1] "}, TagCase{32, "[LEVEL_2] "},
        TagCase{64, "[LEVEL_3] "}, TagCase{128, "[LEVEL_4] "}, TagCase{256, "[LEVEL_5] "},
        TagCase{0, ""}, TagCase{3, ""}, TagCase{10, ""}, TagCase{512, ""}));

class LoggerLevel : public testing::TestWithParam<LoggerMsgType> {};

TEST_P(LoggerLevel, IsLoggedExactlyWhenItsBitIsInTheMask)
{
    const auto bit = static_cast<std::uint32_t>(GetParam());
    Logger with;
    with.setActive(true);
    with.addLevels(bit);
    Logger without;
    without.setActive(true);
    without.addLevels(511U & ~bit);

    EXPECT_TRUE(with.logs(GetParam()));
    EXPECT_FALSE(without.logs(GetParam()));
}

INSTANTIATE_TEST_SUITE_P(
    Levels, LoggerLevel,
    testing::Values(
        LoggerMsgType::DEBUG, LoggerMsgType::ERROR, LoggerMsgType::WARNING, LoggerMsgType::LEVEL_0,
        LoggerMsgType::LEVEL_1, LoggerMsgType::LEVEL_2, LoggerMsgType::LEVEL_3,
        LoggerMsgType::LEVEL_4, LoggerMsgType::LEVEL_5));

TEST(Logger, LogsNothingWhileInactive)
{
    Logger logger;
    logger.addLevels(511);

    EXPECT_FALSE(logger.logs(LoggerMsgType::ERROR));
}

TEST(Logger, LogsNothingWithAnEmptyMask)
{
    Logger logger;
    logger.setActive(true);

    EXPECT_FALSE(logger.logs(LoggerMsgType::ERROR));
}

TEST(Logger, OnlyAddsToTheMask)
{
    Logger logger;

    logger.addLevels(2);
    logger.addLevels(8);

    EXPECT_EQ(logger.getLevelMask(), 10U);
}

TEST_F(LoggerTest, PrintMsgDoesNotFilter)
{
    m_logger.PrintMsg(LoggerMsgType::ERROR, "text");

    EXPECT_EQ(written(), "[ERROR  ] text\n");
}

TEST_F(LoggerTest, FormatsItsArguments)
{
    m_logger.PrintMsg(LoggerMsgType::LEVEL_0, "%s = %d", "answer", 42);

    EXPECT_EQ(written(), "[LEVEL_0] answer = 42\n");
}

struct LengthCase {
    std::size_t length;
    std::size_t kept;
    std::string mark;

    friend void PrintTo(const LengthCase& row, std::ostream* out) { *out << row.length; }
};

class LoggerMessageLength : public LoggerTest, public testing::WithParamInterface<LengthCase> {};

TEST_P(LoggerMessageLength, IsKeptOrCut)
{
    m_logger.PrintMsg(LoggerMsgType::LEVEL_0, "%s", std::string(GetParam().length, 'x').c_str());

    EXPECT_EQ(written(), "[LEVEL_0] " + std::string(GetParam().kept, 'x') + GetParam().mark + "\n");
}

INSTANTIATE_TEST_SUITE_P(
    Edges, LoggerMessageLength,
    testing::Values(
        LengthCase{2048, 2047, ""}, LengthCase{3000, 3000, ""}, LengthCase{25000, 19999, " ..."}));

TEST_F(LoggerTest, PutsTimeStampDirectlyBeforeTheTag)
{
    m_logger.setPrintTime(true);

    const std::time_t before = secondsNow();
    m_logger.PrintMsg(LoggerMsgType::ERROR, "text");
    const std::time_t after = secondsNow();

    std::smatch match;
    const std::string line = written();
    ASSERT_TRUE(std::regex_match(
        line, match, std::regex(R"((\[\d\d:\d\d:\d\d)-\d\d\d\]\[ERROR  \] text\n)")));
    std::vector<std::string> possible;
    for (std::time_t time = before; time <= after; ++time) {
        std::tm local{};
        localtime_r(&time, &local);
        std::array<char, 16> text{};
        ASSERT_NE(std::strftime(text.data(), text.size(), "[%H:%M:%S", &local), 0U);
        possible.emplace_back(text.data());
    }
    EXPECT_THAT(possible, testing::Contains(match.str(1)));
}

TEST(Logger, FollowsEachConsoleLineByAnEmptyOne)
{
    Logger logger;
    logger.SetFileName("console");

    testing::internal::CaptureStdout();
    logger.PrintMsg(LoggerMsgType::LEVEL_0, "one");
    logger.PrintMsg(LoggerMsgType::ERROR, "two");

    EXPECT_EQ(testing::internal::GetCapturedStdout(), "[LEVEL_0] one\n\n[ERROR  ] two\n\n");
    EXPECT_TRUE(logger.areAllMsgFlushed());
}

TEST_F(LoggerTest, FinishWritesWhatIsPendingAndSwitchesOff)
{
    m_logger.setSynchronous(false);
    m_logger.setActive(true);
    m_logger.PrintMsg(LoggerMsgType::LEVEL_0, "one");
    m_logger.PrintMsg(LoggerMsgType::LEVEL_0, "two");

    m_logger.FinishLogging();

    EXPECT_FALSE(m_logger.isActive());
    EXPECT_TRUE(m_logger.areAllMsgFlushed());
    EXPECT_EQ(written(), "[LEVEL_0] one\n[LEVEL_0] two\n");
}

TEST_F(LoggerTest, FinishWritesNothingWhenSynchronous)
{
    m_logger.setSynchronous(false);
    m_logger.PrintMsg(LoggerMsgType::LEVEL_0, "one");
    m_logger.setSynchronous(true);

    m_logger.FinishLogging();

    EXPECT_FALSE(m_logger.areAllMsgFlushed());
    EXPECT_EQ(written(), "");
}

TEST(Logger, TellsOfAFileThatCannotBeOpened)
{
    const TemporaryFolder folder;
    UnlockableLogger logger;
    logger.SetFileName(folder.file("missing/app"));
    logger.PrintMsg(LoggerMsgType::LEVEL_0, "waiting");

    testing::internal::CaptureStderr();
    logger.WriteOnFile();

    EXPECT_EQ(
        testing::internal::GetCapturedStderr(),
        "Logger : can't open " + folder.file("missing/app_0.txt") + "\n");
    logger.m_mutex.release();
}

TEST(Logger, FinishNeverReturnsWhenTheFileCannotBeOpened)
{
    const TemporaryFolder folder;
    Logger logger;
    logger.SetFileName(folder.file("missing/app"));
    logger.PrintMsg(LoggerMsgType::LEVEL_0, "waiting");

    EXPECT_EXIT(
        {
            close(STDERR_FILENO); // every round tells the failure
            alarm(1);
            logger.FinishLogging();
        },
        testing::KilledBySignal(SIGALRM), "");
}

TEST(Logger, LosesPendingLinesAtItsDestruction)
{
    const TemporaryFolder folder;
    {
        Logger logger;
        logger.SetFileName(folder.file("app"));
        logger.PrintMsg(LoggerMsgType::LEVEL_0, "lost");
    }

    EXPECT_FALSE(std::filesystem::exists(folder.file("app_0.txt")));
}

TEST(Logger, IsNotReachedBeforeItIsPublished)
{
    const Logger logger;

    EXPECT_EQ(Logger::GetInstance(), nullptr);
}

TEST(Logger, IsReachedOncePublished)
{
    Logger logger;

    Logger::SetInstance(&logger);

    EXPECT_EQ(Logger::GetInstance(), &logger);
}

TEST(Logger, IsReplacedByAnotherThatIsPublished)
{
    Logger first;
    Logger second;

    Logger::SetInstance(&first);
    Logger::SetInstance(&second);

    EXPECT_EQ(Logger::GetInstance(), &second);
}

TEST(Logger, IsNoLongerReachedAfterItsDestruction)
{
    {
        Logger logger;
        Logger::SetInstance(&logger);
    }

    EXPECT_EQ(Logger::GetInstance(), nullptr);
}

TEST(Logger, StaysReachedWhenAnotherIsDestroyed)
{
    Logger logger;
    Logger::SetInstance(&logger);

    Logger().setActive(true);

    EXPECT_EQ(Logger::GetInstance(), &logger);
}

TEST(Logger, ReportsAViolationWhenNullIsPublished)
{
    EXPECT_CRASH_REPORT(
        Logger::SetInstance(nullptr),
        "REQUIRE VIOLATION : pTheLogger != NULL - In File : "
        "Infrastructure/ProgrammingServices/Tracer/src/Logger - At Line : <line>");
}

TEST(Logger, ReportsASecondViolationWhenNullIsPublishedWithNoneBefore)
{
    EXPECT_CRASH_REPORT(
        publishNullWithBlockedViolations(),
        "ENSURE VIOLATION : m_pInstance != NULL - In File : "
        "Infrastructure/ProgrammingServices/Tracer/src/Logger - At Line : <line>");
}

TEST(Logger, ReportsNoSecondViolationWhenNullIsPublishedInThePlaceOfOneAndKeepsIt)
{
    Logger logger;

    EXPECT_CRASH_REPORT(
        {
            Logger::SetInstance(&logger);
            publishNullWithBlockedViolations();
        },
        "REQUIRE VIOLATION : pTheLogger != NULL - In File : "
        "Infrastructure/ProgrammingServices/Tracer/src/Logger - At Line : <line>");
}

TEST(Logger, ReportsAViolationWhenItsConfigurationFileHasNoName)
{
    EXPECT_CRASH_REPORT(
        Logger().ReadConfigFile(nullptr),
        "REQUIRE VIOLATION : fileName != NULL - In File : "
        "Infrastructure/ProgrammingServices/Tracer/src/Logger - At Line : <line>");
}

TEST_F(LoggerTest, WritesPendingLinesWhenAViolationEndsTheProcess)
{
    m_logger.setSynchronous(false);
    Logger::SetInstance(&m_logger);
    m_logger.PrintMsg(LoggerMsgType::ERROR, "last words");

    EXPECT_CRASH_REPORT(
        Logger::SetInstance(nullptr),
        "REQUIRE VIOLATION : pTheLogger != NULL - In File : "
        "Infrastructure/ProgrammingServices/Tracer/src/Logger - At Line : <line>");

    EXPECT_EQ(written(), "[ERROR  ] last words\n");
}

TEST_F(LoggerTest, LetsTheMacroWriteALineOfALoggedLevel)
{
    Logger::SetInstance(&m_logger);
    m_logger.setActive(true);
    m_logger.addLevels(2);

    TAV_LOG(LoggerMsgType::ERROR, "cannot write %s", "file");
    TAV_LOG(LoggerMsgType::DEBUG, "%s", "not logged");

    EXPECT_EQ(written(), "[ERROR  ] cannot write file\n");
}

TEST_F(LoggerTest, LetsTheMacroEvaluateNothingOfALevelThatIsNotLogged)
{
    Logger::SetInstance(&m_logger);
    m_logger.setActive(true);
    m_logger.addLevels(2);
    int evaluations = 0;

    TAV_LOG(LoggerMsgType::DEBUG, "%d", ++evaluations);

    EXPECT_EQ(evaluations, 0);
}

TEST(Logger, LetsTheMacroEvaluateNothingWhenNoneIsPublished)
{
    int evaluations = 0;

    TAV_LOG(LoggerMsgType::ERROR, "%d", ++evaluations);

    EXPECT_EQ(evaluations, 0);
}
