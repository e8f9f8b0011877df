#include "ComponentTables/ModelBundle.h"
#include "FuzzedFile.h"
#include "InputAndChecking/DataChecking.h"
#include "InputAndChecking/ImportInputFile.h"

// An input file, read and checked for a forced calculation.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  verenwick::ModelBundle model;
  if (verenwick::READINPUTFILE(verenwick::fuzz::fuzzedFile(data, size), model)) {
    static_cast<void>(verenwick::DATACHECKING(model, 3));
  }
  return 0;
}
