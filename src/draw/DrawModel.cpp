#include "draw/DrawModel.h"

#include "common/Fault.h"
#include "common/Host.h"
#include "editing/Selection.h"
#include "model/fourNodes.h"
#include "model/twoNodes.h"
#include "session/VELKMain.h"
#include "draw/DrawResult.h"
#include "view/View.h"

#include <GL/gl.h>
#include <algorithm>
#include <array>
#include <cmath>
#include <initializer_list>
#include <variant>
#include <vector>

namespace velk {

namespace {

std::string Number(Long v) {
  return std::to_string(v);
}

// Symbols keep their shape in fit view: undo the stretch after the translation.
void UndoStretch() {
  const View& v = gView();
  if (v.ScreenMode == ScreenModes::Fit)
    glScalef(1.0f / (v.ScreenModeFactorX * 0.8f), 1.0f / (v.ScreenModeFactorY * 0.7f), 1.0f);
}

void Cross(Single s) {
  glBegin(GL_LINES);
  glVertex3f(-s, -s, 0);
  glVertex3f(s, s, 0);
  glVertex3f(-s, s, 0);
  glVertex3f(s, -s, 0);
  glEnd();
}

void SelectedAt(Single x, Single y, Single s) {
  glPushMatrix();
  glTranslatef(x, y, 0);
  UndoStretch();
  Cross(s);
  glPopMatrix();
}

// A symbol's local frame: turned about z by (c, s), then the fit-view stretch
// undone by (sx, sy), then moved to the node. Vertices are placed on the CPU so
// that all symbols of a kind go to GL in one batch.
struct LocalFrame {
  float ox, oy, oz, sx, sy, c = 1, s = 0;
  V3 operator()(float x, float y, float z) const {
    const float rx = c * x - s * y, ry = s * x + c * y;
    return {ox + sx * rx, oy + sy * ry, oz + z};
  }
};

LocalFrame FrameAt(const Nodeb& n, float z) {
  const View& v = gView();
  LocalFrame f{n.xcoord, n.ycoord, z, 1, 1};
  if (v.ScreenMode == ScreenModes::Fit) {
    f.sx = 1.0f / (v.ScreenModeFactorX * 0.8f);
    f.sy = 1.0f / (v.ScreenModeFactorY * 0.7f);
  }
  return f;
}

void Seg(std::vector<V3>& out, const LocalFrame& f, float x0, float y0, float z0, float x1,
         float y1, float z1) {
  out.push_back(f(x0, y0, z0));
  out.push_back(f(x1, y1, z1));
}

void Quad(std::vector<V3>& out, const LocalFrame& f,
          std::initializer_list<std::array<float, 3>> pts) {
  for (const auto& p : pts)
    out.push_back(f(p[0], p[1], p[2]));
}

// Restraint and spring symbols float behind the plane on a dashed stem.
LocalFrame SymbolFrame(const Nodeb& n, Single LayerOffset, SymbolBatch& b) {
  LocalFrame f = FrameAt(n, -2 * LayerOffset);
  Seg(b.stems, f, 0, 0, 0, 0, 0, 2 * LayerOffset);
  return f;
}

void Value(SymbolBatch& b, const LocalFrame& f, float x, float y, float z, double value) {
  b.labels.push_back({f(x, y, z), Format(value, "##0.00#")});
}

void DrawBoundarySymbol(const Nodeb& n, Single s, Single LayerOffset, int dir, Boolean BV,
                        SymbolBatch& b) {
  const LocalFrame f = SymbolFrame(n, LayerOffset, b);
  auto& L = b.boundaryLines;
  switch (dir) {
  case 1:
    Seg(L, f, 0, 0, 0, s, 0, 0);
    Seg(L, f, s, 0, 0.25f * s, s, 0, -0.25f * s);
    Seg(L, f, s, 0.25f * s, 0, s, -0.25f * s, 0);
    if (BV) Value(b, f, 1.2f * s, 0, 0, n.InPDispX);
    break;
  case 2:
    Seg(L, f, 0, 0, 0, 0, -s, 0);
    Seg(L, f, -0.2f * s, -s, 0, 0.2f * s, -s, 0);
    Seg(L, f, 0, -s, 0.2f * s, 0, -s, -0.2f * s);
    if (BV) Value(b, f, 0, -1.4f * s, 0, n.InPDispY);
    break;
  case 3:
    Seg(L, f, 0, 0, 0, 0, 0, -s);
    Seg(L, f, 0.2f * s, 0, -s, -0.2f * s, 0, -s);
    Seg(L, f, 0, 0.2f * s, -s, 0, -0.2f * s, -s);
    break;
  case 4:
    Seg(L, f, 0, 0, 0, 0.4f * s, 0, 0);
    Quad(b.boundaryQuads, f,
         {{0.4f * s, 0.2f * s, 0},
          {0.6f * s, 0.2f * s, 0},
          {0.6f * s, -0.2f * s, 0},
          {0.4f * s, -0.2f * s, 0}});
    break;
  case 5:
    Seg(L, f, 0, 0, 0, 0, -0.4f * s, 0);
    Quad(b.boundaryQuads, f,
         {{-0.2f * s, -0.4f * s, 0},
          {0.2f * s, -0.4f * s, 0},
          {0.2f * s, -0.6f * s, 0},
          {-0.2f * s, -0.6f * s, 0}});
    break;
  }
}

void DrawBraceSymbol(const Nodeb& n, Single s, Single LayerOffset, int dir, Boolean BrV,
                     SymbolBatch& b) {
  const LocalFrame f = SymbolFrame(n, LayerOffset, b);
  auto& L = b.braceLines;
  // A strip as its segments: the same pixels, and one batch for all springs.
  auto strip = [&](std::initializer_list<std::array<float, 3>> pts) {
    const std::array<float, 3>* prev = nullptr;
    for (const auto& p : pts) {
      if (prev)
        Seg(L, f, (*prev)[0] * s, (*prev)[1] * s, (*prev)[2] * s, p[0] * s, p[1] * s, p[2] * s);
      prev = &p;
    }
  };
  auto line = [&](std::array<float, 3> a, std::array<float, 3> c) {
    Seg(L, f, a[0] * s, a[1] * s, a[2] * s, c[0] * s, c[1] * s, c[2] * s);
  };
  switch (dir) {
  case 1:
    strip({{0, 0, 0}, {0.3f, 0, 0}, {0.4f, 0.2f, 0}, {0.5f, -0.2f, 0}, {0.6f, 0, 0}, {1, 0, 0}});
    line({1, 0.2f, 0}, {1, -0.2f, 0});
    if (BrV) Value(b, f, 1.2f * s, 0, 0, n.xtstiff);
    break;
  case 2:
    strip(
        {{0, 0, 0}, {0, -0.3f, 0}, {0.2f, -0.4f, 0}, {-0.2f, -0.5f, 0}, {0, -0.6f, 0}, {0, -1, 0}});
    line({0.2f, -1, 0}, {-0.2f, -1, 0});
    if (BrV) Value(b, f, 0, -1.2f * s, 0, n.YTStiff);
    break;
  case 3:
    strip(
        {{0, 0, 0}, {0, 0, -0.3f}, {0.2f, 0, -0.4f}, {-0.2f, 0, -0.5f}, {0, 0, -0.6f}, {0, 0, -1}});
    line({0.2f, 0, -1}, {-0.2f, 0, -1});
    if (BrV) Value(b, f, 0.2f * s, 0, -s, n.ZTStiff);
    break;
  case 4:
    strip({{0.6f, 0.2f, 0}, {0.3f, 0.2f, 0}, {0.3f, -0.2f, 0}, {0.6f, -0.2f, 0}});
    line({0, 0, 0}, {0.3f, 0, 0});
    if (BrV) Value(b, f, 0.8f * s, 0, 0, n.XRStiff);
    break;
  case 5:
    strip({{0.2f, -0.6f, 0}, {0.2f, -0.3f, 0}, {-0.2f, -0.3f, 0}, {-0.2f, -0.6f, 0}});
    line({0, 0, 0}, {0, -0.3f, 0});
    if (BrV) Value(b, f, 0, -s, 0, n.YRStiff);
    break;
  }
}

void DrawLoadArrow(const Nodeb& n, Single s, int dir, Boolean LV, SymbolBatch& b) {
  // Turned by direction about z: 1 by 180 degrees, 2 by -90, 4 by +90, 3 not at all.
  LocalFrame f = FrameAt(n, 0);
  if (dir == 1)
    f.c = -1, f.s = 0;
  else if (dir == 2)
    f.c = 0, f.s = -1;
  else if (dir == 4)
    f.c = 0, f.s = 1;
  Quad(b.loadTriangles, f, {{0, 0, 0}, {0.5f * s, 0.125f * s, 0}, {0.5f * s, -0.125f * s, 0}});
  Seg(b.loadLines, f, 0.5f * s, 0, 0, s, 0, 0);
  if (LV) {
    const Single load = (dir == 1 || dir == 3) ? n.XLoad : n.YLoad;
    b.labels.push_back({f(s, 0, 0), SingleToText(std::fabs(load))});
  }
}

void Vertices(GLenum mode, const std::vector<V3>& v) {
  if (v.empty()) return;
  glBegin(mode);
  for (const V3& p : v)
    glVertex3f(p.x, p.y, p.z);
  glEnd();
}

void DrawSelection(Single s) {
  Selection& sel = gSelection();
  for (Long i = 1; i <= sel.SelectedCounter(); ++i)
    std::visit([s](const auto& o) { DrawSelected(*o, s); }, sel.Item(i));
}

// Symbols of all nodes, kind by kind: stems, restraints, springs, loads, values.
void FlushSymbols(const SymbolBatch& b) {
  glPolygonMode(GL_FRONT_AND_BACK, GL_LINE);
  glEnable(GL_POLYGON_OFFSET_LINE);
  glPolygonOffset(-1, -1);
  glColor3f(0, 0, 0);
  glEnable(GL_LINE_STIPPLE);
  glLineStipple(4, 0xAAAA);
  Vertices(GL_LINES, b.stems);
  glDisable(GL_LINE_STIPPLE);
  glColor3f(0.1f, 0.4f, 0.1f);
  Vertices(GL_LINES, b.boundaryLines);
  Vertices(GL_QUADS, b.boundaryQuads);
  glColor3f(0, 0, 0.8f);
  Vertices(GL_LINES, b.braceLines);
  glDisable(GL_POLYGON_OFFSET_LINE);
  glColor3f(1, 0, 0);
  glPolygonMode(GL_FRONT_AND_BACK, GL_FILL);
  Vertices(GL_TRIANGLES, b.loadTriangles);
  Vertices(GL_LINES, b.loadLines);
}

int gCharWidth = 7, gCharHeight = 13; // of the bitmap font, set by the shell

// All numbers and values of the frame, black, drawn last. Where a mesh is so
// dense that labels would print over each other, a label whose box is already
// taken by one drawn before it is left out: the pile could not be read, and
// each bitmap costs the GL a separate upload. Labels are taken in drawing
// order (node numbers, values, stiffener numbers, plate numbers) and then
// drawn in screen order, which lets the GL gather neighbours into one upload.
// They win depth ties with the lines they stand on, as if drawn before them.
void DrawLabels(const std::vector<SymbolBatch::Label>& labels) {
  if (labels.empty()) return;
  GLdouble mv[16], pr[16];
  GLint vp[4];
  glGetDoublev(GL_MODELVIEW_MATRIX, mv);
  glGetDoublev(GL_PROJECTION_MATRIX, pr);
  glGetIntegerv(GL_VIEWPORT, vp);
  const int cell = 4;
  const int cols = std::max(1, vp[2] / cell + 1), rows = std::max(1, vp[3] / cell + 1);
  std::vector<unsigned char> taken(static_cast<std::size_t>(cols) * rows, 0);
  struct Key {
    int band;
    double x;
    std::size_t index;
  };
  std::vector<Key> keys;
  for (std::size_t i = 0; i < labels.size(); ++i) {
    const V3& p = labels[i].at;
    double e[4], c[4];
    for (int r = 0; r < 4; ++r)
      e[r] = mv[r] * p.x + mv[4 + r] * p.y + mv[8 + r] * p.z + mv[12 + r];
    for (int r = 0; r < 4; ++r)
      c[r] = pr[r] * e[0] + pr[4 + r] * e[1] + pr[8 + r] * e[2] + pr[12 + r] * e[3];
    if (c[3] == 0) continue;
    const double wx = (c[0] / c[3] + 1) * vp[2] / 2, wy = (c[1] / c[3] + 1) * vp[3] / 2;
    // Anchors outside the view draw nothing anyway.
    if (wx < 0 || wy < 0 || wx >= vp[2] || wy >= vp[3]) continue;
    const int x0 = static_cast<int>(wx) / cell, y0 = static_cast<int>(wy) / cell;
    const int x1 =
        std::min(cols - 1, static_cast<int>(wx + gCharWidth * labels[i].text.size()) / cell);
    const int y1 = std::min(rows - 1, static_cast<int>(wy + gCharHeight) / cell);
    bool free = true;
    for (int y = y0; y <= y1 && free; ++y)
      for (int x = x0; x <= x1; ++x)
        if (taken[static_cast<std::size_t>(y) * cols + x]) {
          free = false;
          break;
        }
    if (!free) continue;
    for (int y = y0; y <= y1; ++y)
      for (int x = x0; x <= x1; ++x)
        taken[static_cast<std::size_t>(y) * cols + x] = 1;
    keys.push_back({static_cast<int>(wy) / 32, wx, i});
  }
  std::sort(keys.begin(), keys.end(), [](const Key& a, const Key& b) {
    return a.band != b.band ? a.band < b.band : a.x < b.x;
  });
  glColor3f(0, 0, 0);
  glDepthFunc(GL_LEQUAL);
  for (const Key& k : keys) {
    const auto& l = labels[k.index];
    DrawText3f(l.at.x, l.at.y, l.at.z, l.text);
  }
  glDepthFunc(GL_LESS);
}

void ModelBody(View& v) {
  const Single MarkerSize =
      static_cast<Single>(v.OptionPropertyMarker_Size * 0.001 * v.SLimitMaxX / v.ViewZoom);
  const Single LayerOffset =
      static_cast<Single>(v.OptionLayerOffset_Distance * 0.001 * v.SLimitMaxX / v.ViewZoom);
  const Single SelectedMarkerSize =
      static_cast<Single>(v.OptionSelectedMarker_Size * 0.001 * v.SLimitMaxX / v.ViewZoom);
  Mesh& mesh = gMesh();
  glPolygonMode(GL_FRONT_AND_BACK, GL_LINE);
  glEnable(GL_POLYGON_OFFSET_LINE);
  glPolygonOffset(-2, -2);
  SymbolBatch symbols;
  if (v.OptionShowNodeNumber)
    for (const auto& n : mesh.Nodes())
      Draw(*n, MarkerSize, v.OptionShowNodeNumber, symbols);
  if (v.OptionShowBoundary)
    for (const auto& n : mesh.Nodes())
      DrawBoundary(*n, MarkerSize, LayerOffset, v.OptionShowBoundaryValue, symbols);
  if (v.OptionShowBrace)
    for (const auto& n : mesh.Nodes())
      DrawBrace(*n, MarkerSize, LayerOffset, v.OptionShowBraceValue, symbols);
  if (v.OptionShowLoad)
    for (const auto& n : mesh.Nodes())
      DrawLoad(*n, MarkerSize, LayerOffset, v.OptionShowLoadValue, symbols);
  FlushSymbols(symbols);
  glDisable(GL_POLYGON_OFFSET_LINE);
  if (v.OptionShowStiffener)
    DrawStiffeners(mesh.twoNodes(), v.OptionShowStiffenerNumber, symbols.labels);
  DrawPlates(mesh.fourNodes(), v.OptionShowPlateNumber, v.OptionShowPlate, symbols.labels);
  DrawLabels(symbols.labels);
  glLineWidth(2);
  glPolygonMode(GL_FRONT_AND_BACK, GL_LINE);
  glEnable(GL_POLYGON_OFFSET_LINE);
  glPolygonOffset(-3, -3);
  glColor3f(1, 0, 0);
  DrawSelection(SelectedMarkerSize);
  glDisable(GL_POLYGON_OFFSET_LINE);
  glLineWidth(1);
}

} // namespace

void SetFontMetrics(int charWidth, int height) {
  gCharWidth = std::max(1, charWidth);
  gCharHeight = std::max(1, height);
}

void DrawText3f(float x, float y, float z, const std::string& text) {
  glRasterPos3f(x, y, z);
  glListBase(kFontListBase);
  glCallLists(static_cast<GLsizei>(text.size()), GL_UNSIGNED_BYTE, text.data());
}

void Draw(const Nodeb& n, Single, Boolean NV, SymbolBatch& b) {
  if (NV && n.vID != 0) b.labels.push_back({{n.xcoord, n.ycoord, 0}, Number(n.vID)});
}

void DrawBoundary(const Nodeb& n, Single MarkerSize, Single LayerOffset, Boolean BV,
                  SymbolBatch& b) {
  if (!n.BoundaryDefined()) return;
  const Boolean flags[5] = {n.XTDir(), n.YTDir(), n.ZTDir(), n.XRDir(), n.YRDir()};
  for (int d = 0; d < 5; ++d)
    if (flags[d]) DrawBoundarySymbol(n, MarkerSize, LayerOffset, d + 1, BV, b);
}

void DrawBrace(const Nodeb& n, Single MarkerSize, Single LayerOffset, Boolean BrV, SymbolBatch& b) {
  if (!n.BraceDefined()) return;
  const Single springs[5] = {n.xtstiff, n.YTStiff, n.ZTStiff, n.XRStiff, n.YRStiff};
  for (int d = 0; d < 5; ++d)
    if (std::fabs(springs[d]) > kTolerance)
      DrawBraceSymbol(n, MarkerSize, LayerOffset, d + 1, BrV, b);
}

void DrawLoad(const Nodeb& n, Single MarkerSize, Single, Boolean LV, SymbolBatch& b) {
  if (!n.LoadDefined()) return;
  if (n.XLoad > kTolerance)
    DrawLoadArrow(n, MarkerSize, 1, LV, b);
  else if (n.XLoad < -kTolerance)
    DrawLoadArrow(n, MarkerSize, 3, LV, b);
  if (n.YLoad > kTolerance)
    DrawLoadArrow(n, MarkerSize, 2, LV, b);
  else if (n.YLoad < -kTolerance)
    DrawLoadArrow(n, MarkerSize, 4, LV, b);
}

void DrawSelected(const Nodeb& n, Single s) {
  SelectedAt(n.xcoord, n.ycoord, s);
}
void DrawSelected(const twoNode& e, Single s) {
  SelectedAt(e.CPX, e.CPY, s);
}
void DrawSelected(const fourNode& e, Single s) {
  SelectedAt(e.CPX, e.CPY, s);
}

// Stiffeners stand on edge across the plane: outlines in one batch, the fills
// (pushed back) in another, then the numbers.
void DrawStiffeners(const twoNodes& all, Boolean SV, std::vector<SymbolBatch::Label>& labels) {
  auto quads = [&] {
    glBegin(GL_QUADS);
    for (const auto& e : all) {
      if (e->PropertyDefined != vbTrue) continue;
      const float h = e->width / 2;
      glVertex3f(e->Node1->xcoord, e->Node1->ycoord, -h);
      glVertex3f(e->Node2->xcoord, e->Node2->ycoord, -h);
      glVertex3f(e->Node2->xcoord, e->Node2->ycoord, h);
      glVertex3f(e->Node1->xcoord, e->Node1->ycoord, h);
    }
    glEnd();
  };
  glColor3f(0, 0, 0);
  glPolygonMode(GL_FRONT_AND_BACK, GL_LINE);
  quads();
  glPolygonMode(GL_FRONT_AND_BACK, GL_FILL);
  glEnable(GL_POLYGON_OFFSET_FILL);
  glPolygonOffset(1, 1);
  glColor4f(1, 1, 0.7f, 0.2f);
  quads();
  glDisable(GL_POLYGON_OFFSET_FILL);
  if (!SV) return;
  for (const auto& e : all)
    if (e->PropertyDefined == vbTrue && e->vID != 0)
      labels.push_back({{e->CPX, e->CPY, 0}, Number(e->vID)});
}

// Every plate has its outline; with P the fill shaded by thickness, and the
// numbers of the defined ones.
void DrawPlates(const fourNodes& all, Boolean PV, Boolean P,
                std::vector<SymbolBatch::Label>& labels) {
  // Plates but no thickness anywhere cannot be shaded: report it as the
  // division it is.
  const Single maxThickness = all.MaxThickness();
  if (all.Count() > 0 && maxThickness == 0) Raise(errDivByZero, "division by zero");
  auto quad = [](const fourNode& e) {
    glVertex3f(e.Node1->xcoord, e.Node1->ycoord, 0);
    glVertex3f(e.Node4->xcoord, e.Node4->ycoord, 0);
    glVertex3f(e.Node3->xcoord, e.Node3->ycoord, 0);
    glVertex3f(e.Node2->xcoord, e.Node2->ycoord, 0);
  };
  glColor3f(0, 0, 0);
  glPolygonMode(GL_FRONT_AND_BACK, GL_LINE);
  glBegin(GL_QUADS);
  for (const auto& e : all)
    quad(*e);
  glEnd();
  if (P != vbTrue) return;
  glPolygonMode(GL_FRONT_AND_BACK, GL_FILL);
  glEnable(GL_POLYGON_OFFSET_FILL);
  glPolygonOffset(2, 2);
  glBegin(GL_QUADS);
  for (const auto& e : all) {
    glColor4f(1, 1, 1.0f - (e->Thickness / maxThickness) * 0.3f, 0.2f);
    quad(*e);
  }
  glEnd();
  glDisable(GL_POLYGON_OFFSET_FILL);
  if (!PV) return;
  for (const auto& e : all)
    if (e->PropertyDefined && e->vID != 0) labels.push_back({{e->CPX, e->CPY, 0}, Number(e->vID)});
}

void Draw_Model(View& v) {
  // A fault that stays (plates with no thickness anywhere) would otherwise ask
  // again at every repaint, and every answer brings a repaint: tell it once
  // until a frame draws cleanly.
  static bool reported = false;
  try {
    if (!v.OptionShowModel) return;
    if (v.OptionShowResult && v.OptionHideModelWhenBuckle) return;
    ModelBody(v);
    reported = false;
  } catch (const std::exception&) {
    glDisable(GL_POLYGON_OFFSET_LINE);
    glDisable(GL_POLYGON_OFFSET_FILL);
    glLineWidth(1);
    if (!reported) {
      reported = true;
      MsgBox("Error..[Draw Model]");
    }
  }
}

void Draw_Coordinate(View& v) {
  try {
    if (!v.OptionShowCoordinate) return;
    glMatrixMode(GL_MODELVIEW);
    glPushMatrix();
    glLoadIdentity();
    glTranslatef(static_cast<float>(v.SLimitCX), v.SLimitCY, 0);
    glRotatef(static_cast<float>(v.ViewRX), 0, 1, 0);
    glRotatef(static_cast<float>(v.ViewRY), 1, 0, 0);
    glRotatef(static_cast<float>(v.ViewRZ), 0, 0, 1);
    glTranslatef(static_cast<float>(-v.SLimitCX), -v.SLimitCY, 0);
    glColor3f(1, 0, 0);
    const double w = v.SLimitMaxXY, m = v.LimitMaxXY;
    const double cx = v.LimitCX, cy = v.LimitCY;
    const bool fit = v.ScreenMode == ScreenModes::Fit;
    const double z0 = fit ? 0.001 * m : 0.001 * w;
    const double ax = fit ? 0.1 * v.LimitMaxX : 0.1 * w;
    const double ay = fit ? 0.1 * v.LimitMaxY : 0.1 * w;
    const double az = fit ? 0.101 * m : 0.101 * w;
    glBegin(GL_LINES);
    glVertex3d(cx, cy, z0);
    glVertex3d(cx + ax, cy, z0);
    glVertex3d(cx, cy, z0);
    glVertex3d(cx, cy + ay, z0);
    glVertex3d(cx, cy, z0);
    glVertex3d(cx, cy, az);
    glEnd();
    DrawText3f(static_cast<float>(cx + 0.1 * v.SLimitMaxX), static_cast<float>(cy),
               static_cast<float>(0.001 * m), "X");
    DrawText3f(static_cast<float>(cx), static_cast<float>(cy + 0.1 * v.SLimitMaxY),
               static_cast<float>(fit ? 0.01 * m : 0.001 * m), "Y");
    DrawText3f(static_cast<float>(cx), static_cast<float>(cy),
               static_cast<float>(fit ? 0.11 * w : 0.101 * w), "Z");
    glPopMatrix();
  } catch (const std::exception&) {
    MsgBox("Error...");
  }
}

void Load_Projection(const View& v) {
  glMatrixMode(GL_PROJECTION);
  glLoadMatrixd(v.Projection.data());
  glMatrixMode(GL_MODELVIEW);
}

void Load_ModelView(const View& v) {
  glMatrixMode(GL_MODELVIEW);
  glLoadMatrixd(v.ModelView.data());
}

void Capture_Frame_State(View& v) {
  GLint vp[4];
  glGetIntegerv(GL_VIEWPORT, vp);
  for (int i = 0; i < 4; ++i)
    v.FrameViewport[i] = vp[i];
  glGetDoublev(GL_MODELVIEW_MATRIX, v.FrameModelView.data());
  glGetDoublev(GL_PROJECTION_MATRIX, v.FrameProjection.data());
}

void Paint_Frame(View& v) {
  glColorMask(GL_TRUE, GL_TRUE, GL_TRUE, GL_TRUE);
  glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
  // Blending is off, so the alphas of the fills mean nothing on the screen; keep
  // them out of the buffer too, or the window system would blend the surface.
  glColorMask(GL_TRUE, GL_TRUE, GL_TRUE, GL_FALSE);
  glDisable(GL_LIGHT0);
  glDisable(GL_LIGHTING);
  Load_Projection(v);
  if (v.OptionShowStress == StressPlots::None) {
    const double planes[4][4] = {{1, 0, 0, -v.HClipFrom},
                                 {-1, 0, 0, v.HClipTo},
                                 {0, 1, 0, -v.VClipFrom},
                                 {0, -1, 0, v.VClipTo}};
    v.Draw_ModelView();
    Load_ModelView(v);
    // After the modelview, so the planes stand in model coordinates.
    for (int i = 0; i < 4; ++i) {
      glClipPlane(GL_CLIP_PLANE0 + i, planes[i]);
      glEnable(GL_CLIP_PLANE0 + i);
    }
    if (v.OptionShowCoordinate) Draw_Coordinate(v);
    if (v.OptionShowModel) Draw_Model(v);
    if (v.OptionShowResult) {
      Draw_Result(v);
      if (v.OptionShading) {
        Setup_Lighting(v);
        Draw_Result_Shade(v);
        Remove_Lighting();
      }
    }
    for (int i = 0; i < 4; ++i)
      glDisable(GL_CLIP_PLANE0 + i);
  } else {
    Draw_Stress(v);
  }
  Capture_Frame_State(v);
}

} // namespace velk
