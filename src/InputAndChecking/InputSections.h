#pragma once

#include <span>
#include <string_view>

#include "InputAndChecking/InputReader.h"

namespace verenwick {

/// The section that is a keyword and nothing else: it asks for angle based results.
inline constexpr std::string_view kAngleBasedKeyword = "OUTPUTANGLEBASEDRESULTS";

/// A kind of section of the input file.
struct InputSection {
  std::string_view keyword;
  /// Field list of the keyword line, as its message names it.
  std::string_view fields;
  /// Whether the load case table has room for one entry of each section.
  bool isComponent;
  /// Sizes the kind's table; null for a section that has no table of its own.
  void (*allocate)(ModelBundle& model, std::int32_t count);
  /// Reads the section, its keyword line being the reader's current line, into the record at a
  /// position; writes its message and returns false where it can't be read.
  bool (*read)(InputReader& in, ModelBundle& model, std::int32_t position);
};

/// All sections but LOADCASE, in the order in which a line's first word is compared with them.
std::span<const InputSection> inputSections();

bool readInertia(InputReader& in, ModelBundle& model, std::int32_t position);
bool readShaft(InputReader& in, ModelBundle& model, std::int32_t position);
bool readViscousDamper(InputReader& in, ModelBundle& model, std::int32_t position);
bool readRubberDamper(InputReader& in, ModelBundle& model, std::int32_t position);
bool readSteelSpringDamper(InputReader& in, ModelBundle& model, std::int32_t position);
bool readLinearCoupling(InputReader& in, ModelBundle& model, std::int32_t position);
bool readProgressiveCoupling(InputReader& in, ModelBundle& model, std::int32_t position);
bool readGeislingerCoupling(InputReader& in, ModelBundle& model, std::int32_t position);
bool readDiesel(InputReader& in, ModelBundle& model, std::int32_t position);
bool readPropeller(InputReader& in, ModelBundle& model, std::int32_t position);
bool readPropellerIce(InputReader& in, ModelBundle& model, std::int32_t position);
bool readElectricMotor(InputReader& in, ModelBundle& model, std::int32_t position);
bool readGasTurbine(InputReader& in, ModelBundle& model, std::int32_t position);
bool readSteamTurbine(InputReader& in, ModelBundle& model, std::int32_t position);
bool readGenerator(InputReader& in, ModelBundle& model, std::int32_t position);
bool readCentrifugalPump(InputReader& in, ModelBundle& model, std::int32_t position);
bool readReciprocatingPump(InputReader& in, ModelBundle& model, std::int32_t position);

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
