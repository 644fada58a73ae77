// SPDX-License-Identifier: MIT
#include "random_streams.hpp"

#include <fmt/ranges.h>
#include <strings.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <limits>
#include <optional>
#include <vector>

#include "error.hpp"

namespace orv_cli {
namespace {

constexpr Generator all_generators[] = {
    {"MCG31M1", BRNG_MCG31M1, "2^31 - 2"},
    {"MCG59", BRNG_MCG59, "2^57"},
    {"MRG32K3A", BRNG_MRG32K3A, "about 2^191"},
    {"R250", BRNG_R250, "2^250 - 1"},
    {"WH", BRNG_WH, "about 2^93 each"},
    {"MT19937", BRNG_MT19937, "2^19937 - 1"},
    {"MT2203", BRNG_MT2203, "2^2203 - 1 each"},
    {"SFMT19937", BRNG_SFMT19937, "a multiple of 2^19937 - 1"},
    {"Sobol", BRNG_SOBOL, "2^32 - 2 points"},
    {"Niederr", BRNG_NIEDERR, "2^32 - 2 points"},
};

struct StatusText {
  int32_t status;
  std::string_view text;
};
constexpr StatusText status_texts[] = {
    {RNG_NO_MEMORY, "there is not enough memory"},
    {RNG_INVALID_BRNG, "no generator that can be used; 'orv random list' lists all"},
    {RNG_LEAPFROG_UNSUPPORTED, "the generator has no leapfrog; 'orv random list' tells which have"},
    {RNG_SKIPAHEAD_UNSUPPORTED, "the generator can't skip; 'orv random list' tells which can"},
    {RNG_QRNG_EXHAUSTED, "the generator's points are used up; start anew"},
    {RNG_NULL_ENTRY, "the stream is without its tables; start anew"},
    {RNG_FILE_CLOSE, "writing the file failed at its end; is there room?"},
    {RNG_FILE_WRITE, "writing the file failed; is there room?"},
    {RNG_FILE_READ, "the file can't be read or is cut short; give one that --save wrote"},
    {RNG_BAD_FILE_FORMAT, "the file holds no stream; give one that --save wrote"},
    {RNG_UNSUPPORTED_FILE_VERSION, "the file's version is unknown; allowed is 0"},
};

const Generator& find_generator(std::string_view what, const std::string& name) {
  const auto same = [&](const Generator& g) {
    return strcasecmp(std::string(g.name).c_str(), name.c_str()) == 0;
  };
  const auto* found = std::ranges::find_if(all_generators, same);
  if (found != std::end(all_generators)) return *found;
  std::vector<std::string_view> names;
  for (const Generator& g : all_generators) names.push_back(g.name);
  throw Error("{}: no generator {}; allowed are {}", what, in_quotes(name), fmt::join(names, ", "));
}

int32_t brng_of(const std::string& generator) {
  const std::string what = "--brng " + in_quotes(generator);
  const size_t colon = generator.find(':');
  const Generator& found = find_generator(what, generator.substr(0, colon));
  if (colon == std::string::npos) return found.brng;
  const auto offset = whole_number(what, generator.substr(colon + 1), 0, found.members() - 1);
  return found.brng + static_cast<int32_t>(offset);
}

std::vector<uint32_t> words_of(const std::string& seed) {
  const std::string what = "--seed " + in_quotes(seed);
  std::vector<uint32_t> words;
  for (size_t begin = 0, end; begin <= seed.size(); begin = end + 1) {
    end = std::min(seed.find(',', begin), seed.size());
    words.push_back(static_cast<uint32_t>(whole_number(what, seed.substr(begin, end - begin), 0,
                                                       std::numeric_limits<uint32_t>::max())));
  }
  return words;
}

[[noreturn]] void throw_unopened(const std::string& what) {
  throw Error("{}: {}; give a file that can be opened", what, std::strerror(errno));
}

/// The file to put in the place of a path's, links followed; none for a device or a pipe.
std::optional<std::filesystem::path> replaceable(const std::string& path) {
  constexpr int most_links = 40;
  std::error_code error;
  std::filesystem::path file = path;
  for (int links = 0; links < most_links && is_symlink(file, error); ++links) {
    file = file.parent_path() / read_symlink(file, error);
  }
  if (std::filesystem::exists(path, error) && !is_regular_file(file, error)) return std::nullopt;
  return file;
}

/// A new file beside another, that may take its place.
class Replacement {
 public:
  Replacement(const std::string& what, const std::filesystem::path& file)
      : what_(what), file_(file), path_(file.parent_path() / ".orv-XXXXXX") {
    const bool exists = access(file_.c_str(), F_OK) == 0;
    if (exists && access(file_.c_str(), W_OK) != 0) throw_unopened(what_);
    descriptor_ = mkstemp(path_.data());
    if (descriptor_ < 0) throw_unopened(what_);
  }
  Replacement(const Replacement&) = delete;
  Replacement& operator=(const Replacement&) = delete;
  ~Replacement() {
    close(descriptor_);
    if (!path_.empty()) unlink(path_.c_str());
  }

  const std::string& path() const { return path_; }

  /// With the other's permissions, if it is there; not every file system has them.
  void take_place() {
    struct stat old = {};
    const mode_t mask = umask(0);
    umask(mask);
    fchmod(descriptor_, stat(file_.c_str(), &old) == 0 ? old.st_mode & 07777 : 0666 & ~mask);
    if (fsync(descriptor_) != 0 || std::rename(path_.c_str(), file_.c_str()) != 0) {
      throw Error("{}: {}; the file is as it was", what_, std::strerror(errno));
    }
    path_.clear();
  }

 private:
  const std::string what_;
  const std::filesystem::path file_;
  std::string path_;
  int descriptor_;
};

void save_in(StreamState* stream, const std::string& path, const std::string& what) {
  const int32_t status = __zokSaveStreamF(stream, path.c_str(), -1);
  if (status == RNG_FILE_OPEN) throw_unopened(what);
  check(status, what);
}

}  // namespace

BrngProperties Generator::properties() const {
  BrngProperties result = {};
  check(__zokGetBrngProperties(brng, &result), name);
  return result;
}

int32_t Generator::members() const {
  int32_t row, offset;
  __zokGetBrngBaseOffset(brng, &row, &offset);
  return NumOffsets[row];
}

std::span<const Generator> generators() { return all_generators; }

Stream first_stream(const Generator& generator) {
  return new_stream(std::string(generator.name), "1");
}

Stream new_stream(const std::string& generator, const std::string& seed) {
  const int32_t brng = brng_of(generator);
  const std::vector<uint32_t> words = words_of(seed);
  StreamState* stream = nullptr;
  const int32_t status =
      __zokNewStreamEx(&stream, brng, static_cast<int32_t>(words.size()), words.data());
  Stream result(stream);  // there is one after some failures, too
  check(status, "--brng " + in_quotes(generator));
  return result;
}

Stream load_stream(const std::string& path) {
  const std::string what = "--load " + in_quotes(path);
  StreamState* stream = nullptr;
  const int32_t status = __zokLoadStreamF(&stream, path.c_str(), -1);
  if (status == RNG_FILE_OPEN) throw_unopened(what);
  check(status, what);
  Stream result(stream);
  const int32_t brng = __zokGetStreamStateBrng(stream);
  if (brng == BRNG_IABSTRACT || brng == BRNG_DABSTRACT || brng == BRNG_SABSTRACT) {
    throw Error(
        "{}: the file holds an abstract stream, whose numbers a program supplies; give one that "
        "--save wrote",
        what);
  }
  return result;
}

void save_stream(StreamState* stream, const std::string& path) {
  const std::string what = "--save " + in_quotes(path);
  const auto file = replaceable(path);
  if (!file) return save_in(stream, path, what);
  Replacement replacement(what, *file);
  save_in(stream, replacement.path(), what);
  replacement.take_place();
}

void expect_writable(const std::string& path) {
  const std::string what = "--save " + in_quotes(path);
  if (const auto file = replaceable(path)) {
    const Replacement trial(what, *file);
    return;
  }
  std::FILE* const opened = std::fopen(path.c_str(), "ab");
  if (opened == nullptr) throw_unopened(what);
  std::fclose(opened);
}

void skip_ahead(StreamState* stream, const std::string& count) {
  const auto nskip = whole_number("--skip", count, 0, std::numeric_limits<int64_t>::max());
  check(__zokSkipAheadStream(stream, nskip), "--skip " + in_quotes(count));
}

void leapfrog(StreamState* stream, const std::string& part) {
  const std::string what = "--leapfrog " + in_quotes(part);
  const size_t slash = part.find('/');
  if (slash == std::string::npos) throw Error("{}: K/N is needed, such as 0/4 to 3/4", what);
  const auto n = whole_number(what, part.substr(slash + 1), 1, std::numeric_limits<int32_t>::max());
  const auto k = whole_number(what, part.substr(0, slash), 0, n - 1);
  check(__zokLeapfrogStream(stream, static_cast<int32_t>(k), static_cast<int32_t>(n)), what);
}

void check(int32_t status, std::string_view what) {
  if (status >= 0) return;
  const auto* found = std::ranges::find(status_texts, status, &StatusText::status);
  if (found == std::end(status_texts)) throw Error("{}: the library answers {}", what, status);
  throw Error("{}: {}", what, found->text);
}

namespace {

/// 1e6 and the like, which are exact.
std::optional<int64_t> with_exponent(std::string_view text) {
  double value = 0;
  const char* const end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, value);
  const bool whole = error == std::errc() && stop == end && std::abs(value) <= 0x1p53 &&
                     value == std::trunc(value) && text.find_first_of("eE") != text.npos;
  return whole ? std::optional(static_cast<int64_t>(value)) : std::nullopt;
}

}  // namespace

int64_t whole_number(std::string_view what, std::string_view text, int64_t low, int64_t high) {
  const bool hex = text.starts_with("0x") || text.starts_with("0X");
  const char* const begin = text.data() + (hex ? 2 : 0);
  const char* const end = text.data() + text.size();
  int64_t value = 0;
  const auto [stop, error] = std::from_chars(begin, end, value, hex ? 16 : 10);
  const bool signed_hex = hex && begin != end && *begin == '-';
  if (const auto other = with_exponent(text); !hex && other && *other >= low && *other <= high) {
    return *other;
  }
  if (error != std::errc() || stop != end || signed_hex || value < low || value > high) {
    throw Error("{}: {} is not a whole number from {} to {}", what, in_quotes(text), low, high);
  }
  return value;
}

}  // namespace orv_cli
