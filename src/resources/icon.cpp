#include "resources/icon.h"

#include <array>
#include <cstdint>

namespace {

// Pixels from the top row down, as blue, green, red, alpha.
constexpr std::size_t kIconPixels = std::size_t{kIconSize} * kIconSize;
using IconPixels = std::array<std::uint8_t, kIconPixels * 4>;

struct Paint {
  std::uint8_t blue, green, red, alpha;
};
constexpr Paint kClear{0, 0, 0, 0};
constexpr Paint kGround{0x5A, 0x3C, 0x1E, 0xFF};
constexpr Paint kSheet{0xF5, 0xF5, 0xF5, 0xFF};
constexpr Paint kInk{0x8C, 0x82, 0x78, 0xFF};
constexpr Paint kBand{0x28, 0xB4, 0xF0, 0xFF};
constexpr Paint kBandInk{0x1E, 0x28, 0x46, 0xFF};

// Lengths of the text lines, from the top of the sheet.
constexpr int kLineEnds[] = {24, 20, 23, 25, 18, 22};

constexpr bool InsideRounded(int x, int y) {
  constexpr int last = kIconSize - 1;
  const int fromSide = x < last - x ? x : last - x;
  const int fromEdge = y < last - y ? y : last - y;
  return fromSide + fromEdge >= 3;
}

constexpr Paint PaintAt(int x, int y) {
  if (!InsideRounded(x, y)) return kClear;
  constexpr int top = 4, left = 6, right = 26, bottom = 28;
  const bool band = y >= 11 && y < 20 && x >= 3 && x < 29;
  const int row = (y - top - 1) / 4;
  const bool text = y >= top && y < bottom && (y - top - 1) % 4 == 1 && x >= 8 && x < kLineEnds[row];
  if (text) return band ? kBandInk : kInk;
  if (band) return kBand;
  return x >= left && x < right && y >= top && y < bottom ? kSheet : kGround;
}

constexpr IconPixels DrawIcon() {
  IconPixels pixels{};
  std::size_t at = 0;
  for (int y = 0; y < kIconSize; ++y) {
    for (int x = 0; x < kIconSize; ++x) {
      const Paint paint = PaintAt(x, y);
      pixels[at++] = paint.blue;
      pixels[at++] = paint.green;
      pixels[at++] = paint.red;
      pixels[at++] = paint.alpha;
    }
  }
  return pixels;
}

constexpr IconPixels kPixels = DrawIcon();
constexpr std::array<std::uint8_t, kIconPixels / 8> kMask{};

}  // namespace

HICON MakeProgramIcon(HINSTANCE instance) {
  return CreateIcon(instance, kIconSize, kIconSize, 1, 32, kMask.data(), kPixels.data());
}
