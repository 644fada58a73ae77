// SPDX-License-Identifier: MIT
#include "stats_stream_quantiles.hpp"

#include <fmt/format.h>

#include <limits>
#include <new>
#include <stdexcept>
#include <type_traits>

namespace orv_cli {
namespace {

const int64_t columns = SS_COLUMNS, one = 1;

void check(int32_t status) {
  if (status == SS_NO_MEMORY) throw std::bad_alloc();
  if (status != SS_OK) throw std::runtime_error(fmt::format("quantiles: status {}", status));
}

}  // namespace

template <class T>
StreamQuantiles<T>::StreamQuantiles(int64_t variables, double epsilon)
    : p_(variables), epsilon_(static_cast<T>(epsilon)), orders_(1), results_(1) {
  if constexpr (std::is_same_v<T, double>) {
    check(__zokdSSNewTask(&task_, &p_, nullptr, nullptr, nullptr, nullptr, nullptr, 1));
  } else {
    check(__zoksSSNewTask(&task_, &p_, nullptr, nullptr, nullptr, nullptr, nullptr, 1));
  }
  task_->observation_storage = &columns;
  task_->observation_count = &n_;
  task_->stream_order_count = &order_count_;
  task_->stream_param_count = &one;
  task_->stream_params = &epsilon_;
}

template <class T>
StreamQuantiles<T>::~StreamQuantiles() {
  __zokSSDeleteTask(&task_);
}

template <class T>
void StreamQuantiles<T>::run(int64_t n, uint64_t method, const SSThreadServices* services) {
  constexpr auto entry =
      std::is_same_v<T, double> ? _zokdSSStreamQuantiles : _zoksSSStreamQuantiles;
  n_ = n;
  order_count_ = static_cast<int64_t>(orders_.size());
  task_->stream_orders = orders_.data();
  task_->stream_quantiles = results_.data();
  check(entry(task_, 0, method, services));
}

template <class T>
void StreamQuantiles<T>::add(const std::vector<T>& observations, const SSThreadServices* services) {
  task_->observations = observations.data();
  run(static_cast<int64_t>(observations.size()) / p_, SS_METHOD_STREAM_ADD, services);
}

template <class T>
std::vector<double> StreamQuantiles<T>::answers(std::span<const double> orders,
                                                const SSThreadServices* services) {
  orders_.assign(orders.begin(), orders.end());
  results_.assign(static_cast<size_t>(p_) * orders.size(), std::numeric_limits<T>::quiet_NaN());
  if (!orders.empty()) run(0, SS_METHOD_STREAM_QUERY, services);
  return {results_.begin(), results_.end()};
}

template class StreamQuantiles<float>;
template class StreamQuantiles<double>;

}  // namespace orv_cli
