// SPDX-License-Identifier: MIT
// Quantiles of values that are not kept.
#pragma once

#include <orv/ss.h>

#include <cstdint>
#include <span>
#include <vector>

namespace orv_cli {

/// Of p variables, whose observations come block by block.
template <class T>
class StreamQuantiles {
 public:
  StreamQuantiles(int64_t variables, double epsilon);
  ~StreamQuantiles();
  StreamQuantiles(const StreamQuantiles&) = delete;
  StreamQuantiles& operator=(const StreamQuantiles&) = delete;

  void add(const std::vector<T>& observations, const SSThreadServices* services);

  /// Of each variable in turn: values whose ranks among all are off by epsilon of their number at
  /// most. None may have been added before.
  std::vector<double> answers(std::span<const double> orders, const SSThreadServices* services);

 private:
  void run(int64_t n, uint64_t method, const SSThreadServices* services);

  int64_t p_, n_ = 0, order_count_ = 0;
  T epsilon_;
  std::vector<T> orders_, results_;
  SSTask* task_ = nullptr;
};

}  // namespace orv_cli
