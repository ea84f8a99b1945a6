#include "platform/qt/drawing/device_context.h"

#include <cassert>
#include <utility>

#include "platform/qt/base/unknown.h"
#include "platform/qt/drawing/fonts.h"

namespace platform_qt {

namespace {

HPEN StockPen(int style) {
  static HPEN__ black{{GdiObject::Kind::pen, true}, PS_SOLID, RGB(0, 0, 0)};
  static HPEN__ none{{GdiObject::Kind::pen, true}, NULL_PEN, 0};
  return style == NULL_PEN ? &none : &black;
}

HBRUSH StockBrush() {
  static HBRUSH__ white{{GdiObject::Kind::brush, true}, RGB(255, 255, 255)};
  return &white;
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

HDC OpenDc(DrawTarget& target, const QRegion& clip) {
  const HDC dc = new HDC__;
  dc->target = &target;
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
  dc->target->Finish();
  delete dc;
}

void FillThrough(HDC dc, const QRect& rect, Pixel color) {
  for (const QRect& part : dc->clip) {
    const QRect area = part & rect;
    if (!area.isEmpty()) {
      dc->target->Fill(area, color);
    }
  }
}

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
