#include "CallMarker.h"
#include "Console.h"
#include "FileContent.h"
#include "KFExceptionHandler.h"
#include "KFExceptionListener.h"
#include "KeptViolation.h"
#include "Localizer.h"
#include "Logger.h"
#include "RecordingAuthorizationServices.h"
#include "Tracer.h"
#include "main.h"

#include <csignal>
#include <cstdlib>
#include <fstream>

#include <sys/wait.h>

/// Runs the start-up as the tool's executable does, on authorization operations and a window that
/// are records on the standard output, between the console's log and trace lines.
///
/// Environment: PROBE_CREATE, PROBE_COPY_RIGHTS and PROBE_EXECUTE are the operations' statuses,
/// PROBE_WINDOW is the window's result, "signal", "violation", "exit", "trace", which traces every
/// thread from then on, or "children", which ends the process's children, then one of its own;
/// PROBE_SHOWN_FILE is shown as it is at the relaunch. With PROBE_REPORT a crash report and the
/// code of its violation are shown. With PROBE_CALLS every call is traced from the first one on,
/// whatever the tracer's file says; with PROBE_LOST_RACES another process makes each folder right
/// before this one can. With PROBE_PUBLISHED initTracesAndLogs() is called alone, beside what was
/// published before: "tracer", "log", "both" or "nothing".
namespace {

std::string setting(const char* name, const char* otherwise)
{
    const char* value = std::getenv(name);
    return value != nullptr ? value : otherwise;
}

AuthorizationStatus status(const char* name)
{
    return static_cast<AuthorizationStatus>(std::stoi(setting(name, "0")));
}

void traceWindow()
{
    Tracer* const tracer = Tracer::GetInstance();
    tracer->TraceTheThread("*");
    tracer->setActive(true);
    CallMarker marker("tracedWindow");
}

/// Returns once the process has been told.
void end(pid_t child)
{
    kill(child, SIGKILL);
    siginfo_t ended{};
    waitid(P_PID, static_cast<id_t>(child), &ended, WEXITED | WNOWAIT);
}

void endChildren()
{
    std::ifstream children("/proc/thread-self/children");
    for (pid_t child = 0; children >> child;)
        end(child);
    Console::writeLine("inherited children have ended");
    const pid_t own = fork();
    if (own == 0)
        pause();
    end(own);
    Console::writeLine("an own child has ended");
}

int recordWindow(int& argc, char** argv)
{
    Console::writeLine(
        "window with " + std::to_string(argc) + " arguments, the last " + argv[argc - 1] +
        ", title " + Localizer::getInstance()->getLocalizedString("TITLE"));
    const std::string result = setting("PROBE_WINDOW", "0");
    if (result == "signal")
        raise(SIGTERM);
    if (result == "violation")
        Localizer::getInstance()->getLocalizedString(nullptr);
    if (result == "exit")
        std::exit(3);
    if (result == "children")
        endChildren();
    if (result == "trace")
        traceWindow();
    return std::atoi(result.c_str());
}

void recordOperation(const std::string& line)
{
    Console::writeLine(line);
    const char* const shownFile = std::getenv("PROBE_SHOWN_FILE");
    if (shownFile == nullptr || !line.starts_with("AuthorizationExecuteWithPrivileges"))
        return;
    Console::writeLine(contentOf(shownFile));
}

std::unique_ptr<AuthorizationServices> makeServices()
{
    auto services = std::make_unique<RecordingAuthorizationServices>(&recordOperation);
    services->createStatus = status("PROBE_CREATE");
    services->copyRightsStatus = status("PROBE_COPY_RIGHTS");
    services->executeStatus = status("PROBE_EXECUTE");
    return services;
}

class ReportPrinter : public KFExceptionListener {
public:
    void onReport(const std::string& message) override
    {
        Console::writeLine(message);
        if (!KeptViolation::code().empty())
            Console::writeLine("code " + KeptViolation::code());
    }
};

/// Publishes the facility as it is made, unless it is another's turn.
template<typename Facility>
Facility* publish(const std::string& name, const std::string& wanted)
{
    static Facility s_facility;
    if (wanted != name && wanted != "both")
        return nullptr;
    Facility::SetInstance(&s_facility);
    return &s_facility;
}

/// Tells what became of the facility that was published, if any.
template<typename Facility>
void tellOf(const std::string& name, const Facility* former)
{
    Facility* const facility = Facility::GetInstance();
    if (facility == former)
        Console::writeLine(name + " as it was, " + (facility->isActive() ? "active" : "inactive"));
    else
        Console::writeLine(name + (facility->isActive() ? " set up" : " new and inactive"));
}

void initTracesAndLogsBeside(const std::string& published)
{
    const Tracer* const tracer = publish<Tracer>("tracer", published);
    const Logger* const logger = publish<Logger>("log", published);
    initTracesAndLogs(setting("PROBE_SUFFIX", ""));
    tellOf<Tracer>("tracer", tracer);
    tellOf<Logger>("log", logger);
}

void traceEveryCall()
{
    static Tracer tracer;
    tracer.setSynchronous(true);
    tracer.TraceTheThread("*");
    tracer.TraceTheCall("*");
    tracer.SetFileName("console");
    tracer.setActive(true);
    Tracer::SetInstance(&tracer);
}

} // namespace

int main(int argc, char** argv)
{
    static ReportPrinter printer;
    if (std::getenv("PROBE_REPORT") != nullptr)
        KFExceptionHandler::GetInstance()->addListener(printer);

    if (std::getenv("PROBE_CALLS") != nullptr)
        traceEveryCall();
    if (std::getenv("PROBE_PUBLISHED") != nullptr) {
        initTracesAndLogsBeside(setting("PROBE_PUBLISHED", ""));
        return 0;
    }
    return tavConfigurationMain(argc, argv, &makeServices, &recordWindow);
}
