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
#include <vector>

namespace {

constexpr std::size_t kDrawnChannels = 8;
constexpr int kWidth = 1400;  // pixels
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

void write_outlines(const std::vector<Outline>& outlines, const std::filesystem::path& file) {
  auto stream = create(file);
  for (const Outline& outline : outlines) {
    stream << outline.start << '\t' << outline.lowest << '\t' << outline.highest << '\n';
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

std::filesystem::path draw(const SoundInfo& sound, const Report& report,
                           const std::filesystem::path& folder) {
  const std::filesystem::path picture = output_file(sound, folder, ".png"),
                              script = output_file(sound, folder, ".gnuplot");
  const std::size_t channels = report.tracks.front().channels.size();
  const std::size_t drawn = std::min(channels, kDrawnChannels);
  // What is drawn: the sound after the last stage, and before it if there is one.
  std::vector<const Track*> tracks;
  if (report.tracks.size() > 1) tracks.push_back(&report.tracks[report.tracks.size() - 2]);
  tracks.push_back(&report.tracks.back());

  const auto data_file = [&](std::size_t track, std::size_t channel, const std::string& kind) {
    const std::string stage = tracks.size() == 1 ? "." : track == 0 ? ".before." : ".after.";
    return output_file(sound, folder, ".channel" + std::to_string(channel + 1) + stage + kind + ".tsv");
  };
  // All waves have the same axes, so that they can be compared. The axes of silence are not empty.
  double highest_peak = 0.01, highest_rate = 10;
  for (std::size_t t = 0; t < tracks.size(); ++t) {
    for (std::size_t i = 0; i < drawn; ++i) {
      const Channel& channel = tracks[t]->channels[i];
      write_outlines(channel.outlines, data_file(t, i, "wave"));
      write_measures(channel.frames, data_file(t, i, "measures"));
      for (const Measures& frame : channel.frames) {
        highest_peak = std::max(highest_peak, frame.peak);
        highest_rate = std::max(highest_rate, frame.crossings_per_second());
      }
    }
  }

  const std::size_t waves = drawn * tracks.size();
  const int height = static_cast<int>(waves) * kWaveHeight + 2 * kMeasureHeight + kFrame;
  std::string title = sound.description();
  if (drawn < channels) title += ", the first " + std::to_string(drawn) + " channels";
  const auto wave_label = [&](std::size_t track, std::size_t channel) {
    std::string label = tracks.size() == 1 ? "wave" : track == 0 ? "before" : "after";
    if (channels == 2) label += channel == 0 ? " left" : " right";
    if (channels > 2) label += " " + std::to_string(channel + 1);
    return label;
  };

  // One curve a channel in the same panel, in the colour of the channel's wave; before the last stage, thin and grey.
  const auto curves = [&](const std::string& columns, const std::string& style, const std::string& label) {
    std::string text;
    for (std::size_t t = 0; t < tracks.size(); ++t) {
      const bool is_before = t + 1 < tracks.size();
      for (std::size_t i = 0; i < drawn; ++i) {
        const std::string colour =
            is_before ? "linecolor '#a0a0a0' linewidth 0.7" : "linetype " + std::to_string(i + 1);
        const std::string key = label.empty() || i > 0 ? "" : is_before ? label + " before" : label;
        text += (text.empty() ? "" : ", ") + quoted(data_file(t, i, "measures").string()) + " using " +
                columns + " with " + style + " " + colour + " title " + quoted(key);
      }
    }
    return text;
  };
  {
    auto stream = create(script);
    stream << "set terminal pngcairo noenhanced size " << kWidth << ',' << height
           << " background '#ffffff' font 'DejaVu Sans,11'\n"
           << "set output " << quoted(picture.string()) << kStyle << "set xrange [0:" << sound.seconds()
           << "]\n"
           << "set multiplot layout " << waves + 2 << ",1 title " << quoted(title)
           << " font ',15' offset 0,-0.3\n";
    for (std::size_t i = 0; i < drawn; ++i) {
      for (std::size_t t = 0; t < tracks.size(); ++t) {
        const std::string line = " with lines notitle linetype " + std::to_string(i + 1) + " linewidth 0.5";
        stream << "set ylabel " << quoted(wave_label(t, i)) << "\n"
               << "set yrange [" << -1.05 * highest_peak << ':' << 1.05 * highest_peak << "]\n"
               << "plot " << quoted(data_file(t, i, "wave").string())
               << " using 1:2:3 with filledcurves notitle linetype " << i + 1 << ", '' using 1:2" << line
               << ", '' using 1:3" << line << "\n";
      }
    }
    const std::string level = "1:(audible($2))", peak = "1:(audible($3))";
    stream << "set ylabel 'dBFS'\nset yrange [-80:0]\nset ytics 20\nplot ";
    // Filled areas of several curves would hide one another.
    if (waves == 1) stream << curves(level, "filledcurves y=-80 fillstyle solid 0.2", "") << ", ";
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
