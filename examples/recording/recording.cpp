#include "recording.h"

#include <sndfile.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <limits>
#include <string>
#include <utility>

namespace {

struct Close {
  void operator()(SNDFILE* sound) const { sf_close(sound); }
};
using SoundFile = std::unique_ptr<SNDFILE, Close>;

std::runtime_error failure(const std::filesystem::path& file, const std::string& what) {
  return std::runtime_error(file.string() + ": " + what);
}

void check_is_readable(const std::filesystem::path& file) {
  std::error_code error;
  const auto status = std::filesystem::status(file, error);
  if (!std::filesystem::exists(status)) throw failure(file, "no such file");
  if (!std::filesystem::is_regular_file(status)) throw failure(file, "not a regular file");
  if (std::filesystem::file_size(file) == 0) throw failure(file, "the file is empty");
  if (!std::ifstream(file)) throw failure(file, "the file cannot be read");
}

std::string format_name(int format) {
  SF_FORMAT_INFO major = {format & SF_FORMAT_TYPEMASK, nullptr, nullptr};
  SF_FORMAT_INFO subtype = {format & SF_FORMAT_SUBMASK, nullptr, nullptr};
  sf_command(nullptr, SFC_GET_FORMAT_INFO, &major, sizeof major);
  sf_command(nullptr, SFC_GET_FORMAT_INFO, &subtype, sizeof subtype);
  return std::string(major.name ? major.name : "unknown") + ", " + (subtype.name ? subtype.name : "unknown");
}

int bits_of_sample(const std::filesystem::path& file, int format) {
  const int major = format & SF_FORMAT_TYPEMASK;
  const int subtype = format & SF_FORMAT_SUBMASK;
  if (major == SF_FORMAT_WAV || major == SF_FORMAT_WAVEX) {
    if (subtype == SF_FORMAT_PCM_16) return 16;
    if (subtype == SF_FORMAT_PCM_24) return 24;
  }
  throw failure(file, "only WAV files of 16 or 24 bits are supported, this is " + format_name(format));
}

// libsndfile quietly reads what is there of a file that breaks off; here that is an error. So the length in
// the header of the data chunk is compared with the bytes behind it.
void check_is_whole(const std::filesystem::path& file) {
  std::ifstream stream(file, std::ios::binary);
  std::array<unsigned char, 12> riff{};
  stream.read(reinterpret_cast<char*>(riff.data()), riff.size());
  const bool big_endian = std::memcmp(riff.data(), "RIFX", 4) == 0;

  const std::uintmax_t file_size = std::filesystem::file_size(file);
  std::uintmax_t offset = riff.size();
  std::array<unsigned char, 8> chunk{};  // name and length
  while (stream.seekg(static_cast<std::streamoff>(offset)) &&
         stream.read(reinterpret_cast<char*>(chunk.data()), chunk.size())) {
    std::uintmax_t length = 0;
    for (unsigned i = 0; i < 4; ++i) length = length << 8 | chunk[big_endian ? 4 + i : 7 - i];
    offset += chunk.size();
    if (std::memcmp(chunk.data(), "data", 4) == 0) {
      const std::uintmax_t present = file_size - offset;
      if (length <= present) return;
      throw failure(file, "the file is truncated: its header promises " + std::to_string(length) +
                              " bytes of samples, and there are " + std::to_string(present));
    }
    offset += length + length % 2;
  }
  throw failure(file, "the file is truncated: it ends before its samples");
}

void check_count(const std::filesystem::path& file, sf_count_t read, sf_count_t expected) {
  if (read != expected) throw failure(file, "the file is truncated: its samples end too early");
}

// For other than two channels; two are one complex array to the library.
void split(const float* interleaved, std::vector<Array<float>>& channels, int32_t length) {
  for (int32_t i = 0; i < length; ++i) {
    for (auto& channel : channels) channel[static_cast<std::size_t>(i)] = *interleaved++;
  }
}

void merge(const std::vector<Array<float>>& channels, float* interleaved, int32_t length) {
  for (int32_t i = 0; i < length; ++i) {
    for (const auto& channel : channels) *interleaved++ = channel[static_cast<std::size_t>(i)];
  }
}

Array<float> read_16_bits(SNDFILE* sound, const std::filesystem::path& file, int32_t total) {
  constexpr double kFullScale = 32768;
  auto samples = own(ZIVKS_Malloc_16s(total));
  check_count(file, sf_read_short(sound, samples.get(), total), total);
  auto interleaved = own(ZIVKS_Malloc_32f(total));
  check(ZIVKS_Convert_16s32f_S(samples.get(), interleaved.get(), total, kFullScale));
  return interleaved;
}

constexpr double kFullScaleOf24Bits = 8388608;

// The bytes as they stand in the file, lowest first or, in RIFX files, highest.
Array<float> read_24_bits(SNDFILE* sound, const std::filesystem::path& file, int32_t total) {
  // To convert signed samples takes three of them at least.
  const int32_t padding = std::max(3 - total, 0), padded = total + padding;
  auto bytes = own(ZIVKS_Malloc_8u(3 * padded));
  check_count(file, sf_read_raw(sound, bytes.get(), sf_count_t{3} * total), sf_count_t{3} * total);
  if (padding > 0) check(ZIVKS_Zero_8u(bytes.get() + 3 * total, 3 * padding));
  if (sf_command(sound, SFC_RAW_DATA_NEEDS_ENDSWAP, nullptr, 0) == SF_TRUE) {
    check(ZIVKS_SwapBytes_24u_I(bytes.get(), total));
  }
  auto samples = own(ZIVKS_Malloc_32s(padded));
  check(ZIVKS_Convert_24s32s(bytes.get(), samples.get(), padded));
  auto interleaved = own(ZIVKS_Malloc_32f(total));
  check(ZIVKS_Convert_32s32f_S(samples.get(), interleaved.get(), total, kFullScaleOf24Bits));
  return interleaved;
}

std::vector<Array<float>> take_apart(Array<float> interleaved, int count, int32_t length) {
  std::vector<Array<float>> channels(static_cast<std::size_t>(count));
  if (count == 1) {
    channels[0] = std::move(interleaved);
    return channels;
  }
  for (auto& channel : channels) channel = own(ZIVKS_Malloc_32f(length));
  if (count == 2) {
    check(ZIVKS_CplxToReal_32fc(reinterpret_cast<const ZIVK32fc*>(interleaved.get()), channels[0].get(),
                                channels[1].get(), length));
  } else {
    split(interleaved.get(), channels, length);
  }
  return channels;
}

}  // namespace

std::string Recording::description() const {
  char properties[100];
  std::snprintf(properties, sizeof properties, ": %d Hz, %d bits, %zu channel%s, %.3f s", sample_rate, bits,
                channels.size(), channels.size() == 1 ? "" : "s", seconds());
  return file.filename().string() + properties;
}

Recording read_recording(const std::filesystem::path& file) {
  check_is_readable(file);
  SF_INFO info = {};
  const SoundFile sound(sf_open(file.c_str(), SFM_READ, &info));
  if (!sound) throw failure(file, std::string("not a sound file: ") + sf_strerror(nullptr));
  const int bits = bits_of_sample(file, info.format);
  check_is_whole(file);
  if (info.frames < 1) throw failure(file, "the file holds no samples");
  if (info.frames > std::numeric_limits<int32_t>::max() / info.channels / 4) {
    throw failure(file, "the recording is too long to be held in memory at once");
  }

  const auto length = static_cast<int32_t>(info.frames);
  const int32_t total = length * info.channels;
  auto interleaved =
      bits == 16 ? read_16_bits(sound.get(), file, total) : read_24_bits(sound.get(), file, total);
  return {file, info.samplerate, bits, length, take_apart(std::move(interleaved), info.channels, length)};
}

void write_24_bits(const Recording& recording, const std::filesystem::path& file) {
  const auto count = static_cast<int>(recording.channels.size());
  const int32_t total = recording.length * count;
  auto interleaved = own(ZIVKS_Malloc_32f(total));
  if (count == 2) {
    check(ZIVKS_RealToCplx_32f(recording.channels[0].get(), recording.channels[1].get(),
                               reinterpret_cast<ZIVK32fc*>(interleaved.get()), recording.length));
  } else {
    merge(recording.channels, interleaved.get(), recording.length);
  }
  auto bytes = own(ZIVKS_Malloc_8u(3 * total));
  check(ZIVKS_Convert_32f24s_S(interleaved.get(), bytes.get(), total, 1 / kFullScaleOf24Bits));

  SF_INFO info = {};
  info.samplerate = recording.sample_rate;
  info.channels = count;
  info.format = (count > 2 ? SF_FORMAT_WAVEX : SF_FORMAT_WAV) | SF_FORMAT_PCM_24;
  SoundFile sound(sf_open(file.c_str(), SFM_WRITE, &info));
  if (!sound) throw failure(file, std::string("cannot be written: ") + sf_strerror(nullptr));
  const bool is_written =
      sf_write_raw(sound.get(), bytes.get(), sf_count_t{3} * total) == sf_count_t{3} * total;
  if (sf_close(sound.release()) != 0 || !is_written) throw failure(file, "cannot be written completely");
}
