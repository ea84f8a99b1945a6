#include "platform/qt/drawing/glyphs.h"

#include <QGlyphRun>
#include <QTextLayout>
#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>

#include "platform/posix/cell_content.h"
#include "platform/qt/drawing/fonts.h"
#include "platform/unicode.h"

namespace platform_qt {

namespace {

// The largest cell that is kept as a tile, in pixels: 256 of them are a megabyte. Of the other tiles the
// number is bounded.
constexpr int kLargestTile = 1024;
constexpr int kLargestOtherTile = 1 << 16;
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
void DrawBox(QPainter& painter, const HFONT__& font, int x, int y, int columns = 1) {
  const int width = std::max(font.advance * (columns - 1) + font.advance * 3 / 5, 1);
  const int height = std::max(font.ascent * 3 / 5, 1);
  const int left = x + (font.advance * columns - width) / 2;
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
  for (int i = 0; i < text.Count(); ++i) {
    const Cell cell = text.cells[static_cast<std::size_t>(i)];
    const CellGlyph& glyph = GlyphOf(font, cell);
    const bool mine = fallback < 0
                          ? glyph.source == CellGlyph::Source::font
                          : glyph.source == CellGlyph::Source::fallback && glyph.fallback == fallback;
    if (mine && cell != U' ') {
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
  const int width = text.Count() * font.advance;
  if (font.description.underline()) {
    const int below = std::max(static_cast<int>(std::lround(font.face.underlinePosition())), 1);
    painter.fillRect(text.x, text.y + font.ascent + below, width, thickness, painter.pen().color());
  }
  if (font.description.strikeOut()) {
    painter.fillRect(text.x, text.y + font.ascent * 2 / 3, width, thickness, painter.pen().color());
  }
}

// Draws what no glyph of the font does for, within its cells.
void PaintPicture(QPainter& painter, const HFONT__& font, int x, int y, const CellCluster& content,
                  int columns) {
  if (content.base == U' ' && content.marks[0] == 0) {
    return;
  }
  QString text = QString::fromUcs4(&content.base, 1);
  for (const char32_t mark : content.marks) {
    if (mark != 0) {
      text += QString::fromUcs4(&mark, 1);
    }
  }
  const int width = columns * font.advance;
  QFont description = font.description;
  if (IsEmoji(content.base)) {
    description.setFamilies(QStringList(QStringLiteral("emoji")) + description.families());
  }
  QTextLayout layout(text, description);
  layout.beginLayout();
  const QTextLine line = layout.createLine();
  layout.endLayout();
  QList<QGlyphRun> runs = layout.glyphRuns();
  runs.removeIf([](const QGlyphRun& run) {
    const QList<quint32> indexes = run.glyphIndexes();
    return std::all_of(indexes.begin(), indexes.end(), [](quint32 index) { return index == 0; });
  });
  const double natural = line.naturalTextWidth();
  const bool isFormat = KindOfCharacter(content.base) == CharacterKind::format;
  if (runs.isEmpty() || isFormat || natural <= 0) {
    DrawBox(painter, font, x, y, columns);
    return;
  }
  painter.save();
  painter.setClipRect(QRect(x, y, width, font.Height()), Qt::IntersectClip);
  // A narrow glyph stands at the left, as those of the font do.
  const double stretch = natural > width + columns / 2.0 ? width / natural : 1;
  const double indent = columns > 1 && natural < width ? std::floor((width - natural) / 2) : 0;
  painter.translate(x + indent, y + font.ascent);
  painter.scale(stretch, 1);
  for (const QGlyphRun& run : runs) {
    painter.drawGlyphRun(QPointF(0, -line.ascent()), run);
  }
  painter.restore();
}

void PaintFontGlyphs(QPainter& painter, HFONT__& font, const GridText& text) {
  for (int i = 0; i < text.Count(); ++i) {
    if (GlyphOf(font, text.cells[static_cast<std::size_t>(i)]).source == CellGlyph::Source::box) {
      DrawBox(painter, font, text.x + i * font.advance, text.y);
    }
  }
  DrawGlyphsOf(painter, font, text, -1);
  for (std::size_t fallback = 0; fallback < font.fallbacks.size(); ++fallback) {
    DrawGlyphsOf(painter, font, text, static_cast<int>(fallback));
  }
}

// Draws the character at `index` into a tile. False, with the tile unfit, when it reaches over its cells.
bool DrawTile(HFONT__& font, CellView cells, std::size_t index, Pixel text, Pixel ground, Pixel* tile) {
  const int columns = ColumnsAt(cells, index);
  const int width = columns * font.advance;
  QImage image(width + 2 * kMargin, font.Height(), QImage::Format_RGB32);
  image.fill(ground);
  {
    QPainter painter(&image);
    painter.setPen(QColor::fromRgb(text));
    const GridText alone{kMargin, 0, cells.substr(index, static_cast<std::size_t>(columns))};
    if (GlyphOf(font, cells[index]).source == CellGlyph::Source::picture) {
      PaintPicture(painter, font, kMargin, 0, ContentAt(cells, index), columns);
    } else {
      PaintFontGlyphs(painter, font, alone);
    }
    DrawFontLines(painter, font, alone);
  }
  const auto tileWidth = static_cast<std::size_t>(width);
  for (int y = 0; y < font.Height(); ++y) {
    const auto* const row = reinterpret_cast<const Pixel*>(image.constScanLine(y));
    const auto untouched = [&](const Pixel* from) {
      return std::all_of(from, from + kMargin, [&](Pixel pixel) {
        return pixel == ground || CoverageOf(pixel, text, ground) < kFaint;
      });
    };
    if (!untouched(row) || !untouched(row + kMargin + width)) {
      return false;
    }
    std::memcpy(tile + static_cast<std::size_t>(y) * tileWidth, row + kMargin, tileWidth * sizeof(Pixel));
  }
  return true;
}

const Pixel* CodeTile(HFONT__& font, CellView cells, std::size_t index, std::uint8_t code, Pixel text,
                      Pixel ground) {
  const auto pixels = static_cast<std::size_t>(font.advance * font.Height());
  if (pixels > kLargestTile || font.tiles.reachesOver.test(code)) {
    return nullptr;
  }
  TileCache::Set& set = font.tiles.SetFor(pixels, text, ground);
  Pixel* const tile = set.pixels.data() + code * pixels;
  if (!set.drawn.test(code)) {
    if (!DrawTile(font, cells, index, text, ground, tile)) {
      font.tiles.reachesOver.set(code);
      return nullptr;
    }
    set.drawn.set(code);
  }
  return tile;
}

const Pixel* OtherTile(HFONT__& font, CellView cells, std::size_t index, Pixel text, Pixel ground) {
  const int columns = ColumnsAt(cells, index);
  const int pixels = columns * font.advance * font.Height();
  if (pixels > kLargestOtherTile) {
    return nullptr;
  }
  const OtherTiles::Key key{ContentAt(cells, index), columns, text, ground};
  const OtherTiles::Tile* tile = font.otherTiles.Find(key);
  if (tile == nullptr) {
    OtherTiles::Tile made{key, std::vector<Pixel>(static_cast<std::size_t>(pixels))};
    if (!DrawTile(font, cells, index, text, ground, made.pixels.data())) {
      made.pixels.clear();
    }
    tile = &font.otherTiles.Keep(std::move(made));
  }
  return tile->pixels.empty() ? nullptr : tile->pixels.data();
}

void PaintPictures(QPainter& painter, HFONT__& font, const GridText& text, Pixel ground) {
  for (std::size_t i = 0; i < text.cells.size(); ++i) {
    const int columns = ColumnsAt(text.cells, i);
    if (columns == 0 || GlyphOf(font, text.cells[i]).source != CellGlyph::Source::picture) {
      continue;
    }
    const int x = text.x + static_cast<int>(i) * font.advance;
    const Pixel color = painter.pen().color().rgb();
    if (const Pixel* const tile = TileAt(font, text.cells, i, color, ground)) {
      const int width = columns * font.advance;
      painter.drawImage(x, text.y,
                        QImage(reinterpret_cast<const uchar*>(tile), width, font.Height(),
                               width * static_cast<int>(sizeof(Pixel)), QImage::Format_RGB32));
    } else {
      PaintPicture(painter, font, x, text.y, ContentAt(text.cells, i), columns);
    }
  }
}

}  // namespace

void PaintGlyphs(QPainter& painter, HFONT__& font, const GridText& text, Pixel ground) {
  PaintPictures(painter, font, text, ground);
  PaintFontGlyphs(painter, font, text);
  DrawFontLines(painter, font, text);
}

const Pixel* TileAt(HFONT__& font, CellView cells, std::size_t index, Pixel text, Pixel ground) {
  if (text == ground) {  // where both colors are the same, nothing can be seen to reach over
    return nullptr;
  }
  const auto code = CodeOf(cells[index]);
  return code ? CodeTile(font, cells, index, *code, text, ground)
              : OtherTile(font, cells, index, text, ground);
}

}  // namespace platform_qt
