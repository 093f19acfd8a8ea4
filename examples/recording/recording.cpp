#include "recording.h"

#include <fcntl.h>
#include <sndfile.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <limits>
#include <string>
#include <utility>

namespace {

namespace fs = std::filesystem;

using File = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;

struct Close {
  void operator()(SNDFILE* sound) const { sf_close(sound); }
};
using SoundFile = std::unique_ptr<SNDFILE, Close>;

std::runtime_error failure(const fs::path& file, const std::string& what) {
  return std::runtime_error(file.string() + ": " + what);
}

struct stat status_of(std::FILE* file) {
  struct stat status;
  if (fstat(fileno(file), &status) != 0) throw std::runtime_error(std::strerror(errno));
  return status;
}

// What comes through a pipe goes to a temporary file, since its chunks cannot be found without seeking.
File seekable(File input, const fs::path& name) {
  const mode_t mode = status_of(input.get()).st_mode;
  if (S_ISREG(mode)) return input;
  if (!S_ISFIFO(mode) && !S_ISSOCK(mode)) throw failure(name, "neither a file nor a pipe");
  File copy(std::tmpfile(), std::fclose);
  if (!copy) throw std::runtime_error(std::string("no temporary file: ") + std::strerror(errno));
  constexpr std::size_t kTooLong = std::size_t{1} << 31;  // a WAV file that is read is shorter
  std::array<char, 1 << 16> block;
  std::size_t total = 0;
  for (std::size_t count; (count = std::fread(block.data(), 1, block.size(), input.get())) > 0;) {
    total += count;
    if (total > kTooLong) throw failure(name, "the recording is too long");
    if (std::fwrite(block.data(), 1, count, copy.get()) != count) break;
  }
  if (std::ferror(input.get()) || std::fflush(copy.get()) != 0 || std::ferror(copy.get())) {
    throw failure(name, "the pipe cannot be copied to a temporary file");
  }
  return copy;
}

std::string format_name(int format) {
  SF_FORMAT_INFO major = {format & SF_FORMAT_TYPEMASK, nullptr, nullptr};
  SF_FORMAT_INFO subtype = {format & SF_FORMAT_SUBMASK, nullptr, nullptr};
  sf_command(nullptr, SFC_GET_FORMAT_INFO, &major, sizeof major);
  sf_command(nullptr, SFC_GET_FORMAT_INFO, &subtype, sizeof subtype);
  return std::string(major.name ? major.name : "unknown") + ", " + (subtype.name ? subtype.name : "unknown");
}

int bits_of_sample(const fs::path& file, int format) {
  const int major = format & SF_FORMAT_TYPEMASK;
  const int subtype = format & SF_FORMAT_SUBMASK;
  if (major == SF_FORMAT_WAV || major == SF_FORMAT_WAVEX) {
    if (subtype == SF_FORMAT_PCM_16) return 16;
    if (subtype == SF_FORMAT_PCM_24) return 24;
  }
  throw failure(file, "only WAV files of 16 or 24 bits are supported, this is " + format_name(format));
}

// Bytes of the file.
struct Samples {
  std::uintmax_t offset, length;
  bool highest_first;  // the order of the bytes of a sample
};

bool read_at(std::FILE* file, std::uintmax_t offset, void* bytes, std::size_t count) {
  return pread(fileno(file), bytes, count, static_cast<off_t>(offset)) == static_cast<ssize_t>(count);
}

// Programs that write to a pipe do not know the length of the samples ahead: their headers promise about as many
// bytes as 31 or 32 bits can count, more than any recording has that can be held in memory here, or none. All the
// rest of the file is samples then, but not where there are none and another chunk follows.
bool is_length_unknown(std::uintmax_t length, std::uintmax_t present, bool chunk_follows) {
  return length >= 0x7FFF0000 || (length == 0 && present > 0 && !chunk_follows);
}

// The head of a chunk; an empty name where there is none.
struct Chunk {
  std::string name;
  std::uintmax_t length = 0;
};

Chunk chunk_at(std::FILE* file, std::uintmax_t offset, bool highest_first) {
  std::array<unsigned char, 8> head{};
  if (!read_at(file, offset, head.data(), head.size())) return {};
  Chunk chunk = {std::string(head.begin(), head.begin() + 4)};
  for (unsigned i = 0; i < 4; ++i) chunk.length = chunk.length << 8 | head[highest_first ? 4 + i : 7 - i];
  const auto is_printable = [](unsigned char c) { return std::isprint(c) != 0; };
  return std::all_of(head.begin(), head.begin() + 4, is_printable) ? chunk : Chunk{};
}

Samples find_samples(const fs::path& name, std::FILE* file) {
  constexpr std::uintmax_t kHead = 8;
  std::array<char, 12> riff{};
  read_at(file, 0, riff.data(), riff.size());
  const bool highest_first = std::memcmp(riff.data(), "RIFX", 4) == 0;

  const auto file_size = static_cast<std::uintmax_t>(status_of(file).st_size);
  std::uintmax_t offset = riff.size();
  for (Chunk chunk; !(chunk = chunk_at(file, offset, highest_first)).name.empty();) {
    offset += kHead;
    if (chunk.name == "data") {
      const std::uintmax_t present = file_size - offset;
      const Chunk next = chunk_at(file, offset, highest_first);
      const bool chunk_follows = !next.name.empty() && next.length + kHead <= present;
      if (is_length_unknown(chunk.length, present, chunk_follows)) chunk.length = present;
      if (chunk.length <= present) return {offset, chunk.length, highest_first};
      throw failure(name, "the file is truncated: its header promises " + std::to_string(chunk.length) +
                              " bytes of samples, and there are " + std::to_string(present));
    }
    offset += chunk.length + chunk.length % 2;
  }
  throw failure(name, "the file is truncated: it ends before its samples");
}

// For any number of channels but two: two are one complex array to the library.
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

Array<float> read_16_bits(std::FILE* file, const Samples& place, int32_t total) {
  constexpr double kFullScale = 32768;
  auto samples = own(ZIVKS_Malloc_16s(total));
  if (!read_at(file, place.offset, samples.get(), sizeof(int16_t) * static_cast<std::size_t>(total)))
    return {};
  if (place.highest_first) {
    check(ZIVKS_SwapBytes_16u_I(reinterpret_cast<uint16_t*>(samples.get()), total));
  }
  auto interleaved = own(ZIVKS_Malloc_32f(total));
  check(ZIVKS_Convert_16s32f_S(samples.get(), interleaved.get(), total, kFullScale));
  return interleaved;
}

constexpr double kFullScaleOf24Bits = 8388608;

Array<float> read_24_bits(std::FILE* file, const Samples& place, int32_t total) {
  // The conversion of signed samples takes at least three.
  const int32_t padding = std::max(3 - total, 0), padded = total + padding;
  auto bytes = own(ZIVKS_Malloc_8u(3 * padded));
  if (!read_at(file, place.offset, bytes.get(), 3 * static_cast<std::size_t>(total))) return {};
  if (padding > 0) check(ZIVKS_Zero_8u(bytes.get() + 3 * total, 3 * padding));
  if (place.highest_first) check(ZIVKS_SwapBytes_24u_I(bytes.get(), total));
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

// A new file beside the one that it replaces at the end.
class Replacement {
 public:
  explicit Replacement(const fs::path& file)
      : file_(fs::weakly_canonical(file)),  // a link stays, and what it leads to is replaced
        temporary_(file_.parent_path() / "recording-XXXXXX"),
        descriptor_(mkostemp(temporary_.data(), O_CLOEXEC)) {
    if (descriptor_ < 0) throw failure(file, std::string("cannot be written: ") + std::strerror(errno));
  }
  ~Replacement() {
    std::error_code renamed_already;
    fs::remove(temporary_, renamed_already);
  }
  int descriptor() const { return descriptor_; }
  void finish() const {
    const mode_t hidden = umask(0);  // which can be read only by setting it
    umask(hidden);
    fs::permissions(temporary_,
                    fs::exists(file_) ? fs::status(file_).permissions() : fs::perms(0666 & ~hidden));
    fs::rename(temporary_, file_);
  }

 private:
  fs::path file_;
  std::string temporary_;
  int descriptor_;
};

}  // namespace

std::string Recording::description() const {
  char properties[100];
  std::snprintf(properties, sizeof properties, ": %d Hz, %d bits, %zu channel%s, %.3f s", sample_rate, bits,
                channels.size(), channels.size() == 1 ? "" : "s", seconds());
  return name + properties;
}

Recording read_recording(const fs::path& file) {
  const bool is_standard_input = file == "-";
  const std::string name = is_standard_input ? "standard input" : file.string();
  File input(is_standard_input ? stdin : std::fopen(file.c_str(), "rb"), std::fclose);
  if (!input) throw failure(name, std::strerror(errno));
  const struct stat identity = status_of(input.get());
  input = seekable(std::move(input), name);
  if (status_of(input.get()).st_size == 0) throw failure(name, "the file is empty");

  lseek(fileno(input.get()), 0, SEEK_SET);
  SF_INFO info = {};
  const SoundFile sound(sf_open_fd(fileno(input.get()), SFM_READ, &info, SF_FALSE));
  if (!sound) throw failure(name, std::string("not a sound file: ") + sf_strerror(nullptr));
  const int bits = bits_of_sample(name, info.format);
  // libsndfile quietly reads what is there of a file that breaks off, and nothing where the header promises
  // nothing. So the samples are found, and read, without it.
  const Samples place = find_samples(name, input.get());
  const std::uintmax_t frames = place.length / static_cast<unsigned>(info.channels * bits / 8);
  if (frames < 1) throw failure(name, "the file holds no samples");
  if (frames > static_cast<unsigned>(std::numeric_limits<int32_t>::max() / info.channels / 4)) {
    throw failure(name, "the recording is too long to be held in memory at once");
  }

  const auto length = static_cast<int32_t>(frames);
  const int32_t total = length * info.channels;
  auto interleaved =
      bits == 16 ? read_16_bits(input.get(), place, total) : read_24_bits(input.get(), place, total);
  if (!interleaved) throw failure(name, "the samples cannot be read");
  return {is_standard_input ? name : file.filename().string(),
          identity.st_dev,
          identity.st_ino,
          info.samplerate,
          bits,
          length,
          take_apart(std::move(interleaved), info.channels, length)};
}

void refuse_to_overwrite(const Recording& recording, const fs::path& file) {
  struct stat status;
  if (stat(file.c_str(), &status) != 0) return;  // nothing is there
  if (status.st_dev == recording.device && status.st_ino == recording.inode) {
    throw failure(file, "would overwrite the recording itself");
  }
  if (!S_ISREG(status.st_mode)) throw failure(file, "not a regular file, and will not be replaced");
  if (access(file.c_str(), W_OK) != 0) throw failure(file, std::strerror(errno));
}

void write_24_bits(const Recording& recording, const fs::path& file) {
  refuse_to_overwrite(recording, file);
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
  const Replacement replacement(file);
  SoundFile sound(sf_open_fd(replacement.descriptor(), SFM_WRITE, &info, SF_TRUE));
  const bool is_written =
      sound && sf_write_raw(sound.get(), bytes.get(), sf_count_t{3} * total) == sf_count_t{3} * total;
  if (sf_close(sound.release()) != 0 || !is_written) throw failure(file, "cannot be written completely");
  replacement.finish();
}
