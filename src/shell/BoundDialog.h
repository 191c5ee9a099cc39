#pragma once
// A dialog bound to a form's text fields and check boxes.
#include <QDialog>
#include <functional>
#include <initializer_list>
#include <string>
#include <utility>
#include <vector>

class QCheckBox;
class QGridLayout;
class QLineEdit;
class QPushButton;

namespace velk {

// What the dialogs share: text fields and check boxes bound to the form's
// members, the commands that copy them in, run the handler and copy them
// back, and the fields filled each time the dialog comes up.
class BoundDialog : public QDialog {
public:
  BoundDialog(QWidget* parent, const char* name, const char* title, int helpContext);

protected:
  QLineEdit* Field(std::string* member, const char* name);
  QCheckBox* Check(int* member, const char* name, const char* caption);
  QPushButton* Command(const char* name, const char* caption, std::function<void()> handler);
  // A grid of caption and field rows above the commands on the right.
  QGridLayout* Rows();
  void Finish(std::initializer_list<QPushButton*> commands);
  void Run(const std::function<void()>& handler);
  virtual void FromForm();
  void showEvent(QShowEvent* e) override;

  std::function<void()> activate_; // Form_Activate of the form
  const bool* unloaded_ = nullptr; // the form's Unloaded

private:
  QGridLayout* rows_ = nullptr;
  std::vector<std::pair<QLineEdit*, std::string*>> fields_;
  std::vector<std::pair<QCheckBox*, int*>> checks_;
};

} // namespace velk
