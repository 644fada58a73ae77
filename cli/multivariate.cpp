// SPDX-License-Identifier: MIT
#include "multivariate.hpp"

#include <algorithm>
#include <cmath>
#include <limits>

#include "columns.hpp"
#include "error.hpp"
#include "numbers.hpp"

extern "C" void dpotrf_(const char* uplo, const int* n, double* a, const int* lda, int* info);

namespace orv_cli {
namespace {

using Matrix = std::vector<std::vector<double>>;  // rows

Matrix read_rows(const std::string& path) {
  Table table(path, Header::automatic);
  Matrix rows;
  while (const CsvRow* row = table.next()) {
    std::vector<double> numbers;
    for (size_t j = 0; j < row->cells.size(); ++j) {
      numbers.push_back(table.number<double>(row->cells[j], row->line, j));
      if (!std::isfinite(numbers.back())) {
        throw Error("{}: {} is not finite", table.place(row->line, j), in_quotes(row->cells[j]));
      }
    }
    rows.push_back(std::move(numbers));
  }
  return rows;
}

/// All numbers of a square matrix, row after row.
std::vector<double> square_matrix(const Matrix& rows, const std::string& what) {
  std::vector<double> all;
  for (const auto& row : rows) {
    if (row.size() != rows.size()) {
      throw Error("{}: {} rows of {} numbers; a square matrix is needed", what, rows.size(),
                  row.size());
    }
    all.insert(all.end(), row.begin(), row.end());
  }
  return all;
}

/// The lower factor T of a covariance T T'.
std::vector<double> factor_of(const std::string& path) {
  const std::string what = "--covariance " + in_quotes(path);
  std::vector<double> matrix = square_matrix(read_rows(path), what);
  const auto dim = static_cast<int>(std::lround(std::sqrt(static_cast<double>(matrix.size()))));
  for (int i = 0; i < dim; ++i) {
    for (int j = 0; j < i; ++j) {
      const double below = matrix[i * dim + j], above = matrix[j * dim + i];
      if (std::abs(below - above) > 1e-12 * (std::abs(below) + std::abs(above))) {
        throw Error("{}: row {}, column {} has {}, but row {}, column {} has {}", what, i + 1,
                    j + 1, below, j + 1, i + 1, above);
      }
    }
  }
  int info = 0;
  dpotrf_("U", &dim, matrix.data(), &dim, &info);  // U in columns is T in rows
  if (info != 0)
    throw Error("{}: its first {} rows and columns are not positive definite", what, info);
  return matrix;
}

int32_t storage_of(const std::string& name) {
  if (name == "packed") return RNG_STORAGE_PACKED;
  return name == "diagonal" ? RNG_STORAGE_DIAGONAL : RNG_STORAGE_FULL;
}

struct Factor {
  int32_t dim, storage;
  std::vector<double> numbers;
};

Factor read_factor(const MultivariateOptions& options) {
  const auto dim_of = [](size_t count) {
    return static_cast<int32_t>(std::lround(std::sqrt(static_cast<double>(count))));
  };
  if (!options.covariance.empty()) {
    std::vector<double> numbers = factor_of(options.covariance);
    return {dim_of(numbers.size()), RNG_STORAGE_FULL, std::move(numbers)};
  }
  const std::string what = "--factor " + in_quotes(options.factor);
  const int32_t storage = storage_of(options.storage);
  const Matrix rows = read_rows(options.factor);
  if (storage == RNG_STORAGE_FULL) {
    std::vector<double> numbers = square_matrix(rows, what);
    return {dim_of(numbers.size()), storage, std::move(numbers)};
  }
  std::vector<double> numbers;
  for (const auto& row : rows) numbers.insert(numbers.end(), row.begin(), row.end());
  if (storage == RNG_STORAGE_DIAGONAL) {
    return {static_cast<int32_t>(numbers.size()), storage, std::move(numbers)};
  }
  const int32_t dim = dim_of(2 * numbers.size() + 1) - 1;
  for (const int32_t d : {dim, dim + 1}) {
    if (d > 0 && numbers.size() == size_t(d) * (d + 1) / 2) return {d, storage, std::move(numbers)};
  }
  throw Error("{}: {} numbers; a packed triangle has 1, 3, 6, 10, ...", what, numbers.size());
}

std::vector<double> mean_of(const std::map<std::string_view, std::string>& parameters,
                            int32_t dim) {
  const auto given = parameters.find("mean");
  if (given == parameters.end()) return std::vector<double>(dim, 0.0);
  std::vector<double> mean = number_list("--mean", given->second);
  if (mean.size() != static_cast<size_t>(dim)) {
    throw Error("--mean {}: {} numbers for vectors of {}", in_quotes(given->second), mean.size(),
                dim);
  }
  return mean;
}

}  // namespace

template <>
int32_t Vectors<double>::draw(int32_t method, StreamState* stream, int32_t n, double* r) const {
  return _zokdRngGaussianMV(method, stream, n, r, dim, storage, mean.data(), factor.data());
}
template <>
int32_t Vectors<float>::draw(int32_t method, StreamState* stream, int32_t n, float* r) const {
  return _zoksRngGaussianMV(method, stream, n, r, dim, storage, mean.data(), factor.data());
}

template <class T>
Vectors<T> multivariate(const MultivariateOptions& options,
                        const std::map<std::string_view, std::string>& parameters) {
  if (options.covariance.empty() == options.factor.empty()) {
    throw Error("{} needs --covariance FILE or --factor FILE, one of them", multivariate_kind);
  }
  if (!options.storage.empty() && options.factor.empty()) {
    throw Error("--storage {}: only a --factor is stored one way or another",
                in_quotes(options.storage));
  }
  const Factor factor = read_factor(options);
  const std::vector<double> mean = mean_of(parameters, factor.dim);
  return {factor.dim,
          factor.storage,
          {mean.begin(), mean.end()},
          {factor.numbers.begin(), factor.numbers.end()}};
}

template Vectors<double> multivariate(const MultivariateOptions&,
                                      const std::map<std::string_view, std::string>&);
template Vectors<float> multivariate(const MultivariateOptions&,
                                     const std::map<std::string_view, std::string>&);

}  // namespace orv_cli
