// SPDX-License-Identifier: MIT
#include "poisson_means.hpp"

#include "columns.hpp"
#include "distributions.hpp"
#include "error.hpp"
#include "numbers.hpp"

namespace orv_cli {
namespace {

void expect_mean(const std::string& what, std::string_view text, double mean) {
  if (is_allowed(Allowed::mean_of_counts, mean)) return;
  throw Error("{} {}: allowed are {}", what, in_quotes(text), text_of(Allowed::mean_of_counts));
}

std::vector<double> from_file(const PoissonMeansOptions& options) {
  const std::vector<std::string> columns =
      options.column.empty() ? std::vector<std::string>{} : std::vector{options.column};
  ColumnReader reader(options.file, columns, Header::automatic, Missing::fail);
  std::vector<double> means;
  for (std::vector<Cell> cells; reader.next(cells);) {
    means.push_back(reader.number<double>(cells[0]));
    expect_mean(fmt::format("{}, line {}", options.file, cells[0].line), cells[0].text,
                means.back());
  }
  return means;
}

}  // namespace

std::vector<double> poisson_means(const PoissonMeansOptions& options) {
  if (options.list.empty() == options.file.empty()) {
    throw Error("{} needs --means LIST or --means-file FILE, one of them", poisson_vector_kind);
  }
  if (!options.column.empty() && options.file.empty()) {
    throw Error("--column {}: only a --means-file has columns", in_quotes(options.column));
  }
  if (!options.file.empty()) return from_file(options);
  std::vector<double> means = number_list("--means", options.list);
  for (const double mean : means) expect_mean("--means", options.list, mean);
  return means;
}

}  // namespace orv_cli
