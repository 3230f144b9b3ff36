// Catches what the process writes to descriptor 1 while it lives: the standard stream and bare writes alike.
//
// One at a time. Nothing may be left in the stream's buffer when it is made.
#ifndef TESTS_SUPPORT_OUTPUTCAPTURE_H
#define TESTS_SUPPORT_OUTPUTCAPTURE_H

#include <cstdio>
#include <string>
#include <unistd.h>

class OutputCapture {
public:
    OutputCapture() : file(tmpfile()), saved(dup(STDOUT_FILENO))
    {
        fflush(stdout);
        dup2(fileno(file), STDOUT_FILENO);
    }
    ~OutputCapture() { stop(); }
    OutputCapture(const OutputCapture&) = delete;
    OutputCapture& operator=(const OutputCapture&) = delete;

    // What has reached the descriptor so far; what is still in the stream's buffer isn't part of it.
    std::string text()
    {
        std::string all;
        char block[4096];
        ssize_t count;
        while ((count = pread(fileno(file), block, sizeof(block), static_cast<off_t>(all.size()))) > 0) {
            all.append(block, static_cast<size_t>(count));
        }
        return all;
    }

    // Everything that was caught; from here on output goes where it went before.
    std::string stop()
    {
        if (saved < 0) {
            return std::string();
        }
        std::string all = text();
        dup2(saved, STDOUT_FILENO);
        close(saved);
        fclose(file);
        saved = -1;
        return all;
    }

private:
    FILE* file;
    int saved;
};

#endif
