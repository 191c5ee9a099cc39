#pragma once
// The girder dialog: a passive view over frmBeamShape's logic.
#include "forms/frmBeamShape.h"

#include <QDialog>
#include <QMap>
#include <QSet>

class QCheckBox;
class QLineEdit;
class QTabWidget;

namespace velk {

class SectionPreview;

class BeamShapeDialog : public QDialog {
  Q_OBJECT
public:
  explicit BeamShapeDialog(QWidget* parent = nullptr);
  frmBeamShape& Form() { return form_; }
  QLineEdit* Field(const QString& name) const { return fields_.value(name); }

protected:
  void showEvent(QShowEvent* e) override;
  bool eventFilter(QObject* o, QEvent* e) override;

private:
  QLineEdit* AddField(QWidget* page, const QString& name);
  QWidget* AddSectionTab(QTabWidget* tabs, const QString& title, const QStringList& names,
                         SectionPreview*& pic, const QString& extraName, const QString& extraGroup,
                         const QString& extraCaption);
  void AddMaterialAndMeshTabs(QTabWidget* tabs);
  void ToForm();
  void FromForm();
  template <class Fn> void Run(Fn&& handler);

  frmBeamShape form_;
  QMap<QString, QLineEdit*> fields_;
  QMap<QObject*, void (frmBeamShape::*)()> keyUps_;
  QSet<int> keysDown_; // keys that went down in this dialog and are not yet up
  QCheckBox* chkProportionalMesh_ = nullptr;
  SectionPreview* Picture1_ = nullptr;
  SectionPreview* Picture2_ = nullptr;
};

} // namespace velk
