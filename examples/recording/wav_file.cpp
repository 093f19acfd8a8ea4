#include "wav_file.h"

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
#include <string>
#include <utility>

#include "examples/array.h"

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
  constexpr std::size_t kTooLong = (std::size_t{1} << 32) + (1 << 20);  // no WAV file is
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

constexpr std::uintmax_t kHead = 8;

// Programs that write to a pipe do not know the length of the samples ahead: their headers promise about as many
// bytes as 31 or 32 bits can count, or none. All the rest of the file is samples then, unless the file ends, or
// another chunk follows, where the samples are said to end.
bool is_length_unknown(std::FILE* file, std::uintmax_t offset, std::uintmax_t length, std::uintmax_t present,
                       bool highest_first) {
  constexpr std::uintmax_t kTooMany = 0x7FFF0000;
  if (present == length || (0 < length && length < kTooMany)) return false;
  const Chunk next = chunk_at(file, offset + length + length % 2, highest_first);
  return next.name.empty() || length + kHead + next.length > present;
}

Samples find_samples(const fs::path& name, std::FILE* file) {
  std::array<char, 12> riff{};
  read_at(file, 0, riff.data(), riff.size());
  const bool highest_first = std::memcmp(riff.data(), "RIFX", 4) == 0;

  const auto file_size = static_cast<std::uintmax_t>(status_of(file).st_size);
  std::uintmax_t offset = riff.size();
  for (Chunk chunk; !(chunk = chunk_at(file, offset, highest_first)).name.empty();) {
    offset += kHead;
    if (chunk.name == "data") {
      const std::uintmax_t present = file_size - offset;
      if (is_length_unknown(file, offset, chunk.length, present, highest_first)) chunk.length = present;
      if (chunk.length <= present) return {offset, chunk.length, highest_first};
      throw failure(name, "the file is truncated: its header promises " + std::to_string(chunk.length) +
                              " bytes of samples, and there are " + std::to_string(present));
    }
    offset += chunk.length + chunk.length % 2;
  }
  throw failure(name, "the file is truncated: it ends before its samples");
}

constexpr double kFullScaleOf24Bits = 8388608;

// Reads blocks of a file's samples and takes them apart into channels.
class WavFile : public Sound {
 public:
  WavFile(SoundInfo info, File file, Samples place)
      : info_(std::move(info)), file_(std::move(file)), place_(place) {}

  const SoundInfo& info() const override { return info_; }
  void rewind() override { position_ = 0; }

  void read(const std::vector<float*>& channels, int32_t count) override {
    const int32_t total = count * info_.channels;
    const auto bytes = static_cast<std::size_t>(total * bytes_per_sample());
    reserve(total);
    if (!read_at(file_.get(), place_.offset + position_, bytes_.get(), bytes)) {
      throw failure(info_.name, "the samples cannot be read");
    }
    position_ += bytes;
    float* interleaved = info_.channels == 1 ? channels[0] : interleaved_.get();
    info_.bits == 16 ? convert_16_bits(interleaved, total) : convert_24_bits(interleaved, total);
    if (info_.channels == 2) {
      check(ZIVKS_CplxToReal_32fc(reinterpret_cast<const ZIVK32fc*>(interleaved), channels[0], channels[1],
                                  count));
    } else if (info_.channels > 2) {
      for (int32_t i = 0; i < count; ++i) {
        for (float* const channel : channels) channel[i] = *interleaved++;
      }
    }
  }

 private:
  int32_t bytes_per_sample() const { return info_.bits / 8; }

  void reserve(int32_t total) {
    if (total <= capacity_) return;
    capacity_ = std::max(total, 3);  // which the conversion of 24 bits takes at least
    bytes_ = own(ZIVKS_Malloc_8u(capacity_ * bytes_per_sample()));
    integers_ = own(ZIVKS_Malloc_32s(capacity_));
    interleaved_ = own(ZIVKS_Malloc_32f(capacity_));
    check(ZIVKS_Zero_8u(bytes_.get(), capacity_ * bytes_per_sample()));
  }

  void convert_16_bits(float* samples, int32_t total) {
    constexpr double kFullScale = 32768;
    if (place_.highest_first) check(ZIVKS_SwapBytes_16u_I(reinterpret_cast<uint16_t*>(bytes_.get()), total));
    check(ZIVKS_Convert_16s32f_S(reinterpret_cast<const int16_t*>(bytes_.get()), samples, total, kFullScale));
  }
  void convert_24_bits(float* samples, int32_t total) {
    if (place_.highest_first) check(ZIVKS_SwapBytes_24u_I(bytes_.get(), total));
    check(ZIVKS_Convert_24s32s(bytes_.get(), integers_.get(), std::max(total, 3)));
    check(ZIVKS_Convert_32s32f_S(integers_.get(), samples, total, kFullScaleOf24Bits));
  }

  SoundInfo info_;
  File file_;
  Samples place_;
  std::uintmax_t position_ = 0;  // bytes
  int32_t capacity_ = 0;         // samples of all channels
  Array<uint8_t> bytes_;
  Array<int32_t> integers_;
  Array<float> interleaved_;
};

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

std::unique_ptr<Sound> open_wav_file(const fs::path& file) {
  const bool is_standard_input = file == "-";
  const std::string name = is_standard_input ? "standard input" : file.string();
  File input(is_standard_input ? stdin : std::fopen(file.c_str(), "rb"), std::fclose);
  if (!input) throw failure(name, std::strerror(errno));
  const struct stat identity = status_of(input.get());
  input = seekable(std::move(input), name);
  if (status_of(input.get()).st_size == 0) throw failure(name, "the file is empty");

  lseek(fileno(input.get()), 0, SEEK_SET);
  SF_INFO format = {};
  const SoundFile sound(sf_open_fd(fileno(input.get()), SFM_READ, &format, SF_FALSE));
  if (!sound) throw failure(name, std::string("not a sound file: ") + sf_strerror(nullptr));
  const int bits = bits_of_sample(name, format.format);
  // libsndfile quietly reads what is there of a file that breaks off, and nothing where the header promises
  // nothing. So the samples are found, and read, without it.
  const Samples place = find_samples(name, input.get());
  const auto length = static_cast<int64_t>(place.length) / (format.channels * bits / 8);
  if (length < 1) throw failure(name, "the file holds no samples");

  SoundInfo info = {
      is_standard_input ? name : file.filename().string(), format.samplerate, bits, format.channels, length,
      FileIdentity{identity.st_dev, identity.st_ino}};
  return std::make_unique<WavFile>(std::move(info), std::move(input), place);
}

void refuse_to_overwrite(const SoundInfo& sound, const fs::path& file) {
  struct stat status;
  if (stat(file.c_str(), &status) != 0) return;  // nothing is there
  if (sound.file && status.st_dev == sound.file->device && status.st_ino == sound.file->inode) {
    throw failure(file, "would overwrite the recording itself");
  }
  if (!S_ISREG(status.st_mode)) throw failure(file, "not a regular file, and will not be replaced");
  if (access(file.c_str(), W_OK) != 0) throw failure(file, std::strerror(errno));
}

struct WavWriter::Output {
  Replacement replacement;
  int channels;
  SoundFile sound;
  int32_t capacity = 0;  // samples of all channels
  Array<float> interleaved;
  Array<uint8_t> bytes;

  void reserve(int32_t total) {
    if (total <= capacity) return;
    interleaved = own(ZIVKS_Malloc_32f(total));
    bytes = own(ZIVKS_Malloc_8u(3 * total));
    capacity = total;
  }
};

WavWriter::WavWriter(fs::path file, const SoundInfo& sound, int64_t length, int sample_rate)
    : file_(std::move(file)) {
  constexpr int64_t kMostBytes = 0xFFFF0000;  // less some room for headers
  if (length > kMostBytes / 3 / sound.channels) throw failure(file_, "the sound is too long for a WAV file");
  refuse_to_overwrite(sound, file_);
  SF_INFO format = {};
  format.samplerate = sample_rate;
  format.channels = sound.channels;
  format.format = (sound.channels > 2 ? SF_FORMAT_WAVEX : SF_FORMAT_WAV) | SF_FORMAT_PCM_24;
  output_.reset(new Output{Replacement(file_), sound.channels, {}, 0, {}, {}});
  output_->sound.reset(sf_open_fd(output_->replacement.descriptor(), SFM_WRITE, &format, SF_TRUE));
  if (!output_->sound) throw failure(file_, "cannot be written");
}

WavWriter::~WavWriter() = default;

void WavWriter::write(const std::vector<const float*>& channels, int32_t count) {
  if (count == 0) return;
  const int32_t total = count * output_->channels;
  output_->reserve(total);
  const float* samples = channels[0];
  float* interleaved = output_->interleaved.get();
  if (channels.size() == 2) {
    check(ZIVKS_RealToCplx_32f(channels[0], channels[1], reinterpret_cast<ZIVK32fc*>(interleaved), count));
    samples = interleaved;
  } else if (channels.size() > 2) {
    samples = interleaved;
    for (int32_t i = 0; i < count; ++i) {
      for (const float* const channel : channels) *interleaved++ = channel[i];
    }
  }
  check(ZIVKS_Convert_32f24s_S(samples, output_->bytes.get(), total, 1 / kFullScaleOf24Bits));
  const sf_count_t bytes = sf_count_t{3} * total;
  if (sf_write_raw(output_->sound.get(), output_->bytes.get(), bytes) != bytes) {
    throw failure(file_, "cannot be written completely");
  }
}

void WavWriter::finish() {
  if (sf_close(output_->sound.release()) != 0) throw failure(file_, "cannot be written completely");
  output_->replacement.finish();
}
