#pragma once
// The coordinate dialog's logic: sets X and Y of one node, with one step of
// undo. It moves the node only: the centres of its elements stay where they
// were until the next whole-mesh edit.
#include "common/TextRules.h"
#include "model/Nodeb.h"

#include <memory>
#include <string>

namespace velk {

class frmCoord {
public:
  explicit frmCoord(std::shared_ptr<Nodeb> node) : node_(std::move(node)) {}

  // Caption "Nodal Coordinates".
  std::string lblNode; // "Node: " and the node's compact number
  std::string txtX;    // "X :"
  std::string txtY;    // "Y :"
  bool cmdUndoEnabled = false;
  bool Unloaded = false;
  Single UndoX = 0, UndoY = 0; // the coordinates before the last Apply

  void Form_Activate();
  void cmdApply_Click(); // the dialog stays open for a further Apply
  void cmdUndo_Click();
  void cmdClose_Click() { Unloaded = true; }

private:
  std::shared_ptr<Nodeb> node_;
};

} // namespace velk
