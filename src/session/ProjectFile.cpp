#include "session/ProjectFile.h"

#include "common/TextFile.h"
#include "model/ProjectRecords.h"
#include "session/VELKMain.h"
#include "view/View.h"

namespace velk {

namespace {

void PrepareDialog(FileDialog& d, const char* title, int flags) {
  d.DialogTitle = title;
  d.Filter = kProjectFilter;
  d.FilterIndex = 2;
  d.Flags = flags;
}

void WriteProject(OutFile& file) {
  FieldWriter out(file);
  out.Line("VELK Version");
  out.Line(" 1.4 ");
  Store_Project1_4(out, gAnalysis(), gBeamShape(), gMesh(), gMaterial());
}

} // namespace

void Save_Project_File(const std::string& path) {
  OutFile file(path);
  WriteProject(file);
  file.Close();
}

std::string Project_Data() {
  std::string data;
  OutFile sink(&data);
  WriteProject(sink);
  return data;
}

namespace {
bool Open_Project_From(FieldReader& in, const std::string& fileTitle, float* version);
}

bool Open_Project_File(const std::string& path, float* version) {
  // Read as a stream; a fault says in which file, besides the line and field.
  try {
    FieldReader in = FieldReader::FromFile(path);
    return Open_Project_From(in, FileTitleOf(path), version);
  } catch (const Fault& f) {
    const std::string what = f.what();
    if (what.rfind(path, 0) == 0) throw;
    Raise(f.number(), path + " " + what);
  }
}

bool Open_Project_Data(std::string data, const std::string& fileTitle, float* version) {
  FieldReader in(std::move(data));
  return Open_Project_From(in, fileTitle, version);
}

namespace {
bool Open_Project_From(FieldReader& in, const std::string& fileTitle, float* version) {
  in.Text(); // the header line says nothing the version does not
  float v = in.Single();
  if (version) *version = v;
  New_Model();
  const bool read = Read_Project(in, v, gAnalysis(), gBeamShape(), gMesh(), gMaterial());
  if (!read) MsgBox("Error: Reading Data", vbOKOnly, "Error!");
  if (read) {
    if (hooks().Update) hooks().Update();
    if (hooks().updateToolBar) hooks().updateToolBar();
    SetCaption(std::string(kCaptionPrefix) + fileTitle);
  }
  gView().Initialization(gMesh().Nodes());
  gView().Refresh();
  return read;
}
} // namespace

void Save_Project() {
  FileDialog& d = session().cdlFile;
  Run_File_Command("File Error!", [&] {
    PrepareDialog(d, "Save As", FileDialog::cdlOFNHideReadOnly | FileDialog::cdlOFNOverwritePrompt);
    if (!host().ShowSave(d)) Raise(errCancel);
    Save_Project_File(d.FileName);
    SetCaption(std::string(kCaptionPrefix) + d.FileTitle);
  });
}

void Open_Project() {
  FileDialog& d = session().cdlFile;
  Run_File_Command("File Open Error!", [&] {
    PrepareDialog(d, "Open Data", FileDialog::cdlOFNHideReadOnly);
    d.FileName.clear();
    if (!host().ShowOpen(d)) Raise(errCancel);
    Open_Project_File(d.FileName);
  });
}

bool Save_Project_Path(const std::string& path) {
  return Run_File_Command("File Error!", [&] {
    Save_Project_File(path);
    SetCaption(std::string(kCaptionPrefix) + FileTitleOf(path));
  });
}

bool Open_Project_Path(const std::string& path) {
  bool read = false;
  bool ok = Run_File_Command("File Open Error!", [&] { read = Open_Project_File(path); });
  return ok && read;
}

void File_Errors(int number) {
  const char* text = nullptr;
  int buttons = vbYesNo;
  switch (number) {
  case errDeviceUnavailable:
    text = "That device appears unavailable.";
    break;
  case errDiskNotReady:
    text = "Insert a disk in the drive and close the door.";
    break;
  case errDeviceIO:
    text = "Internal disk error.";
    break;
  case errDiskFull:
    text = "Disk is full. Continue?";
    buttons = vbYesNoCancel;
    break;
  case errBadFileName:
  case errBadFileNameOrNumber:
    text = "That filename is illegal.";
    break;
  case errPathNotFound:
    text = "That path doesn't exist.";
    break;
  case errBadFileMode:
    text = "Can't open your file for that type of access.";
    break;
  case errFileAlreadyOpen:
    text = "This file is already open.";
    break;
  case errInputPastEnd:
    text = "This file has a nonstandard end-of-file marker, or an attempt was made \xE2\x80\x9Cto "
           "read beyond the end-of-file marker.";
    break;
  default:
    return;
  }
  MsgBox(text, buttons | vbExclamation, "Disk Error");
}

} // namespace velk
