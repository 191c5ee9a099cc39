#include "common/ProgramFolder.h"

#include <cstdlib>
#include <filesystem>
#include <unistd.h>

namespace velk {

namespace {
std::string& Folder() {
  static std::string folder = ExecutableFolder();
  return folder;
}
} // namespace

const std::string& ProgramFolder() {
  return Folder();
}
void SetProgramFolder(const std::string& folder) {
  Folder() = folder;
}

std::string ExecutableFolder() {
  std::error_code ec;
  auto exe = std::filesystem::read_symlink("/proc/self/exe", ec);
  if (ec) return ".";
  return exe.parent_path().string();
}

std::string JoinPath(const std::string& folder, const std::string& name) {
  if (folder.empty()) return name;
  return folder.back() == '/' ? folder + name : folder + "/" + name;
}

std::string WritableFolder() {
  const std::string& own = ProgramFolder();
  if (access(own.c_str(), W_OK) == 0) return own;
  std::string base;
  if (const char* xdg = std::getenv("XDG_CONFIG_HOME"); xdg && *xdg)
    base = xdg;
  else if (const char* home = std::getenv("HOME"); home && *home)
    base = std::string(home) + "/.config";
  else
    base = "/tmp";
  std::string folder = base + "/velk";
  std::error_code ec;
  std::filesystem::create_directories(folder, ec);
  return folder;
}

} // namespace velk
