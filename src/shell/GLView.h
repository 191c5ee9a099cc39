#pragma once
// The GL surface of the main window: the frame on demand, the viewport, and the
// 256 bitmap font lists built from a Qt font.
#include <QOpenGLWidget>

namespace velk {

class GLView : public QOpenGLWidget {
  Q_OBJECT
public:
  explicit GLView(QWidget* parent = nullptr);
  ~GLView() override;

  // Fixed-function GL wants a compatibility profile with a depth buffer and no
  // multisampling; this must be set before the first widget exists.
  static void SetDefaultFormat();

  // New point size of the font; the lists are rebuilt at once.
  void UpdateFont(int pointSize);
  // Paints one frame now.
  void PaintNow();

signals:
  void rightPressed(const QPoint& pos);
  void mouseMovedOver(const QPoint& pos);

protected:
  void initializeGL() override;
  void resizeGL(int w, int h) override;
  void paintGL() override;
  void mousePressEvent(QMouseEvent* e) override;
  void mouseMoveEvent(QMouseEvent* e) override;

private:
  void BuildFontLists();
  void ReleaseGL();
  int fontSize_ = 10;
  bool listsBuilt_ = false;
};

} // namespace velk
