#include "shell/QtHost.h"

#include "session/VELKMain.h"

#include <QApplication>
#include <QFileDialog>
#include <QFileInfo>
#include <QInputDialog>
#include <QMessageBox>

namespace velk {

int QtHost::MsgBox(const std::string& text, int buttons, const std::string& title) {
  QMessageBox box(parent_);
  box.setWindowTitle(QString::fromStdString(title.empty() ? kProgramName : title));
  box.setText(QString::fromStdString(text));
  switch (buttons & 0x70) {
  case vbCritical:
    box.setIcon(QMessageBox::Critical);
    break;
  case vbQuestion:
    box.setIcon(QMessageBox::Question);
    break;
  case vbExclamation:
    box.setIcon(QMessageBox::Warning);
    break;
  case vbInformation:
    box.setIcon(QMessageBox::Information);
    break;
  default:
    break;
  }
  struct B {
    QMessageBox::StandardButton q;
    int answer;
  };
  std::vector<B> set;
  switch (buttons & 7) {
  case vbOKCancel:
    set = {{QMessageBox::Ok, vbOK}, {QMessageBox::Cancel, vbCancel}};
    break;
  case vbAbortRetryIgnore:
    set = {{QMessageBox::Abort, vbAbort},
           {QMessageBox::Retry, vbRetry},
           {QMessageBox::Ignore, vbIgnore}};
    break;
  case vbYesNoCancel:
    set = {{QMessageBox::Yes, vbYes}, {QMessageBox::No, vbNo}, {QMessageBox::Cancel, vbCancel}};
    break;
  case vbYesNo:
    set = {{QMessageBox::Yes, vbYes}, {QMessageBox::No, vbNo}};
    break;
  case vbRetryCancel:
    set = {{QMessageBox::Retry, vbRetry}, {QMessageBox::Cancel, vbCancel}};
    break;
  default:
    set = {{QMessageBox::Ok, vbOK}};
    break;
  }
  QMessageBox::StandardButtons all;
  for (const B& b : set)
    all |= b.q;
  box.setStandardButtons(all);
  box.setDefaultButton(set.front().q);
  // Unsure answers take the last button, as closing the box would.
  QApplication::setOverrideCursor(Qt::ArrowCursor);
  int r = box.exec();
  QApplication::restoreOverrideCursor();
  for (const B& b : set)
    if (r == b.q) return b.answer;
  return set.back().answer;
}

std::optional<std::string> QtHost::InputBox(const std::string& prompt, const std::string& title,
                                            const std::string& defaultText) {
  bool ok = false;
  QString t = QInputDialog::getText(
      parent_, QString::fromStdString(title.empty() ? kProgramName : title),
      QString::fromStdString(prompt), QLineEdit::Normal, QString::fromStdString(defaultText), &ok);
  if (!ok) return std::nullopt;
  return t.toStdString();
}

std::string QtHost::QtFilter(const std::string& filter, int filterIndex, std::string* selected) {
  std::vector<std::string> parts;
  std::size_t start = 0;
  while (true) {
    auto bar = filter.find('|', start);
    parts.push_back(
        filter.substr(start, bar == std::string::npos ? std::string::npos : bar - start));
    if (bar == std::string::npos) break;
    start = bar + 1;
  }
  std::string out;
  for (std::size_t i = 0; i + 1 < parts.size(); i += 2) {
    std::string pattern = parts[i + 1];
    for (auto& c : pattern)
      if (c == ';') c = ' ';
    std::string entry = parts[i];
    // Qt reads the patterns from the last parentheses; name them plainly.
    if (entry.find('(') == std::string::npos) entry += " (" + pattern + ")";
    if (!out.empty()) out += ";;";
    out += entry;
    if (selected && static_cast<int>(i / 2 + 1) == filterIndex) *selected = entry;
  }
  return out;
}

namespace {

// The name written exists: replace it? No goes back to the dialog.
bool ConfirmOverwrite(QWidget* parent, const QString& title, const QString& path) {
  QMessageBox box(QMessageBox::Warning, title,
                  QFileInfo(path).fileName() + " already exists.\nDo you want to replace it?",
                  QMessageBox::Yes | QMessageBox::No, parent);
  box.setDefaultButton(QMessageBox::No);
  return box.exec() == QMessageBox::Yes;
}

} // namespace

bool QtHost::ShowFile(FileDialog& d, bool save) {
  std::string selected;
  const QString filter = QString::fromStdString(QtFilter(d.Filter, d.FilterIndex, &selected));
  const QStringList entries = filter.split(";;");
  QString sel = QString::fromStdString(selected);
  // The extension comes after the dialog, so the dialog cannot ask about the
  // name that is written: the question is asked here.
  const QFileDialog::Options opts =
      save ? QFileDialog::DontConfirmOverwrite : QFileDialog::Options();
  const QString title = QString::fromStdString(d.DialogTitle);
  QString start = QString::fromStdString(d.FileName);
  while (true) {
    QString path = save ? QFileDialog::getSaveFileName(parent_, title, start, filter, &sel, opts)
                        : QFileDialog::getOpenFileName(parent_, title, start, filter, &sel, opts);
    if (path.isEmpty()) return false;
    if (const auto i = entries.indexOf(sel); i >= 0) d.FilterIndex = static_cast<int>(i) + 1;
    if (save) {
      path = QString::fromStdString(d.WithFilterExtension(path.toStdString()));
      if ((d.Flags & FileDialog::cdlOFNOverwritePrompt) && QFileInfo::exists(path) &&
          !ConfirmOverwrite(parent_, title, path)) {
        start = path;
        continue;
      }
    }
    d.FileName = path.toStdString();
    d.FileTitle = QFileInfo(path).fileName().toStdString();
    return true;
  }
}

bool QtHost::ShowOpen(FileDialog& d) {
  return ShowFile(d, false);
}
bool QtHost::ShowSave(FileDialog& d) {
  return ShowFile(d, true);
}

void QtHost::SetBusy(bool busy) {
  if (busy)
    QApplication::setOverrideCursor(Qt::WaitCursor);
  else
    QApplication::restoreOverrideCursor();
}

void QtHost::Yield() {
  QApplication::processEvents();
}

} // namespace velk
