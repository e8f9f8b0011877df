#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

/// What tests need to run the solver on an input text and look at what it left.
namespace verenwick::test {

/// A directory of its own, removed at the end of the test.
class TemporaryDirectory {
 public:
  TemporaryDirectory();
  ~TemporaryDirectory();
  TemporaryDirectory(const TemporaryDirectory&) = delete;
  TemporaryDirectory& operator=(const TemporaryDirectory&) = delete;

  const std::filesystem::path& path() const { return path_; }
  /// Full path of a file in it.
  std::string file(const std::string& name) const { return (path_ / name).string(); }
  /// Writes a text file into it and gives its full path.
  std::string write(const std::string& name, const std::string& text) const;

 private:
  std::filesystem::path path_;
};

std::string readText(const std::filesystem::path& path);
/// The text with every occurrence of one piece replaced by another.
std::string replaced(std::string text, const std::string& piece, const std::string& by);
/// All records of a direct-access file.
std::vector<double> readRecords(const std::filesystem::path& path);
/// The input text of an example plant, the paths of its data files made absolute.
std::string exampleInput(const std::string& plant);
/// Names of the files in a directory, sorted.
std::vector<std::string> filesIn(const std::filesystem::path& directory);

/// One run of the main entry; the input file lies beside the result directory, not in it.
class SolverRun {
 public:
  /// Replaces "@DIR@" in the text by the directory that holds the input file.
  explicit SolverRun(std::string inputText, std::int32_t mode = 1) {
    start(std::move(inputText), mode);
  }

  std::int32_t status() const { return status_; }
  /// The words of the log.
  std::string log() const { return readText(results() / "Verenwick.log"); }
  std::filesystem::path results() const { return directory_.path() / "results"; }
  std::vector<double> records(const std::string& file) const {
    return readRecords(results() / file);
  }
  const TemporaryDirectory& directory() const { return directory_; }

  /// A run whose input needs files beside it: write them, then start.
  SolverRun() = default;
  void start(std::string inputText, std::int32_t mode = 1);

 private:
  TemporaryDirectory directory_;
  std::int32_t status_ = -1;
};

/// Calls the main entry.
std::int32_t callSolver(const std::string& inputDir, const std::string& inputName,
                        const std::string& resultDir, std::int32_t mode);

}  // namespace verenwick::test
