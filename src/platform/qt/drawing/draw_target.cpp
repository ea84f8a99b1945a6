#include "platform/qt/drawing/draw_target.h"

#include <utility>

namespace platform_qt {

void SurfaceTarget::Fill(const QRect& rect, Pixel color) {
  surface_.Fill(rect, color);
  drawn_ += rect;
}

void SurfaceTarget::Invert(const QRect& rect) {
  surface_.Invert(rect);
  drawn_ += rect;
}

void SurfaceTarget::Resize(int width, int height, Pixel fill) {
  surface_.Resize(width, height, fill);
  drawn_ &= surface_.Bounds();
}

void SurfaceTarget::Move(const QRect& source, int dx, int dy) {
  surface_.Move(source, dx, dy);
  drawn_ += source.translated(dx, dy);
}

QRegion SurfaceTarget::TakeDrawn() {
  return std::exchange(drawn_, QRegion());
}

void PainterTarget::Fill(const QRect& rect, Pixel color) {
  painter_.setClipping(false);
  painter_.fillRect(rect, QColor::fromRgb(color));
}

void PainterTarget::Invert(const QRect& rect) {
  painter_.setClipping(false);
  painter_.setCompositionMode(QPainter::CompositionMode_Difference);
  painter_.fillRect(rect, Qt::white);
  painter_.setCompositionMode(QPainter::CompositionMode_SourceOver);
}

}  // namespace platform_qt
