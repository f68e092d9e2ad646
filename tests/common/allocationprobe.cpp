#include "allocationprobe.h"

#include <cstdlib>

#if defined(__SANITIZE_ADDRESS__)
#define ALLOCATIONPROBE_SANITIZER 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define ALLOCATIONPROBE_SANITIZER 1
#endif
#endif

namespace {

bool watching = false;
std::size_t largest = 0;
std::size_t total = 0;

[[maybe_unused]] void note(std::size_t size)
{
    if (!watching)
        return;
    if (size > largest)
        largest = size;
    total += size;
}

} // namespace

telortest::AllocationProbe::AllocationProbe()
{
    largest = 0;
    total = 0;
    watching = true;
}

telortest::AllocationProbe::~AllocationProbe()
{
    watching = false;
}

std::size_t telortest::AllocationProbe::largestRequest() const
{
    return largest;
}

std::size_t telortest::AllocationProbe::totalRequested() const
{
    return total;
}

#ifdef ALLOCATIONPROBE_SANITIZER

bool telortest::AllocationProbe::available()
{
    return false;
}

#else

bool telortest::AllocationProbe::available()
{
    return true;
}

// The C library's own heap functions, behind the public names that this program takes
// over so that every request, also those from inside Qt, passes through note().
extern "C" void *__libc_malloc(std::size_t size);
extern "C" void *__libc_realloc(void *pointer, std::size_t size);
extern "C" void *__libc_calloc(std::size_t count, std::size_t size);

extern "C" void *malloc(std::size_t size)
{
    note(size);
    return __libc_malloc(size);
}

extern "C" void *realloc(void *pointer, std::size_t size)
{
    note(size);
    return __libc_realloc(pointer, size);
}

extern "C" void *calloc(std::size_t count, std::size_t size)
{
    note(count * size);
    return __libc_calloc(count, size);
}

#endif
