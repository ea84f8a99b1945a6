// The finished pictures of the cells of one font: those of the Windows-1252 set in the pairs of colors that
// were used last, and of all others as many as a bound allows. It keeps pixels and knows which are drawn; how
// they are drawn, and of what font, others know.
#pragma once

#include <array>
#include <bitset>
#include <cstdint>
#include <list>
#include <unordered_map>
#include <vector>

#include "platform/cells.h"
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

// The tiles of other characters. Those that were not used for longest go first.
class OtherTiles {
 public:
  struct Key {
    CellCluster content;
    int columns;
    Pixel text, ground;
    bool operator==(const Key&) const = default;
  };
  struct Tile {
    Key key;
    std::vector<Pixel> pixels;  // empty: it reaches over its cell, and there is no tile
  };

  // Null when it is not there.
  [[nodiscard]] const Tile* Find(const Key& key);
  // Valid until the next call.
  const Tile& Keep(Tile tile);

  // The most bytes that the pixels of all tiles may take.
  static constexpr std::size_t kMostBytes = std::size_t{8} << 20;

 private:
  struct Hash {
    std::size_t operator()(const Key& key) const;
  };
  std::list<Tile> tiles_;  // the one used last is the first
  std::unordered_map<Key, std::list<Tile>::iterator, Hash> places_;
  std::size_t bytes_ = 0;
};

}  // namespace platform_qt
