#pragma once

#include <string_view>

namespace verenwick::host {

/// Stands in a remark or a comment of an input file made by `verenwick new` where a value is not
/// yet that of the plant.
inline constexpr std::string_view kPlaceholder = "<fill in>";

}  // namespace verenwick::host
