#pragma once
// The main window: menu bar, popup, tool bar, status bar and the GL surface,
// with one handler per command.
#include "shell/BucklingModesWindow.h"
#include "shell/HelpWindow.h"
#include "shell/PropertyViewWindow.h"
#include "shell/StressWindow.h"
#include "shell/SweepWindow.h"
#include "view/View.h"

#include <QMainWindow>
#include <QMap>
#include <QPointer>
#include <functional>

class QAction;
class QLabel;
class QMenu;
class QRubberBand;
class QToolBar;

namespace velk {

class GLView;

class frmMenu : public QMainWindow {
  Q_OBJECT
public:
  explicit frmMenu(QWidget* parent = nullptr);
  ~frmMenu() override;

  // Public operations of the main window.
  void Update();
  void updateToolBar();
  void UpdateFont(int fontsizedata);
  void Paint();
  void ShowCoordinatesAt(const QPoint& p) { ShowCoordinates(p); }
  // The stress under the pointer, read from the picture, while the Plot window is shown.
  void StressProbe(const QPoint& p);
  StressWindow* Stress() const { return stress_; }

  // The Studies menu (StudiesMenu.cpp).
  void mnuStudies_SupportsLoads_Click();
  void mnuStudies_Modes_Click();
  void mnuStudies_Export_Click();
  void mnuStudies_Sweep_Click();
  SweepWindow* Sweep() const { return sweep_; }
  BucklingModesWindow* Modes() const { return modes_; }

  // The mouse on the view (frmMenuMouse.cpp). Button 1 left, 2 right; Shift 1
  // is the shift key alone; client pixels, y down.
  void Form_MouseDown(int Button, int Shift, Single X, Single Y);
  void Form_MouseMove(int Button, int Shift, Single X, Single Y);
  void Form_MouseUp(int Button, int Shift, Single X, Single Y);
  void Form_DblClick();
  // The coordinate dialog on the selected node.
  void ShowCoordDialog();
  // The gesture between a press and its release.
  struct Gesture {
    long ButtonUp = 1;    // 0 between press and release
    long BoxDragging = 0; // 1 once a box drag has moved
    Single DownX = 0, DownY = 0, MoveX = 0, MoveY = 0, UpX = 0, UpY = 0;
    bool FocusShown = false; // the rubber band is on the screen
  };
  const Gesture& MouseGesture() const { return gesture_; }
  const QRubberBand* RubberBand() const { return rubber_; }

  // For tests and the help: the parts by name.
  QAction* Menu(const QString& name) const { return menus_.value(name); }
  QAction* ToolButton(const QString& key) const { return tools_.value(key); }
  QLabel* Panel(const QString& key) const { return panels_.value(key); }
  QMenu* Popup() const { return popup_; }
  GLView* Surface() const { return view_; }
  QToolBar* Toolbar1() const { return toolbar_; }
  PropertyViewWindow* PropertyView() const { return propertyView_; }
  int HelpContext() const;

  // Commands.
  void mnuFile_New_Click();
  void mnuFile_Open_Click();
  void mnuFile_SaveData_Click();
  void mnuFile_ReportAll_Click();
  void mnuFile_Report_Grid_Click();
  void mnuCreate_BMP_Click();
  // What the bitmap tool does when the button goes up after a drag from
  // (downX, downY) to (upX, upY): a box with a size in both directions is saved.
  void BitmapBox(double downX, double downY, double upX, double upY);
  void mnuFile_Exit_Click();
  void mnuBeam_Beam_Click();
  void mnuMoveNodeX_Click();
  void mnuMoveNodeY_Click();
  void mnuRotateNodeX_Click();
  void mnuRotateNodeY_Click();
  void mnuPropX_Click();
  void mnuPropY_Click();
  void mnuRun_Run_Click();
  void mnuRunOption_Click();
  void mnuElements_Plate_Click() { EditMode(PropertyModes::Plate, "Error..[Plate]"); }
  void mnuElements_Stiffener_Click() { EditMode(PropertyModes::Stiffener, "Error..[Stiffener]"); }
  void mnuElements_Boundary_Click() { EditMode(PropertyModes::Boundary, "Error..[Boundary]"); }
  void mnuElements_Brace_Click() { EditMode(PropertyModes::Brace, "Error..[Brace]"); }
  void mnuElements_Load_Click() { EditMode(PropertyModes::Load, "Error..[Load]"); }
  void mnuProperty_SetProperty_Click();
  void mnuProperty_CopyProperty_Click();
  void mnuProperty_PasteProperty_Click();
  void mnuProperty_DeleteProperty_Click();
  void mnuProperty_ShowProperty_Click();
  void mnuView_Selection_Click() { Tool(ViewModes::Select, "SELECT", "Error..[Selection Mode]"); }
  void mnuTranslate_Click() { Tool(ViewModes::Translate, "TRANSLATE", nullptr); }
  void mnuRotateXY_Click() { Tool(ViewModes::Rotate, "ROTATE:X/Y", nullptr); }
  void mnuView_ZoomIn_Click() { Tool(ViewModes::Zoom, "ZOOM:IN/OUT", "Error..[View ZoomIn]"); }
  void mnuView_ZoomInCenter_Click() {
    Tool(ViewModes::ZoomInCenter, "ZOOM IN/Center", "Error..[View ZoomInCenter]");
  }
  void mnuView_ZoomOutCenter_Click() {
    Tool(ViewModes::ZoomOutCenter, "ZOOM OUT/Center", "Error..[View ZoomOutCenter]");
  }
  void mnuView_Center_Click() {
    Tool(ViewModes::MoveToCenter, "Move to Center", "Error..[View MovetoCenter]");
  }
  void mnuView_Refresh_Click();
  void mnuView_ZoomAll_Click();
  void mnuView_Zoom(float zoom);
  void mnuView_Window_Click();
  void mnuView_Clip_Click();
  void mnuView_Toolbar_Click();
  void mnuOption_Click();
  void mnuResult_Show_Click();
  void mnuStressPlot_Click();
  void mnuVELKHelp_Click();
  void mnuHelp_About_Click();
  void Toolbar1_ButtonClick(const QString& key);

  // Runs a command with its trap: a fault shows the message and the session goes on.
  static void Trap(const char* message, const std::function<void()>& fn);

  // F1 anywhere in the program: the help at the context of the active window.
  bool eventFilter(QObject* o, QEvent* e) override;
  HelpWindow* Help() const { return help_; }

protected:
  void closeEvent(QCloseEvent* e) override;

private:
  void BuildMenus();
  void BuildFileAndBeamMenus();
  void BuildModelMenus();
  void BuildViewMenus();
  void BuildPopup();
  void BuildStudiesMenu(); // StudiesMenu.cpp
  QMenu* AddTopMenu(const QString& name, const QString& caption, int context);
  QMenu* AddSubMenu(QMenu* parent, const QString& name, const QString& caption);
  void BuildToolBar();
  void BuildStatusBar();
  QAction* AddMenu(QMenu* parent, const QString& name, const QString& caption,
                   std::function<void()> handler = {});
  QAction* AddCheckMenu(QMenu* parent, const QString& name, const QString& caption,
                        std::function<void()> handler);
  void EditMode(Long propertyMode, const char* trap);
  void Tool(Long viewMode, const char* panelText, const char* trap);
  void ShowHelp(int context);
  void ShowCoordinates(const QPoint& p);
  // The model point under a window point of the last frame, if any.
  bool ReadModelPoint(Single X, Single Y, double& ox, double& oy, double& oz);
  void ShowFocusRect();
  void UpdateMinimumSize();
  static constexpr int kMinimumViewHeight = 150;

  GLView* view_ = nullptr;
  QToolBar* toolbar_ = nullptr;
  QMenu* popup_ = nullptr;
  QPointer<HelpWindow> help_;
  QPointer<StressWindow> stress_;
  QPointer<PropertyViewWindow> propertyView_;
  QPointer<BucklingModesWindow> modes_;
  QPointer<SweepWindow> sweep_;
  QMap<QString, QAction*> menus_;
  QMap<QString, QAction*> tools_;
  QMap<QString, std::function<void()>> toolHandlers_; // by the key of the button
  QMap<QString, QLabel*> panels_;
  bool unloaded_ = false;
  Gesture gesture_;
  QRubberBand* rubber_ = nullptr;
};

} // namespace velk
