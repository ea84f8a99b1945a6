#include "platform/printing/pdf_document.h"

#include <cairo/cairo-pdf.h>
#include <fontconfig/fontconfig.h>

#include <algorithm>
#include <array>
#include <cassert>
#include <cerrno>
#include <vector>

#include "platform/posix/cell_content.h"
#include "platform/printing/page_font.h"
#include "platform/unicode.h"

namespace platform_printing {

namespace {

constexpr double kPointsPerInch = 72;
constexpr double kWholeInk = 255;
// Places in the file are written with ten digits.
constexpr std::int64_t kLargestDocument = 9'999'999'999;
constexpr char kCreator[] = "Quorl";

PixelRect Common(const PixelRect& one, const PixelRect& other) {
  return {std::max(one.left, other.left), std::max(one.top, other.top), std::min(one.right, other.right),
          std::min(one.bottom, other.bottom)};
}

PixelRect Around(const PixelRect& one, const PixelRect& other) {
  if (one.IsEmpty()) return other;
  return {std::min(one.left, other.left), std::min(one.top, other.top), std::max(one.right, other.right),
          std::max(one.bottom, other.bottom)};
}

bool Holds(const PixelRect& outer, const PixelRect& inner) {
  return outer.left <= inner.left && outer.top <= inner.top && outer.right >= inner.right &&
         outer.bottom >= inner.bottom;
}

// Appends a character to UTF-8 text; the length it takes.
int AppendUtf8(std::string& text, char32_t character) {
  constexpr std::array<char32_t, 3> kLimits = {0x80, 0x800, 0x10000};
  constexpr std::array<unsigned, 4> kLeads = {0x00, 0xC0, 0xE0, 0xF0};
  const auto more = static_cast<std::size_t>(std::ranges::upper_bound(kLimits, character) - kLimits.begin());
  text += static_cast<char>(kLeads[more] | (character >> (6 * more)));
  for (std::size_t i = more; i > 0; --i) {
    text += static_cast<char>(0x80U | ((character >> (6 * (i - 1))) & 0x3FU));
  }
  return static_cast<int>(more) + 1;
}

// What is no character that could be drawn.
bool IsNoCharacter(char32_t character) {
  const CharacterKind kind = KindOfCharacter(character);
  return kind == CharacterKind::control || kind == CharacterKind::format;
}

bool IsUtf8(const std::string& text) {
  int count = 0;
  int width = 0;
  return FcUtf8Len(reinterpret_cast<const FcChar8*>(text.data()), static_cast<int>(text.size()), &count,
                   &width) == FcTrue;
}

}  // namespace

struct PdfDocument::Writer {
  Writer(ByteSink& bytes, int dotsPerInch)
      : sink(bytes),
        scale(kPointsPerInch / dotsPerInch),
        surface(cairo_pdf_surface_create_for_stream(&Writer::Take, this, kPointsPerInch, kPointsPerInch)),
        context(cairo_create(surface)) {}
  ~Writer() {
    cairo_destroy(context);
    cairo_surface_finish(surface);
    cairo_surface_destroy(surface);
  }
  Writer(const Writer&) = delete;
  Writer& operator=(const Writer&) = delete;

  static cairo_status_t Take(void* self, const unsigned char* bytes, unsigned count);
  void NoteState();
  void SetColor(Ink24 color);
  void PaintRect(const PixelRect& rect, Ink24 color);
  void DrawBox(const PageFont& font, int x, int y, int width, Ink24 color);
  void DrawFontLines(const PageFont& font, const PixelRect& cells, Ink24 color);
  void DrawCells(const PageFont& font, int x, int y, CellView text, int advance, Ink24 color);
  void DrawPicture(const PageFont& font, int x, int y, const CellCluster& content, int columns, int advance,
                   Ink24 color);
  void DrawNothing(const PageFont& font, int x, int y, int width, Ink24 color);
  void AddGlyph(const PageFont::Glyph& glyph, char32_t character, int x, int base);
  void FlushGlyphs();

  ByteSink& sink;
  double scale;
  cairo_surface_t* surface;
  cairo_t* context;
  FileError error = 0;
  std::int64_t written = 0;
  bool ended = false;  // the sink has been told how it goes out
  bool onPage = false;
  PixelRect page;
  PixelRect drawn;  // encloses all that is drawn on the page
  Ink24 color;
  bool colorSet = false;

  // Glyphs of one face that are not drawn yet.
  cairo_scaled_font_t* face = nullptr;
  std::vector<cairo_glyph_t> glyphs;
  std::vector<cairo_text_cluster_t> clusters;
  std::string characters;
};

cairo_status_t PdfDocument::Writer::Take(void* self, const unsigned char* bytes, unsigned count) {
  Writer& writer = *static_cast<Writer*>(self);
  if (writer.ended) return CAIRO_STATUS_SUCCESS;  // nobody wants what the library still has
  if (writer.error == 0 && writer.written + count > kLargestDocument) writer.error = EFBIG;
  if (writer.error == 0) writer.error = writer.sink.Write(bytes, count);
  if (writer.error != 0) return CAIRO_STATUS_WRITE_ERROR;
  writer.written += count;
  return CAIRO_STATUS_SUCCESS;
}

// What went wrong in the library itself can only be a lack of memory.
void PdfDocument::Writer::NoteState() {
  if (error == 0 && (cairo_status(context) != CAIRO_STATUS_SUCCESS ||
                     cairo_surface_status(surface) != CAIRO_STATUS_SUCCESS)) {
    error = ENOMEM;
  }
}

void PdfDocument::Writer::SetColor(Ink24 wanted) {
  if (colorSet && wanted == color) return;
  color = wanted;
  colorSet = true;
  cairo_set_source_rgb(context, color.red / kWholeInk, color.green / kWholeInk, color.blue / kWholeInk);
}

void PdfDocument::Writer::PaintRect(const PixelRect& rect, Ink24 wanted) {
  SetColor(wanted);
  cairo_rectangle(context, rect.left, rect.top, rect.right - rect.left, rect.bottom - rect.top);
  cairo_fill(context);
}

// A small hollow box: what stands for a character that has no picture.
void PdfDocument::Writer::DrawBox(const PageFont& font, int x, int y, int cells, Ink24 wanted) {
  const int pen = font.Metrics().lineThickness;
  const int width = std::max(cells * 3 / 5, 3 * pen);
  const int height = std::max(font.Metrics().ascent * 3 / 5, 3 * pen);
  const int left = x + (cells - width) / 2;
  const int bottom = y + font.Metrics().ascent;
  const int top = bottom - height;
  PaintRect({left, top, left + width, top + pen}, wanted);
  PaintRect({left, bottom - pen, left + width, bottom}, wanted);
  PaintRect({left, top, left + pen, bottom}, wanted);
  PaintRect({left + width - pen, top, left + width, bottom}, wanted);
}

void PdfDocument::Writer::DrawFontLines(const PageFont& font, const PixelRect& cells, Ink24 wanted) {
  const FontMetrics& metrics = font.Metrics();
  const auto line = [&](int top) {
    PaintRect({cells.left, top, cells.right, top + metrics.lineThickness}, wanted);
  };
  if (font.Wish().underline) line(cells.top + metrics.ascent + metrics.underlineTop);
  if (font.Wish().strikeOut) line(cells.top + metrics.ascent * 2 / 3);
}

void PdfDocument::Writer::AddGlyph(const PageFont::Glyph& glyph, char32_t character, int x, int base) {
  if (glyph.face != face) FlushGlyphs();
  face = glyph.face;
  glyphs.push_back({glyph.index, static_cast<double>(x), static_cast<double>(base)});
  clusters.push_back({AppendUtf8(characters, character), 1});
}

void PdfDocument::Writer::FlushGlyphs() {
  if (!glyphs.empty()) {
    cairo_set_scaled_font(context, face);
    cairo_show_text_glyphs(context, characters.data(), static_cast<int>(characters.size()), glyphs.data(),
                           static_cast<int>(glyphs.size()), clusters.data(),
                           static_cast<int>(clusters.size()), cairo_text_cluster_flags_t{});
  }
  glyphs.clear();
  clusters.clear();
  characters.clear();
}

// A box, and a blank on it as text.
void PdfDocument::Writer::DrawNothing(const PageFont& font, int x, int y, int width, Ink24 wanted) {
  DrawBox(font, x, y, width, wanted);
  const PageFont::Glyph blank = font.GlyphOf(U' ');
  if (blank.face != nullptr) AddGlyph(blank, U' ', x, y + font.Metrics().ascent);
}

void PdfDocument::Writer::DrawPicture(const PageFont& font, int x, int y, const CellCluster& content,
                                      int columns, int advance, Ink24 wanted) {
  const PageFont::Picture& picture = font.PictureOf(content, columns);
  if (picture.face == nullptr) return DrawNothing(font, x, y, columns * advance, wanted);
  if (picture.face != face) FlushGlyphs();
  face = picture.face;
  for (const PageFont::Placed& placed : picture.glyphs)
    glyphs.push_back({placed.index, x + placed.x, y + font.Metrics().ascent + placed.y});
  int bytes = AppendUtf8(characters, content.base);
  for (const char32_t mark : content.marks)
    if (mark != 0) bytes += AppendUtf8(characters, mark);
  clusters.push_back({bytes, static_cast<int>(picture.glyphs.size())});
}

void PdfDocument::Writer::DrawCells(const PageFont& font, int x, int y, CellView text, int advance,
                                    Ink24 wanted) {
  SetColor(wanted);
  for (std::size_t i = 0; i < text.size(); ++i) {
    const int left = x + static_cast<int>(i) * advance;
    const int columns = ColumnsAt(text, i);
    const CellCluster content = ContentAt(text, i);
    if (columns == 0) continue;
    if (columns > 1 || content.marks[0] != 0) {
      DrawPicture(font, left, y, content, columns, advance, wanted);
      continue;
    }
    const PageFont::Glyph glyph =
        IsNoCharacter(content.base) ? PageFont::Glyph{} : font.GlyphOf(content.base);
    if (glyph.face != nullptr) {
      AddGlyph(glyph, content.base, left, y + font.Metrics().ascent);
    } else {
      DrawNothing(font, left, y, advance, wanted);
    }
  }
  FlushGlyphs();
}

PdfDocument::PdfDocument(ByteSink& sink, int dotsPerInch, const std::string& title)
    : writer_(std::make_unique<Writer>(sink, dotsPerInch)) {
  cairo_pdf_surface_set_metadata(writer_->surface, CAIRO_PDF_METADATA_CREATOR, kCreator);
  if (IsUtf8(title)) {
    cairo_pdf_surface_set_metadata(writer_->surface, CAIRO_PDF_METADATA_TITLE, title.c_str());
  }
}

PdfDocument::~PdfDocument() {
  Abort();
}

void PdfDocument::StartPage(int width, int height) {
  Writer& w = *writer_;
  assert(!w.onPage && !w.ended);
  w.onPage = true;
  w.page = {0, 0, width, height};
  w.drawn = {};
  w.colorSet = false;
  cairo_pdf_surface_set_size(w.surface, width * w.scale, height * w.scale);
  cairo_identity_matrix(w.context);
  cairo_scale(w.context, w.scale, w.scale);
}

void PdfDocument::Fill(const PixelRect& rect, Ink24 color) {
  Writer& w = *writer_;
  assert(w.onPage);
  const PixelRect seen = Common(rect, w.page);
  if (seen.IsEmpty()) return;
  // White on white paper: rows that follow each other lay their ground so, and would double the page.
  if (color == kPaperWhite && Common(seen, w.drawn).IsEmpty()) return;
  w.drawn = Around(w.drawn, seen);
  w.PaintRect(seen, color);
}

void PdfDocument::DrawRow(const PageFont& font, int x, int y, CellView text, int advance, Ink24 color,
                          const PixelRect& clip) {
  Writer& w = *writer_;
  assert(w.onPage && advance > 0);
  const PixelRect window = Common(clip, w.page);
  if (window.IsEmpty() || text.empty()) return;
  // Only what touches the window is drawn; a real clip is set only where it cuts a cell.
  const auto cellAt = [&](std::int64_t pixel) { return (pixel - x) / advance; };
  const auto count = static_cast<std::int64_t>(text.size());
  const std::int64_t first = std::clamp<std::int64_t>(cellAt(window.left), 0, count);
  const std::int64_t end = std::clamp<std::int64_t>(cellAt(std::int64_t{window.right} - 1) + 1, first, count);
  const int left = static_cast<int>(x + first * advance);
  const int right = static_cast<int>(x + end * advance);
  const PixelRect cells{left, y, right, y + font.Metrics().ascent + font.Metrics().descent};
  const PixelRect seen = Common(cells, window);
  if (seen.IsEmpty()) return;
  w.drawn = Around(w.drawn, seen);
  const bool cut = !Holds(window, cells);
  if (cut) {
    cairo_save(w.context);
    cairo_rectangle(w.context, window.left, window.top, window.right - window.left,
                    window.bottom - window.top);
    cairo_clip(w.context);
  }
  w.DrawCells(font, left, y,
              text.substr(static_cast<std::size_t>(first), static_cast<std::size_t>(end - first)), advance,
              color);
  w.DrawFontLines(font, cells, color);
  if (cut) {
    cairo_restore(w.context);
    w.colorSet = false;
  }
}

FileError PdfDocument::EndPage() {
  Writer& w = *writer_;
  assert(w.onPage);
  w.onPage = false;
  if (w.error == 0) cairo_show_page(w.context);
  w.NoteState();
  return w.error;
}

FileError PdfDocument::End() {
  Writer& w = *writer_;
  assert(!w.onPage && !w.ended);
  if (w.error == 0) cairo_surface_finish(w.surface);
  w.NoteState();
  w.ended = true;
  if (w.error == 0) {
    w.error = w.sink.Finish();
  } else {
    w.sink.Abort();
  }
  return w.error;
}

void PdfDocument::Abort() {
  if (writer_->ended) return;
  writer_->ended = true;
  writer_->sink.Abort();
}

FileError PdfDocument::Error() const {
  return writer_->error;
}

std::int64_t PdfDocument::BytesWritten() const {
  return writer_->written;
}

}  // namespace platform_printing
