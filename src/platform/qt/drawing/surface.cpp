#include "platform/qt/drawing/surface.h"

#include <algorithm>
#include <cassert>
#include <cstring>
#include <utility>

namespace platform_qt {

namespace {

constexpr Pixel kColorBits = 0x00FFFFFF;

}  // namespace

std::size_t Surface::OffsetOf(int rows) const {
  return static_cast<std::size_t>(rows) * static_cast<std::size_t>(width_);
}

Pixel* Surface::Row(int y) {
  return block_.data() + OffsetOf(first_ + y);
}

const Pixel* Surface::Row(int y) const {
  return block_.data() + OffsetOf(first_ + y);
}

void Surface::Resize(int width, int height, Pixel fill) {
  ClosePainter();
  Surface resized;
  resized.width_ = width;
  resized.height_ = height;
  resized.spare_ = height / 2;
  resized.first_ = resized.spare_ / 2;
  resized.block_.resize(resized.OffsetOf(height + resized.spare_));
  const int keptHeight = std::min(height, height_);
  const int keptWidth = std::min(width, width_);
  for (int y = 0; y < height; ++y) {
    Pixel* const row = resized.Row(y);
    const int kept = y < keptHeight ? keptWidth : 0;
    if (kept > 0) {
      std::memcpy(row, Row(y), static_cast<std::size_t>(kept) * sizeof(Pixel));
    }
    std::fill(row + kept, row + width, fill);
  }
  *this = std::move(resized);
}

void Surface::Fill(const QRect& rect, Pixel color) {
  const QRect area = rect & Bounds();
  for (int y = area.top(); y <= area.bottom(); ++y) {
    std::fill_n(Row(y) + area.left(), area.width(), color);
  }
}

void Surface::Invert(const QRect& rect) {
  const QRect area = rect & Bounds();
  for (int y = area.top(); y <= area.bottom(); ++y) {
    Pixel* const from = Row(y) + area.left();
    std::transform(from, from + area.width(), from, [](Pixel pixel) { return pixel ^ kColorBits; });
  }
}

void Surface::Move(const QRect& source, int dx, int dy) {
  assert(Bounds().contains(source) && Bounds().contains(source.translated(dx, dy)));
  const std::size_t bytes = static_cast<std::size_t>(source.width()) * sizeof(Pixel);
  if (dx == 0 && source.width() == width_ && Slide(source, dy)) {
    return;
  }
  for (int i = 0; i < source.height(); ++i) {
    // Against the direction of the move, so that no row is overwritten before it is read.
    const int y = dy > 0 ? source.bottom() - i : source.top() + i;
    std::memmove(Row(y + dy) + source.left() + dx, Row(y) + source.left(), bytes);
  }
}

// Moves whole rows by moving the beginning of the picture, and what is not to move back. False when that
// would be no less work.
bool Surface::Slide(const QRect& source, int dy) {
  const QRect target = source.translated(0, dy);
  const int above = target.top();
  const int below = height_ - (target.bottom() + 1);
  if ((above + below) * 2 >= height_) {
    return false;
  }
  ClosePainter();
  if (first_ - dy < 0 || first_ - dy > spare_) {
    const int other = dy > 0 ? spare_ : 0;
    if (other - dy < 0 || other - dy > spare_) {
      return false;
    }
    std::memmove(block_.data() + OffsetOf(other), Row(0), OffsetOf(height_) * sizeof(Pixel));
    first_ = other;
  }
  first_ -= dy;
  // What stood in row y stands in row y + dy now.
  std::memmove(Row(0), Row(0) + static_cast<std::ptrdiff_t>(dy) * width_, OffsetOf(above) * sizeof(Pixel));
  const int from = height_ - below;
  std::memmove(Row(from), Row(from) + static_cast<std::ptrdiff_t>(dy) * width_,
               OffsetOf(below) * sizeof(Pixel));
  return true;
}

QPainter& Surface::Painter() {
  if (painter_ == nullptr) {
    target_ =
        QImage(reinterpret_cast<uchar*>(Row(0)), width_, height_,
               static_cast<qsizetype>(width_) * static_cast<qsizetype>(sizeof(Pixel)), QImage::Format_RGB32);
    painter_ = std::make_unique<QPainter>(&target_);
  }
  return *painter_;
}

void Surface::ClosePainter() {
  painter_.reset();
  target_ = QImage();
}

QImage Surface::View() const {
  return {reinterpret_cast<const uchar*>(Row(0)), width_, height_,
          static_cast<qsizetype>(width_) * static_cast<qsizetype>(sizeof(Pixel)), QImage::Format_RGB32};
}

}  // namespace platform_qt
