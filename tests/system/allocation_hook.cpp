#include "system/allocation_hook.h"

#include <atomic>
#include <chrono>
#include <cstdlib>
#include <new>
#include <thread>

namespace {

constexpr long never = -1;

std::atomic<std::size_t> allocations{0};
std::atomic<std::size_t> releases{0};
std::atomic<long> untilFailure{never};
std::atomic<bool> hasFailed{false};
std::atomic<bool> dawdling{false};
allocation::Failure kindOfFailure = allocation::Failure::badAlloc;

void failIfItIsTime() {
    if (untilFailure == never || untilFailure-- != 0) {
        return;
    }
    hasFailed = true;
    if (kindOfFailure == allocation::Failure::notStandard) {
        throw 42;
    }
    throw std::bad_alloc();
}

void* allocate(std::size_t size) {
    if (dawdling) {
        std::this_thread::sleep_for(std::chrono::microseconds(200));
    }
    failIfItIsTime();
    void* memory = std::malloc(size == 0 ? 1 : size);
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    ++allocations;
    return memory;
}

void release(void* memory) {
    if (memory != nullptr) {
        ++releases;
        std::free(memory);
    }
}

}  // namespace

namespace allocation {

void failAt(std::size_t index, Failure failure) {
    kindOfFailure = failure;
    hasFailed = false;
    untilFailure = static_cast<long>(index);
}

bool stopFailing() {
    untilFailure = never;
    return hasFailed;
}

void dawdle(bool enabled) {
    dawdling = enabled;
}

std::size_t count() {
    return allocations;
}

std::size_t live() {
    return allocations - releases;
}

}  // namespace allocation

void* operator new(std::size_t size) {
    return allocate(size);
}

void* operator new[](std::size_t size) {
    return allocate(size);
}

void operator delete(void* memory) noexcept {
    release(memory);
}

void operator delete[](void* memory) noexcept {
    release(memory);
}

void operator delete(void* memory, std::size_t /*size*/) noexcept {
    release(memory);
}

void operator delete[](void* memory, std::size_t /*size*/) noexcept {
    release(memory);
}
