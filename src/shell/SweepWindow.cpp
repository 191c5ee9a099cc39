#include "shell/SweepWindow.h"

#include "common/Host.h"
#include "forms/GirderFields.h"
#include "shell/WindowPlacement.h"

#include <QCheckBox>
#include <QCloseEvent>
#include <QComboBox>
#include <QCoreApplication>
#include <QFileInfo>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>
#include <cmath>
#include <csignal>
#include <unistd.h>

namespace velk {

namespace {
constexpr int kSweepHelp = 20340; // contexts.txt
constexpr const char* kTitle = "Parameter Sweep";
} // namespace

SweepCurve::SweepCurve(const frmSweep& form, QWidget* parent) : QWidget(parent), form_(form) {
  setObjectName("SweepCurve");
  setMinimumSize(sizeHint());
}

void SweepCurve::paintEvent(QPaintEvent*) {
  QPainter p(this);
  p.fillRect(rect(), Qt::white);
  const QRect area = rect().adjusted(70, 12, -16, -40);
  p.setPen(Qt::black);
  p.drawRect(area);
  p.drawText(QRect(area.left(), area.bottom() + 20, area.width(), 18), Qt::AlignCenter,
             QString::fromStdString(Field_Label(form_.cboField)));
  p.save();
  p.translate(14, area.center().y());
  p.rotate(-90);
  p.drawText(QRect(-area.height() / 2, -8, area.height(), 18), Qt::AlignCenter,
             "Buckling load factor, magnitude");
  p.restore();
  // A symmetric girder buckles alike under the loads reversed, and which of
  // the two signs a case reports is chance: the curve is of the magnitude.
  std::vector<std::pair<double, double>> xy;
  for (const frmSweep::Point& pt : form_.points)
    if (pt.eigenvalue) xy.emplace_back(pt.x, std::abs(*pt.eigenvalue));
  if (xy.empty()) return;
  std::sort(xy.begin(), xy.end());
  double x0 = xy.front().first, x1 = xy.back().first, y0 = xy.front().second, y1 = y0;
  for (const auto& [x, y] : xy)
    y0 = std::min(y0, y), y1 = std::max(y1, y);
  if (x1 == x0) x0 -= 1, x1 += 1;
  if (y1 == y0) y0 -= std::max(1.0, std::abs(y0) * 0.1), y1 += std::max(1.0, std::abs(y1) * 0.1);
  auto at = [&](double x, double y) {
    return QPointF(area.left() + (x - x0) / (x1 - x0) * area.width(),
                   area.bottom() - (y - y0) / (y1 - y0) * area.height());
  };
  const auto label = [&](double v) { return QString::number(v, 'g', 5); };
  p.drawText(QRect(0, area.top() - 6, area.left() - 4, 14), Qt::AlignRight, label(y1));
  p.drawText(QRect(0, area.bottom() - 8, area.left() - 4, 14), Qt::AlignRight, label(y0));
  p.drawText(QRect(area.left() - 30, area.bottom() + 2, 60, 14), Qt::AlignCenter, label(x0));
  p.drawText(QRect(area.right() - 30, area.bottom() + 2, 60, 14), Qt::AlignCenter, label(x1));
  p.setRenderHint(QPainter::Antialiasing);
  p.setPen(QPen(QColor(30, 90, 180), 2));
  for (std::size_t i = 1; i < xy.size(); ++i)
    p.drawLine(at(xy[i - 1].first, xy[i - 1].second), at(xy[i].first, xy[i].second));
  p.setBrush(QColor(30, 90, 180));
  for (const auto& [x, y] : xy)
    p.drawEllipse(at(x, y), 3, 3);
}

SweepWindow::SweepWindow(QWidget* mainWindow)
    : RuleRowsDialog(mainWindow, "frmSweep", kTitle, kSweepHelp), main_(mainWindow) {
  setModal(false);
  tool = QCoreApplication::applicationDirPath() + "/velk-batch";
  form_.Form_Load();
  QGridLayout* rows = Rows();
  int row = 0;
  rows->addWidget(new QLabel("Field", this), row, 0);
  field_ = new QComboBox(this);
  field_->setObjectName("cboField");
  for (const GirderField& f : Girder_Fields())
    field_->addItem(f.caption, QString(f.name));
  rows->addWidget(field_, row++, 1, 1, 3);
  rows->addWidget(new QLabel("From", this), row, 0);
  rows->addWidget(Field(&form_.txtFrom, "txtFrom"), row, 1);
  rows->addWidget(new QLabel("To", this), row, 2);
  rows->addWidget(Field(&form_.txtTo, "txtTo"), row, 3);
  rows->addWidget(new QLabel("Step", this), row, 4);
  rows->addWidget(Field(&form_.txtStep, "txtStep"), row++, 5);
  AddRuleRows(form_.rules, row);
  rows->addWidget(new QLabel("Estimate", this), row, 0);
  rows->addWidget(Field(&form_.txtEstimate, "txtEstimate"), row, 1);
  rows->addWidget(new QLabel("Max. Shift", this), row, 2);
  rows->addWidget(Field(&form_.options.txtShift, "txtShift"), row, 3);
  rows->addWidget(new QLabel("Max. Cycle", this), row, 4);
  rows->addWidget(Field(&form_.options.txtCycle, "txtCycle"), row++, 5);
  rows->addWidget(new QLabel("Factor", this), row, 0);
  rows->addWidget(Field(&form_.options.txtFactor, "txtFactor"), row, 1);
  rows->addWidget(Check(&form_.options.chktorsion, "chktorsion", "Torsional Geometric Stiffness"),
                  row, 2, 1, 2);
  rows->addWidget(Check(&form_.options.chkshear, "chkshear", "Approximate Shear Distortion"), row++,
                  4, 1, 2);
  auto browse = [this](std::string* member, const char* name, const char* title,
                       const char* filter) {
    auto* b = Command(name, "...", [this, member, title, filter] {
      FileDialog d;
      d.DialogTitle = title;
      d.Filter = filter;
      d.FilterIndex = 2;
      d.FileName = *member;
      if (host().ShowSave(d)) *member = d.FileName;
    });
    b->setMaximumWidth(32);
    return b;
  };
  rows->addWidget(new QLabel("CSV file", this), row, 0);
  rows->addWidget(Field(&form_.txtCsv, "txtCsv"), row, 1, 1, 4);
  rows->addWidget(browse(&form_.txtCsv, "cmdCsv", "Save Study As",
                         "All Files (*.*)|*.*|CSV Files (*.csv)|*.csv"),
                  row++, 5);
  rows->addWidget(new QLabel("Picture", this), row, 0);
  rows->addWidget(Field(&form_.txtPlot, "txtPlot"), row, 1, 1, 4);
  rows->addWidget(browse(&form_.txtPlot, "cmdPlot", "Save Picture As",
                         "All Files (*.*)|*.*|PNG Pictures (*.png)|*.png|SVG Pictures (*.svg)|*.svg"),
                  row++, 5);
  rows->addWidget(new QLabel("Processes", this), row, 0);
  rows->addWidget(Field(&form_.txtJobs, "txtJobs"), row++, 1);
  progress_ = new QProgressBar(this);
  progress_->setObjectName("progress");
  rows->addWidget(progress_, row++, 0, 1, 6);
  curve_ = new SweepCurve(form_, this);
  rows->addWidget(curve_, row++, 0, 1, 6);
  lblStatus_ = new QLabel(this);
  lblStatus_->setObjectName("lblStatus");
  rows->addWidget(lblStatus_, row++, 0, 1, 6);
  cmdRun_ = Command("cmdRun", "Run", [this] { Start(); });
  cmdCancel_ = Command("cmdCancel", "Cancel", [this] { Stop(); });
  Finish({cmdRun_, cmdCancel_, Command("cmdClose", "Close", [this] { close(); })});
  FromForm();
}

SweepWindow::~SweepWindow() {
  Stop();
  if (process_) process_->waitForFinished(3000);
}

void SweepWindow::showEvent(QShowEvent* e) {
  if (!placed_) {
    PlaceToolWindow(this, main_, sizeHint());
    placed_ = true;
  }
  RuleRowsDialog::showEvent(e);
}

void SweepWindow::closeEvent(QCloseEvent* e) {
  // Closing stops the study: no child goes on writing once its window is gone.
  Stop();
  if (process_ && !process_->waitForFinished(3000)) process_->kill();
  QDialog::closeEvent(e);
}

void SweepWindow::FromForm() {
  RuleRowsDialog::FromForm();
  const int index = field_->findData(QString::fromStdString(form_.cboField));
  if (index >= 0) field_->setCurrentIndex(index);
  progress_->setRange(0, std::max(1, form_.total));
  progress_->setValue(form_.done);
  lblStatus_->setText(QString::fromStdString(form_.lblStatus));
  cmdRun_->setEnabled(!Running());
  cmdCancel_->setEnabled(Running());
  curve_->update();
}

void SweepWindow::Start() {
  if (Running()) return;
  form_.cboField = field_->currentData().toString().toStdString();
  std::string why;
  const std::vector<std::string> args = form_.Arguments(why);
  if (!why.empty()) {
    MsgBox(why, vbExclamation, kTitle);
    return;
  }
  if (!QFileInfo(tool).isExecutable()) {
    MsgBox("The batch tool that runs a study is not beside the program: " + tool.toStdString(),
           vbExclamation, kTitle);
    return;
  }
  QStringList list;
  for (const std::string& a : args)
    list << QString::fromStdString(a);
  process_ = new QProcess(this);
  process_->setProgram(tool);
  process_->setArguments(list);
  process_->setStandardOutputFile(QProcess::nullDevice());
  // A group of its own, so that Cancel reaches the cases it has started too.
  process_->setChildProcessModifier([] { ::setpgid(0, 0); });
  pending_.clear();
  lastMessage_.clear();
  stopped_ = false;
  connect(process_, &QProcess::readyReadStandardError, this, [this] { TakeOutput(); });
  connect(process_, &QProcess::finished, this, [this](int code, QProcess::ExitStatus status) {
    TakeOutput();
    const bool ended = status == QProcess::NormalExit && !stopped_;
    form_.Finished(ended ? std::optional<int>(code) : std::nullopt, lastMessage_.toStdString());
    process_->deleteLater();
    process_ = nullptr;
    FromForm();
  });
  process_->start();
  FromForm();
}

void SweepWindow::Stop() {
  if (!Running()) return;
  stopped_ = true;
  // The tool and its cases at once: each removes its own temporary folder.
  if (const qint64 pid = process_->processId(); pid > 0)
    ::kill(-static_cast<pid_t>(pid), SIGTERM);
  else
    process_->terminate();
}

void SweepWindow::TakeOutput() {
  if (!process_) return;
  pending_ += process_->readAllStandardError();
  for (int end; (end = pending_.indexOf('\n')) >= 0;) {
    const std::string line = pending_.left(end).toStdString();
    pending_.remove(0, end + 1);
    if (!form_.TakeLine(line) && line.rfind("velk-batch: ", 0) == 0)
      lastMessage_ = QString::fromStdString(line.substr(12));
  }
  FromForm();
}

} // namespace velk
