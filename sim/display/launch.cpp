// fork and exec. Everything that needs memory is made before the fork; a pipe that closes with the exec
// brings back why it failed.
#include "sim/display/launch.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <linux/close_range.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

namespace sim {

namespace {

std::vector<std::string> environmentWith(const std::map<std::string, std::string>& changes)
{
    std::vector<std::string> all;
    for (char** entry = environ; *entry; entry++) {
        std::string text = *entry;
        if (changes.count(text.substr(0, text.find('='))) == 0)
            all.push_back(text);
    }
    for (const auto& [name, value] : changes) {
        if (!value.empty())
            all.push_back(name + "=" + value);
    }
    return all;
}

std::vector<char*> pointersTo(std::vector<std::string>& texts)
{
    std::vector<char*> pointers;
    for (std::string& text : texts)
        pointers.push_back(text.data());
    pointers.push_back(nullptr);
    return pointers;
}

void closeOthers()
{
    constexpr int MostDescriptors = 1024; // on systems without the call below
    if (syscall(SYS_close_range, 3U, ~0U, CLOSE_RANGE_CLOEXEC) == 0)
        return;
    for (int fd = 3; fd < MostDescriptors; fd++)
        fcntl(fd, F_SETFD, FD_CLOEXEC);
}

// In the child, up to the exec. Returns if something failed, with errno.
void become(char** command, char** environment, const char* output, const sigset_t* mask, pid_t parent)
{
    if (prctl(PR_SET_PDEATHSIG, SIGKILL) != 0)
        return;
    if (getppid() != parent)
        _exit(1); // it has gone already
    setpgid(0, 0);
    int in = open("/dev/null", O_RDONLY);
    int out = open(output, O_WRONLY | O_APPEND | O_CREAT, 0600);
    if (in < 0 || out < 0 || dup2(in, 0) < 0 || dup2(out, 1) < 0 || dup2(out, 2) < 0)
        return;
    closeOthers();
    for (int signo = 1; signo < NSIG; signo++)
        signal(signo, SIG_DFL);
    sigprocmask(SIG_SETMASK, mask, nullptr);
    execvpe(command[0], command, environment);
}

} // namespace

pid_t launch(const Launch& launch, std::string* error)
{
    std::vector<std::string> command = launch.command;
    std::vector<std::string> environment = environmentWith(launch.environment);
    std::vector<char*> argv = pointersTo(command);
    std::vector<char*> envp = pointersTo(environment);
    const char* output = launch.output.empty() ? "/dev/null" : launch.output.c_str();
    pid_t parent = getpid();
    int report[2];
    if (pipe2(report, O_CLOEXEC) != 0) {
        *error = std::string("no pipe: ") + strerror(errno);
        return -1;
    }
    pid_t child = fork();
    if (child == 0) {
        become(argv.data(), envp.data(), output, &launch.signalMask, parent);
        int why = errno;
        ssize_t told = write(report[1], &why, sizeof why);
        _exit(told == sizeof why ? 127 : 126);
    }
    int why = child < 0 ? errno : 0;
    close(report[1]);
    if (child > 0 && read(report[0], &why, sizeof why) == sizeof why)
        waitpid(child, nullptr, 0);
    close(report[0]);
    if (why == 0)
        return child;
    *error = "cannot run " + launch.command[0] + ": " + strerror(why);
    return -1;
}

} // namespace sim
