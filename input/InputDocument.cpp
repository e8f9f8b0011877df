#include "input/InputDocument.h"

#include <algorithm>
#include <charconv>
#include <stdexcept>
#include <utility>

#include "input/LineRules.h"
#include "input/SectionReader.h"
#include "input/Words.h"

namespace verenwick::input {
namespace {

constexpr std::string_view kSpeedKeyword = "RPM";
constexpr std::string_view kBlanks = " \t\r";

std::vector<std::string> wordsOf(std::string_view text) {
  std::vector<std::string> words;
  while (!isBlank(text)) {
    words.emplace_back(firstWord(text));
    text = behindFirstWord(text);
  }
  return words;
}

std::optional<std::int32_t> number(const std::string& word) {
  std::int32_t value = 0;
  return FreeFormat(word).read(value) ? std::optional(value) : std::nullopt;
}

[[noreturn]] void fail(std::string_view name, std::string_view text) {
  throw std::runtime_error(std::string(name) + ": " + std::string(text));
}

/// A value of a section by its name, and its number among those of the name.
const Value& valueOf(const SectionValues& section, std::string_view name,
                     std::span<const std::string> words) {
  std::string_view field;
  for (const Line& line : section.section().lines) {
    for (const Field& each : line.fields) {
      if (upperCase(each.name) == words[0]) {
        field = each.name;
      }
    }
  }
  if (field.empty()) {
    fail(name, "the section has no value of this name");
  }
  const auto values = section.all(field);
  if (values.empty()) {
    fail(name, "the value doesn't stand in this section");
  }
  if (words.size() == 1 && values.size() > 1) {
    fail(name, "there are several, the number of one is wanted");
  }
  const auto which = words.size() == 1 ? std::optional(1) : number(words[1]);
  if (!which || *which < 1 || *which > static_cast<std::int32_t>(values.size())) {
    fail(name, "there are " + std::to_string(values.size()));
  }
  return values[static_cast<std::size_t>(*which) - 1];
}

bool lies(const Value& value, const Place& inside) {
  return value.place.line == inside.line && value.place.column >= inside.column &&
         value.place.column + value.place.length <= inside.column + inside.length;
}

/// Whether two readings hold the same values but for those at a place.
bool sameValues(std::span<const Value> before, std::span<const Value> after, const Place& changed) {
  return std::equal(before.begin(), before.end(), after.begin(), after.end(),
                    [&changed](const Value& a, const Value& b) {
                      return lies(a, changed) ||
                             (a.real == b.real && a.integer == b.integer && a.text == b.text);
                    });
}

/// A word without the quotes that it may stand in.
std::string_view unquoted(std::string_view token) {
  const bool quoted = token.size() > 1 && (token.front() == '"' || token.front() == '\'') &&
                      token.back() == token.front();
  return quoted ? token.substr(1, token.size() - 2) : token;
}

/// Whether a token that has been put at a place is read there, to its last character.
bool readsAs(const SectionValues& section, const Place& place, std::string_view token) {
  const auto values = section.values();
  const auto found = std::find_if(values.begin(), values.end(), [&](const Value& value) {
    return value.place.line == place.line && value.place.column == place.column;
  });
  if (found == values.end()) {
    return false;
  }
  const Field& field = section.fieldOf(*found);
  switch (field.type) {
    case Type::choice:
    case Type::lineChoice:
      return std::find(field.words.begin(), field.words.end(), upperCase(unquoted(token))) !=
             field.words.end();
    case Type::word:
    case Type::wholeLine:
    case Type::trimmedLine:
      return found->text ==
             (field.type == Type::word ? unquoted(token) : token).substr(0, field.length);
    default:
      return found->place.length == token.size();
  }
}

}  // namespace

/// The lines of the document as they are read.
class InputDocument::TextLines : public Lines {
 public:
  explicit TextLines(const InputDocument& document) : document_(document) {}

  bool next() override {
    ++number_;
    if (number_ >= static_cast<std::int32_t>(document_.starts_.size())) {
      current_.clear();
      return false;
    }
    current_ = document_.line(number_);
    cutLine(current_, number_ == 1);
    treatLine(current_);
    return true;
  }
  [[nodiscard]] const std::string& current() const override { return current_; }
  [[nodiscard]] std::int32_t number() const override { return number_; }

 private:
  const InputDocument& document_;
  std::int32_t number_ = 0;
  std::string current_;
};

InputDocument::InputDocument(std::string text) : text_(std::move(text)) {
  splitLines();
  read();
}

void InputDocument::splitLines() {
  starts_.push_back(0);
  for (std::size_t end = text_.find('\n'); end != std::string::npos;
       end = text_.find('\n', end + 1)) {
    starts_.push_back(end + 1);
  }
  // A line feed at the end of the text begins no further line.
  if (starts_.back() != text_.size()) {
    starts_.push_back(text_.size());
  }
}

void InputDocument::read() {
  TextLines lines(*this);
  SectionReader reader(lines);
  while (lines.next()) {
    const std::string word = upperCase(firstWord(lines.current()));
    if (word == kLoadCaseKeyword) {
      readLoadCases(lines);
      return;
    }
    const Section* section = findSection(word);
    if (section == nullptr) {
      if (!isBlank(lines.current())) {
        skipped_.push_back(lines.number());
      }
      if (sections_.empty() && title_.empty()) {
        title_ = remarkBehind({lines.number(), 0, 0});
      }
      continue;
    }
    SectionValues& values = sections_.emplace_back();
    if (!reader.readKeywordLine(*section, values) || !reader.readFurtherLines(values)) {
      failure_ = {lines.number(), reader.message(), std::move(values), &reader.line()};
      sections_.pop_back();
      return;
    }
  }
}

void InputDocument::readLoadCases(TextLines& lines) {
  do {
    if (!lines.next()) {
      return;
    }
  } while (upperCase(firstWord(lines.current())) != kSpeedKeyword);
  const std::int32_t idLine = lines.number();
  const std::string ids(behindFirstWord(lines.current()));
  const std::string kinds = lines.next() ? lines.current() : std::string();
  if (!readColumns(ids, kinds)) {
    failure_ = {idLine, kSpeedKeyword};
    return;
  }
  while (lines.next() && !isBlank(lines.current())) {
    if (!readRow(lines)) {
      failure_ = {lines.number(), "LoadCase_Speed, LoadCase_Power"};
      return;
    }
  }
}

bool InputDocument::readColumns(std::string_view ids, std::string_view kinds) {
  const std::vector<std::string> kindWords = wordsOf(kinds);
  std::size_t place = 0;
  for (const std::string& word : wordsOf(ids)) {
    const auto id = number(word);
    if (!id) {
      return false;
    }
    std::string kind = place < kindWords.size() ? upperCase(kindWords[place]) : std::string();
    ++place;
    // The column of a kind that is none is dropped, and the powers move up.
    if (std::find(kColumnKinds.begin(), kColumnKinds.end(), kind) != kColumnKinds.end()) {
      columns_.push_back({*id, std::move(kind)});
    }
  }
  return true;
}

bool InputDocument::readRow(TextLines& lines) {
  LoadCase row;
  const std::string& line = lines.current();
  for (std::string_view rest = line; !isBlank(rest); rest = behindFirstWord(rest)) {
    const std::string_view word = firstWord(rest);
    Value value;
    if (!FreeFormat(word).read(value.real)) {
      return false;
    }
    // A surplus power is left out.
    if (row.values.size() <= columns_.size()) {
      value.place = {lines.number(), static_cast<std::size_t>(word.data() - line.data()),
                     word.size()};
      row.values.push_back(std::move(value));
    }
  }
  loadCases_.push_back(std::move(row));
  return true;
}

std::string_view InputDocument::line(std::int32_t number) const {
  const auto row = static_cast<std::size_t>(number);
  std::string_view line =
      std::string_view(text_).substr(starts_.at(row - 1), starts_.at(row) - starts_[row - 1]);
  if (line.ends_with('\n')) {
    line.remove_suffix(1);
  }
  return line;
}

std::size_t InputDocument::offsetOf(const Place& place) const {
  const bool isMarked = place.line == 1 && text_.starts_with(kByteOrderMark);
  return starts_.at(static_cast<std::size_t>(place.line) - 1) +
         (isMarked ? kByteOrderMark.size() : 0) + place.column;
}

std::string InputDocument::remarkBehind(const Place& place) const {
  const std::size_t behind = offsetOf(place) + place.length;
  const std::size_t end = starts_.at(static_cast<std::size_t>(place.line));
  std::string_view rest = std::string_view(text_).substr(behind, end - behind);
  rest = rest.substr(0, rest.find('\n'));
  rest = rest.substr(std::min(rest.find_first_not_of(kBlanks), rest.size()));
  return std::string(rest.substr(0, rest.find_last_not_of(kBlanks) + 1));
}

std::string_view InputDocument::token(std::string_view name) const { return token(find(name)); }

Place InputDocument::find(std::string_view name) const {
  const std::vector<std::string> words = wordsOf(upperCase(name));
  if (words.size() >= 2 && words[0] == kLoadCaseKeyword) {
    return findLoadCase(name, words);
  }
  constexpr std::size_t fewest = 3;
  constexpr std::size_t most = 4;
  if (words.size() < fewest || words.size() > most) {
    fail(name, "a keyword, an id and the name of a value are wanted");
  }
  const Section* kind = findSection(words[0]);
  const auto id = number(words[1]);
  if (kind == nullptr || !id || kind->lines.front().fields.empty()) {
    fail(name, "no such section");
  }
  const SectionValues* found = nullptr;
  for (const SectionValues& section : sections_) {
    if (&section.section() == kind && section.integer("Id") == *id) {
      if (found != nullptr) {
        fail(name, "more than one section has this id");
      }
      found = &section;
    }
  }
  if (found == nullptr) {
    fail(name, "no such section");
  }
  return valueOf(*found, name, std::span(words).subspan(2)).place;
}

Place InputDocument::findLoadCase(std::string_view name, std::span<const std::string> words) const {
  const auto row = number(words[1]);
  if (!row || *row < 1 || *row > static_cast<std::int32_t>(loadCases_.size())) {
    fail(name, "there are " + std::to_string(loadCases_.size()) + " load cases");
  }
  const std::vector<Value>& values = loadCases_[static_cast<std::size_t>(*row) - 1].values;
  const Place& first = values.front().place;
  constexpr std::size_t ofRow = 2;
  constexpr std::size_t ofSpeed = 3;
  constexpr std::size_t ofPower = 4;
  if (words.size() == ofRow) {
    const Place& last = values.back().place;
    return {first.line, first.column, last.column + last.length - first.column};
  }
  if (words.size() == ofSpeed && words[2] == kSpeedKeyword) {
    return first;
  }
  const auto id = words.size() == ofPower ? number(words[3]) : std::nullopt;
  const auto column = std::find_if(columns_.begin(), columns_.end(), [&](const Column& each) {
    return id && each.kind == words[2] && each.id == *id;
  });
  if (column == columns_.end()) {
    fail(name, "the load case table has no such column");
  }
  const auto place = static_cast<std::size_t>(column - columns_.begin()) + 1;
  if (place >= values.size()) {
    fail(name, "the row has no value there");
  }
  return values[place].place;
}

void InputDocument::replace(std::string_view name, std::string_view token) {
  const Place place = find(name);
  if (token.find_first_of("\r\n") != std::string_view::npos ||
      token.find('\0') != std::string_view::npos) {
    fail(name, "a value stands on one line");
  }
  std::string changed = text_;
  changed.replace(offsetOf(place), place.length, token);
  InputDocument after(std::move(changed));

  const auto refuse = [&] {
    fail(name, "\"" + std::string(token) +
                   "\" can't stand there: it isn't such a value, or others would change by it");
  };
  if (after.failure_ || after.sections_.size() != sections_.size() ||
      after.loadCases_.size() != loadCases_.size()) {
    refuse();
  }
  for (std::size_t i = 0; i < sections_.size(); ++i) {
    const auto values = sections_[i].values();
    const bool isHere = std::any_of(values.begin(), values.end(),
                                    [&](const Value& value) { return lies(value, place); });
    if (&after.sections_[i].section() != &sections_[i].section() ||
        !sameValues(values, after.sections_[i].values(), place) ||
        (isHere && !readsAs(after.sections_[i], place, token))) {
      refuse();
    }
  }
  for (std::size_t i = 0; i < loadCases_.size(); ++i) {
    const std::span<const Value> values = loadCases_[i].values;
    // A row that is written anew may have more powers or fewer.
    const bool isWholeRow = lies(values.front(), place) && lies(values.back(), place);
    if (!isWholeRow && !sameValues(values, after.loadCases_[i].values, place)) {
      refuse();
    }
  }
  *this = std::move(after);
}

}  // namespace verenwick::input
