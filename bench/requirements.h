// What is required of the library, by class of function. Each row of the benchmark is of one class.
#ifndef BENCH_REQUIREMENTS_H
#define BENCH_REQUIREMENTS_H

namespace bench {

struct Requirement {
  const char* name;
  double speedup;            // x86-64: how many times as fast as the plain loop on cache-resident arrays
  double instruction_share;  // Arm: instructions an element, as a share of the plain loop's
  double short_call_ns;      // x86-64: what the worst call of 1 to 16 elements takes above the cheapest call
  int short_call_instructions;  // Arm: what the worst call of 1 to 16 elements takes
};

inline constexpr Requirement kMovement = {"movement", 1.0, 1.0, 5, 80};
inline constexpr Requirement kPlain = {"plain", 1.0, 1.0, 5, 80};
inline constexpr Requirement kWidening = {"widening", 1.0, 1.0, 5, 80};
inline constexpr Requirement kSaturating = {"saturating", 1.5, 0.5, 5, 80};
inline constexpr Requirement kRounding = {"rounding", 1.5, 0.5, 5, 80};
inline constexpr Requirement kScaled = {"scaled", 2.0, 0.5, 5, 80};
inline constexpr Requirement kPacked = {"packed", 4.0, 0.5, 5, 80};
inline constexpr Requirement kExtreme = {"extreme", 1.0, 0.5, 5, 80};
inline constexpr Requirement kNanWatching = {"NaN-watching", 1.5, 0.5, 5, 80};
inline constexpr Requirement kPosition = {"position", 3.0, 0.5, 5, 80};
inline constexpr Requirement kSearch = {"search", 2.0, 1.0, 5, 80};
inline constexpr Requirement kPeer = {"peer", 1.0, 1.0, 0, 0};

}  // namespace bench

#endif
