#include "search/set_search.h"

#include <algorithm>
#include <cstring>
#include <memory>

namespace {

constexpr const char* kHistorySection = "MRU Search";

// A history is read when it is needed for the first time.
void LoadHistory(const char* profile, std::int32_t enabled, const char* stem, char* list, std::size_t width,
                 std::int32_t& count) {
  if (count >= 0) return;
  count = enabled == 0 ? 0 : LoadRecentStrings(profile, kHistorySection, stem, list, kRecentStrings, width);
}

void SetFlags(ViewOptions kind, const SearchWish& wish, SearchState& search) {
  ViewOptions flags = SEARCH_TEXT | kind;
  if (wish.fromTop) flags |= SEARCH_FROM_TOP;
  if (wish.markAll) flags |= SEARCH_MARK_ALL;
  search.SearchFlags = static_cast<std::uint16_t>(flags);
}

}  // namespace

void LoadTextHistory(const char* profile, std::int32_t enabled, RecentSearchLists& recent) {
  LoadHistory(profile, enabled, "Text", recent.RecentTexts[0], kRecentTextBytes, recent.RecentTextCount);
}

void LoadHexHistory(const char* profile, std::int32_t enabled, RecentSearchLists& recent) {
  LoadHistory(profile, enabled, "Hex", recent.RecentHex[0], kRecentHexBytes, recent.RecentHexCount);
}

FieldCheck SetTextSearch(std::string_view text, std::int32_t row, const SearchWish& wish, ViewOptions code,
                         RecentSearchLists& recent, SearchState& search) {
  const bool fromHistory = row >= 0 && !text.empty();
  const bool isUnicode = (code & VO_UNICODE) != 0;
  const std::string wanted =
      fromHistory && isUnicode ? HistoryText(recent.RecentTexts[row], code) : std::string(text);
  if (!fromHistory || isUnicode) {
    if (FieldCheck check = CheckTextKey(wanted, code); !check.accepted) return check;
  }
  if (!fromHistory) row = -1;
  // A history holds strings: the key in a code of one byte a character, else its text.
  char key[kRecentTextBytes] = {};
  if (row < 0) (isUnicode ? wanted : TextKeyOf(text, code)).copy(key, sizeof key - 1);
  const std::size_t length = TouchHistory(recent.RecentTexts[0], kRecentTextBytes, recent.RecentTextCount,
                                          recent.RecentTextsTouched, row, key);
  const std::string bytes = isUnicode ? TextKeyOf(wanted, code) : std::string(key, length);
  std::ranges::copy(bytes, search.SearchKey);
  search.SearchKeyLen = static_cast<std::int32_t>(bytes.size());
  search.TextCase = wish.caseSensitive;
  SetFlags((wish.caseSensitive ? SEARCH_CASE : ViewOptions{0}) | (code & VO_UNICODE), wish, search);
  return {};
}

HexKey SetHexKey(std::string_view text, std::int32_t least, SearchState& search) {
  HexKey key = ReadHexKey(text, least);
  if (key.IsGood()) {
    std::ranges::copy(key.bytes, search.SearchKey);
    search.SearchKeyLen = static_cast<std::int32_t>(key.bytes.size());
  }
  return key;
}

HexKey SetHexSearch(std::string_view text, const SearchWish& wish, RecentSearchLists& recent,
                    SearchState& search) {
  HexKey key = SetHexKey(text, 1, search);
  if (!key.IsGood()) return key;
  const auto entry = std::make_unique<char[]>(kRecentHexBytes);
  text.copy(entry.get(), kRecentHexBytes - 1);
  TouchHistory(recent.RecentHex[0], kRecentHexBytes, recent.RecentHexCount, recent.RecentHexTouched, -1,
               entry.get());
  SetFlags(SEARCH_CASE, wish, search);
  return key;
}
