// The display's log: bytes of the file into lines.
#include "sim/display/log_follower.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/inotify.h>
#include <sys/stat.h>
#include <unistd.h>

namespace sim {

namespace {

constexpr int PartsInOneTurn = 16;
const char OutputMark[] = "<6> output: ";

size_t digitsFrom(const std::string& text, size_t at)
{
    size_t end = at;
    while (end < text.size() && text[end] >= '0' && text[end] <= '9')
        end++;
    return end;
}

// Bytes above ASCII stay: they are letters of some language.
std::string printable(std::string text)
{
    std::replace_if(
        text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < ' ' || c == 127; },
        '?');
    return text;
}

} // namespace

// <17.7> gui[4711]: text
std::string readableLogLine(const std::string& line)
{
    size_t dot = digitsFrom(line, 1);
    size_t close = digitsFrom(line, dot + 1);
    size_t bracket = line.find('[', close);
    size_t end = bracket == std::string::npos ? bracket : line.find("]: ", bracket);
    if (line.compare(0, 1, "<") != 0 || line.compare(dot, 1, ".") != 0 || line.compare(close, 2, "> ") != 0 ||
        end == std::string::npos)
        return OutputMark + printable(line);
    std::string text = line.substr(end + 3);
    while (text.size() >= 2 && text.compare(text.size() - 2, 2, "\\n") == 0)
        text.resize(text.size() - 2);
    return printable("<" + line.substr(dot + 1, close - dot - 1) + "> " +
                     line.substr(close + 2, bracket - close - 2) + ": " + text);
}

int logPriority(const std::string& readable)
{
    return readable.size() > 1 && readable[0] == '<' ? readable[1] - '0' : 7;
}

bool isOutputLine(const std::string& readable)
{
    return readable.compare(0, sizeof OutputMark - 1, OutputMark) == 0;
}

LogFollower::LogFollower(fdloop_t* loop, std::function<void(const std::string&)> heard)
    : heard(std::move(heard)), watch(loop), again(loop)
{
}

LogFollower::~LogFollower()
{
    if (file >= 0)
        close(file);
}

bool LogFollower::start(const std::string& name, std::string* error)
{
    int opened = open(name.c_str(), O_RDWR | O_CREAT | O_TRUNC | O_CLOEXEC | O_NONBLOCK, 0600);
    if (opened < 0) {
        *error = "cannot write " + name + ": " + strerror(errno);
        return false;
    }
    if (file >= 0)
        close(file);
    file = opened;
    position = 0;
    return watch.start(
        name, IN_MODIFY, [this](const std::string&) { read(); }, error);
}

void LogFollower::read()
{
    for (int part = 0; part < PartsInOneTurn; part++) {
        if (!readPart())
            return;
    }
    again.once(1, [this] { read(); });
}

// To what is its end now: who still writes does not keep us here.
void LogFollower::readToTheEnd()
{
    struct stat now;
    int64_t end = file >= 0 && fstat(file, &now) == 0 ? now.st_size : 0;
    while (position < end && readPart()) {
    }
    if (!line.empty())
        endLine();
}

// True if there may be more. The file may have been emptied by somebody: it begins anew then.
bool LogFollower::readPart()
{
    struct stat now;
    if (file < 0 || fstat(file, &now) != 0)
        return false;
    if (now.st_size < position)
        position = 0;
    char bytes[65536];
    ssize_t count = pread(file, bytes, sizeof bytes, position);
    if (count <= 0)
        return false;
    position += count;
    take(bytes, static_cast<size_t>(count));
    return true;
}

void LogFollower::take(const char* bytes, size_t count)
{
    for (const char* end = bytes + count; bytes < end;) {
        const char* feed = std::find(bytes, end, '\n');
        size_t wanted = std::min(static_cast<size_t>(feed - bytes), LongestLine - line.size());
        line.append(bytes, wanted);
        if (feed == end)
            return;
        endLine();
        bytes = feed + 1;
    }
}

void LogFollower::endLine()
{
    std::string readable = readableLogLine(line);
    line.clear();
    total++;
    lines.push_back(readable);
    if (lines.size() > Kept)
        lines.pop_front();
    heard(readable);
}

std::vector<std::string> LogFollower::newest(size_t most, size_t skipped) const
{
    size_t fresh = total > skipped ? total - skipped : 0;
    size_t wanted = std::min({most, fresh, lines.size()});
    return {lines.end() - static_cast<std::ptrdiff_t>(wanted), lines.end()};
}

} // namespace sim
