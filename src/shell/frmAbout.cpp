#include "shell/frmAbout.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QIcon>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace velk {

QString frmAbout::VersionText() {
  return QString("Version %1.%2").arg(VELK_VERSION_MAJOR).arg(VELK_VERSION_MINOR);
}

frmAbout::frmAbout(QWidget* parent) : QDialog(parent) {
  setObjectName("frmAbout");
  setWindowTitle("About VELK");
  auto* icon = new QLabel;
  icon->setPixmap(QIcon(":/icons/velk.svg").pixmap(64, 64));
  auto* title = new QLabel("<b>VELK</b>");
  title->setObjectName("lblTitle");
  auto* version = new QLabel(VersionText());
  version->setObjectName("lblVersion");
  auto* text = new QLabel("Elastic buckling analysis of steel plate girders and stiffened plates.\n"
                          "Plane-stress analysis under the in-plane loads, then the out-of-plane\n"
                          "eigenvalue problem whose eigenvalue is the load factor at buckling.");
  auto* notice = new QLabel("The results are the elastic buckling loads of the model as entered.\n"
                            "Check them against the design rules that govern your structure.");
  notice->setObjectName("lblDisclaimer");
  auto* ok = new QPushButton("OK");
  ok->setObjectName("cmdOK");
  connect(ok, &QPushButton::clicked, this, &QDialog::accept);
  auto* head = new QHBoxLayout;
  head->addWidget(icon);
  auto* names = new QVBoxLayout;
  names->addWidget(title);
  names->addWidget(version);
  head->addLayout(names, 1);
  auto* layout = new QVBoxLayout(this);
  layout->addLayout(head);
  layout->addWidget(text);
  layout->addWidget(notice);
  layout->addWidget(ok, 0, Qt::AlignRight);
}

void frmAbout::changeEvent(QEvent* e) {
  if (e->type() == QEvent::ActivationChange && !isActiveWindow() && isVisible()) reject();
  QDialog::changeEvent(e);
}

} // namespace velk
