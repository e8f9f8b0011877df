#pragma once

#include <string>

#include "ComponentTables/ModelBundle.h"

namespace verenwick::test {

/// The input text of a sound plant with one component of every kind, from every-kind.txt. No id
/// equals a position: inertias 201 to 217, shafts 301 to 316, components 11 to 24.
std::string everyKindInput();

/// The plant behind the read of that text.
ModelBundle everyKindModel();

}  // namespace verenwick::test
