#include "platform/printing/libraries.h"

#include <cairo/cairo.h>

namespace platform_printing {

std::string PageLibrary() {
  return std::string("cairo ") + cairo_version_string();
}

}  // namespace platform_printing
