#pragma once

#include <atomic>
#include <csignal>
#include <list>
#include <map>
#include <string>

class KFExceptionListener;

/// Turns a crash or a contract violation into a last report, then ends the process with status 0.
///
/// The one instance installs one handler for the signals of the program's set: not for 28, and in
/// vain for 9 and 17, which cannot be caught. A violation raises such a signal. The report (the
/// message, the open calls of all threads, the live objects) is traced on the thread that received
/// the signal, told to the listeners, and written out. A second signal meanwhile, on any thread, or
/// a report of more than five seconds ends the process at once.
///
/// The report uses ordinary calls, as the tracer does, not only those that a signal handler may
/// use: a crash inside the allocator may therefore end in silence, but within the five seconds.
class KFExceptionHandler {
public:
    /// The one handler, created at the first call and never destroyed.
    static KFExceptionHandler* GetInstance();

    KFExceptionHandler(const KFExceptionHandler&) = delete;
    KFExceptionHandler& operator=(const KFExceptionHandler&) = delete;

    /// Records a violation and raises it as the signal `code` of the program's set, or, for 0, as
    /// the signal of contract violations, which alone reports what is recorded here. Returns only
    /// when that signal does not end the process.
    void throwException(
        int code, const char* name, const char* description, const char* fileName, int line);

    /// Reports the signal, a number of the program's set, and ends the process.
    [[noreturn]] static void crashHandlerSignalFilter(int signal);

    /// Adds a listener behind the others; it stays the caller's and must outlive the process.
    void addListener(KFExceptionListener& listener);

protected:
    /// "Code", "Name", "Description", "InFile" and "AtLine" of the last violation. Kept: no lock,
    /// two violations at once overwrite each other's. "Code" is reported nowhere.
    static std::map<std::string, std::string>& m_ExceptParams;

private:
    KFExceptionHandler();
    ~KFExceptionHandler() = default;

    static void onHostSignal(int hostSignal);
    static std::string reportText(int signal);
    static void tellListeners(const std::string& message);

    struct sigaction m_action {};
    std::list<KFExceptionListener*> m_listeners;

    static std::atomic<KFExceptionHandler*> m_globalHandler;
};
