#include "options.h"

#include <charconv>
#include <optional>
#include <stdexcept>
#include <string>

#include "examples/arguments.h"
#include "tone.h"

const char kUsage[] =
    "usage: recording [OPTION]... [FILE]\n"
    "Measures the WAV file FILE and draws it. The default is\n"
    "/usr/share/sounds/alsa/Front_Center.wav; - reads standard input.\n"
    "\n"
    "  --output FOLDER   where pictures and sounds are put (default: recording-output)\n"
    "  --copy COPY       also writes the sound as it is, a WAV file of 24 bits\n"
    "\n"
    "Changes, each to what the one before it gave; each result is put into a WAV file that can be\n"
    "played:\n"
    "  --clicks N        adds N clicks a second to each channel, as from a scratched record\n"
    "  --clean MASK      removes clicks: a sample that is far from the median of MASK samples around\n"
    "                    it, an odd number up to 501, is replaced by the median. A mask of 5 removes\n"
    "                    clicks of up to 2 samples, as --clicks adds them\n"
    "  --threshold T     how far is far, of a full scale of 1 (default: 0.2); with 0 every sample is\n"
    "                    replaced\n"
    "  --reduce FACTOR   lowers the sample rate: the mean of each FACTOR samples\n"
    "\n"
    "  --tone HZ         a triangle wave in place of a file, at a sample rate of 48000 Hz\n"
    "  --seconds S       its duration (default: 3)\n"
    "  --block N         samples of a channel that are in memory at a time (default: 65536); the\n"
    "                    results do not depend on it\n";

namespace {

// Longer ones would take much more time a sample.
constexpr int32_t kLongestMask = 501;

// `range` says in words what the number may be.
template <class Number>
Number parse_number(const std::string& option, const std::string& text, Number least, Number most,
                    const std::string& range) {
  Number number = 0;
  const char* const end = text.data() + text.size();
  const auto [rest, error] = std::from_chars(text.data(), end, number);
  if (error == std::errc() && rest == end && least <= number && number <= most) return number;
  throw std::runtime_error(option + ": '" + text + "' is no number " + range);
}

}  // namespace

Options parse_options(int argc, char** argv) {
  Options options;
  std::optional<double> seconds;
  std::optional<float> threshold;
  bool has_file = false;
  Processing& processing = options.processing;
  for (Arguments arguments(argc, argv); !arguments.is_empty();) {
    const std::string option = arguments.take();
    const auto value = [&] { return arguments.take_value(option); };
    const auto count = [&](int32_t least, int32_t most) {
      return parse_number(option, value(), least, most,
                          "from " + std::to_string(least) + " to " + std::to_string(most));
    };
    if (option == "--help" || option == "-h") {
      options.help = true;
    } else if (option == "--output") {
      options.folder = value();
    } else if (option == "--copy") {
      processing.copy = value();
    } else if (option == "--clicks") {
      processing.clicks_per_second = count(0, 1000);
    } else if (option == "--clean") {
      processing.mask = count(1, kLongestMask);
      if (processing.mask % 2 == 0)
        throw std::runtime_error("--clean: the median of an even number has no middle");
    } else if (option == "--threshold") {
      threshold = parse_number(option, value(), 0.0F, 2.0F, "from 0 to 2");
    } else if (option == "--reduce") {
      processing.factor = count(1, 1000);
    } else if (option == "--tone") {
      options.tone = parse_number(option, value(), 0.01, kToneSampleRate / 2 - 0.01,
                                  "of Hz from 0.01 to less than half the sample rate");
    } else if (option == "--seconds") {
      seconds = parse_number(option, value(), 0.0, 1e6, "from 0 to 1000000");
    } else if (option == "--block") {
      processing.block = count(1, 1 << 24);
    } else if (option.size() > 1 && option[0] == '-') {
      throw std::runtime_error("there is no option " + option + "; see --help");
    } else if (has_file) {
      throw std::runtime_error("two files are named: '" + options.file.string() + "' and '" + option + "'");
    } else {
      options.file = option;
      has_file = true;
    }
  }
  if (options.tone > 0 && has_file) throw std::runtime_error("--tone takes no file");
  if (seconds && options.tone == 0) throw std::runtime_error("--seconds is for --tone");
  if (threshold && processing.mask == 1) throw std::runtime_error("--threshold is for --clean");
  if (!has_file) options.file = "/usr/share/sounds/alsa/Front_Center.wav";
  options.seconds = seconds.value_or(options.seconds);
  processing.threshold = threshold.value_or(processing.threshold);
  return options;
}
