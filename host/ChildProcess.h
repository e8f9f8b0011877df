#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace verenwick::host {

/// This program, running once more beside itself. What it prints is kept until it has ended.
class ChildProcess {
 public:
  /// Starts the program with these words behind its name. Throws std::runtime_error if it can't.
  explicit ChildProcess(const std::vector<std::string>& words);
  ChildProcess(ChildProcess&&) noexcept;
  ChildProcess& operator=(ChildProcess&&) noexcept;
  ChildProcess(const ChildProcess&) = delete;
  ChildProcess& operator=(const ChildProcess&) = delete;
  ~ChildProcess();

  /// The exit status once it has ended; 128 and the signal's number if a signal ended it.
  std::optional<int> ended();
  /// What it has printed on both outputs.
  [[nodiscard]] std::string output() const;

 private:
  struct State;
  std::unique_ptr<State> state_;
};

}  // namespace verenwick::host
