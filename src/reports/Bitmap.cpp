#include "reports/Bitmap.h"

#include "common/Fault.h"
#include "common/TextFile.h"
#include "common/TextRules.h"

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstdio>
#include <filesystem>

namespace velk {

std::optional<PixelBox> Bitmap_Box(double downX, double downY, double upX, double upY) {
  if (upX == downX || upY == downY) return std::nullopt;
  return PixelBox{CLng(std::min(downX, upX)), CLng(std::max(downY, upY)),
                  CLng(std::fabs(upX - downX)), CLng(std::fabs(upY - downY))};
}

PixelBox Bitmap_Read_Box(const PixelBox& box, long W, long H) {
  PixelBox r = box;
  r.width += 1;
  r.y = H - r.y + 1; // GL counts rows upward
  // A box dragged past the left or lower edge starts at the edge.
  if (r.x < 0) r.width += r.x, r.x = 0;
  if (r.y < 0) r.height += r.y, r.y = 0;
  if (r.x + r.width > W) r.width = W - r.x;
  if (r.y + r.height > H) r.height = H - r.y;
  if (r.width <= 0 || r.height <= 0) Raise(errInvalidCall, "the box lies off the surface");
  return r;
}

long Bitmap_Row_Size(long width) {
  const long bytes = width * 3;
  return bytes % 4 ? bytes + 4 - bytes % 4 : bytes;
}

namespace {

void Put16(std::vector<std::uint8_t>& b, std::size_t at, std::uint32_t v) {
  b[at] = static_cast<std::uint8_t>(v);
  b[at + 1] = static_cast<std::uint8_t>(v >> 8);
}
void Put32(std::vector<std::uint8_t>& b, std::size_t at, std::uint32_t v) {
  Put16(b, at, v);
  Put16(b, at + 2, v >> 16);
}

} // namespace

std::vector<std::uint8_t> Bitmap_File_Bytes(long width, long height,
                                            std::vector<std::uint8_t> rgbRows) {
  const long rowSize = Bitmap_Row_Size(width);
  const auto imageSize = static_cast<std::uint32_t>(rowSize * height);
  if (width <= 0 || height <= 0 || rgbRows.size() != imageSize) Raise(errInvalidCall);
  for (long row = 0; row < height; ++row)
    for (long px = 0; px < width; ++px) {
      auto* p = &rgbRows[static_cast<std::size_t>(row * rowSize + px * 3)];
      std::swap(p[0], p[2]);
    }
  std::vector<std::uint8_t> b(kBitmapPixelOffset + rgbRows.size(), 0);
  Put16(b, 0, 19778); // "BM"
  Put32(b, 2, imageSize + kBitmapPixelOffset);
  Put32(b, 10, kBitmapPixelOffset);
  Put32(b, 14, 40);
  Put32(b, 18, static_cast<std::uint32_t>(width));
  Put32(b, 22, static_cast<std::uint32_t>(height)); // positive: the bottom row first
  Put16(b, 26, 1);
  Put16(b, 28, 24);
  Put32(b, 34, imageSize);
  Put32(b, 38, 2952); // 75 pixels per inch
  Put32(b, 42, 2952);
  // Colours used, important colours and the one palette entry stay 0.
  std::copy(rgbRows.begin(), rgbRows.end(), b.begin() + kBitmapPixelOffset);
  return b;
}

void Write_Binary_File(const std::string& path, const std::vector<std::uint8_t>& bytes) {
  if (path.empty()) Raise(errBadFileName);
  // An old file of the name goes first, unless it is marked read-only; only a
  // plain file is deleted, never a device.
  if (IsReadOnlyFile(path)) Raise(errPathFileAccess, "read-only file " + path);
  std::error_code ec;
  if (std::filesystem::is_regular_file(path, ec)) std::filesystem::remove(path, ec);
  OutFile file(path);
  file.Put(std::string_view(reinterpret_cast<const char*>(bytes.data()), bytes.size()));
  file.Close();
}

} // namespace velk
