#ifndef BENCH_PROCESSOR_NAME_H
#define BENCH_PROCESSOR_NAME_H

#include <fstream>
#include <string>

namespace bench {

inline std::string processor_name() {
  std::ifstream description("/proc/cpuinfo");
  for (std::string line; std::getline(description, line);) {
    if (line.rfind("model name", 0) == 0) return line.substr(line.find(':') + 2);
  }
  return "an unnamed processor";
}

}  // namespace bench

#endif
