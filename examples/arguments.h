// The arguments of a program, taken one after the other.
#ifndef ZIVKS_EXAMPLES_ARGUMENTS_H
#define ZIVKS_EXAMPLES_ARGUMENTS_H

#include <stdexcept>
#include <string>

class Arguments {
 public:
  Arguments(int argc, char** argv) : next_(argv + 1), end_(argv + argc) {}

  bool is_empty() const { return next_ == end_; }
  std::string take() { return *next_++; }
  std::string take_value(const std::string& option) {
    if (is_empty()) throw std::runtime_error("something is missing behind " + option + "; see --help");
    return take();
  }

 private:
  char** next_;
  char** end_;
};

#endif
