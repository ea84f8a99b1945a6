// Which part of the file a print command prints, and which of the pages that this makes: what the command
// asks for, made whole, and then what the user has chosen in the print dialog.
#pragma once

#include <cstdint>

#include "engine/file_pos.h"
#include "print/page_composition.h"

// What a command asks for. Positions below 0, and a `to` of 0, are none; so are pages below 0.
struct PrintRequest {
  FilePos from = kNoPosition;
  FilePos to = kNoPosition;
  FilePos current = 0;  // top line of the view: where pages from 0 on begin
  std::int32_t fromPage = -1;
  std::int32_t toPage = -1;
  std::uint32_t options = 0;  // PO_ bits
};

struct PrintRange {
  FilePos from = 0;
  FilePos to = 0;  // behind the last byte
  std::int32_t fromPage = 1;
  std::int32_t toPage = kLastPage;
};

// Whether the request names a part of the file, so that the dialog offers it as the selection.
[[nodiscard]] bool NamesSelection(const PrintRequest& request);

// The request in a file of `length` bytes, with a beginning and an end.
[[nodiscard]] PrintRange RangeOf(const PrintRequest& request, FilePos length);

enum class PrintChoice : std::uint8_t {
  asRequested,  // there was no question about it
  all,
  selection,
  pages,
};

inline constexpr std::int32_t kBlankPage = 0xFFFF;  // a field of the dialog that was left blank

// What the choice makes of the range. Pages are those of the whole file, or from a page 0 on those from the
// view's top line on; a blank first page is page 1, and behind a blank last page there is none.
[[nodiscard]] PrintRange ChosenRange(const PrintRange& range, PrintChoice choice, std::int32_t fromPage,
                                     std::int32_t toPage, FilePos current, FilePos length);
