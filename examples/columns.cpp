// SPDX-License-Identifier: MIT
// Summary statistics of a table: at once, and as two machines would do it that see half of it each.
//     columns examples/data/stackloss.csv
#include <cstdio>
#include <fstream>
#include <orv/dataset.hpp>
#include <sstream>
#include <string>
#include <vector>

namespace {

struct Table {
  std::vector<std::string> names;
  std::vector<double> values;  // row by row
};

Table read(const char* path) {
  Table table;
  std::ifstream file(path);
  std::string line, cell;
  std::getline(file, line);
  for (std::istringstream cells(line); std::getline(cells, cell, ',');) {
    table.names.push_back(cell);
  }
  while (std::getline(file, line)) {
    for (std::istringstream cells(line); std::getline(cells, cell, ',');) {
      table.values.push_back(std::stod(cell));
    }
  }
  return table;
}

void print(const char* what, const std::vector<double>& numbers) {
  std::printf("%-10s", what);
  for (const double x : numbers) std::printf(" %10.4f", x);
  std::printf("\n");
}

void describe(const Table& table) {
  const size_t p = table.names.size();
  const orv::dataset data(orv::table(table.values, p));
  std::printf("%zu rows of %zu columns\n", data.observations(), p);
  const orv::accumulator moments = data.moments();
  print("mean", moments.mean());
  print("deviation", moments.standard_deviation());
  print("skewness", moments.skewness());
  print("least", data.minimum());
  print("median", data.median());
  print("greatest", data.maximum());
  const orv::matrix<double> r = data.correlation();
  for (size_t i = 0; i < p; ++i) {
    print(table.names[i].c_str(), {r.row(i).begin(), r.row(i).end()});
  }

  // Two accumulators; the second comes as bytes, as from another process.
  const size_t half = data.observations() / 2;
  orv::accumulator first(p), second(p);
  first.add(orv::table(table.values.data(), half, p));
  second.add(orv::table(&table.values[half * p], data.observations() - half, p));
  first.merge(orv::accumulator::from_bytes(second.bytes()));
  print("joined", first.mean());
}

}  // namespace

int main(int argc, char** argv) {
  try {
    describe(read(argc > 1 ? argv[1] : ""));
  } catch (const orv::error& e) {
    std::fprintf(stderr, "columns: give a CSV file of numbers below their names (%s)\n", e.what());
    return 2;
  }
}
