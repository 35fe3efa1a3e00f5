// A program that has allocation_hook.cpp in it replaces the global operator new and operator delete,
// for itself and for the libraries that it loads, and controls them through these functions.

#ifndef ORVEX_TESTS_ALLOCATION_HOOK_H
#define ORVEX_TESTS_ALLOCATION_HOOK_H

#include <cstddef>

namespace allocation {

enum class Failure {
    badAlloc,     // throws std::bad_alloc
    notStandard,  // throws an int
};

// Makes the allocation with the index fail, once. The next one has the index 0.
void failAt(std::size_t index, Failure failure);

// Lets all allocations succeed again. Returns whether one has failed since failAt.
bool stopFailing();

// Makes every allocation give other threads a chance to run first, so that races show.
void dawdle(bool enabled);

// How many allocations were made in this process so far.
std::size_t count();

// How many of them have not been released.
std::size_t live();

}  // namespace allocation

#endif
