// A page as a draw target. What is drawn goes into a PDF document as text and filled rectangles; between
// pages, and while there is no document, it goes nowhere. Coordinates begin at the upper left corner of what
// can be printed on. Whose the document is, and where its bytes go, others know.
#pragma once

#include <QImage>
#include <memory>
#include <vector>

#include "platform/printing/device_mode.h"
#include "platform/printing/page_font.h"
#include "platform/printing/pdf_document.h"
#include "platform/qt/drawing/draw_target.h"

namespace platform_qt {

class PageTarget : public DrawTarget {
 public:
  explicit PageTarget(const platform_printing::PageFormat& format) : format_(format) {}

  // The page that is drawn on from now on; null: none.
  void DrawOn(platform_printing::PdfDocument* document) { document_ = document; }
  [[nodiscard]] const platform_printing::PageFormat& Format() const { return format_; }

  [[nodiscard]] int DotsPerInch() const override { return platform_printing::kPageDotsPerInch; }
  [[nodiscard]] QSize Size() const override;
  void Fill(const QRect& rect, Pixel color) override;
  // Neither is there on a page: what is drawn so is reported and lost.
  void Invert(const QRect& rect) override;
  QPainter& Painter() override;
  [[nodiscard]] FontExtent ExtentOf(HFONT__& font) override;
  [[nodiscard]] bool TakesText() const override { return true; }
  void DrawCharacters(HFONT__& font, int x, int y, CellView text, const QRegion& clip, Pixel color) override;

 private:
  [[nodiscard]] const platform_printing::PageFont* FontOf(const HFONT__& font);
  [[nodiscard]] platform_printing::PixelRect OnPaper(const QRect& rect) const;

  // A font of the program, and what it is on pages; null where the system has nothing to draw letters with.
  struct Made {
    LOGFONTA asked;
    bool stock;
    std::unique_ptr<platform_printing::PageFont> font;
  };
  platform_printing::PageFormat format_;
  platform_printing::PdfDocument* document_ = nullptr;
  std::vector<Made> fonts_;
  QImage nowhere_;
  std::unique_ptr<QPainter> painter_;
};

}  // namespace platform_qt
