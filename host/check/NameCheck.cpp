#include <fmt/format.h>

#include <algorithm>
#include <cctype>

#include "host/NearestWord.h"
#include "host/check/Checks.h"
#include "host/plant/Placeholder.h"
#include "host/run/DataFiles.h"
#include "input/FreeFormat.h"
#include "input/LineRules.h"
#include "input/Words.h"

namespace verenwick::host {
namespace {

std::vector<std::string> keywords() {
  std::vector<std::string> words = {std::string(input::kLoadCaseKeyword)};
  for (const input::Section& section : input::sections()) {
    words.emplace_back(section.keyword);
  }
  return words;
}

/// Whether a section of this keyword could begin with the line: what stands on it fits, and so does
/// the line below it. A title, as "Shafts 1 to 10", doesn't.
bool fits(const std::string& keyword, std::string_view rest, const input::InputDocument& document,
          std::int32_t number) {
  const auto begins = [&document](std::int32_t line, double& value) {
    std::string below(line <= document.lineCount() ? document.line(line) : std::string_view());
    input::treatLine(below);
    return input::FreeFormat(below).read(value);
  };
  double value = 0;
  if (keyword == input::kLoadCaseKeyword) {
    return input::isBlank(rest);
  }
  const input::Section& section = *input::findSection(keyword);
  std::size_t numbers = 0;
  for (input::FreeFormat from(rest); from.read(value);) {
    ++numbers;
  }
  if (section.lines.empty() || section.lines.front().fields.empty()) {
    return input::isBlank(rest);
  }
  const auto& fields = section.lines.front().fields;
  const auto wanted = static_cast<std::size_t>(
      std::count_if(fields.begin(), fields.end(), [](const input::Field& field) {
        return field.type == input::Type::integer || field.type == input::Type::real;
      }));
  return numbers >= wanted && (section.lines.size() == 1 || begins(number + 1, value));
}

/// A line that is skipped although its first word is nearly a keyword and a number follows, as in
/// a section.
void checkKeywords(const CheckedPlant& plant, Findings& to) {
  const std::vector<std::string> known = keywords();
  const input::InputDocument& document = plant.document();
  for (const std::int32_t number : document.skippedLines()) {
    std::string line(document.line(number));
    input::cutLine(line, number == 1);
    input::treatLine(line);
    const std::string word = input::upperCase(input::firstWord(line));
    const std::string_view rest = input::behindFirstWord(line);
    std::int32_t id = 0;
    const bool isSection = input::FreeFormat(rest).read(id) || input::isBlank(rest);
    constexpr std::size_t kShortest = 4;
    if (word.size() < kShortest || !isSection ||
        !std::isalpha(static_cast<unsigned char>(word[0]))) {
      continue;
    }
    const std::string near = nearest(word, known);
    if (!near.empty() && fits(near, rest, document, number)) {
      to.add({Severity::warning, "keyword", number, fmt::format("\"{}\" is no keyword", word),
              fmt::format("{}, if a section is meant", near),
              "write the keyword: the line is skipped as a title is, and those behind it too"});
    }
  }
}

/// A word that is none of a choice keeps what the section before had.
void checkChoices(const CheckedPlant& plant, Findings& to) {
  for (const SectionValues& section : plant.document().sections()) {
    for (const input::Value& value : section.values()) {
      const input::Field& field = section.fieldOf(value);
      if (field.words.empty()) {
        continue;
      }
      const std::string word = input::upperCase(plant.document().token(value.place));
      std::vector<std::string> words(field.words.begin(), field.words.end());
      if (std::find(words.begin(), words.end(), word) == words.end()) {
        to.add({Severity::warning, "choice", value.place.line,
                valueWords(plant, section, field.name),
                fmt::format("one of {}", fmt::join(words, ", ")),
                fmt::format("write one of them{}: another word keeps what the section before had",
                            didYouMean(word, words))});
      }
    }
  }
}

void checkThrows(const CheckedPlant& plant, Findings& to) {
  for (const SectionValues* shaft : plant.all("SHAFT")) {
    if (isThrow(*shaft) && plant.find("DIESEL", shaft->integer("ComponentIdFlag")) == nullptr) {
      to.add({Severity::warning, "throw", lineOf(*shaft, "ComponentIdFlag"),
              valueWords(plant, *shaft, "ComponentIdFlag"),
              "the id of the DIESEL that the crank throw belongs to",
              "write that id, or 0 0 for a shaft that is no crank throw"});
    }
  }
}

void checkDataFiles(const CheckedPlant& plant, Findings& to) {
  for (const SectionValues& section : plant.document().sections()) {
    for (const input::Value& value : section.values()) {
      const input::Field& field = section.fieldOf(value);
      if (field.length == input::kPathLength && !input::isBlank(value.text) &&
          plant.dataFile(value.text).empty()) {
        to.add({Severity::error, "data-file", value.place.line,
                fmt::format("{}, which isn't there", valueWords(plant, section, field.name)),
                "a file beside the input, or one from the current folder if none lies beside it",
                "put the file there, or correct its name; a name ends with its line, remarks can't "
                "follow it"});
      }
    }
  }
}

/// The last engine decides whether a run reads the pressures of the load cases.
void checkGensetFile(const CheckedPlant& plant, Findings& to) {
  const auto diesels = plant.all("DIESEL");
  if (!diesels.empty() && diesels.back()->integer("isGenset") == 1 &&
      !plant.document().loadCases().empty() &&
      plant.dataFile(std::string(kGensetFile.name)).empty()) {
    to.add(
        {Severity::error, "data-file", lineOf(*diesels.back(), "isGenset"),
         fmt::format("{}, and no {}", valueWords(plant, *diesels.back(), "isGenset"),
                     kGensetFile.name),
         fmt::format("{} beside the input, with a line an engine and load case", kGensetFile.name),
         "put the file there, or write 0 for an engine whose pressures stand in its section"});
  }
}

void checkPlaceholders(const CheckedPlant& plant, Findings& to) {
  const input::InputDocument& document = plant.document();
  for (std::int32_t number = 1; number <= document.lineCount(); ++number) {
    if (document.line(number).find(kPlaceholder) != std::string_view::npos) {
      to.add({Severity::warning, "placeholder", number,
              fmt::format("\"{}\" still stands here", kPlaceholder), "the values of your plant",
              "write them, then take the words away"});
    }
  }
}

/// Whether a remark is numbers and nothing else.
bool isNumbers(std::string_view remark) {
  for (std::string_view rest = remark; !input::isBlank(rest); rest = input::behindFirstWord(rest)) {
    double number = 0;
    const std::string word(input::firstWord(rest));
    if (!input::FreeFormat(word).read(number)) {
      return false;
    }
  }
  return !input::isBlank(remark);
}

/// Numbers behind the last value of a list would be a remark.
void checkLists(const CheckedPlant& plant, Findings& to) {
  for (const SectionValues& section : plant.document().sections()) {
    for (const input::Line& line : section.section().lines) {
      if (line.fields.empty()) {
        continue;
      }
      const input::Field& field = line.fields.back();
      const auto values = section.all(field.name);
      if (!field.repeat.countedBy.empty() && !values.empty() &&
          isNumbers(plant.document().remarkBehind(values.back().place))) {
        to.add({Severity::warning, "list-long", values.back().place.line,
                fmt::format("{}, and {} behind it", valueWords(plant, section, field.name),
                            plant.document().remarkBehind(values.back().place)),
                fmt::format("{} values, as {} says", values.size(), field.repeat.countedBy),
                fmt::format("correct {}, or take the further values away: they are a remark",
                            field.repeat.countedBy)});
      }
    }
  }
}

}  // namespace

void checkWords(const CheckedPlant& plant, Findings& to) {
  checkKeywords(plant, to);
  checkChoices(plant, to);
  checkLists(plant, to);
  checkPlaceholders(plant, to);
}

void checkIds(const CheckedPlant& plant, Findings& to) {
  if (plant.all("INERTIA").empty() && plant.all("SHAFT").empty()) {
    to.add({Severity::error, "empty", 1, "no INERTIA and no SHAFT in this file",
            "an input file: lines that begin with the keywords of its sections",
            "\"verenwick new KIND\" prints one to begin with"});
    return;
  }
  for (const input::Section& kind : input::sections()) {
    if (kind.keyword == input::kAngleBasedKeyword || kind.keyword == "PROPELLERICE") {
      continue;
    }
    for (const SectionValues* section : plant.all(kind.keyword)) {
      const SectionValues* first = plant.find(kind.keyword, section->integer("Id"));
      if (first != section) {
        to.add({Severity::error, "id-twice", section->firstLine(),
                fmt::format("{} a second time", nameOf(*section)),
                fmt::format("an id of its own: line {} has this one", first->firstLine()),
                "give it another number"});
      }
    }
  }
}

void checkReferences(const CheckedPlant& plant, Findings& to) {
  const bool isMisspelt = std::any_of(to.all().begin(), to.all().end(),
                                      [](const Finding& each) { return each.code == "keyword"; });
  if (!isMisspelt) {
    checkThrows(plant, to);
  }
  checkDataFiles(plant, to);
  checkGensetFile(plant, to);
}

}  // namespace verenwick::host
