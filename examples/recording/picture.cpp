#include "picture.h"

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstring>
#include <fstream>
#include <string>
#include <system_error>

namespace {

constexpr std::size_t kDrawnChannels = 8;
constexpr int kWidth = 1400;               // pixels
constexpr int32_t kEnvelopePoints = 1200;  // about one a pixel
constexpr int kWaveHeight = 230;
constexpr int kMeasureHeight = 230;
constexpr int kFrame = 80;  // title above and time below all panels

constexpr char kStyle[] = R"(
colors = '#2468a8 #c8541e #2e8b57 #8a4fa0 #a0842e #3aa0a0 #b03060 #606060'
set linetype cycle 8
do for [i=1:8] { set linetype i linecolor rgb word(colors, i) linewidth 1.4 }
set border 3 linecolor '#808080'
set tics nomirror textcolor '#404040'
set grid linecolor '#e4e4e4' linetype 1
set key tmargin right horizontal samplen 2 textcolor '#404040'
set lmargin 11
set rmargin 3
set tmargin 2
set bmargin 1.5
set format x ''
# Silence has no level; drawn at the bottom it does not tear the curves.
audible(level) = level > -80 ? level : -80
)";

// A text in a gnuplot script.
std::string quoted(const std::string& text) {
  std::string result = "'";
  for (const char c : text) {
    if (c == '\'') result += '\'';
    result += static_cast<unsigned char>(c) < ' ' ? '?' : c;
  }
  return result + "'";
}

std::ofstream create(const std::filesystem::path& file) {
  std::ofstream stream(file);
  if (!stream) throw std::runtime_error(file.string() + ": cannot be written");
  return stream;
}

void finish(std::ofstream& stream, const std::filesystem::path& file) {
  stream.close();
  if (!stream) throw std::runtime_error(file.string() + ": cannot be written completely");
}

// Lowest and highest sample of each short stretch: the outline that the wave has when it is drawn this wide.
void write_envelope(const Recording& recording, std::size_t channel, const std::filesystem::path& file) {
  auto stream = create(file);
  const int32_t stretch = std::max(recording.length / kEnvelopePoints, int32_t{1});
  const float* const samples = recording.channels[channel].get();
  for (int32_t start = 0; start < recording.length; start += std::min(stretch, recording.length - start)) {
    float lowest, highest;
    check(ZIVKS_MinMax_32f(samples + start, std::min(stretch, recording.length - start), &lowest, &highest));
    stream << static_cast<double>(start) / recording.sample_rate << '\t' << lowest << '\t' << highest << '\n';
  }
  finish(stream, file);
}

void write_measures(const std::vector<Measures>& frames, const std::filesystem::path& file) {
  auto stream = create(file);
  stream << "# middle/s\tlevel/dBFS\tpeak/dBFS\tcrossings/s\n";
  for (const Measures& frame : frames) {
    stream << frame.start + frame.seconds / 2 << '\t' << frame.level_db() << '\t' << frame.peak_db() << '\t'
           << frame.crossings_per_second() << '\n';
  }
  finish(stream, file);
}

void run_gnuplot(const std::filesystem::path& script) {
  std::string program = "gnuplot", argument = script.string();
  char* const arguments[] = {program.data(), argument.data(), nullptr};
  pid_t child;
  const int error = posix_spawnp(&child, program.c_str(), nullptr, nullptr, arguments, environ);
  if (error != 0) throw std::runtime_error(std::string("gnuplot cannot be started: ") + std::strerror(error));
  int status;
  if (waitpid(child, &status, 0) != child || !WIFEXITED(status) || WEXITSTATUS(status) != 0) {
    throw std::runtime_error("gnuplot failed on " + script.string());
  }
}

}  // namespace

void prepare_folder(const std::filesystem::path& folder) {
  std::error_code error;
  std::filesystem::create_directories(folder, error);
  if (!error && access(folder.c_str(), W_OK | X_OK) != 0) error.assign(errno, std::generic_category());
  if (error) throw std::runtime_error(folder.string() + ": " + error.message());
}

std::filesystem::path draw(const Recording& recording, const std::vector<Channel>& channels,
                           const std::filesystem::path& folder) {
  const std::string name = std::filesystem::path(recording.name).stem().string();
  const auto output_file = [&](const std::string& suffix) {
    std::filesystem::path file = folder / (name + suffix);
    refuse_to_overwrite(recording, file);
    return file;
  };
  const std::filesystem::path picture = output_file(".png"), script = output_file(".gnuplot");
  const std::size_t drawn = std::min(channels.size(), kDrawnChannels);
  const auto data_file = [&](std::size_t channel, const char* kind) {
    return output_file(".channel" + std::to_string(channel + 1) + "." + kind + ".tsv");
  };
  for (std::size_t i = 0; i < drawn; ++i) {
    write_envelope(recording, i, data_file(i, "wave"));
    write_measures(channels[i].frames, data_file(i, "measures"));
  }

  // All channels have the same axes, so that they can be compared. The axes of silence are not empty.
  double highest_peak = 0.01, highest_rate = 10;
  for (std::size_t i = 0; i < drawn; ++i) {
    for (const Measures& frame : channels[i].frames) {
      highest_peak = std::max(highest_peak, frame.peak);
      highest_rate = std::max(highest_rate, frame.crossings_per_second());
    }
  }

  const int height = static_cast<int>(drawn) * kWaveHeight + 2 * kMeasureHeight + kFrame;
  std::string title = recording.description();
  if (drawn < channels.size()) title += ", the first " + std::to_string(drawn) + " channels";
  const auto channel_label = [&](std::size_t i) {
    if (channels.size() == 1) return std::string();
    if (channels.size() == 2) return std::string(i == 0 ? " left" : " right");
    return " " + std::to_string(i + 1);
  };

  // One curve a channel in the same panel, in the colour of the channel's wave.
  const auto curves = [&](const std::string& columns, const std::string& style, const std::string& label) {
    std::string text;
    for (std::size_t i = 0; i < drawn; ++i) {
      text += (i == 0 ? "" : ", ") + quoted(data_file(i, "measures").string()) + " using " + columns +
              " with " + style + " linetype " + std::to_string(i + 1) + " title " +
              quoted(i == 0 ? label : "");
    }
    return text;
  };
  {
    auto stream = create(script);
    stream << "set terminal pngcairo noenhanced size " << kWidth << ',' << height
           << " background '#ffffff' font 'DejaVu Sans,11'\n"
           << "set output " << quoted(picture.string()) << kStyle << "set xrange [0:" << recording.seconds()
           << "]\n"
           << "set multiplot layout " << drawn + 2 << ",1 title " << quoted(title)
           << " font ',15' offset 0,-0.3\n";
    for (std::size_t i = 0; i < drawn; ++i) {
      const std::string line = " with lines notitle linetype " + std::to_string(i + 1) + " linewidth 0.5";
      stream << "set ylabel " << quoted("wave" + channel_label(i)) << "\n"
             << "set yrange [" << -1.05 * highest_peak << ':' << 1.05 * highest_peak << "]\n"
             << "plot " << quoted(data_file(i, "wave").string())
             << " using 1:2:3 with filledcurves notitle linetype " << i + 1 << ", '' using 1:2" << line
             << ", '' using 1:3" << line << "\n";
    }
    const std::string level = "1:(audible($2))", peak = "1:(audible($3))";
    stream << "set ylabel 'dBFS'\nset yrange [-80:0]\nset ytics 20\nplot ";
    // Filled areas of several channels would hide one another.
    if (drawn == 1) stream << curves(level, "filledcurves y=-80 fillstyle solid 0.2", "") << ", ";
    stream << curves(level, "lines", "level") << ", " << curves(peak, "lines dashtype '.'", "peak") << "\n"
           << "set ylabel 'zero crossings/s'\nset yrange [0:" << 1.05 * highest_rate
           << "]\nset ytics autofreq\n"
           << "set xlabel 'time/s' offset 0,0.5\nset format x '%g'\nset bmargin 2.5\n"
           << "plot " << curves("1:4", "lines", "") << "\n"
           << "unset multiplot\n";
    finish(stream, script);
  }

  std::filesystem::remove(picture);
  run_gnuplot(script);
  if (!std::filesystem::exists(picture)) throw std::runtime_error("gnuplot made no picture");
  return picture;
}
