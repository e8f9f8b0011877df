#include <gtest/gtest.h>

#include "RunControl/Files.h"
#include "RunControl/RunStopped.h"
#include "RunControl/Timing.h"
#include "Support/SolverRun.h"

namespace verenwick {
namespace {

class Files : public testing::Test {
 protected:
  Files() {
    std::string path = directory_.path().string();
    SETRESULTFILEDIR(path, static_cast<std::int32_t>(path.size()));
  }
  test::TemporaryDirectory directory_;
};

TEST(GlobalParameter, JoinsPathsByOneBackslash) {
  std::string closed = "C:\\data\\";
  std::string blanks = "  C:\\data  ";
  std::string slash = "/data/";
  std::string none = "   ";
  EXPECT_EQ(FILEFULLADDRESS(closed, "a.txt"), "C:\\data\\a.txt");
  EXPECT_EQ(FILEFULLADDRESS(blanks, "  a.txt "), "C:\\data\\a.txt");
  EXPECT_EQ(blanks, "C:\\data    ");
  EXPECT_EQ(FILEFULLADDRESS(slash, "a.txt"), "/data/\\a.txt");
  EXPECT_EQ(FILEFULLADDRESS(none, "a.txt"), "a.txt");
  EXPECT_EQ(FILEFULLADDRESS(slash, std::string(1200, 'x')).size(), 1000U);
}

TEST(GlobalParameter, ResultDirectoryEndsInABackslash) {
  std::string closed = " D:\\results\\ ";
  SETRESULTFILEDIR(closed, 13);
  EXPECT_EQ(GET_RESULTFILEDIR(), "D:\\results\\");
  // A shifted text keeps the blanks of the shift in its path.
  std::string shifted = "  D:\\results";
  SETRESULTFILEDIR(shifted, 12);
  EXPECT_EQ(GET_RESULTFILEDIR(), "D:\\results  \\");
  std::string blank = "  ";
  SETRESULTFILEDIR(blank, 2);
  EXPECT_EQ(resultFileAddress("x.bin"), "x.bin");
}

TEST(GlobalParameter, UnitNumbersGoUpByTenAndAreNeverReused) {
  const std::int32_t first = GETFILEID();
  EXPECT_EQ(first % 10, 0);
  EXPECT_EQ(GETFILEID(), first + 10);
}

TEST_F(Files, LinesAreCutAndLineEndsUnderstood) {
  const std::string text = "\xEF\xBB\xBFone\r\n" + std::string(2599, 'a') + "bcd\r\n\r\nlast";
  TextReader reader(directory_.write("lines.txt", text));
  std::vector<std::string> lines;
  for (std::string line; reader.readLine(line);) {
    lines.push_back(line);
  }
  EXPECT_EQ(lines, (std::vector<std::string>{"one", std::string(2599, 'a') + "b", "", "last"}));
}

TEST_F(Files, RecordsStandWhereTheirNumberSays) {
  DirectAccessFile file(results::resultFile("NominalTorque.bin"));
  file.write(1, std::vector<double>{1.0, 2.0});
  file.write(5, 5.0);
  file.write(3, std::vector<double>{3.0, 4.0});
  for (int record = 6; record <= 20000; ++record) {
    file.write(record, record);
  }
  file.close();
  const auto records = test::readRecords(directory_.path() / "NominalTorque.bin");
  ASSERT_EQ(records.size(), 20000U);
  for (std::size_t i = 0; i < records.size(); ++i) {
    ASSERT_EQ(records[i], static_cast<double>(i + 1));
  }
}

TEST_F(Files, AFileThatCannotBeWrittenStopsTheRun) {
  if (std::filesystem::exists("/dev/full")) {
    std::filesystem::create_symlink("/dev/full", directory_.path() / "NominalStress.bin");
    DirectAccessFile full(results::resultFile("NominalStress.bin"));
    full.write(1, 1.0);
    EXPECT_THROW(full.close(), RunStopped);
  }
}

TEST_F(Files, RecordTimeAppendsALineEachCall) {
  const auto before = std::filesystem::current_path();
  std::filesystem::current_path(directory_.path());
  std::filesystem::create_directory("c:");
  RECORDTIME();
  RECORDTIME();
  std::filesystem::current_path(before);
  const std::string text = test::readText(directory_.path() / "c:" / "timelog.txt");
  EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 2);
}

}  // namespace
}  // namespace verenwick
