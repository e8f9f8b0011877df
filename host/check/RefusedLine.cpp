#include "host/check/RefusedLine.h"

#include <fmt/format.h>

#include <algorithm>
#include <string>
#include <vector>

#include "input/FreeFormat.h"
#include "input/LineRules.h"
#include "input/Words.h"

namespace verenwick::host {
namespace {

using input::Field;
using input::Type;

bool isNumber(const std::string& word) {
  double value = 0;
  input::FreeFormat from(word);
  return from.read(value);
}

/// A word of a line and where it begins, from 1.
struct Word {
  std::string text;
  std::size_t column;
};

std::vector<Word> wordsOf(const std::string& line) {
  std::vector<Word> words;
  std::string_view rest = line;
  while (!input::isBlank(rest)) {
    const std::string_view word = input::firstWord(rest);
    words.push_back({std::string(word), static_cast<std::size_t>(word.data() - line.data()) + 1});
    rest = input::behindFirstWord(rest);
  }
  return words;
}

/// What a section wants on a line: its values, one for each that stands there.
std::vector<const Field*> wantedOn(const input::Line& line, const input::SectionValues& section) {
  std::vector<const Field*> wanted;
  for (const Field& field : line.fields) {
    std::int32_t times = field.repeat.times;
    if (!field.repeat.countedBy.empty()) {
      times = std::clamp(section.integer(field.repeat.countedBy), 0, times);
    }
    wanted.insert(wanted.end(), static_cast<std::size_t>(times), &field);
  }
  return wanted;
}

std::string listOf(const input::Line& line, const std::vector<const Field*>& wanted) {
  std::vector<std::string> names;
  for (const Field& field : line.fields) {
    const auto times = std::count(wanted.begin(), wanted.end(), &field);
    names.push_back(times == 1 ? std::string(field.name) : fmt::format("{} {}", times, field.name));
  }
  return fmt::format("{} value{}: {}", wanted.size(), wanted.size() == 1 ? "" : "s",
                     fmt::join(names, ", "));
}

/// The list of a line whose count is larger than any list; null if there is none.
const Field* tooLong(const input::Line& line, const input::SectionValues& section) {
  const auto found = std::find_if(line.fields.begin(), line.fields.end(), [&](const Field& field) {
    return !field.repeat.countedBy.empty() &&
           section.integer(field.repeat.countedBy) > field.repeat.times;
  });
  return found == line.fields.end() ? nullptr : &*found;
}

bool isComment(std::string_view word) {
  return word.find_first_of("!#*;%/") == 0 || word.starts_with("--");
}

bool isWhole(const std::string& word) {
  std::int32_t value = 0;
  input::FreeFormat from(word);
  return from.read(value);
}

/// A line inside a section, by what stands there.
struct Cause {
  std::string found;
  std::string advice;
};

Cause causeOf(const std::vector<Word>& words, const std::vector<const Field*>& wanted,
              std::string_view keyword) {
  for (std::size_t i = 0; i < wanted.size(); ++i) {
    const Field& field = *wanted[i];
    if (i >= words.size()) {
      return {fmt::format("only {} of them", words.size()),
              "write all of them on this line, in this order; a list is as long as its count"};
    }
    const Word& word = words[i];
    const bool isText = field.type == Type::word || field.type == Type::choice;
    if (!isText && !isNumber(word.text)) {
      return {
          fmt::format("\"{}\" in column {}, where {} belongs", word.text, word.column, field.name),
          i == 0 ? fmt::format("take the line out, if it is a remark: the lines of {} follow "
                               "each other",
                               keyword)
                 : "write a number; remarks go behind the last value of the line"};
    }
    if (!isText && field.type != Type::real && !isWhole(word.text)) {
      return {fmt::format("{} in column {}, where {} belongs", word.text, word.column, field.name),
              "write a whole number, without a point"};
    }
  }
  return {"values that are too large, too small or too many",
          "check their number and their size; four orders and 20 cylinders are the most"};
}

/// Two bytes a character: zeros stand between the letters.
bool isWideText(std::string_view text) {
  constexpr std::size_t kLooked = 1000;
  const std::string_view head = text.substr(0, kLooked);
  return head.starts_with("\xFF\xFE") || head.starts_with("\xFE\xFF") ||
         static_cast<std::size_t>(std::count(head.begin(), head.end(), '\0')) * 4 > head.size();
}

}  // namespace

void explainRefusedLine(const input::InputDocument& document, Findings& to) {
  if (isWideText(document.text())) {
    to.add({Severity::error, "utf-16", 1, "a text with two bytes a character (UTF-16)",
            "plain text, UTF-8 or ASCII", "save it as UTF-8 in the editor"});
    return;
  }
  const auto& failure = document.failure();
  if (!failure) {
    return;
  }
  const bool isInside = failure->line <= document.lineCount();
  std::string line = isInside ? std::string(document.line(failure->line)) : std::string();
  input::cutLine(line, failure->line == 1);
  input::treatLine(line);
  std::vector<Word> words = wordsOf(line);
  // A comma is a decimal point; what is told is the line as it stands.
  line = isInside ? std::string(document.line(failure->line)) : std::string();
  if (failure->wanted == nullptr) {
    to.add({Severity::error, "refused-line", failure->line, fmt::format("\"{}\"", line),
            failure->message == "RPM"
                ? "RPM and one id a column; the kinds of the components stand below it"
                : "a speed in rpm, then one power in kW a column and nothing else",
            "write numbers; a remark can't stand in the load case table"});
    return;
  }
  const std::string keyword(failure->section.section().keyword);
  const bool isKeywordLine = failure->line == failure->section.firstLine();
  if (isKeywordLine && !words.empty()) {
    words.erase(words.begin());
  }
  const std::vector<const Field*> wanted = wantedOn(*failure->wanted, failure->section);
  const std::string expected =
      fmt::format("{} of {}, begun in line {}", listOf(*failure->wanted, wanted), keyword,
                  failure->section.firstLine());
  Cause cause;
  if (const Field* list = tooLong(*failure->wanted, failure->section); list != nullptr) {
    const input::Value& count = failure->section.all(list->repeat.countedBy).front();
    to.add({Severity::error, "refused-line", count.place.line,
            fmt::format("{} {} of {}", list->repeat.countedBy, count.integer, keyword),
            fmt::format("at most {}", list->repeat.times),
            fmt::format("correct it: line {} can't hold so many {}", failure->line, list->name)});
    return;
  }
  if (!isInside) {
    cause = {"the end of the file", "write the rest of the section"};
  } else if (words.empty()) {
    cause = {isKeywordLine ? "nothing behind the keyword" : "a blank line",
             isKeywordLine ? "write its values on the same line"
                           : "take it out if the section goes on below, else write the missing "
                             "line in its place"};
  } else if (!isKeywordLine && isComment(words[0].text)) {
    cause = {fmt::format("a comment, \"{}\"", line),
             "move it in front of the section, or behind the last value of a line"};
  } else if (!isKeywordLine && input::findSection(input::upperCase(words[0].text)) != nullptr) {
    cause = {fmt::format("\"{}\", the next section", line),
             fmt::format("write the missing line of {} in front of it", keyword)};
  } else if (isKeywordLine && !isNumber(words[0].text)) {
    cause = {fmt::format("\"{}\"", line),
             fmt::format("if it is a title, let it begin with another word than {}", keyword)};
  } else {
    cause = causeOf(words, wanted, keyword);
    cause.found = fmt::format("\"{}\": {}", line, cause.found);
  }
  to.add({Severity::error, "refused-line", failure->line, cause.found, expected, cause.advice});
}

}  // namespace verenwick::host
