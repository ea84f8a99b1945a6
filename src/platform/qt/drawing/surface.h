// A picture: 32-bit pixels of device size, one row behind the other. It owns the pixels and the painter that
// draws text into them, and knows nothing of windows or update regions. Coordinates are device pixels; Fill
// and Invert cut their rectangle to the picture.
//
// The picture lies within a larger block, so that scrolling it up or down moves the place where it begins
// instead of its pixels; only when it meets an end of the block is it copied to the other.
#pragma once

#include <QImage>
#include <QPainter>
#include <QRect>
#include <memory>
#include <vector>

#include "platform/qt/drawing/pixels.h"

namespace platform_qt {

class Surface {
 public:
  [[nodiscard]] int Width() const { return width_; }
  [[nodiscard]] int Height() const { return height_; }
  [[nodiscard]] QRect Bounds() const { return {0, 0, width_, height_}; }
  [[nodiscard]] Pixel* Row(int y);
  [[nodiscard]] const Pixel* Row(int y) const;

  // Changes the size; what lies in both sizes stays, the rest becomes `fill`.
  void Resize(int width, int height, Pixel fill);
  void Fill(const QRect& rect, Pixel color);
  void Invert(const QRect& rect);
  // Copies the pixels of `source` to the place (dx, dy) further on; the two may overlap. Both the source and
  // its target must lie in the picture.
  void Move(const QRect& source, int dx, int dy);

  // A painter on the picture, open until ClosePainter. Its clip and pen are the caller's.
  QPainter& Painter();
  void ClosePainter();

  // The picture without a copy; valid until the next Resize.
  [[nodiscard]] QImage View() const;

 private:
  [[nodiscard]] std::size_t OffsetOf(int rows) const;
  bool Slide(const QRect& source, int dy);

  int width_ = 0;
  int height_ = 0;
  int first_ = 0;  // row of the block where the picture begins
  int spare_ = 0;  // rows of the block beyond the picture's height
  std::vector<Pixel> block_;
  QImage target_;  // over the picture, for the painter
  std::unique_ptr<QPainter> painter_;
};

}  // namespace platform_qt
