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
  // The mouse as the main window's handlers take it: Button 1 left, 2 right
  // (on a move, the buttons held); Shift 1 shift, 2 control, 4 alt; client
  // pixels, y down. A double click comes in place of its second press.
  void mouseDown(int button, int shift, double x, double y);
  void mouseMoved(int button, int shift, double x, double y);
  void mouseUp(int button, int shift, double x, double y);
  void doubleClicked();

protected:
  void initializeGL() override;
  void resizeGL(int w, int h) override;
  void paintGL() override;
  void mousePressEvent(QMouseEvent* e) override;
  void mouseMoveEvent(QMouseEvent* e) override;
  void mouseReleaseEvent(QMouseEvent* e) override;
  void mouseDoubleClickEvent(QMouseEvent* e) override;

private:
  void BuildFontLists();
  void ReleaseGL();
  int fontSize_ = 10;
  bool listsBuilt_ = false;
};

} // namespace velk
