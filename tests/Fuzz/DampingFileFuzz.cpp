#include "ComponentTables/Global_ViscousDamper.h"
#include "FuzzedFile.h"

// A viscous damper's table over frequency, loaded and interpolated in.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace verenwick;
  VISCOUSDAMPER_TABLE table;
  ALLOCATE_VISCOUSDAMPER_TABLE(table, 1);
  SET_VISCOUSDAMPER_CUSTOMDAMPINGFILE(table, 1, fuzz::fuzzedFile(data, size));
  SET_VISCOUSDAMPER_SPEED(table, 1, 600.0);
  if (LOADCUSTOMDAMPINGFILE(table)) {
    static_cast<void>(CALCULATE_VISCOUSDAMPER_CUSTOMDAMPING(table, 1, 4.5));
    static_cast<void>(CALCULATE_VISCOUSDAMPER_CUSTOMSTIFFNESS(table, 1, 4.5));
  }
  return 0;
}
