#pragma once

#include <span>
#include <string_view>

#include "InputAndChecking/InputReader.h"

namespace verenwick {

using input::SectionValues;

/// A kind of section of the input file, as the solver takes it in.
struct InputSection {
  std::string_view keyword;
  /// Whether the load case table has room for one entry of each section.
  bool isComponent;
  /// Sizes the kind's table; null for a section that has no table of its own.
  void (*allocate)(ModelBundle& model, std::int32_t count);
  /// Puts the values of a section into the record at a position; null for a section without any.
  void (*fill)(const SectionValues& values, ModelBundle& model, std::int32_t position,
               InputReader& in);
};

/// All sections but LOADCASE, in the order in which a line's first word is compared with them.
std::span<const InputSection> inputSections();

void fillInertia(const SectionValues& values, ModelBundle& model, std::int32_t position,
                 InputReader& in);
void fillShaft(const SectionValues& values, ModelBundle& model, std::int32_t position,
               InputReader& in);
void fillViscousDamper(const SectionValues& values, ModelBundle& model, std::int32_t position,
                       InputReader& in);
void fillRubberDamper(const SectionValues& values, ModelBundle& model, std::int32_t position,
                      InputReader& in);
void fillSteelSpringDamper(const SectionValues& values, ModelBundle& model, std::int32_t position,
                           InputReader& in);
void fillLinearCoupling(const SectionValues& values, ModelBundle& model, std::int32_t position,
                        InputReader& in);
void fillProgressiveCoupling(const SectionValues& values, ModelBundle& model, std::int32_t position,
                             InputReader& in);
void fillGeislingerCoupling(const SectionValues& values, ModelBundle& model, std::int32_t position,
                            InputReader& in);
void fillDiesel(const SectionValues& values, ModelBundle& model, std::int32_t position,
                InputReader& in);
void fillPropeller(const SectionValues& values, ModelBundle& model, std::int32_t position,
                   InputReader& in);
void fillPropellerIce(const SectionValues& values, ModelBundle& model, std::int32_t position,
                      InputReader& in);
void fillElectricMotor(const SectionValues& values, ModelBundle& model, std::int32_t position,
                       InputReader& in);
void fillGasTurbine(const SectionValues& values, ModelBundle& model, std::int32_t position,
                    InputReader& in);
void fillSteamTurbine(const SectionValues& values, ModelBundle& model, std::int32_t position,
                      InputReader& in);
void fillGenerator(const SectionValues& values, ModelBundle& model, std::int32_t position,
                   InputReader& in);
void fillCentrifugalPump(const SectionValues& values, ModelBundle& model, std::int32_t position,
                         InputReader& in);
void fillReciprocatingPump(const SectionValues& values, ModelBundle& model, std::int32_t position,
                           InputReader& in);

/// Reads the load case table, the reader's current line being its keyword.
bool readLoadCases(InputReader& in, ModelBundle& model);

/// Reads "Genset.txt" in the result directory.
bool readGensetFile(ModelBundle& model);

/// Gives each component the speed ratio of the inertia or shaft that it sits on.
void copySpeedRatios(ModelBundle& model);

/// Makes the inertia at a node part of a component; a node that is not in the table is passed over.
void markInertia(ModelBundle& model, std::int32_t node, MassType massType, ComponentType owner,
                 std::int32_t ownerId);

/// Makes the shaft at a position part of a component; position 0 is passed over.
void markShaft(ModelBundle& model, std::int32_t position, ShaftType shaftType, ComponentType owner,
               std::int32_t ownerId);

/// Torque at maximum continuous rating in N m from power in W and speed in rpm.
inline double ratedTorque(double power, double rpm) { return power / angularSpeed(rpm); }

}  // namespace verenwick
