#include "input/SectionValues.h"

#include <algorithm>
#include <stdexcept>

namespace verenwick::input {

std::span<const Value> SectionValues::all(std::string_view name) const {
  for (const Found& found : found_) {
    if (found.field->name == name) {
      return std::span(values_).subspan(found.first, found.count);
    }
  }
  for (const Line& line : section_->lines) {
    for (const Field& field : line.fields) {
      if (field.name == name) {
        return {};
      }
    }
  }
  throw std::logic_error(std::string(section_->keyword) + " has no " + std::string(name));
}

const Value& SectionValues::value(std::string_view name) const {
  static const Value nothing;
  const auto values = all(name);
  return values.empty() ? nothing : values.front();
}

const Field& SectionValues::fieldOf(const Value& value) const {
  const auto place = static_cast<std::size_t>(&value - values_.data());
  const auto found = std::find_if(found_.begin(), found_.end(), [place](const Found& each) {
    return place >= each.first && place < each.first + each.count;
  });
  return *found->field;
}

void SectionValues::copyReals(std::string_view name, std::span<double> to) const {
  const auto values = all(name);
  std::transform(values.begin(), values.end(), to.begin(), [](const Value& v) { return v.real; });
}

void SectionValues::copyIntegers(std::string_view name, std::span<std::int32_t> to) const {
  const auto values = all(name);
  std::transform(values.begin(), values.end(), to.begin(),
                 [](const Value& v) { return v.integer; });
}

}  // namespace verenwick::input
