// Counts the bytes that operator new hands out, so that tests can tell whether an
// operation allocated or freed. A sanitizer build has its own count and keeps its own
// operator new.

#include "descriptiontest.h"

#include <cstdlib>
#include <new>

#if defined(__SANITIZE_ADDRESS__)
#define ALLOCATIONCOUNT_SANITIZER 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define ALLOCATIONCOUNT_SANITIZER 1
#endif
#endif

#ifdef ALLOCATIONCOUNT_SANITIZER

// Every sanitizer runtime that tracks the heap provides this; declared here because not every
// compiler ships the header that declares it.
extern "C" std::size_t __sanitizer_get_current_allocated_bytes();

std::size_t desctest::heapInUse()
{
    return __sanitizer_get_current_allocated_bytes();
}

#else

#include <malloc.h>

namespace {

std::size_t liveBytes = 0;

void *allocate(std::size_t size)
{
    void *p = std::malloc(size ? size : 1);
    if (p)
        liveBytes += malloc_usable_size(p);
    return p;
}

void release(void *p) noexcept
{
    if (!p)
        return;
    liveBytes -= malloc_usable_size(p);
    std::free(p);
}

} // namespace

std::size_t desctest::heapInUse()
{
    return liveBytes;
}

void *operator new(std::size_t size)
{
    if (void *p = allocate(size))
        return p;
    throw std::bad_alloc();
}

void *operator new[](std::size_t size)
{
    if (void *p = allocate(size))
        return p;
    throw std::bad_alloc();
}

void *operator new(std::size_t size, const std::nothrow_t &) noexcept
{
    return allocate(size);
}

void *operator new[](std::size_t size, const std::nothrow_t &) noexcept
{
    return allocate(size);
}

void operator delete(void *p) noexcept
{
    release(p);
}

void operator delete[](void *p) noexcept
{
    release(p);
}

void operator delete(void *p, std::size_t) noexcept
{
    release(p);
}

void operator delete[](void *p, std::size_t) noexcept
{
    release(p);
}

void operator delete(void *p, const std::nothrow_t &) noexcept
{
    release(p);
}

void operator delete[](void *p, const std::nothrow_t &) noexcept
{
    release(p);
}

#endif
