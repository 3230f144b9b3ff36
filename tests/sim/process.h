// A run of the program terminalsim, with its standard streams on pipes, for tests of the whole program.
#ifndef TESTS_SIM_PROCESS_H
#define TESTS_SIM_PROCESS_H

#include "support/patience.h"

#include <atomic>
#include <csignal>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

inline constexpr char Program[] = PROJECT_BINARY_DIR "/terminalsim";

inline std::string privateAddress()
{
    static std::atomic<int> count{0};
    return "unix*simtest." + std::to_string(getpid()) + "." + std::to_string(++count);
}

class Process {
public:
    // Its standard input is the test's own, or a pipe for write().
    explicit Process(const std::vector<std::string>& arguments, bool withInput = false)
    {
        int inPipe[2] = {-1, -1};
        int outPipe[2];
        int errPipe[2];
        if (withInput) {
            EXPECT_EQ(pipe2(inPipe, O_CLOEXEC), 0);
        }
        EXPECT_EQ(pipe2(outPipe, O_CLOEXEC), 0);
        EXPECT_EQ(pipe2(errPipe, O_CLOEXEC), 0);
        std::vector<char*> argv{const_cast<char*>(Program)};
        for (const std::string& argument : arguments)
            argv.push_back(const_cast<char*>(argument.c_str()));
        argv.push_back(nullptr);
        pid = fork();
        if (pid == 0) {
            if (withInput)
                dup2(inPipe[0], 0);
            dup2(outPipe[1], 1);
            dup2(errPipe[1], 2);
            execv(Program, argv.data());
            _exit(127);
        }
        if (withInput)
            close(inPipe[0]);
        close(outPipe[1]);
        close(errPipe[1]);
        in = inPipe[1];
        out = outPipe[0];
        err = errPipe[0];
    }
    ~Process()
    {
        if (pid > 0) {
            kill(pid, SIGKILL);
            waitpid(pid, nullptr, 0);
        }
        closeInput();
        close(out);
        close(err);
    }
    Process(const Process&) = delete;
    Process& operator=(const Process&) = delete;

    // To its standard input.
    void write(const std::string& text)
    {
        EXPECT_EQ(::write(in, text.data(), text.size()), static_cast<ssize_t>(text.size()));
    }
    void closeInput()
    {
        if (in >= 0)
            close(in);
        in = -1;
    }

    // The next line of standard output without its end; empty at the end of the stream or after ten seconds.
    std::string line() { return lineOf(out); }
    std::string errorLine() { return lineOf(err); }
    void signal(int number)
    {
        if (pid > 0) // else it is every process
            kill(pid, number);
    }
    // Waits for the end. Returns the exit status, or -1 for an end by a signal.
    int end()
    {
        output += drain(out);
        errors += drain(err);
        int status = 0;
        waitpid(pid, &status, 0);
        pid = -1;
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

    std::string output; // after end()
    std::string errors;

private:
    static std::string lineOf(int fd)
    {
        std::string text;
        char character;
        pollfd waiting{fd, POLLIN, 0};
        while (poll(&waiting, 1, PATIENCE_MS) == 1 && read(fd, &character, 1) == 1 && character != '\n')
            text.push_back(character);
        return text;
    }
    static std::string drain(int fd)
    {
        std::string text;
        char buffer[4096];
        ssize_t count;
        while ((count = read(fd, buffer, sizeof buffer)) > 0)
            text.append(buffer, static_cast<size_t>(count));
        return text;
    }

    pid_t pid = -1;
    int in = -1;
    int out = -1;
    int err = -1;
};

#endif
