#pragma once
// The five property dialogs: passive views over frmPlate, frmStiffener,
// frmBoundary, frmBrace and frmLoad.
#include "forms/frmBoundary.h"
#include "forms/frmBrace.h"
#include "forms/frmLoad.h"
#include "forms/frmPlate.h"
#include "forms/frmStiffener.h"

#include "shell/BoundDialog.h"

#include <memory>

namespace velk {

// One property dialog over its form; the layout is the dialog's own.
template <class Form> class PropertyDialog : public BoundDialog {
public:
  using BoundDialog::BoundDialog;
  Form& form() { return form_; }

protected:
  // Binds the form's Form_Activate and Unloaded; call from the constructor.
  void Bind() {
    activate_ = [this] {
      form_.Unloaded = false;
      form_.Form_Activate();
    };
    unloaded_ = &form_.Unloaded;
  }
  Form form_;
};

class PlateDialog : public PropertyDialog<frmPlate> {
public:
  explicit PlateDialog(QWidget* parent = nullptr);
};
class StiffenerDialog : public PropertyDialog<frmStiffener> {
public:
  explicit StiffenerDialog(QWidget* parent = nullptr);
};
class BoundaryDialog : public PropertyDialog<frmBoundary> {
public:
  explicit BoundaryDialog(QWidget* parent = nullptr);
};
class BraceDialog : public PropertyDialog<frmBrace> {
public:
  explicit BraceDialog(QWidget* parent = nullptr);
};
class LoadDialog : public PropertyDialog<frmLoad> {
public:
  explicit LoadDialog(QWidget* parent = nullptr);
};

// The dialog of an edit mode (1 plate to 5 load); none for another value.
std::unique_ptr<QDialog> NewPropertyDialog(Long propertyMode, QWidget* parent);

} // namespace velk
