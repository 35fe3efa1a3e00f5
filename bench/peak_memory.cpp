#include "peak_memory.h"

#ifdef __APPLE__
#include <malloc/malloc.h>
#define malloc_usable_size malloc_size
#else
#include <malloc.h>
#endif

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <new>

namespace {

bool isCounting = false;
std::int64_t bytes = 0;
std::int64_t peakBytes = 0;

}  // namespace

void* operator new(std::size_t size) {
    void* memory = std::malloc(size);
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    if (isCounting) {
        bytes += static_cast<std::int64_t>(malloc_usable_size(memory));
        peakBytes = std::max(peakBytes, bytes);
    }
    return memory;
}

void operator delete(void* memory) noexcept {
    if (isCounting) {
        bytes -= static_cast<std::int64_t>(malloc_usable_size(memory));
    }
    std::free(memory);
}

void operator delete(void* memory, std::size_t /*size*/) noexcept {
    operator delete(memory);
}

void startCountingMemory() {
    bytes = 0;
    peakBytes = 0;
    isCounting = true;
}

std::int64_t stopCountingMemory() {
    isCounting = false;
    return peakBytes;
}
