#include "Support/SolverRun.h"

#include <unistd.h>

#include <algorithm>
#include <fstream>
#include <sstream>
#include <stdexcept>

#include "verenwick.h"

namespace verenwick::test {
namespace fs = std::filesystem;

TemporaryDirectory::TemporaryDirectory() {
  std::string name = (fs::temp_directory_path() / "verenwick-XXXXXX").string();
  if (mkdtemp(name.data()) == nullptr) {
    throw std::runtime_error("no temporary directory");
  }
  path_ = name;
}

TemporaryDirectory::~TemporaryDirectory() {
  std::error_code ignored;
  fs::remove_all(path_, ignored);
}

std::string TemporaryDirectory::write(const std::string& name, const std::string& text) const {
  std::ofstream(path_ / name, std::ios::binary) << text;
  return file(name);
}

std::string readText(const fs::path& path) {
  std::ifstream in(path, std::ios::binary);
  std::ostringstream text;
  text << in.rdbuf();
  return text.str();
}

std::string replaced(std::string text, const std::string& piece, const std::string& by) {
  for (auto at = text.find(piece); at != std::string::npos; at = text.find(piece, at + by.size())) {
    text.replace(at, piece.size(), by);
  }
  return text;
}

std::vector<double> readRecords(const fs::path& path) {
  const std::string bytes = readText(path);
  std::vector<double> values(bytes.size() / sizeof(double));
  std::copy_n(bytes.begin(), values.size() * sizeof(double),
              reinterpret_cast<char*>(values.data()));
  return values;
}

std::string exampleInput(const std::string& plant) {
  const fs::path directory = fs::path(VERENWICK_EXAMPLES) / plant;
  std::string text = readText(directory / "input.txt");
  for (const std::string& name : filesIn(directory)) {
    const auto line = [](const std::string& words) { return std::string(1, '\n') + words + '\n'; };
    text = replaced(text, line(name), line((directory / name).string()));
  }
  return text;
}

std::vector<std::string> filesIn(const fs::path& directory) {
  std::vector<std::string> names;
  for (const auto& entry : fs::directory_iterator(directory)) {
    names.push_back(entry.path().filename().string());
  }
  std::sort(names.begin(), names.end());
  return names;
}

std::int32_t callSolver(const std::string& inputDir, const std::string& inputName,
                        const std::string& resultDir, std::int32_t mode) {
  // Only the lowest byte of a character counts.
  const auto packed = [](const std::string& text) {
    std::vector<std::int32_t> characters;
    for (const char c : text) {
      characters.push_back(c + (characters.size() % 2 == 0 ? 0x7F00 : -256));
    }
    return characters;
  };
  const auto dir = packed(inputDir);
  const auto name = packed(inputName);
  const auto result = packed(resultDir);
  const auto dirLength = static_cast<std::int32_t>(dir.size());
  const auto nameLength = static_cast<std::int32_t>(name.size());
  const auto resultLength = static_cast<std::int32_t>(result.size());
  std::int32_t status = -1;
  VERENWICKSOLVER(dir.data(), &dirLength, name.data(), &nameLength, result.data(), &resultLength,
                  &status, &mode);
  return status;
}

void SolverRun::start(std::string inputText, std::int32_t mode) {
  directory_.write("input.txt",
                   replaced(std::move(inputText), "@DIR@", directory_.path().string()));
  fs::create_directory(results());
  status_ = callSolver(directory_.path().string(), "input.txt", results().string(), mode);
}

}  // namespace verenwick::test
