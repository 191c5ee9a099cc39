#include "shell/BoundDialog.h"

#include "shell/EigenDialog.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace velk {

BoundDialog::BoundDialog(QWidget* parent, const char* name, const char* title, int helpContext)
    : QDialog(parent) {
  setObjectName(name);
  setWindowTitle(title);
  setProperty("helpContext", helpContext);
  setModal(true);
  rows_ = new QGridLayout;
  auto* layout = new QVBoxLayout(this);
  layout->addLayout(rows_);
}

QGridLayout* BoundDialog::Rows() {
  return rows_;
}

QLineEdit* BoundDialog::Field(std::string* member, const char* name) {
  auto* e = new QLineEdit(this);
  e->setObjectName(name);
  SelectTextOnFocus(e);
  fields_.emplace_back(e, member);
  return e;
}

QCheckBox* BoundDialog::Check(int* member, const char* name, const char* caption) {
  auto* c = new QCheckBox(caption, this);
  c->setObjectName(name);
  checks_.emplace_back(c, member);
  return c;
}

QPushButton* BoundDialog::Command(const char* name, const char* caption,
                                  std::function<void()> handler) {
  auto* b = new QPushButton(caption, this);
  b->setObjectName(name);
  b->setAutoDefault(false);
  connect(b, &QPushButton::clicked, this, [this, handler = std::move(handler)] { Run(handler); });
  return b;
}

void BoundDialog::Finish(std::initializer_list<QPushButton*> commands) {
  auto* buttons = new QHBoxLayout;
  buttons->addStretch();
  for (QPushButton* b : commands)
    buttons->addWidget(b);
  static_cast<QVBoxLayout*>(layout())->addLayout(buttons);
  if (commands.size() > 0) (*commands.begin())->setDefault(true); // Enter applies
  layout()->setSizeConstraint(QLayout::SetFixedSize);             // follows the label texts
}

void BoundDialog::Run(const std::function<void()>& handler) {
  for (const auto& [edit, member] : fields_)
    *member = edit->text().toStdString();
  for (const auto& [box, member] : checks_)
    *member = box->isChecked() ? 1 : 0;
  handler();
  FromForm();
  if (unloaded_ && *unloaded_) accept();
}

void BoundDialog::FromForm() {
  for (const auto& [edit, member] : fields_) {
    const QString t = QString::fromStdString(*member);
    if (edit->text() != t) edit->setText(t);
  }
  for (const auto& [box, member] : checks_)
    box->setChecked(*member != 0);
}

void BoundDialog::showEvent(QShowEvent* e) {
  QDialog::showEvent(e);
  if (activate_) activate_();
  FromForm();
}

} // namespace velk
