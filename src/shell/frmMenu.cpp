#include "shell/frmMenu.h"

#include "analysis/EigenCalculation.h"
#include "common/Host.h"
#include "common/TextRules.h"
#include "editing/Selection.h"
#include "mesh/GeometryEdit.h"
#include "reports/Bitmap.h"
#include "session/ProjectFile.h"
#include "session/ReportCommands.h"
#include "session/VELKMain.h"
#include "shell/BeamShapeDialog.h"
#include "shell/ClipDialog.h"
#include "shell/CoordDialog.h"
#include "shell/EigenDialog.h"
#include "shell/GLView.h"
#include "shell/HelpWindow.h"
#include "shell/OptionDialog.h"
#include "shell/PropertyDialogs.h"
#include "shell/PropertyViewWindow.h"
#include "shell/StressWindow.h"
#include "shell/WindowPlacement.h"
#include "shell/frmAbout.h"
#include "draw/DrawBitmap.h"
#include "draw/DrawModel.h"
#include "view/View.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QFontMetrics>
#include <QIcon>
#include <QKeyEvent>
#include <QLabel>
#include <QMenuBar>
#include <QStatusBar>
#include <QToolBar>

#include <algorithm>

// The icons and help pages live in a static library: register them by hand.
static void InitResources() {
  Q_INIT_RESOURCE(velk);
}

namespace velk {

namespace {

const char* const kModeIcons[] = {"plate", "stiffener", "boundary", "brace", "load"};

QIcon IconFor(const QString& picture) {
  return QIcon(":/icons/" + picture + ".svg");
}

// A status panel keeps room for its widest usual text, and takes more for a
// longer one, so that it never cuts what it shows.
class StatusPanel : public QLabel {
public:
  StatusPanel(const QString& widest, QWidget* parent) : QLabel(parent), widest_(widest) {}
  QSize minimumSizeHint() const override {
    QSize s = QLabel::minimumSizeHint();
    const QFontMetrics fm = fontMetrics();
    s.rwidth() += std::max(0, fm.horizontalAdvance(widest_) - fm.horizontalAdvance(text()));
    return s;
  }
  QSize sizeHint() const override { return QLabel::sizeHint().expandedTo(minimumSizeHint()); }

private:
  QString widest_;
};

} // namespace

void frmMenu::Trap(const char* message, const std::function<void()>& fn) {
  try {
    fn();
  } catch (const std::exception&) {
    if (message) MsgBox(message);
  }
}

frmMenu::frmMenu(QWidget* parent) : QMainWindow(parent) {
  InitResources();
  setObjectName("frmMenu");
  setWindowIcon(QIcon(":/icons/velk.svg"));
  view_ = new GLView(this);
  view_->setObjectName("GLSurface");
  setCentralWidget(view_);
  BuildMenus();
  BuildToolBar();
  BuildStatusBar();
  connect(view_, &GLView::mouseDown, this, &frmMenu::Form_MouseDown);
  connect(view_, &GLView::mouseMoved, this, &frmMenu::Form_MouseMove);
  connect(view_, &GLView::mouseUp, this, &frmMenu::Form_MouseUp);
  connect(view_, &GLView::doubleClicked, this, &frmMenu::Form_DblClick);
  qApp->installEventFilter(this);

  hooks().Paint = [this] { Paint(); };
  hooks().Update = [this] { Update(); };
  hooks().updateToolBar = [this] { updateToolBar(); };
  hooks().UpdateFont = [this](int size) { UpdateFont(size); };
  hooks().CaptionChanged = [this](const std::string& c) {
    setWindowTitle(QString::fromStdString(c));
  };
  analysisHooks().EigenvaluePanel = [this](const std::string& t) {
    panels_["eigenvalue"]->setText(QString::fromStdString(t));
  };

  // The load step.
  Trap("Error..[Form_Load]", [this] {
    Read_Option();
    Update();
    UpdateFont(gView().OptionFontSize);
  });
  // 9585 x 6975 twips of client area: 639 x 465 pixels at 96 dpi, below the menu bar.
  UpdateMinimumSize();
  resize(639, 465 + menuBar()->sizeHint().height());
}

frmMenu::~frmMenu() {
  qApp->removeEventFilter(this);
  hooks() = MainWindowHooks{};
  analysisHooks().EigenvaluePanel = nullptr;
}

QAction* frmMenu::AddMenu(QMenu* parent, const QString& name, const QString& caption,
                          std::function<void()> handler) {
  QAction* a = nullptr;
  if (caption == "-") {
    a = parent->addSeparator();
  } else {
    a = parent->addAction(caption);
    if (handler) connect(a, &QAction::triggered, this, [handler] { handler(); });
  }
  a->setObjectName(name);
  menus_.insert(name, a);
  return a;
}

// The handler flips the check itself, as the tool bar and the popup call it
// too: undo the flip of the menu's own click first.
QAction* frmMenu::AddCheckMenu(QMenu* parent, const QString& name, const QString& caption,
                               std::function<void()> handler) {
  QAction* a = AddMenu(parent, name, caption);
  a->setCheckable(true);
  connect(a, &QAction::triggered, this, [a, handler] {
    a->setChecked(!a->isChecked());
    handler();
  });
  return a;
}

QMenu* frmMenu::AddTopMenu(const QString& name, const QString& caption, int context) {
  QMenu* m = menuBar()->addMenu(caption);
  m->setObjectName(name);
  m->menuAction()->setObjectName(name);
  m->menuAction()->setData(context);
  menus_.insert(name, m->menuAction());
  return m;
}

QMenu* frmMenu::AddSubMenu(QMenu* parent, const QString& name, const QString& caption) {
  QMenu* m = parent->addMenu(caption);
  m->setObjectName(name);
  m->menuAction()->setObjectName(name);
  menus_.insert(name, m->menuAction());
  return m;
}

void frmMenu::BuildMenus() {
  BuildFileAndBeamMenus();
  BuildModelMenus();
  BuildViewMenus();
  BuildPopup();
}

void frmMenu::BuildFileAndBeamMenus() {
  auto top = [this](const QString& n, const QString& c, int ctx) { return AddTopMenu(n, c, ctx); };
  auto sub = [this](QMenu* p, const QString& n, const QString& c) { return AddSubMenu(p, n, c); };
  QMenu* file = top("mnuFile", "File", 20070);
  AddMenu(file, "mnuFile_New", "New Data", [this] { mnuFile_New_Click(); });
  AddMenu(file, "mnuFile_Sapace_0", "-");
  AddMenu(file, "mnuFile_Open", "Read  Data", [this] { mnuFile_Open_Click(); });
  AddMenu(file, "mnuFile_SaveData", "Save Data", [this] { mnuFile_SaveData_Click(); });
  AddMenu(file, "mnuFile_Space_1", "-");
  QMenu* report = sub(file, "mnuFile_SavePost", "Create Report File");
  AddMenu(report, "mnuFile_ReportAll", "Report All", [this] { mnuFile_ReportAll_Click(); });
  AddMenu(report, "mnuFile_Report_Grid", "Displacement Grid",
          [this] { mnuFile_Report_Grid_Click(); });
  AddMenu(file, "mnuCreate_BMP", "Create Bitmap File", [this] { mnuCreate_BMP_Click(); });
  AddMenu(file, "mnuFile_Space_2", "-");
  AddMenu(file, "mnuFile_Exit", "Exit", [this] { mnuFile_Exit_Click(); });

  QMenu* beam = top("mnuBeam", "Beam", 20040);
  AddMenu(beam, "mnuBeam_Beam", "Geometry", [this] { mnuBeam_Beam_Click(); });
  QMenu* edit = sub(beam, "mnuEditGeometry", "Edit Geometry");
  AddMenu(edit, "mnuMoveNodeX", "Move Nodes in X Dir. by", [this] { mnuMoveNodeX_Click(); });
  AddMenu(edit, "mnuMoveNodeY", "Move Nodes in Y Dir. by", [this] { mnuMoveNodeY_Click(); });
  AddMenu(edit, "mnuBeam_Space_1", "-");
  AddMenu(edit, "mnuRotateNodeX", "Taper in X", [this] { mnuRotateNodeX_Click(); });
  AddMenu(edit, "mnuRotateNodeY", "Taper in Y", [this] { mnuRotateNodeY_Click(); });
  AddMenu(edit, "mnuBeam_Sapce_2", "-");
  AddMenu(edit, "mnuPropX", "Proportional Move in X", [this] { mnuPropX_Click(); });
  AddMenu(edit, "mnuPropY", "Proportional Move in Y", [this] { mnuPropY_Click(); });
  edit->menuAction()->setVisible(false);
  edit->menuAction()->setEnabled(false);
}

// Elements, Analysis and Property: what the user puts on the model and runs.
void frmMenu::BuildModelMenus() {
  auto top = [this](const QString& n, const QString& c, int ctx) { return AddTopMenu(n, c, ctx); };
  QMenu* elements = top("mnuElements", "Elements", 20060);
  AddMenu(elements, "mnuElements_Plate", "Plate", [this] { mnuElements_Plate_Click(); });
  AddMenu(elements, "mnuElements_Stiffener", "Stiffener",
          [this] { mnuElements_Stiffener_Click(); });
  AddMenu(elements, "mnuElement_Space_1", "-");
  AddMenu(elements, "mnuElements_Boundary", "Boundary", [this] { mnuElements_Boundary_Click(); });
  AddMenu(elements, "mnuElements_Brace", "Brace", [this] { mnuElements_Brace_Click(); });
  AddMenu(elements, "mnuElements_Load", "Load", [this] { mnuElements_Load_Click(); });
  for (const char* n : {"mnuElements_Plate", "mnuElements_Stiffener", "mnuElements_Boundary",
                        "mnuElements_Brace", "mnuElements_Load"})
    menus_[n]->setCheckable(true);

  QMenu* run = top("mnuRun", "Analysis", 20010);
  AddMenu(run, "mnuRun_Run", "Run", [this] { mnuRun_Run_Click(); });
  AddMenu(run, "mnuRun_Space_1", "-");
  AddMenu(run, "mnuRunOption", "Analysis Option", [this] { mnuRunOption_Click(); })->setData(20020);

  QMenu* prop = top("mnuProperty", "Property", 20130);
  AddMenu(prop, "mnuProperty_SetProperty", "Set Property",
          [this] { mnuProperty_SetProperty_Click(); });
  AddMenu(prop, "mnuProperty_CopyProperty", "Copy Property",
          [this] { mnuProperty_CopyProperty_Click(); });
  AddMenu(prop, "mnuProperty_PasteProperty", "Paste Property",
          [this] { mnuProperty_PasteProperty_Click(); });
  AddMenu(prop, "mnuProperty_DeleteProperty", "Delete Property",
          [this] { mnuProperty_DeleteProperty_Click(); });
  AddMenu(prop, "mnuProperty_Space_1", "-");
  AddMenu(prop, "mnuProperty_ShowProperty", "Show Property Window", [this] {
    mnuProperty_ShowProperty_Click();
  })->setCheckable(true);
}

// View, Results and Help.
void frmMenu::BuildViewMenus() {
  auto top = [this](const QString& n, const QString& c, int ctx) { return AddTopMenu(n, c, ctx); };
  QMenu* view = top("mnuView", "View", 20230);
  AddMenu(view, "mnuView_Refresh", "Refresh", [this] { mnuView_Refresh_Click(); });
  AddMenu(view, "mnuView_Space_11", "-");
  AddMenu(view, "mnuView_Selection", "Select", [this] { mnuView_Selection_Click(); });
  AddMenu(view, "mnuTranslate", "Translate", [this] { mnuTranslate_Click(); });
  AddMenu(view, "mnuRotateXY", "Rotate", [this] { mnuRotateXY_Click(); });
  AddMenu(view, "mnuView_ZoomIn", "Zoom In/Out", [this] { mnuView_ZoomIn_Click(); });
  AddMenu(view, "mnuView_ZoomAll", "Zoom All", [this] { mnuView_ZoomAll_Click(); });
  AddMenu(view, "mnuView_Space_0", "-");
  AddMenu(view, "mnuView_Center", "Move to Center", [this] { mnuView_Center_Click(); });
  AddMenu(view, "mnuView_ZoomInCenter", "Zoom In: Center",
          [this] { mnuView_ZoomInCenter_Click(); });
  AddMenu(view, "mnuView_ZoomOutCenter", "Zoom Out: Center",
          [this] { mnuView_ZoomOutCenter_Click(); });
  AddMenu(view, "mnuView_Space15", "-");
  AddMenu(view, "mnuView_Zoom50", "Zoom   50%", [this] { mnuView_Zoom(0.5f); });
  AddMenu(view, "mnuView_Zoom100", "Zoom 100%", [this] { mnuView_Zoom(1); });
  AddMenu(view, "mnuView_Zoom200", "Zoom 200%", [this] { mnuView_Zoom(2); });
  AddMenu(view, "mnuView_Zoom500", "Zoom 500%", [this] { mnuView_Zoom(5); });
  AddMenu(view, "mnuView_Zoom1000", "Zoom1000%", [this] { mnuView_Zoom(10); });
  AddMenu(view, "mnuView_Space14", "-");
  AddMenu(view, "mnuView_Window", "Actual/Fit View", [this] { mnuView_Window_Click(); });
  AddMenu(view, "mnuView_Clip", "Clipping", [this] { mnuView_Clip_Click(); });
  AddMenu(view, "mnuViewSpace_2", "-");
  QAction* tb =
      AddMenu(view, "mnuView_Toolbar", "Show/Hide Toolbar", [this] { mnuView_Toolbar_Click(); });
  tb->setCheckable(true);
  tb->setChecked(true);
  AddMenu(view, "mnuOption", "View Option", [this] { mnuOption_Click(); })->setData(20240);

  QMenu* result = top("mnuResult", "Results", 20150);
  AddCheckMenu(result, "mnuResult_Show", "Show Buckled Shape", [this] { mnuResult_Show_Click(); });
  AddCheckMenu(result, "mnuStressPlot", "Stress Plot", [this] { mnuStressPlot_Click(); });

  BuildStudiesMenu();

  QMenu* help = top("mnuHelp", "Help", 20100);
  AddMenu(help, "mnuVELKHelp", "Help Topics", [this] { mnuVELKHelp_Click(); });
  AddMenu(help, "mnuHelp_Space_1", "-");
  AddMenu(help, "mnuHelp_About", "About VELK ", [this] { mnuHelp_About_Click(); });
}

// The popup of a right press on the view.
void frmMenu::BuildPopup() {
  auto sub = [this](QMenu* p, const QString& n, const QString& c) { return AddSubMenu(p, n, c); };
  popup_ = new QMenu("PopUp", this);
  popup_->setObjectName("mnuPopup");
  AddMenu(popup_, "mnuPopUp_Select", "Selection", [this] { mnuView_Selection_Click(); });
  QMenu* pp = sub(popup_, "mnuPopUp_Property", "Property");
  AddMenu(pp, "mnuPopUp_SetProperty", "Set Property", [this] { mnuProperty_SetProperty_Click(); });
  AddMenu(pp, "mnuPopUp_CopyProperty", "Copy Property",
          [this] { mnuProperty_CopyProperty_Click(); });
  AddMenu(pp, "mnuPopUp_PasteProperty", "Paste Property",
          [this] { mnuProperty_PasteProperty_Click(); });
  AddMenu(pp, "mnuPopUp_DeleteProperty", "Delete Property",
          [this] { mnuProperty_DeleteProperty_Click(); });
  AddMenu(pp, "mnuPopup_Space_3", "-");
  // "Proeprty" is the popup's own spelling: keep it.
  AddMenu(pp, "mnuPopUp_ShowProperty", "Show Proeprty",
          [this] { mnuProperty_ShowProperty_Click(); });
  AddMenu(popup_, "mnuPopUp_Space_1", "-");
  QMenu* pv = sub(popup_, "mnuPopUpView", "View");
  AddMenu(pv, "mnuPopUp_Translate", "Translate", [this] { mnuTranslate_Click(); });
  AddMenu(pv, "mnupopup_Rotate", "Rotate", [this] { mnuRotateXY_Click(); });
  AddMenu(pv, "mnuPopup_Zoom", "Zoom In/Out", [this] { mnuView_ZoomIn_Click(); });
  AddMenu(pv, "mnuPopup_ZoomAll", "Zoom All", [this] { mnuView_ZoomAll_Click(); });
  AddMenu(pv, "mnuPopUp_Space_4", "-");
  AddMenu(pv, "mnuPopup_Clip", "Clipping", [this] { mnuView_Clip_Click(); });
  AddMenu(popup_, "mnuPopUp_space_2", "-");
  AddMenu(popup_, "mnuPopUp_Refresh", "Refresh", [this] { mnuView_Refresh_Click(); });
  AddMenu(popup_, "mnuPopup_Space5", "-");
  AddMenu(popup_, "mnuPopup_ViewOption", "View Options", [this] { mnuOption_Click(); });
}

void frmMenu::BuildToolBar() {
  toolbar_ = addToolBar("Toolbar1");
  toolbar_->setObjectName("Toolbar1");
  toolbar_->setMovable(false);
  // 16-pixel pictures in tight buttons, so the whole bar fits the first window
  // (639 wide) with no button behind the chevron.
  toolbar_->setIconSize(QSize(16, 16));
  toolbar_->setStyleSheet("QToolButton { padding: 1px; margin: 0px; }");
  // One row per button: its key, its tool tip and the command it gives.
  struct Button {
    const char* key;
    const char* tip;
    std::function<void()> handler;
  };
  const Button separator{nullptr, nullptr, {}};
  const Button buttons[] = {
      {"new", "New Data", [this] { mnuFile_New_Click(); }},
      {"open", "Read Data", [this] { mnuFile_Open_Click(); }},
      {"save", "Store Data", [this] { mnuFile_SaveData_Click(); }},
      separator,
      {"mesh", "Generate Mesh", [this] { mnuBeam_Beam_Click(); }},
      separator,
      {"plate", "Set Plate Thickness", [this] { mnuElements_Plate_Click(); }},
      {"stiffener", "Set Stiffener Size", [this] { mnuElements_Stiffener_Click(); }},
      {"boundary", "Set Boundary Condition", [this] { mnuElements_Boundary_Click(); }},
      {"brace", "Set Brace Stiffness", [this] { mnuElements_Brace_Click(); }},
      {"load", "Set Point Loading Condition", [this] { mnuElements_Load_Click(); }},
      separator,
      {"select", "Switch to Selection Mode", [this] { mnuView_Selection_Click(); }},
      {"set", "Set Property", [this] { mnuProperty_SetProperty_Click(); }},
      {"delete", "Delete Property", [this] { mnuProperty_DeleteProperty_Click(); }},
      {"copy", "Copy Property", [this] { mnuProperty_CopyProperty_Click(); }},
      {"paste", "Paste Property", [this] { mnuProperty_PasteProperty_Click(); }},
      separator,
      {"property", "Show Property", [this] { mnuProperty_ShowProperty_Click(); }},
      separator,
      {"topview", "View from the Top", [] { gView().TopView(); }},
      {"leftview", "View from the Left", [] { gView().LeftView(); }},
      {"viewangle", "View at an angle", [] { gView().ViewAngle(); }},
      {"zoomall", "Zoom All", [this] { mnuView_ZoomAll_Click(); }},
      {"zoomin", "Switch to Zoom-In-Center Mode", [this] { mnuView_ZoomInCenter_Click(); }},
      {"zoomout", "Switch to Zoom-Out-Center Mode", [this] { mnuView_ZoomOutCenter_Click(); }},
      {"center", "Switch to Move-to-Center Mode", [this] { mnuView_Center_Click(); }},
      {"refresh", "Refresh View Screen", [this] { mnuView_Refresh_Click(); }},
      separator,
      {"run", "Calculate Buckling Strength", [this] { mnuRun_Run_Click(); }}};
  for (const Button& b : buttons) {
    if (!b.key) {
      toolbar_->addSeparator();
      continue;
    }
    const QString key = b.key;
    const QString picture = key == "mesh" ? "meshgeneration" : key;
    QAction* a = toolbar_->addAction(IconFor(picture), key);
    a->setObjectName("tb_" + key);
    a->setToolTip(b.tip);
    a->setData(key);
    connect(a, &QAction::triggered, this, [this, key] { Toolbar1_ButtonClick(key); });
    tools_.insert(key, a);
    toolHandlers_.insert(key, b.handler);
  }
  tools_["property"]->setCheckable(true);
}

void frmMenu::BuildStatusBar() {
  struct P {
    const char* key;
    const char* tip;
    const char* widest; // the longest text it usually shows
    int stretch;
  };
  const P panels[] = {{"x", "X Coordinate", "X: -9999.99", 0},
                      {"y", "Y Coordinate", "Y: -9999.99", 0},
                      {"eigenvalue", "Eigenvalue", "Eigenvalue : -9.9999E-99", 1},
                      {"editmode", "Edit Mode", "", 0},
                      {"operationmode", "Operation Mode", "ZOOM OUT/Center", 1},
                      {"viewscale", "View Scale", "ACTUAL VIEW", 0}};
  for (const P& p : panels) {
    auto* l = new StatusPanel(p.widest, this);
    l->setObjectName(QString("panel_") + p.key);
    l->setToolTip(p.tip);
    l->setFrameStyle(QFrame::Panel | QFrame::Sunken);
    statusBar()->addWidget(l, p.stretch);
    panels_.insert(p.key, l);
  }
  panels_["editmode"]->setMinimumWidth(28); // a picture of 18 pixels
  statusBar()->installEventFilter(this);
}

// The status bar lets its panels print over each other when the window is
// narrower than they are: the window is held to their width, and to a view
// below the bars that still shows a model.
void frmMenu::UpdateMinimumSize() {
  const int bars = menuBar()->sizeHint().height() + toolbar_->sizeHint().height() +
                   statusBar()->sizeHint().height();
  setMinimumSize(statusBar()->minimumSizeHint().width(), bars + kMinimumViewHeight);
}

int frmMenu::HelpContext() const {
  return 20100;
}

// ---- public operations ----

void frmMenu::Update() {
  View& v = gView();
  v.MeshMode = MeshModes::Plate;
  v.PropertyMode = PropertyModes::Plate;
  gSelection().ClearSelectedItem();
  if (!isVisible()) return;
  panels_["x"]->clear();
  panels_["y"]->clear();
  panels_["eigenvalue"]->setText(
      QString::fromStdString("Eigenvalue : " + Format(gAnalysis().EigenValue, "###0.00")));
  panels_["operationmode"]->setText("SELECT");
  panels_["viewscale"]->setText("ACTUAL VIEW");
  SetCaption(std::string(kCaptionPrefix) + " No Title");
  menus_["mnuResult_Show"]->setChecked(v.OptionShowResult != 0);
  menus_["mnuStressPlot"]->setChecked(v.OptionShowStress != 0);
}

void frmMenu::updateToolBar() {
  Trap("Error..[Toolbar]", [this] {
    const char* names[] = {"mnuElements_Plate", "mnuElements_Stiffener", "mnuElements_Boundary",
                           "mnuElements_Brace", "mnuElements_Load"};
    for (const char* n : names)
      menus_[n]->setChecked(false);
    const long mode = gView().PropertyMode;
    if (mode >= PropertyModes::Plate && mode <= PropertyModes::Load) {
      menus_[names[mode - 1]]->setChecked(true);
      panels_["editmode"]->setPixmap(IconFor(kModeIcons[mode - 1]).pixmap(18, 18));
      panels_["editmode"]->setProperty("picture", kModeIcons[mode - 1]);
    }
  });
}

// With the select tool, the model point under the pointer goes to the panels
// "x" and "y"; off the model, and with any other tool, they are emptied.
void frmMenu::ShowCoordinates(const QPoint& p) {
  double x = 0, y = 0, z = 0;
  bool on = false;
  if (gView().ViewMode == ViewModes::Select) {
    view_->makeCurrent();
    on = Probe_Model_Point(gView(), p.x(), p.y(), x, y, z);
    view_->doneCurrent();
  }
  panels_["x"]->setText(on ? QString::fromStdString("X: " + Format(x, "###0.00")) : QString());
  panels_["y"]->setText(on ? QString::fromStdString("Y: " + Format(y, "###0.00")) : QString());
}

void frmMenu::UpdateFont(int fontsizedata) {
  view_->UpdateFont(fontsizedata);
}

void frmMenu::Paint() {
  view_->PaintNow();
}

// ---- commands ----

void frmMenu::mnuFile_New_Click() {
  Trap("Error..[File New]", [] { New_Model(); });
}
void frmMenu::mnuFile_Open_Click() {
  Trap("Error..[File Open]", [] { Open_Project(); });
}
void frmMenu::mnuFile_SaveData_Click() {
  Trap("Error..[File Save]", [] { Save_Project(); });
}
void frmMenu::mnuFile_ReportAll_Click() {
  Trap("Error..[Create Report All]", [] { Write_Report(); });
}
void frmMenu::mnuFile_Report_Grid_Click() {
  Trap("Error..[Create Report Grid]", [] { Write_GridFile(); });
}

void frmMenu::mnuCreate_BMP_Click() {
  Trap("Error..[Generate BMP]", [this] {
    panels_["operationmode"]->setText("Create BMP");
    gView().ViewMode = ViewModes::BitmapBox;
  });
}

void frmMenu::BitmapBox(double downX, double downY, double upX, double upY) {
  Trap("Error..[Form_MouseUp]", [&] {
    if (const auto box = Bitmap_Box(downX, downY, upX, upY))
      Save_Bitmap(box->x, box->y, box->width, box->height);
  });
}

void frmMenu::mnuFile_Exit_Click() {
  close();
}

void frmMenu::mnuBeam_Beam_Click() {
  Trap("Error..[Beam Beam]", [this] {
    BeamShapeDialog dlg(this);
    dlg.exec();
  });
}

// The geometry commands only call the operation, which has its own trap.
void frmMenu::mnuMoveNodeX_Click() {
  Edit_Mesh_Move_NodeX(gMesh(), gSelection(), gView());
}
void frmMenu::mnuMoveNodeY_Click() {
  Edit_Mesh_Move_NodeY(gMesh(), gSelection(), gView());
}
void frmMenu::mnuRotateNodeX_Click() {
  Edit_Mesh_Rotate_NodeX(gMesh(), gSelection(), gView());
}
void frmMenu::mnuRotateNodeY_Click() {
  Edit_Mesh_Rotate_NodeY(gMesh(), gSelection(), gView());
}
void frmMenu::mnuPropX_Click() {
  Edit_Mesh_PMove_NodeX(gMesh(), gSelection(), gView());
}
void frmMenu::mnuPropY_Click() {
  Edit_Mesh_PMove_NodeY(gMesh(), gSelection(), gView());
}

void frmMenu::mnuRun_Run_Click() {
  EigenDialog dlg(this);
  dlg.exec();
}

void frmMenu::mnuRunOption_Click() {
  Trap("Error..[Run Option]", [this] {
    AnalysisOptionDialog dlg(this);
    dlg.exec();
  });
}

void frmMenu::EditMode(Long propertyMode, const char* trap) {
  Trap(trap, [this, propertyMode] {
    gSelection().ClearSelectedItem();
    gView().PropertyMode = propertyMode;
    gView().MeshMode = MeshModeOf(propertyMode);
    gView().Refresh();
    updateToolBar();
  });
}

void frmMenu::mnuProperty_SetProperty_Click() {
  Trap("Error..[Property Set]", [this] {
    if (gSelection().SelectedCounter() == 0) return;
    if (const auto dlg = NewPropertyDialog(gView().PropertyMode, this)) dlg->exec();
  });
}

void frmMenu::ShowCoordDialog() {
  Trap(nullptr, [this] { // the double click has no message of its own
    if (gSelection().SelectedCounter() < 1) return;
    const auto* node = std::get_if<std::shared_ptr<Nodeb>>(&gSelection().Item(1));
    if (!node || !*node) return;
    CoordDialog dlg(*node, this);
    dlg.exec();
  });
}
// The clipboard commands leave the picture to the next frame.
void frmMenu::mnuProperty_CopyProperty_Click() {
  Trap("Error..[Property Copy]", [] { gSelection().Copy(); });
}
void frmMenu::mnuProperty_PasteProperty_Click() {
  Trap("Error..[Property Paste]", [] { gSelection().Paste(gMesh(), gView().PropertyMode); });
}
void frmMenu::mnuProperty_DeleteProperty_Click() {
  Trap("Error..[Property Delete]", [] { gSelection().Delete(gMesh(), gView().PropertyMode); });
}
// The menu's check says whether the window is open; the tool bar button follows it.
void frmMenu::mnuProperty_ShowProperty_Click() {
  Trap("Error..[Property Show]", [this] {
    QAction* entry = menus_["mnuProperty_ShowProperty"];
    entry->setChecked(!propertyView_);
    tools_["property"]->setChecked(entry->isChecked());
    if (entry->isChecked()) {
      propertyView_ = new PropertyViewWindow(this);
      propertyView_->setAttribute(Qt::WA_DeleteOnClose);
      propertyView_->Form().OnUnload = [this] {
        menus_["mnuProperty_ShowProperty"]->setChecked(false);
        tools_["property"]->setChecked(false);
      };
      PlaceToolWindow(propertyView_, this, propertyView_->size());
      propertyView_->show();
    } else if (propertyView_) {
      propertyView_->close();
    }
  });
}

void frmMenu::Tool(Long viewMode, const char* panelText, const char* trap) {
  Trap(trap, [this, viewMode, panelText] {
    panels_["operationmode"]->setText(panelText);
    gView().ViewMode = viewMode;
  });
}

void frmMenu::mnuView_Refresh_Click() {
  Trap("Error..[View Refresh]", [] {
    gSelection().ClearSelectedItem();
    gView().Refresh();
  });
}

void frmMenu::mnuView_ZoomAll_Click() {
  Trap("Error..[View ZoomAll]", [] {
    gView().Zoom_All();
    gView().Refresh();
  });
}

void frmMenu::mnuView_Zoom(float zoom) {
  gView().ViewZoom = zoom;
  Paint();
}

void frmMenu::mnuView_Window_Click() {
  gView().ScreenModeChange(gMesh().Nodes());
  panels_["viewscale"]->setText(gView().ScreenMode == ScreenModes::Actual ? "ACTUAL VIEW"
                                                                          : "FIT VIEW");
}

void frmMenu::mnuView_Clip_Click() {
  ClipDialog dlg(this);
  dlg.exec();
}

void frmMenu::mnuOption_Click() {
  Trap("Error..[Option]", [this] {
    OptionDialog dlg(this);
    dlg.exec();
  });
}

void frmMenu::mnuView_Toolbar_Click() {
  toolbar_->setVisible(!toolbar_->isVisible());
  menus_["mnuView_Toolbar"]->setChecked(toolbar_->isVisible());
}

// The buckled shape and the stress plot exclude each other.
void frmMenu::mnuResult_Show_Click() {
  QAction* show = menus_["mnuResult_Show"];
  show->setChecked(!show->isChecked());
  View& v = gView();
  if (show->isChecked()) {
    v.OptionShowResult = vbTrue;
    menus_["mnuStressPlot"]->setChecked(false);
    v.OptionShowStress = StressPlots::None;
    if (stress_ && stress_->isVisible()) stress_->close();
  } else {
    v.OptionShowResult = vbFalse;
  }
  Paint();
}

// Opening the window starts no plot: that waits for its Apply.
void frmMenu::mnuStressPlot_Click() {
  QAction* plot = menus_["mnuStressPlot"];
  plot->setChecked(!plot->isChecked());
  if (plot->isChecked()) {
    if (menus_["mnuResult_Show"]->isChecked()) {
      menus_["mnuResult_Show"]->setChecked(false);
      gView().OptionShowResult = vbFalse;
    }
    if (!stress_) {
      stress_ = new StressWindow(this);
      stress_->Form().StressPlotCheckOff = [this] { menus_["mnuStressPlot"]->setChecked(false); };
    }
    stress_->show();
  } else {
    if (stress_) stress_->close();
    gView().OptionShowStress = StressPlots::None;
    Paint();
  }
}

void frmMenu::StressProbe(const QPoint& p) {
  if (!stress_ || !stress_->isVisible()) return;
  float CB = 0, CR = 0;
  view_->makeCurrent();
  const bool read = Probe_Stress_Color(gView(), p.x(), p.y(), CB, CR);
  view_->doneCurrent();
  if (read) gView().ShowStressValue(CB, CR);
}

void frmMenu::ShowHelp(int context) {
  if (!help_) help_ = new HelpWindow(this);
  help_->ShowContext(context);
}

void frmMenu::mnuVELKHelp_Click() {
  ShowHelp(HelpContext());
}

void frmMenu::mnuHelp_About_Click() {
  frmAbout about(this);
  about.exec();
}

void frmMenu::Toolbar1_ButtonClick(const QString& key) {
  Trap("Error..[Toolbar]", [this, key] {
    if (const auto handler = toolHandlers_.value(key)) handler();
  });
}

bool frmMenu::eventFilter(QObject* o, QEvent* e) {
  if (o == statusBar() && e->type() == QEvent::LayoutRequest) UpdateMinimumSize(); // a panel grew
  if (e->type() == QEvent::KeyPress && static_cast<QKeyEvent*>(e)->key() == Qt::Key_F1) {
    // A dialog names its context; everything else has the main window's.
    QWidget* active = QApplication::activeWindow();
    const QVariant context = active ? active->property("helpContext") : QVariant();
    ShowHelp(context.isValid() ? context.toInt() : HelpContext());
    return true;
  }
  return QMainWindow::eventFilter(o, e);
}

void frmMenu::closeEvent(QCloseEvent* e) {
  if (!unloaded_) {
    unloaded_ = true;
    Trap("Error..[Form_Unload]", [this] {
      Save_Option();
      if (stress_) stress_->close(); // after the save: a plot in force is kept for the next start
      if (help_) help_->close();
      if (propertyView_) propertyView_->close();
      hooks() = MainWindowHooks{};
      Reset_Session();
    });
  }
  e->accept();
}

} // namespace velk
