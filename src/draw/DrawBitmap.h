#pragma once
// Saving a rectangle of the last frame on the surface as a bitmap file.
#include <functional>
#include <string>

namespace velk {

// Makes the surface's GL context current around a read of its pixels, and
// lets it go after; the window that owns the surface installs the two.
struct SurfaceAccess {
  std::function<void()> Acquire, Release;
};
SurfaceAccess& surfaceAccess();

// The command step: the bitmap's own save dialog, then Write_Bitmap;
// "Error: Saving Operation Failed!" when that fails. x is the left edge, y the
// lower edge, in window pixels counted down from the top of the surface.
void Save_Bitmap(long x, long y, long width, long height);
// Reads the box (one pixel wider, cut at the surface's edges) and writes the
// file; false on any failure, with no message of its own.
bool Write_Bitmap(const std::string& FileName, long x, long y, long width, long height);

} // namespace velk
