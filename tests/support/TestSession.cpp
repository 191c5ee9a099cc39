#include "TestSession.h"

#include "common/Host.h"
#include "common/ProgramFolder.h"
#include "session/VELKMain.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdlib.h>

namespace velk::test {

void SessionTest::SetUp() {
  folder = (std::filesystem::temp_directory_path() / "velk-test-XXXXXX").string();
  ASSERT_NE(::mkdtemp(folder.data()), nullptr) << folder;
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
  return {std::istreambuf_iterator<char>(f), {}};
}

void WriteFile(const std::string& path, const std::string& data) {
  std::ofstream f(path, std::ios::binary);
  f << data;
}

std::vector<std::string> Lines(const std::string& data) {
  std::vector<std::string> out;
  for (std::size_t start = 0, end; start < data.size(); start = end + 2) {
    end = std::min(data.find("\r\n", start), data.size());
    out.push_back(data.substr(start, end - start));
  }
  return out;
}

} // namespace velk::test
