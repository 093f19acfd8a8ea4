// Measures and draws a recording: level, peak and zero crossings of each channel over time.
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <vector>

#include "examples/program.h"
#include "measures.h"
#include "picture.h"
#include "recording.h"
#include "table.h"

namespace {

constexpr char kDefaultFile[] = "/usr/share/sounds/alsa/Front_Center.wav";
constexpr char kDefaultFolder[] = "recording-output";
constexpr int kFramesPerSecond = 50;

constexpr char kUsage[] =
    "usage: recording [--output FOLDER] [--copy COPY] [FILE]\n"
    "Measures the WAV file FILE (default: %s; - reads standard input)\n"
    "and draws it into a picture in FOLDER (default: %s).\n"
    "Writes its samples to COPY, a WAV file of 24 bits, if that is given.\n";

struct Arguments {
  std::filesystem::path file = kDefaultFile;
  std::filesystem::path folder = kDefaultFolder;
  std::filesystem::path copy;
};

bool parse(int argc, char** argv, Arguments& arguments) {
  bool has_file = false;
  for (int i = 1; i < argc; ++i) {
    if (std::strcmp(argv[i], "--output") == 0) {
      if (++i == argc) return false;
      arguments.folder = argv[i];
    } else if (std::strcmp(argv[i], "--copy") == 0) {
      if (++i == argc) return false;
      arguments.copy = argv[i];
    } else if (has_file || (argv[i][0] == '-' && argv[i][1] != '\0')) {
      return false;
    } else {
      arguments.file = argv[i];
      has_file = true;
    }
  }
  return true;
}

void run(const Arguments& arguments) {
  prepare_folder(arguments.folder);
  const Recording recording = read_recording(arguments.file);
  if (!arguments.copy.empty()) write_24_bits(recording, arguments.copy);
  const int32_t frame_length = std::max(recording.sample_rate / kFramesPerSecond, 1);
  std::vector<Channel> channels;
  for (const Array<float>& samples : recording.channels) {
    channels.push_back(measure(samples.get(), recording.length, frame_length, recording.sample_rate));
  }
  print_table(recording, channels);
  const auto picture = draw(recording, channels, arguments.folder);
  std::printf("\nPicture: %s\n", std::filesystem::absolute(picture).lexically_normal().c_str());
}

}  // namespace

int main(int argc, char** argv) {
  const auto asks_for_help = [](const char* argument) { return std::strcmp(argument, "--help") == 0; };
  const bool helps = std::any_of(argv + 1, argv + argc, asks_for_help);
  Arguments arguments;
  if (!helps && !parse(argc, argv, arguments)) {
    std::fprintf(stderr, kUsage, kDefaultFile, kDefaultFolder);
    return EXIT_FAILURE;
  }
  return run_program("recording", "recording", [&] {
    if (helps) {
      std::printf(kUsage, kDefaultFile, kDefaultFolder);
    } else {
      run(arguments);
    }
  });
}
