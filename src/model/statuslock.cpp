// The lock's work: the time-out, the warning, and what the thread sanitizer must be told.
//
// Qt's own code is not instrumented, so the sanitizer does not see that its mutex orders what the
// threads do. It is told here; otherwise it would report every member, and a true race among them
// would go unseen.
#include "model/statuslock.h"

#include "common/log.h"
#include "runtime/vx_posix_reset.h"

#include <QThread>

// g++ defines the first; with g++ __has_feature is a stand-in of Qt's that knows nothing.
#if defined(__SANITIZE_THREAD__)
#define LUMENPANEL_THREAD_SANITIZER
#elif defined(__has_feature)
#if __has_feature(thread_sanitizer)
#define LUMENPANEL_THREAD_SANITIZER
#endif
#endif

#if defined(LUMENPANEL_THREAD_SANITIZER)
extern "C" void __tsan_acquire(void* address);
extern "C" void __tsan_release(void* address);
#else
static inline void __tsan_acquire(void*) {}
static inline void __tsan_release(void*) {}
#endif

void StatusLock::relock()
{
    if (m_held)
        return;
    if (!m_mutex.mutex.tryLock(STATUS_LOCK_TIMEOUT_MS)) {
        logWarning() << m_function << ": ERROR!!!!!! Mutex lock failed!!!!!!!!! this thread="
                     << static_cast<const void*>(QThread::currentThreadId()) << ", Already locked by "
                     << m_mutex.mutexHolderName.load(std::memory_order_relaxed) << " in thread="
                     << static_cast<const void*>(m_mutex.mutexHolderThread.load(std::memory_order_relaxed));
        vx_panic("ERROR !!! Mutex lock failed. Exiting lumenpanel.");
    }
    __tsan_acquire(&m_mutex);
    m_held = true;
    m_mutex.mutexHolderName.store(m_function, std::memory_order_relaxed);
    m_mutex.mutexHolderThread.store(QThread::currentThreadId(), std::memory_order_relaxed);
}

void StatusLock::unlock()
{
    if (!m_held)
        return;
    m_held = false;
    __tsan_release(&m_mutex);
    m_mutex.mutex.unlock();
}
