// What a place in a file is called, wherever one is given: on the command line, in Go To, over the bus.
//
//   12345   0x3039   a byte; 0x begins a hexadecimal number, a 0 an octal one, as in Go To
//   4k  3M  2G       units of 1024 bytes, of 1024 of those, and so on
//   -4k              so many bytes before the end
//   50%  12.5%       a share of the file
//   p12              a page, from 1
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "places/goto_logic.h"

struct Place {
  enum class Kind : std::uint8_t { byte, beforeEnd, share, page } kind = Kind::byte;
  std::int64_t value = 0;  // bytes, thousandths of a per cent, or the number of the page
};

// Nothing when the text is no place.
[[nodiscard]] std::optional<Place> ParsePlace(std::string_view text);

// The place in a file of that length, which no place lies behind.
[[nodiscard]] GoToAnswer AnswerOf(const Place& place, FilePos fileLength);
