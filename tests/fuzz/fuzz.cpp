// See fuzz.h.
#include "fuzz/fuzz.h"

#include "runtime/fdloop_impl.h"
#include "runtime/util.h"

#if defined(__SANITIZE_ADDRESS__)
#define FUZZ_ADDRESS_SANITIZER
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define FUZZ_ADDRESS_SANITIZER
#endif
#endif
#ifdef FUZZ_ADDRESS_SANITIZER
#include <sanitizer/allocator_interface.h>
#endif

namespace {

std::vector<void*>* noted = nullptr;

void* notingCalloc(size_t count, size_t size)
{
    void* const block = calloc(count, size);
    if (noted && block)
        noted->push_back(block);
    return block;
}

template <typename Node> void freeList(Node* node)
{
    while (node) {
        Node* const next = node->next;
        free(node);
        node = next;
    }
}

} // namespace

namespace fuzz {

void fail(const std::string& text)
{
    fprintf(stderr, "FAILED: %s\n", text.c_str());
    abort();
}

bool survives(const std::function<void()>& function, std::initializer_list<const char*> legalEnds)
{
    try {
        function();
        return true;
    } catch (const Panic& panic) {
        for (const char* end : legalEnds)
            if (panic.text.compare(0, strlen(end), end) == 0)
                return false;
        fail("no legal end: " + panic.text);
    }
}

void silence()
{
    if (!freopen("/dev/null", "w", stdout))
        fail("no /dev/null");
}

Blocks::Blocks() : before(vx_calloc)
{
    noted = new std::vector<void*>;
    vx_calloc = notingCalloc;
}

Blocks::~Blocks()
{
    vx_calloc = before;
    delete noted;
    noted = nullptr;
}

void Blocks::freeRest()
{
#ifdef FUZZ_ADDRESS_SANITIZER
    for (void* block : *noted)
        if (__sanitizer_get_ownership(block))
            free(block);
#endif
    noted->clear();
}

void freeLoop(fdloop_t* loop)
{
    freeList(loop->fd_head);
    freeList(loop->timers);
    freeList(loop->new_timers);
    freeList(loop->idler_head);
    free(loop);
}

} // namespace fuzz
