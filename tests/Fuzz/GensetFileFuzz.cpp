#include "FuzzedFile.h"
#include "InputAndChecking/InputSections.h"

// The genset pressures of two engines in three load cases.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace verenwick;
  ModelBundle model;
  ALLOCATE_DIESEL_TABLE(model.diesel, 2);
  model.loadCaseSpeed.allocate(3);
  fuzz::fuzzedFile(data, size, "Genset.txt");
  if (readGensetFile(model)) {
    static_cast<void>(GET_LOADCASEGENSET_PRESSUREMAX(model.loadCaseGenset, 1, 3));
  }
  return 0;
}
