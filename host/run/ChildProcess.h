#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace verenwick::host {

/// How a process came to its end.
struct ChildEnd {
  int status;         ///< its exit status; 128 and the signal's number if a signal ended it
  std::string words;  ///< what it has printed, and the signal that ended it
};

/// This program, running once more beside itself. One that still runs when this object goes is
/// ended.
class ChildProcess {
 public:
  /// Starts the program with these words behind its name. Throws std::runtime_error if it can't.
  explicit ChildProcess(const std::vector<std::string>& words);
  ChildProcess(ChildProcess&&) noexcept;
  ChildProcess& operator=(ChildProcess&&) noexcept;
  ChildProcess(const ChildProcess&) = delete;
  ChildProcess& operator=(const ChildProcess&) = delete;
  ~ChildProcess();

  /// How it ended, once it has. To be asked often, since it takes in what the process prints.
  std::optional<ChildEnd> ended();
  /// Sends it SIGTERM, or a signal that it can't refuse.
  void stop(bool atOnce);

 private:
  struct State;
  std::unique_ptr<State> state_;
};

/// Does a piece of work in a process of its own, for a library that ends or breaks the process
/// where it gets no memory. Throws std::runtime_error with the words of what the work throws, or if
/// no process can be started, and std::bad_alloc if the process breaks off.
void workApart(const std::function<void()>& work);

}  // namespace verenwick::host
