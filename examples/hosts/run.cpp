// Runs a plant in mode 3 and prints the largest torque of each shaft.
// usage: run INPUT_DIRECTORY INPUT_NAME RESULT_DIRECTORY
#include <cstdint>
#include <exception>
#include <iostream>
#include <verenwick.hpp>

#include "results/ResultReader.h"

namespace {

namespace results = verenwick::results;
using results::Index;

void printLargestTorques(const char* directory) {
  results::ResultValues torque =
      results::ResultDirectory(directory).open(results::resultFile("SynthesisTorque.bin"));
  const std::int64_t shafts = torque.axis(Index::point)->last;
  const std::int64_t loadCases = torque.axis(Index::loadCase)->last;
  for (std::int64_t shaft = 1; shaft <= shafts; ++shaft) {
    double largest = 0.0;
    std::int64_t where = 1;
    for (std::int64_t loadCase = 1; loadCase <= loadCases; ++loadCase) {
      results::Position position;
      position[Index::point] = shaft;
      position[Index::loadCase] = loadCase;
      const double value = torque.value(position);
      if (value > largest) {
        largest = value;
        where = loadCase;
      }
    }
    std::cout << "shaft " << shaft << ": " << static_cast<std::int64_t>(largest + 0.5)
              << " N m in load case " << where << '\n';
  }
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 4) {
    std::cerr << "usage: run INPUT_DIRECTORY INPUT_NAME RESULT_DIRECTORY\n";
    return 2;
  }
  try {
    if (!verenwick::api::solve(argv[1], argv[2], argv[3], verenwick::api::Mode::both)) {
      std::cerr << "refused: see Verenwick.log in " << argv[3] << '\n';
      return 1;
    }
    printLargestTorques(argv[3]);
  } catch (const std::exception& fault) {
    std::cerr << fault.what() << '\n';
    return 1;
  }
  return 0;
}
