// digests                 prints the digests of this build
// digests --write FILE    writes them to FILE
#include <cstring>
#include <fstream>
#include <iostream>

#include "digests.hpp"

int main(int argc, char** argv) {
  if (argc == 1) {
    write_digests(orv_test::compute_digests(), std::cout);
    return 0;
  }
  if (argc != 3 || std::strcmp(argv[1], "--write") != 0) {
    std::cerr << "usage: digests [--write FILE]\n";
    return 2;
  }
  std::ofstream file(argv[2]);
  write_digests(orv_test::compute_digests(), file);
  file.close();
  if (!file) std::cerr << "digests: cannot write " << argv[2] << '\n';
  return file ? 0 : 2;
}
