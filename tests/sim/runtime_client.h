// A client made of the runtime's bus and configuration client, in a process of its own: it may end in a
// panic.
#ifndef TESTS_SIM_RUNTIME_CLIENT_H
#define TESTS_SIM_RUNTIME_CLIENT_H

#include "runtime/cbus.h"
#include "runtime/config_client_api.h"
#include "runtime/fdloop.h"
#include "sim/syslogtap/syslogtap.h"

#include "support/patience.h"

#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <functional>
#include <poll.h>
#include <string>
#include <sys/wait.h>
#include <unistd.h>

class RuntimeClient {
public:
    // What the client's function works with, in its process.
    class Inside {
    public:
        Inside(int out, int in) : out(out), in(in) {}
        // Both connections are one, as it is without a second.
        bool connect()
        {
            loop = fdloop_init();
            connection = cbus_conn_create(loop, "test");
            if (connection)
                config_init_cbus(connection, nullptr);
            return connection != nullptr;
        }
        void subscribe(const char* key) { config_change_register(key, onChange, this); }
        // Tells the test that it is ready, and waits until it may go on.
        void ready()
        {
            char byte = 0;
            if (write(out, &byte, 1) != 1 || read(in, &byte, 1) != 1)
                _exit(99);
        }
        // One turn of the loop; false if there is nothing left to wait for.
        bool turn() { return fdloop_run(loop) == 0; }
        // Until a key has changed (true), or the connection has gone.
        bool waitForChange(const std::string& key)
        {
            awaited = key;
            while (!isThere && connection->fd >= 0 && turn()) {
            }
            return isThere;
        }

        cbus_conn_t* connection = nullptr;

    private:
        static void onChange(unsigned count, const config_data_t* records, void* data,
                             const config_change_row_t*)
        {
            Inside& inside = *static_cast<Inside*>(data);
            for (unsigned at = 0; at < count; at++)
                inside.isThere = inside.isThere || inside.awaited == records[at].name;
        }

        fdloop_t* loop = nullptr;
        int out;
        int in;
        std::string awaited;
        bool isThere = false;
    };

    static constexpr int NotConnected = 98;

    // Runs the function in a process whose exit status its result is. Returns when it is ready, or has ended.
    RuntimeClient(const std::string& address, const std::function<int(Inside&)>& function)
    {
        int toTest[2];
        int toClient[2];
        int errorPipe[2];
        if (pipe2(toTest, O_CLOEXEC) != 0 || pipe2(toClient, O_CLOEXEC) != 0 ||
            pipe2(errorPipe, O_CLOEXEC) != 0)
            abort();
        pid = fork();
        if (pid == 0) {
            dup2(errorPipe[1], 2);
            close(toTest[0]); // so that the ends of both are noticed
            close(toClient[1]);
            close(errorPipe[0]);
            signal(SIGABRT, SIG_DFL);
            setenv("CBUS_ADDR", address.c_str(), 1);
            syslogtap_echo(1);
            Inside inside(toTest[1], toClient[0]);
            _exit(inside.connect() ? function(inside) : NotConnected);
        }
        close(toTest[1]);
        close(toClient[0]);
        close(errorPipe[1]);
        fromClient = toTest[0];
        goOn = toClient[1];
        errorStream = errorPipe[0];
        char byte;
        while (read(fromClient, &byte, 1) < 0 && errno == EINTR) {
        }
    }
    ~RuntimeClient()
    {
        status();
        close(fromClient);
        close(goOn);
        close(errorStream);
    }
    RuntimeClient(const RuntimeClient&) = delete;
    RuntimeClient& operator=(const RuntimeClient&) = delete;

    void go()
    {
        char byte = 0;
        signal(SIGPIPE, SIG_IGN); // it may have ended
        if (write(goOn, &byte, 1) != 1)
            return;
    }
    // Waits for the end: the exit status, 128 + the signal's number, or -1 if it does not end.
    int status(int timeout = PATIENCE_MS)
    {
        if (pid <= 0)
            return result;
        // The stream of errors ends with the process.
        char buffer[4096];
        pollfd waiting{errorStream, POLLIN, 0};
        ssize_t count = 1;
        while (count > 0) {
            if (poll(&waiting, 1, timeout) != 1) {
                kill(pid, SIGKILL);
                waitpid(pid, nullptr, 0);
                pid = -1;
                return result = -1;
            }
            count = read(errorStream, buffer, sizeof buffer);
            errorText.append(buffer, count > 0 ? static_cast<size_t>(count) : 0);
        }
        int ended = 0;
        waitpid(pid, &ended, 0);
        pid = -1;
        return result = WIFEXITED(ended) ? WEXITSTATUS(ended) : 128 + WTERMSIG(ended);
    }
    // What it logged, once it has ended.
    const std::string& errors() const { return errorText; }

private:
    pid_t pid = -1;
    int fromClient = -1;
    int goOn = -1;
    int errorStream = -1;
    int result = -1;
    std::string errorText;
};

#endif
