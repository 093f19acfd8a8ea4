// Runs the program as a user does: on sound files whose measures are known, and on what is no such file.
#include <gtest/gtest.h>
#include <sndfile.h>
#include <sys/wait.h>

#include <climits>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <sstream>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;

constexpr int kSampleRate = 8000;
constexpr int kLength = 8123;  // no whole number of frames

struct Result {
  int exit_status;
  std::string output;  // of both streams
};

class RecordingTest : public testing::Test {
 protected:
  void SetUp() override {
    std::string pattern = (fs::temp_directory_path() / "recording-test-XXXXXX").string();
    ASSERT_NE(mkdtemp(pattern.data()), nullptr);
    folder_ = pattern;
    output_ = folder_ / "pictures";
  }
  void TearDown() override { fs::remove_all(folder_); }

  Result run(const fs::path& sound, const std::string& environment = "",
             const std::string& options = "") const {
    const std::string command = environment + " " RECORDING_PROGRAM " --output \"" + output_.string() +
                                "\" " + options + " \"" + sound.string() + "\" 2>&1";
    FILE* const pipe = popen(command.c_str(), "r");
    std::string output;
    for (int c; (c = std::fgetc(pipe)) != EOF;) output += static_cast<char>(c);
    const int status = pclose(pipe);
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, output};
  }

  // Channel c holds a sine of 500 (c + 1) Hz and 2^-(c + first) amplitude around an offset of c / 8.
  fs::path write_sines(int format, int channels, int first = 1) const {
    SF_INFO info = {0, kSampleRate, channels, format, 0, 0};
    const fs::path file = folder_ / "it's a test.wav";
    SNDFILE* const sound = sf_open(file.c_str(), SFM_WRITE, &info);
    std::vector<double> samples;
    for (int i = 0; i < kLength; ++i) {
      for (int c = 0; c < channels; ++c) {
        // The phase keeps samples off zero.
        const double turns = 500.0 * (c + 1) * i / kSampleRate + 1.0 / 37;
        samples.push_back(std::ldexp(std::sin(2 * M_PI * turns), -(c + first)) + c / 8.0);
      }
    }
    EXPECT_EQ(sf_writef_double(sound, samples.data(), kLength), kLength);
    EXPECT_EQ(sf_close(sound), 0);
    return file;
  }

  fs::path write_bytes(const std::string& bytes) const {
    const fs::path file = folder_ / "bytes.wav";
    std::ofstream(file, std::ios::binary) << bytes;
    return file;
  }

  static std::string read_bytes(const fs::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
  }

  fs::path folder_;
  fs::path output_;
};

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
    std::string number, offset, level, peak, crossings;
    std::istringstream(line) >> number >> offset >> level >> peak >> crossings;
    EXPECT_EQ(number, std::to_string(result.size() + 1));
    result.push_back({std::stod(offset), std::stod(level), std::stod(peak), std::stod(crossings)});
  }
  return result;
}

double decibels(double amplitude) { return 20 * std::log10(amplitude); }

TEST_F(RecordingTest, MeasuresEveryChannelOfEveryFormat) {
  for (const int subtype : {SF_FORMAT_PCM_16, SF_FORMAT_PCM_24}) {
    for (const int container : {SF_FORMAT_WAV, SF_FORMAT_WAVEX}) {
      for (int channels = 1; channels <= 4; ++channels) {
        SCOPED_TRACE(testing::Message()
                     << std::hex << (container | subtype) << ", " << channels << " channels");
        const Result result = run(write_sines(container | subtype, channels));
        EXPECT_EQ(result.exit_status, 0) << result.output;
        const auto measured = summaries(result.output);
        ASSERT_EQ(measured.size(), static_cast<std::size_t>(channels)) << result.output;
        for (int c = 0; c < channels; ++c) {
          const Summary& channel = measured[static_cast<std::size_t>(c)];
          const double amplitude = std::ldexp(1, -(c + 1));
          EXPECT_NEAR(channel.offset, c / 8.0, 0.001);
          EXPECT_NEAR(channel.level, decibels(amplitude / std::sqrt(2)), 0.02);
          // 90 degrees lie between two samples of each sine, the nearer one 360 / 37 degrees off.
          EXPECT_NEAR(channel.peak, decibels(amplitude * std::cos(2 * M_PI / 37)), 0.03);
          EXPECT_NEAR(channel.crossings, 1000 * (c + 1), 3);
        }
      }
    }
  }
}

TEST_F(RecordingTest, FollowsTheLevelOverTime) {
  const Result result = run(write_sines(SF_FORMAT_WAV | SF_FORMAT_PCM_16, 1, 0));
  int rows = 0;
  std::istringstream lines(result.output);
  for (std::string line; std::getline(lines, line);) {
    double start, level, peak, crossings;
    std::string bar;
    std::istringstream row(line);
    if (!(row >> start >> level >> peak >> crossings >> bar) || bar[0] != '#') continue;
    EXPECT_NEAR(start, 0.06 * rows, 1e-9);
    EXPECT_NEAR(level, -3.01, 0.11);
    ++rows;
  }
  EXPECT_EQ(rows, 17) << result.output;  // 51 frames, three a line
}

TEST_F(RecordingTest, DrawsAPictureAndEndsWithItsPath) {
  const Result result = run(write_sines(SF_FORMAT_WAV | SF_FORMAT_PCM_24, 2));
  const fs::path picture = output_ / "it's a test.png";
  const std::string last_line = "\nPicture: " + picture.string() + "\n";
  EXPECT_EQ(result.output.substr(result.output.size() - last_line.size()), last_line);
  const std::string bytes = read_bytes(picture);
  EXPECT_EQ(bytes.substr(0, 8), "\x89PNG\r\n\x1a\n");
  EXPECT_GT(bytes.size(), 20000u);
}

std::vector<int> read_samples(const fs::path& file, int* format, int* channels) {
  SF_INFO info = {};
  SNDFILE* const sound = sf_open(file.c_str(), SFM_READ, &info);
  std::vector<int> samples(static_cast<std::size_t>(info.frames * info.channels));
  sf_read_int(sound, samples.data(), static_cast<sf_count_t>(samples.size()));
  sf_close(sound);
  *format = info.format & SF_FORMAT_SUBMASK;
  *channels = info.channels;
  return samples;
}

TEST_F(RecordingTest, CopiesSamplesBitForBit) {
  const fs::path file = folder_ / "samples.wav", copy = folder_ / "copy.wav";
  std::mt19937 random(24);
  const struct {
    int format, channels, length;
  } rows[] = {{SF_FORMAT_WAV | SF_FORMAT_PCM_24, 1, kLength},
              {SF_FORMAT_WAV | SF_FORMAT_PCM_24, 1, 1},
              {SF_FORMAT_WAV | SF_FORMAT_PCM_24, 1, 2},
              {SF_FORMAT_WAV | SF_FORMAT_PCM_24, 2, kLength},
              {SF_FORMAT_WAVEX | SF_FORMAT_PCM_24, 3, kLength},
              {SF_FORMAT_WAV | SF_ENDIAN_BIG | SF_FORMAT_PCM_24, 2, kLength},
              {SF_FORMAT_WAV | SF_FORMAT_PCM_16, 2, kLength}};
  for (const auto& [format, channels, length] : rows) {
    SCOPED_TRACE(testing::Message() << std::hex << format << ", " << channels << " channels");
    const unsigned unused_bits = (format & SF_FORMAT_SUBMASK) == SF_FORMAT_PCM_24 ? 8 : 16;
    std::vector<int> samples(static_cast<std::size_t>(length * channels));
    for (int& sample : samples) sample = static_cast<int>(random() >> unused_bits << unused_bits);
    samples.front() = INT_MIN;
    samples.back() = INT_MAX >> unused_bits << unused_bits;
    SF_INFO info = {0, kSampleRate, channels, format, 0, 0};
    SNDFILE* const sound = sf_open(file.c_str(), SFM_WRITE, &info);
    ASSERT_EQ(sf_writef_int(sound, samples.data(), length), length);
    ASSERT_EQ(sf_close(sound), 0);

    const Result result = run(file, "", "--copy \"" + copy.string() + "\"");
    ASSERT_EQ(result.exit_status, 0) << result.output;
    int copied_format, copied_channels;
    EXPECT_EQ(read_samples(copy, &copied_format, &copied_channels), samples);
    EXPECT_EQ(copied_format, SF_FORMAT_PCM_24);
    EXPECT_EQ(copied_channels, channels);
  }
  const Result result = run(file, "", "--copy \"" + (folder_ / "missing" / "copy.wav").string() + "\"");
  EXPECT_EQ(result.exit_status, 1);
  EXPECT_NE(result.output.find("cannot be written"), std::string::npos) << result.output;
}

TEST_F(RecordingTest, SilenceHasNoLevelAndNoPeak) {
  const fs::path file = folder_ / "silence.wav";
  SF_INFO info = {0, kSampleRate, 1, SF_FORMAT_WAV | SF_FORMAT_PCM_24, 0, 0};
  SNDFILE* const sound = sf_open(file.c_str(), SFM_WRITE, &info);
  const std::vector<int> zeros(kLength);
  sf_writef_int(sound, zeros.data(), kLength);
  sf_close(sound);

  const Result result = run(file);
  EXPECT_EQ(result.exit_status, 0) << result.output;
  const auto measured = summaries(result.output);
  ASSERT_EQ(measured.size(), 1u) << result.output;
  EXPECT_EQ(measured[0].offset, 0);
  EXPECT_EQ(measured[0].level, -INFINITY);
  EXPECT_EQ(measured[0].peak, -INFINITY);
  EXPECT_EQ(measured[0].crossings, 0);
}

TEST_F(RecordingTest, RefusesWhatIsNoWholeSoundFileOfItsFormats) {
  const std::string whole = read_bytes(write_sines(SF_FORMAT_WAV | SF_FORMAT_PCM_16, 2));
  struct Case {
    fs::path file;
    std::string bytes, message;
  };
  const std::vector<Case> cases = {
      {folder_ / "missing.wav", "", "no such file"},
      {folder_, "", "not a regular file"},
      {write_bytes(""), "", "the file is empty"},
      {"", "This is a text, not a sound.\n", "not a sound file"},
      {"", whole.substr(0, 20), "not a sound file"},
      {"", whole.substr(0, 44), "the file is truncated"},
      {"", whole.substr(0, whole.size() - 1), "the file is truncated"},
      {"", whole.substr(0, whole.size() / 2), "the file is truncated"},
  };
  for (const Case& one : cases) {
    const Result result = run(one.bytes.empty() ? one.file : write_bytes(one.bytes));
    EXPECT_EQ(result.exit_status, 1) << one.message;
    EXPECT_NE(result.output.find(one.message), std::string::npos) << result.output;
  }
  for (const int format :
       {SF_FORMAT_WAV | SF_FORMAT_PCM_U8, SF_FORMAT_WAV | SF_FORMAT_PCM_32, SF_FORMAT_WAV | SF_FORMAT_FLOAT,
        SF_FORMAT_AIFF | SF_FORMAT_PCM_16, SF_FORMAT_FLAC | SF_FORMAT_PCM_16}) {
    const Result result = run(write_sines(format, 1));
    EXPECT_EQ(result.exit_status, 1) << std::hex << format;
    EXPECT_NE(result.output.find("only WAV files of 16 or 24 bits"), std::string::npos) << result.output;
  }
}

TEST_F(RecordingTest, RefusesAFileWithoutSamples) {
  const fs::path file = folder_ / "header.wav";
  SF_INFO info = {0, kSampleRate, 1, SF_FORMAT_WAV | SF_FORMAT_PCM_16, 0, 0};
  sf_close(sf_open(file.c_str(), SFM_WRITE, &info));
  const Result result = run(file);
  EXPECT_EQ(result.exit_status, 1);
  EXPECT_NE(result.output.find("holds no samples"), std::string::npos) << result.output;
}

TEST_F(RecordingTest, TellsWhyThereIsNoPicture) {
  const fs::path sound = write_sines(SF_FORMAT_WAV | SF_FORMAT_PCM_16, 1);
  const fs::path programs = folder_ / "programs";
  fs::create_directory(programs);
  const auto expect_failure = [&](const std::string& message, const std::string& environment) {
    const Result result = run(sound, environment);
    EXPECT_EQ(result.exit_status, 1) << message;
    EXPECT_NE(result.output.find(message), std::string::npos) << result.output;
  };
  expect_failure("gnuplot cannot be started", "PATH=" + programs.string());
  std::ofstream(programs / "gnuplot") << "#!/bin/sh\nexit 3\n";
  fs::permissions(programs / "gnuplot", fs::perms::owner_all);
  expect_failure("gnuplot failed", "PATH=" + programs.string());
  std::ofstream(output_ = folder_ / "file") << "in the way of a folder";
  expect_failure("file", "");
}

}  // namespace
