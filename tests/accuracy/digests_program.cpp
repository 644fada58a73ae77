// Prints the digests of this build, as tests/accuracy/digests.txt records them.
#include <iostream>

#include "measure.hpp"

int main() {
  std::cout << "# Digests of each kernel's results over a fixed input set, the same in every build "
               "and on\n"
               "# every processor. Made by: digests > tests/accuracy/digests.txt\n";
  for (const auto& [name, text] : orv_test::compute_digests())
    std::cout << name << ' ' << text << '\n';
}
