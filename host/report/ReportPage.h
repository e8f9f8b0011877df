#pragma once

#include <string_view>

namespace verenwick::host {

/// The page of a report with the marker `kDataMarker` where its data go. Made when building from
/// host/report/page.
std::string_view reportPage();

inline constexpr std::string_view kDataMarker = "@DATA@";

}  // namespace verenwick::host
