#include "common/Host.h"

namespace velk {

namespace {

QuietHost gSilent;
Host* gHost = &gSilent;

} // namespace

int QuietHost::DefaultAnswer(int buttons) {
  switch (buttons & 7) {
  case vbYesNoCancel:
  case vbYesNo:
    return vbYes;
  case vbAbortRetryIgnore:
    return vbIgnore;
  case vbRetryCancel:
    return vbRetry;
  default:
    return vbOK;
  }
}

Host& host() {
  return *gHost;
}
void InstallHost(Host* h) {
  gHost = h ? h : &gSilent;
}

std::string FileTitleOf(const std::string& path) {
  auto pos = path.find_last_of('/');
  return pos == std::string::npos ? path : path.substr(pos + 1);
}

std::string FileDialog::FilterExtension() const {
  // "Label|pattern|Label|pattern": the pattern of entry n stands at 2n - 1.
  if (FilterIndex < 1) return {};
  std::size_t start = 0;
  for (int field = 0; field < 2 * FilterIndex - 1; ++field) {
    start = Filter.find('|', start);
    if (start == std::string::npos) return {};
    ++start;
  }
  std::string pattern = Filter.substr(start, Filter.find('|', start) - start);
  pattern = pattern.substr(0, pattern.find(';'));
  if (pattern.size() < 3 || pattern.compare(0, 2, "*.") != 0) return {};
  std::string ext = pattern.substr(2);
  if (ext.find_first_of("*?. ") != std::string::npos) return {};
  return ext;
}

std::string FileDialog::WithFilterExtension(const std::string& path) const {
  const std::string title = FileTitleOf(path);
  const std::string ext = FilterExtension();
  if (ext.empty() || title.empty() || title.find('.') != std::string::npos) return path;
  return path + "." + ext;
}

} // namespace velk
