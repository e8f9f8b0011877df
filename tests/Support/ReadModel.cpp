#include "Support/ReadModel.h"

#include "InputAndChecking/ImportInputFile.h"
#include "RunControl/Global_Parameter.h"

namespace verenwick::test {

ReadModel::ReadModel() {
  std::string directory = directory_.path().string();
  SETRESULTFILEDIR(directory, static_cast<std::int32_t>(directory.size()));
}

void ReadModel::read(std::string inputText) {
  const std::string text = replaced(std::move(inputText), "@DIR@", directory_.path().string());
  isOk_ = READINPUTFILE(directory_.write("input.txt", text), model);
}

void ReadModel::readExample(const std::string& plant) {
  const auto genset = std::filesystem::path(VERENWICK_EXAMPLES) / plant / "Genset.txt";
  if (std::filesystem::exists(genset)) {
    std::filesystem::copy(genset, directory_.path());
  }
  read(exampleInput(plant));
}

}  // namespace verenwick::test
