#include "shell/PropertyViewWindow.h"

#include "reports/PropertyTables.h"

#include <QCloseEvent>
#include <QFontDatabase>
#include <QHBoxLayout>
#include <QPrintDialog>
#include <QPrinter>
#include <QPushButton>
#include <QTabBar>
#include <QTextEdit>
#include <QVBoxLayout>

namespace velk {

PropertyViewWindow::PropertyViewWindow(QWidget* parent) : QWidget(parent, Qt::Window) {
  setObjectName("frmPropertyView");
  setWindowTitle("Properties");
  setProperty("helpContext", 20135);
  SSTab1_ = new QTabBar(this);
  SSTab1_->setObjectName("SSTab1");
  for (const char* caption : kPropertyTabCaptions)
    SSTab1_->addTab(caption);
  rtbProperty_ = new QTextEdit(this);
  rtbProperty_->setObjectName("rtbProperty");
  rtbProperty_->setReadOnly(true);
  rtbProperty_->setLineWrapMode(QTextEdit::NoWrap);
  // The columns are made of blanks: a fixed pitch keeps them straight.
  QFont courier("Courier New");
  courier.setStyleHint(QFont::Monospace);
  courier.setFixedPitch(true);
  if (!QFontInfo(courier).fixedPitch())
    courier = QFontDatabase::systemFont(QFontDatabase::FixedFont);
  rtbProperty_->setFont(courier);
  Command1_ = new QPushButton("Save to File", this);
  Command1_->setObjectName("Command1");
  Command2_ = new QPushButton("Print", this);
  Command2_->setObjectName("Command2");
  auto* buttons = new QHBoxLayout;
  buttons->addStretch();
  buttons->addWidget(Command1_);
  buttons->addWidget(Command2_);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(SSTab1_);
  layout->addWidget(rtbProperty_, 1);
  layout->addLayout(buttons);
  resize(560, 420);

  form_.Form_Load();
  SSTab1_->setCurrentIndex(form_.SSTab1);
  FromForm();
  connect(SSTab1_, &QTabBar::currentChanged, this, [this](int tab) {
    const int previous = form_.SSTab1;
    form_.SSTab1 = tab;
    form_.SSTab1_Click(previous);
    FromForm();
  });
  connect(Command1_, &QPushButton::clicked, this, [this] { Command1_Click(); });
  connect(Command2_, &QPushButton::clicked, this, [this] { Command2_Click(); });
}

void PropertyViewWindow::FromForm() {
  const QString text = QString::fromStdString(form_.rtbProperty).remove('\r');
  if (rtbProperty_->toPlainText() != text) rtbProperty_->setPlainText(text);
}

void PropertyViewWindow::Command1_Click() {
  form_.Command1_Click();
}

void PropertyViewWindow::PrintTo(QPrinter& printer) const {
  rtbProperty_->print(&printer); // the printer's range says selection or all
}

void PropertyViewWindow::Command2_Click() {
  try {
    QPrinter printer;
    const bool selection = rtbProperty_->textCursor().hasSelection();
    printer.setPrintRange(selection ? QPrinter::Selection : QPrinter::AllPages);
    QPrintDialog dialog(&printer, this);
    dialog.setObjectName("PrintDialog");
    dialog.setOption(QAbstractPrintDialog::PrintPageRange, false);
    dialog.setOption(QAbstractPrintDialog::PrintSelection, selection);
    if (dialog.exec() != QDialog::Accepted) return;
    PrintTo(printer);
  } catch (const std::exception&) {
    // Printing ends quietly, whatever went wrong.
  }
}

void PropertyViewWindow::closeEvent(QCloseEvent* e) {
  form_.Form_Unload();
  e->accept();
}

} // namespace velk
