// The bus thread: owns the event loop and the one bus connection, feeds the model from the database.
//
// After its set-up it stays in the event loop for ever; it runs no Qt event loop and has no slots of its
// own thread. It is the only thread that may read the database. Writes that need no answer go out on its
// connection from any thread.
#ifndef LUMENPANEL_BUSIF_CBUSIFTHREAD_H
#define LUMENPANEL_BUSIF_CBUSIFTHREAD_H

#include <QThread>

#include "runtime/cbus.h"
#include "runtime/fdloop.h"

// The thread's loop, its poll timer (null while polling is off) and its connection; null until run() has
// made them. They live to the end of the process, which may come by exit() on either thread, so nothing
// ever destroys them. Plain pointers without a lock: the GUI thread reads `conn` to send; loop and timer are
// the bus thread's alone.
extern fdloop_t* fdl;
extern struct fdloop_timer*
    fdloop_timer; // hides the type of that name, which is `struct fdloop_timer` from here
extern cbus_conn_t* conn;

class CBusIfThread : public QThread {
    Q_OBJECT

public:
    // To be created and started on the GUI thread, after the model exists.
    CBusIfThread();

    // Deletes the poll timer; does not stop the thread. On the deleting thread.
    ~CBusIfThread() override;

    // The whole life of the thread: connects, subscribes, reads everything once, then runs the loop. Panics
    // if there is no bus. Returns only if the loop ends, which its keep-alive timer prevents.
    void run() override;

public slots:
    // Switches the poll of the radio module (each 1,000 ms) on or off; what is so already stays. Runs on the
    // thread that emits: run() calls it on the bus thread, later it is the GUI thread. While the bus thread
    // runs, a call from another thread wakes the loop, which does it then; before, it is done at once.
    void handleSubscribeToPollRmValues(bool value) const;
};

// The poll's timer callback, on the bus thread: reads the radio module's state into the model, then has
// itself called again 1,000 ms later. The argument is not used. Returns 0, which drops the expired timer.
int updateRmValues(void* data);

#endif
