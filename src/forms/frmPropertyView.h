#pragma once
// The property table window's logic ("Properties"): one list of the model per
// tab, rebuilt when its tab is chosen, and saved to a text file. It stands
// beside the main window; printing is the toolkit's.
#include "common/Host.h"

#include <functional>
#include <string>

namespace velk {

class frmPropertyView {
public:
  int SSTab1 = 2;           // the current tab (PropertyTabs)
  std::string rtbProperty;  // the list on show
  FileDialog CommonDialog1; // the save dialog; keeps its own file name
  bool Unloaded = false;
  // The main window's part of the unload: its menu check and tool bar button.
  std::function<void()> OnUnload;

  void Form_Load(); // the Coordinate tab
  // SSTab1 already holds the tab chosen; the same tab again does nothing.
  void SSTab1_Click(int PreviousTab);
  void Command1_Click(); // "Save to File"
  void Form_Unload();

private:
  void Show(int tab);
};

} // namespace velk
