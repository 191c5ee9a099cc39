#pragma once
// The bitmap file (.bmp): an uncompressed 24-bit picture whose info block is
// followed by one unused palette entry, so the pixels begin at offset 58.
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace velk {

constexpr const char* kBitmapFilter =
    "All Files (*.*)|*.*|VELK Graphic Interface Files(*.bmp)|*.bmp";
constexpr int kBitmapPixelOffset = 58;

// A rectangle of the surface in whole pixels.
struct PixelBox {
  long x = 0, y = 0, width = 0, height = 0;
};

// The box that the bitmap tool hands on from a drag (x the left edge, y the
// lower edge, window pixels from the top), each value rounded; none when the
// drag has no width or no height.
std::optional<PixelBox> Bitmap_Box(double downX, double downY, double upX, double upY);

// The rectangle to read from a surface of W x H pixels (GL rows, from the
// bottom): one pixel wider than asked, cut at the surface's edges. A box that
// leaves nothing of the surface is a fault (invalid call).
PixelBox Bitmap_Read_Box(const PixelBox& box, long W, long H);

// Bytes of one pixel row: three per pixel, padded to a multiple of four.
long Bitmap_Row_Size(long width);

// The whole file from the rows GL gives (bottom row first, red, green, blue,
// rows padded as above): the two header blocks and the rows with each pixel
// turned into blue, green, red.
std::vector<std::uint8_t> Bitmap_File_Bytes(long width, long height,
                                            std::vector<std::uint8_t> rgbRows);

// Replaces `path` with `bytes`; failures are numbered faults.
void Write_Binary_File(const std::string& path, const std::vector<std::uint8_t>& bytes);

} // namespace velk
