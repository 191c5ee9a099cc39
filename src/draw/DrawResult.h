#pragma once
// Drawing of the analysis results into the current GL context: the buckled
// shape, as a wire frame and as a lit surface, and the stress plot.
#include "common/TextRules.h"

namespace velk {

class View;
class fourNode;
class twoNode;

void Draw_Result(View& v);
void Draw_Result_Shade(View& v);
void Setup_Lighting(const View& v);
void Remove_Lighting();

// The whole stress frame: its own clear and modelview, no axes, no clipping.
void Draw_Stress(View& v);
void DrawStressSX(const fourNode& p, Single StressMax);
void DrawStressSY(const fourNode& p, Single StressMax);
void DrawStressSXY(const fourNode& p, Single StressMax);
void DrawStressMises(const fourNode& p, Single StressMax);
void DrawStress(const twoNode& s, Single StressMax);

} // namespace velk
