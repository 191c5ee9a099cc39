#include "SweepPlot.h"

#include "forms/GirderFields.h"

#include <QFont>
#include <QGuiApplication>
#include <QImage>
#include <QSaveFile>
#include <QPainter>
#include <QPainterPath>
#include <QSvgGenerator>

#include <algorithm>
#include <cmath>
#include <iostream>

namespace velk::batch {

namespace {

struct Axis {
  double low, high, step;
  double Fraction(double v) const { return (v - low) / (high - low); }
};

// An axis over [low, high] with ticks at 1, 2 or 5 times a power of ten,
// about five of them, the ends on ticks.
Axis NiceAxis(double low, double high) {
  if (high <= low) {
    const double pad = low == 0 ? 1 : std::abs(low) * 0.05;
    low -= pad;
    high += pad;
  }
  const double raw = (high - low) / 5;
  const double power = std::pow(10.0, std::floor(std::log10(raw)));
  const double m = raw / power;
  const double step = power * (m < 1.5 ? 1 : m < 3.5 ? 2 : m < 7.5 ? 5 : 10);
  return {std::floor(low / step) * step, std::ceil(high / step) * step, step};
}

QString TickText(double v, double step) {
  if (std::abs(v) < step * 1e-9) v = 0; // not the round-off of the tick's sum
  return QString::number(v, 'g', 6);
}

void Draw(QPainter& p, const QSize& size, const QString& field,
          const std::vector<std::pair<double, double>>& points) {
  p.setRenderHint(QPainter::Antialiasing);
  p.fillRect(QRect(QPoint(0, 0), size), Qt::white);
  const QRectF area(90, 50, size.width() - 90 - 30, size.height() - 50 - 70);

  double xLow = points.front().first, xHigh = points.back().first;
  double yLow = points.front().second, yHigh = yLow;
  for (const auto& [x, y] : points) {
    yLow = std::min(yLow, y);
    yHigh = std::max(yHigh, y);
  }
  const Axis ax = NiceAxis(xLow, xHigh), ay = NiceAxis(yLow, yHigh);
  auto at = [&](double x, double y) {
    return QPointF(area.left() + ax.Fraction(x) * area.width(),
                   area.bottom() - ay.Fraction(y) * area.height());
  };

  QFont font = p.font();
  font.setPixelSize(13);
  p.setFont(font);
  const QPen grid(QColor(225, 225, 225), 1), axis(Qt::black, 1.2);
  for (int k = 0; ax.low + k * ax.step <= ax.high + ax.step * 1e-9; ++k) {
    const double x = ax.low + k * ax.step;
    const QPointF foot = at(x, ay.low);
    p.setPen(grid);
    p.drawLine(foot, QPointF(foot.x(), area.top()));
    p.setPen(axis);
    p.drawLine(foot, foot + QPointF(0, 6));
    p.drawText(QRectF(foot.x() - 50, foot.y() + 8, 100, 18), Qt::AlignHCenter | Qt::AlignTop,
               TickText(x, ax.step));
  }
  for (int k = 0; ay.low + k * ay.step <= ay.high + ay.step * 1e-9; ++k) {
    const double y = ay.low + k * ay.step;
    const QPointF foot = at(ax.low, y);
    p.setPen(grid);
    p.drawLine(foot, QPointF(area.right(), foot.y()));
    p.setPen(axis);
    p.drawLine(foot, foot - QPointF(6, 0));
    p.drawText(QRectF(foot.x() - 88, foot.y() - 9, 78, 18), Qt::AlignRight | Qt::AlignVCenter,
               TickText(y, ay.step));
  }
  p.setPen(axis);
  p.drawLine(area.bottomLeft(), area.bottomRight());
  p.drawLine(area.bottomLeft(), area.topLeft());

  p.drawText(QRectF(area.left(), size.height() - 34, area.width(), 20), Qt::AlignCenter, field);
  p.save();
  p.translate(18, area.center().y());
  p.rotate(-90);
  p.drawText(QRectF(-area.height() / 2, -10, area.height(), 20), Qt::AlignCenter,
             "eigenvalue (load factor)");
  p.restore();
  font.setPixelSize(16);
  font.setBold(true);
  p.setFont(font);
  p.drawText(QRectF(0, 12, size.width(), 26), Qt::AlignCenter,
             "Buckling load factor over " + field);

  QPolygonF curve;
  for (const auto& [x, y] : points)
    curve << at(x, y);
  p.setPen(QPen(QColor(0, 90, 180), 2));
  p.drawPolyline(curve);
  p.setBrush(QColor(0, 90, 180));
  for (const QPointF& point : curve)
    p.drawEllipse(point, 3.5, 3.5);
}

} // namespace

bool Plot_Sweep(const std::string& file, const std::string& field,
                const std::vector<std::pair<double, double>>& points, std::string& why) {
  // No display is needed: the picture is drawn in memory. The toolkit's notes
  // on the desktop it runs without (runtime folder, fonts) are not the
  // user's concern; a file that cannot be written is told below.
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QtMessageHandler before =
      qInstallMessageHandler([](QtMsgType type, const QMessageLogContext&, const QString& text) {
        if (type == QtCriticalMsg || type == QtFatalMsg)
          std::cerr << "velk-batch: " << text.toStdString() << '\n';
      });
  struct Restore {
    QtMessageHandler handler;
    ~Restore() { qInstallMessageHandler(handler); }
  } restore{before};
  static int argc = 1;
  static char name[] = "velk-batch";
  static char* argv[] = {name, nullptr};
  QGuiApplication app(argc, argv);

  const QSize size(900, 560);
  const QString path = QString::fromStdString(file);
  const QString title = QString::fromStdString(Field_Label(field)); // "Beam Length (txtBL)"
  // Written beside the target and put in its place only when whole.
  QSaveFile out(path);
  if (!out.open(QIODevice::WriteOnly)) {
    why = out.errorString().toStdString();
    return false;
  }
  if (path.endsWith(".svg", Qt::CaseInsensitive)) {
    QSvgGenerator svg;
    svg.setOutputDevice(&out);
    svg.setSize(size);
    svg.setViewBox(QRect(QPoint(0, 0), size));
    svg.setTitle("Buckling load factor over " + title);
    QPainter p;
    if (!p.begin(&svg)) {
      why = "the SVG file cannot be opened";
      return false;
    }
    Draw(p, size, title, points);
    p.end();
    if (!out.commit()) {
      why = out.errorString().toStdString();
      return false;
    }
    return true;
  }
  QImage image(size, QImage::Format_RGB32);
  QPainter p(&image);
  Draw(p, size, title, points);
  p.end();
  if (!image.save(&out, "PNG") || !out.commit()) {
    why = out.error() != QFileDevice::NoError ? out.errorString().toStdString()
                                              : "the PNG file cannot be saved";
    return false;
  }
  return true;
}

} // namespace velk::batch
