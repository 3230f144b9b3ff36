// The event loop's turn, its descriptors and its idlers. Timers, signals and the line parser have sources of
// their own. No lock: the thread that runs the loop alone.
//
// Simple on purpose: a linear list of descriptors, walked twice a turn, and select with sets built anew. With
// a handful of descriptors that costs less than the calls that keep a set in the kernel.
#define VX_ASSERT_SOURCE "fdloop"
#include "runtime/fdloop_impl.h"
#include "runtime/util.h"
#include "runtime/vx_assert.h"
#include "runtime/vx_log.h"
#include "runtime/vx_time.h"

#include <errno.h>
#include <stdlib.h>
#include <syslog.h>

namespace {

const uint32_t DEBUG_VALID = 0x20000;
const uint32_t DEBUG_LEVEL_MASK = 0xff;

bool fits_set(int fd)
{
    return fd >= 0 && fd < FD_SETSIZE;
}

// Unsigned: the macros of the sets divide by it, and this walk is the price of every turn.
unsigned set_index(const fdloop_fd_entry* entry)
{
    return static_cast<unsigned>(entry->fd);
}

void register_entry(fdloop_t* loop, fdloop_class fd_class, int fd, fdloop_fd_handler_t handler, void* data)
{
    if (fd < 0) {
        return;
    }
    if (!fits_set(fd)) {
        vx_slog(LOG_ERR, "%s: descriptor %d does not fit the set\n", "fdloop_fd_register", fd);
        return;
    }
    fdloop_fd_entry* entry = static_cast<fdloop_fd_entry*>(vx_calloc(1, sizeof(fdloop_fd_entry)));
    VX_ASSERT(entry);
    entry->fd_class = static_cast<uint8_t>(fd_class);
    entry->enabled = 1;
    entry->fd = static_cast<int16_t>(fd);
    entry->handler = handler;
    entry->data = data;
    if (loop->fd_tail) {
        loop->fd_tail->next = entry;
    } else {
        loop->fd_head = entry;
    }
    loop->fd_tail = entry;
    ++loop->entry_count;
    ++loop->class_count[fd_class];
}

// Unlinks and frees the entry behind previous (null: the head). Returns the one that follows.
fdloop_fd_entry* remove_entry(fdloop_t* loop, fdloop_fd_entry* previous, fdloop_fd_entry* entry)
{
    fdloop_fd_entry* next = entry->next;
    if (previous) {
        previous->next = next;
    } else {
        loop->fd_head = next;
    }
    if (loop->fd_tail == entry) {
        loop->fd_tail = previous;
    }
    --loop->entry_count;
    --loop->class_count[entry->fd_class];
    free(entry);
    return next;
}

void unregister_entry(fdloop_t* loop, fdloop_class fd_class, int fd)
{
    if (!fits_set(fd)) {
        return;
    }
    fdloop_fd_entry* previous = nullptr;
    fdloop_fd_entry* entry = loop->fd_head;
    while (entry && (entry->deleted || entry->fd != fd || entry->fd_class != fd_class)) {
        previous = entry;
        entry = entry->next;
    }
    if (entry && loop->in_fd_dispatch) {
        entry->deleted = 1;
        loop->fd_delete_pending = 1;
    } else if (entry) {
        remove_entry(loop, previous, entry);
    }
    // With or without an entry: what is ready but not yet called must not be called in this pass.
    FD_CLR(fd, &loop->class_set[fd_class]);
}

// Builds the sets of this turn. sets gets the class's set, or null for a class without an enabled entry.
// Returns the highest descriptor, -1 if no entry is enabled.
int build_sets(fdloop_t* loop, fd_set* sets[FDLOOP_CLASSES])
{
    for (int fd_class = 0; fd_class < FDLOOP_CLASSES; ++fd_class) {
        sets[fd_class] = nullptr;
        if (loop->class_count[fd_class] > 0) {
            FD_ZERO(&loop->class_set[fd_class]);
        }
    }
    int highest = -1;
    for (fdloop_fd_entry* entry = loop->fd_head; entry; entry = entry->next) {
        if (entry->enabled) {
            fd_set* set = &loop->class_set[entry->fd_class];
            FD_SET(set_index(entry), set);
            sets[entry->fd_class] = set;
            if (entry->fd > highest) {
                highest = entry->fd;
            }
        }
    }
    return highest;
}

void sweep_deleted(fdloop_t* loop)
{
    fdloop_fd_entry* previous = nullptr;
    fdloop_fd_entry* entry = loop->fd_head;
    while (entry) {
        if (entry->deleted) {
            entry = remove_entry(loop, previous, entry);
        } else {
            previous = entry;
            entry = entry->next;
        }
    }
}

void dispatch(fdloop_t* loop, fd_set* const sets[FDLOOP_CLASSES])
{
    loop->in_fd_dispatch = 1;
    for (fdloop_fd_entry* entry = loop->fd_head; entry; entry = entry->next) {
        fd_set* set = sets[entry->fd_class];
        if (!set || !FD_ISSET(set_index(entry), set) || !entry->enabled || entry->deleted) {
            continue;
        }
        if (entry->handler(entry->fd, entry->data) != 0 || entry->deleted) {
            entry->deleted = 1;
            loop->fd_delete_pending = 1;
            FD_CLR(entry->fd, set); // a second entry of this descriptor is not called in this pass
        }
    }
    loop->in_fd_dispatch = 0;
    if (loop->fd_delete_pending) {
        loop->fd_delete_pending = 0;
        sweep_deleted(loop);
    }
}

} // namespace

fdloop_t* fdloop_init(void)
{
    fdloop_t* loop = static_cast<fdloop_t*>(vx_calloc(1, sizeof(fdloop_t)));
    VX_ASSERT(loop);
    loop->now = fdloop_time_ms();
    return loop;
}

void fdloop_debug(fdloop_t* loop, uint32_t flags)
{
    if (flags & DEBUG_VALID) {
        loop->debug_level = static_cast<uint8_t>(flags & DEBUG_LEVEL_MASK);
    }
}

void fdloop_fd_register(fdloop_t* loop, int fd, fdloop_fd_handler_t handler, void* data)
{
    register_entry(loop, FDLOOP_READ, fd, handler, data);
}

void fdloop_fd_register_write(fdloop_t* loop, int fd, fdloop_fd_handler_t handler, void* data)
{
    register_entry(loop, FDLOOP_WRITE, fd, handler, data);
}

void fdloop_fd_register_except(fdloop_t* loop, int fd, fdloop_fd_handler_t handler, void* data)
{
    register_entry(loop, FDLOOP_EXCEPT, fd, handler, data);
}

void fdloop_fd_unregister(fdloop_t* loop, int fd)
{
    unregister_entry(loop, FDLOOP_READ, fd);
}

void fdloop_fd_unregister_write(fdloop_t* loop, int fd)
{
    unregister_entry(loop, FDLOOP_WRITE, fd);
}

void fdloop_fd_unregister_except(fdloop_t* loop, int fd)
{
    unregister_entry(loop, FDLOOP_EXCEPT, fd);
}

// Unlike unregistering, this also finds an entry that waits for the sweep: during dispatch it may be that one
// which takes the byte, and not a newer entry of the same descriptor and handler.
void fdloop_fd_enable(fdloop_t* loop, int fd, fdloop_fd_handler_t handler, int enabled)
{
    for (fdloop_fd_entry* entry = loop->fd_head; entry; entry = entry->next) {
        if (entry->fd == fd && entry->handler == handler) {
            entry->enabled = enabled ? 1 : 0;
            return;
        }
    }
}

fdloop_idler* fdloop_idler_add(fdloop_t* loop, fdloop_idler_cb_t function, void* data)
{
    fdloop_idler* idler = static_cast<fdloop_idler*>(vx_calloc(1, sizeof(fdloop_idler)));
    VX_ASSERT(idler);
    idler->function = function;
    idler->data = data;
    if (loop->idler_tail) {
        loop->idler_tail->next = idler;
    } else {
        loop->idler_head = idler;
    }
    loop->idler_tail = idler;
    return idler;
}

int fdloop_run(fdloop_t* loop)
{
    loop->now = fdloop_time_ms();
    uint32_t timeout = fdloop_timers_run(loop, loop->now);

    for (fdloop_idler* idler = loop->idler_head; idler; idler = idler->next) {
        idler->function(idler->data);
    }

    fd_set* sets[FDLOOP_CLASSES];
    int highest = build_sets(loop, sets);
    if (highest < 0 && timeout == 0) {
        return 1;
    }

    struct timeval wait;
    wait.tv_sec = static_cast<time_t>(timeout / 1000u);
    wait.tv_usec = static_cast<suseconds_t>(timeout % 1000u) * 1000;
    int ready = select(highest + 1, sets[FDLOOP_READ], sets[FDLOOP_WRITE], sets[FDLOOP_EXCEPT],
                       timeout != 0 ? &wait : nullptr);
    if (ready == 0) {
        return 0;
    }
    if (ready < 0) {
        return errno == EINTR ? 0 : -1;
    }
    dispatch(loop, sets);
    return 0;
}

int fdloop_loop(fdloop_t* loop)
{
    int result;
    do {
        result = fdloop_run(loop);
    } while (result == 0);
    return result;
}

uint32_t fdloop_time_ms(void)
{
    return vx_time_ms();
}
