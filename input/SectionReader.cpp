#include "input/SectionReader.h"

#include <algorithm>
#include <stdexcept>

#include "input/Words.h"

namespace verenwick::input {
namespace {

/// A path is a line of its own; what is written there counts to the last character.
bool isPath(const Line& line) {
  return !line.fields.empty() &&
         (line.fields[0].type == Type::wholeLine || line.fields[0].type == Type::trimmedLine);
}

bool stands(const When& when, const SectionValues& values) {
  if (when.is == When::Is::always) {
    return true;
  }
  if (!values.has(when.field)) {
    return false;
  }
  switch (when.is) {
    case When::Is::set:
      return values.flag(when.field);
    case When::Is::clear:
      return !values.flag(when.field);
    default:
      return values.integer(when.field) == when.choice;
  }
}

}  // namespace

bool SectionReader::readKeywordLine(const Section& section, SectionValues& values) {
  values.section_ = &section;
  values.firstLine_ = lines_.number();
  values.found_.clear();
  values.values_.clear();
  return readLine(section.lines.front(), behindFirstWord(lines_.current()), values);
}

bool SectionReader::readFurtherLines(SectionValues& values) {
  for (const Line& line : values.section().lines.subspan(1)) {
    if (!stands(line.when, values)) {
      continue;
    }
    line_ = &line;
    if (!lines_.next() || !readLine(line, lines_.current(), values)) {
      return false;
    }
  }
  return true;
}

bool SectionReader::readLine(const Line& line, std::string_view text, SectionValues& values) {
  line_ = &line;
  if (!isPath(line)) {
    return readFields(line, text, values);
  }
  const Field& field = line.fields.front();
  std::string_view path = text;
  if (field.type == Type::trimmedLine) {
    path.remove_prefix(std::min(path.find_first_not_of(' '), path.size()));
  }
  const std::size_t column = static_cast<std::size_t>(path.data() - text.data());
  path = withoutTrailingBlanks(path.substr(0, field.length));
  values.found_.push_back({&field, values.values_.size(), 1});
  values.values_.push_back({0, 0, std::string(path), {lines_.number(), column, path.size()}});
  return true;
}

bool SectionReader::readFields(const Line& line, std::string_view text, SectionValues& values) {
  const char* lineStart = lines_.current().data();
  FreeFormat from(text);
  for (const Field& field : line.fields) {
    std::int32_t count = field.repeat.times;
    if (!field.repeat.countedBy.empty()) {
      count = std::max(values.integer(field.repeat.countedBy), 0);
      if (count > field.repeat.times) {
        return false;
      }
    }
    values.found_.push_back({&field, values.values_.size(), static_cast<std::size_t>(count)});
    for (std::int32_t i = 0; i < count; ++i) {
      Value& value = values.values_.emplace_back();
      if (!readValue(field, from, value)) {
        return false;
      }
      value.place.line = lines_.number();
      value.place.length = from.token().size();
      value.place.column =
          from.token().empty() ? 0 : static_cast<std::size_t>(from.token().data() - lineStart);
    }
  }
  return true;
}

bool SectionReader::readValue(const Field& field, FreeFormat& from, Value& value) {
  switch (field.type) {
    case Type::integer:
    case Type::flag:
      return from.read(value.integer);
    case Type::orderCount:
      return from.read(value.integer) && value.integer <= kOrderPlaces;
    case Type::real:
      if (!from.read(value.real)) {
        return false;
      }
      value.real = field.unit.factor * value.real / field.unit.divisor;
      return true;
    case Type::choice:
      if (!from.read(value.text)) {
        return false;
      }
      choose(field, value.text, value);
      return true;
    case Type::lineChoice:
      static_cast<void>(from.nextToken());
      choose(field, from.token(), value);
      return true;
    case Type::word:
    case Type::wholeLine:
    case Type::trimmedLine:
      break;
  }
  if (!from.read(value.text)) {
    return false;
  }
  value.text.resize(std::min(value.text.size(), field.length));
  return true;
}

void SectionReader::choose(const Field& field, std::string_view word, Value& value) {
  std::int32_t& choice = inForce(field);
  const std::string upper = upperCase(word);
  const auto found = std::find(field.words.begin(), field.words.end(), upper);
  if (found != field.words.end()) {
    choice = static_cast<std::int32_t>(found - field.words.begin()) + 1;
  }
  value.integer = choice;
}

std::int32_t& SectionReader::inForce(const Field& field) {
  auto found = std::find_if(choices_.begin(), choices_.end(),
                            [&](const auto& choice) { return choice.first == &field; });
  if (found == choices_.end()) {
    choices_.emplace_back(&field, 0);
    found = choices_.end() - 1;
  }
  return found->second;
}

const Section* sectionBegunBy(std::string_view line) {
  return findSection(upperCase(firstWord(line)));
}

}  // namespace verenwick::input
