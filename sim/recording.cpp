// Writing a recording and reading it back. Giving it again is in replay.cpp.
#include "sim/recording.h"

#include "sim/vbuf.h"

#include <cerrno>
#include <chrono>
#include <cstring>
#include <ctime>
#include <fcntl.h>
#include <fstream>
#include <sys/stat.h>
#include <unistd.h>

namespace sim {

static const char FirstLine[] = "# terminalsim recording 1";
static const char ValuesHeading[] = "[values]";
static const char MessagesHeading[] = "[messages]";
static const char EndWord[] = "end";
static constexpr uint32_t FlushInterval = 1000; // ms
static const char RecordsWord[] = "records ";

static uint64_t now()
{
    auto time = std::chrono::steady_clock::now().time_since_epoch();
    return static_cast<uint64_t>(std::chrono::duration_cast<std::chrono::milliseconds>(time).count());
}

// --- Values: "KEY = int 5", or in hex what has no such form

static std::string encodeWrite(const Write& write)
{
    VbufWriter record;
    record.add(static_cast<uint32_t>(write.value.type), write.key, write.value.bytes);
    std::string text = describeData(CBUS_TYPE_SIGNAL, "config.change.", record.bytes(), true);
    bool isRecord = text.compare(0, strlen(RecordsWord), RecordsWord) == 0;
    if (isRecord && text.find_first_of("#[", strlen(RecordsWord)) != strlen(RecordsWord))
        return text.substr(strlen(RecordsWord));
    return describeData(0, {}, record.bytes(), true);
}

static bool decodeWrite(const std::string& line, Recording* recording, std::string* error)
{
    std::string data;
    bool isHex = line.compare(0, 4, "hex ") == 0 && line.compare(0, 6, "hex = ") != 0;
    if (!decodeData(isHex ? line : RecordsWord + line, &data, error))
        return false;
    if (readRecords(data, &recording->values))
        return true;
    *error = "these bytes are no record";
    return false;
}

// --- Writing

Recorder::Recorder(Terminal& terminal) : terminal(terminal) {}

Recorder::~Recorder()
{
    std::string ignored;
    end(&ignored);
}

// Whether nothing is lost if the file is written over.
static bool mayBeReplaced(int fd)
{
    char begin[sizeof FirstLine - 1];
    ssize_t length = pread(fd, begin, sizeof begin, 0);
    return length == 0 ||
           (length == static_cast<ssize_t>(sizeof begin) && memcmp(begin, FirstLine, sizeof begin) == 0);
}

static FILE* create(const std::string& fileName, std::string* error)
{
    int fd = open(fileName.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NONBLOCK, 0600);
    struct stat facts;
    if (fd < 0 || fstat(fd, &facts) != 0) {
        *error = fileName + ": " + strerror(errno);
    } else if (!S_ISREG(facts.st_mode)) {
        *error = fileName + ": not a file";
    } else if (!mayBeReplaced(fd)) {
        *error = fileName + ": there is a file that is no recording";
    } else if (ftruncate(fd, 0) != 0) {
        *error = fileName + ": " + strerror(errno);
    } else if (FILE* file = fdopen(fd, "w")) {
        return file;
    }
    if (fd >= 0)
        close(fd);
    return nullptr;
}

bool Recorder::begin(const std::string& fileName, std::string* error)
{
    if (file) {
        *error = "recording to " + name + " already";
        return false;
    }
    if (!terminal.loop()) {
        *error = "the terminal is stopped";
        return false;
    }
    file = create(fileName, error);
    if (!file)
        return false;
    name = fileName;
    begun = now();
    size = count = 0;
    full = false;

    write(FirstLine);
    char date[64];
    time_t seconds = time(nullptr);
    struct tm local;
    strftime(date, sizeof date, "# %Y-%m-%d %H:%M:%S", localtime_r(&seconds, &local));
    write(date);
    write(ValuesHeading);
    for (const auto& [key, value] : terminal.list(""))
        write(encodeWrite({key, value}));
    write(MessagesHeading);

    listener = terminal.listenToTraffic([this](const Traffic& traffic) { onTraffic(traffic); });
    flushTimer = std::make_unique<Timer>(terminal.loop());
    flushTimer->every(FlushInterval, [this] {
        if (fflush(file) != 0 || full)
            endInVain();
    });
    return true;
}

void Recorder::write(const std::string& line)
{
    full = full || size + line.size() >= MaxSize;
    if (full)
        return;
    fputs(line.c_str(), file);
    fputc('\n', file);
    size += line.size() + 1;
}

static std::string stamp(uint64_t begun)
{
    return std::to_string(now() - begun) + " ";
}

void Recorder::onTraffic(const Traffic& traffic)
{
    write(stamp(begun) + encodeTraffic(traffic));
    count++;
}

// Noticed while nobody waits for an answer.
void Recorder::endInVain()
{
    std::string error;
    if (end(&error))
        error = name + ": it has become too long";
    terminal.tell("recording ended: " + error);
}

bool Recorder::end(std::string* error)
{
    if (!file)
        return true;
    terminal.forget(listener);
    flushTimer->stop(); // not more: it may be its own call that comes here
    write(stamp(begun) + EndWord);
    errno = 0;
    bool good = ferror(file) == 0;
    good = fclose(file) == 0 && good;
    file = nullptr;
    if (!good)
        *error = name + ": not all could be written" + (errno ? std::string(": ") + strerror(errno) : "");
    return good;
}

// --- Reading

// Which part of the file a line stands in.
enum class Part { Head, Values, Messages, End };

static bool parseTime(std::string* line, uint32_t* time, std::string* error)
{
    size_t blank = line->find(' ');
    std::string word = line->substr(0, blank);
    char* end = nullptr;
    errno = 0;
    unsigned long read = strtoul(word.c_str(), &end, 10);
    if (word.empty() || word.find_first_not_of("0123456789") != std::string::npos || errno != 0 ||
        read > INT32_MAX || blank == std::string::npos) {
        *error = "a line begins with its milliseconds, not with \"" + word + "\"";
        return false;
    }
    *time = static_cast<uint32_t>(read);
    line->erase(0, blank + 1);
    return true;
}

static bool parseMessage(std::string line, Part* part, Recording* recording, std::string* error)
{
    Recording::Event event;
    if (!parseTime(&line, &event.time, error))
        return false;
    if (event.time < recording->end) {
        *error = "earlier than the line before";
        return false;
    }
    recording->end = event.time;
    if (line == EndWord) {
        *part = Part::End;
        return true;
    }
    if (!decodeTraffic(line, &event.message, error))
        return false;
    recording->events.push_back(std::move(event));
    return true;
}

static bool parseLine(const std::string& line, Part* part, Recording* recording, std::string* error)
{
    if (line == ValuesHeading || line == MessagesHeading) {
        Part next = line == ValuesHeading ? Part::Values : Part::Messages;
        if (*part >= next) {
            *error = line + " stands in the wrong place";
            return false;
        }
        *part = next;
        return true;
    }
    switch (*part) {
    case Part::Values:
        return decodeWrite(line, recording, error);
    case Part::Messages:
        return parseMessage(line, part, recording, error);
    case Part::End:
        *error = "behind the end";
        return false;
    case Part::Head:
        break;
    }
    *error = std::string("before ") + ValuesHeading + " or " + MessagesHeading;
    return false;
}

bool loadRecording(const std::string& fileName, Recording* recording, std::string* error)
{
    struct stat facts;
    if (stat(fileName.c_str(), &facts) == 0 && !S_ISREG(facts.st_mode)) {
        *error = fileName + ": not a file"; // a pipe would be waited for
        return false;
    }
    std::ifstream in(fileName);
    if (!in) {
        *error = fileName + ": " + strerror(errno);
        return false;
    }
    Recording read;
    Part part = Part::Head;
    std::string line;
    std::string problem;
    // A last line that lacks its end was being written when the recording was cut off.
    for (int number = 1; std::getline(in, line) && !in.eof(); number++) {
        if (number == 1 && line != FirstLine)
            problem = "not a recording of terminalsim";
        else if (!line.empty() && line[0] != '#')
            parseLine(line, &part, &read, &problem);
        if (!problem.empty()) {
            *error = fileName + ":" + std::to_string(number) + ": " + problem;
            return false;
        }
    }
    if (part < Part::Messages) {
        *error = fileName + ": not a recording of terminalsim: it has no " + MessagesHeading;
        return false;
    }
    *recording = std::move(read);
    return true;
}

} // namespace sim
