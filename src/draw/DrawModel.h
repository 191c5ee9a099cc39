#pragma once
// Drawing of the undeformed model and the axes into the current GL context.
// Each routine keeps the name the view's design gives it; only the GL files
// of the view include GL headers.
#include "common/TextRules.h"

#include <string>
#include <vector>

namespace velk {

class Nodeb;
class twoNode;
class fourNode;
class twoNodes;
class fourNodes;
class View;

struct V3 {
  float x, y, z;
};

// The symbols of all nodes, gathered in model coordinates and drawn kind by
// kind: one GL batch per kind instead of one per symbol.
struct SymbolBatch {
  struct Label {
    V3 at;
    std::string text;
  };
  std::vector<V3> stems;         // black, dashed
  std::vector<V3> boundaryLines; // green
  std::vector<V3> boundaryQuads;
  std::vector<V3> braceLines;    // blue
  std::vector<V3> loadTriangles; // red
  std::vector<V3> loadLines;
  std::vector<Label> labels; // black values
};

// First of the 256 display lists of the bitmap font, one per character code.
constexpr unsigned kFontListBase = 1000;
// Size of a digit and of a line of the bitmap font, in pixels: labels that
// would print over one another are left out by it.
void SetFontMetrics(int charWidth, int height);
// Text at a raster position, in the current colour.
void DrawText3f(float x, float y, float z, const std::string& text);

void Draw_Model(View& v);
void Draw_Coordinate(View& v);

void Draw(const Nodeb& n, Single MarkerSize, Boolean NV, SymbolBatch& b);
void DrawBoundary(const Nodeb& n, Single MarkerSize, Single LayerOffset, Boolean BV,
                  SymbolBatch& b);
void DrawBrace(const Nodeb& n, Single MarkerSize, Single LayerOffset, Boolean BrV, SymbolBatch& b);
void DrawLoad(const Nodeb& n, Single MarkerSize, Single LayerOffset, Boolean LV, SymbolBatch& b);
void DrawSelected(const Nodeb& n, Single SelectedMarkerSize);
void DrawStiffeners(const twoNodes& all, Boolean SV, std::vector<SymbolBatch::Label>& labels);
void DrawSelected(const twoNode& s, Single SelectedMarkerSize);
void DrawPlates(const fourNodes& all, Boolean PV, Boolean P,
                std::vector<SymbolBatch::Label>& labels);
void DrawSelected(const fourNode& p, Single SelectedMarkerSize);

// The frame: clear, the view's projection and modelview, clip planes, axes,
// model; swap is the caller's.
void Paint_Frame(View& v);
// Loads the matrices the view keeps into GL.
void Load_Projection(const View& v);
void Load_ModelView(const View& v);
// The model point under a mouse position (client pixels, y down) on the last
// frame; false where the depth there says the pointer is off the model.
bool Probe_Model_Point(const View& v, double X, double Y, double& ox, double& oy, double& oz);
// The blue and red of the last frame's pixel under a mouse position, 0 to 1.
bool Probe_Stress_Color(const View& v, double X, double Y, float& CB, float& CR);
// Keeps the viewport and matrices of the frame for the screen-to-model mapping.
void Capture_Frame_State(View& v);

} // namespace velk
