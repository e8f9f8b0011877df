#include "ComponentTables/Global_Diesel.h"
#include "Excitation/HarmonicData.h"
#include "FuzzedFile.h"

// A harmonic data file, loaded as an engine's, with an interpolation in it, and as a pump's.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace verenwick;
  DIESEL_TABLE table;
  ALLOCATE_DIESEL_TABLE(table, 1);
  const std::string path = fuzz::fuzzedFile(data, size);
  SET_DIESEL_NORMALHARMONICFILE(table, 1, path);
  bool status = false;
  LOADHALDORINFILE(table, status);
  static_cast<void>(GETNORMALFIRINGHARMONICDATA(table, 1, 1.5e6));
  HarmonicData pump;
  static_cast<void>(loadHarmonicFile(path, kPumpHarmonicFile, pump));
  return 0;
}
