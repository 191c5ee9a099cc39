#pragma once
// Drawing of the undeformed model and the axes into the current GL context.
// Each routine keeps the name the view's design gives it; only the GL files
// of the view include GL headers.
#include "common/TextRules.h"

#include <string>

namespace velk {

class Nodeb;
class twoNode;
class fourNode;
class View;

// First of the 256 display lists of the bitmap font, one per character code.
constexpr unsigned kFontListBase = 1000;
// Text at a raster position, in the current colour.
void DrawText3f(float x, float y, float z, const std::string& text);

void Draw_Model(View& v);
void Draw_Coordinate(View& v);

void Draw(const Nodeb& n, Single MarkerSize, Boolean NV);
void DrawBoundary(const Nodeb& n, Single MarkerSize, Single LayerOffset, Boolean BV);
void DrawBrace(const Nodeb& n, Single MarkerSize, Single LayerOffset, Boolean BrV);
void DrawLoad(const Nodeb& n, Single MarkerSize, Single LayerOffset, Boolean LV);
void DrawSelected(const Nodeb& n, Single SelectedMarkerSize);
void Draw(const twoNode& s, Boolean SV);
void DrawSelected(const twoNode& s, Single SelectedMarkerSize);
void Draw(const fourNode& p, Single maxThickness, Boolean PV, Boolean P);
void DrawSelected(const fourNode& p, Single SelectedMarkerSize);

// The frame: clear, clip planes, axes, model; swap is the caller's. Loads the
// view's projection first when `loadProjection` (after a change of it).
void Paint_Frame(View& v);
// Loads the matrices the view keeps into GL.
void Load_Projection(const View& v);
void Load_ModelView(const View& v);
// Keeps the viewport and matrices of the frame for the screen-to-model mapping.
void Capture_Frame_State(View& v);

} // namespace velk
