// The search through files: against the standard library on the whole content, with hits at the borders of
// the slices and at both ends, and what Find Next and Mark All make of the results.
#include "search/search_engine.h"

#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <filesystem>
#include <random>
#include <string>
#include <vector>

#include "marks/tag_list.h"
#include "platform/posix/file_counters.h"
#include "tests/engine/scratch_file.h"
#include "tests/search/plain_search.h"

namespace {

ViewFile FileOf(const std::string& path, FilePos length) {
  ViewFile file;
  file.Flen = length;
  std::strncpy(file.Fname, path.c_str(), kPathBytes - 1);
  return file;
}

SearchState StateOf(const std::string& key, std::uint16_t flags) {
  SearchState search;
  std::copy(key.begin(), key.end(), search.SearchKey);
  search.SearchKeyLen = static_cast<std::int32_t>(key.size());
  search.SearchFlags = flags;
  return search;
}

FilePos Search(ViewFile& file, const std::string& key, bool folds, FilePos from,
               const SearchProgress& progress = {}) {
  file.Fcur = from;
  return SearchFile(file, static_cast<std::int32_t>(key.size()), Bytes(key),
                    folds ? SEARCH_TEXT : SEARCH_CASE, progress);
}

struct Tags {
  explicit Tags(std::int16_t capacity = kTagSlots - 1) { list = {entries.data(), capacity, 0}; }
  Tags(const Tags&) = delete;
  Tags& operator=(const Tags&) = delete;
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
  constexpr std::size_t kSlice = kSearchReadBytes;
  const std::size_t lengths[] = {random() % 100, kSlice - 40 + random() % 80,
                                 2 * kSlice - 80 + random() % 120, random() % 150000};
  std::string content(lengths[random() % std::size(lengths)], '\0');
  const char* const alphabet = random() % 2 == 0 ? "aAbB" : "etaoinET AOIN\n@`";
  const std::size_t letters = std::strlen(alphabet);
  for (char& byte : content)
    byte = alphabet[random() % letters];
  return content;
}

TEST(SearchFile, FindsWhatAPlainScanFinds) {
  std::mt19937 random(7);
  ScratchFile scratch("");
  for (int i = 0; i < 300; ++i) {
    const std::string content = RandomContent(random);
    scratch.Write(content);
    const auto length = static_cast<FilePos>(content.size());
    ViewFile file = FileOf(scratch.Path(), length);
    for (int j = 0; j < 10; ++j) {
      const std::size_t keyLen = 1 + random() % kSearchKeyBytes;
      const std::size_t where = content.empty() ? 0 : random() % content.size();
      std::string key = content.substr(where, keyLen);
      if (key.empty() || random() % 4 == 0) key += 'x';
      key.resize(std::min<std::size_t>(key.size(), kSearchKeyBytes));
      const bool folds = random() % 2 == 0;
      const FilePos from = random() % 3 == 0 ? 0 : static_cast<FilePos>(random() % (content.size() + 2));
      ASSERT_EQ(Search(file, key, folds, from), PlainFind(content, key, folds, from))
          << "length " << length << ", key " << testing::PrintToString(key) << " from " << from;
    }
  }
}

TEST(SearchFile, FindsAKeyAtEachPlaceOfABorder) {
  for (const std::size_t keyLen : {1u, 2u, 32u, 36u}) {
    const std::string key = "K" + std::string(keyLen - 1, 'y');
    for (const std::size_t reads : {1u, 2u, 3u}) {
      for (std::size_t back = 0; back <= keyLen + 1; ++back) {
        const std::size_t place = reads * kSearchReadBytes - back;
        std::string content(reads * kSearchReadBytes + 200, '.');
        content.replace(place, keyLen, key);
        const ScratchFile scratch(content);
        ViewFile file = FileOf(scratch.Path(), static_cast<FilePos>(content.size()));
        const auto expected = static_cast<FilePos>(place);
        ASSERT_EQ(Search(file, key, false, 0), expected) << keyLen;
        ASSERT_EQ(Search(file, key, false, expected), expected) << keyLen;
        ASSERT_EQ(Search(file, key, true, expected - 1), expected) << keyLen;
        ASSERT_EQ(Search(file, key, true, expected + 1), kSearchNoHit) << keyLen;
      }
    }
  }
}

TEST(SearchFile, EndsOfTheFile) {
  struct Case {
    const char* what;
    std::string content;
    FilePos knownLength;  // -1: the content's
    std::string key;
    FilePos from;
    FilePos expected;
  };
  const std::string slice(kSearchReadBytes, '.');
  const Case cases[] = {
      {"empty file", "", -1, "a", 0, kSearchNoHit},
      {"key as long as the file", "hello", -1, "hello", 0, 0},
      {"key longer than the file", "hell", -1, "hello", 0, kSearchNoHit},
      {"start exactly at the last place", "xxhello", -1, "hello", 2, 2},
      {"start behind the last place", "xxhello", -1, "hello", 3, kSearchNoHit},
      {"start at the end", "hello", -1, "o", 5, kSearchNoHit},
      {"start far behind the end", "hello", -1, "o", 5000, kSearchNoHit},
      {"hit ends with the one slice", slice.substr(5) + "hello", -1, "hello", 0, kSearchReadBytes - 5},
      {"no key", "hello", -1, "", 0, kSearchNoKey},
      {"no key at the end", "hello", -1, "", 6, kSearchNoHit},
      {"grown: bounded by the known length", "..hello", 6, "hello", 0, kSearchNoHit},
      {"grown: bounded in a later slice", slice + slice + "hello", 2 * kSearchReadBytes + 4, "hello", 0,
       kSearchNoHit},
      {"shrunk: fewer bytes than the key", "hel", 5000, "hello", 0, kSearchNoHit},
      {"shrunk: to nothing", "", 5000, "hello", 0, kSearchNoHit},
      {"shrunk: the rest is searched", "..hello", 90000, "hello", 0, 2},
      {"shrunk: below the start", "..hello", 90000, "hello", 80000, kSearchNoHit},
      {"shrunk: ends with a slice", slice, 90000, "hello", 0, kSearchNoHit},
  };
  for (const Case& c : cases) {
    const ScratchFile scratch(c.content);
    ViewFile file =
        FileOf(scratch.Path(), c.knownLength < 0 ? static_cast<FilePos>(c.content.size()) : c.knownLength);
    EXPECT_EQ(Search(file, c.key, false, c.from), c.expected) << c.what;
  }
  ViewFile missing = FileOf("/no/such/file", 100);
  EXPECT_EQ(Search(missing, "key", false, 0), kSearchNoFile);
}

TEST(SearchFile, PositionsBehindFourGigabytes) {
  const ScratchFile scratch("");
  constexpr FilePos kPlace = (FilePos{5} << 30) + 12345;
  {
    std::ofstream out(scratch.Path(), std::ios::binary);
    out.seekp(kPlace);
    out << "needle";
    ASSERT_TRUE(out.good());
  }
  ViewFile file = FileOf(scratch.Path(), kPlace + 6);
  EXPECT_EQ(Search(file, "NEEDLE", true, (FilePos{5} << 30) - 100), kPlace);
  EXPECT_EQ(Search(file, "needle", false, kPlace + 1), kSearchNoHit);
}

// What a long search tells, and what happens meanwhile.
struct Watch {
  std::vector<FilePos> positions;
  FilePos cancelAt = -1;    // the first position from which on the answer is no
  std::string shrink = {};  // a file to cut to 1000 bytes at the first call

  static bool Report(void* context, FilePos position, FilePos end) {
    auto& watch = *static_cast<Watch*>(context);
    watch.positions.push_back(position);
    EXPECT_LE(position, end);
    if (!watch.shrink.empty()) std::filesystem::resize_file(watch.shrink, 1000);
    return watch.cancelAt < 0 || position < watch.cancelAt;
  }
  [[nodiscard]] SearchProgress Progress() { return {&Watch::Report, this}; }
};

constexpr FilePos kMegabyte = FilePos{1} << 20;

TEST(SearchFile, ReportsProgressAndCanBeCanceled) {
  const ScratchFile scratch("start");
  std::filesystem::resize_file(scratch.Path(), 100 * kMegabyte);
  ViewFile file = FileOf(scratch.Path(), 100 * kMegabyte);

  Watch watch;
  EXPECT_EQ(Search(file, "nowhere", true, 0, watch.Progress()), kSearchNoHit);
  ASSERT_GE(watch.positions.size(), 6u);  // at least every 16 MB
  EXPECT_TRUE(std::is_sorted(watch.positions.begin(), watch.positions.end()));

  Watch impatient;
  impatient.cancelAt = 0;
  EXPECT_EQ(Search(file, "nowhere", true, 0, impatient.Progress()), kSearchCanceled);
  EXPECT_EQ(impatient.positions.size(), 1u);

  Watch quick;
  EXPECT_EQ(Search(file, "start", true, 0, quick.Progress()), 0);
  EXPECT_TRUE(quick.positions.empty());
}

TEST(SearchFile, AFileThatShrinksMeanwhileHasNoHit) {
  const ScratchFile scratch("");
  std::filesystem::resize_file(scratch.Path(), 40 * kMegabyte);
  ViewFile file = FileOf(scratch.Path(), 40 * kMegabyte);
  Watch watch;
  watch.shrink = scratch.Path();
  EXPECT_EQ(Search(file, "nowhere", false, 0, watch.Progress()), kSearchNoHit);
  EXPECT_EQ(watch.positions.size(), 1u);
}

TEST(FindNext, Steps) {
  //                         0         10        20        30
  const ScratchFile scratch("one two one two One two one.....");
  ViewFile file = FileOf(scratch.Path(), 32);
  SearchState search = StateOf("one", SEARCH_TEXT | SEARCH_CASE);
  FilePos start = kNoPosition;
  FilePos end = kNoPosition;
  struct Step {
    const char* what;
    FilePos paintedTop;
    FilePos next;  // stored before, unless it is below -1
    FilePos hit;
    FilePos nextAfter;
  };
  constexpr FilePos kAsItIs = -2;
  const Step steps[] = {
      {"from the top of the screen", 0, kAsItIs, 0, -1},
      {"behind the selection", 0, kAsItIs, 8, -1},
      {"scrolled past the hit", 12, kAsItIs, 24, -1},
      {"no further hit", 12, kAsItIs, -1, 0},
      {"then from the top", 12, kAsItIs, 0, -1},
      {"start from top", 20, 0, 0, -1},
      {"a start in another, shorter file", 20, 32, 0, -1},
      {"a start that is left of the screen", 20, 9, 24, -1},
  };
  for (const Step& step : steps) {
    if (step.next != kAsItIs) search.SearchNext = step.next;
    EXPECT_EQ(FindNext(file, search, step.paintedTop, start, end), step.hit) << step.what;
    EXPECT_EQ(search.SearchNext, step.nextAfter) << step.what;
    EXPECT_EQ(start, step.hit) << step.what;
    EXPECT_EQ(end, step.hit < 0 ? -1 : step.hit + 3) << step.what;
  }
}

TEST(FindNext, HitsDoNotOverlapAndAKeyMustBeDefined) {
  const ScratchFile scratch("aaaaa");
  ViewFile file = FileOf(scratch.Path(), 5);
  SearchState search = StateOf("aa", SEARCH_TEXT);
  FilePos start = kNoPosition;
  FilePos end = kNoPosition;
  EXPECT_EQ(FindNext(file, search, 0, start, end), 0);
  EXPECT_EQ(FindNext(file, search, 0, start, end), 2);
  EXPECT_EQ(FindNext(file, search, 0, start, end), kSearchNoHit);

  EXPECT_TRUE(SearchIsDefined(search));
  EXPECT_FALSE(SearchIsDefined(SearchState{}));
  EXPECT_FALSE(SearchIsDefined(StateOf("a", 0)));
}

TEST(HitIsOnScreen, LinesFromTheTopLineOn) {
  // Lines of ten bytes from offset 100 on; the view's run has lines 2 to 9, its top line is line 4.
  std::array<LineEntry, 12> entries{};
  for (std::size_t i = 0; i < entries.size(); ++i)
    entries[i].Lpos = 100 + 10 * static_cast<FilePos>(i);
  const LineArray lines{entries.data(), 12, 4, 2, 10};
  struct Case {
    std::int32_t rows;
    FilePos hit;
    bool expected;
  };
  const Case cases[] = {{3, 139, false}, {3, 140, true},  {3, 169, true},  {3, 170, false},
                        {1, 149, true},  {1, 150, false}, {50, 199, true}, {50, 200, false}};
  for (const Case& c : cases)
    EXPECT_EQ(HitIsOnScreen(lines, c.rows, c.hit), c.expected) << c.hit;
}

TEST(MarkAll, TagsWhatAPlainScanFinds) {
  std::mt19937 random(11);
  ScratchFile scratch("");
  for (int i = 0; i < 100; ++i) {
    const std::string content = RandomContent(random);
    scratch.Write(content);
    ViewFile file = FileOf(scratch.Path(), static_cast<FilePos>(content.size()));
    const std::size_t where = content.empty() ? 0 : random() % content.size();
    std::string key = content.substr(where, 1 + random() % 8);
    if (key.empty()) key = "a";
    const bool folds = random() % 2 == 0;
    SearchState search = StateOf(key, folds ? SEARCH_TEXT : SEARCH_CASE);
    search.SearchNext = 5;
    Tags tags;
    std::vector<std::int64_t> expected = PlainFindAll(content, key, folds);
    const FilePos first = expected.empty() ? kSearchNoHit : expected.front();
    if (expected.size() > kTagSlots - 1) expected.resize(kTagSlots - 1);
    ASSERT_EQ(MarkAll(file, search, tags.list), first);
    ASSERT_EQ(tags.Positions(), expected) << "key " << testing::PrintToString(key);
    ASSERT_EQ(search.SearchNext, kNoPosition);
    ASSERT_EQ(MarkAll(file, search, tags.list), first) << "again";
    ASSERT_EQ(tags.Positions(), expected) << "again adds nothing";
  }
}

TEST(MarkAll, EarlierTagsStayAndGainTheFlag) {
  const ScratchFile scratch("..ab..ab..ab");
  ViewFile file = FileOf(scratch.Path(), 12);
  SearchState search = StateOf("AB", SEARCH_TEXT);
  Tags tags(4);
  TagInsert(tags.list, 6, kTagByUser);
  TagInsert(tags.list, 7, kTagByUser);
  EXPECT_EQ(MarkAll(file, search, tags.list), 2);
  EXPECT_EQ(tags.Positions(), (std::vector<std::int64_t>{2, 6, 7, 10}));
  EXPECT_EQ(tags.entries[1].flags, kTagByUser | kTagBySearch);

  // A full list takes nothing, but the first hit is still told.
  Tags full(1);
  TagInsert(full.list, 6, kTagByUser);
  EXPECT_EQ(MarkAll(file, search, full.list), 2);
  EXPECT_EQ(full.Positions(), (std::vector<std::int64_t>{6}));
  EXPECT_EQ(full.entries[0].flags, kTagByUser);
}

// However many hits there are, the file is opened once and no byte is read twice; a full list ends it.
TEST(MarkAll, IsOnePass) {
  struct Case {
    const char* key;
    std::size_t every;  // bytes from hit to hit
    bool readsAll;
  };
  constexpr std::size_t kLength = 4 << 20;
  for (const Case& c : {Case{"nowhere", kLength, true}, Case{"hit", 8192, true}, Case{"hit", 64, false}}) {
    std::string content(kLength, '.');
    for (std::size_t i = 0; i + c.every <= kLength; i += c.every)
      content.replace(i, 3, "hit");
    const ScratchFile scratch(content);
    ViewFile file = FileOf(scratch.Path(), kLength);
    SearchState search = StateOf(c.key, SEARCH_TEXT);
    Tags tags;
    const FileCounters before = CountersOfFiles();
    static_cast<void>(MarkAll(file, search, tags.list));
    EXPECT_EQ(CountersOfFiles().opened - before.opened, 1);
    const std::int64_t read = CountersOfFiles().bytesRead - before.bytesRead;
    if (c.readsAll) {
      EXPECT_EQ(read, std::int64_t{kLength});
    } else {
      EXPECT_LE(read, std::int64_t{64} * 1000 + kSearchReadBytes);
    }
  }
}

TEST(Canceled, NothingHasChanged) {
  const ScratchFile scratch("hit hit");
  std::filesystem::resize_file(scratch.Path(), 100 * kMegabyte);
  ViewFile file = FileOf(scratch.Path(), 100 * kMegabyte);
  Watch watch;
  watch.cancelAt = 0;

  SearchState search = StateOf("hit", SEARCH_TEXT);
  search.SearchNext = 4 * kMegabyte;
  FilePos start = 17;
  FilePos end = 20;
  EXPECT_EQ(FindNext(file, search, 0, start, end, watch.Progress()), kSearchCanceled);
  EXPECT_EQ(search.SearchNext, 4 * kMegabyte);
  EXPECT_EQ(start, 17);
  EXPECT_EQ(end, 20);

  Tags tags;
  TagInsert(tags.list, 4, kTagByUser);
  EXPECT_EQ(MarkAll(file, search, tags.list, watch.Progress()), kSearchCanceled);
  EXPECT_EQ(tags.Positions(), (std::vector<std::int64_t>{4}));
  EXPECT_EQ(tags.entries[0].flags, kTagByUser);
  EXPECT_EQ(search.SearchNext, 4 * kMegabyte);
}

}  // namespace
