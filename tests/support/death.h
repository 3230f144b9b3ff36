// Runs a function in a child process that is expected to end, and tells how it ended. For panics.
//
// The child is a fork: only the calling thread lives on in it, so the function must not rely on others.
#ifndef TESTS_SUPPORT_DEATH_H
#define TESTS_SUPPORT_DEATH_H

#include "sim/syslogtap/syslogtap.h"

#include <csignal>
#include <string>
#include <sys/wait.h>
#include <unistd.h>

struct Death {
    int signal = 0;  // the signal that ended the child, 0 if it exited
    int status = -1; // its exit status, if it exited; 111 if the function came back
    std::string
        output; // what it wrote to standard error, its log lines included, as "<PRIORITY> IDENT: TEXT"
};

template <typename Function> Death deathOf(Function function)
{
    Death death;
    int ends[2];
    if (pipe(ends) != 0) {
        return death;
    }
    const pid_t child = fork();
    if (child == 0) {
        dup2(ends[1], STDERR_FILENO);
        close(ends[0]);
        close(ends[1]);
        // Qt Test's own handler would call a debugger, and wait for a thread that only the parent has.
        for (int fatal : {SIGABRT, SIGBUS, SIGFPE, SIGILL, SIGSEGV, SIGTERM}) {
            signal(fatal, SIG_DFL);
        }
        syslogtap_echo(1);
        function();
        _exit(111);
    }
    close(ends[1]);
    char buffer[4096];
    ssize_t size = 0;
    while ((size = read(ends[0], buffer, sizeof(buffer))) > 0) {
        death.output.append(buffer, static_cast<size_t>(size));
    }
    close(ends[0]);
    int status = 0;
    waitpid(child, &status, 0);
    if (WIFSIGNALED(status)) {
        death.signal = WTERMSIG(status);
    } else {
        death.status = WEXITSTATUS(status);
    }
    return death;
}

#endif
