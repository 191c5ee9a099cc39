#include "shell/HelpWindow.h"

#include <QFile>
#include <QTextBrowser>
#include <QTextStream>
#include <QVBoxLayout>

namespace velk {

HelpWindow::HelpWindow(QWidget* parent) : QDialog(parent) {
  setObjectName("HelpWindow");
  setWindowTitle("VELK Help");
  setModal(false);
  browser_ = new QTextBrowser(this);
  browser_->setObjectName("HelpBrowser");
  browser_->setSearchPaths({":/help", ":/"});
  browser_->setOpenLinks(true);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(browser_);
  resize(640, 560);
}

QString HelpWindow::PageFor(int context) {
  // contexts.txt: "<number> <page>" per line.
  QFile f(":/help/contexts.txt");
  if (f.open(QIODevice::ReadOnly | QIODevice::Text)) {
    QTextStream in(&f);
    while (!in.atEnd()) {
      const QStringList parts = in.readLine().split(' ', Qt::SkipEmptyParts);
      if (parts.size() >= 2 && parts[0].toInt() == context) return parts[1];
    }
  }
  return "index.html";
}

void HelpWindow::ShowContext(int context) {
  browser_->setSource(QUrl("qrc:/help/" + PageFor(context)));
  show();
  raise();
  activateWindow();
}

} // namespace velk
