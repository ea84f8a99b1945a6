#include <algorithm>
#include <cassert>
#include <cstdio>
#include <cstring>
#include <string_view>

#include "platform/cells.h"
#include "platform/posix/cell_content.h"
#include "platform/qt/base/hooks.h"
#include "platform/qt/base/unknown.h"
#include "platform/qt/drawing/device_context.h"
#include "platform/qt/drawing/glyphs.h"

namespace platform_qt {

namespace {

// More columns than any picture has.
constexpr std::size_t kMostColumns = std::size_t{1} << 20;

void Tell(Drawn::Kind kind, HDC dc, int x, int y, const RECT& rect, std::string_view text) {
  hooks.drawn({kind, x, y, rect, text.data(), text.size(), dc->textColor, dc->background});
}

// Columns to each side of the visible ones that are drawn too, since slanted letters reach over their cell.
constexpr int kOverhang = 2;

// Cuts the text to the columns that can touch `visible`.
GridText CutTo(GridText text, const QRect& visible, int advance) {
  const auto column = [&](std::int64_t pixel) { return (pixel - text.x) / advance; };
  const auto first = std::clamp<std::int64_t>(column(visible.left()) - kOverhang, 0, text.Count());
  const auto end = std::clamp<std::int64_t>(column(visible.right()) + 1 + kOverhang, first, text.Count());
  return {static_cast<int>(text.x + first * advance), text.y,
          text.cells.substr(static_cast<std::size_t>(first), static_cast<std::size_t>(end - first))};
}

void DrawWithPainter(HDC dc, const GridText& text, const QRegion& clip) {
  QPainter& painter = dc->target->Painter();
  if (clip.rectCount() == 1) {
    painter.setClipRect(*clip.begin());
  } else {
    painter.setClipRegion(clip);
  }
  painter.setPen(QColor::fromRgb(PixelOf(dc->textColor)));
  PaintGlyphs(painter, *dc->font, text, PixelOf(dc->background));
}

// Copies a few pixels. Cells are so narrow that a call of the library for each of their rows would cost more
// than the copy; pieces of fixed size need none, and the last one may overlap the one before.
void CopyPixels(const Pixel* from, Pixel* to, int count) {
  constexpr int kPiece = 4;
  if (count < kPiece) {
    for (int i = 0; i < count; ++i) {
      to[i] = from[i];
    }
    return;
  }
  for (int i = 0; i + kPiece < count; i += kPiece) {
    std::memcpy(to + i, from + i, kPiece * sizeof(Pixel));
  }
  std::memcpy(to + count - kPiece, from + count - kPiece, kPiece * sizeof(Pixel));
}

// Copies the cells as tiles. False, with nothing drawn, when one of them has no tile, or the target no
// pixels.
bool DrawWithTiles(HDC dc, const GridText& text, const QRegion& clip) {
  Surface* const surface = dc->target->Pixels();
  if (surface == nullptr) {
    return false;
  }
  HFONT__& font = *dc->font;
  static std::vector<const Pixel*> tiles;
  tiles.clear();
  for (std::size_t i = 0; i < text.cells.size(); ++i) {
    const bool drawn = ColumnsAt(text.cells, i) == 0;
    tiles.push_back(drawn ? nullptr
                          : TileAt(font, text.cells, i, PixelOf(dc->textColor), PixelOf(dc->background)));
    if (tiles.back() == nullptr && !drawn) {
      return false;
    }
  }
  for (const QRect& part : clip) {
    for (std::size_t i = 0; i < tiles.size(); ++i) {
      if (tiles[i] == nullptr) {
        continue;
      }
      const bool isWide = i + 1 < tiles.size() && tiles[i + 1] == nullptr;
      const int width = isWide ? 2 * font.advance : font.advance;
      const QRect cell(text.x + static_cast<int>(i) * font.advance, text.y, width, font.Height());
      const QRect seen = cell & part;
      if (seen.isEmpty()) {
        continue;
      }
      const std::ptrdiff_t skippedRows = seen.top() - cell.top();
      const Pixel* from = tiles[i] + skippedRows * width + (seen.left() - cell.left());
      Pixel* to = surface->Row(seen.top()) + seen.left();
      for (int y = 0; y < seen.height(); ++y) {
        CopyPixels(from, to, seen.width());
        from += width;
        to += surface->Width();
      }
    }
  }
  return true;
}

FontExtent ExtentOn(HDC dc) {
  return dc->target->ExtentOf(*dc->font);
}

// On a target that takes text. The characters lie on ground of their own unless that is laid already.
void DrawAsText(HDC dc, const GridText& text, const QRegion& clip, bool groundLaid) {
  if (!groundLaid) {
    const FontExtent extent = ExtentOn(dc);
    const QRect cells(text.x, text.y, text.Count() * extent.advance, extent.Height());
    for (const QRect& part : clip& cells) {
      dc->target->Fill(part, PixelOf(dc->background));
    }
  }
  dc->target->DrawCharacters(*dc->font, text.x, text.y, text.cells, clip, PixelOf(dc->textColor));
}

// The cells of the text, in the background color unless the ground is laid already, and the glyphs on them.
void DrawRow(HDC dc, const GridText& whole, const QRegion& clip, bool groundLaid) {
  if (dc->target->TakesText()) {
    DrawAsText(dc, whole, clip, groundLaid);
    return;
  }
  const int height = dc->font->Height();
  const QRect bounds = clip.boundingRect();
  const GridText text = CutTo(whole, bounds, dc->font->advance);
  const QRect cells(text.x, text.y, text.Count() * dc->font->advance, height);
  const QRegion visible = clip & cells;
  dc->target->NoteDrawn(visible);
  if (visible.isEmpty() || DrawWithTiles(dc, text, visible)) {
    return;
  }
  if (!groundLaid) {
    for (const QRect& part : visible) {
      dc->target->Fill(part, PixelOf(dc->background));
    }
  }
  // Slanted glyphs may reach over the cells to the sides, but not into other rows.
  const QRegion reach = clip & QRect(bounds.left(), text.y, bounds.width(), height);
  dc->target->NoteDrawn(reach);
  DrawWithPainter(dc, text, reach);
}

// Fills the rectangle, if that is asked for, and draws the cells.
void DrawInto(HDC dc, const GridText& whole, const RECT* rect, bool opaque, bool clipped) {
  GridText text = whole;
  QRegion clip = dc->clip;
  if (opaque) {
    FillThrough(dc, RectOf(*rect), PixelOf(dc->background));
  }
  if (clipped) {
    clip &= RectOf(*rect);
    // A wide character of which nothing but the first half is to be seen shows a blank.
    const int advance = ExtentOn(dc).advance;
    const std::int64_t seen = (std::int64_t{rect->right} - text.x + advance - 1) / advance;
    text.cells = text.cells.substr(0, static_cast<std::size_t>(std::max<std::int64_t>(seen, 0)));
  }
  if (!text.cells.empty() && !clip.isEmpty()) {
    DrawRow(dc, text, clip, opaque && clipped);
  }
}

void DrawUtf8(HDC dc, int x, int y, std::string_view text, const RECT* rect, bool opaque, bool clipped) {
  const CellRow row = CellsOfUtf8(text);
  DrawInto(dc, {x, y, row.View()}, rect, opaque, clipped);
}

}  // namespace

}  // namespace platform_qt

using namespace platform_qt;

void DrawCells(HDC dc, int x, int y, const RECT* rect, CellView cells) {
  if (hooks.drawn != nullptr) [[unlikely]] {
    Tell(rect != nullptr ? Drawn::Kind::fillText : Drawn::Kind::text, dc, x, y,
         rect != nullptr ? *rect : RECT{}, CellsToUtf8(cells));
  }
  DrawInto(dc, {x, y, cells}, rect, rect != nullptr, rect != nullptr);
}

int CellsWidth(HDC dc, std::size_t count) {
  return static_cast<int>(std::min<std::size_t>(count, kMostColumns)) * ExtentOn(dc).advance;
}

BOOL ExtTextOutA(HDC dc, int x, int y, UINT options, const RECT* rect, LPCSTR text, UINT count,
                 const INT* advances) {
  ReportUnknownBits("ExtTextOutA", options, ETO_OPAQUE | ETO_CLIPPED);
  assert(advances == nullptr && "text stands on the grid of its font");
  static_cast<void>(advances);
  if (hooks.drawn != nullptr) [[unlikely]] {
    Tell(Drawn::Kind::fillText, dc, x, y, rect != nullptr ? *rect : RECT{}, {text, count});
  }
  DrawUtf8(dc, x, y, {text, count}, rect, rect != nullptr && (options & ETO_OPAQUE) != 0,
           rect != nullptr && (options & ETO_CLIPPED) != 0);
  return TRUE;
}

BOOL TextOutA(HDC dc, int x, int y, LPCSTR text, int count) {
  const std::string_view whole(text, static_cast<std::size_t>(std::max(count, 0)));
  if (hooks.drawn != nullptr) [[unlikely]] {
    Tell(Drawn::Kind::text, dc, x, y, {}, whole);
  }
  DrawUtf8(dc, x, y, whole, nullptr, false, false);
  return TRUE;
}

BOOL GetTextExtentPointA(HDC dc, LPCSTR text, int count, SIZE* size) {
  const CellRow row = CellsOfUtf8({text, static_cast<std::size_t>(std::max(count, 0))});
  *size = {CellsWidth(dc, row.cells.size()), ExtentOn(dc).Height()};
  return TRUE;
}

int GetDeviceCaps(HDC dc, int index) {
  switch (index) {
    case HORZRES:
      return dc->target->Size().width();
    case VERTRES:
      return dc->target->Size().height();
    case LOGPIXELSX:
    case LOGPIXELSY:
      return dc->target->DotsPerInch();
    default:
      ReportUnknown("GetDeviceCaps", static_cast<std::uint64_t>(index));
      return 0;
  }
}

int GetTextFaceA(HDC dc, int size, LPSTR face) {
  const QByteArray name = dc->font->face.familyName().toUtf8();
  return std::snprintf(face, static_cast<std::size_t>(size), "%s", name.constData()) < size
             ? static_cast<int>(name.size()) + 1
             : size;
}

BOOL GetTextMetricsA(HDC dc, TEXTMETRICA* metrics) {
  const HFONT__& font = *dc->font;
  const FontExtent extent = ExtentOn(dc);
  *metrics = {};
  metrics->tmHeight = extent.Height();
  metrics->tmAscent = extent.ascent;
  metrics->tmDescent = extent.descent;
  metrics->tmInternalLeading = extent.internalLeading;
  metrics->tmExternalLeading = extent.externalLeading;
  metrics->tmAveCharWidth = extent.advance;
  metrics->tmMaxCharWidth = extent.widest;
  metrics->tmWeight = font.description.weight();
  metrics->tmDigitizedAspectX = dc->target->DotsPerInch();
  metrics->tmDigitizedAspectY = metrics->tmDigitizedAspectX;
  metrics->tmFirstChar = 0x20;
  metrics->tmLastChar = 0xFF;
  metrics->tmDefaultChar = 0x1F;
  metrics->tmBreakChar = 0x20;
  metrics->tmItalic = font.description.italic() ? 1 : 0;
  metrics->tmUnderlined = font.description.underline() ? 1 : 0;
  metrics->tmStruckOut = font.description.strikeOut() ? 1 : 0;
  metrics->tmPitchAndFamily = extent.fixedPitch ? 0 : TMPF_FIXED_PITCH;
  return TRUE;
}
