// The records behind HFONT, HPEN and HBRUSH. They are owned by whoever made them; a device context only
// counts itself among those that hold them.
#pragma once

#include <QFont>
#include <QRawFont>
#include <array>
#include <unordered_map>
#include <vector>

#include "platform/qt/drawing/tile_cache.h"
#include "platform/win32.h"

struct GdiObject {
  enum class Kind : std::uint8_t { font, pen, brush } kind;
  bool stock = false;
  int selections = 0;  // device contexts that hold it
};

struct HPEN__ : GdiObject {
  int style = PS_SOLID;  // or NULL_PEN
  COLORREF color = 0;
};

struct HBRUSH__ : GdiObject {
  COLORREF color = 0;
};

// How a character in a cell of its own is drawn: a glyph of the font itself, of a font that has what it
// lacks, a box, or, since one glyph in its place does not do, as a picture that is fitted into its cells.
struct CellGlyph {
  enum class Source : std::uint8_t { unknown, font, fallback, box, picture } source = Source::unknown;
  std::uint16_t fallback = 0;  // index of the fallback font
  quint32 glyph = 0;
};

namespace platform_qt {

// What a font measures on a target, in pixels of that.
struct FontExtent {
  int ascent = 0;
  int descent = 0;
  int internalLeading = 0;
  int externalLeading = 0;
  int advance = 1;  // the step of the grid
  int widest = 1;
  bool fixedPitch = false;

  [[nodiscard]] int Height() const { return ascent + descent; }
};

}  // namespace platform_qt

// The extent is that on a target of pixels.
struct HFONT__ : GdiObject, platform_qt::FontExtent {
  LOGFONTA asked{};
  QRawFont face;
  QFont description;
  std::array<CellGlyph, 256> glyphs;                    // of the Windows-1252 set, by its codes
  std::unordered_map<char32_t, CellGlyph> otherGlyphs;  // of the characters that were met, a bounded number
  std::vector<QRawFont> fallbacks;
  platform_qt::TileCache tiles;
  platform_qt::OtherTiles otherTiles;
};
