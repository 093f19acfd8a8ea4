// What is required of the library, by class of function. Each row of the benchmark is of one class.
#ifndef BENCH_REQUIREMENTS_H
#define BENCH_REQUIREMENTS_H

namespace bench {

struct Requirement {
  const char* name;
  double speedup;  // x86-64: how many times as fast as the plain loop on cache-resident arrays
  // x86-64, memory-bound: of the time of the plain loop or of a memcpy of the same bytes
  double memory_share;
  double short_ns;         // x86-64: what the worst call of 1 to 16 elements takes above the cheapest call
  double element_share;    // Arm: instructions an element, as a share of the plain loop's
  int short_instructions;  // Arm: what the worst call of 1 to 16 elements takes
};

// clang-format off
inline constexpr Requirement kMovement    = {"movement",     1.0, 1.1,   4, 1.0,   60};
inline constexpr Requirement kPlain       = {"plain",        1.0, 1.1,   4, 1.0,   60};
inline constexpr Requirement kWidening    = {"widening",     1.0, 1.1,   4, 1.0,   90};
inline constexpr Requirement kSaturating  = {"saturating",   1.5, 1.1,   4, 0.65,  60};
inline constexpr Requirement kScaled      = {"scaled",       2.0, 1.4,   8, 0.35, 140};  // rounds and saturates
inline constexpr Requirement kRounding    = {"rounding",     2.0, 1.4,  10, 0.5,  110};  // to saturated integers
inline constexpr Requirement kPacked      = {"packed",       4.0, 1.1,  15, 0.5,  120};  // samples of 3 bytes
inline constexpr Requirement kCounting    = {"counting",     1.0, 1.2,   6, 0.9,  100};
inline constexpr Requirement kExtreme     = {"extreme",      1.0, 1.1,   4, 0.6,   60};
inline constexpr Requirement kNanWatching = {"NaN-watching", 2.0, 1.6,   6, 0.5,   80};  // extremes of floats
inline constexpr Requirement kPosition    = {"position",     3.0, 2.0,  10, 0.5,  180};
inline constexpr Requirement kSearch      = {"search",       2.0, 1.1, 250, 1.0, 2400};  // one for each element
inline constexpr Requirement kRadixSort   = {"radix sort",   1.0, 0,     0, 1.0,    0};  // against its textbook form
inline constexpr Requirement kPeer        = {"peer",         1.0, 1.1,   0, 0,      0};
// clang-format on

}  // namespace bench

#endif
