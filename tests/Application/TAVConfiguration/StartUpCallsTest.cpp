#include "AccessibilityBus.h"
#include "AuthorizationFailure.h"
#include "DetachedStandardError.h"
#include "DisplayCookie.h"
#include "ElevatedDisplay.h"
#include "ElevatedEnvironment.h"
#include "GrantingAuthorizationServices.h"
#include "InheritedState.h"
#include "InstalledProbe.h"
#include "MarkedCalls.h"
#include "Pipe.h"
#include "PolkitAuthorizationServices.h"
#include "PolkitClient.h"
#include "PrivilegedLauncher.h"
#include "ProgramPath.h"
#include "ProgramStart.h"
#include "ScopedEnvironment.h"
#include "XDisplay.h"

#include <array>
#include <cerrno>
#include <filesystem>
#include <memory>
#include <regex>
#include <sstream>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/wait.h>

using testing::HasSubstr;
using testing::IsSupersetOf;
using testing::internal::CaptureStderr;
using testing::internal::GetCapturedStderr;

namespace {

/// Longer than the system hands to a program: nothing is started with it.
const std::string TOO_LONG(1 << 20, 'x');
const std::array<const char*, 2> UNSTARTABLE{TOO_LONG.c_str(), nullptr};

/// The calls in what the probe prints, indented as they are nested.
std::vector<std::string> callsOfProbe(const InstalledProbe::Outcome& outcome)
{
    const std::regex call(R"(\[th_[0-9]+ *\](\[[^\]]*\])?( *[^ >].*))");
    std::vector<std::string> calls;
    std::stringstream lines(outcome.output);
    std::smatch parts;
    for (std::string line; std::getline(lines, line);)
        if (std::regex_match(line, parts, call))
            calls.push_back(parts[2]);
    return calls;
}

/// No display, no cookies and no authorization service; what is told on the standard error is kept
/// off it.
class StartUpCalls : public testing::Test {
protected:
    StartUpCalls() { CaptureStderr(); }
    ~StartUpCalls() override { GetCapturedStderr(); }

    const ScopedEnvironment display{"DISPLAY", ""};
    const ScopedEnvironment cookies{"XAUTHORITY", "/missing/cookies"};
    const ScopedEnvironment bus{"DBUS_SYSTEM_BUS_ADDRESS", "unix:path=/missing/bus"};
};

struct FreeCall {
    const char* text;
    void (*run)();

    friend void PrintTo(const FreeCall& call, std::ostream* out) { *out << call.text; }
};

class FreeCalls : public StartUpCalls, public testing::WithParamInterface<FreeCall> {};

/// Calls of an object that is made without arguments.
template<typename Object>
class ObjectCalls : public StartUpCalls, public testing::WithParamInterface<MarkedCall<Object>> {
protected:
    void expectMarkedWithTheObject()
    {
        Object object;
        expectMarked(this->GetParam().text, &object, [&] { this->GetParam().run(object); });
    }
};

using ProgramStartCalls = ObjectCalls<ProgramStart>;
using DisplayCalls = ObjectCalls<XDisplay>;
using StandardErrorCalls = ObjectCalls<DetachedStandardError>;
using PolkitCalls = ObjectCalls<PolkitAuthorizationServices>;
using GrantingCalls = ObjectCalls<GrantingAuthorizationServices>;

/// The four operations, under the names of a class that offers them.
template<typename Services>
std::vector<MarkedCall<Services>> operations(const std::array<const char*, 4>& texts)
{
    return {
        {texts[0], [](Services& s) { s.AuthorizationCreate(nullptr, 0, nullptr); }},
        {texts[1],
         [](Services& s) {
             Authorization authorization;
             s.AuthorizationCopyRights(authorization, {{"unknown right"}}, 0);
         }},
        {texts[2],
         [](Services& s) {
             Authorization authorization;
             std::FILE* output = nullptr;
             s.AuthorizationExecuteWithPrivileges(
                 authorization, "/bin/true", 0, UNSTARTABLE.data(), &output);
             EXPECT_EQ(output, nullptr);
         }},
        {texts[3], [](Services& s) { s.AuthorizationFree(std::make_unique<Authorization>(), 0); }}};
}

} // namespace

TEST_P(FreeCalls, AreMarkedWithTheirNameAndNoObject)
{
    expectMarked(GetParam().text, nullptr, GetParam().run);
}

INSTANTIATE_TEST_SUITE_P(
    StartUp, FreeCalls,
    testing::Values(
        FreeCall{
            "AuthorizationFailure::tell",
            [] { AuthorizationFailure::tell(AuthorizationStatus::denied, "try", "no reason"); }},
        FreeCall{"DisplayCookie::isThereFor", [] { DisplayCookie::isThereFor({}, 7); }},
        FreeCall{"ElevatedDisplay::obstacle", [] { ElevatedDisplay::obstacle(); }},
        FreeCall{
            "ElevatedEnvironment::mayHold", [] { ElevatedEnvironment::mayHold("TERM", "xterm"); }},
        FreeCall{"ElevatedEnvironment::dispensable", [] { ElevatedEnvironment::dispensable(); }},
        FreeCall{"InheritedState::takeBack", [] { InheritedState::takeBack(); }},
        FreeCall{"Pipe::open", [] { Pipe::open(); }},
        FreeCall{"PolkitClient::check", [] { PolkitClient::check("an.action", false); }},
        FreeCall{"PolkitClient::revoke", [] { PolkitClient::revoke("tmpauthz1"); }},
        FreeCall{"ProgramPath::resolve", [] { ProgramPath::resolve("/bin/true"); }}));

TEST_P(ProgramStartCalls, AreMarkedWithTheirNameAndObject)
{
    expectMarkedWithTheObject();
}

INSTANTIATE_TEST_SUITE_P(
    StartUp, ProgramStartCalls,
    testing::ValuesIn(std::vector<MarkedCall<ProgramStart>>{
        {"ProgramStart::useAsOutput", [](ProgramStart& p) { p.useAsOutput(1); }},
        {"ProgramStart::keepOpen", [](ProgramStart& p) { p.keepOpen(1); }},
        {"ProgramStart::leaveOutOfEnvironment",
         [](ProgramStart& p) { p.leaveOutOfEnvironment("SHELL"); }},
        {"ProgramStart::start", [](ProgramStart& p) {
             pid_t process = 0;
             EXPECT_EQ(p.start({"/bin/true", TOO_LONG}, process), E2BIG);
         }}}));

TEST_P(DisplayCalls, AreMarkedWithTheirNameAndObject)
{
    expectMarkedWithTheObject();
}

INSTANTIATE_TEST_SUITE_P(
    StartUp, DisplayCalls,
    testing::ValuesIn(std::vector<MarkedCall<XDisplay>>{
        {"XDisplay::isOpen", [](XDisplay& d) { EXPECT_FALSE(d.isOpen()); }},
        {"XDisplay::admitsRoot", [](XDisplay& d) { EXPECT_FALSE(d.admitsRoot()); }},
        {"XDisplay::hasCookie", [](XDisplay& d) { EXPECT_FALSE(d.hasCookie()); }},
        {"XDisplay::rootProperty", [](XDisplay& d) { EXPECT_EQ(d.rootProperty("NAME"), ""); }}}));

TEST_P(StandardErrorCalls, AreMarkedWithTheirNameAndObject)
{
    expectMarkedWithTheObject();
}

INSTANTIATE_TEST_SUITE_P(
    StartUp, StandardErrorCalls,
    testing::Values(MarkedCall<DetachedStandardError>{
        "DetachedStandardError::putBack", [](DetachedStandardError& e) { e.putBack(); }}));

TEST_P(PolkitCalls, AreMarkedWithTheirNameAndObject)
{
    expectMarkedWithTheObject();
}

INSTANTIATE_TEST_SUITE_P(
    StartUp, PolkitCalls,
    testing::ValuesIn(operations<PolkitAuthorizationServices>(
        {"PolkitAuthorizationServices::AuthorizationCreate",
         "PolkitAuthorizationServices::AuthorizationCopyRights",
         "PolkitAuthorizationServices::AuthorizationExecuteWithPrivileges",
         "PolkitAuthorizationServices::AuthorizationFree"})));

TEST_P(GrantingCalls, AreMarkedWithTheirNameAndObject)
{
    expectMarkedWithTheObject();
}

INSTANTIATE_TEST_SUITE_P(
    StartUp, GrantingCalls,
    testing::ValuesIn(operations<GrantingAuthorizationServices>(
        {"GrantingAuthorizationServices::AuthorizationCreate",
         "GrantingAuthorizationServices::AuthorizationCopyRights",
         "GrantingAuthorizationServices::AuthorizationExecuteWithPrivileges",
         "GrantingAuthorizationServices::AuthorizationFree"})));

TEST_F(StartUpCalls, CountEachObjectFromConstructorToDestructor)
{
    expectCounted("AccessibilityBus", [] { return std::make_unique<AccessibilityBus>(nullptr); });
    expectCounted(
        "DetachedStandardError", [] { return std::make_unique<DetachedStandardError>(); });
    expectCounted("GrantingAuthorizationServices", [] {
        return std::make_unique<GrantingAuthorizationServices>();
    });
    expectCounted("PolkitAuthorizationServices", [] {
        return std::make_unique<PolkitAuthorizationServices>();
    });
    expectCounted("PrivilegedLauncher", [] { return std::make_unique<PrivilegedLauncher>(""); });
    expectCounted("ProgramStart", [] { return std::make_unique<ProgramStart>(); });
    expectCounted("XDisplay", [] { return std::make_unique<XDisplay>(); });
}

TEST_F(StartUpCalls, OfALaunchAreMarkedWithTheLauncher)
{
    const PrivilegedLauncher launcher("");
    PublishedTracer tracer;
    tracer->setPrintObjects(true);
    const std::array<const char*, 1> none{nullptr};
    std::FILE* output = nullptr;

    ASSERT_EQ(launcher.launch("/bin/true", none.data(), &output), AuthorizationStatus::success);

    std::fclose(output);
    waitpid(-1, nullptr, 0);
    EXPECT_THAT(
        tracer.lines(), testing::StartsWith(entryLine("PrivilegedLauncher::launch", &launcher)));
    for (const char* const step :
         {"PrivilegedLauncher::commandFor", "PrivilegedLauncher::start",
          "PrivilegedLauncher::hasBegun"})
        EXPECT_THAT(tracer.lines(), HasSubstr(entryLine(std::string("  ") + step, &launcher)));
}

TEST_F(StartUpCalls, OfALaunchThatIsRefusedAreMarkedInsideIt)
{
    const ScopedEnvironment answer("FAKE_ELEVATOR", "refuse");
    const ScopedEnvironment record("FAKE_ELEVATOR_RECORD", "/dev/null");
    const PrivilegedLauncher launcher(TAV_FAKE_ELEVATOR);
    const PublishedTracer tracer;
    const std::array<const char*, 1> none{nullptr};
    std::FILE* output = nullptr;

    launcher.launch("/bin/true", none.data(), &output);

    EXPECT_THAT(
        callsIn(tracer.lines()),
        IsSupersetOf(
            {"PrivilegedLauncher::launch", "  Pipe::open", "  PrivilegedLauncher::commandFor",
             "  PrivilegedLauncher::start", "    ProgramStart::keepOpen",
             "    ElevatedEnvironment::dispensable", "    ProgramStart::start",
             "  PrivilegedLauncher::hasBegun", "    hasBecomeProgram", "  statusOfEnd",
             "    cannotStart", "      AuthorizationFailure::tell"}));
}

TEST_F(StartUpCalls, OfHelpersAreMarkedInsideTheirCaller)
{
    const PublishedTracer tracer;

    ElevatedDisplay::obstacle();
    InheritedState::takeBack();
    ProgramPath::resolve("/bin/true");
    ProgramPath::resolve("true");
    const DetachedStandardError standardError;

    EXPECT_THAT(
        callsIn(tracer.lines()),
        IsSupersetOf(
            {"ElevatedDisplay::obstacle", "  variable", "InheritedState::takeBack",
             "  unblockSignals", "  openStandardStreams", "ProgramPath::resolve",
             "  resolvedProgram", "  findInPath", "    resolvedProgram",
             "channelOfStandardError"}));
}

TEST_F(StartUpCalls, OfTheFirstInstanceAreMarkedFromTheFirstOne)
{
    InstalledProbe probe;
    probe.setVariable("PROBE_CALLS", "1");

    const auto outcome = probe.run();

    EXPECT_THAT(
        callsOfProbe(outcome),
        IsSupersetOf(
            {"InheritedState::takeBack", "initTracesAndLogs", "  makeLogFolder", "  publish",
             "  publish", "  logIdentity", "TavConfiguration::Main", "  loadTexts",
             "  logArguments", "  isElevatedInstance", "  askAndRelaunch",
             "    administratorRights", "    relaunch"}));
}

TEST_F(StartUpCalls, OfTheElevatedInstanceAreMarkedInsideItsRun)
{
    InstalledProbe probe;
    probe.setVariable("PROBE_CALLS", "1");

    const auto outcome = probe.run({"--adminRights"});

    EXPECT_THAT(
        callsOfProbe(outcome), IsSupersetOf(
                                   {"TavConfiguration::Main", "  isElevatedInstance",
                                    "  runElevated", "    administratorRights"}));
}

TEST_F(StartUpCalls, OfAStartThatFailsAreMarkedInsideIt)
{
    InstalledProbe probe;
    probe.setVariable("PROBE_CALLS", "1");
    std::filesystem::remove(probe.folder().file("ID.txt"));

    const auto outcome = probe.run();

    EXPECT_THAT(callsOfProbe(outcome), IsSupersetOf({"initTracesAndLogs", "  failToStart"}));
}
