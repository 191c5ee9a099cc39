#include "common/Host.h"

namespace velk {

namespace {

class SilentHost final : public Host {
public:
  int MsgBox(const std::string&, int buttons, const std::string&) override {
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
  std::optional<std::string> InputBox(const std::string&, const std::string&,
                                      const std::string& defaultText) override {
    return defaultText;
  }
  bool ShowOpen(FileDialog&) override { return false; }
  bool ShowSave(FileDialog&) override { return false; }
  void SetBusy(bool) override {}
  void Yield() override {}
};

SilentHost gSilent;
Host* gHost = &gSilent;

} // namespace

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
