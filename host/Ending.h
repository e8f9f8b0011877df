#pragma once

#include <cstddef>
#include <exception>
#include <filesystem>
#include <optional>
#include <string>

/// What is done when the program ends before its time: by SIGHUP, SIGINT or SIGTERM, or because
/// the memory is exhausted. A signal that was ignored when the program started stays ignored.
namespace verenwick::host {

/// To be called first in main: a file that grows beyond its limit is a failed write and no signal,
/// children are waited for whatever the parent of this program ignored, and memory that runs out
/// where nothing can be thrown ends in words with status 1.
void prepareEnding();

/// As many files or directories can be removed at an untimely end.
inline constexpr std::size_t kUnfinishedFiles = 128;

/// While it lives, a file or an empty directory goes away with an untimely end of the program.
class Unfinished {
 public:
  explicit Unfinished(const std::filesystem::path& path);
  Unfinished(const Unfinished&) = delete;
  Unfinished& operator=(const Unfinished&) = delete;
  ~Unfinished();

 private:
  std::string path_;
  std::size_t slot_ = kUnfinishedFiles;
};

/// While it lives, a text goes to standard error when a signal ends the program.
class LastWords {
 public:
  explicit LastWords(std::string text);
  LastWords(const LastWords&) = delete;
  LastWords& operator=(const LastWords&) = delete;
  ~LastWords();

 private:
  std::string text_;
  const char* before_;
};

/// While it lives, a signal is kept; with its end the signal takes effect.
class HeldSignals {
 public:
  HeldSignals();
  HeldSignals(const HeldSignals&) = delete;
  HeldSignals& operator=(const HeldSignals&) = delete;
  ~HeldSignals();

  /// The signal that came last.
  [[nodiscard]] static std::optional<int> caught();
  /// How many came.
  [[nodiscard]] static int count();
};

/// What an error says to a person; takes no memory.
const char* wordsOf(const std::exception& error);

/// "signal 9 (Killed)".
std::string signalName(int signal);

}  // namespace verenwick::host
