#pragma once

#include "host/check/CheckedPlant.h"
#include "host/check/Finding.h"
#include "results/ResultReader.h"

/// The looks at a plant, by subject. Each adds what it finds.
namespace verenwick::host {

/// Parts that hang together in no tree, and rings.
void checkTree(const CheckedPlant& plant, Findings& to);
/// Sizes of inertias and shafts, ratios, damping.
void checkShaftLine(const CheckedPlant& plant, Findings& to);
void checkEngines(const CheckedPlant& plant, Findings& to);
void checkPropellers(const CheckedPlant& plant, Findings& to);
void checkCouplingsAndDampers(const CheckedPlant& plant, Findings& to);
/// Speeds and powers of the load cases.
void checkLoadCases(const CheckedPlant& plant, Findings& to);
/// Lines that are nearly keywords, words that are nearly choices, lists longer than their count,
/// places left to fill in; also in a file that can't be read to its end.
void checkWords(const CheckedPlant& plant, Findings& to);
/// Ids that two sections have, and a file without any.
void checkIds(const CheckedPlant& plant, Findings& to);
/// Ids and files that lead nowhere.
void checkReferences(const CheckedPlant& plant, Findings& to);
/// What it takes the results of a run to tell.
void checkResults(const CheckedPlant& plant, const results::ResultDirectory& directory,
                  Findings& to);

}  // namespace verenwick::host
