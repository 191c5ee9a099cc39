#include "common/MemoryBudget.h"

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <sstream>

#if __has_include(<sys/resource.h>)
#include <sys/resource.h>
#define VELK_HAS_RLIMIT 1
#endif

namespace velk {

namespace {

void TakeLeast(std::optional<std::uint64_t>& least, std::uint64_t bytes) {
  least = least ? std::min(*least, bytes) : bytes;
}

// A "Key:   1234 kB" line of a /proc file, in bytes.
std::optional<std::uint64_t> ProcField(const char* path, const std::string& key) {
  std::ifstream in(path);
  std::string line;
  while (std::getline(in, line)) {
    if (line.compare(0, key.size(), key) != 0 || line.size() <= key.size() ||
        line[key.size()] != ':')
      continue;
    std::istringstream fields(line.substr(key.size() + 1));
    std::uint64_t kb = 0;
    if (fields >> kb) return kb * 1024;
  }
  return std::nullopt;
}

// A file that holds one number, or "max" for none.
std::optional<std::uint64_t> NumberFile(const std::string& path) {
  std::ifstream in(path);
  std::uint64_t value = 0;
  if (in >> value) return value;
  return std::nullopt;
}

// The control group's limit less its use (cgroup v2), for a program run in a
// container or a systemd slice whose limit is below the machine's memory.
std::optional<std::uint64_t> GroupRoom() {
  std::ifstream self("/proc/self/cgroup");
  std::string line;
  while (std::getline(self, line)) {
    if (line.rfind("0::", 0) != 0) continue;
    const std::string dir = "/sys/fs/cgroup" + line.substr(3);
    const auto limit = NumberFile(dir + "/memory.max");
    const auto used = NumberFile(dir + "/memory.current");
    if (limit && used) return *limit > *used ? *limit - *used : 0;
  }
  return std::nullopt;
}

} // namespace

std::optional<std::uint64_t> MemoryAvailable() {
  std::optional<std::uint64_t> least;
  if (const auto avail = ProcField("/proc/meminfo", "MemAvailable")) TakeLeast(least, *avail);
  if (const auto room = GroupRoom()) TakeLeast(least, *room);
#ifdef VELK_HAS_RLIMIT
  // The limits hold the whole mapping; what the process maps already counts.
  const auto mapped = ProcField("/proc/self/status", "VmSize");
  const auto data = ProcField("/proc/self/status", "VmData");
  const auto roomUnder = [](int resource, std::optional<std::uint64_t> used) {
    rlimit lim{};
    if (::getrlimit(resource, &lim) != 0 || lim.rlim_cur == RLIM_INFINITY)
      return std::optional<std::uint64_t>{};
    const std::uint64_t cap = lim.rlim_cur, u = used.value_or(0);
    return std::optional<std::uint64_t>{cap > u ? cap - u : 0};
  };
  if (const auto r = roomUnder(RLIMIT_AS, mapped)) TakeLeast(least, *r);
  if (const auto r = roomUnder(RLIMIT_DATA, data)) TakeLeast(least, *r);
#endif
  return least;
}

std::string ByteSizeText(std::uint64_t bytes) {
  char text[32];
  const double mb = static_cast<double>(bytes) / 1e6;
  if (mb < 999.5)
    std::snprintf(text, sizeof text, "%.0f MB", std::max(mb, 1.0));
  else
    std::snprintf(text, sizeof text, "%.1f GB", mb / 1e3);
  return text;
}

} // namespace velk
