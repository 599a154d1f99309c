#include "ConfigurationSession.h"

#include "PublishedTracer.h"
#include "ScopedEnvironment.h"
#include "TemporaryFolder.h"
#include "VirtualDisplay.h"

#include <array>
#include <cstdlib>
#include <filesystem>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

/// A session where the toolkit can use no display.
class ConfigurationSessionTest : public testing::Test {
protected:
    void run() const
    {
        setenv("TMPDIR", m_temporary.path().c_str(), 1);
        std::string name = "TavConfiguration";
        std::array<char*, 2> argv{name.data(), nullptr};
        int argc = 1;
        ConfigurationSession::run(argc, argv.data());
    }

    const TemporaryFolder m_temporary;
    const ScopedEnvironment m_platform{"QT_QPA_PLATFORM", "none"};
    const ScopedEnvironment m_bus{"DBUS_SESSION_BUS_ADDRESS", "disabled:"};
    const ScopedEnvironment m_runtimeFolder{"XDG_RUNTIME_DIR", ""};
};

constexpr const char* c_announced = "  AccessibilityBus::announce\n";

} // namespace

TEST_F(ConfigurationSessionTest, TellsLastThatNoDisplayCanBeUsed)
{
    EXPECT_EXIT(
        run(), testing::ExitedWithCode(1),
        testing::EndsWith("\nTavConfiguration: cannot show the window: no display can be used\n"));
}

TEST_F(ConfigurationSessionTest, WritesPendingLinesWhereNoDisplayCanBeUsed)
{
    PublishedTracer tracer;
    tracer->setSynchronous(false);

    EXPECT_EXIT(run(), testing::ExitedWithCode(1), "");

    EXPECT_THAT(
        tracer.linesOfAllThreads(), testing::EndsWith("  DetachedStandardError::putBack\n"));
}

TEST_F(ConfigurationSessionTest, LeavesNoRuntimeFolderWhereNoDisplayCanBeUsed)
{
    EXPECT_EXIT(run(), testing::ExitedWithCode(1), "");

    EXPECT_TRUE(std::filesystem::is_empty(m_temporary.path()));
}

TEST_F(ConfigurationSessionTest, AnnouncesNoAccessibilityBusWhereThereIsNone)
{
    const PublishedTracer tracer;

    EXPECT_EXIT(run(), testing::ExitedWithCode(1), "");

    EXPECT_THAT(tracer.linesOfAllThreads(), testing::Not(testing::HasSubstr(c_announced)));
}

TEST_F(ConfigurationSessionTest, AnnouncesTheAccessibilityBusThatIsTheSessionBus)
{
    const VirtualDisplay server;
    const ScopedEnvironment display("DISPLAY", server.name());
    VirtualDisplay::setRootProperty("AT_SPI_BUS", "unix:path=/a/bus");
    const ScopedEnvironment noBus("DBUS_SESSION_BUS_ADDRESS", "");
    const PublishedTracer tracer;

    EXPECT_EXIT(run(), testing::ExitedWithCode(1), "");

    EXPECT_THAT(tracer.linesOfAllThreads(), testing::HasSubstr(c_announced));
}
