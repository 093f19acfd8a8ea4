// Measures and draws a recording, cleans it of clicks and lowers its sample rate, block by block.
#include <cstdio>
#include <filesystem>
#include <memory>

#include "examples/program.h"
#include "options.h"
#include "picture.h"
#include "processing.h"
#include "table.h"
#include "tone.h"
#include "wav_file.h"

namespace {

void print_file(const char* kind, const std::filesystem::path& file) {
  std::printf("%s: %s\n", kind, std::filesystem::absolute(file).lexically_normal().c_str());
}

void run(const Options& options) {
  prepare_folder(options.folder);
  const std::unique_ptr<Sound> sound =
      options.tone > 0 ? make_tone(options.tone, options.seconds) : open_wav_file(options.file);
  const Report report = process(*sound, options.processing, options.folder);
  print_table(sound->info(), report);
  const std::filesystem::path picture = draw(sound->info(), report, options.folder);
  std::printf("\n");
  for (const std::filesystem::path& file : report.files) print_file("Sound", file);
  print_file("Picture", picture);
}

}  // namespace

int main(int argc, char** argv) {
  return run_program("recording", "recording", [&] {
    const Options options = parse_options(argc, argv);
    if (options.help) {
      std::printf("%s", kUsage);
    } else {
      run(options);
    }
  });
}
