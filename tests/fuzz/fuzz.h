// What the fuzz targets share: panics made observable, the runtime's memory after one, input cut into pieces.
//
// A target is one file with LLVMFuzzerTestOneInput(). It is linked twice: with clang's libFuzzer (preset
// fuzz), which makes inputs of its own, and with corpus_main.cpp, which runs the inputs that are kept.
//
// Panics: the linker hands all calls of vx_panic() and vx_assert_failed() from other sources to panics.cpp
// (--wrap), which throws what the program would have logged before its end. survives() catches it. A panic
// that the target has not named as a legal end aborts like any other finding.
// One thread.
#ifndef TESTS_FUZZ_FUZZ_H
#define TESTS_FUZZ_FUZZ_H

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <initializer_list>
#include <memory>
#include <string>
#include <vector>

struct fdloop_t;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

namespace fuzz {

// The text of a panic, on its way to survives().
struct Panic {
    std::string text;
};

// A finding of the target's own: tells the text and aborts, which is what libFuzzer and ctest look for.
[[noreturn]] void fail(const std::string& text);
inline void check(bool holds, const char* text)
{
    if (!holds)
        fail(text);
}

// Runs the function. True if it came back, false if it ended in a panic whose text begins with one of those.
bool survives(const std::function<void()>& function, std::initializer_list<const char*> legalEnds);

// Standard output goes nowhere from here on: targets print what a debug switch makes them print.
void silence();

// While it lives, the blocks that the runtime allocates are noted. After a panic nobody is left who would
// free them; freeRest() does, if the address sanitizer can tell which are still there (else nothing: a
// program that runs a corpus once may lose them).
class Blocks {
public:
    Blocks();
    ~Blocks();
    Blocks(const Blocks&) = delete;
    Blocks& operator=(const Blocks&) = delete;
    void freeRest();

private:
    void* (*before)(size_t count, size_t size);
};

// Frees a loop with everything on it, which the runtime has no operation for. Descriptors stay open.
void freeLoop(fdloop_t* loop);

// A copy whose end the address sanitizer watches.
inline std::unique_ptr<uint8_t[]> exactCopy(const uint8_t* data, size_t size)
{
    std::unique_ptr<uint8_t[]> copy(new uint8_t[size]);
    if (size)
        memcpy(copy.get(), data, size);
    return copy;
}

// An input from its front to its end; behind the end there are zeros.
class Input {
public:
    Input(const uint8_t* data, size_t size) : at(data), left(size) {}

    bool empty() const { return left == 0; }
    uint8_t byte()
    {
        if (left == 0)
            return 0;
        --left;
        return *at++;
    }
    uint16_t half()
    {
        const uint16_t low = byte();
        return static_cast<uint16_t>(low | byte() << 8);
    }
    uint32_t word()
    {
        const uint32_t low = half();
        return low | static_cast<uint32_t>(half()) << 16;
    }
    std::string bytes(size_t count)
    {
        const size_t n = count < left ? count : left;
        std::string piece(reinterpret_cast<const char*>(at), n);
        at += n;
        left -= n;
        return piece;
    }
    // Up to the next line feed, which is taken as well.
    std::string line()
    {
        const void* const end = left ? memchr(at, '\n', left) : nullptr;
        const std::string text =
            bytes(end ? static_cast<size_t>(static_cast<const uint8_t*>(end) - at) : left);
        byte();
        return text;
    }
    std::string rest() { return bytes(left); }

private:
    const uint8_t* at;
    size_t left;
};

} // namespace fuzz

#endif
