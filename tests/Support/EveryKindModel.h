#pragma once

#include "ComponentTables/ModelBundle.h"

namespace verenwick::test {

/// A sound plant with one component of every kind, as it stands behind the read of its input file.
/// No id equals a position: inertias 201 to 216, shafts 301 to 315, components 11 to 24.
ModelBundle everyKindModel();

/// Ids of the inertias.
enum Inertia : std::int32_t {
  ring = 201,
  casing,
  cylinder1,
  cylinder2,
  flywheel,
  turningMass,
  drivePlate,
  outerMember,
  innerMember,
  screw,
  alternator,
  motor,
  gasTurbine,
  steamTurbine,
  impeller,
  pumpCylinder
};

/// Ids of the shafts that carry something.
enum Shaft : std::int32_t {
  viscousLink = 301,
  crankThrow = 303,
  linearShaft = 304,
  rubberLink = 306,
  springLink = 308,
  geislingerShaft = 309,
  progressiveShaft = 310
};

/// Adds a copy of the first record, its id included.
template <class Table>
void addCopy(Table& table) {
  const Table old = table;
  table.allocate(old.number() + 1);
  for (std::int32_t i = 1; i <= table.number(); ++i) {
    const std::int32_t from = i <= old.number() ? i : 1;
    table.at(i) = old.at(from);
    table.setId(i, old.id(from));
  }
}

}  // namespace verenwick::test
