#include <algorithm>
#include <cassert>
#include <cstdlib>

#include "platform/qt/fonts.h"
#include "platform/qt/hooks.h"
#include "platform/qt/unknown.h"
#include "platform/qt/window.h"
#include "platform/testing.h"

namespace platform_qt {

namespace {

using platform_testing::DrawCall;

// A dotted line shows so many pixels and then leaves out as many.
constexpr int kDotLength = 3;

HPEN StockPen(int style) {
  static HPEN__ black{{GdiObject::Kind::pen, true}, PS_SOLID, RGB(0, 0, 0)};
  static HPEN__ none{{GdiObject::Kind::pen, true}, NULL_PEN, 0};
  return style == NULL_PEN ? &none : &black;
}

HBRUSH StockBrush() {
  static HBRUSH__ white{{GdiObject::Kind::brush, true}, RGB(255, 255, 255)};
  return &white;
}

void Log(DrawCall::Kind kind, HDC dc, int x, int y, const RECT& rect, COLORREF color, COLORREF background) {
  if (hooks.drawing != nullptr) [[unlikely]] {
    hooks.drawing->push_back({kind, x, y, rect, {}, color, background, dc->pen->style});
  }
}

// One object kind of a device context: the former one goes out, its counts follow.
template <typename Handle>
HGDIOBJ Exchange(Handle& place, Handle object) {
  Handle former = place;
  --former->selections;
  ++object->selections;
  place = object;
  return former;
}

}  // namespace

HDC OpenDc(HWND window, const QRegion& clip) {
  const HDC dc = new HDC__;
  dc->window = window;
  dc->clip = clip;
  dc->font = StockFont();
  dc->pen = StockPen(PS_SOLID);
  dc->brush = StockBrush();
  ++dc->font->selections;
  ++dc->pen->selections;
  ++dc->brush->selections;
  return dc;
}

void CloseDc(HDC dc) {
  --dc->font->selections;
  --dc->pen->selections;
  --dc->brush->selections;
  dc->window->surface.ClosePainter();
  HandOver(dc->window);
  delete dc;
}

void FillThrough(HDC dc, const QRect& rect, Pixel color) {
  for (const QRect& part : dc->clip) {
    const QRect area = part & rect;
    if (!area.isEmpty()) {
      dc->window->surface.Fill(area, color);
      dc->window->unshown += area;
    }
  }
}

namespace {

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

HGDIOBJ SelectObject(HDC dc, HGDIOBJ object) {
  if (dc == nullptr || object == nullptr) {
    return nullptr;
  }
  auto* const record = static_cast<GdiObject*>(object);
  switch (record->kind) {
    case GdiObject::Kind::font:
      return Exchange(dc->font, static_cast<HFONT>(record));
    case GdiObject::Kind::pen:
      return Exchange(dc->pen, static_cast<HPEN>(record));
    case GdiObject::Kind::brush:
      return Exchange(dc->brush, static_cast<HBRUSH>(record));
  }
  return nullptr;
}

BOOL DeleteObject(HGDIOBJ object) {
  if (object == nullptr) {
    return FALSE;
  }
  auto* const record = static_cast<GdiObject*>(object);
  if (record->stock) {
    return TRUE;
  }
  assert(record->selections == 0 && "an object goes only when no device context holds it");
  switch (record->kind) {
    case GdiObject::Kind::font:
      delete static_cast<HFONT>(record);
      break;
    case GdiObject::Kind::pen:
      delete static_cast<HPEN>(record);
      break;
    case GdiObject::Kind::brush:
      delete static_cast<HBRUSH>(record);
      break;
  }
  return TRUE;
}

HGDIOBJ GetStockObject(int index) {
  switch (index) {
    case NULL_PEN:
      return StockPen(NULL_PEN);
    case ANSI_FIXED_FONT:
      return StockFont();
    default:
      ReportUnknown("GetStockObject", static_cast<std::uint64_t>(index));
      return nullptr;
  }
}

HBRUSH CreateSolidBrush(COLORREF color) {
  return new HBRUSH__{{GdiObject::Kind::brush}, color};
}

HPEN CreatePen(int style, int width, COLORREF color) {
  assert(width <= 1 && "lines are one pixel wide");
  static_cast<void>(width);
  if (style != PS_SOLID && style != PS_DOT) {
    ReportUnknown("CreatePen", static_cast<std::uint64_t>(style));
  }
  return new HPEN__{{GdiObject::Kind::pen}, style, color};
}

COLORREF SetBkColor(HDC dc, COLORREF color) {
  return std::exchange(dc->background, color);
}

COLORREF SetTextColor(HDC dc, COLORREF color) {
  return std::exchange(dc->textColor, color);
}

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
  Log(DrawCall::Kind::line, dc, from.x(), from.y(), {from.x(), from.y(), x, y}, dc->pen->color,
      dc->background);
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
  Log(DrawCall::Kind::rectangle, dc, left, top, {left, top, right, bottom}, dc->pen->color, dc->brush->color);
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
  Log(DrawCall::Kind::invert, dc, rect->left, rect->top, *rect, 0, 0);
  for (const QRect& part : dc->clip) {
    const QRect area = part & RectOf(*rect);
    dc->window->surface.Invert(area);
    dc->window->unshown += area;
  }
  return TRUE;
}
