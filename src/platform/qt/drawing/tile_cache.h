// The finished pictures of the bytes of one font, in the pairs of colors that were used last. It keeps pixels
// and knows which are drawn; how they are drawn, and of what font, others know.
#pragma once

#include <array>
#include <bitset>
#include <cstdint>
#include <vector>

#include "platform/qt/drawing/pixels.h"

namespace platform_qt {

class TileCache {
 public:
  // The tiles in one pair of colors; byte b has its pixels from b * pixelsOfTile on, once it is `drawn`.
  struct Set {
    Pixel text = 0;
    Pixel ground = 0;
    std::uint64_t lastUse = 0;
    std::bitset<256> drawn;
    std::vector<Pixel> pixels;
  };

  // The set of a pair of colors; where there is none, the one that was not used for longest becomes it,
  // empty.
  Set& SetFor(std::size_t pixelsOfTile, Pixel text, Pixel ground);

  std::bitset<256> reachesOver;  // bytes whose glyph reaches over its cell: they have no tile

 private:
  static constexpr std::size_t kPairs = 4;

  std::array<Set, kPairs> sets_;
  std::size_t last_ = 0;
  std::uint64_t uses_ = 0;
};

}  // namespace platform_qt
