// Init calls and shell start-up functions, see the header. One thread.
#include "runtime/initcall.h"
#include "runtime/vx_log.h"
#include "runtime/vx_time.h"

#include <string.h>
#include <sys/resource.h>

initlist InitCall::list(false);
initlist InitCall::runlist(false);
initlist shell_startup::list(false);

namespace {

const int STARTUP_PRIORITIES = 4;

// Peak of the process's resident memory in kilobytes.
long peak_memory()
{
    struct rusage usage;
    return getrusage(RUSAGE_SELF, &usage) == 0 ? usage.ru_maxrss : 0;
}

InitCall* next_of_priority(initcall_priority_t from, initcall_priority_t to)
{
    InitCall* lowest = nullptr;
    for (initlist_entry* entry = InitCall::list.head; entry; entry = entry->next) {
        InitCall* call = static_cast<InitCall*>(entry);
        bool wanted = call->priority >= from && call->priority <= to;
        if (wanted && (!lowest || call->priority < lowest->priority)) {
            lowest = call;
        }
    }
    return lowest;
}

// Off the list before the run, so that a call that runs others can't come back to itself.
int run_and_move(InitCall* call)
{
    InitCall::list.remove(call);
    int result = call->Run();
    InitCall::runlist.add(call);
    return result;
}

void dump_entry(initlist_entry* entry, void* done)
{
    const InitCall* call = static_cast<const InitCall*>(entry);
    vx_printf("%-40s %4u %6u %5u %5u %11d\n", call->name, *static_cast<unsigned*>(done), call->memory / 1024,
              call->start_ms, call->elapsed_ms, call->return_code);
}

struct startup_run {
    CVXShell* shell;
    int priority;
    bool stopped;
};

void run_startup(initlist_entry* entry, void* data)
{
    const shell_startup* startup = static_cast<const shell_startup*>(entry);
    startup_run* run = static_cast<startup_run*>(data);
    if (run->stopped || startup->priority != run->priority) {
        return;
    }
    int result = startup->function(run->shell);
    run->stopped = run->priority == 0 && result < 0;
}

} // namespace

initlist_entry::initlist_entry(const char* entry_name, initlist* list) : name(entry_name), next(nullptr)
{
    list->add(this);
}

void initlist::add(initlist_entry* entry)
{
    if (sorted) {
        add_sorted(entry);
        return;
    }
    entry->next = nullptr;
    (tail ? tail->next : head) = entry;
    tail = entry;
}

void initlist::add_sorted(initlist_entry* entry)
{
    initlist_entry** link = &head;
    while (*link && strcmp((*link)->name, entry->name) >= 0) {
        link = &(*link)->next;
    }
    entry->next = *link;
    *link = entry;
    if (!entry->next) {
        tail = entry;
    }
}

void initlist::remove(initlist_entry* entry)
{
    initlist_entry* previous = nullptr;
    for (initlist_entry** link = &head; *link; link = &(*link)->next) {
        if (*link == entry) {
            *link = entry->next;
            entry->next = nullptr;
            if (tail == entry) {
                tail = previous;
            }
            return;
        }
        previous = *link;
    }
}

initlist_entry* initlist::lookup(const char* name) const
{
    initlist_entry* entry = head;
    while (entry && strcmp(entry->name, name) != 0) {
        entry = entry->next;
    }
    return entry;
}

void initlist::for_each(void (*function)(initlist_entry* entry, void* data), void* data) const
{
    for (initlist_entry* entry = head; entry;) {
        initlist_entry* next = entry->next;
        function(entry, data);
        entry = next;
    }
}

InitCall::InitCall(initcall_function_t call, initcall_priority_t call_priority, const char* call_name)
    : initlist_entry(call_name, &list), priority(call_priority), function(call), return_code(0),
      elapsed_ms(0), start_ms(0), memory(0)
{
}

int InitCall::Run()
{
    long memory_before = peak_memory();
    start_ms = vx_time_ms();
    if (function) {
        return_code = function();
    } else {
        vx_printf("Error no initcall function for %p\n", static_cast<void*>(this));
        return_code = -1;
    }
    elapsed_ms = vx_time_ms_elapsed(start_ms);
    memory = static_cast<uint32_t>(peak_memory() - memory_before) * 1024;
    return return_code;
}

int InitCall::RunAll(initcall_priority_t priority)
{
    return RunAll(priority, priority);
}

int InitCall::RunAll(initcall_priority_t from, initcall_priority_t to)
{
    int result = 0;
    while (InitCall* call = next_of_priority(from, to)) {
        from = call->priority; // what a call adds below its own priority comes too late
        if (run_and_move(call) != 0) {
            vx_printf("error starting %p %s\n", static_cast<void*>(call), call->name);
            result = -1;
        }
    }
    return result;
}

int InitCall::RunNamed(const char* call_name)
{
    InitCall* call = static_cast<InitCall*>(list.lookup(call_name));
    return call ? run_and_move(call) : -1;
}

void InitCall::Dump()
{
    vx_printf("%-40s %4s %6s %5s %5s %11s\n", "initcall name", "done", "mem(k)", "start", "ms",
              "return code");
    unsigned done = 1;
    runlist.for_each(dump_entry, &done);
    done = 0;
    list.for_each(dump_entry, &done);
}

shell_startup::shell_startup(shell_startup_function_t startup_function, int startup_priority,
                             const char* startup_name)
    : initlist_entry(startup_name, &list), priority(startup_priority), function(startup_function)
{
}

void shell_startup::run_all(CVXShell* shell)
{
    for (int priority = 0; priority < STARTUP_PRIORITIES; ++priority) {
        startup_run run = {shell, priority, false};
        list.for_each(run_startup, &run);
    }
}

void vx_initcalls_dump(void)
{
    InitCall::Dump();
}

int vx_initcalls_run(initcall_priority_t from, initcall_priority_t to)
{
    return InitCall::RunAll(from, to);
}
