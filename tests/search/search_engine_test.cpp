// The search through files: against the standard library on the whole content, with hits at the borders of
// the slices and at both ends, and what Find Next and Mark All make of the results.
#include "search/search_engine.h"

#include <array>
#include <cstring>
#include <random>

#include "marks/tag_list.h"
#include "platform/posix/file_counters.h"
#include "tests/scratch.h"
#include "tests/search/plain_search.h"

namespace {

constexpr FilePos kMegabyte = FilePos{1} << 20;
constexpr std::size_t kSlice = kSearchReadBytes;

// A file, and the view's knowledge of it: the content's length unless another is given.
struct Searched {
  explicit Searched(const std::string& content, FilePos length = -1) : scratch(content) {
    scratch.Path().copy(file.Fname, sizeof file.Fname - 1);
    file.Flen = length < 0 ? static_cast<FilePos>(content.size()) : length;
  }
  void Write(const std::string& content) {
    scratch.Write(content);
    file.Flen = static_cast<FilePos>(content.size());
  }
  // Makes the file as long as the view takes it for, with a hole.
  Searched& Grown() {
    std::filesystem::resize_file(scratch.Path(), static_cast<std::uintmax_t>(file.Flen));
    return *this;
  }
  FilePos Search(const std::string& key, bool folds, FilePos from, const SearchProgress& progress = {}) {
    file.Fcur = from;
    return SearchFile(file, static_cast<std::int32_t>(key.size()), Bytes(key),
                      folds ? SEARCH_TEXT : SEARCH_CASE, progress);
  }
  ScratchFile scratch;
  ViewFile file;
};

SearchState StateOf(const std::string& key, std::uint16_t flags) {
  SearchState search;
  std::copy(key.begin(), key.end(), search.SearchKey);
  search.SearchKeyLen = static_cast<std::int32_t>(key.size());
  search.SearchFlags = flags;
  return search;
}

struct Tags {
  explicit Tags(std::int16_t capacity = kTagSlots - 1) { list = {entries.data(), capacity, 0}; }
  [[nodiscard]] std::vector<std::int64_t> Positions() const {
    std::vector<std::int64_t> positions;
    for (std::int16_t i = 0; i < list.count; ++i)
      positions.push_back(list.entries[i].position);
    return positions;
  }
  std::array<TagEntry, kTagSlots> entries{};
  TagList list;
};

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
      const std::size_t keyLen = 1 + random() % kSearchKeyBytes;
      std::string key = content.substr(content.empty() ? 0 : random() % content.size(), keyLen);
      if (key.empty() || random() % 4 == 0) key += 'x';
      key.resize(std::min<std::size_t>(key.size(), kSearchKeyBytes));
      const bool folds = random() % 2 == 0;
      const FilePos from = random() % 3 == 0 ? 0 : static_cast<FilePos>(random() % (content.size() + 2));
      SCOPED_TRACE("length " + std::to_string(content.size()) + ", key " + testing::PrintToString(key));
      ASSERT_EQ(file.Search(key, folds, from), PlainFind(content, key, folds, from)) << from;
      if (j > 0) continue;
      SearchState search = StateOf(key.substr(0, 1 + random() % 8), folds ? SEARCH_TEXT : SEARCH_CASE);
      key.resize(static_cast<std::size_t>(search.SearchKeyLen));
      search.SearchNext = 5;
      Tags tags;
      std::vector<std::int64_t> expected = PlainFindAll(content, key, folds);
      const FilePos first = expected.empty() ? kSearchNoHit : expected.front();
      if (expected.size() > kTagSlots - 1) expected.resize(kTagSlots - 1);
      for (int again = 0; again < 2; ++again) {  // which adds nothing
        ASSERT_EQ(MarkAll(file.file, search, tags.list), first);
        ASSERT_EQ(tags.Positions(), expected);
        ASSERT_EQ(search.SearchNext, kNoPosition);
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
      const auto expected = static_cast<FilePos>(place);
      ASSERT_EQ(file.Search(key, false, 0), expected) << keyLen;
      ASSERT_EQ(file.Search(key, true, expected), expected) << keyLen;
      ASSERT_EQ(file.Search(key, true, expected + 1), kSearchNoHit) << keyLen;
    }
  }
}

TEST(SearchFile, EndsOfTheFile) {
  struct Case {
    const char* what;
    std::string content;
    FilePos knownLength;  // -1: the content's
    const char* key;
    FilePos from, expected;
  };
  const std::string slice(kSlice, '.');
  const Case cases[] = {
      {"key longer than the file", "hell", -1, "hello", 0, kSearchNoHit},
      {"start exactly at the last place", "xxhello", -1, "hello", 2, 2},
      {"no key", "hello", -1, "", 0, kSearchNoKey},
      {"no key at the end", "hello", -1, "", 6, kSearchNoHit},
      {"grown", slice + slice + "hello", 2 * kSearchReadBytes + 4, "hello", 0, kSearchNoHit},
      {"shrunk to nothing", "", 5000, "hello", 0, kSearchNoHit},
      {"shrunk: the rest is searched", "..hello", 90000, "hello", 0, 2},
      {"shrunk below the start", "..hello", 90000, "hello", 80000, kSearchNoHit},
  };
  for (const Case& c : cases)
    EXPECT_EQ(Searched(c.content, c.knownLength).Search(c.key, false, c.from), c.expected) << c.what;
  Searched missing("", 100);
  missing.scratch.Remove();
  EXPECT_EQ(missing.Search("key", false, 0), kSearchNoFile);
  constexpr FilePos kPlace = (FilePos{5} << 30) + 12345;  // behind 4 GB
  Searched far("", kPlace);
  far.Grown().scratch.Append("needle");
  far.file.Flen += 6;
  EXPECT_EQ(far.Search("NEEDLE", true, (FilePos{5} << 30) - 100), kPlace);
  EXPECT_EQ(far.Search("needle", false, kPlace + 1), kSearchNoHit);
}

// What a long search tells, and what happens meanwhile.
struct Watch {
  std::vector<FilePos> positions;
  bool cancels = false;
  std::string shrink = {};  // a file to cut to 1000 bytes at the first call

  static bool Report(void* context, FilePos position, FilePos end) {
    auto& watch = *static_cast<Watch*>(context);
    watch.positions.push_back(position);
    EXPECT_LE(position, end);
    if (!watch.shrink.empty()) std::filesystem::resize_file(watch.shrink, 1000);
    return !watch.cancels;
  }
  [[nodiscard]] SearchProgress Progress() { return {&Watch::Report, this}; }
};

TEST(SearchFile, ReportsProgressAndCanBeCanceled) {
  Searched file("start", 100 * kMegabyte);
  file.Grown();
  Watch watch;
  EXPECT_EQ(file.Search("nowhere", true, 0, watch.Progress()), kSearchNoHit);
  ASSERT_GE(watch.positions.size(), 6u);  // at least every 16 MB
  EXPECT_TRUE(std::is_sorted(watch.positions.begin(), watch.positions.end()));
  Watch impatient{{}, true};
  EXPECT_EQ(file.Search("nowhere", true, 0, impatient.Progress()), kSearchCanceled);
  EXPECT_EQ(impatient.positions.size(), 1u);
  Watch shrinks{{}, false, file.scratch.Path()};
  EXPECT_EQ(file.Search("nowhere", false, 0, shrinks.Progress()), kSearchNoHit);
  EXPECT_EQ(shrinks.positions.size(), 1u);
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
    EXPECT_EQ(FindNext(file.file, search, step.paintedTop, start, end), step.hit) << step.what;
    EXPECT_EQ(search.SearchNext, step.nextAfter) << step.what;
    EXPECT_EQ(start, step.hit) << step.what;
    EXPECT_EQ(end, step.hit < 0 ? -1 : step.hit + 3) << step.what;
  }
}

TEST(HitIsOnScreen, LinesFromTheTopLineOn) {
  // Lines of ten bytes from offset 100 on; the view's run has lines 2 to 9, its top line is line 4.
  std::array<LineEntry, 12> entries{};
  for (std::size_t i = 0; i < entries.size(); ++i)
    entries[i].Lpos = 100 + 10 * static_cast<FilePos>(i);
  const LineArray lines{entries.data(), 12, 4, 2, 10};
  for (const auto& [rows, first, last] : {std::array{3, 140, 169}, {1, 140, 149}, {50, 140, 199}}) {
    for (const int hit : {first - 1, first, last, last + 1})
      EXPECT_EQ(HitIsOnScreen(lines, rows, hit), first <= hit && hit <= last) << rows << " rows, " << hit;
  }
}

TEST(MarkAll, EarlierTagsStayAndGainTheFlag) {
  Searched file("..ab..ab..ab");
  SearchState search = StateOf("AB", SEARCH_TEXT);
  for (const bool full : {false, true}) {  // a full list takes nothing, but the first hit is told
    Tags tags(full ? 2 : 4);
    TagInsert(tags.list, 6, kTagByUser);
    TagInsert(tags.list, 7, kTagByUser);
    EXPECT_EQ(MarkAll(file.file, search, tags.list), 2);
    EXPECT_EQ(tags.Positions(),
              full ? std::vector<std::int64_t>({6, 7}) : std::vector<std::int64_t>({2, 6, 7, 10}));
    EXPECT_EQ(tags.entries[full ? 0 : 1].flags, full ? kTagByUser : kTagByUser | kTagBySearch);
  }
}

// However many hits there are, the file is opened once and no byte is read twice; a full list ends it.
TEST(MarkAll, IsOnePass) {
  constexpr std::size_t kLength = 4 << 20;
  for (const std::size_t every : {8192u, 64u}) {  // bytes from hit to hit; the latter fill the list
    std::string content(kLength, '.');
    for (std::size_t i = 0; i < kLength; i += every)
      content.replace(i, 3, "hit");
    Searched file(content);
    SearchState search = StateOf("hit", SEARCH_TEXT);
    Tags tags;
    const FileCounters before = CountersOfFiles();
    static_cast<void>(MarkAll(file.file, search, tags.list));
    EXPECT_EQ(CountersOfFiles().opened - before.opened, 1);
    const std::int64_t read = CountersOfFiles().bytesRead - before.bytesRead;
    if (every == 64)
      EXPECT_LE(read, 64 * 1000 + kSearchReadBytes);
    else
      EXPECT_EQ(read, std::int64_t{kLength});
  }
}

TEST(Canceled, NothingHasChanged) {
  Searched file("hit hit", 100 * kMegabyte);
  file.Grown();
  Watch watch{{}, true};
  SearchState search = StateOf("hit", SEARCH_TEXT);
  search.SearchNext = 4 * kMegabyte;
  FilePos start = 17;
  FilePos end = 20;
  EXPECT_EQ(FindNext(file.file, search, 0, start, end, watch.Progress()), kSearchCanceled);
  EXPECT_EQ(start, 17);
  EXPECT_EQ(end, 20);
  Tags tags;
  TagInsert(tags.list, 4, kTagByUser);
  EXPECT_EQ(MarkAll(file.file, search, tags.list, watch.Progress()), kSearchCanceled);
  EXPECT_EQ(tags.Positions(), (std::vector<std::int64_t>{4}));
  EXPECT_EQ(tags.entries[0].flags, kTagByUser);
  EXPECT_EQ(search.SearchNext, 4 * kMegabyte);
}

}  // namespace
