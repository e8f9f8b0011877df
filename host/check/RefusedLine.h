#pragma once

#include "host/check/Finding.h"
#include "input/InputDocument.h"

namespace verenwick::host {

/// Why a line can't be read: what its section wants there, what stands there, and the probable
/// cause. Adds nothing for a text that could be read whole.
void explainRefusedLine(const input::InputDocument& document, Findings& to);

}  // namespace verenwick::host
