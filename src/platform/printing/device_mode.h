// How a printer is to print: what stands in the record of Win32, as a page of so many pixels and as wishes
// for a queue. The tables of papers and trays are the one place where the two name the same thing. A value
// that the tables lack stays in the record and is asked of nobody.
#pragma once

#include <span>

#include "platform/printing/print_service.h"
#include "platform/win32.h"

namespace platform_printing {

inline constexpr int kPageDotsPerInch = 600;

struct Paper {
  short code;         // DMPAPER_
  const char* label;  // as people call it
  const char* media;  // PWG 5101.1
  int width, height;  // tenths of a millimetre, standing upright
};
[[nodiscard]] std::span<const Paper> Papers();
// The paper that is usual in the user's country (LC_PAPER).
[[nodiscard]] const Paper& UsualPaper();

// A page in pixels, turned as it is to be read. Nothing is drawn in the margin at its four edges.
struct PageFormat {
  int width = 0;
  int height = 0;
  int margin = 0;
};
// `mode` may be null: the usual paper, upright.
[[nodiscard]] PageFormat PageFormatOf(const DEVMODEA* mode);

// What the record asks of a queue; always with a paper. Copies below 1 count as one.
[[nodiscard]] PrintWishes WishesOf(const DEVMODEA* mode);

}  // namespace platform_printing
