// Writes the worst files, decrypted, into the folder that is named, and the bounds on what a command may take
// of them to standard output, as JSON.

#include <fstream>
#include <iostream>

#include "tests/costs/worst_inputs.h"
#include "tests/support/cost_bounds.h"

namespace {

void PrintBound(const char* name, const zuna_test::CostBound& bound) {
  std::cout << '"' << name << "\": [" << bound.constant << ", " << bound.factor << ']';
}

}  // namespace

int main(int count, char** arguments) {
  if (count != 2) {
    std::cerr << "usage: write_worst_files FOLDER\n";
    return 2;
  }
  for (const auto& [name, bytes] : zuna_test::WorstFiles()) {
    std::ofstream file(std::string(arguments[1]) + "/" + name, std::ios::binary);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    if (!file.flush()) return 1;
  }
  std::cout << '{';
  PrintBound("heap", zuna_test::kCommandHeapBound);
  std::cout << ", ";
  PrintBound("printed", zuna_test::kPrintedBound);
  std::cout << "}\n";
  return 0;
}
