#include "KFExceptionHandler.h"

#include "CallMarker.h"
#include "Diagnostics.h"
#include "KFExceptionListener.h"
#include "ProgramSignals.h"
#include "Tracer.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <mutex>

#include <unistd.h>

namespace {

constexpr unsigned int REPORT_SECONDS = 5;

std::atomic<bool> s_reporting = false;

// From here on any signal ends the process, the alarm too; so none may stay blocked here.
void endAtOnceOnAnotherSignal()
{
    if (s_reporting.exchange(true))
        _exit(EXIT_SUCCESS);
    alarm(REPORT_SECONDS);
    sigset_t none{};
    sigemptyset(&none);
    pthread_sigmask(SIG_SETMASK, &none, nullptr);
}

} // namespace

std::atomic<KFExceptionHandler*> KFExceptionHandler::m_globalHandler = nullptr;

// Never destroyed: a thread may violate a contract while the process ends.
std::map<std::string, std::string>& KFExceptionHandler::m_ExceptParams =
    *new std::map<std::string, std::string>;

KFExceptionHandler* KFExceptionHandler::GetInstance()
{
    static std::once_flag s_created;
    std::call_once(s_created, [] { m_globalHandler = new KFExceptionHandler; });
    return m_globalHandler;
}

KFExceptionHandler::KFExceptionHandler()
{
    CallMarker marker("KFExceptionHandler", "KFExceptionHandler::constructor", true, this);
    for (const char* const key : {"Code", "Name", "Description", "InFile", "AtLine"})
        m_ExceptParams[key] = "";
    m_action.sa_handler = &KFExceptionHandler::onHostSignal;
    sigemptyset(&m_action.sa_mask);
    for (int signal = ProgramSignals::FIRST; signal <= ProgramSignals::LAST; ++signal) {
        if (signal == ProgramSignals::WINDOW_SIZE_CHANGE)
            continue;
        if (sigaction(ProgramSignals::toHost(signal), &m_action, nullptr) != 0)
            TAV_TRACE(
                marker, TraceMsgType::E, "Cant install signal handler for %d errno = %d.", signal,
                errno);
    }
}

void KFExceptionHandler::throwException(
    int code, const char* name, const char* description, const char* fileName, int line)
{
    m_ExceptParams["Code"] = std::to_string(code);
    m_ExceptParams["Name"] = name;
    m_ExceptParams["Description"] = description;
    m_ExceptParams["InFile"] = fileName;
    m_ExceptParams["AtLine"] = std::to_string(line);
    raise(ProgramSignals::toHost(code == 0 ? ProgramSignals::CONTRACT_VIOLATION : code));
}

void KFExceptionHandler::crashHandlerSignalFilter(int signal)
{
    endAtOnceOnAnotherSignal();
    Tracer* const tracer = Tracer::GetInstance();
    if (tracer != nullptr)
        tracer->giveUpWhenHeld();
    CallMarker marker("SIGNAL_FILTER");
    const std::string message = reportText(signal);
    TAV_TRACE(marker, TraceMsgType::E, "%s", message.c_str());
    if (tracer != nullptr && CallMarker::isTracing()) {
        tracer->PrintStacks();
        tracer->PrintAllObjectsCount();
    }
    tellListeners(message);
    // Not left to an exit handler: another one may fault or hang before its turn.
    Diagnostics::drain();
    std::exit(EXIT_SUCCESS);
}

void KFExceptionHandler::addListener(KFExceptionListener& listener)
{
    m_listeners.push_back(&listener);
}

void KFExceptionHandler::onHostSignal(int hostSignal)
{
    crashHandlerSignalFilter(ProgramSignals::fromHost(hostSignal));
}

std::string KFExceptionHandler::reportText(int signal)
{
    if (signal != ProgramSignals::CONTRACT_VIOLATION)
        return ProgramSignals::name(signal);
    constexpr std::size_t maxLength = 1023;
    std::array<char, maxLength + 1> text{};
    std::snprintf(
        text.data(), text.size(), "%s : %s - In File : %s - At Line : %s",
        m_ExceptParams["Name"].c_str(), m_ExceptParams["Description"].c_str(),
        m_ExceptParams["InFile"].c_str(), m_ExceptParams["AtLine"].c_str());
    return text.data();
}

void KFExceptionHandler::tellListeners(const std::string& message)
{
    KFExceptionHandler* const handler = m_globalHandler;
    if (handler == nullptr)
        return;
    for (KFExceptionListener* const listener : handler->m_listeners)
        listener->onReport(message);
}
