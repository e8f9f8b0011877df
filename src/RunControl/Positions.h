#pragma once

#include <cstddef>
#include <cstdint>

/// Counts and positions, which run from 1, beside the elements of an array, which run from 0.
namespace verenwick {

constexpr std::size_t asSize(std::int32_t count) { return static_cast<std::size_t>(count); }

/// The element of an array at a position.
constexpr std::size_t index(std::int32_t position) { return asSize(position) - 1; }

}  // namespace verenwick
