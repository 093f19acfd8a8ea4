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
    std::vector<int> samples(static_cast<std::size_t>(length * channels)), copied(samples.size());
    for (int& sample : samples) sample = static_cast<int>(random() >> unused_bits << unused_bits);
    samples.front() = INT_MIN;
    samples.back() = INT_MAX >> unused_bits << unused_bits;
    write("sound.wav", format, channels, samples);
    const Result result = run("$program --copy copy.wav sound.wav");
    ASSERT_EQ(result.exit_status, 0) << result.output;

    SF_INFO info = {};
    SNDFILE* const sound = sf_open("copy.wav", SFM_READ, &info);
    EXPECT_EQ(info.format & SF_FORMAT_SUBMASK, SF_FORMAT_PCM_24);
    EXPECT_EQ(info.channels, channels);
    EXPECT_EQ(info.frames, length);
    sf_read_int(sound, copied.data(), static_cast<sf_count_t>(copied.size()));
    sf_close(sound);
    EXPECT_EQ(copied, samples) << std::hex << format << ", " << channels << " channels";
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
#ifndef __SANITIZE_ADDRESS__  // which takes far more memory itself
  // Half a gigabyte of samples, in half a gigabyte of memory.
  fs::resize_file("sound.wav", 1 << 29);
  std::fstream(folder_ / "sound.wav").seekp(kDataLengthAt).write("\xFF\xFF\xFF\xFF", 4);
  expect_failure("ulimit -v 500000; $program sound.wav", "not enough memory");
#endif
}

}  // namespace
