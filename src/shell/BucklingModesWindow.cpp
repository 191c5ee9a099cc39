#include "shell/BucklingModesWindow.h"

#include "shell/WindowPlacement.h"

#include <QCloseEvent>
#include <QComboBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalBlocker>
#include <QTableWidget>
#include <QVBoxLayout>

namespace velk {

BucklingModesWindow::BucklingModesWindow(QWidget* mainWindow)
    : QDialog(mainWindow), main_(mainWindow) {
  setObjectName("frmBucklingModes");
  setWindowTitle("Buckling Modes");
  setProperty("helpContext", 20320);
  setModal(false);
  auto* layout = new QVBoxLayout(this);
  auto* top = new QHBoxLayout;
  top->addWidget(new QLabel("Number of modes", this));
  txtModes_ = new QLineEdit(this);
  txtModes_->setObjectName("txtModes");
  txtModes_->setMaximumWidth(60);
  top->addWidget(txtModes_);
  cmdRun_ = new QPushButton("Run", this);
  cmdRun_->setObjectName("cmdRun");
  cmdCancel_ = new QPushButton("Cancel", this);
  cmdCancel_->setObjectName("cmdCancel");
  top->addWidget(cmdRun_);
  top->addWidget(cmdCancel_);
  top->addStretch();
  layout->addLayout(top);
  table_ = new QTableWidget(0, 3, this);
  table_->setObjectName("tblModes");
  table_->setHorizontalHeaderLabels({"Mode", "Load factor", "Check"});
  table_->verticalHeader()->hide();
  table_->setEditTriggers(QAbstractItemView::NoEditTriggers);
  table_->horizontalHeader()->setStretchLastSection(true);
  layout->addWidget(table_);
  auto* bottom = new QHBoxLayout;
  bottom->addWidget(new QLabel("Show mode", this));
  cboShow_ = new QComboBox(this);
  cboShow_->setObjectName("cboShow");
  bottom->addWidget(cboShow_);
  bottom->addStretch();
  auto* close = new QPushButton("Close", this);
  close->setObjectName("cmdClose");
  bottom->addWidget(close);
  layout->addLayout(bottom);
  lblStatus_ = new QLabel(this);
  lblStatus_->setObjectName("lblStatus");
  layout->addWidget(lblStatus_);
  resize(360, 380);

  connect(cmdRun_, &QPushButton::clicked, this, [this] {
    form_.txtModes = txtModes_->text().toStdString();
    form_.cmdRunEnabled = false;
    form_.cmdCancelEnabled = true;
    form_.lblStatus = "Running...";
    FromForm();
    running_ = true;
    form_.cmdRun_Click();
    running_ = false;
    if (closeAfterRun_) {
      this->close();
      return;
    }
    FromForm();
    if (OnShown) OnShown();
  });
  connect(cmdCancel_, &QPushButton::clicked, this, [this] { form_.cmdCancel_Click(); });
  connect(close, &QPushButton::clicked, this, &QDialog::close);
  connect(cboShow_, &QComboBox::activated, this, [this](int index) {
    form_.cboShow = index + 1;
    form_.cboShow_Click();
    FromForm();
    if (OnShown) OnShown();
  });
  FromForm();
}

void BucklingModesWindow::showEvent(QShowEvent* e) {
  if (!placed_) {
    PlaceToolWindow(this, main_, size());
    placed_ = true;
  }
  QDialog::showEvent(e);
}

void BucklingModesWindow::closeEvent(QCloseEvent* e) {
  if (running_) {
    closeAfterRun_ = true;
    form_.cmdCancel_Click();
    e->ignore();
    return;
  }
  QDialog::closeEvent(e);
}

void BucklingModesWindow::FromForm() {
  if (txtModes_->text().toStdString() != form_.txtModes)
    txtModes_->setText(QString::fromStdString(form_.txtModes));
  cmdRun_->setEnabled(form_.cmdRunEnabled);
  cmdCancel_->setEnabled(form_.cmdCancelEnabled);
  table_->setRowCount(static_cast<int>(form_.rows.size()));
  const QSignalBlocker quiet(cboShow_);
  cboShow_->clear();
  for (int i = 0; i < static_cast<int>(form_.rows.size()); ++i) {
    const frmBucklingModes::Row& r = form_.rows[static_cast<std::size_t>(i)];
    const QString cells[3] = {QString::number(r.mode), QString::fromStdString(r.text),
                              QString::fromStdString(r.verdict)};
    for (int c = 0; c < 3; ++c)
      table_->setItem(i, c, new QTableWidgetItem(cells[c]));
    cboShow_->addItem(QString::number(r.mode));
  }
  cboShow_->setCurrentIndex(form_.rows.empty() ? -1 : form_.cboShow - 1);
  cboShow_->setEnabled(!form_.rows.empty());
  lblStatus_->setText(QString::fromStdString(form_.lblStatus));
}

} // namespace velk
