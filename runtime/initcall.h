// Registries of static objects: functions that register themselves and are run at start-up by priority
// (InitCall), and those that are run for a new shell (shell_startup). Both are entries of an initlist.
//
// Entries are added before main, by constructors of static objects, and live to the end of the process. All
// else belongs to one thread, the one that starts the process up; nothing is locked.
#ifndef RUNTIME_INITCALL_H
#define RUNTIME_INITCALL_H

#include <stdint.h>

class CVXShell;
class initlist;

// An entry of a list.
class initlist_entry {
public:
    // Adds itself to the list. The name is kept as a pointer and must live on.
    initlist_entry(const char* entry_name, initlist* list);
    initlist_entry(const initlist_entry&) = delete;
    initlist_entry& operator=(const initlist_entry&) = delete;

    const char* name;
    initlist_entry* next;
};

// A singly linked list. Built without code, so that constructors of other sources find it ready.
class initlist {
public:
    explicit constexpr initlist(bool is_sorted) : head(nullptr), tail(nullptr), sorted(is_sorted) {}
    initlist(const initlist&) = delete;
    initlist& operator=(const initlist&) = delete;

    // Appends the entry, or sorts it in if the list is sorted.
    void add(initlist_entry* entry);

    // Inserts it before the first entry whose name is lower: names run from high to low, equal ones in the
    // order of adding.
    void add_sorted(initlist_entry* entry);

    // Takes it off the list; nothing happens if it isn't in it.
    void remove(initlist_entry* entry);

    // The first entry of exactly that name, or null.
    initlist_entry* lookup(const char* name) const;

    // Calls the function with each entry in turn; it may remove that entry.
    void for_each(void (*function)(initlist_entry* entry, void* data), void* data) const;

    initlist_entry* head;
    initlist_entry* tail;
    bool sorted;
};

// Any number; low ones run first.
typedef int initcall_priority_t;

// Returns 0 for success.
typedef int (*initcall_function_t)(void);

// A function to be run once at start-up, with the measurements of its run.
class InitCall : public initlist_entry {
public:
    // Adds itself to InitCall::list.
    InitCall(initcall_function_t call, initcall_priority_t call_priority, const char* call_name);

    // Calls the function and measures it. Returns its result, or -1, with a message, if there is no function.
    int Run();

    // Runs those of the priority, in the order of the list, and moves them to InitCall::runlist. A non-zero
    // result gives a message. Returns 0 if all results were 0, else -1.
    static int RunAll(initcall_priority_t priority);

    // The same for each priority from the first to the last.
    static int RunAll(initcall_priority_t from, initcall_priority_t to);

    // Runs the entry of that name, if it hasn't run yet, and moves it. Returns its result, or -1 if there is
    // none.
    static int RunNamed(const char* call_name);

    // Prints the table of all entries: first those that have run.
    static void Dump();

    static initlist list;    // not yet run, in the order of registration; one that runs is in neither
    static initlist runlist; // have run, in the order in which they ran

    initcall_priority_t priority;
    initcall_function_t function;
    int return_code;
    uint32_t elapsed_ms;
    uint32_t start_ms; // on the clock of vx_time_ms
    uint32_t memory;   // bytes by which the peak of the process's memory grew
};

// Returns a negative number for failure.
typedef int (*shell_startup_function_t)(CVXShell* shell);

// A function to be run for a new shell.
class shell_startup : public initlist_entry {
public:
    // Adds itself to shell_startup::list. The priority is 0 to 3; entries of others are never run.
    shell_startup(shell_startup_function_t startup_function, int startup_priority, const char* startup_name);

    // Runs the entries of priority 0, up to the first negative result, then all of 1, 2 and 3.
    static void run_all(CVXShell* shell);

    static initlist list;

    int priority;
    shell_startup_function_t function;
};

// InitCall::Dump, and InitCall::RunAll with two priorities.
void vx_initcalls_dump(void);
int vx_initcalls_run(initcall_priority_t from, initcall_priority_t to);

#endif
