// Measures peak memory. Linking this replaces the program's operator new.

#ifndef ORVEX_BENCH_PEAK_MEMORY_H
#define ORVEX_BENCH_PEAK_MEMORY_H

#include <cstdint>

// Starts counting the bytes that operator new allocates.
void startCountingMemory();

// Stops counting and returns the peak number of bytes in use since startCountingMemory.
std::int64_t stopCountingMemory();

#endif
