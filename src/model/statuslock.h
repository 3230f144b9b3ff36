// The model's lock, and the one way to take it.
//
// A function names itself to a StatusLock, works, and lets go of it at the end of the scope or with
// unlock(). The lock is not recursive and is never waited for longer than STATUS_LOCK_TIMEOUT_MS: what
// takes that long is taken for a deadlock, and the process ends with a warning that names who holds it.
// Any thread. No signal is emitted and no other locking function is called while it is held.
#ifndef LUMENPANEL_MODEL_STATUSLOCK_H
#define LUMENPANEL_MODEL_STATUSLOCK_H

#include <QMutex>

#include <atomic>

const int STATUS_LOCK_TIMEOUT_MS = 2100;

// The mutex with the last function that took it. The two are for the log of a failure, which reads
// them without the lock.
struct StatusMutex {
    StatusMutex() : mutexHolderName(""), mutexHolderThread(nullptr) {}

    QMutex mutex;
    std::atomic<const char*> mutexHolderName;
    std::atomic<void*> mutexHolderThread;
};

class StatusLock {
public:
    // function must last as long as the process: a function's own __func__ or a literal.
    StatusLock(StatusMutex& mutex, const char* function) : m_mutex(mutex), m_function(function), m_held(false)
    {
        relock();
    }
    ~StatusLock() { unlock(); }

    // Takes the lock, if this object does not hold it. Does not return if that takes too long.
    void relock();
    // Lets go of the lock, if this object holds it.
    void unlock();

private:
    StatusLock(const StatusLock&);
    StatusLock& operator=(const StatusLock&);

    StatusMutex& m_mutex;
    const char* const m_function;
    bool m_held;
};

#endif
