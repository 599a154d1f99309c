#include "CallMarker.h"
#include "Console.h"
#include "FileContent.h"
#include "KFExceptionHandler.h"
#include "KFExceptionListener.h"
#include "Localizer.h"
#include "Logger.h"
#include "RecordingAuthorizationServices.h"
#include "Tracer.h"
#include "main.h"

#include <csignal>
#include <cstdlib>

/// Runs the start-up as the tool's executable does, on authorization operations and a window that
/// are records on the standard output, between the console's log and trace lines.
///
/// Environment: PROBE_CREATE, PROBE_COPY_RIGHTS and PROBE_EXECUTE are the operations' statuses,
/// PROBE_WINDOW is the window's result, "signal", "violation", "exit" or "trace", which traces
/// every thread from then on; PROBE_SHOWN_FILE is shown as it is at the relaunch; PROBE_FUNCTION
/// "initTracesAndLogs" calls that function alone, "published" does after a tracer and a logger were
/// published. With PROBE_CALLS every call is traced from the first one on, whatever the tracer's
/// file says.
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
    if (result != "trace")
        return std::stoi(result);
    traceWindow();
    return 0;
}

void recordOperation(const std::string& line)
{
    Console::writeLine(line);
    const char* const shownFile = std::getenv("PROBE_SHOWN_FILE");
    if (shownFile == nullptr || !line.starts_with("AuthorizationExecuteWithPrivileges"))
        return;
    Console::writeLine(contentOf(shownFile));
}

class ReportPrinter : public KFExceptionListener {
public:
    void onReport(const std::string& message) override { Console::writeLine(message); }
};

void publishBoth()
{
    static Tracer tracer;
    Tracer::SetInstance(&tracer);
    static Logger logger;
    Logger::SetInstance(&logger);
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
    const std::string function = setting("PROBE_FUNCTION", "main");
    if (function == "published")
        publishBoth();
    if (function != "main") {
        initTracesAndLogs(setting("PROBE_SUFFIX", ""));
        return 0;
    }
    RecordingAuthorizationServices services(&recordOperation);
    services.createStatus = status("PROBE_CREATE");
    services.copyRightsStatus = status("PROBE_COPY_RIGHTS");
    services.executeStatus = status("PROBE_EXECUTE");
    return tavConfigurationMain(argc, argv, services, &recordWindow);
}
