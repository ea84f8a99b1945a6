// A document of pages as PDF, written into a sink page by page, so that memory does not grow with it. Text is
// text: it can be selected and searched, and its fonts are in the document. Coordinates are pixels of a
// device of so many dots per inch, from the upper left corner of the page. Everything drawn is opaque. Of one
// thread.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "platform/cells.h"
#include "platform/printing/byte_sink.h"

namespace platform_printing {

class PageFont;

struct PixelRect {
  int left = 0;
  int top = 0;
  int right = 0;   // behind the last pixel
  int bottom = 0;  // the same

  [[nodiscard]] bool IsEmpty() const { return left >= right || top >= bottom; }
};

struct Ink24 {
  std::uint8_t red = 0;
  std::uint8_t green = 0;
  std::uint8_t blue = 0;
  bool operator==(const Ink24&) const = default;
};
inline constexpr Ink24 kPaperWhite{255, 255, 255};

class PdfDocument {
 public:
  // The sink must outlive the document. `title`: UTF-8; one that is not is left out.
  PdfDocument(ByteSink& sink, int dotsPerInch, const std::string& title);
  // A document that has not ended is aborted.
  ~PdfDocument();
  PdfDocument(const PdfDocument&) = delete;
  PdfDocument& operator=(const PdfDocument&) = delete;

  // A page is white. `width`, `height`: pixels.
  void StartPage(int width, int height);

  void Fill(const PixelRect& rect, Ink24 color);

  // Cells, the first with its upper left corner at x, y; they are `advance` wide, the font's own or wider.
  // Nothing is drawn outside `clip`. A character that no font has is a small box. Control and format
  // characters are boxes too; half a wide character is a blank.
  void DrawRow(const PageFont& font, int x, int y, CellView text, int advance, Ink24 color,
               const PixelRect& clip);

  // The page goes to the sink. The first error of the sink, or a lack of memory, is the result of this call
  // and of all later ones, and nothing more is written: ENOSPC and its like when the disk is full, EFBIG when
  // the document has grown larger than the format can hold (10 GB).
  [[nodiscard]] FileError EndPage();

  // Writes the rest and finishes the sink; on an error aborts it.
  [[nodiscard]] FileError End();

  // Gives the document up, and tells the sink.
  void Abort();

  [[nodiscard]] FileError Error() const;
  [[nodiscard]] std::int64_t BytesWritten() const;

 private:
  struct Writer;
  std::unique_ptr<Writer> writer_;
};

}  // namespace platform_printing
