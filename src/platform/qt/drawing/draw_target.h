// What a device context draws on: the picture of a window or of a control, a page of a printer, a picture in
// memory. A target owns its pixels, or the painter that makes them, and knows its resolution; what is
// selected for drawing is the device context's, and who shows or prints the result is no concern of this
// folder. Coordinates are device pixels; what lies outside a target is cut off.
#pragma once

#include <QPainter>
#include <QRegion>
#include <string_view>

#include "platform/qt/drawing/gdi_objects.h"
#include "platform/qt/drawing/surface.h"

namespace platform_qt {

class DrawTarget {
 public:
  DrawTarget() = default;
  virtual ~DrawTarget() = default;
  DrawTarget(const DrawTarget&) = delete;
  DrawTarget& operator=(const DrawTarget&) = delete;

  [[nodiscard]] virtual int DotsPerInch() const = 0;
  [[nodiscard]] virtual QSize Size() const = 0;
  virtual void Fill(const QRect& rect, Pixel color) = 0;
  virtual void Invert(const QRect& rect) = 0;
  // A painter on the target, for glyphs. Its clip and pen are the caller's. Valid until Finish.
  virtual QPainter& Painter() = 0;
  // The pixels themselves, into which finished glyphs may be copied; null where there are none.
  [[nodiscard]] virtual Surface* Pixels() { return nullptr; }
  // What a font measures here.
  [[nodiscard]] virtual FontExtent ExtentOf(HFONT__& font) { return font; }
  // Whether text is text here, and not a matter of pixels: then it is drawn by DrawCharacters alone, one to a
  // cell, the upper left corner of the first at (x, y).
  [[nodiscard]] virtual bool TakesText() const { return false; }
  virtual void DrawCharacters(HFONT__& /*font*/, int /*x*/, int /*y*/, CellView /*text*/,
                              const QRegion& /*clip*/, Pixel /*color*/) {}
  // These pixels were drawn by way of Painter or Pixels.
  virtual void NoteDrawn(const QRegion& /*region*/) {}
  // A device context on the target has ended.
  virtual void Finish() {}
};

// A picture in memory that remembers what of it was drawn since its owner looked last.
class SurfaceTarget : public DrawTarget {
 public:
  [[nodiscard]] QSize Size() const override { return surface_.Bounds().size(); }
  void Fill(const QRect& rect, Pixel color) override;
  void Invert(const QRect& rect) override;
  QPainter& Painter() override { return surface_.Painter(); }
  [[nodiscard]] Surface* Pixels() override { return &surface_; }
  void NoteDrawn(const QRegion& region) override { drawn_ += region; }
  void Finish() override { surface_.ClosePainter(); }

  [[nodiscard]] const Surface& Picture() const { return surface_; }
  void Resize(int width, int height, Pixel fill);
  // As Surface::Move.
  void Move(const QRect& source, int dx, int dy);
  // What was drawn since the last call.
  QRegion TakeDrawn();

 private:
  Surface surface_;
  QRegion drawn_;
};

// Anything that the toolkit can paint on, by a painter of the caller's: there, no pixels can be copied.
class PainterTarget : public DrawTarget {
 public:
  PainterTarget(QPainter& painter, int dotsPerInch) : painter_(painter), dotsPerInch_(dotsPerInch) {}

  [[nodiscard]] int DotsPerInch() const override { return dotsPerInch_; }
  [[nodiscard]] QSize Size() const override { return painter_.window().size(); }
  void Fill(const QRect& rect, Pixel color) override;
  void Invert(const QRect& rect) override;
  QPainter& Painter() override { return painter_; }

 private:
  QPainter& painter_;
  int dotsPerInch_;
};

}  // namespace platform_qt
