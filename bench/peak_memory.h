// How much memory a piece of work needs. A program that links this gets its own operator new.

#ifndef ORVEX_BENCH_PEAK_MEMORY_H
#define ORVEX_BENCH_PEAK_MEMORY_H

#include <cstdint>

// Starts to count what operator new hands out.
void startCountingMemory();

// Ends it. The most bytes that were in use at one time since the start.
std::int64_t stopCountingMemory();

#endif
