#pragma once

#include <span>
#include <string_view>

namespace verenwick::host {

/// An input file to begin with. It runs as it is, and bears `kPlaceholder` where values of the
/// plant belong.
struct Template {
  std::string_view kind;  ///< the name of its file
  std::string_view text;
};

/// The texts of host/templates, in the order of their names; put into the program when building.
std::span<const Template> templates();

}  // namespace verenwick::host
