// Every fault of the arguments, alone and in pairs. The first check decides the status, and outputs stay as
// they were.
#include <algorithm>
#include <cmath>
#include <limits>

#include "generic/every_function.h"
#include "generic/services.h"

namespace zivks_test {
namespace {

struct Fault {
  size_t argument;
  ZIVKStatus status;
  int rank;  // of the check that finds it; the lowest wins
  Slot value;
  std::string what;
};

// TopK and triangle waves have checks of their own between pointers and length.
constexpr int kPointerRank = 0, kOffsetRank = 1, kTriangleRank = 1, kSpanStrideRank = 2, kLengthRank = 3,
              kParameterRank = 4, kSecondParameterRank = 5, kSizeRank = 6;

constexpr int32_t kLength = 37;

bool writes_unsigned(const Function& function) {
  return std::any_of(function.arguments.begin(), function.arguments.end(), [](const Argument& argument) {
    return argument.is_written() &&
           (*argument.element->type == typeid(uint8_t) || *argument.element->type == typeid(uint16_t));
  });
}

bool samples_up(const Function& function) {
  return std::any_of(function.arguments.begin(), function.arguments.end(),
                     [](const Argument& argument) { return argument.up; });
}

constexpr double kPi = 3.141592653589793;

// What a phase may not be, in memory that stays. The most negative and the largest value are out of range
// whatever the factor is.
template <class T>
std::vector<const void*> bad_phases() {
  static const T negative = static_cast<T>(-1), lowest = std::numeric_limits<T>::lowest(),
                 most = std::numeric_limits<T>::max(), period = static_cast<T>(2 * kPi);
  if constexpr (std::is_integral_v<T>) return {&negative, &lowest, &most};
  return {&negative, &lowest, &period, &most};
}
std::vector<const void*> bad_phases(const ElementType& element) {
  if (*element.type == typeid(float)) return bad_phases<float>();
  return *element.type == typeid(double) ? bad_phases<double>() : bad_phases<int32_t>();
}

std::vector<Fault> faults_of(const Function& function) {
  constexpr int32_t kMostNegative = std::numeric_limits<int32_t>::min();
  const double infinity = std::numeric_limits<double>::infinity();
  std::vector<Fault> faults;
  for (size_t i = 0; i < function.arguments.size(); ++i) {
    const Argument& argument = function.arguments[i];
    const auto add = [&](ZIVKStatus status, int rank, auto value) {
      faults.push_back({i, status, rank, Slot::of(value), argument.name + " = " + std::to_string(value)});
    };
    const auto add_number = [&](ZIVKStatus status, int rank, double value) {
      faults.push_back({i, status, rank, slot_of_type(*argument.element, value),
                        argument.name + " = " + std::to_string(value)});
    };
    if (argument.role == Role::kNulls || argument.line) continue;
    if (argument.role == Role::kPhase) {
      const bool is_triangle = function.has(Role::kFrequency);
      for (const void* phase : bad_phases(*argument.element)) {
        faults.push_back({i, is_triangle ? ZIVK_STS_TRIANGLE_ERR : ZIVK_STS_SAMPLE_PHASE_ERR,
                          is_triangle ? kTriangleRank : kSecondParameterRank, Slot::of(phase), "bad phase"});
      }
    }
    if (argument.is_pointer() && !argument.nullable && !argument.is_unchecked) {
      faults.push_back({i, ZIVK_STS_NULL_PTR_ERR, kPointerRank, Slot(), argument.name + " null"});
    } else if (argument.role == Role::kLength || argument.role == Role::kTableLength) {
      for (int32_t value = 0; value < argument.least; ++value) add(ZIVK_STS_SIZE_ERR, kLengthRank, value);
      if (argument.is_unsigned) continue;
      for (int32_t value : {-1, kMostNegative}) add(ZIVK_STS_SIZE_ERR, kLengthRank, value);
    } else if (argument.role == Role::kKind) {
      for (int32_t value : {3, -1, kMostNegative}) add(ZIVK_STS_ZC_TYPE_ERR, kParameterRank, value);
    } else if (argument.role == Role::kShift) {
      for (int32_t value : {-1, kMostNegative}) add(ZIVK_STS_SHIFT_ERR, kParameterRank, value);
    } else if (argument.role == Role::kRoundMode && !argument.is_unchecked) {
      const ZIVKStatus status =
          writes_unsigned(function) ? ZIVK_STS_ROUND_RANGE_ERR : ZIVK_STS_ROUND_MODE_ERR;
      for (int32_t value : {3, -1, kMostNegative}) add(status, kParameterRank, value);
    } else if (argument.role == Role::kCount) {
      for (int32_t value : {0, -1, kMostNegative}) add(ZIVK_STS_SIZE_ERR, kLengthRank, value);
    } else if (argument.role == Role::kStride) {
      const Argument& source = function.arguments[0];
      const auto least = source.spans ? 1 : static_cast<int32_t>(source.element->bytes);
      for (int32_t value : {least - 1, 0, -1, kMostNegative}) {
        source.spans ? add(ZIVK_STS_TOPK_STRIDE_ERR, kSpanStrideRank, value)
                     : add(ZIVK_STS_SIZE_ERR, kLengthRank, value);
      }
    } else if (argument.role == Role::kOffset) {
      for (int32_t value : {-1, kMostNegative, INT32_MAX - kLength + 1, INT32_MAX}) {
        add(ZIVK_STS_SIZE_ERR, kOffsetRank, value);
      }
    } else if (argument.role == Role::kMethod) {
      for (int32_t value : {3, -1, kMostNegative}) add(ZIVK_STS_TOPK_METHOD_ERR, kParameterRank, value);
    } else if (argument.role == Role::kDataType) {
      for (int32_t value : {0, 2, 3, 4, 6, 8, 10, 12, 14, 16, 18, 20, 21, -1, kMostNegative + 1, INT32_MAX}) {
        add(ZIVK_STS_DATA_TYPE_ERR, kSecondParameterRank, value);
      }
      if (!argument.samples) continue;
      for (int32_t value : {ZIVK_DT_16U, ZIVK_DT_32U, ZIVK_DT_64U, ZIVK_DT_64S}) {
        add(ZIVK_STS_DATA_TYPE_ERR, kSecondParameterRank, value);
      }
    } else if (argument.role == Role::kMaskLength) {
      for (int32_t value : {0, -1, kMostNegative}) add(ZIVK_STS_MASK_SIZE_ERR, kParameterRank, value);
      if (function.has(Role::kLength)) {
        for (int32_t value : {kLength + 1, INT32_MAX}) add(ZIVK_STS_MASK_SIZE_ERR, kParameterRank, value);
      } else {  // a handle, of samples of one byte
        for (int32_t value : {0x7FFFFFF0, INT32_MAX}) add(ZIVK_STS_MASK_SIZE_ERR, kSizeRank, value);
      }
    } else if (argument.role == Role::kFactor) {
      for (int32_t value : {0, -1, kMostNegative}) {
        add(ZIVK_STS_SAMPLE_FACTOR_ERR, kParameterRank, value);
      }
      if (!samples_up(function)) continue;
      for (int32_t value : {INT32_MAX / kLength, INT32_MAX}) {
        add(ZIVK_STS_SAMPLE_FACTOR_ERR, kSizeRank, value);
      }
    } else if (argument.role == Role::kMagnitude) {
      for (double value : {0.0, -0.0, -1.0, -1000.0}) {
        add_number(ZIVK_STS_TRIANGLE_ERR, kParameterRank, value);
      }
    } else if (argument.role == Role::kFrequency) {
      for (double value : {-0.001, -infinity, 0.5, infinity}) {
        add_number(ZIVK_STS_TRIANGLE_ERR, kParameterRank, value);
      }
    } else if (argument.role == Role::kAsymmetry) {
      for (double value : {-3.1416, -infinity, kPi, infinity}) {
        add_number(ZIVK_STS_TRIANGLE_ERR, kTriangleRank, value);
      }
    } else if (argument.role == Role::kScale) {
      for (double value : {0.0, -0.0, -1.0, -infinity, infinity, std::nan("")}) {
        add(ZIVK_STS_SCALE_ERR, kSecondParameterRank, value);
      }
    }
  }
  return faults;
}

class Arguments : public FunctionTest {
 protected:
  // Calls with the faults put in; says what is wrong with the outcome.
  std::string outcome(const std::vector<const Fault*>& faults, ZIVKStatus expected) const {
    const Operands operands = random_operands(function(), kLength, 0);
    Call call(function(), operands);
    for (const Fault* fault : faults) call.slots[fault->argument] = fault->value;
    const ZIVKStatus status = call.invoke();
    if (status != expected)
      return "status " + std::to_string(status) + ", expected " + std::to_string(expected);
    return call.unexpected_writes(expected == ZIVK_STS_NO_ERR);
  }
};

TEST_P(Arguments, EachFaultHasItsStatusAndTheFirstCheckWins) {
  const std::vector<Fault> faults = faults_of(function());
  EXPECT_EQ(outcome({}, ZIVK_STS_NO_ERR), "");
  for (const Fault& fault : faults) {
    EXPECT_EQ(outcome({&fault}, fault.status), "") << fault.what;
    for (const Fault& other : faults) {
      if (other.argument == fault.argument || other.rank < fault.rank) continue;
      EXPECT_EQ(outcome({&fault, &other}, fault.status), "") << fault.what << ", " << other.what;
    }
  }
}

TEST_P(Arguments, NullableSourcesMayBeNullOneByOneButNotAll) {
  std::vector<Fault> nulls;
  for (size_t i = 0; i < function().arguments.size(); ++i) {
    if (function().arguments[i].nullable) {
      nulls.push_back({i, ZIVK_STS_NO_ERR, kPointerRank, Slot(), function().arguments[i].name + " null"});
    }
  }
  std::vector<const Fault*> all;
  for (const Fault& null : nulls) {
    all.push_back(&null);
    EXPECT_EQ(outcome({&null}, ZIVK_STS_NO_ERR), "") << null.what;
    for (const Fault& fault : faults_of(function())) {
      EXPECT_EQ(outcome({&null, &fault}, fault.status), "") << null.what << ", " << fault.what;
    }
  }
  EXPECT_EQ(outcome(all, all.empty() ? ZIVK_STS_NO_ERR : ZIVK_STS_NULL_PTR_ERR), "");
  for (const Fault& fault : faults_of(function())) {
    std::vector<const Fault*> with_fault = all;
    with_fault.push_back(&fault);
    EXPECT_EQ(outcome(with_fault, all.empty() ? fault.status : ZIVK_STS_NULL_PTR_ERR), "") << fault.what;
  }
}

ZIVKS_FOR_FUNCTIONS(Arguments, array_functions());

class LackOfMemory : public Arguments {
 protected:
  void SetUp() override {
    Arguments::SetUp();
    services.memory = nullptr;
  }
  void TearDown() override {
    services.memory.reset();
    Arguments::TearDown();
  }
};

TEST_P(LackOfMemory, IsFoundAfterEveryFaultAndWritesNothing) {
  EXPECT_EQ(outcome({}, ZIVK_STS_MALLOC_ERR), "");
  for (const Fault& fault : faults_of(function()))
    EXPECT_EQ(outcome({&fault}, fault.status), "") << fault.what;
}

std::vector<const Function*> functions_that_make_handles() {
  std::vector<const Function*> list;
  for (const Function* function : array_functions()) {
    if (function->has(Role::kNewHandle)) list.push_back(function);
  }
  return list;
}

ZIVKS_FOR_FUNCTIONS(LackOfMemory, functions_that_make_handles());

}  // namespace
}  // namespace zivks_test
