#include "ComponentTables/ModelBundle.h"
#include "FuzzedFile.h"
#include "InputAndChecking/ImportInputFile.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  verenwick::ModelBundle model;
  static_cast<void>(verenwick::READINPUTFILE(verenwick::fuzz::fuzzedFile(data, size), model));
  return 0;
}
