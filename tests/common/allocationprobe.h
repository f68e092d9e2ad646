#ifndef ALLOCATIONPROBE_H
#define ALLOCATIONPROBE_H

#include <cstddef>

// Watches the heap while a probe lives: the largest single request and the sum of all
// requests made through malloc, realloc and calloc. Qt's containers and strings, and
// operator new, all take their memory there, so a reader that reserves room for a
// received count shows up at once. A sanitizer build keeps the heap functions for
// itself, and the probe then reports that it cannot watch.
namespace telortest {

class AllocationProbe
{
public:
    AllocationProbe();
    ~AllocationProbe();
    AllocationProbe(const AllocationProbe &) = delete;
    AllocationProbe &operator=(const AllocationProbe &) = delete;

    /** False in a sanitizer build, where the heap functions are not ours to watch. */
    static bool available();
    std::size_t largestRequest() const;
    std::size_t totalRequested() const;
};

} // namespace telortest

#endif // ALLOCATIONPROBE_H
