// A shell for a test whose output is kept as text instead of being printed.
#ifndef TESTS_SUPPORT_TESTSHELL_H
#define TESTS_SUPPORT_TESTSHELL_H

#include "runtime/vx_cshell.h"

#include <string>
#include <utility>

class TestShell {
public:
    TestShell() : shell(vx_cshell_alloc("test")) { vx_cshell_set_output(shell, take, this); }
    ~TestShell() { vx_cshell_free(shell); }
    TestShell(const TestShell&) = delete;
    TestShell& operator=(const TestShell&) = delete;

    // Runs a line and returns what it printed; its result goes to lastResult.
    std::string run(const std::string& line)
    {
        lastResult = vx_cshell_run_command_line(shell, line.c_str());
        return printed();
    }
    // Types the bytes and returns what the terminal got; the result goes to lastResult.
    std::string type(const std::string& bytes)
    {
        lastResult = vx_cshell_process_buf(shell, bytes.data(), bytes.size());
        return printed();
    }
    // What has been printed since the last look.
    std::string printed() { return std::exchange(output, std::string()); }

    cshell* shell;
    std::string output;
    int lastResult = 0;

private:
    static void take(void* data, const char* text) { static_cast<TestShell*>(data)->output += text; }
};

#endif
