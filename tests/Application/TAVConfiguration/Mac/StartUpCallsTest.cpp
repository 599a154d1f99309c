#include "AccessibilityBus.h"
#include "AuthorizationFailure.h"
#include "DetachedStandardError.h"
#include "DirectStart.h"
#include "DisplayCookie.h"
#include "ElevatedDisplay.h"
#include "ElevatedEnvironment.h"
#include "GrantingAuthorizationServices.h"
#include "InheritedState.h"
#include "InstalledProbe.h"
#include "KeptSignalAction.h"
#include "MarkedCalls.h"
#include "Pipe.h"
#include "PkexecStart.h"
#include "PolkitAuthorizationServices.h"
#include "PolkitClient.h"
#include "PrivilegedLauncher.h"
#include "ProgramPath.h"
#include "ProgramStart.h"
#include "ScopedEnvironment.h"
#include "XDisplay.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstddef>
#include <filesystem>
#include <limits>
#include <memory>
#include <regex>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/wait.h>

using testing::ElementsAre;
using testing::HasSubstr;
using testing::internal::CaptureStderr;
using testing::internal::GetCapturedStderr;

namespace {

/// Longer than the system hands to a program: nothing is started with it.
const std::string TOO_LONG(1 << 20, 'x');
const std::array<const char*, 2> UNSTARTABLE{TOO_LONG.c_str(), nullptr};

/// Whether the call is one of the floors below the start-up: what it calls is no affair of these
/// tests.
bool isOfAnotherFloor(const std::string& call)
{
    return std::ranges::any_of(
        std::array{"IDCardReader", "AppData", "Localizer"},
        [&call](const char* name) { return call.find(name) != std::string::npos; });
}

/// The calls of the start-up in what the probe prints, all of them, indented as they are nested.
std::vector<std::string> callsOfProbe(const InstalledProbe::Outcome& outcome)
{
    const std::regex call(R"(\[th_[0-9]+ *\]\[[^\]]*\]( *)([^ >\[].*))");
    std::vector<std::string> calls;
    std::stringstream lines(outcome.output);
    std::smatch parts;
    std::ptrdiff_t hiddenBelow = std::numeric_limits<std::ptrdiff_t>::max();
    for (std::string line; std::getline(lines, line);) {
        if (!std::regex_match(line, parts, call) || parts[1].length() > hiddenBelow)
            continue;
        calls.push_back(parts[1].str() + parts[2].str());
        hiddenBelow = isOfAnotherFloor(parts[2]) ? parts[1].length()
                                                 : std::numeric_limits<std::ptrdiff_t>::max();
    }
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

using PipeCalls = ObjectCalls<Pipe>;
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
        FreeCall{"PolkitClient::check", [] { PolkitClient::check("an.action", false); }},
        FreeCall{"PolkitClient::revoke", [] { PolkitClient::revoke("tmpauthz1"); }},
        FreeCall{"ProgramPath::resolve", [] { ProgramPath::resolve("/bin/true"); }}));

TEST_P(PipeCalls, AreMarkedWithTheirNameAndObject)
{
    expectMarkedWithTheObject();
}

INSTANTIATE_TEST_SUITE_P(
    StartUp, PipeCalls,
    testing::Values(MarkedCall<Pipe>{"Pipe::open", [](Pipe& p) { EXPECT_EQ(p.open(), 0); }}));

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
    expectCounted("KeptSignalAction", [] { return std::make_unique<KeptSignalAction>(SIGPIPE); });
    expectCounted("PolkitAuthorizationServices", [] {
        return std::make_unique<PolkitAuthorizationServices>();
    });
    expectCounted("PkexecStart", [] { return std::make_unique<PkexecStart>("/bin/true"); });
    expectCounted("PrivilegedLauncher", [] {
        return std::make_unique<PrivilegedLauncher>(std::make_unique<DirectStart>());
    });
    expectCounted("ProgramStart", [] { return std::make_unique<ProgramStart>(); });
    expectCounted("XDisplay", [] { return std::make_unique<XDisplay>(); });
}

TEST_F(StartUpCalls, OfALaunchAreMarkedWithTheLauncher)
{
    const PrivilegedLauncher launcher(std::make_unique<DirectStart>());
    PublishedTracer tracer;
    tracer->setPrintObjects(true);
    const std::array<const char*, 1> none{nullptr};
    std::FILE* output = nullptr;

    ASSERT_EQ(launcher.launch("/bin/true", none.data(), &output), AuthorizationStatus::success);

    std::fclose(output);
    waitpid(-1, nullptr, 0);
    EXPECT_THAT(
        tracer.lines(), testing::StartsWith(entryLine("PrivilegedLauncher::launch", &launcher)));
    EXPECT_THAT(tracer.lines(), HasSubstr(entryLine("  PrivilegedLauncher::start", &launcher)));
    EXPECT_THAT(tracer.lines(), HasSubstr(entryLine("    PrivilegedLauncher::run", &launcher)));
}

/// The environment holds one variable that the elevator would refuse.
class StartUpLaunchCalls : public StartUpCalls {
protected:
    StartUpLaunchCalls()
    {
        for (const char* const name :
             {"LANG", "LINGUAS", "LANGUAGE", "LC_COLLATE", "LC_CTYPE", "LC_MESSAGES", "LC_MONETARY",
              "LC_NUMERIC", "LC_ALL", "TERM", "COLORTERM"})
            m_others.push_back(std::make_unique<ScopedEnvironment>(name, std::nullopt));
    }

    /// The calls of a launch of the program.
    static std::vector<std::string> launch(
        std::unique_ptr<const StartMethod> method, const std::string& program)
    {
        const PrivilegedLauncher launcher(std::move(method));
        const PublishedTracer tracer;
        const std::array<const char*, 1> none{nullptr};
        std::FILE* output = nullptr;

        launcher.launch(program, none.data(), &output);

        if (output != nullptr)
            std::fclose(output);
        waitpid(-1, nullptr, 0);
        return callsIn(tracer.lines());
    }

private:
    std::vector<std::unique_ptr<ScopedEnvironment>> m_others;
    const ScopedEnvironment m_refused{"LC_TIME", "/a/locale"};
    const ScopedEnvironment m_answer{"FAKE_ELEVATOR", "refuse"};
    const ScopedEnvironment m_record{"FAKE_ELEVATOR_RECORD", "/dev/null"};
};

TEST_F(StartUpLaunchCalls, AreMarkedInTheirOrder)
{
    EXPECT_THAT(
        launch(std::make_unique<DirectStart>(), "/bin/true"),
        ElementsAre(
            "PrivilegedLauncher::launch", "  DirectStart::commandFor",
            "  PrivilegedLauncher::start", "    Pipe::open", "    Pipe::open",
            "    PrivilegedLauncher::run", "      ProgramStart::constructor",
            "      ProgramStart::useAsOutput", "      DirectStart::prepare",
            "      ProgramStart::start", "      ProgramStart::destructor",
            "    DirectStart::await"));
}

TEST_F(StartUpLaunchCalls, OfOneThatIsRefusedAreMarkedInTheirOrder)
{
    EXPECT_THAT(
        launch(std::make_unique<PkexecStart>(TAV_FAKE_ELEVATOR), "/bin/true"),
        ElementsAre(
            "PrivilegedLauncher::launch", "  PkexecStart::commandFor",
            "  PrivilegedLauncher::start", "    Pipe::open", "    Pipe::open",
            "    PrivilegedLauncher::run", "      ProgramStart::constructor",
            "      ProgramStart::useAsOutput", "      PkexecStart::prepare",
            "        ProgramStart::keepOpen", "        ProgramStart::leaveOutOfEnvironment",
            "        ElevatedEnvironment::dispensable", "          ElevatedEnvironment::mayHold",
            "        ProgramStart::leaveOutOfEnvironment", "      ProgramStart::start",
            "      ProgramStart::destructor", "    PkexecStart::await", "      hasBecomeProgram",
            "      outcomeOfEnd", "  AuthorizationFailure::tell"));
}

TEST_F(StartUpCalls, OfHelpersAreMarkedInsideTheirCaller)
{
    const PublishedTracer tracer;

    ElevatedDisplay::obstacle();
    InheritedState::takeBack();
    ProgramPath::resolve("/bin/true");
    const ScopedEnvironment path("PATH", "/missing:/bin:/usr/bin");
    ProgramPath::resolve("true");
    PolkitClient::check("an.action", false);
    PolkitClient::revoke("tmpauthz1");

    EXPECT_THAT(
        callsIn(tracer.lines()),
        ElementsAre(
            "ElevatedDisplay::obstacle", "  variable", "  variable", "InheritedState::takeBack",
            "  unblockSignals", "  openStandardStreams", "  InheritedChildren::note",
            "ProgramPath::resolve", "  resolvedProgram", "ProgramPath::resolve", "  findInPath",
            "    resolvedProgram", "    resolvedProgram", "PolkitClient::check",
            "  KeptSignalAction::constructor", "  unavailable", "  KeptSignalAction::destructor",
            "PolkitClient::revoke", "  KeptSignalAction::constructor",
            "  KeptSignalAction::destructor"));
}

TEST_F(StartUpCalls, OfADetachedStandardErrorAreMarkedInTheirOrder)
{
    const PublishedTracer tracer;

    DetachedStandardError().putBack();

    EXPECT_THAT(
        callsIn(tracer.lines()),
        ElementsAre(
            "channelOfStandardError", "DetachedStandardError::constructor",
            "DetachedStandardError::putBack", "DetachedStandardError::destructor"));
}

/// What both instances do before they part.
constexpr std::array COMMON_CALLS{
    "InheritedState::takeBack",
    "  unblockSignals",
    "  openStandardStreams",
    "  InheritedChildren::note",
    "initTracesAndLogs",
    "  IDCardReader::constructor",
    "  bool IDCardReader::readIDCard()",
    "  IDCardReader::getUpgradeCode",
    "  AppData::setGlobalScope",
    "  AppData::constructor",
    "  makeLogFolder",
    "    AppData::getPathForFile",
    "  publish",
    "  publish",
    "  logIdentity",
    "    IDCardReader::getCommercialVersion",
    "    IDCardReader::getProductName",
    "    IDCardReader::getBUName",
    "    IDCardReader::getBuildTarget",
    "    IDCardReader::getReferenceVersion",
    "    IDCardReader::getProductVersion",
    "    IDCardReader::getUpgradeCode",
    "  AppData::destructor",
    "  IDCardReader::destructor",
    "TavConfiguration::Main",
    "  crashHandler",
    "    KFExceptionHandler::constructor",
    "    InheritedChildren::leaveUnheard",
    "  loadTexts",
    "    Localizer::getInstance",
    "    void Localizer::initialize(std::string)",
    "  logArguments",
    "  RecordingAuthorizationServices::constructor",
    "  isElevatedInstance",
};

auto isCommonCallsAnd(const std::vector<std::string>& more)
{
    std::vector<std::string> calls(COMMON_CALLS.begin(), COMMON_CALLS.end());
    calls.insert(calls.end(), more.begin(), more.end());
    return testing::ElementsAreArray(calls);
}

TEST_F(StartUpCalls, OfTheFirstInstanceAreMarkedFromTheFirstToTheLast)
{
    InstalledProbe probe;
    probe.setVariable("PROBE_CALLS", "1");

    const auto outcome = probe.run();

    EXPECT_THAT(
        callsOfProbe(outcome), isCommonCallsAnd(
                                   {"  askAndRelaunch", "    administratorRights", "    relaunch",
                                    "      Pipe::open", // the double's
                                    "  RecordingAuthorizationServices::destructor"}));
}

TEST_F(StartUpCalls, OfTheElevatedInstanceAreMarkedFromTheFirstToTheLast)
{
    InstalledProbe probe;
    probe.setVariable("PROBE_CALLS", "1");

    const auto outcome = probe.run({"--adminRights"});

    EXPECT_THAT(
        callsOfProbe(outcome), isCommonCallsAnd(
                                   {"  runElevated", "    administratorRights",
                                    "    Localizer::getInstance", // the window's
                                    "    NSString* Localizer::getLocalizedString(NSString*)",
                                    "  RecordingAuthorizationServices::destructor"}));
}

TEST_F(StartUpCalls, OfAFallbackToTheEnglishTextsAreMarkedInTheirOrder)
{
    InstalledProbe probe;
    probe.setVariable("PROBE_CALLS", "1");
    probe.setVariable("LANGUAGE", "pt");

    const std::vector<std::string> calls = callsOfProbe(probe.run());

    const auto begin = std::ranges::find(calls, "  loadTexts");
    const auto end = std::find(begin, calls.end(), "  logArguments");
    EXPECT_THAT(
        std::vector(begin, end),
        ElementsAre(
            "  loadTexts", "    Localizer::getInstance",
            "    void Localizer::initialize(std::string)", "    KFLocalizerException::toString",
            "    void Localizer::initialize(std::string)",
            "    KFLocalizerFileNotFoundException::destructor",
            "    KFLocalizerException::destructor"));
}

/// An operation that fails, and the calls behind those that all launches have in common.
struct FailedOperation {
    const char* status; // its variable
    std::vector<std::string> arguments;
    std::vector<std::string> calls;

    friend void PrintTo(const FailedOperation& operation, std::ostream* out)
    {
        *out << operation.status;
    }
};

class FailedOperationCalls : public StartUpCalls,
                             public testing::WithParamInterface<FailedOperation> {};

TEST_P(FailedOperationCalls, AreMarkedFromTheFirstToTheLast)
{
    InstalledProbe probe;
    probe.setVariable("PROBE_CALLS", "1");
    probe.setVariable(GetParam().status, "-60008");

    const auto outcome = probe.run(GetParam().arguments);

    EXPECT_THAT(callsOfProbe(outcome), isCommonCallsAnd(GetParam().calls));
}

INSTANTIATE_TEST_SUITE_P(
    StartUp, FailedOperationCalls,
    testing::Values(
        FailedOperation{
            "PROBE_CREATE",
            {},
            {"  askAndRelaunch", "  RecordingAuthorizationServices::destructor"}},
        FailedOperation{
            "PROBE_CREATE",
            {"--adminRights"},
            {"  runElevated", "    administratorRights",
             "  RecordingAuthorizationServices::destructor"}},
        FailedOperation{
            "PROBE_COPY_RIGHTS",
            {},
            {"  askAndRelaunch", "    administratorRights",
             "  RecordingAuthorizationServices::destructor"}},
        FailedOperation{
            "PROBE_EXECUTE",
            {},
            {"  askAndRelaunch", "    administratorRights", "    relaunch",
             "  RecordingAuthorizationServices::destructor"}}));

TEST_F(StartUpCalls, OfAStartThatFailsAreMarkedFromTheFirstToTheLast)
{
    InstalledProbe probe;
    probe.setVariable("PROBE_CALLS", "1");
    std::filesystem::remove(probe.folder().file("ID.txt"));

    const auto outcome = probe.run();

    EXPECT_THAT(
        callsOfProbe(outcome),
        ElementsAre(
            "InheritedState::takeBack", "  unblockSignals", "  openStandardStreams",
            "  InheritedChildren::note", "initTracesAndLogs", "  IDCardReader::constructor",
            "  bool IDCardReader::readIDCard()", "  failToStart", "    crashHandler",
            "      KFExceptionHandler::constructor", "      InheritedChildren::leaveUnheard",
            "    SIGNAL_FILTER"));
}
