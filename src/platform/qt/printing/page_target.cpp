#include "platform/qt/printing/page_target.h"

#include <algorithm>
#include <cstring>

#include "platform/qt/base/unknown.h"

namespace platform_qt {

using namespace platform_printing;

namespace {

constexpr int kStockPoints = 10;
constexpr int kPointsPerInch = 72;
constexpr BYTE kFixedPitch = 1;

Ink24 InkOf(Pixel color) {
  return {static_cast<std::uint8_t>(color >> 16), static_cast<std::uint8_t>(color >> 8),
          static_cast<std::uint8_t>(color)};
}

FontWish WishOf(const HFONT__& font) {
  FontWish wish;
  wish.family = font.description.family().toStdString();
  const LONG height = font.asked.lfHeight;
  if (font.stock || height == 0) {
    wish.emPixels = kStockPoints * kPageDotsPerInch / kPointsPerInch;
  } else {
    (height < 0 ? wish.emPixels : wish.cellPixels) = std::abs(height);
  }
  wish.weight = font.description.weight();
  wish.italic = font.description.italic();
  wish.underline = font.description.underline();
  wish.strikeOut = font.description.strikeOut();
  wish.fixedPitch = font.stock || (font.asked.lfPitchAndFamily & 3) == kFixedPitch;
  return wish;
}

}  // namespace

QSize PageTarget::Size() const {
  return {format_.width - 2 * format_.margin, format_.height - 2 * format_.margin};
}

PixelRect PageTarget::OnPaper(const QRect& rect) const {
  const QRect seen = (rect & QRect(QPoint(0, 0), Size())).translated(format_.margin, format_.margin);
  return {seen.left(), seen.top(), seen.left() + seen.width(), seen.top() + seen.height()};
}

void PageTarget::Fill(const QRect& rect, Pixel color) {
  if (document_ != nullptr) {
    document_->Fill(OnPaper(rect), InkOf(color));
  }
}

void PageTarget::Invert(const QRect& /*rect*/) {
  ReportUnknown("InvertRect on a page", 0);
}

QPainter& PageTarget::Painter() {
  ReportUnknown("lines on a page", 0);
  if (painter_ == nullptr) {
    nowhere_ = QImage(1, 1, QImage::Format_RGB32);
    painter_ = std::make_unique<QPainter>(&nowhere_);
  }
  return *painter_;
}

const PageFont* PageTarget::FontOf(const HFONT__& font) {
  const auto made = std::find_if(fonts_.begin(), fonts_.end(), [&font](const Made& one) {
    return one.stock == font.stock && std::memcmp(&one.asked, &font.asked, sizeof one.asked) == 0;
  });
  if (made != fonts_.end()) {
    return made->font.get();
  }
  fonts_.push_back({font.asked, font.stock, PageFont::Make(WishOf(font))});
  return fonts_.back().font.get();
}

FontExtent PageTarget::ExtentOf(HFONT__& font) {
  const PageFont* const made = FontOf(font);
  if (made == nullptr) {
    return font;
  }
  const FontMetrics& metrics = made->Metrics();
  return {metrics.ascent,  metrics.descent, metrics.internalLeading, metrics.externalLeading,
          metrics.advance, metrics.widest,  metrics.fixedPitch};
}

void PageTarget::DrawCharacters(HFONT__& font, int x, int y, CellView text, const QRegion& clip,
                                Pixel color) {
  const PageFont* const made = FontOf(font);
  if (document_ == nullptr || made == nullptr) {
    return;
  }
  for (const QRect& part : clip) {
    document_->DrawRow(*made, x + format_.margin, y + format_.margin, text, made->Metrics().advance,
                       InkOf(color), OnPaper(part));
  }
}

}  // namespace platform_qt
