// SPDX-License-Identifier: MIT
#include "stats_correlation.hpp"

#include <fmt/format.h>
#include <orv/task.hpp>

#include <cmath>
#include <new>

#include "error.hpp"

extern "C" void dsyev_(const char* jobz, const char* uplo, const int32_t* n, double* a,
                       const int32_t* lda, double* values, double* work, const int32_t* lwork,
                       int32_t* info, size_t, size_t);

namespace orv_cli {
namespace {

template <class T>
using Entries = orv::entries<T>;

double least_eigenvalue(Matrix a, size_t p) {
  const auto n = static_cast<int32_t>(p), work_size = 10 * n;
  std::vector<double> values(p), work(10 * p);
  int32_t info = 0;
  dsyev_("N", "U", &n, a.data(), &n, values.data(), work.data(), &work_size, &info, 1, 1);
  return info == 0 ? values[0] : std::nan("");
}

void expect_finite(const Matrix& correlation, const std::vector<std::string>& names) {
  const size_t p = names.size();
  for (size_t k = 0; k < p * p; ++k) {
    if (!std::isfinite(correlation[k])) {
      throw Error(
          "--repair-correlation: {} and {} have no correlation, as one does not vary; leave it out "
          "with --select",
          in_quotes(names[k / p]), in_quotes(names[k % p]));
    }
  }
}

template <class T>
Matrix repaired(const Matrix& correlation, size_t p, const SSThreadServices* services) {
  std::vector<T> matrix(correlation.begin(), correlation.end());
  const auto p_word = static_cast<int64_t>(p);
  const int64_t full = SS_MATRIX_FULL;
  SSTask task = {};
  task.int_is_64 = 1;
  task.dimension = &p_word;
  task.cor = task.parametrized_cor = matrix.data();
  task.cor_storage = task.parametrized_cor_storage = &full;
  const int32_t status = Entries<T>::parametrize(&task, 0, SS_METHOD_SPECTRAL_DECOMP, services);
  if (status == SS_NO_MEMORY) throw std::bad_alloc();
  if (status != SS_OK) throw Error("--repair-correlation: no eigenvalues (status {})", status);
  return {matrix.begin(), matrix.end()};
}

}  // namespace

template <class T>
void report_repaired_correlation(const Matrix& correlation, const std::vector<std::string>& names,
                                 const SSThreadServices* services, Report& report) {
  expect_finite(correlation, names);
  const size_t p = names.size();
  MatrixReport table = {"Repaired correlation", names, repaired<T>(correlation, p, services)};
  size_t most = 0;
  const auto change = [&](size_t k) { return std::fabs(table.values[k] - correlation[k]); };
  for (size_t k = 0; k < p * p; ++k) most = change(k) > change(most) ? k : most;
  const double before = least_eigenvalue(correlation, p);
  // Floats round, where nothing is repaired, too.
  table.note = change(most) > 1e-7
                   ? fmt::format(
                         "least eigenvalue {:.6g} before and {:.6g} after; largest change {:.6g}, "
                         "of {} and {}",
                         before, least_eigenvalue(table.values, p), change(most),
                         one_line(names[most / p], 40), one_line(names[most % p], 40))
                   : fmt::format("least eigenvalue {:.6g}: the correlation stays as it is", before);
  report.matrices.push_back(std::move(table));
}

template void report_repaired_correlation<float>(const Matrix&, const std::vector<std::string>&,
                                                 const SSThreadServices*, Report&);
template void report_repaired_correlation<double>(const Matrix&, const std::vector<std::string>&,
                                                  const SSThreadServices*, Report&);

}  // namespace orv_cli
