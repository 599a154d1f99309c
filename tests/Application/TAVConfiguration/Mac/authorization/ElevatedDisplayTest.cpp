#include "ElevatedDisplay.h"

#include "ChildProcess.h"
#include "Cookie.h"
#include "OrdinaryUser.h"
#include "ScopedEnvironment.h"
#include "TemporaryFolder.h"
#include "VirtualDisplay.h"

#include <gtest/gtest.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

/// What an ordinary user is told has to be the obstacle.
void expectForOrdinaryUser(const std::string& obstacle)
{
    EXPECT_TRUE(asOrdinaryUser([&obstacle] {
        EXPECT_EQ(ElevatedDisplay::obstacle(), obstacle);
        return !testing::Test::HasFailure();
    }));
}

} // namespace

/// A session without Wayland whose cookie file has one entry for every display; the X server is the
/// test's own to start.
class ElevatedDisplayTest : public testing::Test {
protected:
    ElevatedDisplayTest() { chmod(folder.path().c_str(), 0755); }

    TemporaryFolder folder;
    const std::string cookies = folder.write("cookies", cookieFile({}));
    ScopedEnvironment authority{"XAUTHORITY", cookies};
    ScopedEnvironment wayland{"WAYLAND_DISPLAY", ""};
    const std::vector<std::string> needingCookies{"-auth", cookies};
};

/// The X server's list admits an ordinary user, by his name.
class ElevatedDisplayAdmissionTest : public ElevatedDisplayTest {
protected:
    void SetUp() override
    {
        const passwd* const user = getpwuid(geteuid() == 0 ? NOBODY : geteuid());
        ASSERT_NE(user, nullptr) << "the tests need a user who has a name";
        ordinaryUserName = user->pw_name;
    }

    std::string ordinaryUserName;
};

TEST_F(ElevatedDisplayTest, NeedsADisplay)
{
    const ScopedEnvironment display("DISPLAY", "");

    EXPECT_EQ(ElevatedDisplay::obstacle(), "the window needs a display, and DISPLAY is not set");
}

TEST_F(ElevatedDisplayTest, NeedsAnXDisplayInAWaylandSession)
{
    const ScopedEnvironment display("DISPLAY", "");
    const ScopedEnvironment waylandOnly("WAYLAND_DISPLAY", "wayland-0");

    EXPECT_EQ(
        ElevatedDisplay::obstacle(),
        "the window needs an X display, and this Wayland session has none");
}

TEST_F(ElevatedDisplayTest, NeedsADisplayThatTheElevatorHandsOn)
{
    const ScopedEnvironment display("DISPLAY", "/a/socket:0");

    EXPECT_EQ(
        ElevatedDisplay::obstacle(),
        "the window needs a display, and pkexec does not hand on /a/socket:0");
}

TEST_F(ElevatedDisplayTest, NeedsACookieFileThatTheElevatorHandsOn)
{
    const VirtualDisplay server(needingCookies);
    const ScopedEnvironment display("DISPLAY", server.name());
    const ScopedEnvironment relative("XAUTHORITY", "cookies");

    EXPECT_EQ(
        ElevatedDisplay::obstacle(),
        "the window needs a display, and pkexec does not hand on its cookies, cookies");
}

TEST_F(ElevatedDisplayTest, AcceptsTheXDisplayOfAWaylandSession)
{
    const VirtualDisplay server(needingCookies);
    const ScopedEnvironment display("DISPLAY", server.name());
    const ScopedEnvironment waylandToo("WAYLAND_DISPLAY", "wayland-0");

    EXPECT_EQ(ElevatedDisplay::obstacle(), "");
}

TEST_F(ElevatedDisplayTest, NeedsAServerBehindTheDisplay)
{
    const ScopedEnvironment display("DISPLAY", ":4711");

    EXPECT_EQ(
        ElevatedDisplay::obstacle(), "the window needs a display, and :4711 cannot be opened");
}

TEST_F(ElevatedDisplayTest, NeedsAServerThatAdmitsTheUser)
{
    const VirtualDisplay server(needingCookies);
    const ScopedEnvironment display("DISPLAY", server.name());
    const ScopedEnvironment noCookies("XAUTHORITY", folder.write("empty", ""));

    EXPECT_EQ(
        ElevatedDisplay::obstacle(),
        "the window needs a display, and " + server.name() + " cannot be opened");
}

TEST_F(ElevatedDisplayTest, SurvivesThatNobodyReadsWhatIsToldOfARefusal)
{
    const VirtualDisplay server(needingCookies);
    const ScopedEnvironment display("DISPLAY", server.name());
    const ScopedEnvironment noCookies("XAUTHORITY", folder.write("empty", ""));

    EXPECT_TRUE(inChildProcess([&server] {
        Pipe errors;
        errors.open();
        dup2(errors.writeEnd.get(), STDERR_FILENO);
        close(errors.readEnd.release());
        return ElevatedDisplay::obstacle() ==
               "the window needs a display, and " + server.name() + " cannot be opened";
    }));
}

TEST_F(ElevatedDisplayTest, AcceptsADisplayWithACookie)
{
    const VirtualDisplay server(needingCookies);
    const ScopedEnvironment display("DISPLAY", server.name());

    EXPECT_EQ(ElevatedDisplay::obstacle(), "");
}

TEST_F(ElevatedDisplayTest, AcceptsACookieForTheDisplaysOwnNumber)
{
    const VirtualDisplay server(needingCookies);
    const ScopedEnvironment display("DISPLAY", server.name() + ".0");
    const std::string own =
        folder.write("own", cookieFile({.displayNumber = server.name().substr(1)}));
    const ScopedEnvironment ownCookie("XAUTHORITY", own);

    EXPECT_EQ(ElevatedDisplay::obstacle(), "");
}

TEST_F(ElevatedDisplayTest, AcceptsADisplayThatIsOpenToEverybody)
{
    const VirtualDisplay server({"-ac"});
    const ScopedEnvironment display("DISPLAY", server.name());
    const ScopedEnvironment noCookies("XAUTHORITY", folder.file("missing"));

    EXPECT_EQ(ElevatedDisplay::obstacle(), "");
}

TEST_F(ElevatedDisplayAdmissionTest, AcceptsADisplayThatIsOpenToEverybodyWhateverItsListSays)
{
    const VirtualDisplay server({"-ac"});
    const ScopedEnvironment display("DISPLAY", server.name());
    VirtualDisplay::admit(ordinaryUserName);
    const ScopedEnvironment noCookies("XAUTHORITY", folder.file("missing"));

    expectForOrdinaryUser("");
}

TEST_F(ElevatedDisplayTest, AcceptsADisplayThatIsOpenToTheWholeMachine)
{
    const VirtualDisplay server;
    const ScopedEnvironment display("DISPLAY", server.name());
    const ScopedEnvironment noCookies("XAUTHORITY", folder.file("missing"));

    EXPECT_EQ(ElevatedDisplay::obstacle(), "");
}

TEST_F(ElevatedDisplayAdmissionTest, RefusesADisplayThatAdmitsItsOwnUserOnly)
{
    const VirtualDisplay server(needingCookies);
    const ScopedEnvironment display("DISPLAY", server.name());
    VirtualDisplay::admit(ordinaryUserName);
    const std::string other = folder.write("other", cookieFile({.displayNumber = "4711"}));
    const ScopedEnvironment cookieOfAnother("XAUTHORITY", other);

    expectForOrdinaryUser(
        "the window needs a display, and " + server.name() + " does not admit root");
}

TEST_F(ElevatedDisplayAdmissionTest, DoesNotCountACookieOfAnotherMachine)
{
    const VirtualDisplay server(needingCookies);
    const ScopedEnvironment display("DISPLAY", server.name());
    VirtualDisplay::admit(ordinaryUserName);
    const std::string other = folder.write(
        "other", cookieFile(
                     {.family = Cookie::LOCAL,
                      .address = "another.machine",
                      .displayNumber = server.name().substr(1)}));
    const ScopedEnvironment cookieOfAnother("XAUTHORITY", other);

    expectForOrdinaryUser(
        "the window needs a display, and " + server.name() + " does not admit root");
}

TEST_F(ElevatedDisplayAdmissionTest, AcceptsADisplayThatAdmitsRootByName)
{
    const VirtualDisplay server(needingCookies);
    const ScopedEnvironment display("DISPLAY", server.name());
    VirtualDisplay::admit(ordinaryUserName);
    VirtualDisplay::admit("root");
    const ScopedEnvironment noCookies("XAUTHORITY", folder.file("missing"));

    expectForOrdinaryUser("");
}

TEST_F(ElevatedDisplayTest, AcceptsADisplayThatAdmitsAllLocalUsers)
{
    const VirtualDisplay server(needingCookies);
    const ScopedEnvironment display("DISPLAY", server.name());
    VirtualDisplay::admitLocalUsers();
    const ScopedEnvironment noCookies("XAUTHORITY", folder.file("missing"));

    expectForOrdinaryUser("");
}
