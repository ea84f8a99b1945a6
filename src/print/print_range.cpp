#include "print/print_range.h"

#include <algorithm>

bool NamesSelection(const PrintRequest& request) {
  return request.from >= 0 && request.to >= 0;
}

PrintRange RangeOf(const PrintRequest& request, FilePos length) {
  PrintRange range;
  range.from = std::max<FilePos>(request.from, 0);
  range.to = std::max(request.to < 1 ? length : request.to, range.from);
  range.fromPage = std::max(request.fromPage, 0);
  range.toPage = std::max(request.toPage < 0 ? kLastPage : request.toPage, range.fromPage);
  return range;
}

PrintRange ChosenRange(const PrintRange& range, PrintChoice choice, std::int32_t fromPage,
                       std::int32_t toPage, FilePos current, FilePos length) {
  switch (choice) {
    case PrintChoice::asRequested:
      return range;
    case PrintChoice::selection:
      return {range.from, range.to, 1, kLastPage};
    case PrintChoice::pages: {
      const std::int32_t first = fromPage == kBlankPage ? 1 : fromPage;
      const std::int32_t last = toPage == kBlankPage ? kLastPage : std::max(toPage, first);
      return {first > 0 ? FilePos() : current, length, first, last};
    }
    case PrintChoice::all:
      break;
  }
  return {0, length, 1, kLastPage};
}
