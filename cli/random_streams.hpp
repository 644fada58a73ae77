// SPDX-License-Identifier: MIT
// Random streams made from what the command line says. Every mistake there becomes an Error.
#pragma once

#include <orv/zok.h>

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>

namespace orv_cli {

struct Generator {
  std::string_view name;
  int32_t brng;  // that of a family's first member
  std::string_view period;

  BrngProperties properties() const;
  int32_t members() const;  // 1 unless it is a family
};

std::span<const Generator> generators();

struct DeleteStream {
  void operator()(StreamState* stream) const { __zokDeleteStream(&stream); }
};
using Stream = std::unique_ptr<StreamState, DeleteStream>;

/// Of the family's first member.
Stream first_stream(const Generator& generator);

/// `generator` is NAME or NAME:OFFSET, `seed` words with commas between.
Stream new_stream(const std::string& generator, const std::string& seed);
Stream load_stream(const std::string& path);
/// A failure leaves what the file held.
void save_stream(StreamState* stream, const std::string& path);
/// A long job should not learn at its end that its stream can't be saved.
void expect_writable(const std::string& path);

void skip_ahead(StreamState* stream, const std::string& count);
/// `part` is K/N: stream K of N.
void leapfrog(StreamState* stream, const std::string& part);

/// Throws an Error if the status is a failure; `what` is the argument that led to it.
void check(int32_t status, std::string_view what);

/// The number that is all of `text`, decimal, as 1e6, or with 0x before it; `what` is the argument.
int64_t whole_number(std::string_view what, std::string_view text, int64_t low, int64_t high);

}  // namespace orv_cli
