#pragma once
// Draws a section preview from the rectangles the girder dialog's logic returns.
#include "forms/frmBeamShape.h"

#include <QWidget>

namespace velk {

class SectionPreview : public QWidget {
  Q_OBJECT
public:
  explicit SectionPreview(QWidget* parent = nullptr);
  void SetPicture(const SectionPicture& p);
  const SectionPicture& Picture() const { return picture_; }

signals:
  void clicked();

protected:
  void paintEvent(QPaintEvent*) override;
  void mousePressEvent(QMouseEvent*) override { emit clicked(); }

private:
  SectionPicture picture_;
};

} // namespace velk
