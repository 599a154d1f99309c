#include "LogStream.h"

#include "Logger.h"
#include "TemporaryFolder.h"

#include <gtest/gtest.h>

namespace {

class LogStreamTest : public testing::Test {
protected:
    LogStreamTest()
    {
        Logger::SetInstance(&m_logger);
        m_logger.setActive(true);
        m_logger.setSynchronous(true);
        m_logger.addLevels(2);
        m_logger.SetFileName(m_folder.file("app"));
    }

    std::string written() const { return m_folder.read("app_0.txt"); }

    const TemporaryFolder m_folder;
    Logger m_logger;
};

} // namespace

TEST_F(LogStreamTest, LogsItsTextAtTheEndOfItsScope)
{
    {
        LogStream stream(LoggerMsgType::ERROR);
        stream << "loaded " << 3 << " networks";
        EXPECT_EQ(written(), "");
    }

    EXPECT_EQ(written(), "[ERROR  ] loaded 3 networks\n");
}

TEST_F(LogStreamTest, LogsAsATemporary)
{
    LogStream(LoggerMsgType::ERROR) << "text";

    EXPECT_EQ(written(), "[ERROR  ] text\n");
}

TEST_F(LogStreamTest, LogsNothingOfALevelThatIsNotInTheMask)
{
    LogStream(LoggerMsgType::DEBUG) << "text";

    EXPECT_EQ(written(), "");
}

TEST_F(LogStreamTest, LogsNothingWhileInactive)
{
    m_logger.setActive(false);

    LogStream(LoggerMsgType::ERROR) << "text";

    EXPECT_EQ(written(), "");
}

TEST_F(LogStreamTest, ReadsAPercentSignInItsTextAsAConversion)
{
    LogStream(LoggerMsgType::ERROR) << "100%% done";

    EXPECT_EQ(written(), "[ERROR  ] 100% done\n");
}

TEST(LogStream, LogsNothingWhenNoLogIsPublished)
{
    testing::internal::CaptureStdout();

    LogStream(LoggerMsgType::ERROR) << "text";

    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
}
