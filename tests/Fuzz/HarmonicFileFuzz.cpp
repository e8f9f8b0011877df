#include "ComponentTables/Global_Diesel.h"
#include "FuzzedFile.h"

// A harmonic data file of an engine, loaded and interpolated in.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace verenwick;
  DIESEL_TABLE table;
  ALLOCATE_DIESEL_TABLE(table, 1);
  SET_DIESEL_NORMALHARMONICFILE(table, 1, fuzz::fuzzedFile(data, size));
  bool status = false;
  LOADHALDORINFILE(table, status);
  static_cast<void>(GETNORMALFIRINGHARMONICDATA(table, 1, 1.5e6));
  return 0;
}
