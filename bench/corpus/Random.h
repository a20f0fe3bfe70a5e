#pragma once

#include <cstdint>

namespace corpus {

/// Numbers that follow from a seed alone, the same on every machine and with every library
/// (SplitMix64).
class Random {
public:
    explicit Random(std::uint64_t seed) : m_state(seed) {}

    [[nodiscard]] std::uint64_t bits()
    {
        std::uint64_t z = m_state += 0x9e3779b97f4a7c15;
        z = (z ^ (z >> 30)) * 0xbf58476d1ce4e5b9;
        z = (z ^ (z >> 27)) * 0x94d049bb133111eb;
        return z ^ (z >> 31);
    }
    /// From `low` up to, but not including, `high`.
    [[nodiscard]] double between(double low, double high)
    {
        return low + (high - low) * double(bits() >> 11) / double(1ULL << 53);
    }
    /// From `low` to `high`, both included.
    [[nodiscard]] int whole(int low, int high)
    {
        return low + int(bits() % std::uint64_t(high - low + 1));
    }
    [[nodiscard]] bool chance(double share) { return between(0, 1) < share; }

private:
    std::uint64_t m_state;
};

} // namespace corpus
