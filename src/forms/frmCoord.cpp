#include "forms/frmCoord.h"

#include "common/Fault.h"
#include "common/Host.h"
#include "session/VELKMain.h"

#include <exception>

namespace velk {

namespace {

constexpr const char* kNumbers = "Input Data Error : Numbers!";

Nodeb& Node(const std::shared_ptr<Nodeb>& node) {
  if (!node) Raise(errObjectNotSet);
  return *node;
}

void Redraw() {
  if (hooks().Paint) hooks().Paint();
}

} // namespace

void frmCoord::Form_Activate() {
  try {
    const Nodeb& n = Node(node_);
    lblNode = "Node: " + std::to_string(n.vID);
    txtX = SingleToText(n.xcoord);
    txtY = SingleToText(n.ycoord);
    cmdUndoEnabled = false;
  } catch (const std::exception&) {
    MsgBox("Error...");
  }
}

void frmCoord::cmdApply_Click() {
  try {
    if (!IsNumeric(txtX) || !IsNumeric(txtY)) return void(MsgBox(kNumbers));
    // Both read before either is written: a value beyond a Single moves nothing.
    const Single x = TextToSingle(txtX);
    const Single y = TextToSingle(txtY);
    Nodeb& n = Node(node_);
    UndoX = n.xcoord;
    UndoY = n.ycoord;
    n.xcoord = x;
    n.ycoord = y;
    cmdUndoEnabled = true;
    Redraw();
  } catch (const std::exception&) {
    MsgBox(kNumbers);
  }
}

void frmCoord::cmdUndo_Click() {
  try {
    if (!cmdUndoEnabled) return; // one level: a second Undo is not offered
    Nodeb& n = Node(node_);
    n.xcoord = UndoX;
    n.ycoord = UndoY;
    cmdUndoEnabled = false;
    Redraw();
  } catch (const std::exception&) {
    MsgBox("Error...");
  }
}

} // namespace velk
