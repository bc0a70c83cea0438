#pragma once
// Random numbers that are found by their name instead of by what was drawn before.

#include <cstdint>

namespace veltrix {

/// A bijection of the 64-bit numbers that leaves no trace of its argument's order (the finaliser of
/// SplitMix64, Steele, Lea and Flood 2014).
constexpr std::uint64_t Mixed(std::uint64_t x) {
    x += 0x9E3779B97F4A7C15;
    x = (x ^ (x >> 30)) * 0xBF58476D1CE4E5B9;
    x = (x ^ (x >> 27)) * 0x94D049BB133111EB;
    return x ^ (x >> 31);
}

/// One number made of several, in their order.
template <typename... Parts>
constexpr std::uint64_t MixedKey(std::uint64_t first, Parts... parts) {
    std::uint64_t key = Mixed(first);
    ((key = Mixed(key ^ static_cast<std::uint64_t>(parts))), ...);
    return key;
}

/// The sequence of random numbers that belongs to a key; the same on every machine and at any time.
class HashRandom {
  public:
    explicit constexpr HashRandom(std::uint64_t key) : key_(key) {}

    /// The next number of the sequence, of all 64-bit numbers.
    constexpr std::uint64_t Next() { return Mixed(key_ ^ Mixed(count_++)); }
    /// Evenly in 0 to below 1.
    constexpr double Uniform() { return static_cast<double>(Next() >> 11) * 0x1p-53; }

  private:
    std::uint64_t key_;
    std::uint64_t count_ = 0;
};

/// A pair of independent normal deviates.
struct NormalPair {
    double first = 0;
    double second = 0;
};

/// The deviates that belong to a 64-bit hash, by the transform of Box and Muller; none is beyond 6.7.
NormalPair NormalOf(std::uint64_t hash);

}  // namespace veltrix
