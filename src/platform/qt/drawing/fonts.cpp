#include "platform/qt/drawing/fonts.h"

#include <QFontDatabase>
#include <QFontInfo>
#include <QFontMetrics>
#include <QGlyphRun>
#include <QTextLayout>
#include <algorithm>
#include <cassert>
#include <cmath>
#include <cstring>

#include "platform/cells.h"
#include "platform/posix/windows_1252.h"
#include "platform/unicode.h"

namespace platform_qt {

namespace {

// The font engine works within these em heights; what a zoom asks beyond them looks the same as the last.
constexpr int kSmallestEm = 1;
constexpr int kLargestEm = 8000;
constexpr int kOrdinaryEm = 13;
constexpr BYTE kFixedPitch = 1;

// What a tab is drawn as.
constexpr Cell kTabSign = 0xA4;
// Glyphs of characters beyond the Windows-1252 set that are remembered.
constexpr std::size_t kMostOtherGlyphs = 8192;

HFONT stockFont = nullptr;

bool IsControl(char16_t character) {
  return character < 0x20 || (character >= 0x7F && character < 0xA0);
}

// A face name that was cut to the field, between two characters, finds the family it began.
QString FamilyOf(const LOGFONTA& font) {
  const std::size_t length = strnlen(font.lfFaceName, LF_FACESIZE);
  if (length == 0) {
    return QStringLiteral("monospace");
  }
  QString family = QString::fromUtf8(font.lfFaceName, static_cast<qsizetype>(length));
  constexpr std::size_t kLongestCharacter = 4;
  if (length >= LF_FACESIZE - kLongestCharacter && !QFontDatabase::families().contains(family)) {
    for (const QString& candidate : QFontDatabase::families()) {
      if (candidate.startsWith(family)) {
        return candidate;
      }
    }
  }
  return family;
}

// Em height for a cell height: the fonts's own proportion of the two decides.
int EmForCell(QFont font, int cell) {
  constexpr int kProbe = 100;
  font.setPixelSize(kProbe);
  const QFontMetrics metrics(font);
  return cell * kProbe / std::max(metrics.ascent() + metrics.descent(), 1);
}

int EmOf(const LOGFONTA& font, const QFont& description) {
  int em = kOrdinaryEm;
  if (font.lfHeight < 0) {
    em = font.lfHeight < -kLargestEm ? kLargestEm : -font.lfHeight;
  } else if (font.lfHeight > 0) {
    em = EmForCell(description, std::min(font.lfHeight, kLargestEm));
  }
  return std::clamp(em, kSmallestEm, kLargestEm);
}

// The width of a letter, rounded to whole pixels; of all fixed-pitch letters the same.
int AverageAdvance(const QRawFont& face, bool fixedPitch) {
  const QString letters = fixedPitch ? QStringLiteral("x")
                                     : QStringLiteral("abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ");
  const QList<quint32> glyphs = face.glyphIndexesForString(letters);
  const QList<QPointF> advances = face.advancesForGlyphIndexes(glyphs);
  double sum = 0;
  for (const QPointF& advance : advances) {
    sum += advance.x();
  }
  return advances.isEmpty()
             ? 1
             : std::max(static_cast<int>(std::lround(sum / static_cast<double>(advances.size()))), 1);
}

void LookUpGlyphs(HFONT__& font) {
  QChar characters[256];
  quint32 indexes[256] = {};
  for (int byte = 0; byte < 256; ++byte) {
    const char16_t character = UnicodeOfWindows1252(static_cast<std::uint8_t>(byte));
    characters[byte] = IsControl(character) ? QChar(u'\0') : QChar(character);
  }
  int count = 256;
  if (!font.face.glyphIndexesForChars(characters, 256, indexes, &count)) {
    return;
  }
  for (std::size_t byte = 0; byte < 256; ++byte) {
    if (characters[byte].unicode() == 0) {
      font.glyphs[byte].source = CellGlyph::Source::box;
    } else if (indexes[byte] != 0) {
      font.glyphs[byte] = {CellGlyph::Source::font, 0, indexes[byte]};
    }
  }
}

HFONT MakeFont(const LOGFONTA& asked) {
  const QFont description = DescribeFont(asked);
  QRawFont face = QRawFont::fromFont(description);
  if (!face.isValid()) {
    return nullptr;
  }
  auto* const font = new HFONT__;
  font->kind = GdiObject::Kind::font;
  font->asked = asked;
  font->description = description;
  font->face = std::move(face);
  font->fixedPitch = QFontInfo(description).fixedPitch();
  const QFontMetrics metrics(description);
  font->ascent = std::max(metrics.ascent(), 1);
  font->descent = std::max(metrics.descent(), 0);
  font->internalLeading = std::max(font->ascent + font->descent - description.pixelSize(), 0);
  font->externalLeading = std::max(metrics.leading(), 0);
  font->advance = AverageAdvance(font->face, font->fixedPitch);
  font->widest = font->fixedPitch ? font->advance : std::max(metrics.maxWidth(), font->advance);
  LookUpGlyphs(*font);
  return font;
}

// Finds a font of the system that has the character.
CellGlyph FindFallback(HFONT__& font, char32_t character) {
  QTextLayout layout(QString::fromUcs4(&character, 1), font.description);
  layout.beginLayout();
  layout.createLine();
  layout.endLayout();
  for (const QGlyphRun& run : layout.glyphRuns()) {
    const QList<quint32> indexes = run.glyphIndexes();
    if (indexes.size() == 1 && indexes.front() != 0 && font.fallbacks.size() < 256) {
      font.fallbacks.push_back(run.rawFont());
      return {CellGlyph::Source::fallback, static_cast<std::uint16_t>(font.fallbacks.size() - 1),
              indexes.front()};
    }
  }
  return {CellGlyph::Source::box, 0, 0};
}

// Of a character beyond the Windows-1252 set. What the font itself lacks becomes a picture.
CellGlyph FindGlyph(const HFONT__& font, char32_t character) {
  const QList<quint32> indexes = font.face.glyphIndexesForString(QString::fromUcs4(&character, 1));
  if (indexes.size() != 1 || indexes.front() == 0) return {CellGlyph::Source::picture, 0, 0};
  const bool fits = font.face.advancesForGlyphIndexes(indexes).front().x() < font.advance + 1;
  return {fits ? CellGlyph::Source::font : CellGlyph::Source::picture, 0, indexes.front()};
}

}  // namespace

QFont DescribeFont(const LOGFONTA& font) {
  QFont description(FamilyOf(font));
  // A face that the system does not know becomes one of fixed pitch, as the program's columns want it.
  description.setStyleHint(QFont::TypeWriter);
  description.setFixedPitch((font.lfPitchAndFamily & 3) == kFixedPitch);
  // Whole-pixel glyph shapes without colored edges: sharp, and still right when inverted.
  description.setHintingPreference(QFont::PreferFullHinting);
  description.setStyleStrategy(
      static_cast<QFont::StyleStrategy>(QFont::PreferDefault | QFont::NoSubpixelAntialias));
  description.setWeight(static_cast<QFont::Weight>(font.lfWeight <= 0 ? 400 : std::min(font.lfWeight, 1000)));
  description.setItalic(font.lfItalic != 0);
  description.setUnderline(font.lfUnderline != 0);
  description.setStrikeOut(font.lfStrikeOut != 0);
  description.setPixelSize(EmOf(font, description));
  return description;
}

HFONT StockFont() {
  if (stockFont == nullptr) {
    LOGFONTA font{};
    std::strcpy(font.lfFaceName, "monospace");
    font.lfHeight = -kOrdinaryEm;
    font.lfPitchAndFamily = kFixedPitch;
    stockFont = MakeFont(font);
    assert(stockFont != nullptr && "a system has a font");
    stockFont->stock = true;
  }
  return stockFont;
}

void ForgetStockFont() {
  delete stockFont;
  stockFont = nullptr;
}

const CellGlyph& GlyphOf(HFONT__& font, Cell cell) {
  if (const auto code = CodeOf(cell == U'\t' ? kTabSign : cell)) {
    CellGlyph& glyph = font.glyphs[*code];
    if (glyph.source == CellGlyph::Source::unknown) {
      glyph = FindFallback(font, cell);
    }
    return glyph;
  }
  static constexpr CellGlyph kPicture{CellGlyph::Source::picture, 0, 0};
  if ((cell & kCellKinds) != 0 || KindOfCharacter(cell) != CharacterKind::narrow) {
    return kPicture;
  }
  if (font.otherGlyphs.size() >= kMostOtherGlyphs) {
    font.otherGlyphs.clear();
  }
  const auto [place, isNew] = font.otherGlyphs.try_emplace(cell);
  if (isNew) {
    place->second = FindGlyph(font, cell);
  }
  return place->second;
}

}  // namespace platform_qt

using namespace platform_qt;

HFONT CreateFontIndirectA(const LOGFONTA* font) {
  return MakeFont(*font);
}
