#include "ForcedVibration/ResultFiles.h"

#include <string_view>

namespace verenwick {
namespace {

using results::Needs;
using results::ResultFile;
using results::resultFile;

bool isCalledFor(Needs needs, const ResultConditions& conditions) {
  switch (needs) {
    case Needs::couplingOrDamper:
      return conditions.hasCouplingOrDamper;
    case Needs::ice:
      return conditions.hasIce;
    case Needs::iceAndCouplingOrDamper:
      return conditions.hasIce && conditions.hasCouplingOrDamper;
    case Needs::angleBased:
      return conditions.isAngleBased;
    case Needs::nothing:
    case Needs::diesel:
      break;
  }
  return true;
}

constexpr std::array kMainQuantities = {Quantity::deflection, Quantity::velocity,
                                        Quantity::acceleration, Quantity::torque, Quantity::stress};

/// The waveform files of diesels and propellers by quantity.
constexpr std::array<std::array<const ResultFile*, 2>, kMainQuantities.size()> kWaveformFiles = {{
    {&resultFile("AngularDefAngleBasedDiesel.bin"),
     &resultFile("AngularDefAngleBasedPropeller.bin")},
    {&resultFile("AngularVelAngleBasedDiesel.bin"),
     &resultFile("AngularVelAngleBasedPropeller.bin")},
    {&resultFile("AngularAcceAngleBasedDiesel.bin"),
     &resultFile("AngularAcceAngleBasedPropeller.bin")},
    {&resultFile("TorqueAngleBasedDiesel.bin"), &resultFile("TorqueAngleBasedPropeller.bin")},
    {&resultFile("StressAngleBasedDiesel.bin"), &resultFile("StressAngleBasedPropeller.bin")},
}};

std::size_t row(const ResultFile& file) {
  return static_cast<std::size_t>(&file - results::kResultFiles.data());
}

}  // namespace

ForcedResultFiles::ForcedResultFiles(const ResultConditions& conditions) {
  const auto openFamilies = [&](std::initializer_list<Family> families) {
    for (const Family family : families) {
      for (const Quantity quantity : kMainQuantities) {
        open(results::familyFile(family, quantity), conditions);
      }
    }
  };
  const auto openNamed = [&](std::initializer_list<std::string_view> names) {
    for (const std::string_view name : names) {
      open(*results::findResultFile(name), conditions);
    }
  };
  openFamilies({Family::diesel, Family::propeller});
  openNamed({"SynthesisDeflection.bin", "SynthesisVelocity.bin", "SynthesisAcceleration.bin",
             "SynthesisTorque.bin", "SynthesisStress.bin", "ShaftPowerLoss.bin",
             "NominalTorque.bin", "NominalStress.bin"});
  openFamilies({Family::generator, Family::electricMotor, Family::centrifugalPump,
                Family::reciprocatingPump});
  for (const auto& dieselAndPropeller : kWaveformFiles) {
    for (const ResultFile* file : dieselAndPropeller) {
      open(*file, conditions);
    }
  }
  openNamed({"SynPropIceDeflection.bin", "SynPropIceVelocity.bin", "SynPropIceAccele.bin",
             "SynPropIceTorque.bin", "SynPropIceStress.bin", "PropellerShaftMarks.bin",
             "SynPropIceDampingTorque.bin"});
  for (int f = 0; f < results::kFamilies; ++f) {
    open(results::familyFile(static_cast<Family>(f), Quantity::dampingTorque), conditions);
  }
  openNamed({"SynthesisDampingTorque.bin", "ResultantTorque.bin"});
}

void ForcedResultFiles::open(const ResultFile& file, const ResultConditions& conditions) {
  if (isCalledFor(file.needs, conditions)) {
    files_[row(file)] = std::make_unique<DirectAccessFile>(file);
  }
}

DirectAccessFile* ForcedResultFiles::find(const ResultFile& file) {
  return files_[row(file)].get();
}

void ForcedResultFiles::writeFamily(std::int32_t loadCase, Family family,
                                    const FamilyResults& results) {
  for (int q = 0; q < results::kQuantities; ++q) {
    const auto quantity = static_cast<Quantity>(q);
    const ComplexArrays& values = results.of(quantity);
    DirectAccessFile* const file = find(results::familyFile(family, quantity));
    if (file == nullptr || values.AMP.empty()) {
      continue;
    }
    std::int64_t record = results::recordOfFamilyElement(loadCase, results.sources, results.orders,
                                                         results.points.of(quantity), 1, 1, 1, 1);
    for (std::size_t e = 0; e < values.AMP.size(); ++e) {
      file->write(record++, values.AMP[e]);
      file->write(record++, values.ANGLE[e]);
      file->write(record++, values.RE[e]);
      file->write(record++, values.IM[e]);
    }
  }
}

void ForcedResultFiles::writePoints(std::int32_t loadCase, const ResultFile& file,
                                    std::span<const double> values) {
  if (DirectAccessFile* const open = find(file); open != nullptr && !values.empty()) {
    open->write(
        results::recordOfLoadCasePoint(loadCase, static_cast<std::int64_t>(values.size()), 1),
        values);
  }
}

void ForcedResultFiles::writeWaveforms(std::int32_t loadCase, Quantity quantity,
                                       std::int32_t points, const Waveforms& waveforms) {
  if (quantity == Quantity::dampingTorque) {
    return;
  }
  const std::size_t length = asSize(points) * kAngleSteps;
  for (std::size_t f = 0; f < 2; ++f) {
    DirectAccessFile* const file = find(*kWaveformFiles[static_cast<std::size_t>(quantity)][f]);
    if (file == nullptr) {
      continue;
    }
    const std::int64_t record = results::recordOfAngleStep(loadCase, points, 1, 1);
    const std::vector<double> zero(waveforms[f].empty() ? length : 0);
    file->write(record, waveforms[f].empty() ? zero : waveforms[f]);
  }
}

void ForcedResultFiles::close() {
  for (auto& file : files_) {
    if (file) {
      file->close();
    }
  }
}

}  // namespace verenwick
