// The search through files: against the standard library on the whole content, with hits at the borders of
// the slices and at both ends, and what Find Next and Mark All make of the results.
#include "search/search_engine.h"

#include <array>
#include <cerrno>
#include <cstring>
#include <random>

#include "marks/tag_list.h"
#include "tests/memory_origin.h"
#include "tests/scratch.h"
#include "tests/search/plain_search.h"

namespace {

constexpr std::size_t kSlice = kSearchReadBytes;

// A file in memory that an action has open.
struct Searched {
  explicit Searched(const std::string& content) : file{.bytes = content} { Open(); }
  void Open() { EXPECT_EQ(source.Open(""), 0); }
  void Write(const std::string& content) {
    file.bytes = content;
    Open();
  }
  FilePos Search(const std::string& key, bool folds, FilePos from) {
    return SearchFile(source, from, static_cast<std::int32_t>(key.size()), Bytes(key),
                      folds ? SEARCH_TEXT : SEARCH_CASE, job);
  }
  MemoryFile file;
  ByteSource source{std::make_unique<MemoryOrigin>(file)};
  LongJob job;
};

SearchState StateOf(const std::string& key, std::uint16_t flags) {
  SearchState search;
  std::copy(key.begin(), key.end(), search.SearchKey);
  search.SearchKeyLen = static_cast<std::int32_t>(key.size());
  search.SearchFlags = flags;
  return search;
}

std::vector<std::int64_t> Positions(const std::vector<TagEntry>& tags) {
  std::vector<std::int64_t> positions;
  for (const TagEntry& tag : tags)
    positions.push_back(tag.position.Offset());
  return positions;
}

// Files of lengths around the borders of the slices, random bytes of a small alphabet.
std::string RandomContent(std::mt19937& random) {
  const std::size_t lengths[] = {random() % 100, kSlice - 40 + random() % 80,
                                 2 * kSlice - 80 + random() % 120, random() % 150000};
  std::string content(lengths[random() % std::size(lengths)], '\0');
  const std::string alphabet = random() % 2 == 0 ? "aAbB" : "etaoinET AOIN\n@`";
  for (char& byte : content)
    byte = alphabet[random() % alphabet.size()];
  return content;
}

// Find, from any place, and Mark All.
TEST(Search, FindsWhatAPlainScanFinds) {
  std::mt19937 random(7);
  Searched file("");
  for (int i = 0; i < 200; ++i) {
    const std::string content = RandomContent(random);
    file.Write(content);
    for (int j = 0; j < 10; ++j) {
      const std::size_t keyLen = 1 + random() % (random() % 4 == 0 ? kSearchKeyBytes : 40);
      std::string key = content.substr(content.empty() ? 0 : random() % content.size(), keyLen);
      if (key.empty() || random() % 4 == 0) key += 'x';
      key.resize(std::min<std::size_t>(key.size(), kSearchKeyBytes));
      const bool folds = random() % 2 == 0;
      const FilePos from = random() % 3 == 0 ? 0 : FilePos::At(random() % (content.size() + 2));
      SCOPED_TRACE("length " + std::to_string(content.size()) + ", key " + testing::PrintToString(key));
      ASSERT_EQ(file.Search(key, folds, from), FilePos::At(PlainFind(content, key, folds, from.Offset())))
          << from.Offset();
      if (j > 0) continue;
      SearchState search = StateOf(key.substr(0, 1 + random() % 8), folds ? SEARCH_TEXT : SEARCH_CASE);
      key.resize(static_cast<std::size_t>(search.SearchKeyLen));
      std::vector<TagEntry> tags;
      std::vector<std::int64_t> expected = PlainFindAll(content, key, folds);
      const FilePos first = expected.empty() ? kSearchNoHit : FilePos::At(expected.front());
      if (expected.size() > kTagSlots - 1) expected.resize(kTagSlots - 1);
      for (int again = 0; again < 2; ++again) {  // which adds nothing
        ASSERT_EQ(MarkAll(file.source, search, tags, kTagSlots - 1, file.job), first);
        ASSERT_EQ(Positions(tags), expected);
      }
    }
  }
}

TEST(SearchFile, FindsAKeyAtEachPlaceOfABorder) {
  for (const std::size_t keyLen : {1u, 2u, 36u}) {
    const std::string key = "K" + std::string(keyLen - 1, 'y');
    for (std::size_t back = 0; back <= keyLen + 1; ++back) {
      std::string content(2 * kSlice + 200, '.');
      const std::size_t place = 2 * kSlice - back;
      content.replace(place, keyLen, key);
      Searched file(content);
      const auto expected = FilePos::At(place);
      ASSERT_EQ(file.Search(key, false, 0), expected) << keyLen;
      ASSERT_EQ(file.Search(key, true, expected), expected) << keyLen;
      ASSERT_EQ(file.Search(key, true, expected + 1), kSearchNoHit) << keyLen;
    }
  }
}

TEST(SearchFile, EndsOfTheFile) {
  struct Case {
    const char* what;
    std::string opened, content;  // when the action began, and now
    const char* key;
    FilePos from, expected;
  };
  const std::string slice(kSlice, '.');
  const Case cases[] = {
      {"key longer than the file", "hell", "hell", "hello", 0, kSearchNoHit},
      {"start exactly at the last place", "xxhello", "xxhello", "hello", 2, 2},
      {"no key", "hello", "hello", "", 0, kSearchNoKey},
      {"no key at the end", "hello", "hello", "", 6, kSearchNoHit},
      {"grown meanwhile", slice + slice + "hell", slice + slice + "hello", "hello", 0, kSearchNoHit},
      {"shrunk to nothing", std::string(5000, '.'), "", "hello", 0, kSearchNoHit},
      {"shrunk: the rest is searched", std::string(90000, '.'), "..hello", "hello", 0, 2},
      {"shrunk below the start", std::string(90000, '.'), "..hello", "hello", 80000, kSearchNoHit},
  };
  for (const Case& c : cases) {
    Searched file(c.opened);
    file.file.bytes = c.content;
    EXPECT_EQ(file.Search(c.key, false, c.from), c.expected) << c.what;
  }
  Searched grown("...");
  grown.Write("...hello");
  EXPECT_EQ(grown.Search("hello", true, 0), FilePos::At(3)) << "in the next action";
  // On the disk, behind 4 GB.
  constexpr FilePos kPlace = (FilePos::At(5LL << 30)) + 12345;
  const ScratchFile far("");
  std::filesystem::resize_file(far.Path(), static_cast<std::uintmax_t>(kPlace.Offset()));
  PutContent(far.Path(), "needle", std::ios::app);
  ByteSource source;
  LongJob job;
  ASSERT_EQ(source.Open(far.Path().c_str()), 0);
  EXPECT_EQ(SearchFile(source, (FilePos::At(5LL << 30)) - 100, 6, Bytes("NEEDLE"), SEARCH_TEXT, job), kPlace);
  EXPECT_EQ(SearchFile(source, kPlace + 1, 6, Bytes("needle"), SEARCH_CASE, job), kSearchNoHit);
  EXPECT_EQ(job.end, kPlace + 6);
  EXPECT_GT(job.position, kPlace - kSearchReadBytes);
}

// A failed read is told apart from no hit, with its place; a search that was stopped has found nothing.
TEST(SearchFile, FailuresAndStopsAreNoAnswers) {
  Searched file(std::string(5 * kSlice, '.') + "hit");
  const SearchState search = StateOf("hit", SEARCH_TEXT);
  std::vector<TagEntry> tags = {{4, kTagByUser}};
  file.file.failure = EIO;
  EXPECT_EQ(file.Search("hit", false, 2 * kSearchReadBytes + 5), kSearchReadFailed);
  EXPECT_EQ(file.source.Failure(), EIO);
  EXPECT_EQ(file.job.position, FilePos::At(2 * kSearchReadBytes + 5));
  EXPECT_EQ(MarkAll(file.source, search, tags, kTagSlots - 1, file.job), kSearchReadFailed);
  file.file.failure = 0;
  file.Open();
  file.job.stop = true;
  EXPECT_EQ(file.Search("hit", false, 0), kSearchCanceled);
  EXPECT_EQ(FindNext(file.source, search, 0, kNoPosition, file.job).hit, kSearchCanceled);
  EXPECT_EQ(MarkAll(file.source, search, tags, kTagSlots - 1, file.job), kSearchCanceled);
}

TEST(FindNext, Steps) {
  //            0         10        20        30
  Searched file("one two one two One two one.....");
  SearchState search = StateOf("one", SEARCH_TEXT | SEARCH_CASE);
  FilePos start = kNoPosition;
  FilePos end = kNoPosition;
  struct Step {
    const char* what;
    FilePos paintedTop;
    FilePos next;  // stored before, unless it is below -1
    FilePos hit, nextAfter;
  };
  constexpr FilePos kAsItIs = -2;
  const Step steps[] = {
      {"from the top of the screen", 0, kAsItIs, 0, -1},   {"behind the selection", 0, kAsItIs, 8, -1},
      {"scrolled past the hit", 12, kAsItIs, 24, -1},      {"no further hit", 12, kAsItIs, -1, 0},
      {"then from the top", 12, kAsItIs, 0, -1},           {"start from top", 20, 0, 0, -1},
      {"a start in another, shorter file", 20, 32, 0, -1}, {"a start left of the screen", 20, 9, 24, -1},
  };
  for (const Step& step : steps) {
    if (step.next != kAsItIs) search.SearchNext = step.next;
    const FindResult found = FindNext(file.source, search, step.paintedTop, end, file.job);
    start = found.selStart;
    end = found.selEnd;
    search.SearchNext = found.searchNext;
    EXPECT_EQ(found.hit, step.hit) << step.what;
    EXPECT_EQ(search.SearchNext, step.nextAfter) << step.what;
    EXPECT_EQ(start, step.hit) << step.what;
    EXPECT_EQ(end, step.hit < 0 ? -1 : step.hit + 3) << step.what;
  }
}

TEST(HitIsOnScreen, LinesFromTheTopLineOn) {
  // Lines of ten bytes from offset 100 on; the view's run has lines 2 to 9, its top line is line 4.
  std::array<LineEntry, 12> entries{};
  for (std::size_t i = 0; i < entries.size(); ++i)
    entries[i].Lpos = FilePos::At(100 + 10 * i);
  const LineArray lines{entries.data(), 12, 4, 2, 10};
  for (const auto& [rows, first, last] : {std::array{3, 140, 169}, {1, 140, 149}, {50, 140, 199}}) {
    for (const int hit : {first - 1, first, last, last + 1})
      EXPECT_EQ(HitIsOnScreen(lines, rows, FilePos::At(hit)), first <= hit && hit <= last)
          << rows << " rows, " << hit;
  }
}

TEST(MarkAll, EarlierTagsStayAndGainTheFlag) {
  Searched file("..ab..ab..ab");
  const SearchState search = StateOf("AB", SEARCH_TEXT);
  for (const bool full : {false, true}) {  // a full list takes nothing, but the first hit is told
    std::vector<TagEntry> tags = {{6, kTagByUser}, {7, kTagByUser}};
    EXPECT_EQ(MarkAll(file.source, search, tags, full ? 2 : 4, file.job), FilePos::At(2));
    EXPECT_EQ(Positions(tags),
              full ? std::vector<std::int64_t>({6, 7}) : std::vector<std::int64_t>({2, 6, 7, 10}));
    EXPECT_EQ(tags[full ? 0 : 1].flags, full ? kTagByUser : kTagByUser | kTagBySearch);
  }
}

// However many hits there are, no byte is read twice; a full list ends it.
TEST(MarkAll, IsOnePass) {
  constexpr std::size_t kLength = 4 << 20;
  for (const std::size_t every : {8192u, 64u}) {  // bytes from hit to hit; the latter fill the list
    std::string content(kLength, '.');
    for (std::size_t i = 0; i < kLength; i += every)
      content.replace(i, 3, "hit");
    Searched file(content);
    std::vector<TagEntry> tags;
    EXPECT_EQ(MarkAll(file.source, StateOf("hit", SEARCH_TEXT), tags, kTagSlots - 1, file.job),
              FilePos::At(0));
    if (every == 64)
      EXPECT_LE(file.file.bytesRead, 64 * 1000 + kSearchReadBytes);
    else
      EXPECT_EQ(file.file.bytesRead, std::int64_t{kLength});
  }
}

}  // namespace
