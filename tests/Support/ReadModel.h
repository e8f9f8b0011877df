#pragma once

#include <string>

#include "ComponentTables/ModelBundle.h"
#include "Support/SolverRun.h"

namespace verenwick::test {

/// The tables that an input text makes, for tests of what a run does with them in the middle. The
/// result directory is one of its own.
class ReadModel {
 public:
  ReadModel();
  /// Replaces "@DIR@" in the text by the directory of the input file.
  explicit ReadModel(std::string inputText) : ReadModel() { read(std::move(inputText)); }
  /// Reads an input; write the files that it names into the directory before.
  void read(std::string inputText);
  /// Reads an example plant, with the genset file that lies beside its input.
  void readExample(const std::string& plant);

  bool isOk() const { return isOk_; }
  /// The words of the log.
  std::string log() const { return readText(directory_.path() / "Verenwick.log"); }
  const TemporaryDirectory& directory() const { return directory_; }

  ModelBundle model;

 private:
  TemporaryDirectory directory_;
  bool isOk_ = false;
};

/// The input text of a sound plant with one component of every kind, from every-kind.txt. No id
/// equals a position: inertias 201 to 217, shafts 301 to 316, components 11 to 24.
inline std::string everyKindInput() { return readText(VERENWICK_TESTS "/Support/every-kind.txt"); }

}  // namespace verenwick::test
