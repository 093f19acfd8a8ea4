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
// Sorts that make every pass whatever the data are set against the textbook form of their passes. A pass is bound by
// stores, of which both forms make as many on keys in the nearer caches, but for the last copy. Keys beyond those cost
// the textbook form a walk over the outer cache in each pass, twice for the copy: that can be won, and no more. The
// share is largest for 64 bits, of which there are twice as many passes, and smallest for floats of 32, whose common
// exponents make two splits necessary. Comparison sorts that notice sorted keys are peers, and not a limit.
inline constexpr Requirement kCountedSort = {"counted sort", 1.0, 0,     0, 1.0,    0};  // a count for each key: same stores
inline constexpr Requirement kRadixSort   = {"radix sort",   1.05, 0,    0, 1.0,    0};  // up to 64 Ki keys
inline constexpr Requirement kLongRadix32 = {"long radix sort, 32 bits", 1.4, 0, 0, 1.0, 0};
inline constexpr Requirement kLongRadix64 = {"long radix sort, 64 bits", 2.2, 0, 0, 1.0, 0};
inline constexpr Requirement kRadixIndex  = {"radix index sort", 1.25, 0, 0, 1.0,   0};  // up to 64 Ki keys
inline constexpr Requirement kLongIndex32 = {"long radix index sort, 32 bits", 1.4, 0, 0, 1.0, 0};
inline constexpr Requirement kLongIndex64 = {"long radix index sort, 64 bits", 2.4, 0, 0, 1.0, 0};
inline constexpr Requirement kSort        = {"sorting",      1.0, 1.1,   0, 1.0,    0};
inline constexpr Requirement kLibrarySort = {"library sort", 0.9, 1.1,   0, 1.1,    0};  // steps are prescribed
inline constexpr Requirement kSelection   = {"selection",    1.0, 1.1,   0, 1.0,    0};
inline constexpr Requirement kHash        = {"hash",         1.05, 2.0, 10, 1.0,  240};  // bound by multiplications
inline constexpr Requirement kColumn      = {"column",       1.0, 1.5,  10, 1.0,  200};
// Half of the rows are null. The library takes more instructions than a loop that branches on each row, but no mistaken
// branches.
inline constexpr Requirement kHalfNull    = {"half null",    1.05, 2.5, 14, 1.3,  300};
// Two words a row.
inline constexpr Requirement kDecimals    = {"decimals",     1.2, 1.6,  45, 1.0,  540};
inline constexpr Requirement kNullDecimals = {"half null, decimals", 0.95, 1.6, 45, 1.4, 600};
inline constexpr Requirement kTextHash    = {"text hash",    1.1, 0,     0, 1.25,   0};  // beside the inlined libxxhash
inline constexpr Requirement kTextAggregate = {"text aggregate", 2.0, 0, 0, 0.7,    0};  // beside memcmp
// Noise is draws of the C library, one call for each element. In serial waves each sample waits for the one before.
// Waves, and ramps of bytes, are bound by their arithmetic in memory, too, where a copy of as many bytes takes less.
inline constexpr Requirement kNoise       = {"noise",        0.9, 0,   130, 1.05, 1400};
inline constexpr Requirement kWave        = {"wave",         2.4, 10,  50, 0.45, 540};
inline constexpr Requirement kSerialWave  = {"serial wave",  2.2, 3.0,  35, 0.5,  520};
inline constexpr Requirement kSampleUp    = {"sampling up",  1.6, 1.4,  18, 0.9,  260};
inline constexpr Requirement kScattered   = {"sampling up over zeros", 1.1, 1.6, 25, 1.1, 260};
inline constexpr Requirement kSampleDown  = {"sampling down", 1.5, 1.5, 10, 0.4,  140};
inline constexpr Requirement kStrided     = {"sampling down, element by element", 0.95, 1.3, 9, 0.7, 130};
// The tail of a ramp is a chain of additions, in short arrays too. So are blocks wherever exponents change, where the
// plain loop computes each element from its index.
inline constexpr Requirement kRamp        = {"ramp",         2.2, 3.0,  25, 0.35, 250};
inline constexpr Requirement kRoundedRamp = {"rounded ramp", 0.75, 3.0, 25, 0.35, 250};
inline constexpr Requirement kMedianOf3   = {"median of 3",  0.9, 1.1,  30, 0.7,  350};  // compilers find the same steps
inline constexpr Requirement kMedian      = {"median",       1.2, 2.0,  80, 0.95, 800};  // of 5, 7 and 9
// The plain loops let a NaN come and go as it likes, and do not tell the zeros apart.
inline constexpr Requirement kFloatMedianOf3 = {"median of 3, floats", 0.7, 1.5, 60, 0.4, 550};
inline constexpr Requirement kFloatMedian = {"median, floats", 0.95, 2.4, 140, 0.3, 1300};
inline constexpr Requirement kOwnMedian   = {"median in place", 0.9, 10.0, 110, 0.8, 1800};  // memory for a copy is new
// Beside a qsort for each window.
inline constexpr Requirement kLongMedian  = {"long median",  250, 0,     0, 0.02,   0};
inline constexpr Requirement kLongMedian64 = {"long median, 64 bits", 120, 0, 0, 0.04, 0};
inline constexpr Requirement kPeer        = {"peer",         1.0, 1.1,   0, 0,      0};
// clang-format on

}  // namespace bench

#endif
