// Bytes in, lines out: what has come from a socket or a pipe and has not been run yet. A line that is too
// long is told once, and skipped to its end.
//
// A plain object; any thread.
#ifndef SIM_CONSOLE_LINE_BUFFER_H
#define SIM_CONSOLE_LINE_BUFFER_H

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>

namespace sim {

class LineBuffer {
public:
    static constexpr size_t MaxLine = 64 * 1024; // bytes of a line without its line feed

    enum class Next { Nothing, Line, TooLong };

    void append(std::string_view bytes) { buffer.append(bytes); }
    // No more bytes will come: what has no line feed is a line as well.
    void end() { ended = true; }

    // Takes the next line, without its line feed.
    Next take(std::string* line)
    {
        if (skipping && !skip())
            return Next::Nothing;
        size_t feed = buffer.find('\n', from);
        size_t length = std::min(feed, buffer.size()) - from;
        bool whole = feed != std::string::npos || (ended && length > 0);
        if (length > MaxLine) {
            skipping = true;
            return Next::TooLong;
        }
        if (!whole) {
            compact();
            return Next::Nothing;
        }
        line->assign(buffer, from, length);
        from = std::min(from + length + 1, buffer.size());
        return Next::Line;
    }

    // So much is left that it takes no more until a line has been taken.
    bool isFull() const { return buffer.size() - from > MaxLine; }
    bool isEmpty() const { return from == buffer.size(); }

private:
    // True once the end of the line that was too long has come.
    bool skip()
    {
        size_t feed = buffer.find('\n', from);
        skipping = feed == std::string::npos;
        from = skipping ? buffer.size() : feed + 1;
        compact();
        return !skipping;
    }
    void compact()
    {
        buffer.erase(0, from);
        from = 0;
    }

    std::string buffer;
    size_t from = 0; // what stands before has been taken
    bool ended = false;
    bool skipping = false;
};

} // namespace sim

#endif
