// The search for text in the codes of several bytes a character, against a plain search among characters.
#include <gtest/gtest.h>

#include <random>

#include "codes/decoders.h"
#include "engine/text_bytes.h"
#include "platform/cells.h"
#include "platform/unicode.h"
#include "search/search_engine.h"
#include "search/set_search.h"
#include "tests/memory_origin.h"

namespace {

constexpr ViewOptions kUnicodeCodes[] = {VO_UTF8, VO_UTF16LE, VO_UTF16BE};

std::string Coded(std::u32string_view text, ViewOptions code) {
  std::string bytes;
  for (const char32_t one : text) {
    bytes += code == VO_UTF8      ? Utf8::Encode(one)
             : code == VO_UTF16LE ? Utf16Le::Encode(one)
                                  : Utf16Be::Encode(one);
  }
  return bytes;
}

using Place = std::pair<std::int64_t, std::int64_t>;

std::vector<Place> PlainHits(std::u32string_view text, std::u32string_view key, ViewOptions code,
                             bool folds) {
  std::vector<std::int64_t> offsets = {0};
  for (const char32_t one : text)
    offsets.push_back(offsets.back() + std::ssize(Coded({&one, 1}, code)));
  const auto equal = [folds](char32_t a, char32_t b) {
    return a == b || (folds && SimpleFold(a) == SimpleFold(b));
  };
  std::vector<Place> hits;
  for (std::size_t at = 0; at + key.size() <= text.size(); ++at) {
    if (std::equal(key.begin(), key.end(), text.begin() + static_cast<std::ptrdiff_t>(at), equal))
      hits.emplace_back(offsets[at], offsets[at + key.size()]);
  }
  return hits;
}

std::vector<Place> Hits(const std::string& bytes, const std::string& key, ViewOptions code, bool folds) {
  MemoryFile file{.bytes = bytes};
  ByteSource source(std::make_unique<MemoryOrigin>(file));
  EXPECT_EQ(source.Open(""), 0);
  SearchState search;
  std::ranges::copy(key, search.SearchKey);
  search.SearchKeyLen = static_cast<std::int32_t>(key.size());
  search.SearchFlags = static_cast<std::uint16_t>(SEARCH_TEXT | code | (folds ? 0 : SEARCH_CASE));
  search.SearchNext = 0;
  std::vector<Place> hits;
  for (LongJob job;;) {
    const FindResult found = FindNext(source, search, 0, 0, job);
    if (found.hit < 0) return hits;
    EXPECT_EQ(found.hit, found.selStart);
    hits.emplace_back(found.selStart.Offset(), found.selEnd.Offset());
    search.SearchNext = found.hit + 1;
    if (search.SearchNext >= source.Length()) return hits;
  }
}

// Characters whose forms have one length, several, or are none; those that look like others in single bytes.
TEST(TextSearch, FindsWhatAPlainSearchFinds) {
  const std::u32string alphabets[] = {U"kK\u212AsS\u017Fx", U"\u03A3\u03C3\u03C2\u0436\u0416\u0440\u0420a",
                                      U"\u00DF\u1E9E\U00010400\U00010428\u4130\u3041\u4100\u0041",
                                      U"aAbB.\u00E9\u00C9"};
  std::mt19937 random(5);
  std::size_t all = 0;
  for (int round = 0; round < 400; ++round) {
    const std::u32string& alphabet = alphabets[static_cast<std::size_t>(round) % std::size(alphabets)];
    const auto make = [&](std::size_t length) {
      std::u32string text;
      while (text.size() < length)
        text += alphabet[random() % alphabet.size()];
      return text;
    };
    const std::u32string key = make(1 + random() % 4);
    // So long that hits lie on the borders of slices, with few others.
    std::u32string text = make(random() % 60);
    if (round % 3 == 0) text += std::u32string(kSearchReadBytes - random() % 140, U'.') + make(90);
    const ViewOptions code = kUnicodeCodes[random() % 3];
    const bool folds = random() % 4 != 0;
    const std::vector<Place> wanted = PlainHits(text, key, code, folds);
    all += wanted.size();
    ASSERT_EQ(Hits(Coded(text, code), Coded(key, code), code, folds), wanted)
        << "round " << round << ", key " << CellsToUtf8(key) << ", code " << code;
  }
  EXPECT_GT(all, 1000U);
}

TEST(TextSearch, IsDefinedInTheCodeOfTheFile) {
  const auto recent = std::make_unique<RecentSearchLists>();
  recent->RecentTextCount = 0;
  SearchState search;
  const auto key = [&search] {
    return std::string(reinterpret_cast<const char*>(search.SearchKey),
                       static_cast<std::size_t>(search.SearchKeyLen));
  };
  for (const ViewOptions code : kUnicodeCodes) {
    EXPECT_TRUE(SetTextSearch("Жk\U0001F680", -1, {}, code, *recent, search).accepted);
    EXPECT_EQ(key(), Coded(U"Жk\U0001F680", code));
    EXPECT_EQ(search.SearchFlags, SEARCH_TEXT | code);
  }
  EXPECT_EQ(recent->RecentTextCount, 1) << "the history holds the text, once";
  EXPECT_TRUE(SetTextSearch("x", 0, {}, VO_UTF16BE, *recent, search).accepted);
  EXPECT_EQ(key(), Coded(U"Жk\U0001F680", VO_UTF16BE)) << "an entry of the history";
  EXPECT_FALSE(SetTextSearch("Ж", -1, {}, 0, *recent, search).accepted) << "one byte a character";
  EXPECT_FALSE(SetTextSearch(std::string(2100, 'x'), -1, {}, VO_UTF16LE, *recent, search).accepted);
  recent->RecentTexts[1][0] = '\xE9';  // kept in ANSI
  recent->RecentTextCount = 2;
  EXPECT_EQ(HistoryText(recent->RecentTexts[1], VO_UTF8), "é");
}

}  // namespace
