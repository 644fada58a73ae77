// SPDX-License-Identifier: MIT
// What a function of the C++ face throws.
#pragma once

#include <orv/qem.h>
#include <orv/ss.h>
#include <orv/zok.h>

#include <cstdint>
#include <cstdio>
#include <stdexcept>
#include <string>
#include <string_view>

namespace orv {

/// A call that was not possible: what() is a sentence that names function, argument and value.
class error : public std::runtime_error {
 public:
  /// The status is one of the C interface: QEM_STATUS_, RNG_ or SS_.
  error(int32_t status, std::string function, const std::string& sentence)
      : std::runtime_error("orv::" + function + ": " + sentence),
        status_(status),
        function_(std::move(function)) {}

  int32_t status() const noexcept { return status_; }
  const std::string& function() const noexcept { return function_; }

 private:
  int32_t status_;
  std::string function_;
};

namespace detail {

[[noreturn, gnu::cold]] inline void fail(int32_t status, std::string_view function,
                                         const std::string& sentence) {
  throw error(status, std::string(function), sentence);
}

inline std::string text(double x) {
  char digits[32];
  std::snprintf(digits, sizeof digits, "%.15g", x);
  return digits;
}

struct status_text {
  int32_t status;
  const char* sentence;
};

inline constexpr status_text stream_texts[] = {
    {RNG_BAD_ARGS, "the parameters, or a stream that is always the same, give no number"},
    {RNG_NO_MEMORY, "there is not enough memory"},
    {RNG_NULL_ENTRY, "the stream has lost its tables; create it anew"},
    {RNG_INVALID_BRNG, "no generator has this identifier"},
    {RNG_LEAPFROG_UNSUPPORTED, "the generator has no leapfrog of this kind"},
    {RNG_SKIPAHEAD_UNSUPPORTED, "the generator can't skip so far, or not at all"},
    {RNG_QRNG_EXHAUSTED, "the generator's points are used up; create the stream anew"},
    {RNG_BAD_NSTREAMS, "the number of streams has to be 1 or more, and the index below it"},
    {RNG_FILE_OPEN, "the file can't be opened"},
    {RNG_FILE_CLOSE, "writing the file failed at its end; is there room?"},
    {RNG_FILE_WRITE, "writing the file failed; is there room?"},
    {RNG_FILE_READ, "the file can't be read or is cut short"},
    {RNG_BAD_FILE_FORMAT, "the file holds no stream"},
    {RNG_UNSUPPORTED_FILE_VERSION, "the file's version is unknown; allowed is 0"},
    {RNG_ABSTRACT_BAD_COUNT, "the callback made fewer numbers than it was asked for, or more"},
    {RNG_ABSTRACT_NO_DATA, "the callback made no numbers"},
    {RNG_ABSTRACT_BAD_FLAVOUR, "an abstract stream serves numbers of its own type only"}};

inline constexpr status_text statistics_texts[] = {
    {SS_NO_MEMORY, "there is not enough memory"},
    {SS_BAD_DIMENSION, "the number of variables has to be 1 or more"},
    {SS_BAD_OBSERVATION_COUNT, "there are too few observations"},
    {SS_BAD_MASK, "the mask selects no variable"},
    {SS_BAD_QUANT_ORDERS, "orders of quantiles lie from 0 to 1"},
    {SS_NOT_CONVERGED, "the iteration did not end within its limit"},
    {SS_NO_POSITIVE_EIGENVALUE, "the covariance has no positive eigenvalue"},
    {SS_BAD_GROUP_INDICES, "groups are counted from 0 without a gap"},
    {SS_NULL_OBSERVATIONS, "there are too few observations for so many variables"},
    {SS_OGK_FAILED, "the values are too far from each other"},
    {SS_CONDITIONAL_NOT_POSITIVE, "variables depend on each other, or too few values are there"},
    {SS_IMPUTATION_FAILED, "variables depend on each other, or too few values are there"},
    {SS_POSTERIOR_FAILED, "variables depend on each other, or too few values are there"},
    {SS_FACTOR_FAILED, "the given variables depend on each other linearly, or one is constant"},
    {SS_INVERSE_FAILED, "the given variables depend on each other linearly, or one is constant"},
    {SS_EIGENVALUES_FAILED, "the eigenvalues of a covariance did not converge"},
    {SS_NOT_POSITIVE_DEFINITE, "a covariance is not positive definite"},
    {SS_SINGULAR, "a covariance is singular"}};

template <size_t n>
[[noreturn, gnu::cold]] void fail_with(const status_text (&texts)[n], int32_t status,
                                       std::string_view function, const std::string& what = {}) {
  for (const status_text& row : texts) {
    if (row.status == status) fail(status, function, what + row.sentence);
  }
  fail(status, function, what + "the library answers with status " + std::to_string(status));
}

inline void check_stream(int32_t status, std::string_view function) {
  if (status != RNG_OK) [[unlikely]]
    fail_with(stream_texts, status, function);
}
inline void check_statistics(int32_t status, std::string_view function) {
  if (status != SS_OK) [[unlikely]]
    fail_with(statistics_texts, status, function);
}

}  // namespace detail
}  // namespace orv
