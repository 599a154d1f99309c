#include "FileContent.h"
#include "InstalledProbe.h"
#include "OrdinaryUser.h"

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <ostream>
#include <regex>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

namespace fs = std::filesystem;

namespace {

/// Blocks every signal of the thread for the time of a scope.
class BlockedSignals {
public:
    BlockedSignals()
    {
        sigset_t all{};
        sigfillset(&all);
        pthread_sigmask(SIG_SETMASK, &all, &m_former);
    }
    ~BlockedSignals() { pthread_sigmask(SIG_SETMASK, &m_former, nullptr); }

    BlockedSignals(const BlockedSignals&) = delete;
    BlockedSignals& operator=(const BlockedSignals&) = delete;

private:
    sigset_t m_former{};
};

/// What the log writes to the console: the line's own end, then the console's.
std::string logged(const std::string& text)
{
    return "[LEVEL_0] " + text + "\n\n";
}

std::string identity()
{
    return logged("Starting TavConfiguration TavConfiguration with ID card : ") +
           logged(" * Commercial version : 1.2 ") + logged(" * Product Name : Tool ") +
           logged(" * BU Name : Unit") + logged(" * Build Target : Target ") +
           logged(" * Reference version : 3.4 ") + logged(" * Product version : 5.6 ") +
           logged(" * Upgrade Code : {CODE} ");
}

std::string firstLaunch()
{
    return logged("Process was launched without --adminRights argument, launch it with admin "
                  "privileges...");
}

std::string elevatedLaunch()
{
    return logged("Process arguments:") + logged("--adminRights") +
           logged("Process was launched with --adminRights argument");
}

constexpr const char* RIGHT_CHECKED =
    "AuthorizationCreate rights {system.privilege.admin:0} flags 0 reference not wanted\n";
constexpr const char* CREATED = "AuthorizationCreate rights none flags 0 reference wanted\n";
constexpr const char* ASKED =
    "AuthorizationCopyRights the reference rights {system.privilege.admin:0} flags 19\n";
constexpr const char* FREED = "AuthorizationFree the reference flags 0\n";

constexpr const char* UNABLE_TO_LOG =
    "INTERNAL ERROR : \"cannot start TavConfiguration : unable to log\" - In File : "
    "Application/TAVConfiguration/Mac/src/main - At Line : 69\ncode 0\n";

std::string executed(const std::string& program)
{
    return "AuthorizationExecuteWithPrivileges the reference '" + program +
           "' flags 0 arguments ['--adminRights']\n";
}

/// The line of a configuration file ("TRACE_" or "LOG_") that lets messages of every type through.
std::string everyType(const std::string& prefix)
{
    std::string line = prefix + "SET_MSG_FILTER";
    for (const char* type :
         {"DEBUG", "ERROR", "WARNING", "LEVEL_0", "LEVEL_1", "LEVEL_2", "LEVEL_3", "LEVEL_4",
          "LEVEL_5"})
        line.append(" ").append(prefix).append(type);
    return line + "\n";
}

/// The messages and calls of a trace, without threads and indentation.
std::string withoutThreads(const std::string& trace)
{
    return std::regex_replace(trace, std::regex(R"(\[th_[0-9 ]+\]\[[^\]]+\] *)"), "");
}

} // namespace

class StartUpTest : public testing::Test {
protected:
    /// Traces the debug messages inside the start-up's own call to the console.
    void traceStartUp(const std::string& more = "")
    {
        probe.folder().write(
            "tracer.cfg", "TRACE_ON\nTRACE_SET_FILE_NAME console\nTRACE_THE_THREAD *\n"
                          "TRACE_THE_CALL TavConfiguration::Main\n"
                          "TRACE_SET_MSG_FILTER TRACE_DEBUG\n" +
                              more);
    }

    /// Log and trace of the start-up's own call go to files in the log folder.
    void writeToFiles(const std::string& more, const std::string& moreOfTheLog = "")
    {
        traceStartUp("TRACE_SET_FILE_NAME trace\n" + more);
        probe.folder().write(
            "logger.cfg",
            "LOG_ON\nLOG_SET_MSG_FILTER LOG_LEVEL_0\nLOG_SET_FILE_NAME log\n" + moreOfTheLog);
    }
    std::string logFile() const { return probe.home().read("Pelora/{CODE}/Logs/log_0.txt"); }
    std::string traceFile() const { return probe.home().read("Pelora/{CODE}/Logs/trace_0.txt"); }

    InstalledProbe probe;
};

TEST_F(StartUpTest, FirstLaunchAsksRelaunchesAndEnds)
{
    const auto outcome = probe.run();

    EXPECT_EQ(
        outcome.output, identity() + firstLaunch() + CREATED + ASKED +
                            executed(probe.folder().file("TavConfiguration")) + FREED +
                            "the pipe is closed\n");
    EXPECT_EQ(outcome.errors, "");
    EXPECT_EQ(outcome.status, 0);
}

TEST_F(StartUpTest, ElevatedInstanceWithTheRightShowsTheWindow)
{
    probe.setVariable("PROBE_WINDOW", "7");

    const auto outcome = probe.run({"--adminRights"});

    EXPECT_EQ(
        outcome.output,
        identity() + elevatedLaunch() + RIGHT_CHECKED +
            logged("Process has kAuthorizationRightExecute right") +
            "window with 2 arguments, the last --adminRights, title lower case en\n");
    EXPECT_EQ(outcome.errors, "");
    EXPECT_EQ(outcome.status, 7) << "the window's result";
}

TEST_F(StartUpTest, ElevatedInstanceWithoutTheRightEnds)
{
    probe.setVariable("PROBE_CREATE", "-60005");
    probe.setVariable("PROBE_WINDOW", "7");

    const auto outcome = probe.run({"--adminRights"});

    EXPECT_EQ(
        outcome.output,
        identity() + elevatedLaunch() + RIGHT_CHECKED +
            logged("Process DOES NOT have kAuthorizationRightExecute right, exiting..."));
    EXPECT_EQ(outcome.status, 0);
}

class StartUpMarkerTest : public StartUpTest,
                          public testing::WithParamInterface<std::vector<std::string>> {};

TEST_P(StartUpMarkerTest, AnyOtherCommandLineIsAFirstLaunch)
{
    const auto outcome = probe.run(GetParam());

    std::string arguments = logged("Process arguments:");
    for (const std::string& argument : GetParam())
        arguments += logged(argument);
    EXPECT_EQ(
        outcome.output, identity() + arguments + firstLaunch() + CREATED + ASKED +
                            executed(probe.folder().file("TavConfiguration")) + FREED +
                            "the pipe is closed\n");
    EXPECT_EQ(outcome.status, 0);
}

INSTANTIATE_TEST_SUITE_P(
    CommandLines, StartUpMarkerTest,
    testing::Values(
        std::vector<std::string>{"--adminRights", "x"},
        std::vector<std::string>{"x", "--adminRights"},
        std::vector<std::string>{"--adminRights", "--adminRights"},
        std::vector<std::string>{"--adminRights", "-platform", "offscreen"},
        std::vector<std::string>{"--ADMINRIGHTS"}, std::vector<std::string>{"--adminRights "},
        std::vector<std::string>{" --adminRights"}, std::vector<std::string>{"--adminRight"},
        std::vector<std::string>{"-adminRights"}, std::vector<std::string>{""},
        std::vector<std::string>{"100%s %n"}));

TEST_F(StartUpTest, RelaunchesByTheNameItWasStartedWith)
{
    const auto outcome = probe.run({}, "a name of its own");

    EXPECT_THAT(outcome.output, HasSubstr(executed("a name of its own")));
}

TEST_F(StartUpTest, TracesTheRelaunch)
{
    traceStartUp("TRACE_CALL_EXIT\n");

    const auto outcome = probe.run({}, "./tool");

    const std::string trace = withoutThreads(outcome.output);
    EXPECT_THAT(trace, HasSubstr("\nTavConfiguration::Main\n"));
    EXPECT_THAT(
        trace, HasSubstr(
                   std::string(ASKED) + ">> [D] Execute process ./tool --adminRights\n\n" +
                   executed("./tool")));
    EXPECT_THAT(trace, EndsWith("the pipe is closed\n<- TavConfiguration::Main\n\n"))
        << "the call ends last";
}

TEST_F(StartUpTest, MakesAndEndsTheAuthorizationServicesInsideItsOwnCall)
{
    traceStartUp("TRACE_CALL_EXIT\nTRACE_OBJECT_COUNT\n"
                 "TRACE_THE_CALL RecordingAuthorizationServices::*\n");

    const auto outcome = probe.run({}, "tool");

    const std::regex address("0x[0-9a-f]+ *");
    EXPECT_EQ(
        std::regex_replace(withoutThreads(outcome.output), address, "<object>"),
        identity() + "[     ][          ]TavConfiguration::Main\n\n" +
            "[1    ][<object>]  RecordingAuthorizationServices::constructor\n\n" +
            "[     ][<object>]    <- RecordingAuthorizationServices::constructor\n\n" +
            firstLaunch() + CREATED + ASKED +
            "[     ][          ]  >> [D] Execute process tool --adminRights\n\n" +
            executed("tool") + FREED + "the pipe is closed\n" +
            "[0    ][<object>]  RecordingAuthorizationServices::destructor\n\n" +
            "[     ][<object>]    <- RecordingAuthorizationServices::destructor\n\n" +
            "[     ][          ]  <- TavConfiguration::Main\n\n");
}

TEST_F(StartUpTest, EndsWhenThereIsNoAuthorization)
{
    traceStartUp();
    probe.setVariable("PROBE_CREATE", "-60008");

    const auto outcome = probe.run();

    EXPECT_THAT(
        withoutThreads(outcome.output),
        EndsWith(
            firstLaunch() + CREATED + ">> [D] AuthorizationCreate failed with code -60008\n\n"));
    EXPECT_EQ(outcome.status, 0);
}

TEST_F(StartUpTest, RelaunchesNothingWhenTheRightIsRefused)
{
    traceStartUp();
    probe.setVariable("PROBE_COPY_RIGHTS", "-60005");

    const auto outcome = probe.run();

    EXPECT_THAT(
        withoutThreads(outcome.output),
        EndsWith(
            firstLaunch() + CREATED + ASKED +
            ">> [D] AuthorizationCopyRights failed with code -60005\n\n" + FREED));
    EXPECT_EQ(outcome.status, 0);
}

TEST_F(StartUpTest, FreesTheAuthorizationAndTracesNothingMoreWhenTheRelaunchFails)
{
    traceStartUp();
    probe.setVariable("PROBE_EXECUTE", "-60031");

    const auto outcome = probe.run({}, "tool");

    EXPECT_EQ(
        withoutThreads(outcome.output),
        identity() + "TavConfiguration::Main\n\n" + firstLaunch() + CREATED + ASKED +
            ">> [D] Execute process tool --adminRights\n\n" + executed("tool") + FREED);
    EXPECT_EQ(outcome.errors, "");
    EXPECT_EQ(outcome.status, 0);
}

TEST_F(StartUpTest, TellsNothingOfAFailedRelaunchInNoCallAndOfNoType)
{
    traceStartUp("TRACE_THE_CALL askAndRelaunch\nTRACE_THE_CALL relaunch\n" + everyType("TRACE_"));
    probe.folder().write(
        "logger.cfg", "LOG_ON\n" + everyType("LOG_") + "LOG_SET_FILE_NAME console\n");
    probe.setVariable("PROBE_EXECUTE", "-60031");

    const auto outcome = probe.run({}, "tool");

    EXPECT_EQ(
        withoutThreads(outcome.output),
        identity() + "TavConfiguration::Main\n\naskAndRelaunch\n\n" + firstLaunch() + CREATED +
            ASKED + "relaunch\n\n>> [D] Execute process tool --adminRights\n\n" + executed("tool") +
            FREED);
}

TEST_F(StartUpTest, WritesNoMessageWhereItsTypeIsOff)
{
    probe.folder().write(
        "tracer.cfg", "TRACE_ON\nTRACE_SET_FILE_NAME console\nTRACE_THE_THREAD *\n"
                      "TRACE_THE_CALL TavConfiguration::Main\n");
    probe.folder().write("logger.cfg", "LOG_ON\nLOG_SET_FILE_NAME console\n");

    const auto outcome = probe.run({}, "tool");

    EXPECT_EQ(
        withoutThreads(outcome.output), std::string("TavConfiguration::Main\n\n") + CREATED +
                                            ASKED + executed("tool") + FREED +
                                            "the pipe is closed\n");
}

TEST_F(StartUpTest, RunsWithoutDiagnosticsFiles)
{
    fs::remove(probe.folder().file("tracer.cfg"));
    fs::remove(probe.folder().file("logger.cfg"));

    const auto outcome = probe.run({}, "tool");

    const std::string folder = probe.folder().path();
    EXPECT_EQ(
        outcome.output,
        CREATED + std::string(ASKED) + executed("tool") + FREED + "the pipe is closed\n");
    EXPECT_EQ(
        outcome.errors, "Warning: cannot open tracer configuration file \"" + folder +
                            "/tracer.cfg\"\n" + "Warning: cannot open log configuration file \"" +
                            folder + "/logger.cfg\"\n")
        << "the tracer comes first";
    EXPECT_EQ(outcome.status, 0);
}

TEST_F(StartUpTest, RegistersTheMainThreadAsMain)
{
    probe.folder().write(
        "tracer.cfg", "TRACE_ON\nTRACE_SET_FILE_NAME console\nTRACE_THE_THREAD Main\n"
                      "TRACE_THE_CALL TavConfiguration::Main\n");

    const auto outcome = probe.run();

    EXPECT_THAT(outcome.output, HasSubstr("[Main           ]TavConfiguration::Main\n"));
}

TEST_F(StartUpTest, KeepsTheNameThatAnEarlierCallGaveTheMainThread)
{
    traceStartUp();

    const auto outcome = probe.run();

    EXPECT_THAT(outcome.output, testing::ContainsRegex("\\[th_[0-9]+ +\\]TavConfiguration::Main\n"))
        << "the call that publishes the log was recorded before the thread got its name";
}

TEST_F(StartUpTest, GivesTheMainThreadNoNameWhileTracingIsOff)
{
    probe.folder().write(
        "tracer.cfg", "TRACE_ON\nTRACE_SET_FILE_NAME console\nTRACE_THE_THREAD Main\n"
                      "TRACE_THE_CALL tracedWindow\nTRACE_OFF\n");
    probe.setVariable("PROBE_WINDOW", "trace");

    const auto outcome = probe.run({"--adminRights"});

    EXPECT_THAT(outcome.output, testing::ContainsRegex("\\[th_[0-9]+ +\\]tracedWindow\n"));
    EXPECT_EQ(outcome.status, 0);
}

TEST_F(StartUpTest, SetsUpTheTracerBeforeTheLog)
{
    probe.folder().write("tracer.cfg", "TRACE_ON\n");
    probe.folder().write("logger.cfg", "LOG_ON\n");

    const auto outcome = probe.run();

    EXPECT_EQ(outcome.output, "please call TRACE_SET_FILE_NAME(\"baseFileName\")\n");
    EXPECT_EQ(outcome.status, 1);
}

TEST_F(StartUpTest, EndsTheCardAndTheDataAfterTheIdentityLines)
{
    probe.folder().write(
        "tracer.cfg", "TRACE_ON\nTRACE_SET_FILE_NAME console\nTRACE_THE_THREAD *\n"
                      "TRACE_THE_CALL *::destructor\n");

    const auto outcome = probe.run();

    EXPECT_THAT(
        withoutThreads(outcome.output),
        StartsWith(identity() + "AppData::destructor\n\nIDCardReader::destructor\n\n"));
}

TEST_F(StartUpTest, ReadsNoCardOfTheCurrentFolderInPlaceOfAnUnknownOne)
{
    // As after an update that replaced the running executable.
    const std::string startReplaced = "cd '" + probe.folder().path() +
                                      "' && exec 3< TavConfiguration && rm TavConfiguration && "
                                      "XDG_DATA_HOME='" +
                                      probe.home().path() +
                                      "' exec /proc/self/fd/3 > output 2> errors";

    EXPECT_EQ(std::system(startReplaced.c_str()), 0);

    EXPECT_EQ(probe.folder().read("output"), "");
    EXPECT_EQ(probe.folder().read("errors"), "\"cannot start TavConfiguration : no ID card\"\n");
}

class StartUpCardTest : public StartUpTest, public testing::WithParamInterface<const char*> {};

TEST_P(StartUpCardTest, RefusesToStartWithoutAValidIdentityCard)
{
    probe.setVariable("PROBE_REPORT", "1");
    if (std::string(GetParam()).empty())
        fs::remove(probe.folder().file("ID.txt"));
    else
        probe.folder().write("ID.txt", GetParam());

    const auto outcome = probe.run({"--adminRights"});

    EXPECT_EQ(
        outcome.output,
        "INTERNAL ERROR : \"cannot start TavConfiguration : no ID card\" - In File : "
        "Application/TAVConfiguration/Mac/src/main - At Line : 58\ncode 0\n");
    EXPECT_EQ(outcome.errors, "\"cannot start TavConfiguration : no ID card\"\n");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_TRUE(fs::is_empty(probe.home().path()));
}

INSTANTIATE_TEST_SUITE_P(
    Cards, StartUpCardTest,
    testing::Values("", "\n\n", "UPGRADE_CODE={CODE}\nX&Y=1\n", "UPGRADE_CODE={A&B}\n"));

TEST_F(StartUpTest, StartsWithACardOfAnotherSystemsLineEnds)
{
    probe.folder().write("ID.txt", "PRODUCT_NAME=Tool\r\nUPGRADE_CODE={CODE}\r\n");

    const auto outcome = probe.run();

    EXPECT_THAT(outcome.output, HasSubstr(logged(" * Product Name : Tool ")));
    EXPECT_TRUE(fs::is_directory(probe.logFolder()));
}

TEST_F(StartUpTest, CutsACardsValueAtAByteThatIsNotPrintable)
{
    probe.folder().write("ID.txt", "PRODUCT_NAME=T\xC3\xB6ol\nUPGRADE_CODE={CODE}\n");

    const auto outcome = probe.run();

    EXPECT_THAT(outcome.output, HasSubstr(logged(" * Product Name : T ")));
}

TEST_F(StartUpTest, LogsEmptyValuesOfACardWithoutThem)
{
    probe.folder().write("ID.txt", "BU_NAME=Unit\n");

    const auto outcome = probe.run();

    EXPECT_THAT(
        outcome.output, StartsWith(
                            logged("Starting TavConfiguration TavConfiguration with ID card : ") +
                            logged(" * Commercial version :  ") + logged(" * Product Name :  ") +
                            logged(" * BU Name : Unit") + logged(" * Build Target :  ") +
                            logged(" * Reference version :  ") + logged(" * Product version :  ") +
                            logged(" * Upgrade Code :  ")));
    EXPECT_TRUE(fs::is_directory(probe.home().file("Pelora/Logs")));
}

TEST_F(StartUpTest, MakesAPrivateLogFolderOfTheCardsScope)
{
    probe.run();

    for (const char* folder : {"Pelora", "Pelora/{CODE}", "Pelora/{CODE}/Logs"})
        EXPECT_EQ(fs::status(probe.home().file(folder)).permissions(), fs::perms::owner_all)
            << folder;
}

TEST_F(StartUpTest, IsContentWithLogFoldersThatAnotherLaunchMakesAtTheSameMoment)
{
    probe.setVariable("PROBE_LOST_RACES", "1");

    const auto outcome = probe.run();

    EXPECT_THAT(outcome.output, StartsWith(identity() + firstLaunch()));
    EXPECT_EQ(outcome.errors, "");
    EXPECT_TRUE(fs::is_directory(probe.logFolder()));
}

TEST_F(StartUpTest, LeavesAnExistingLogFolderAsItIs)
{
    fs::create_directories(probe.logFolder());
    fs::permissions(probe.logFolder(), fs::perms(0755));
    probe.home().write("Pelora/{CODE}/Logs/other.txt", "kept");

    probe.run();

    EXPECT_EQ(fs::status(probe.logFolder()).permissions(), fs::perms(0755));
    EXPECT_EQ(probe.home().read("Pelora/{CODE}/Logs/other.txt"), "kept");
}

class StartUpFolderTest : public StartUpTest, public testing::WithParamInterface<const char*> {};

TEST_P(StartUpFolderTest, RefusesToStartWithoutALogFolder)
{
    probe.setVariable("PROBE_REPORT", "1");
    fs::create_directories(fs::path(probe.home().file(GetParam())).parent_path());
    probe.home().write(GetParam(), "a file in the folder's place");

    const auto outcome = probe.run();

    EXPECT_EQ(outcome.output, UNABLE_TO_LOG);
    EXPECT_EQ(outcome.errors, "\"cannot start TavConfiguration : unable to log\"\n");
    EXPECT_EQ(outcome.status, 0);
}

INSTANTIATE_TEST_SUITE_P(
    Places, StartUpFolderTest, testing::Values("Pelora", "Pelora/{CODE}", "Pelora/{CODE}/Logs"));

TEST_F(StartUpTest, RefusesToStartWhereTheUserMayMakeNoLogFolder)
{
    probe.setVariable("PROBE_REPORT", "1");
    fs::permissions(probe.folder().path(), fs::perms(0755));
    fs::permissions(probe.home().path(), fs::perms(0555));

    EXPECT_TRUE(asOrdinaryUser([this] {
        const auto outcome = probe.run();
        EXPECT_EQ(outcome.output, UNABLE_TO_LOG);
        EXPECT_EQ(outcome.errors, "\"cannot start TavConfiguration : unable to log\"\n");
        EXPECT_EQ(outcome.status, 0);
        return !HasFailure();
    }));

    EXPECT_TRUE(fs::is_empty(probe.home().path()));
}

TEST_F(StartUpTest, WritesLogAndTraceIntoTheLogFolder)
{
    writeToFiles("TRACE_CALL_EXIT\n");

    const auto outcome = probe.run({"--adminRights"});

    EXPECT_EQ(
        outcome.output, std::string(RIGHT_CHECKED) + "window with 2 arguments, the last "
                                                     "--adminRights, title lower case en\n");
    EXPECT_THAT(logFile(), EndsWith("[LEVEL_0] Process has kAuthorizationRightExecute right\n"))
        << "the last line is not left behind";
    EXPECT_THAT(traceFile(), EndsWith("<- TavConfiguration::Main\n"));
}

/// A folder of logs counts, behind the user's own, when it holds an entry "Logs".
class StartUpOtherLogFolderTest : public StartUpTest {
protected:
    StartUpOtherLogFolderTest()
    {
        writeToFiles("");
        fs::create_directories(probe.logFolder());
        fs::create_directories(allUsersFolder);
        probe.setVariable("TAV_COMMON_DATA_DIR", allUsers.path());
    }
    void expectLogAndTraceIn(const std::string& folder) const
    {
        probe.run({"--adminRights"});

        EXPECT_THAT(
            contentOf(folder + "/log_0.txt"),
            EndsWith("[LEVEL_0] Process has kAuthorizationRightExecute right\n"));
        EXPECT_THAT(
            contentOf(folder + "/trace_0.txt"), testing::ContainsRegex("TavConfiguration::Main\n"));
        EXPECT_TRUE(fs::is_empty(probe.logFolder()));
    }

    TemporaryFolder allUsers;
    const std::string allUsersFolder = allUsers.file("Pelora/{CODE}/Logs");
};

TEST_F(StartUpOtherLogFolderTest, WritesWhereTheFolderOfAllUsersHasTheEntry)
{
    fs::create_directories(allUsersFolder + "/Logs");

    expectLogAndTraceIn(allUsersFolder);
}

TEST_F(StartUpOtherLogFolderTest, WritesWhereTheFolderBesideTheExecutableHasTheEntry)
{
    fs::create_directories(probe.folder().file("Logs/Logs"));

    expectLogAndTraceIn(probe.folder().file("Logs"));
    EXPECT_TRUE(fs::is_empty(allUsersFolder));
}

TEST_F(StartUpTest, EndsAndWritesTheTraceWhenTheLogCannotBeOpened)
{
    // At once, so that the failed attempts are those of the thread that holds the file then.
    writeToFiles("TRACE_CALL_EXIT\n", "LOG_MUST_FLUSH\n");
    fs::create_directories(probe.logFolder() + "/log_0.txt");

    const auto outcome = probe.run({"--adminRights"});

    EXPECT_THAT(
        outcome.errors, StartsWith("Logger : can't open " + probe.logFolder() + "/log_0.txt\n"));
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(traceFile(), EndsWith("<- TavConfiguration::Main\n"));
}

TEST_F(StartUpTest, EndsAndWritesTheLogWhenTheTraceCannotBeOpened)
{
    // At once, as above.
    writeToFiles("TRACE_MUST_FLUSH\n");
    fs::create_directories(probe.logFolder() + "/trace_0.txt");

    const auto outcome = probe.run({"--adminRights"});

    EXPECT_THAT(
        outcome.errors, StartsWith("Tracer : can't open " + probe.logFolder() + "/trace_0.txt\n"));
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(logFile(), EndsWith("[LEVEL_0] Process has kAuthorizationRightExecute right\n"));
}

TEST_F(StartUpTest, GoesOnWhereTheUserMayNotWriteIntoTheLogFolder)
{
    // At once, so that the failed attempts are those of the thread that holds the files then.
    probe.folder().write(
        "logger.cfg",
        "LOG_ON\nLOG_MUST_FLUSH\nLOG_SET_MSG_FILTER LOG_LEVEL_0\nLOG_SET_FILE_NAME log\n");
    traceStartUp("TRACE_MUST_FLUSH\nTRACE_SET_FILE_NAME trace\n");
    fs::create_directories(probe.logFolder());
    fs::permissions(probe.logFolder(), fs::perms(0555));
    for (const TemporaryFolder* folder : {&probe.folder(), &probe.home()})
        fs::permissions(folder->path(), fs::perms(0755));

    EXPECT_TRUE(asOrdinaryUser([this] {
        const auto outcome = probe.run({"--adminRights"});
        const std::string folder = probe.logFolder();
        EXPECT_THAT(outcome.errors, HasSubstr("Logger : can't open " + folder + "/log_0.txt\n"));
        EXPECT_THAT(outcome.errors, HasSubstr("Tracer : can't open " + folder + "/trace_0.txt\n"));
        EXPECT_THAT(outcome.output, HasSubstr("window with 2 arguments"));
        EXPECT_EQ(outcome.status, 0);
        return !HasFailure();
    }));

    EXPECT_TRUE(fs::is_empty(probe.logFolder()));
}

TEST_F(StartUpTest, InsertsTheSuffixIntoTheNamesOfTheDiagnosticsFiles)
{
    probe.setVariable("PROBE_PUBLISHED", "nothing");
    probe.setVariable("PROBE_SUFFIX", "_x");

    const auto outcome = probe.run();

    const std::string folder = probe.folder().path();
    EXPECT_EQ(
        outcome.errors, "Warning: cannot open tracer configuration file \"" + folder +
                            "/tracer_x.cfg\"\n" + "Warning: cannot open log configuration file \"" +
                            folder + "/logger_x.cfg\"\n");
}

struct Published {
    const char* before;
    const char* told;

    friend void PrintTo(const Published& row, std::ostream* out) { *out << row.before; }
};

class StartUpPublishedTest : public StartUpTest, public testing::WithParamInterface<Published> {};

TEST_P(StartUpPublishedTest, LeavesPublishedDiagnosticsAsTheyAre)
{
    traceStartUp();
    probe.setVariable("PROBE_PUBLISHED", GetParam().before);

    const auto outcome = probe.run();

    EXPECT_EQ(outcome.output, GetParam().told);
    EXPECT_EQ(outcome.status, 0);
}

INSTANTIATE_TEST_SUITE_P(
    Facilities, StartUpPublishedTest,
    testing::Values(
        Published{"both", "tracer as it was, inactive\nlog as it was, inactive\n"},
        Published{"log", "tracer set up\nlog as it was, inactive\n"}));

TEST_F(StartUpTest, SetsUpTheLogBesideATracerThatIsPublished)
{
    traceStartUp();
    probe.setVariable("PROBE_PUBLISHED", "tracer");

    const auto outcome = probe.run();

    EXPECT_EQ(outcome.output, identity() + "tracer as it was, inactive\nlog set up\n");
}

TEST_F(StartUpTest, LoadsTheTextsOfTheUsersLanguage)
{
    probe.setVariable("LANGUAGE", "fr_FR");
    probe.folder().write(
        "Localizer_TavConfiguration_fr.cfg", "TITLE=en fran\xC3\xA7"
                                             "ais\n");

    const auto outcome = probe.run({"--adminRights"});

    EXPECT_THAT(
        outcome.output, HasSubstr("title en fran\xC3\xA7"
                                  "ais\n"));
    EXPECT_THAT(outcome.output, Not(HasSubstr("Localization file not found")));
}

/// What keeps the user's own texts from being loaded, and what is told of it.
struct TextsFailure {
    const char* content; // of the file; none where there is no file
    const char* name;
    int line;

    friend void PrintTo(const TextsFailure& row, std::ostream* out) { *out << row.content; }
};

class StartUpFallbackTest : public StartUpTest, public testing::WithParamInterface<TextsFailure> {};

TEST_P(StartUpFallbackTest, FallsBackToTheEnglishTexts)
{
    const auto [content, name, line] = GetParam();
    probe.setVariable("LANGUAGE", "pt");
    if (content != nullptr)
        probe.folder().write("Localizer_TavConfiguration_pt.cfg", content);

    const auto outcome = probe.run({"--adminRights"});

    EXPECT_EQ(
        outcome.output,
        identity() +
            logged(
                std::string("Localization file not found - Localizer Exception : ") + name +
                " on file Application/Common/Localizer/src/Mac/Localizer at line " +
                std::to_string(line)) +
            logged("Switching to default localization file - Localizer_TavConfiguration_EN.cfg") +
            elevatedLaunch() + RIGHT_CHECKED +
            logged("Process has kAuthorizationRightExecute right") +
            "window with 2 arguments, the last --adminRights, title upper case EN\n");
}

INSTANTIATE_TEST_SUITE_P(
    Failures, StartUpFallbackTest,
    testing::Values(
        TextsFailure{nullptr, "LOCALIZATION_FILE_NOT_FOUND", 170},
        TextsFailure{"TITLE=n\xE3o\n", "FILE_NOT_CORRECTLY_FORMATTED", 165}));

TEST_F(StartUpTest, EndsInTheCrashReportWithoutAnyTexts)
{
    probe.setVariable("PROBE_REPORT", "1");
    fs::remove(probe.folder().file("Localizer_TavConfiguration_en.cfg"));
    fs::remove(probe.folder().file("Localizer_TavConfiguration_EN.cfg"));

    const auto outcome = probe.run({"--adminRights"});

    EXPECT_THAT(
        outcome.output,
        EndsWith(
            logged("Switching to default localization file - Localizer_TavConfiguration_EN.cfg") +
            "SIGNAL_ABORT\n"));
    EXPECT_EQ(outcome.status, 0);
}

TEST_F(StartUpTest, InstallsTheCrashHandlerBeforeItLoadsTheTexts)
{
    traceStartUp("TRACE_THE_CALL KFExceptionHandler::constructor\n"
                 "TRACE_THE_CALL *Localizer::initialize*\n");

    const auto outcome = probe.run();

    EXPECT_THAT(
        withoutThreads(outcome.output),
        StartsWith(
            identity() + "TavConfiguration::Main\n\nKFExceptionHandler::constructor\n\n" +
            "void Localizer::initialize(std::string)\n\n"));
}

TEST_F(StartUpTest, CatchesTheAbortOfTheStartUpItselfWithoutAnyTexts)
{
    writeToFiles("TRACE_THE_CALL SIGNAL_FILTER\nTRACE_SET_MSG_FILTER TRACE_ERROR\n");
    fs::remove(probe.folder().file("Localizer_TavConfiguration_en.cfg"));
    fs::remove(probe.folder().file("Localizer_TavConfiguration_EN.cfg"));

    const auto outcome = probe.run({"--adminRights"});

    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(traceFile(), HasSubstr(">> [E] SIGNAL_ABORT\n"));
}

TEST_F(StartUpTest, ReportsASignalWhileTheWindowIsOpen)
{
    writeToFiles("");
    probe.setVariable("PROBE_WINDOW", "signal");

    const auto outcome = probe.run({"--adminRights"});

    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(logFile(), EndsWith("[LEVEL_0] Process has kAuthorizationRightExecute right\n"));
    EXPECT_THAT(
        traceFile(), testing::ContainsRegex("\\[3\\] SIGNAL_FILTER\n.*\\[2\\] runElevated\n"
                                            ".*\\[1\\] TavConfiguration::Main\n"));
}

TEST_F(StartUpTest, HearsOfItsOwnChildrenAloneWhereItsCallerLeftOneToIt)
{
    const std::string start = "cd '" + probe.folder().path() + "' && { sleep 1000 & } && " +
                              "XDG_DATA_HOME='" + probe.home().path() +
                              "' PROBE_WINDOW=children PROBE_REPORT=1 "
                              "exec ./TavConfiguration --adminRights > output";

    EXPECT_EQ(std::system(start.c_str()), 0);

    EXPECT_THAT(
        probe.folder().read("output"), EndsWith("inherited children have ended\nSIGNAL_SIGCHLD\n"));
}

TEST_F(StartUpTest, WritesPendingLinesWhereTheToolkitEndsTheProcess)
{
    writeToFiles("");
    probe.setVariable("PROBE_WINDOW", "exit");

    const auto outcome = probe.run({"--adminRights"});

    EXPECT_EQ(outcome.status, 3);
    EXPECT_THAT(logFile(), EndsWith("[LEVEL_0] Process has kAuthorizationRightExecute right\n"));
    EXPECT_THAT(traceFile(), HasSubstr("TavConfiguration::Main\n"));
}

TEST_F(StartUpTest, WritesItsLinesBeforeItRelaunches)
{
    writeToFiles("");
    probe.setVariable("PROBE_SHOWN_FILE", probe.logFolder() + "/log_0.txt");

    const auto outcome = probe.run();

    EXPECT_THAT(outcome.output, HasSubstr("[LEVEL_0] Process was launched without --adminRights"));
}

TEST_F(StartUpTest, EndsWithoutACardAlsoWhereTheCallerBlocksSignals)
{
    fs::remove(probe.folder().file("ID.txt"));
    const BlockedSignals blocked;

    const auto outcome = probe.run();

    EXPECT_EQ(outcome.output, "");
    EXPECT_EQ(outcome.status, 0);
}

TEST_F(StartUpTest, NeverGoesOnWithoutACardWhereNoReportEndsTheProcess)
{
    probe.setVariable("PROBE_PUBLISHED", "nothing");
    fs::remove(probe.folder().file("ID.txt"));
    const BlockedSignals blocked;

    const auto outcome = probe.run();

    EXPECT_EQ(outcome.output, "");
    EXPECT_EQ(outcome.errors, "\"cannot start TavConfiguration : no ID card\"\n");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_TRUE(fs::is_empty(probe.home().path()));
}

TEST_F(StartUpTest, NeverGoesOnWithoutALogFolderWhereNoReportEndsTheProcess)
{
    probe.setVariable("PROBE_PUBLISHED", "nothing");
    probe.home().write("Pelora", "a file in the folder's place");
    const BlockedSignals blocked;

    const auto outcome = probe.run();

    EXPECT_EQ(outcome.output, "");
    EXPECT_EQ(outcome.errors, "\"cannot start TavConfiguration : unable to log\"\n");
    EXPECT_EQ(outcome.status, 0);
}

TEST_F(StartUpTest, WritesPendingLinesAtAContractViolation)
{
    writeToFiles("TRACE_THE_CALL SIGNAL_FILTER\nTRACE_SET_MSG_FILTER TRACE_ERROR\n");
    probe.setVariable("PROBE_WINDOW", "violation");

    const auto outcome = probe.run({"--adminRights"});

    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(logFile(), EndsWith("[LEVEL_0] Process has kAuthorizationRightExecute right\n"));
    EXPECT_THAT(traceFile(), HasSubstr(">> [E] REQUIRE VIOLATION : key != NULL - In File : "));
    EXPECT_THAT(traceFile(), EndsWith("---------------------------------------------\n"))
        << "the last line of the report";
}
