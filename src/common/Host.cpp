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

} // namespace velk
