// References state plainly what functions compute, by element or by array, and are written independently of
// the library. A reference serves a function and its in-place form.
#ifndef ZIVKS_TESTS_REFERENCE_REFERENCE_H
#define ZIVKS_TESTS_REFERENCE_REFERENCE_H

#include <functional>
#include <map>
#include <stdexcept>
#include <string>
#include <tuple>
#include <type_traits>
#include <typeinfo>
#include <utility>
#include <vector>

#include "generic/call.h"

namespace zivks_test {

// Computes the arrays that a call has to write, by argument; those that are only read stay empty.
using Reference = std::function<std::vector<Bytes>(const Function&, const Operands&)>;
using References = std::map<std::string, Reference>;  // by function name

References columnar_references();
References copy_references();
References complex_layout_references();
References element_order_references();
References linear_ramp_references();
References logic_references();
References median_references();
References arithmetic_references();
References multiply_accumulate_references();
References sampling_references();
References scaled_arithmetic_references();
References conversion_references();
References extremes_references();
References comparison_references();
References comparison_sort_references();
References zero_crossing_references();
References radix_sort_references();
References triangle_wave_references();
References uniform_noise_references();

// An element of three bytes.
struct PackedSample {
  uint8_t bytes[3];
};

template <class T>
bool holds_elements_of(const Argument& argument) {
  if (argument.packed == 3) return std::is_same_v<T, PackedSample>;
  return *argument.element->type == typeid(T);
}

// Inputs in the order in which references take them: arrays, then values.
inline std::vector<size_t> inputs_of(const Function& function) {
  std::vector<size_t> inputs;
  for (size_t i = 0; i < function.arguments.size(); ++i) {
    if (function.arguments[i].is_read()) inputs.push_back(i);
  }
  for (size_t i = 0; i < function.arguments.size(); ++i) {
    if (function.arguments[i].is_input_value()) inputs.push_back(i);
  }
  return inputs;
}

// Element `index` of an array, or a value.
template <class T>
T input_element(const Function& function, const Operands& operands, size_t argument, size_t index) {
  if (!holds_elements_of<T>(function.arguments[argument])) {
    throw std::logic_error("reference of " + function.name + " takes another type for " +
                           function.arguments[argument].name);
  }
  T value;
  const bool is_in_memory = function.arguments[argument].is_pointer();
  std::memcpy(&value,
              is_in_memory ? &operands.arrays[argument][index * sizeof(T)] : operands.slots[argument].bytes,
              sizeof value);
  return value;
}

template <class... T, size_t... I>
std::tuple<T...> input_elements(const Function& function, const Operands& operands, const size_t* inputs,
                                [[maybe_unused]] size_t index, std::index_sequence<I...>) {
  return {input_element<T>(function, operands, inputs[I], index)...};
}

// Collects the written elements, argument by argument.
class Outputs {
 public:
  Outputs(const Function& function, const Operands& operands) : function_(function) {
    arrays_.resize(function.arguments.size());
    for (size_t i = 0; i < arrays_.size(); ++i) {
      if (!function.arguments[i].is_written()) continue;
      arrays_[i] = operands.arrays[i];
      written_.push_back(i);
    }
  }
  template <class T>
  void set(size_t output, size_t index, const T& value) {
    const size_t argument = written_.at(output);
    if (!holds_elements_of<T>(function_.arguments[argument])) {
      throw std::logic_error("reference of " + function_.name + " gives another type");
    }
    std::memcpy(&arrays_[argument][index * sizeof(T)], &value, sizeof value);
  }
  template <class T>  // two outputs
  void set(size_t output, size_t index, const std::pair<T, T>& values) {
    set(output, index, values.first);
    set(output + 1, index, values.second);
  }
  template <class... T>
  void set(size_t output, size_t index, const std::tuple<T...>& values) {
    std::apply([&](const T&... value) { (set(output++, index, value), ...); }, values);
  }
  std::vector<Bytes> take() { return std::move(arrays_); }

 private:
  const Function& function_;
  std::vector<Bytes> arrays_;
  std::vector<size_t> written_;
};

// For functions whose block and tail have different rules.
enum class Place { kBlock, kTail };

// A reference from a function of the place, of one element of each array, and of the values.
template <class... Inputs, class Operation>
Reference at_each_place(Operation operation) {
  return [operation](const Function& function, const Operands& operands) {
    const std::vector<size_t> inputs = inputs_of(function);
    if (inputs.size() != sizeof...(Inputs)) throw std::logic_error(function.name + " takes other inputs");
    const size_t length = static_cast<size_t>(operands.length),
                 tail = length / function.block * function.block;
    Outputs outputs(function, operands);
    for (size_t i = 0; i < length; ++i) {
      const Place place = i < tail ? Place::kBlock : Place::kTail;
      outputs.set(0, i,
                  std::apply([&](Inputs... input) { return operation(place, input...); },
                             input_elements<Inputs...>(function, operands, inputs.data(), i,
                                                       std::index_sequence_for<Inputs...>())));
    }
    return outputs.take();
  };
}

template <class Result, class... Inputs>
Reference elementwise(Result (*operation)(Place, Inputs...)) {
  return at_each_place<Inputs...>(operation);
}

// The same if the place makes no difference.
template <class Result, class... Inputs>
Reference elementwise(Result (*operation)(Inputs...)) {
  return at_each_place<Inputs...>([operation](Place, Inputs... input) { return operation(input...); });
}

// A reference from a function of a whole array, and of the values.
template <class Result, class T, class... Values>
Reference reduction(Result (*operation)(const std::vector<T>& samples, Values...)) {
  return [operation](const Function& function, const Operands& operands) {
    const std::vector<size_t> inputs = inputs_of(function);
    if (inputs.size() != 1 + sizeof...(Values)) throw std::logic_error(function.name + " takes other inputs");
    std::vector<T> samples;
    for (size_t i = 0; i < static_cast<size_t>(operands.length); ++i) {
      samples.push_back(input_element<T>(function, operands, inputs[0], i));
    }
    Outputs outputs(function, operands);
    outputs.set(0, 0,
                std::apply([&](auto... values) { return operation(samples, values...); },
                           input_elements<Values...>(function, operands, inputs.data() + 1, 0,
                                                     std::index_sequence_for<Values...>())));
    return outputs.take();
  };
}

}  // namespace zivks_test

#endif
