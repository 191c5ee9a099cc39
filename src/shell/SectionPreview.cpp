#include "shell/SectionPreview.h"

#include <QPainter>

namespace velk {

SectionPreview::SectionPreview(QWidget* parent) : QWidget(parent) {
  setMinimumSize(160, 160);
  setAutoFillBackground(true);
  QPalette pal = palette();
  pal.setColor(QPalette::Window, Qt::white);
  setPalette(pal);
}

void SectionPreview::SetPicture(const SectionPicture& p) {
  picture_ = p;
  setVisible(p.Visible);
  update();
}

void SectionPreview::paintEvent(QPaintEvent*) {
  if (!picture_.Drawn) return;
  QPainter painter(this);
  const double side = std::min(width(), height());
  const double sx = side / (picture_.Right - picture_.Left);
  const double sy = side / (picture_.Top - picture_.Bottom);
  const double ox = (width() - side) / 2, oy = (height() - side) / 2;
  // The coordinate window has y pointing up; each rectangle grows right and up.
  for (const auto& r : picture_.Rects) {
    if (r.width == 0 || r.height == 0) continue;
    QRectF q(ox + (r.x - picture_.Left) * sx, oy + (picture_.Top - (r.y + r.height)) * sy,
             r.width * sx, r.height * sy);
    painter.fillRect(q.normalized(), Qt::black);
  }
}

} // namespace velk
