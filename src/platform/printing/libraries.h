// The libraries that pages are made with.
#pragma once

#include <string>

namespace platform_printing {

// Name and version: "cairo 1.16.0".
[[nodiscard]] std::string PageLibrary();

}  // namespace platform_printing
