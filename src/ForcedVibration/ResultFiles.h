#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <span>

#include "ForcedVibration/FamilyResults.h"
#include "ForcedVibration/Synthesis.h"
#include "RunControl/Files.h"

namespace verenwick {

/// What of a model decides which files a forced calculation leaves.
struct ResultConditions {
  bool hasCouplingOrDamper = false;
  bool hasIce = false;
  bool isAngleBased = false;  ///< angle based results are asked for, and there is a diesel
};

/// The result files of the forced calculation: all of the table that the model calls for, open from
/// the first load case to the last.
class ForcedResultFiles {
 public:
  /// Opens the files; throws RunStopped when one can't be opened.
  explicit ForcedResultFiles(const ResultConditions& conditions);

  /// Writes all quantities of a family in a load case.
  void writeFamily(std::int32_t loadCase, Family family, const FamilyResults& results);

  /// Writes one value a point of a load case. A file that the model doesn't call for is passed
  /// over.
  void writePoints(std::int32_t loadCase, const results::ResultFile& file,
                   std::span<const double> values);

  /// Writes waveforms of diesels or propellers, 360 values a point; nothing where they aren't asked
  /// for. A family without sources has still waveforms.
  void writeWaveforms(std::int32_t loadCase, Quantity quantity, std::int32_t points,
                      const Waveforms& waveforms);

  /// Throws RunStopped when a file could not be written.
  void close();

 private:
  void open(const results::ResultFile& file, const ResultConditions& conditions);
  /// Null for a file that the model doesn't call for.
  DirectAccessFile* find(const results::ResultFile& file);

  std::array<std::unique_ptr<DirectAccessFile>, results::kResultFiles.size()> files_;
};

}  // namespace verenwick
