// Prints the digests of this build, as tests/accuracy/digests.txt records them.
#include <iostream>

#include "measure.hpp"

int main() {
  std::cout
      << "# Digests of each kernel's results over a fixed input set, the same in every build; "
         "those\n"
         "# marked \"machine\" use an estimate of the processor and hold for the one named below.\n"
         "# Made by: digests > tests/accuracy/digests.txt\n";
  orv_test::Digests digests = orv_test::compute_digests();
  std::cout << "machine " << digests.extract("machine").mapped() << '\n';
  for (const auto& [name, text] : digests) std::cout << name << ' ' << text << '\n';
}
