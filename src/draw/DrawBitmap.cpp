#include "draw/DrawBitmap.h"

#include "common/Fault.h"
#include "common/Host.h"
#include "reports/Bitmap.h"
#include "session/ProjectFile.h"
#include "session/VELKMain.h"

#include <GL/gl.h>

namespace velk {

SurfaceAccess& surfaceAccess() {
  static SurfaceAccess access;
  return access;
}

namespace {

// The surface current for as long as the read lasts, released on every way out.
class CurrentSurface {
public:
  CurrentSurface() {
    if (surfaceAccess().Acquire) surfaceAccess().Acquire();
  }
  ~CurrentSurface() {
    if (surfaceAccess().Release) surfaceAccess().Release();
  }
  CurrentSurface(const CurrentSurface&) = delete;
  CurrentSurface& operator=(const CurrentSurface&) = delete;
};

std::vector<std::uint8_t> ReadBox(long x, long y, long width, long height) {
  CurrentSurface current;
  GLint viewport[4] = {0, 0, 0, 0};
  glGetIntegerv(GL_VIEWPORT, viewport);
  const PixelBox box = Bitmap_Read_Box({x, y, width, height}, viewport[2], viewport[3]);
  std::vector<std::uint8_t> rows(static_cast<std::size_t>(Bitmap_Row_Size(box.width) * box.height));
  // The buffer as the last frame left it, rows padded to four bytes as in the file.
  for (int i = 0; i < 16 && glGetError() != GL_NO_ERROR; ++i) {
  } // errors of earlier frames are not this read's
  glPixelStorei(GL_PACK_ALIGNMENT, 4);
  glReadPixels(static_cast<GLint>(box.x), static_cast<GLint>(box.y),
               static_cast<GLsizei>(box.width), static_cast<GLsizei>(box.height), GL_RGB,
               GL_UNSIGNED_BYTE, rows.data());
  if (glGetError() != GL_NO_ERROR) Raise(errInvalidCall, "the surface could not be read");
  return Bitmap_File_Bytes(box.width, box.height, std::move(rows));
}

} // namespace

bool Write_Bitmap(const std::string& FileName, long x, long y, long width, long height) {
  BusyPointer busy;
  try {
    Write_Binary_File(FileName, ReadBox(x, y, width, height));
    return true;
  } catch (const std::exception&) {
    return false;
  }
}

void Save_Bitmap(long x, long y, long width, long height) {
  FileDialog& d = session().cdlBitmap;
  Run_File_Command("File Error!", [&] {
    d.DialogTitle = "Save Bitmap";
    d.Filter = kBitmapFilter;
    d.FilterIndex = 2;
    d.Flags = FileDialog::cdlOFNHideReadOnly | FileDialog::cdlOFNOverwritePrompt;
    if (!host().ShowSave(d)) Raise(errCancel);
    if (!Write_Bitmap(d.FileName, x, y, width, height)) MsgBox("Error: Saving Operation Failed!");
  });
}

} // namespace velk
