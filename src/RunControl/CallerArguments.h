#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

/// What a host hands to an entry of the C interface.
namespace verenwick {

/// True if the host left out an argument.
template <class... Arguments>
bool isAnyMissing(const Arguments*... arguments) {
  return ((arguments == nullptr) || ...);
}

/// An array of the host; a count of 0 or less is an empty one.
template <class Element>
std::span<Element> callerArray(Element* first, std::int32_t count) {
  return {first, count > 0 ? static_cast<std::size_t>(count) : 0};
}

/// A logical of the host: the lowest bit decides.
constexpr bool callerLogical(std::int32_t value) { return (value & 1) != 0; }

}  // namespace verenwick
