#include "shell/GLView.h"

#include "common/Host.h"
#include "session/VELKMain.h"
#include "draw/DrawBitmap.h"
#include "draw/DrawModel.h"
#include "view/View.h"

#include <GL/gl.h>
#include <QFontMetrics>
#include <QImage>
#include <QMouseEvent>
#include <QOpenGLContext>
#include <QPainter>
#include <QSurfaceFormat>
#include <vector>

namespace velk {

void GLView::SetDefaultFormat() {
  QSurfaceFormat fmt;
  fmt.setProfile(QSurfaceFormat::CompatibilityProfile);
  fmt.setVersion(2, 1);
  fmt.setDepthBufferSize(24);
  fmt.setSwapBehavior(QSurfaceFormat::DoubleBuffer);
  fmt.setSamples(0);
  QSurfaceFormat::setDefaultFormat(fmt);
}

GLView::GLView(QWidget* parent) : QOpenGLWidget(parent) {
  setMouseTracking(true);
  setMinimumSize(1, 1);
  // Reads of the last frame (the bitmap) go to this surface.
  surfaceAccess().Acquire = [this] { makeCurrent(); };
  surfaceAccess().Release = [this] { doneCurrent(); };
}

GLView::~GLView() {
  surfaceAccess() = SurfaceAccess{};
  makeCurrent();
  ReleaseGL();
  doneCurrent();
}

void GLView::ReleaseGL() {
  if (listsBuilt_) glDeleteLists(kFontListBase, 256);
  listsBuilt_ = false;
}

void GLView::initializeGL() {
  try {
    connect(context(), &QOpenGLContext::aboutToBeDestroyed, this, [this] {
      makeCurrent();
      ReleaseGL();
      doneCurrent();
    });
    glViewport(0, 0, width(), height());
    glFrontFace(GL_CW);
    glShadeModel(GL_SMOOTH);
    glEnable(GL_DEPTH_TEST);
    glClearColor(1, 1, 1, 1);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    glMatrixMode(GL_MODELVIEW);
    glShadeModel(GL_SMOOTH);
    glLightModeli(GL_LIGHT_MODEL_TWO_SIDE, 1);
    const GLfloat material[4] = {0.3f, 0.5f, 0.7f, 1};
    glMaterialfv(GL_FRONT_AND_BACK, GL_AMBIENT_AND_DIFFUSE, material);
    const GLfloat ambient[4] = {1, 1, 1, 1};
    glLightfv(GL_LIGHT0, GL_AMBIENT, ambient);
    BuildFontLists();
  } catch (const std::exception&) {
    MsgBox("Error..[OGL_Load]");
  }
}

// One glBitmap list per character code of the window font.
void GLView::BuildFontLists() {
  if (listsBuilt_) glDeleteLists(kFontListBase, 256);
  QFont font("Arial");
  font.setPointSize(fontSize_ > 0 ? fontSize_ : 10);
  font.setStyleStrategy(QFont::NoAntialias);
  QFontMetrics fm(font);
  const int h = fm.height();
  const int descent = fm.descent();
  glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
  for (int c = 0; c < 256; ++c) {
    const QChar ch = QChar::fromLatin1(static_cast<char>(c));
    const int advance = c < 32 ? 0 : fm.horizontalAdvance(ch);
    const int w = std::max(advance, 1);
    QImage img(w, h, QImage::Format_RGB32);
    img.fill(Qt::white);
    if (c >= 32) {
      QPainter p(&img);
      p.setFont(font);
      p.setPen(Qt::black);
      p.drawText(0, h - descent, QString(ch));
    }
    const int bytesPerRow = (w + 7) / 8;
    std::vector<GLubyte> bits(static_cast<std::size_t>(bytesPerRow * h), 0);
    for (int y = 0; y < h; ++y) // bottom row first
      for (int x = 0; x < w; ++x)
        if (qGray(img.pixel(x, h - 1 - y)) < 128)
          bits[static_cast<std::size_t>(y * bytesPerRow + x / 8)] |= GLubyte(0x80 >> (x % 8));
    glNewList(kFontListBase + c, GL_COMPILE);
    glBitmap(w, h, 0, static_cast<GLfloat>(descent), static_cast<GLfloat>(advance), 0, bits.data());
    glEndList();
  }
  glListBase(kFontListBase);
  SetFontMetrics(fm.horizontalAdvance('0'), h);
  listsBuilt_ = true;
}

void GLView::UpdateFont(int pointSize) {
  fontSize_ = pointSize;
  if (!context()) return; // built with the surface
  makeCurrent();
  BuildFontLists();
  doneCurrent();
}

void GLView::resizeGL(int w, int h) {
  if (w == 0 || h == 0) return; // minimised: leave the viewport alone
  View& v = gView();
  v.ScaleWidth = w;
  v.ScaleHeight = h;
  glViewport(0, 0, w, h);
  // In fit view only the viewport follows: the picture stretches until the next switch.
  if (v.ScreenMode == ScreenModes::Actual) {
    v.Set_Limits(gMesh().Nodes());
    v.Draw_Projection();
  }
}

void GLView::paintGL() {
  try {
    Paint_Frame(gView());
  } catch (const std::exception&) {
    MsgBox("Error..[Form_Paint]");
  }
}

void GLView::PaintNow() {
  if (!isVisible()) return;
  repaint();
}

namespace {

int ButtonOf(Qt::MouseButtons b) {
  return (b & Qt::LeftButton ? 1 : 0) | (b & Qt::RightButton ? 2 : 0) |
         (b & Qt::MiddleButton ? 4 : 0);
}

int ShiftOf(Qt::KeyboardModifiers m) {
  return (m & Qt::ShiftModifier ? 1 : 0) | (m & Qt::ControlModifier ? 2 : 0) |
         (m & Qt::AltModifier ? 4 : 0);
}

} // namespace

void GLView::mousePressEvent(QMouseEvent* e) {
  const QPointF p = e->position();
  emit mouseDown(ButtonOf(e->button()), ShiftOf(e->modifiers()), p.x(), p.y());
}

void GLView::mouseMoveEvent(QMouseEvent* e) {
  const QPointF p = e->position();
  emit mouseMoved(ButtonOf(e->buttons()), ShiftOf(e->modifiers()), p.x(), p.y());
}

void GLView::mouseReleaseEvent(QMouseEvent* e) {
  const QPointF p = e->position();
  emit mouseUp(ButtonOf(e->button()), ShiftOf(e->modifiers()), p.x(), p.y());
}

// Not a second press: the gesture of a double click is press, release, double
// click, release.
void GLView::mouseDoubleClickEvent(QMouseEvent* e) {
  if (e->button() == Qt::LeftButton) emit doubleClicked();
}

} // namespace velk
