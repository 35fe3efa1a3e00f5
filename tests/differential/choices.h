// Where a generator takes its decisions from.

#ifndef ORVEX_TESTS_DIFFERENTIAL_CHOICES_H
#define ORVEX_TESTS_DIFFERENTIAL_CHOICES_H

#include <cstddef>
#include <cstdint>
#include <random>

namespace differential {

class Choices {
public:
    Choices() = default;
    virtual ~Choices() = default;
    Choices(const Choices&) = delete;
    Choices& operator=(const Choices&) = delete;

    // A number from 0 to bound - 1. 0 is the plainest choice.
    virtual std::uint32_t below(std::uint32_t bound) = 0;

    bool oneIn(std::uint32_t bound) {
        return below(bound) == bound - 1;
    }

    template <typename List>
    auto oneOf(const List& list) {
        return list[below(static_cast<std::uint32_t>(list.size()))];
    }
};

// Pseudo-random decisions, the same for a seed on every platform.
class RandomChoices : public Choices {
public:
    explicit RandomChoices(std::uint64_t seed) : engine(seed) {}

    std::uint32_t below(std::uint32_t bound) override {
        return static_cast<std::uint32_t>(engine() % bound);
    }

private:
    std::mt19937_64 engine;
};

// Decisions read from bytes: one byte for a small bound, two for a large one. Behind the end, every choice
// is the plainest one.
class ByteChoices : public Choices {
public:
    ByteChoices(const std::uint8_t* data, std::size_t size) : next(data), end(data + size) {}

    std::uint32_t below(std::uint32_t bound) override {
        std::uint32_t value = readByte();
        if (bound > 256) {
            value = value * 256 + readByte();
        }
        return value % bound;
    }

private:
    std::uint32_t readByte() {
        return next == end ? 0 : *next++;
    }

    const std::uint8_t* next;
    const std::uint8_t* end;
};

}  // namespace differential

#endif
