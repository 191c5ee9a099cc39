#pragma once
// The only way from the program's logic to the user. The shell installs a Qt
// host; tests install a scripted fake. With no host installed, a silent one
// answers every question with its default.
#include <optional>
#include <string>

namespace velk {

// Message box buttons and icons, and the answers, with their classic values.
enum MsgStyle : int {
  vbOKOnly = 0,
  vbOKCancel = 1,
  vbAbortRetryIgnore = 2,
  vbYesNoCancel = 3,
  vbYesNo = 4,
  vbRetryCancel = 5,
  vbCritical = 16,
  vbQuestion = 32,
  vbExclamation = 48,
  vbInformation = 64,
};
enum MsgAnswer : int {
  vbOK = 1,
  vbCancel = 2,
  vbAbort = 3,
  vbRetry = 4,
  vbIgnore = 5,
  vbYes = 6,
  vbNo = 7
};

// The common file dialog: one object keeps its file name between uses.
struct FileDialog {
  std::string DialogTitle;
  std::string Filter;  // "All Files (*.*)|*.*|VELK ... (*.inp)|*.inp"
  int FilterIndex = 1; // 1-based
  int Flags = 0;
  std::string FileName;  // full path, kept between uses
  std::string FileTitle; // the name without folder, set when the dialog returns

  // The extension of the selected filter's first pattern ("inp" for "*.inp");
  // empty when that pattern names no single extension ("*.*").
  std::string FilterExtension() const;
  // A name saved without an extension gets the selected filter's, so that the
  // same filter lists it again; a name with one is kept as typed.
  std::string WithFilterExtension(const std::string& path) const;

  static constexpr int cdlOFNReadOnly = 1;
  static constexpr int cdlOFNOverwritePrompt = 2;
  static constexpr int cdlOFNHideReadOnly = 4;
};

std::string FileTitleOf(const std::string& path);

class Host {
public:
  virtual ~Host() = default;
  // Title empty: the program's name. Returns one of MsgAnswer.
  virtual int MsgBox(const std::string& text, int buttons, const std::string& title) = 0;
  virtual std::optional<std::string> InputBox(const std::string& prompt, const std::string& title,
                                              const std::string& defaultText) = 0;
  virtual bool ShowOpen(FileDialog& d) = 0; // false on cancel
  virtual bool ShowSave(FileDialog& d) = 0;
  virtual void SetBusy(bool busy) = 0;
  virtual void Yield() = 0; // lets pending events run (Cancel of a run)
  // A progress text of the running analysis, for the run dialog's status line.
  virtual void Progress(const std::string& /*text*/) {}
  // What a failure's own message leaves out (the file, the line, the field),
  // for a host without windows to print; the window's messages stand as
  // they are.
  virtual void Detail(const std::string& /*text*/) {}
};

// A host without a window: shows nothing and answers every question with its
// first button (OK, Yes, Abort's Ignore, Retry), input with its default text,
// and file dialogs with cancel. Hosts that only report derive from it.
class QuietHost : public Host {
public:
  int MsgBox(const std::string&, int buttons, const std::string&) override {
    return DefaultAnswer(buttons);
  }
  std::optional<std::string> InputBox(const std::string&, const std::string&,
                                      const std::string& defaultText) override {
    return defaultText;
  }
  bool ShowOpen(FileDialog&) override { return false; }
  bool ShowSave(FileDialog&) override { return false; }
  void SetBusy(bool) override {}
  void Yield() override {}
  static int DefaultAnswer(int buttons);
};

// The installed host; never null (a quiet host stands in when none is set).
Host& host();
void InstallHost(Host* h); // nullptr restores the silent host

inline int MsgBox(const std::string& text, int buttons = vbOKOnly, const std::string& title = {}) {
  return host().MsgBox(text, buttons, title);
}

// RAII busy pointer.
class BusyPointer {
public:
  BusyPointer() { host().SetBusy(true); }
  ~BusyPointer() { host().SetBusy(false); }
  BusyPointer(const BusyPointer&) = delete;
  BusyPointer& operator=(const BusyPointer&) = delete;
};

} // namespace velk
