#include "sound.h"

#include <cstdio>

std::string SoundInfo::description() const {
  char properties[100];
  std::snprintf(properties, sizeof properties, ": %d Hz, %d bits, %d channel%s, %.3f s", sample_rate, bits,
                channels, channels == 1 ? "" : "s", seconds());
  return name + properties;
}
