#include "TestSession.h"

#include "common/Host.h"
#include "common/ProgramFolder.h"
#include "session/VELKMain.h"

#include <filesystem>
#include <fstream>
#include <sstream>
#include <unistd.h>

namespace velk::test {

void SessionTest::SetUp() {
  const auto* info = ::testing::UnitTest::GetInstance()->current_test_info();
  folder =
      (std::filesystem::temp_directory_path() / ("velk-test-" + std::to_string(::getpid()) + "-" +
                                                 info->test_suite_name() + "-" + info->name()))
          .string();
  std::filesystem::remove_all(folder);
  std::filesystem::create_directories(folder);
  SetProgramFolder(folder);
  SetOptionFileEnabled(true);
  Clear_Session();
  InstallHost(&host);
}

void SessionTest::TearDown() {
  Clear_Session();
  InstallHost(nullptr);
  std::filesystem::remove_all(folder);
}

std::string SessionTest::Scratch(const std::string& name) const {
  return folder + "/" + name;
}

std::string ReadFile(const std::string& path) {
  std::ifstream f(path, std::ios::binary);
  std::stringstream ss;
  ss << f.rdbuf();
  return ss.str();
}

void WriteFile(const std::string& path, const std::string& data) {
  std::ofstream f(path, std::ios::binary);
  f << data;
}

std::vector<std::string> Lines(const std::string& data) {
  std::vector<std::string> out;
  std::size_t start = 0;
  while (start < data.size()) {
    std::size_t e = data.find("\r\n", start);
    if (e == std::string::npos) {
      out.push_back(data.substr(start));
      break;
    }
    out.push_back(data.substr(start, e - start));
    start = e + 2;
  }
  return out;
}

} // namespace velk::test
