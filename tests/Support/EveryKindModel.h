#pragma once

#include <string>

#include "ComponentTables/ModelBundle.h"

namespace verenwick::test {

/// The input text of a sound plant with one component of every kind. No id equals a position:
/// inertias 201 to 216, shafts 301 to 315, components 11 to 24 in the order of their checks.
std::string everyKindInput();

/// The same without its load cases.
std::string everyKindShaftLine();

/// The plant behind the read of that text.
ModelBundle everyKindModel();

/// Ids of some of its inertias.
enum Inertia : std::int32_t { ring = 201, turningMass = 206, outerMember = 208, impeller = 215 };

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
