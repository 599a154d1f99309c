#include "KFThread.h"

#include "Contract.h"
#include "KFMutexGuard.h"
#include "Tracer.h"

#include <chrono>
#include <thread>

namespace {

constexpr const char* UNIT = "Infrastructure/ProgrammingServices/OS/src/KFThread";

/// That whose body the calling thread is; null on all other threads.
thread_local const KFThread* t_current = nullptr;

} // namespace

KFThread::KFThread(const char* name)
{
    if (name != nullptr)
        m_name = name;
    m_hasAttributes =
        Contract::require(pthread_attr_init(&m_attr) == 0, "!pthread_attr_init(&m_attr)", UNIT, 46);
    if (!m_hasAttributes)
        return;
    Contract::require(
        pthread_attr_setdetachstate(&m_attr, PTHREAD_CREATE_JOINABLE) == 0,
        "!pthread_attr_setdetachstate(&m_attr, PTHREAD_CREATE_JOINABLE)", UNIT, 47);
}

KFThread::~KFThread()
{
    if (m_running)
        KFThread::onTerminate();
    join();
    if (m_hasAttributes)
        pthread_attr_destroy(&m_attr);
}

bool KFThread::start()
{
    if (m_hasBody.exchange(true))
        return false;
    join();
    const KFMutexGuard guard(m_joinMutex);
    // The system's own attributes make a thread joinable, too.
    const pthread_attr_t* const attributes = m_hasAttributes ? &m_attr : nullptr;
    m_running = true;
    m_joinable = pthread_create(&m_handle, attributes, &KFThread::threadStart, this) == 0;
    if (!m_joinable)
        m_hasBody = false;
    return m_joinable;
}

void KFThread::stop()
{
    onTerminate();
    join();
}

void KFThread::waitForThreadTermination(KFThread* thread)
{
    thread->join();
}

pthread_t KFThread::getCurrentThreadId()
{
    return pthread_self();
}

void KFThread::msleep(unsigned int milliseconds)
{
    std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
}

void KFThread::sleep(unsigned int seconds)
{
    std::this_thread::sleep_for(std::chrono::seconds(seconds));
}

void* KFThread::threadStart(void* argument)
{
    if (!Contract::require(argument != nullptr, "arg != NULL", UNIT, 156))
        return nullptr;
    auto* const thread = static_cast<KFThread*>(argument);
    t_current = thread;
    // NOLINTNEXTLINE(clang-analyzer-core.CallAndMessage): the check tells whether it is null
    if (thread->isTraced())
        Tracer::GetInstance()->BeginningOfThread(thread->m_name->c_str());
    thread->run();
    if (thread->isTraced())
        Tracer::GetInstance()->EndOfThread();
    thread->m_hasBody = false;
    thread->m_running = false;
    return nullptr;
}

bool KFThread::isTraced() const
{
    return m_name && Tracer::GetInstance() != nullptr && Tracer::GetInstance()->isActive();
}

// A thread is joined once at most, and only when it was created; one whose body has returned is
// joined too, so that its stack is given back. Whoever asks meanwhile waits as long. What a body
// cannot wait for, its own end or that of a thread which waits for it, is left to the next join,
// that of the destructor at the latest.
void KFThread::join()
{
    if (t_current == this)
        return;
    const KFMutexGuard guard(m_joinMutex);
    if (m_joinable && pthread_join(m_handle, nullptr) == 0)
        m_joinable = false;
}
