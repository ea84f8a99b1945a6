// Lines, rectangles and inverted parts.
#include <algorithm>
#include <cstdlib>

#include "platform/qt/base/hooks.h"
#include "platform/qt/drawing/device_context.h"

namespace platform_qt {

namespace {

// A dotted line shows so many pixels and then leaves out as many.
constexpr int kDotLength = 3;

void Tell(Drawn::Kind kind, HDC dc, int x, int y, const RECT& rect, COLORREF color, COLORREF background) {
  if (hooks.drawn != nullptr) [[unlikely]] {
    hooks.drawn({kind, x, y, rect, nullptr, 0, color, background, dc->pen->style});
  }
}

// One pixel of a line, `step` pixels behind its start.
void Dot(HDC dc, int x, int y, int step) {
  const bool gap = dc->pen->style == PS_DOT && step / kDotLength % 2 != 0;
  FillThrough(dc, {x, y, 1, 1}, PixelOf(gap ? dc->background : dc->pen->color));
}

// A line along one axis: parts of `run` pixels, as long as the line.
void StraightLine(HDC dc, QPoint from, QPoint to) {
  const int length = std::max(std::abs(to.x() - from.x()), std::abs(to.y() - from.y()));
  const QPoint step(to.x() > from.x()   ? 1
                    : to.x() < from.x() ? -1
                                        : 0,
                    to.y() > from.y()   ? 1
                    : to.y() < from.y() ? -1
                                        : 0);
  const int run = dc->pen->style == PS_DOT ? kDotLength : length;
  for (int at = 0; at < length; at += run) {
    const int here = std::min(run, length - at);
    const QPoint first = from + step * at;
    const QPoint last = from + step * (at + here - 1);
    const QRect part = QRect(first, QSize(1, 1)) | QRect(last, QSize(1, 1));
    const bool gap = dc->pen->style == PS_DOT && at / run % 2 != 0;
    FillThrough(dc, part, PixelOf(gap ? dc->background : dc->pen->color));
  }
}

void SlantedLine(HDC dc, QPoint from, QPoint to) {
  const int across = std::abs(to.x() - from.x());
  const int down = -std::abs(to.y() - from.y());
  int error = across + down;
  QPoint at = from;
  for (int step = 0; at != to; ++step) {
    Dot(dc, at.x(), at.y(), step);
    const int twice = 2 * error;
    if (twice >= down) {
      error += down;
      at.rx() += to.x() > from.x() ? 1 : -1;
    }
    if (twice <= across) {
      error += across;
      at.ry() += to.y() > from.y() ? 1 : -1;
    }
  }
}

}  // namespace

}  // namespace platform_qt

using namespace platform_qt;

BOOL MoveToEx(HDC dc, int x, int y, POINT* former) {
  if (former != nullptr) {
    *former = dc->position;
  }
  dc->position = {x, y};
  return TRUE;
}

BOOL LineTo(HDC dc, int x, int y) {
  const QPoint from(dc->position.x, dc->position.y);
  const QPoint to(x, y);
  dc->position = {x, y};
  Tell(Drawn::Kind::line, dc, from.x(), from.y(), {from.x(), from.y(), x, y}, dc->pen->color, dc->background);
  if (dc->pen->style == NULL_PEN) {
    return TRUE;
  }
  if (from.x() == to.x() || from.y() == to.y()) {
    StraightLine(dc, from, to);
  } else {
    SlantedLine(dc, from, to);
  }
  return TRUE;
}

BOOL Rectangle(HDC dc, int left, int top, int right, int bottom) {
  Tell(Drawn::Kind::rectangle, dc, left, top, {left, top, right, bottom}, dc->pen->color, dc->brush->color);
  const QRect outer = RectOf(RECT{left, top, right, bottom});
  if (outer.isEmpty()) {
    return TRUE;
  }
  if (dc->pen->style == NULL_PEN) {
    FillThrough(dc, outer.adjusted(0, 0, -1, -1), PixelOf(dc->brush->color));
    return TRUE;
  }
  FillThrough(dc, outer.adjusted(1, 1, -1, -1), PixelOf(dc->brush->color));
  StraightLine(dc, outer.topLeft(), {outer.right() + 1, outer.top()});
  StraightLine(dc, outer.bottomLeft(), {outer.right() + 1, outer.bottom()});
  StraightLine(dc, outer.topLeft(), {outer.left(), outer.bottom() + 1});
  StraightLine(dc, outer.topRight(), {outer.right(), outer.bottom() + 1});
  return TRUE;
}

BOOL InvertRect(HDC dc, const RECT* rect) {
  Tell(Drawn::Kind::invert, dc, rect->left, rect->top, *rect, 0, 0);
  for (const QRect& part : dc->clip) {
    const QRect area = part & RectOf(*rect);
    if (!area.isEmpty()) {
      dc->target->Invert(area);
    }
  }
  return TRUE;
}
