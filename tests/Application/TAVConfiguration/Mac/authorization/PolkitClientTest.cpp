#include "PolkitClient.h"

#include "ChildProcess.h"
#include "ScopedEnvironment.h"

#include <csignal>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

void onBrokenPipe(int /*signal*/) {}

/// Whether the process, fresh as far as its sockets go, still answers a broken pipe its own way
/// after the call.
bool keepsItsActionForABrokenPipe(void (*call)())
{
    return inChildProcess([call] {
        std::signal(SIGPIPE, &onBrokenPipe);
        call();
        return std::signal(SIGPIPE, SIG_DFL) == &onBrokenPipe;
    });
}

} // namespace

/// There is no service: the system bus is missing.
class PolkitClientTest : public testing::Test {
protected:
    const ScopedEnvironment noBus{"DBUS_SYSTEM_BUS_ADDRESS", "unix:path=/missing/bus"};
};

TEST_F(PolkitClientTest, KeepsTheActionForABrokenPipeWhenItAsks)
{
    EXPECT_TRUE(keepsItsActionForABrokenPipe([] { PolkitClient::check("an.action", false); }));
}

TEST_F(PolkitClientTest, KeepsTheActionForABrokenPipeWhenItRevokes)
{
    EXPECT_TRUE(keepsItsActionForABrokenPipe([] { PolkitClient::revoke("tmpauthz1"); }));
}

TEST_F(PolkitClientTest, TellsWhyTheServiceCannotBeAsked)
{
    const PolkitClient::Answer answer = PolkitClient::check("an.action", false);

    EXPECT_EQ(answer.verdict, PolkitClient::Verdict::unavailable);
    EXPECT_THAT(answer.reason, testing::HasSubstr("Could not connect"));
}
