// SPDX-License-Identifier: MIT
// The bytes of a file or of standard input, unpacked where gzip or zstd packed them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

namespace orv_cli {

class ByteSource {
 public:
  /// "-" is standard input.
  explicit ByteSource(const std::string& path);
  ~ByteSource();
  ByteSource(const ByteSource&) = delete;
  ByteSource& operator=(const ByteSource&) = delete;

  /// Some of what comes next, at most `room` bytes; 0 at the end.
  size_t read(char* to, size_t room);

  const std::string& name() const { return name_; }
  int64_t bytes_read() const { return bytes_; }   // of the file, packed or not
  int64_t bytes_in_all() const { return size_; }  // 0 where that is not known

  /// Takes packed bytes and gives what they hold.
  class Unpacker;

 private:
  size_t read_file(char* to, size_t room);
  void begin();
  size_t unpack(char* to, size_t room);

  std::string name_;
  int file_;
  int64_t bytes_ = 0, size_ = 0;
  bool begun_ = false;
  std::unique_ptr<char[]> packed_;         // what was read and not yet given or unpacked:
  size_t packed_at_ = 0, packed_end_ = 0;  // this part of it
  std::unique_ptr<Unpacker> unpacker_;     // none for plain bytes
};

}  // namespace orv_cli
