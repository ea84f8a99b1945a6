// A font for pages: the faces that its characters come from, and its metrics in whole pixels of the device.
// Text stands on a grid, so a face of fixed pitch is made a trifle wider or narrower where its own advance is
// no whole number of pixels. What the first face lacks comes from the system's others, in the order in which
// the system proposes them; a character that none has is no glyph. Of one thread.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "platform/cells.h"

typedef struct _cairo_scaled_font cairo_scaled_font_t;  // NOLINT(modernize-use-using)

namespace platform_printing {

struct FontWish {
  std::string family;  // UTF-8
  int emPixels = 0;    // height without internal leading
  int cellPixels = 0;  // used where emPixels is 0: height with it
  int weight = 400;    // 1 to 1000
  bool italic = false;
  bool underline = false;
  bool strikeOut = false;
  bool fixedPitch = true;  // which kind takes the place of a family that the system does not have
};

struct FontMetrics {
  int ascent = 0;  // from the top of a row to its base line, pixels; the same below for the descent
  int descent = 0;
  int internalLeading = 0;
  int externalLeading = 0;
  int advance = 1;  // of the average letter; of all letters where the pitch is fixed
  int widest = 1;
  int weight = 400;
  bool italic = false;
  bool fixedPitch = true;
  int underlineTop = 0;  // below the base line
  int lineThickness = 1;
};

class PageFont {
 public:
  // Null when the system has no font at all that letters can be drawn with.
  [[nodiscard]] static std::unique_ptr<PageFont> Make(const FontWish& wish);
  ~PageFont();
  PageFont(const PageFont&) = delete;
  PageFont& operator=(const PageFont&) = delete;

  [[nodiscard]] const FontWish& Wish() const;
  [[nodiscard]] const FontMetrics& Metrics() const;

  struct Glyph {
    cairo_scaled_font_t* face = nullptr;  // the font's; null where nobody has the character
    unsigned long index = 0;
  };
  // The glyph is at most one cell wide where it comes from another face than the first.
  [[nodiscard]] Glyph GlyphOf(char32_t character) const;

  // The glyphs of a character that is wide, or has marks: those of one face, made as narrow as its columns
  // ask.
  struct Placed {
    unsigned long index;
    double x, y;  // pixels from the left end of its cells, on the base line; downward
  };
  struct Picture {
    cairo_scaled_font_t* face = nullptr;  // null where nobody has the character
    std::vector<Placed> glyphs;
  };
  // Valid until the next call.
  [[nodiscard]] const Picture& PictureOf(const CellCluster& content, int columns) const;

 private:
  struct Faces;
  explicit PageFont(std::unique_ptr<Faces> faces);
  std::unique_ptr<Faces> faces_;
};

}  // namespace platform_printing
