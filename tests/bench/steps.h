// Counts the instructions that a piece of code executes in user space, by stepping through it in a child.
//
// Exact, the same in every run, and without the hardware counters that virtual machines don't have; a system
// call counts as one instruction, and so does a repeated string instruction. Slow: about a microsecond for
// each.
#ifndef TESTS_BENCH_STEPS_H
#define TESTS_BENCH_STEPS_H

#include <csignal>
#include <functional>
#include <sys/ptrace.h>
#include <sys/uio.h>
#include <sys/user.h>
#include <sys/wait.h>
#include <unistd.h>

namespace steps {

inline unsigned long instructionPointer(pid_t child)
{
    const long GENERAL_REGISTERS = 1; // NT_PRSTATUS of <elf.h>, which clashes with libev's names
    struct user_regs_struct registers = {};
    struct iovec area = {&registers, sizeof(registers)};
    ptrace(PTRACE_GETREGSET, child, reinterpret_cast<void*>(GENERAL_REGISTERS), &area);
#if defined(__x86_64__)
    return registers.rip;
#elif defined(__i386__)
    return static_cast<unsigned long>(registers.eip);
#elif defined(__aarch64__)
    return registers.pc;
#else
#error "where does this machine keep its instruction pointer?"
#endif
}

// Instructions from the start of the function to its end, with what it takes to call it and to stop. -1 if
// the machine doesn't let us look.
inline long countOnce(const std::function<void()>& function)
{
    pid_t child = fork();
    if (child == 0) {
        if (ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) < 0) {
            _exit(1);
        }
        raise(SIGSTOP);
        function();
        kill(getpid(), SIGSTOP);
        _exit(0);
    }
    int status;
    if (waitpid(child, &status, 0) < 0 || !WIFSTOPPED(status)) {
        return -1;
    }
    long count = 0;
    unsigned long before = 0;
    for (;;) {
        if (ptrace(PTRACE_SINGLESTEP, child, nullptr, nullptr) < 0 || waitpid(child, &status, 0) < 0 ||
            !WIFSTOPPED(status)) {
            return -1;
        }
        if (WSTOPSIG(status) != SIGTRAP) {
            break; // the stop at the end
        }
        unsigned long now = instructionPointer(child);
        count += now != before; // a repeated instruction traps at each round
        before = now;
    }
    kill(child, SIGKILL);
    waitpid(child, &status, 0);
    return count;
}

// Instructions of one turn: the difference between few and many turns, so that what surrounds them falls out.
inline double perTurn(const std::function<void(int)>& turns, int few = 8, int many = 72)
{
    const long ofFew = countOnce([&] { turns(few); });
    const long ofMany = countOnce([&] { turns(many); });
    return ofFew < 0 || ofMany < 0 ? -1.0 : static_cast<double>(ofMany - ofFew) / (many - few);
}

} // namespace steps

#endif
