#pragma once

#include <string>

#include "ComponentTables/ModelBundle.h"

namespace verenwick::test {

enum class Fields { all, changed };

/// The tables of a model as text, a line a record: "DIESEL 17 NSTROKE=4 MCRPOWER=1000000 ...".
/// Arrays are shown up to their last value that isn't zero.
/// @param fields all of them, or those that differ from a new record
std::string tableText(const ModelBundle& model, Fields fields);

}  // namespace verenwick::test
