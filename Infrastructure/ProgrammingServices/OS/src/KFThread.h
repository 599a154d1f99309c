#pragma once

#include "KFMutex.h"

#include <atomic>
#include <optional>
#include <string>

#include <pthread.h>

/// One POSIX thread, whose body is the run() of a subclass.
///
/// The owner creates, starts, stops and destroys it. While the body of a named thread runs, the
/// tracer knows the thread by that name, provided that tracing was active when it began.
///
/// The destructor joins a body that still runs, and by then only the base's onTerminate() is left:
/// a subclass whose body loops until it is asked to finish must be stopped before its destructor.
/// No body may destroy its own object.
class KFThread {
public:
    /// `name` is copied; null for a thread that the tracer names itself.
    explicit KFThread(const char* name);
    virtual ~KFThread();

    KFThread(const KFThread&) = delete;
    KFThread& operator=(const KFThread&) = delete;

    virtual void run() = 0;
    /// Asks the body to finish.
    virtual void onTerminate() {}

    /// False when the thread could not be created. Kept: isRunning() stays true then. False, too,
    /// while a body runs: one object is one thread at a time.
    bool start();
    /// Asks the body to finish and waits until it has; the body itself, which may ask too, does not
    /// wait.
    void stop();
    /// True from start() until the body has returned.
    bool isRunning() const { return m_running; }
    /// Valid after a successful start().
    pthread_t getHandle() const { return m_handle; }

    static void waitForThreadTermination(KFThread* thread);
    static pthread_t getCurrentThreadId();
    static void msleep(unsigned int milliseconds);
    static void sleep(unsigned int seconds);

    /// The entry of every thread; `argument` is its KFThread.
    static void* threadStart(void* argument);

private:
    bool isTraced() const;
    void join();

    std::optional<std::string> m_name;
    std::atomic<bool> m_running = false;
    pthread_t m_handle{};
    pthread_attr_t m_attr{};
    bool m_hasAttributes = false;        ///< m_attr could be made
    std::atomic<bool> m_hasBody = false; ///< m_running, but for a thread that was not created
    KFMutex m_joinMutex{false};          ///< held while the thread is made and waited for
    bool m_joinable = false;             ///< created and not joined yet
};
