// SPDX-License-Identifier: MIT
#include "bytes.hpp"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <zlib.h>
#include <zstd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <new>
#include <string_view>

#include "error.hpp"

namespace orv_cli {
namespace {

constexpr size_t packed_size = 1 << 16;
constexpr std::string_view gzip_magic = "\x1F\x8B", zstd_magic = "\x28\xB5\x2F\xFD";

struct Span {
  const char* data;
  size_t size;
};

}  // namespace

class ByteSource::Unpacker {
 public:
  virtual ~Unpacker() = default;

  /// Moves on in `from` and gives how many bytes of `to` were filled.
  virtual size_t unpack(Span& from, char* to, size_t room) = 0;

  /// Whether what was taken so far ends where a packed file may end.
  bool is_whole() const { return whole_; }

 protected:
  bool whole_ = false;
};

namespace {

class Gzip final : public ByteSource::Unpacker {
 public:
  explicit Gzip(const std::string& name) : name_(name) {
    constexpr int largest_window = 15, gzip_only = 16;
    if (inflateInit2(&stream_, largest_window + gzip_only) != Z_OK) throw std::bad_alloc();
  }
  ~Gzip() override { inflateEnd(&stream_); }

  size_t unpack(Span& from, char* to, size_t room) override {
    if (whole_ && from.size > 0) inflateReset(&stream_);  // files may be joined
    stream_.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(from.data));
    stream_.avail_in = static_cast<uInt>(from.size);
    stream_.next_out = reinterpret_cast<Bytef*>(to);
    stream_.avail_out = static_cast<uInt>(room);
    const int status = inflate(&stream_, Z_NO_FLUSH);
    if (status == Z_MEM_ERROR) throw std::bad_alloc();
    if (status != Z_OK && status != Z_STREAM_END && status != Z_BUF_ERROR) {
      throw Error("{}: what gzip packed is damaged: {}", name_,
                  stream_.msg != nullptr ? stream_.msg : "not a gzip file");
    }
    from = {reinterpret_cast<const char*>(stream_.next_in), stream_.avail_in};
    whole_ = status == Z_STREAM_END;
    return room - stream_.avail_out;
  }

 private:
  const std::string& name_;
  z_stream stream_ = {};
};

class Zstd final : public ByteSource::Unpacker {
 public:
  explicit Zstd(const std::string& name) : name_(name), stream_(ZSTD_createDStream()) {
    if (stream_ == nullptr) throw std::bad_alloc();
  }
  ~Zstd() override { ZSTD_freeDStream(stream_); }

  size_t unpack(Span& from, char* to, size_t room) override {
    ZSTD_inBuffer in = {from.data, from.size, 0};
    ZSTD_outBuffer out = {to, room, 0};
    const size_t status = ZSTD_decompressStream(stream_, &out, &in);
    if (ZSTD_isError(status) != 0) {
      throw Error("{}: what zstd packed is damaged: {}", name_, ZSTD_getErrorName(status));
    }
    from = {from.data + in.pos, from.size - in.pos};
    whole_ = status == 0;
    return out.pos;
  }

 private:
  const std::string& name_;
  ZSTD_DStream* stream_;
};

[[noreturn]] void throw_unreadable(const std::string& name) {
  throw Error("cannot read {}: {}; give a CSV file, or - for standard input", in_quotes(name),
              std::strerror(errno));
}

}  // namespace

ByteSource::ByteSource(const std::string& path)
    : name_(path == "-" ? "standard input" : one_line(path)),
      file_(path == "-" ? STDIN_FILENO : open(path.c_str(), O_RDONLY | O_CLOEXEC)) {
  if (file_ < 0) throw_unreadable(name_);
  struct stat status;
  if (fstat(file_, &status) == 0 && S_ISREG(status.st_mode)) size_ = status.st_size;
}

ByteSource::~ByteSource() {
  if (file_ != STDIN_FILENO) close(file_);
}

size_t ByteSource::read_file(char* to, size_t room) {
  ssize_t got;
  do {
    got = ::read(file_, to, room);
  } while (got < 0 && errno == EINTR);
  if (got < 0) throw_unreadable(name_);
  bytes_ += got;
  return static_cast<size_t>(got);
}

/// Looks at the first bytes, of which a pipe may bring one at a time.
void ByteSource::begin() {
  begun_ = true;
  packed_ = std::make_unique<char[]>(packed_size);
  for (size_t got = 1; got != 0 && packed_end_ < zstd_magic.size(); packed_end_ += got) {
    got = read_file(packed_.get() + packed_end_, packed_size - packed_end_);
  }
  const std::string_view text(packed_.get(), packed_end_);
  if (text.starts_with(gzip_magic)) {
    unpacker_ = std::make_unique<Gzip>(name_);
  } else if (text.starts_with(zstd_magic)) {
    unpacker_ = std::make_unique<Zstd>(name_);
  }
}

size_t ByteSource::unpack(char* to, size_t room) {
  for (;;) {
    if (packed_at_ == packed_end_) {
      packed_at_ = 0;
      packed_end_ = read_file(packed_.get(), packed_size);
    }
    const bool at_end = packed_end_ == 0;
    if (at_end && unpacker_->is_whole()) return 0;
    Span rest = {packed_.get() + packed_at_, packed_end_ - packed_at_};
    const size_t got = unpacker_->unpack(rest, to, room);
    packed_at_ = packed_end_ - rest.size;
    if (got > 0) return got;
    if (at_end && !unpacker_->is_whole()) {
      throw Error("{}: the packed file is cut off: its end is missing", name_);
    }
  }
}

size_t ByteSource::read(char* to, size_t room) {
  if (!begun_) begin();
  if (unpacker_ != nullptr) return unpack(to, room);
  if (packed_at_ == packed_end_) return read_file(to, room);
  const size_t size = std::min(room, packed_end_ - packed_at_);
  std::memcpy(to, packed_.get() + packed_at_, size);
  packed_at_ += size;
  return size;
}

}  // namespace orv_cli
