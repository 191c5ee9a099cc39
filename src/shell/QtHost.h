#pragma once
// The Host over Qt: message boxes, input box, file dialogs, busy pointer, yield.
#include "common/Host.h"

class QWidget;

namespace velk {

class QtHost final : public Host {
public:
  explicit QtHost(QWidget* parent = nullptr) : parent_(parent) {}
  void SetParent(QWidget* parent) { parent_ = parent; }

  int MsgBox(const std::string& text, int buttons, const std::string& title) override;
  std::optional<std::string> InputBox(const std::string& prompt, const std::string& title,
                                      const std::string& defaultText) override;
  bool ShowOpen(FileDialog& d) override;
  bool ShowSave(FileDialog& d) override;
  void SetBusy(bool busy) override;
  void Yield() override;

  // Filter of the classic form "Label|*.ext|Label|*.ext" to Qt's ";;" list.
  static std::string QtFilter(const std::string& filter, int filterIndex, std::string* selected);

private:
  bool ShowFile(FileDialog& d, bool save);
  QWidget* parent_;
};

} // namespace velk
