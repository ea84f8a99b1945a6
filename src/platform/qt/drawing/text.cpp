#include <algorithm>
#include <cassert>
#include <cstdio>
#include <cstring>
#include <string_view>

#include "platform/cells.h"
#include "platform/posix/windows_1252.h"
#include "platform/qt/base/hooks.h"
#include "platform/qt/base/unknown.h"
#include "platform/qt/drawing/device_context.h"
#include "platform/qt/drawing/glyphs.h"

namespace platform_qt {

namespace {

// More columns than any picture has.
constexpr std::size_t kMostColumns = std::size_t{1} << 20;

std::optional<Cell> CellOfCharacter(char32_t character) {
  const QByteArray utf8 = QString::fromUcs4(&character, 1).toUtf8();
  const auto cells = Utf8ToCells({utf8.data(), static_cast<std::size_t>(utf8.size())});
  return cells ? std::optional<Cell>(cells->front()) : std::nullopt;
}

void Tell(Drawn::Kind kind, HDC dc, int x, int y, const RECT& rect, std::string_view text) {
  if (hooks.drawn != nullptr) [[unlikely]] {
    hooks.drawn({kind, x, y, rect, text.data(), text.size(), dc->textColor, dc->background});
  }
}

// Columns to each side of the visible ones that are drawn too, since slanted letters reach over their cell.
constexpr int kOverhang = 2;

// Cuts the text to the columns that can touch `visible`.
GridText CutTo(GridText text, const QRect& visible, int advance) {
  const auto column = [&](std::int64_t pixel) { return (pixel - text.x) / advance; };
  const auto first = std::clamp<std::int64_t>(column(visible.left()) - kOverhang, 0, text.count);
  const auto end = std::clamp<std::int64_t>(column(visible.right()) + 1 + kOverhang, first, text.count);
  return {static_cast<int>(text.x + first * advance), text.y, text.cells + first,
          static_cast<int>(end - first)};
}

void DrawWithPainter(HDC dc, const GridText& text, const QRegion& clip) {
  QPainter& painter = dc->target->Painter();
  if (clip.rectCount() == 1) {
    painter.setClipRect(*clip.begin());
  } else {
    painter.setClipRegion(clip);
  }
  painter.setPen(QColor::fromRgb(PixelOf(dc->textColor)));
  PaintGlyphs(painter, *dc->font, text);
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
  for (int i = 0; i < text.count; ++i) {
    tiles.push_back(TileOf(font, CodeOf(text.cells[i]), PixelOf(dc->textColor), PixelOf(dc->background)));
    if (tiles.back() == nullptr) {
      return false;
    }
  }
  const int height = font.ascent + font.descent;
  for (const QRect& part : clip) {
    for (int i = 0; i < text.count; ++i) {
      const QRect cell(text.x + i * font.advance, text.y, font.advance, height);
      const QRect seen = cell & part;
      if (seen.isEmpty()) {
        continue;
      }
      const std::ptrdiff_t skippedRows = seen.top() - cell.top();
      const Pixel* from =
          tiles[static_cast<std::size_t>(i)] + skippedRows * font.advance + (seen.left() - cell.left());
      Pixel* to = surface->Row(seen.top()) + seen.left();
      for (int y = 0; y < seen.height(); ++y) {
        CopyPixels(from, to, seen.width());
        from += font.advance;
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
void DrawAsText(HDC dc, int x, int y, std::u32string_view text, const QRegion& clip, bool groundLaid) {
  if (!groundLaid) {
    const FontExtent extent = ExtentOn(dc);
    const QRect cells(x, y, static_cast<int>(text.size()) * extent.advance, extent.Height());
    for (const QRect& part : clip& cells) {
      dc->target->Fill(part, PixelOf(dc->background));
    }
  }
  dc->target->DrawCharacters(*dc->font, x, y, text, clip, PixelOf(dc->textColor));
}

std::u32string CharactersOf(const GridText& text) {
  std::u32string characters;
  for (int i = 0; i < text.count; ++i) {
    characters += UnicodeOfWindows1252(CodeOf(text.cells[i]));
  }
  return characters;
}

// The cells of the text, in the background color unless the ground is laid already, and the glyphs on them.
void DrawRow(HDC dc, const GridText& whole, const QRegion& clip, bool groundLaid) {
  if (dc->target->TakesText()) {
    DrawAsText(dc, whole.x, whole.y, CharactersOf(whole), clip, groundLaid);
    return;
  }
  const int height = dc->font->Height();
  const QRect bounds = clip.boundingRect();
  const GridText text = CutTo(whole, bounds, dc->font->advance);
  const QRect cells(text.x, text.y, text.count * dc->font->advance, height);
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

// Fills the rectangle, if that is asked for, and draws the cells. The part of the device context in which
// glyphs may be drawn.
QRegion DrawInto(HDC dc, const GridText& text, const RECT* rect, bool opaque, bool clipped) {
  QRegion clip = dc->clip;
  if (opaque) {
    FillThrough(dc, RectOf(*rect), PixelOf(dc->background));
  }
  if (clipped) {
    clip &= RectOf(*rect);
  }
  if (text.count != 0 && !clip.isEmpty()) {
    DrawRow(dc, text, clip, opaque && clipped);
  }
  return clip;
}

// Characters that have a cell are drawn as those; the others onto blank ones.
void DrawUtf8(HDC dc, int x, int y, std::string_view text, const RECT* rect, bool opaque, bool clipped) {
  const auto characters = QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())).toUcs4();
  if (dc->target->TakesText()) {
    const QRegion clip = DrawInto(dc, {x, y, nullptr, 0}, rect, opaque, clipped);
    DrawAsText(dc, x, y, std::u32string(characters.begin(), characters.end()), clip, opaque && clipped);
    return;
  }
  CellText cells;
  for (const char32_t character : characters) {
    cells += CellOfCharacter(character).value_or(CellOf(' '));
  }
  const QRegion clip =
      DrawInto(dc, {x, y, cells.data(), static_cast<int>(cells.size())}, rect, opaque, clipped);
  for (qsizetype i = 0; i < characters.size() && !clip.isEmpty(); ++i) {
    if (CellOfCharacter(characters[i])) {
      continue;
    }
    const int left = x + static_cast<int>(i) * dc->font->advance;
    const QRegion visible = clip & QRect(left, y, dc->font->advance, dc->font->ascent + dc->font->descent);
    if (!visible.isEmpty()) {
      QPainter& painter = dc->target->Painter();
      painter.setClipRegion(visible);
      painter.setPen(QColor::fromRgb(PixelOf(dc->textColor)));
      PaintCharacter(painter, *dc->font, left, y, characters[i]);
    }
  }
}

}  // namespace

}  // namespace platform_qt

using namespace platform_qt;

void DrawCells(HDC dc, int x, int y, const RECT* rect, CellView cells) {
  const GridText text{x, y, cells.data(), static_cast<int>(cells.size())};
  Tell(rect != nullptr ? Drawn::Kind::fillText : Drawn::Kind::text, dc, x, y,
       rect != nullptr ? *rect : RECT{}, cells);
  DrawInto(dc, text, rect, rect != nullptr, rect != nullptr);
}

int CellsWidth(HDC dc, std::size_t count) {
  return static_cast<int>(std::min<std::size_t>(count, kMostColumns)) * ExtentOn(dc).advance;
}

BOOL ExtTextOutA(HDC dc, int x, int y, UINT options, const RECT* rect, LPCSTR text, UINT count,
                 const INT* advances) {
  ReportUnknownBits("ExtTextOutA", options, ETO_OPAQUE | ETO_CLIPPED);
  assert(advances == nullptr && "text stands on the grid of its font");
  static_cast<void>(advances);
  Tell(Drawn::Kind::fillText, dc, x, y, rect != nullptr ? *rect : RECT{}, {text, count});
  DrawUtf8(dc, x, y, {text, count}, rect, rect != nullptr && (options & ETO_OPAQUE) != 0,
           rect != nullptr && (options & ETO_CLIPPED) != 0);
  return TRUE;
}

BOOL TextOutA(HDC dc, int x, int y, LPCSTR text, int count) {
  const std::string_view whole(text, static_cast<std::size_t>(std::max(count, 0)));
  Tell(Drawn::Kind::text, dc, x, y, {}, whole);
  DrawUtf8(dc, x, y, whole, nullptr, false, false);
  return TRUE;
}

BOOL GetTextExtentPointA(HDC dc, LPCSTR text, int count, SIZE* size) {
  const auto columns = QString::fromUtf8(text, std::max(count, 0)).toUcs4().size();
  *size = {CellsWidth(dc, static_cast<std::size_t>(columns)), ExtentOn(dc).Height()};
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
