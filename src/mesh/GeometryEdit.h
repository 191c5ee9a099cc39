#pragma once
// Bending a generated grid by hand: moves, tapers and proportional moves of the
// selected nodes. Only coordinates change; numbers, elements and properties
// stay, and so do the sections the generator tapered by position.
#include "common/TextRules.h"

namespace velk {

class Mesh;
class Selection;
class View;

enum class EditAxis { X, Y };

// In the node edit modes, every selected node moves by the distance asked for;
// the element centres follow and the view is refreshed. Cancel or a wrong
// answer ends it silently with nothing moved.
void Edit_Mesh_Move_Node(Mesh& mesh, const Selection& sel, View& view, EditAxis axis);

// The selected nodes move by a reference node, a target node and a distance:
// each by distance x fx x fy, the factors its position between the two in x
// and in y. Where the two share a coordinate that factor is 1 for the
// proportional move and 0 for the taper. A failure shows the command's message.
void Edit_Mesh_Scale_Nodes(Mesh& mesh, const Selection& sel, View& view, EditAxis axis,
                           bool proportional);

inline void Edit_Mesh_Move_NodeX(Mesh& m, const Selection& s, View& v) {
  Edit_Mesh_Move_Node(m, s, v, EditAxis::X);
}
inline void Edit_Mesh_Move_NodeY(Mesh& m, const Selection& s, View& v) {
  Edit_Mesh_Move_Node(m, s, v, EditAxis::Y);
}
inline void Edit_Mesh_PMove_NodeX(Mesh& m, const Selection& s, View& v) {
  Edit_Mesh_Scale_Nodes(m, s, v, EditAxis::X, true);
}
inline void Edit_Mesh_PMove_NodeY(Mesh& m, const Selection& s, View& v) {
  Edit_Mesh_Scale_Nodes(m, s, v, EditAxis::Y, true);
}
inline void Edit_Mesh_Rotate_NodeX(Mesh& m, const Selection& s, View& v) {
  Edit_Mesh_Scale_Nodes(m, s, v, EditAxis::X, false);
}
inline void Edit_Mesh_Rotate_NodeY(Mesh& m, const Selection& s, View& v) {
  Edit_Mesh_Scale_Nodes(m, s, v, EditAxis::Y, false);
}

} // namespace velk
