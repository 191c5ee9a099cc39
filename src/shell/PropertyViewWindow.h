#pragma once
// The property table window ("Properties"): a passive view over
// frmPropertyView that stands beside the main window, with its lists in a
// fixed-pitch font, Save to File and Print.
#include "forms/frmPropertyView.h"

#include <QWidget>
#include <functional>

class QPrinter;
class QPushButton;
class QTabBar;
class QTextEdit;

namespace velk {

class PropertyViewWindow : public QWidget {
  Q_OBJECT
public:
  explicit PropertyViewWindow(QWidget* parent = nullptr);
  frmPropertyView& Form() { return form_; }
  QTabBar* Tabs() const { return SSTab1_; }
  QTextEdit* Text() const { return rtbProperty_; }

  void Command1_Click(); // "Save to File"
  void Command2_Click(); // "Print": the print dialog, then the selection or the whole text
  // Prints the selection or the whole text, as the printer's range says.
  void PrintTo(QPrinter& printer) const;

protected:
  void closeEvent(QCloseEvent* e) override;

private:
  void FromForm();
  frmPropertyView form_;
  QTabBar* SSTab1_;
  QTextEdit* rtbProperty_;
  QPushButton *Command1_, *Command2_;
};

} // namespace velk
