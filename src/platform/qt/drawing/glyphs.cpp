#include "platform/qt/drawing/glyphs.h"

#include <QGlyphRun>
#include <QTextLayout>
#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>

#include "platform/qt/drawing/fonts.h"

namespace platform_qt {

namespace {

// The largest cell that is kept as a tile, in pixels: 256 of them are a megabyte.
constexpr int kLargestTile = 1024;
// Columns beside a cell that are looked at for a glyph that reaches over it.
constexpr int kMargin = 3;
// A fringe of smoothing beside the cell that covers less than this (of 255) is no reaching over: fonts of
// fixed pitch have it at underscores and wide letters, and nobody misses it.
constexpr int kFaint = 64;

// How much of the text color is in a pixel between ground and text, of 255: by the channel that tells best.
int CoverageOf(Pixel pixel, Pixel text, Pixel ground) {
  int best = 0;
  int coverage = 0;
  for (const int shift : {0, 8, 16}) {
    const auto channel = [shift](Pixel color) { return static_cast<int>((color >> shift) & 0xFF); };
    const int whole = std::abs(channel(text) - channel(ground));
    if (whole > best) {
      best = whole;
      coverage = std::abs(channel(pixel) - channel(ground)) * 255 / whole;
    }
  }
  return coverage;
}

// A small hollow box: what stands for a character that has no picture.
void DrawBox(QPainter& painter, const HFONT__& font, int x, int y) {
  const int width = std::max(font.advance * 3 / 5, 1);
  const int height = std::max(font.ascent * 3 / 5, 1);
  const int left = x + (font.advance - width) / 2;
  const int top = y + font.ascent - height;
  const QColor color = painter.pen().color();
  painter.fillRect(left, top, width, 1, color);
  painter.fillRect(left, top + height - 1, width, 1, color);
  painter.fillRect(left, top, 1, height, color);
  painter.fillRect(left + width - 1, top, 1, height, color);
}

// Draws the glyphs that come from one face: fallback -1 is the font itself.
void DrawGlyphsOf(QPainter& painter, HFONT__& font, const GridText& text, int fallback) {
  static std::vector<quint32> indexes;
  static std::vector<QPointF> places;
  indexes.clear();
  places.clear();
  for (int i = 0; i < text.count; ++i) {
    const ByteGlyph& glyph = GlyphOf(font, CodeOf(text.cells[i]));
    const bool mine = fallback < 0
                          ? glyph.source == ByteGlyph::Source::font
                          : glyph.source == ByteGlyph::Source::fallback && glyph.fallback == fallback;
    if (mine && text.cells[i] != CellOf(' ')) {
      indexes.push_back(glyph.glyph);
      places.emplace_back(text.x + i * font.advance, text.y + font.ascent);
    }
  }
  if (indexes.empty()) {
    return;
  }
  QGlyphRun run;
  run.setRawFont(fallback < 0 ? font.face : font.fallbacks[static_cast<std::size_t>(fallback)]);
  run.setRawData(indexes.data(), places.data(), static_cast<int>(indexes.size()));
  painter.drawGlyphRun(QPointF(0, 0), run);
}

void DrawFontLines(QPainter& painter, const HFONT__& font, const GridText& text) {
  const int thickness = std::max(static_cast<int>(std::lround(font.face.lineThickness())), 1);
  const int width = text.count * font.advance;
  if (font.description.underline()) {
    const int below = std::max(static_cast<int>(std::lround(font.face.underlinePosition())), 1);
    painter.fillRect(text.x, text.y + font.ascent + below, width, thickness, painter.pen().color());
  }
  if (font.description.strikeOut()) {
    painter.fillRect(text.x, text.y + font.ascent * 2 / 3, width, thickness, painter.pen().color());
  }
}

}  // namespace

void PaintGlyphs(QPainter& painter, HFONT__& font, const GridText& text) {
  for (int i = 0; i < text.count; ++i) {
    if (GlyphOf(font, CodeOf(text.cells[i])).source == ByteGlyph::Source::box) {
      DrawBox(painter, font, text.x + i * font.advance, text.y);
    }
  }
  DrawGlyphsOf(painter, font, text, -1);
  for (std::size_t fallback = 0; fallback < font.fallbacks.size(); ++fallback) {
    DrawGlyphsOf(painter, font, text, static_cast<int>(fallback));
  }
  DrawFontLines(painter, font, text);
}

void PaintCharacter(QPainter& painter, const HFONT__& font, int x, int y, char32_t character) {
  QTextLayout layout(QString::fromUcs4(&character, 1), font.description);
  layout.beginLayout();
  layout.createLine();
  layout.endLayout();
  bool drawn = false;
  for (const QGlyphRun& run : layout.glyphRuns()) {
    const QList<quint32> indexes = run.glyphIndexes();
    if (std::find(indexes.begin(), indexes.end(), quint32{0}) != indexes.end()) {
      continue;
    }
    QGlyphRun placed;
    const QPointF origin(x, y + font.ascent);
    const QList<QPointF> places(indexes.size(), origin);
    placed.setRawFont(run.rawFont());
    placed.setRawData(indexes.data(), places.data(), static_cast<int>(indexes.size()));
    painter.drawGlyphRun(QPointF(0, 0), placed);
    drawn = true;
  }
  if (!drawn) {
    DrawBox(painter, font, x, y);
  }
}

namespace {

// False, with the tile unfit, when the glyph reaches over its cell.
bool DrawTile(HFONT__& font, std::uint8_t byte, TileCache::Set& set) {
  const int height = font.ascent + font.descent;
  QImage image(font.advance + 2 * kMargin, height, QImage::Format_RGB32);
  image.fill(set.ground);
  {
    QPainter painter(&image);
    painter.setPen(QColor::fromRgb(set.text));
    const Cell cell = CellOf(byte);
    PaintGlyphs(painter, font, {kMargin, 0, &cell, 1});
  }
  const auto tileWidth = static_cast<std::size_t>(font.advance);
  Pixel* const tile = set.pixels.data() + byte * tileWidth * static_cast<std::size_t>(height);
  for (int y = 0; y < height; ++y) {
    const auto* const row = reinterpret_cast<const Pixel*>(image.constScanLine(y));
    const auto untouched = [&](const Pixel* from) {
      return std::all_of(from, from + kMargin, [&](Pixel pixel) {
        return pixel == set.ground || CoverageOf(pixel, set.text, set.ground) < kFaint;
      });
    };
    if (!untouched(row) || !untouched(row + kMargin + font.advance)) {
      return false;
    }
    std::memcpy(tile + static_cast<std::size_t>(y) * tileWidth, row + kMargin, tileWidth * sizeof(Pixel));
  }
  return true;
}

}  // namespace

const Pixel* TileOf(HFONT__& font, std::uint8_t byte, Pixel text, Pixel ground) {
  const int pixels = font.advance * (font.ascent + font.descent);
  // Where both colors are the same, nothing can be seen to reach over.
  if (pixels > kLargestTile || font.tiles.reachesOver.test(byte) || text == ground) {
    return nullptr;
  }
  const auto pixelsOfTile = static_cast<std::size_t>(pixels);
  TileCache::Set& set = font.tiles.SetFor(pixelsOfTile, text, ground);
  if (!set.drawn.test(byte)) {
    if (!DrawTile(font, byte, set)) {
      font.tiles.reachesOver.set(byte);
      return nullptr;
    }
    set.drawn.set(byte);
  }
  return set.pixels.data() + byte * pixelsOfTile;
}

}  // namespace platform_qt
