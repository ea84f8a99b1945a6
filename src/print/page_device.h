// What pages are drawn on: a printer, a PDF file, or a record of what was drawn. Coordinates are pixels of
// the device, from the upper left corner of what it can print on. Text stands on the grid of the one font
// that is selected. Of the thread that runs the job.
#pragma once

#include <cstdint>
#include <string_view>

#include "platform/cells.h"
#include "platform/win32.h"

// What a page has room for, in pixels, and pixels per inch.
struct PageExtent {
  int height = 0;
  int width = 0;
  int dpiY = 0;
  int dpiX = 0;
};

// A cell of the grid, pixels.
struct PageCell {
  int height = 0;
  int width = 0;
};

struct PageShade {
  COLORREF text = 0;
  COLORREF background = 0;
  bool operator==(const PageShade&) const = default;
};

// What EndPage answers when the page has gone out.
inline constexpr std::int32_t kPageSent = 1;

class PageDevice {
 public:
  PageDevice() = default;
  virtual ~PageDevice() = default;
  PageDevice(const PageDevice&) = delete;
  PageDevice& operator=(const PageDevice&) = delete;

  [[nodiscard]] virtual PageExtent Extent() = 0;
  // Selects the print font, whose letters are `-height` pixels high; a font of the system's own where that
  // cannot be made.
  [[nodiscard]] virtual PageCell SelectFont(int height) = 0;

  virtual void StartPage() = 0;
  // kPageSent; or the reason why the page did not go out, below it: one of the SP_ numbers of the system.
  [[nodiscard]] virtual std::int32_t EndPage() = 0;

  // A row of the view's text in a rectangle that it fills, at its upper left corner; cut at its edges.
  virtual void DrawRow(const RECT& rect, CellView text, PageShade shade) = 0;
  // ASCII text on the ground of its own cells.
  virtual void DrawNote(int x, int y, std::string_view text, PageShade shade) = 0;
  // UTF-8 text, the same; and the columns that it takes.
  virtual void DrawHeading(int x, int y, std::string_view text, PageShade shade) = 0;
  [[nodiscard]] virtual int HeadingColumns(std::string_view text) = 0;
};
