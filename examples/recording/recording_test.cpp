// Runs the program as a user does: on sound files whose measures are known, and on files that it must refuse.
#include <sndfile.h>

#include <climits>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include "examples/program_test.h"

namespace {

namespace fs = std::filesystem;

constexpr int kSampleRate = 8000;
constexpr int kLength = 8123;  // no whole number of frames
constexpr std::size_t kDataLengthAt = 40, kHeader = 44;

struct Summary {
  double offset, level, peak, crossings;
};

// The part of the table that has a line a channel.
std::vector<Summary> summaries(const std::string& output) {
  std::istringstream lines(output);
  std::string line;
  while (std::getline(lines, line) && line.rfind("channel ", 0) != 0) continue;
  std::vector<Summary> result;
  while (std::getline(lines, line) && !line.empty()) {
    std::string number, offset, level, peak, crossings;  // streams do not read -inf as a number
    std::istringstream(line) >> number >> offset >> level >> peak >> crossings;
    EXPECT_EQ(number, std::to_string(result.size() + 1));
    result.push_back({std::stod(offset), std::stod(level), std::stod(peak), std::stod(crossings)});
  }
  return result;
}

double decibels(double amplitude) { return 20 * std::log10(amplitude); }

class RecordingTest : public ProgramTest {
 protected:
  static void write(const std::string& file, int format, int channels, const std::vector<int>& samples) {
    SF_INFO info = {0, kSampleRate, channels, format, 0, 0};
    SNDFILE* const sound = sf_open(file.c_str(), SFM_WRITE, &info);
    const auto count = static_cast<sf_count_t>(samples.size());
    EXPECT_EQ(sf_write_int(sound, samples.data(), count), count);
    EXPECT_EQ(sf_close(sound), 0);
  }
  static std::vector<int> read(const std::string& file) {
    SF_INFO info = {};
    SNDFILE* const sound = sf_open(file.c_str(), SFM_READ, &info);
    EXPECT_NE(sound, nullptr) << file;
    std::vector<int> samples(static_cast<std::size_t>(info.frames * info.channels));
    sf_read_int(sound, samples.data(), static_cast<sf_count_t>(samples.size()));
    sf_close(sound);
    return samples;
  }
  // Channel c holds a sine of 500 (c + 1) Hz and 2^-(c + 1) amplitude around an offset of c / 8.
  static void write_sines(const std::string& file, int format, int channels) {
    std::vector<int> samples;
    for (int i = 0; i < kLength; ++i) {
      for (int c = 0; c < channels; ++c) {
        // The phase keeps samples off zero.
        const double turns = 500.0 * (c + 1) * i / kSampleRate + 1.0 / 37;
        const double sample = std::ldexp(std::sin(2 * M_PI * turns), -(c + 1)) + c / 8.0;
        samples.push_back(static_cast<int>(std::lround(sample * INT_MAX)));
      }
    }
    write(file, format, channels, samples);
  }
};

TEST_F(RecordingTest, MeasuresAndDrawsEveryChannel) {
  const int formats[] = {SF_FORMAT_WAV | SF_FORMAT_PCM_16, SF_FORMAT_WAV | SF_FORMAT_PCM_24,
                         SF_FORMAT_WAVEX | SF_FORMAT_PCM_24, SF_FORMAT_WAVEX | SF_FORMAT_PCM_16};
  for (int channels = 1; channels <= 4; ++channels) {
    write_sines("it's a test.wav", formats[channels - 1], channels);
    const Result result = run("$program --output pictures \"it's a test.wav\"");
    EXPECT_EQ(result.exit_status, 0) << result.output;
    const auto measured = summaries(result.output);
    ASSERT_EQ(measured.size(), static_cast<std::size_t>(channels)) << result.output;
    for (int c = 0; c < channels; ++c) {
      const Summary& channel = measured[static_cast<std::size_t>(c)];
      const double amplitude = std::ldexp(1, -(c + 1));
      EXPECT_NEAR(channel.offset, c / 8.0, 0.001);
      EXPECT_NEAR(channel.level, decibels(amplitude / std::sqrt(2)), 0.02);
      // 90 degrees lie between two samples of each sine, the nearer one 360 / 37 degrees off.
      EXPECT_NEAR(channel.peak, decibels(amplitude * std::cos(2 * M_PI / 37) + c / 8.0), 0.03);
      EXPECT_NEAR(channel.crossings, 1000 * (c + 1), 3);
    }
    const std::string last_line = "\nPicture: " + (folder_ / "pictures/it's a test.png").string() + "\n";
    EXPECT_EQ(result.output.substr(result.output.size() - last_line.size()), last_line);
    const std::string picture = read_bytes("pictures/it's a test.png");
    EXPECT_EQ(picture.substr(0, 8), "\x89PNG\r\n\x1a\n");
    EXPECT_GT(picture.size(), 20000u);
    if (channels > 1) continue;
    int rows = 0;
    std::istringstream lines(result.output);
    for (std::string line; std::getline(lines, line);) {
      double start, level, peak, crossings;
      std::string bar;
      std::istringstream row(line);
      if (!(row >> start >> level >> peak >> crossings >> bar) || bar[0] != '#') continue;
      EXPECT_NEAR(start, 0.06 * rows++, 1e-9);
      EXPECT_NEAR(level, -9.03, 0.11);
    }
    EXPECT_EQ(rows, 17) << result.output;  // 51 frames, three a line
  }
}

TEST_F(RecordingTest, SilenceHasNoLevelAndNoPeak) {
  write("silence.wav", SF_FORMAT_WAV | SF_FORMAT_PCM_24, 1, std::vector<int>(kLength));
  const auto measured = summaries(run("$program silence.wav").output);
  ASSERT_EQ(measured.size(), 1u);
  EXPECT_EQ(measured[0].offset, 0);
  EXPECT_EQ(measured[0].level, -INFINITY);
  EXPECT_EQ(measured[0].peak, -INFINITY);
  EXPECT_EQ(measured[0].crossings, 0);
}

TEST_F(RecordingTest, CopiesSamplesBitForBit) {
  std::mt19937 random(24);
  const struct {
    int format, channels, length;
  } rows[] = {{SF_FORMAT_WAV | SF_FORMAT_PCM_24, 1, 1},
              {SF_FORMAT_WAV | SF_FORMAT_PCM_24, 1, 2},
              {SF_FORMAT_WAV | SF_FORMAT_PCM_24, 2, kLength},
              {SF_FORMAT_WAVEX | SF_FORMAT_PCM_24, 3, kLength},
              {SF_FORMAT_WAV | SF_ENDIAN_BIG | SF_FORMAT_PCM_24, 1, kLength},
              {SF_FORMAT_WAV | SF_ENDIAN_BIG | SF_FORMAT_PCM_16, 2, kLength},
              {SF_FORMAT_WAV | SF_FORMAT_PCM_16, 2, kLength}};
  for (const auto& [format, channels, length] : rows) {
    const unsigned unused_bits = (format & SF_FORMAT_SUBMASK) == SF_FORMAT_PCM_24 ? 8 : 16;
    std::vector<int> samples(static_cast<std::size_t>(length * channels));
    for (int& sample : samples) sample = static_cast<int>(random() >> unused_bits << unused_bits);
    samples.front() = INT_MIN;
    samples.back() = INT_MAX >> unused_bits << unused_bits;
    write("sound.wav", format, channels, samples);
    const Result result = run("$program --copy copy.wav sound.wav");
    ASSERT_EQ(result.exit_status, 0) << result.output;

    SF_INFO info = {};
    sf_close(sf_open("copy.wav", SFM_READ, &info));
    EXPECT_EQ(info.format & SF_FORMAT_SUBMASK, SF_FORMAT_PCM_24);
    EXPECT_EQ(info.channels, channels);
    EXPECT_EQ(read("copy.wav"), samples) << std::hex << format << ", " << channels << " channels";
  }
}

TEST_F(RecordingTest, ReplacesFilesAsAWholeAndNeverItsInput) {
  write_sines("sound.png", SF_FORMAT_WAV | SF_FORMAT_PCM_16, 1);
  const std::string before = read_bytes("sound.png");
  fs::create_symlink("sound.png", "link.wav");
  fs::create_hard_link("sound.png", "second-name.wav");
  for (const std::string copy : {"sound.png", "./sound.png", "link.wav", "second-name.wav"}) {
    expect_failure("$program --copy " + copy + " sound.png", "would overwrite the recording itself");
    expect_failure("$program --copy " + copy + " - < sound.png", "would overwrite the recording itself");
  }
  expect_failure("$program --output . sound.png", "would overwrite the recording itself");
  EXPECT_EQ(read_bytes("sound.png"), before);

  write_bytes("old.wav", "what stood there");
  fs::create_symlink("old.wav", "link-to-old.wav");
  // Files may not grow beyond eight blocks, as on a disk that is full.
  expect_failure("trap '' XFSZ; ulimit -f 8; $program --copy old.wav sound.png", "cannot be written");
  EXPECT_EQ(read_bytes("old.wav"), "what stood there");
  for (const auto& entry : fs::directory_iterator(".")) EXPECT_NE(entry.path().extension(), ".tmp");
  fs::create_directory("folder");
  expect_failure("$program --copy folder sound.png", "not a regular file");
  expect_failure("$program --copy missing/copy.wav sound.png", "cannot be written: No such file");
  EXPECT_EQ(run("$program --copy link-to-old.wav sound.png").exit_status, 0);
  EXPECT_TRUE(fs::is_symlink("link-to-old.wav"));
  EXPECT_EQ(read_bytes("old.wav").size(), kHeader + 3 * kLength + 1);  // chunks are of even length
}

TEST_F(RecordingTest, ReadsPipesAndHeadersWithoutALength) {
  const auto table_of = [](const std::string& command) {  // without the name of the input
    return run(command + " | sed 1d | grep -v ^Picture").output;
  };
  const char* const commands[] = {"$program stream.wav", "cat stream.wav | $program -",
                                  "cat stream.wav > pipe.wav & $program pipe.wav", "$program - < stream.wav"};
  std::size_t turn = 0;
  run("mkfifo pipe.wav");
  for (const unsigned frame_bytes : {4U, 6U}) {
    write_sines("whole.wav", SF_FORMAT_WAV | (frame_bytes == 4 ? SF_FORMAT_PCM_16 : SF_FORMAT_PCM_24), 2);
    const std::string expected = table_of("$program whole.wav");
    ASSERT_EQ(summaries(expected).size(), 2u) << expected;
    std::string bytes = read_bytes("whole.wav");
    for (const unsigned length :
         {frame_bytes * kLength, 0x7FFFF000U, 0x7FFFF000U / frame_bytes * frame_bytes, 0xFFFFFFFFU, 0U}) {
      for (unsigned i = 0; i < 4; ++i) bytes[kDataLengthAt + i] = static_cast<char>(length >> (8 * i));
      write_bytes("stream.wav", bytes);
      const std::string command = commands[turn++ % std::size(commands)];
      EXPECT_EQ(table_of(command), expected) << command << ", length " << length;
    }
  }
}

TEST_F(RecordingTest, RefusesWhatIsNoWholeSoundFileOfItsFormats) {
  write_sines("whole.wav", SF_FORMAT_WAV | SF_FORMAT_PCM_16, 2);
  const std::string whole = read_bytes("whole.wav");
  const struct {
    std::string bytes, message;
  } rows[] = {{"", "the file is empty"},
              {"This is a text, not a sound.\n", "not a sound file"},
              {whole.substr(0, 20), "not a sound file"},
              {whole.substr(0, kHeader), "the file is truncated"},
              {whole.substr(0, whole.size() - 1), "the file is truncated"},
              {whole.substr(0, whole.size() / 2), "the file is truncated"}};
  for (const auto& [bytes, message] : rows) {
    write_bytes("bytes.wav", bytes);
    expect_failure("$program bytes.wav", message);
    expect_failure("cat bytes.wav | $program -", message);
  }
  for (const int format : {SF_FORMAT_WAV | SF_FORMAT_PCM_32, SF_FORMAT_WAV | SF_FORMAT_FLOAT,
                           SF_FORMAT_AIFF | SF_FORMAT_PCM_16, SF_FORMAT_FLAC | SF_FORMAT_PCM_16}) {
    write_sines("other.wav", format, 1);
    expect_failure("$program other.wav", "only WAV files of 16 or 24 bits");
  }
  write("none.wav", SF_FORMAT_WAV | SF_FORMAT_PCM_16, 1, {});
  expect_failure("$program none.wav", "holds no samples");
  expect_failure("$program missing.wav", "No such file");
  expect_failure("$program .", "neither a file nor a pipe");
  expect_failure("$program /dev/zero", "neither a file nor a pipe");
}

TEST_F(RecordingTest, TellsWhatElseWentWrong) {
  write_sines("sound.wav", SF_FORMAT_WAV | SF_FORMAT_PCM_16, 1);
  expect_failure("$program sound.wav > /dev/full", "cannot write to standard output");
  expect_failure("$program --help > /dev/full", "cannot write to standard output");
  fs::create_directory("programs");
  expect_failure("PATH=programs $program sound.wav", "gnuplot cannot be started");
  write_bytes("programs/gnuplot", "#!/bin/sh\nexit 3\n");
  fs::permissions("programs/gnuplot", fs::perms::owner_all);
  expect_failure("PATH=programs $program sound.wav", "gnuplot failed");
  // The folder is looked at first, before an input that may take long to read.
  expect_failure("$program --output sound.wav/pictures missing.wav", "sound.wav/pictures: ");
  expect_failure("$program --clean 4 sound.wav", "has no middle");
  expect_failure("$program --reduce 3 sound.wav", "8000 Hz cannot be reduced by a factor of 3");
  expect_failure("$program --clicks many sound.wav", "'many' is no number from 0 to 1000");
  expect_failure("$program --tone 24000", "is no number of Hz from 0.01 to less than half");
  expect_failure("$program --tone 440 sound.wav", "takes no file");
  expect_failure("$program sound.wav other.wav", "two files are named");
  expect_failure("$program --loud sound.wav", "no option --loud");
  expect_failure("$program ''", "No such file");
  expect_failure("$program --seconds 2 sound.wav", "--seconds is for --tone");
  expect_failure("$program --threshold 0 sound.wav", "--threshold is for --clean");
  expect_failure("$program --output . --copy sound.copy.wav sound.wav", "another file of the output");
  expect_failure("$program --tone 440 --seconds 30000", "too long for a WAV file");
  expect_failure("$program --tone 440 --seconds 0.001 --clean 51", "has 48 samples, and the median takes 51");
}

// Sounds that the program wrote, as it was asked to.
const char* const kSuffixes[] = {"clicks", "cleaned", "reduced"};

TEST_F(RecordingTest, SeamsBetweenBlocksCannotBeSeen) {
  write_sines("sines.wav", SF_FORMAT_WAV | SF_FORMAT_PCM_24, 2);
  const struct {
    std::string sound, stem;
  } rows[] = {{"sines.wav", "sines"}, {"--tone 440.5 --seconds 0.3", "triangle-440.5Hz"}};
  for (const auto& [sound, stem] : rows) {
    const std::string command = "$program --output o --clicks 20 --clean 9 --reduce 5 " + sound + " --block ";
    const Result whole = run(command + "1000000");
    ASSERT_EQ(whole.exit_status, 0) << whole.output;
    std::vector<std::string> files;
    for (const std::string suffix : kSuffixes)
      files.push_back(read_bytes("o/" + stem + "." + suffix + ".wav"));
    for (const int block : {1, 10, 64, 333, 4096}) {
      EXPECT_EQ(run(command + std::to_string(block)).output, whole.output) << "block " << block;
      for (std::size_t i = 0; i < files.size(); ++i) {
        const std::string name = "o/" + stem + "." + kSuffixes[i] + ".wav";
        ASSERT_GT(files[i].size(), kHeader + 1000) << name;
        EXPECT_EQ(read_bytes(name) == files[i], true) << name << ", block " << block;
      }
    }
  }
}

TEST_F(RecordingTest, RemovesTheClicksThatItAdds) {
  const Result result = run("$program --output . --tone 100 --seconds 2.5 --clicks 30 --clean 5");
  ASSERT_EQ(result.exit_status, 0) << result.output;
  const std::vector<int> before = read("triangle-100Hz.wav"), clicks = read("triangle-100Hz.clicks.wav"),
                         after = read("triangle-100Hz.cleaned.wav");
  ASSERT_EQ(clicks.size(), before.size());
  ASSERT_EQ(after.size(), before.size());
  std::size_t clicked = 0;
  for (std::size_t i = 0; i < before.size(); ++i) {
    const double sample = std::ldexp(before[i], -31);
    clicked += std::abs(std::ldexp(clicks[i], -31) - sample) > 0.29;
    ASSERT_NEAR(std::ldexp(after[i], -31), sample, 0.01) << i;
  }
  // 30 clicks of two samples in each of two seconds, and about half as many in the rest. Two may meet.
  EXPECT_GT(clicked, 130u);
  EXPECT_LT(clicked, 170u);
}

TEST_F(RecordingTest, ReducesToTheMeanOfEachGroup) {
  write_sines("sines.wav", SF_FORMAT_WAV | SF_FORMAT_PCM_24, 3);
  ASSERT_EQ(run("$program --output . --reduce 4 sines.wav").exit_status, 0);
  const std::vector<int> before = read("sines.wav"), after = read("sines.reduced.wav");
  ASSERT_EQ(after.size(), std::size_t{kLength / 4 * 3});
  for (std::size_t i = 0; i < after.size(); ++i) {
    double mean = 0;
    for (std::size_t k = 0; k < 4; ++k) mean += before[(i / 3 * 4 + k) * 3 + i % 3] / 4.0;
    ASSERT_NEAR(after[i], mean, 400);  // of 2^31: rounded to 24 bits
  }
}

TEST_F(RecordingTest, GeneratesATriangleWave) {
  const Result result = run("$program --output . --tone 440 --seconds 2");
  const auto measured = summaries(result.output);
  ASSERT_EQ(measured.size(), 1u) << result.output;
  EXPECT_NEAR(measured[0].level, decibels(0.5 / std::sqrt(3)), 0.02);
  EXPECT_NEAR(measured[0].peak, decibels(0.5), 0.02);
  EXPECT_NEAR(measured[0].crossings, 880, 1);
  const std::vector<int> samples = read("triangle-440Hz.wav");
  ASSERT_EQ(samples.size(), 96000u);
  for (std::size_t i = 0; i < samples.size(); ++i) {
    const double turns = std::fmod(440.0 * static_cast<double>(i) / 48000, 1.0);
    ASSERT_NEAR(std::ldexp(samples[i], -31), 0.5 * (std::abs(4 * turns - 2) - 1), 1e-6) << i;
  }
}

TEST_F(RecordingTest, TakesNoMoreMemoryForALongFile) {
#ifndef __SANITIZE_ADDRESS__  // which takes far more memory itself
  write_sines("sound.wav", SF_FORMAT_WAV | SF_FORMAT_PCM_16, 1);
  // 64 MiB of samples, which are twice that in float, in 80 MB of memory.
  fs::resize_file("sound.wav", 1 << 26);
  std::fstream(folder_ / "sound.wav").seekp(kDataLengthAt).write("\xFF\xFF\xFF\xFF", 4);
  fs::create_directory("programs");
  write_bytes("programs/gnuplot", "#!/bin/sh\nulimit -S -v unlimited\nexec /usr/bin/gnuplot \"$@\"\n");
  fs::permissions("programs/gnuplot", fs::perms::owner_all);
  const Result result = run("ulimit -S -v 80000; PATH=programs $program --clean 3 sound.wav");
  EXPECT_EQ(result.exit_status, 0) << result.output;
#endif
}

}  // namespace
