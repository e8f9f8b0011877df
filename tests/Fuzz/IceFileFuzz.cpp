#include "ComponentTables/PropellerFiles.h"
#include "FuzzedFile.h"

// An ice excitation file and an entrained water file, loaded and used at a load case.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace verenwick;
  PROPELLER_TABLE table;
  ALLOCATE_PROPELLER_TABLE(table, 1);
  PROPELLER_RECORD& propeller = table.at(1);
  propeller.NBLADE = 1 + static_cast<std::int32_t>(size % 5);
  propeller.NSPEEDRATIO = size % 2 == 0 ? 2 : 10;
  propeller.NLOADCASE = 3;
  propeller.HASICEEXCITATION = propeller.ISVARIABLEENTRAINEDWATER = true;
  propeller.EXCITATIONFILE = propeller.VARIABLEENTRAINEDWATERFILE = fuzz::fuzzedFile(data, size);
  if (LOAD_PROPELLER_EXCITATIONFILE(table, 1)) {
    CALCULATE_PROPELLER_FOURIERCOEFFICIENT(table, 1);
  }
  if (LOAD_PROPELLER_VARIABLEENTRAINEDWATERFILE(table, 1)) {
    static_cast<void>(CALCULATE_PROPELLER_CURRENTINERTIAWATER(table, 1, 2));
  }
  return 0;
}
