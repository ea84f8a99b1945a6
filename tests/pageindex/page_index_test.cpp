// The page index against a plain scan of the content, whatever happens to the file between the steps, and
// what becomes of it when files and disks fail.
#include "pageindex/page_index.h"

#include <fcntl.h>
#include <sys/resource.h>

#include <functional>
#include <random>

#include "tests/memory_origin.h"
#include "tests/scratch.h"

namespace {

using Phase = PageIndexPhase;
using Fault = PageIndexFault;

std::vector<FilePos> PlainPages(const std::string& content) {
  std::vector<FilePos> pages = {0};
  for (std::size_t i = 1; i < content.size(); ++i) {
    const bool lineBreak = content[i - 1] == '\r' || content[i - 1] == '\n';
    if (lineBreak && content[i] == '\f') pages.push_back(FilePos::At(i));
  }
  return pages;
}

// The bytes of an index file with that count in its header.
std::string IndexBytes(const std::vector<FilePos>& pages, std::size_t count) {
  const auto number = [](auto value, int bytes) {
    std::string text;
    for (int i = 0; i < bytes; ++i)
      text += static_cast<char>(value >> (8 * i));
    return text;
  };
  std::string bytes = "QLM\x1A" + number(count, 4);
  for (const FilePos page : pages)
    bytes += number(page.Offset(), 8);
  return bytes;
}

std::string Repeated(const std::string& text, int count) {
  std::string all;
  for (int i = 0; i < count; ++i)
    all += text;
  return all;
}

// A file in memory to which something can happen at each open and each read.
struct Events {
  std::function<void()> open;
  std::function<FileError()> read;
};

class EventfulOrigin : public MemoryOrigin {
 public:
  EventfulOrigin(MemoryFile& file, const Events& events) : MemoryOrigin(file), events_(events) {}
  FileError Open(const char* name, ByteIdentity& identity) override {
    if (events_.open) events_.open();
    return MemoryOrigin::Open(name, identity);
  }
  FileError ReadAt(FilePos pos, std::uint8_t* to, std::size_t count, std::size_t& got) override {
    const FileError error = events_.read ? events_.read() : 0;
    const FileError fromFile = MemoryOrigin::ReadAt(pos, to, count, got);
    return error != 0 ? error : fromFile;
  }

 private:
  const Events& events_;
};

class PageIndexTest : public testing::Test {
 protected:
  void Step(std::int32_t leastBytes = 8192) { PageIndexStep(source, *index, {leastBytes, {}, nullptr}); }
  void Build(std::int32_t leastBytes = 8192) {
    for (std::size_t i = 0; i < file.bytes.size() + 10; ++i) {
      Step(leastBytes);
      if (index->phase == Phase::PG_DONE || index->phase == Phase::PG_IDLE) break;
    }
    ASSERT_EQ(index->phase, Phase::PG_DONE);
  }
  FilePos Find(PageNumber page) { return PageIndexFind(source, *index, page, stop); }
  void Restart() { index = std::make_unique<PageIndex>("memory"); }

  [[nodiscard]] std::string OnDisk() const {
    std::string bytes(static_cast<std::size_t>(8 * (index->pageCount + 2)), '?');
    std::size_t got = 0;
    EXPECT_EQ(FileReadAt(index->build.index, 0, bytes.data(), bytes.size(), got), 0);
    return bytes.substr(0, got);
  }
  void ExpectComplete() const {
    const std::vector<FilePos> pages = PlainPages(file.bytes);
    ASSERT_EQ(index->phase, Phase::PG_DONE);
    ASSERT_EQ(index->pageCount, std::ssize(pages));
    ASSERT_EQ(index->scanned, FilePos::At(file.bytes.size()));
    ASSERT_TRUE(OnDisk() == IndexBytes(pages, pages.size()));
  }
  void ExpectEnded(Fault fault) {
    EXPECT_EQ(index->phase, Phase::PG_IDLE);
    EXPECT_EQ(index->fault.exchange(Fault::none), fault);
    EXPECT_EQ(PageIndexPagesOf(*index).count, -1);
    EXPECT_EQ(Find(1), kPageNoIndex);
    Step();
    EXPECT_EQ(index->fault, Fault::none) << "a fault comes once";
  }

  MemoryFile file;
  Events events;
  std::atomic<bool> stop = false;
  ByteSource source{std::make_unique<EventfulOrigin>(file, events)};
  std::unique_ptr<PageIndex> index = std::make_unique<PageIndex>("memory");
};

// What may become of a file between two steps.
class Fate {
 public:
  Fate(std::mt19937& random, MemoryFile& file) : random_(random), file_(file) {
    static const std::string kAlphabets[] = {"\n\f", "\r\n\fab ", "abcdefghijklmnop\r\n\f\n\f"};
    alphabet_ = kAlphabets[random_() % 3];
  }
  void Strike() {
    std::string& bytes = file_.bytes;
    switch (random_() % 7) {
      case 0:
        bytes.resize(random_() % (bytes.size() + 1));
        break;
      case 1:  // emptied and written anew, or cut and added to
        bytes.resize(random_() % (bytes.size() + 1));
        bytes += Content();
        break;
      case 2:
        bytes = Content();
        ++file_.number;
        break;
      case 3:  // all that a look at the length and the end sees is an addition
        for (std::size_t i = 0; i < std::min<std::size_t>(bytes.size(), 20); ++i)
          bytes[i] = alphabet_[random_() % alphabet_.size()];
        bytes += '\f';
        break;
      default:
        bytes += Content();
        break;
    }
    if (random_() % 2 == 0) ++file_.changed;
  }

 private:
  std::string Content() {
    std::string content(random_() % (random_() % 8 == 0 ? 300000 : 200), '\0');
    for (char& byte : content)
      byte = alphabet_[random_() % alphabet_.size()];
    return content;
  }
  std::mt19937& random_;
  MemoryFile& file_;
  std::string alphabet_;
};

TEST_F(PageIndexTest, KeepsUpWithAFileThatChanges) {
  std::mt19937 random(3);
  for (int round = 0; round < 60; ++round) {
    SCOPED_TRACE(round);
    Restart();
    file = {};
    Fate fate(random, file);
    for (int turn = 0; turn < 40; ++turn) {
      fate.Strike();
      file.failure = random() % 8 == 0 ? 5 : 0;
      static constexpr std::int32_t kLeast[] = {-1, 0, 1, 2, 3, 5, 64, 5000, 131072, 300000};
      for (std::size_t steps = random() % 4; steps > 0; --steps)
        Step(kLeast[random() % std::size(kLeast)]);
      const std::vector<FilePos> pages = PlainPages(file.bytes);
      const std::size_t page = 1 + random() % (pages.size() + 2);
      const FilePos there = page > pages.size() ? kPageNone : pages[page - 1];
      if (random() % 3 == 0) {
        ASSERT_EQ(Find(static_cast<PageNumber>(page)), file.failure != 0 ? kPageReadFailed : there) << page;
      }
      if (file.failure != 0 || random() % 4 != 0) continue;
      ASSERT_NO_FATAL_FAILURE(Build(random() % 2 == 0 ? 4000 : 200000));
      ASSERT_NO_FATAL_FAILURE(ExpectComplete());
    }
  }
}

TEST_F(PageIndexTest, AStepScansWhatItMust) {
  file.bytes = "a\n\fb" + Repeated("some words\n\f", 100000);
  const std::vector<FilePos> pages = PlainPages(file.bytes);
  Step(15);
  EXPECT_EQ(index->scanned, FilePos::At(15));
  EXPECT_EQ(index->length, FilePos::At(file.bytes.size()));
  EXPECT_EQ(OnDisk(), IndexBytes({0, 2}, 0)) << "the count is 0 until the end";
  Step(1);
  EXPECT_EQ(index->pageCount, 3);
  EXPECT_TRUE(PageIndexPagesOf(*index).more);
  stop = true;
  PageIndexStep(source, *index, {8192, std::chrono::hours(1), &stop});
  EXPECT_EQ(index->scanned, FilePos::At(16)) << "somebody waits";
  stop = false;
  events.read = [this] {
    if (index->scanned > 100000) stop = true;
    return 0;
  };
  PageIndexStep(source, *index, {1, std::chrono::hours(1), &stop});
  EXPECT_EQ(index->phase, Phase::PG_ACTIVE);
  EXPECT_LT(index->scanned, FilePos::At(500000));
  events.read = nullptr;
  PageIndexStep(source, *index, {1, std::chrono::hours(1), nullptr});
  ExpectComplete();
  EXPECT_EQ(PageIndexPagesOf(*index).count, std::ssize(pages));
  EXPECT_FALSE(PageIndexPagesOf(*index).more);
  const std::int64_t read = file.bytesRead;
  Step();
  EXPECT_LE(file.bytesRead - read, 128) << "nothing is read twice";
  // It goes on where it ended, with the page that starts just there.
  file.bytes += "\n";
  Build();
  file.bytes += "\fx";
  Step(1);
  EXPECT_EQ(index->phase, Phase::PG_ACTIVE);
  EXPECT_TRUE(OnDisk() == IndexBytes(PlainPages(file.bytes), 0));
}

// Form feeds and line breaks at odd places, and as one byte of other characters, begin no page.
TEST_F(PageIndexTest, PagesOfUtf16BeginAtEvenPlaces) {
  std::mt19937 random(3);
  for (const TextUnit unit : {TextUnit::utf16le, TextUnit::utf16be}) {
    for (int round = 0; round < 40; ++round) {
      std::vector<FilePos> pages = {0};
      std::u16string text;
      file.bytes.clear();
      while (text.size() < 300) {
        constexpr char16_t kUnits[] = {u'\n', u'\r', u'\f', u'\f', u'\u0C00', u'\u0C0A', u'\u0A0C', u'x'};
        const char16_t next = kUnits[random() % std::size(kUnits)];
        const bool behindBreak = !text.empty() && (text.back() == u'\n' || text.back() == u'\r');
        if (behindBreak && next == u'\f') pages.push_back(FilePos::At(2 * text.size()));
        text += next;
        const char low = static_cast<char>(next & 0xFF), high = static_cast<char>(next >> 8);
        file.bytes += unit == TextUnit::utf16le ? std::string{low, high} : std::string{high, low};
      }
      ++file.number;
      index = std::make_unique<PageIndex>("memory", unit);
      Build(1 + static_cast<std::int32_t>(random() % 9));
      ASSERT_TRUE(OnDisk() == IndexBytes(pages, pages.size())) << "round " << round;
      for (std::size_t page = 0; page < pages.size(); ++page)
        ASSERT_EQ(Find(static_cast<PageNumber>(page + 1)), pages[page]);
    }
  }
}

TEST_F(PageIndexTest, WhatCannotBeReadIsTriedAgain) {
  file.bytes = Repeated("page\n\f", 100);
  Step(50);
  file.failure = 13;
  Step(50);
  EXPECT_EQ(index->phase, Phase::PG_PAUSED);
  EXPECT_EQ(index->sourceError, 13);
  file.failure = 0;
  // The two looks at what is known, and the block.
  for (const int failing : {1, 2, 3}) {
    int reads = 0;
    events.read = [&] { return ++reads == failing ? 5 : 0; };
    Step(50);
    EXPECT_EQ(index->phase, Phase::PG_PAUSED);
    EXPECT_EQ(index->sourceError, 5);
  }
  events.read = nullptr;
  EXPECT_EQ(index->build.restarts, 0);
  Step(50);
  EXPECT_EQ(index->phase, Phase::PG_ACTIVE);
  EXPECT_EQ(index->sourceError, 0);
  EXPECT_GE(index->scanned, FilePos::At(100)) << "what was known is kept";
  Build();
  ExpectComplete();
}

TEST_F(PageIndexTest, AFileThatIsCutInAStep) {
  file.bytes = Repeated("page\n\f", 100000);
  int reads = 0;
  events.read = [&] {
    if (++reads == 2) {
      file.bytes = Repeated("\n\f", 1000);
      ++file.changed;
    }
    return 0;
  };
  Step(300000);
  EXPECT_NE(index->phase, Phase::PG_DONE);
  Build();
  ExpectComplete();
  EXPECT_EQ(Find(1001), FilePos::At(1999));
}

// As files that the system makes up while they are read.
TEST_F(PageIndexTest, AFileThatGivesAWrongLength) {
  class LongerOrigin : public MemoryOrigin {
    using MemoryOrigin::MemoryOrigin;
    FileError Open(const char* name, ByteIdentity& identity) override {
      const FileError error = MemoryOrigin::Open(name, identity);
      identity.length += 4000;
      return error;
    }
  };
  file.bytes = "a\n\fb";
  ByteSource longer(std::make_unique<LongerOrigin>(file));
  EXPECT_EQ(PageIndexFind(longer, *index, 3, stop), kPageNone);
  ExpectComplete();
  file.bytes += "\n\fc";
  EXPECT_EQ(PageIndexFind(longer, *index, 3, stop), FilePos::At(5));
}

TEST_F(PageIndexTest, FindStopsAndGoesOn) {
  file.bytes = Repeated("some words\n\f", 100000);
  EXPECT_EQ(Find(0), kPageNone);
  EXPECT_EQ(Find(std::int64_t{1} << 31), kPageNone);
  EXPECT_EQ(file.reads, 0);
  EXPECT_EQ(Find(1), FilePos::At(0));
  EXPECT_EQ(index->scanned, FilePos::At(0));
  EXPECT_EQ(Find(7), FilePos::At(7 * 12 - 13));
  events.read = [this] {
    if (index->scanned > 500000) stop = true;
    return 0;
  };
  EXPECT_EQ(Find(99999), kPageStopped);
  EXPECT_GT(index->scanned, FilePos::At(500000));
  EXPECT_LT(index->scanned, FilePos::At(800000));
  EXPECT_GT(index->pageCount, 500000 / 12);
  EXPECT_EQ(Find(7), kPageStopped);
  stop = false;
  events.read = nullptr;
  EXPECT_EQ(Find(100001), FilePos::At(100001 * 12 - 13));
  ExpectComplete();
  EXPECT_EQ(Find(100002), kPageNone);
}

TEST_F(PageIndexTest, FindGivesNoStalePlace) {
  const std::string pages = Repeated("page\n\f", 1000);
  file.bytes = pages;
  Build();
  // A change that leaves nothing behind but the bytes.
  file.bytes[99 * 6 + 5] = 'x';
  EXPECT_EQ(Find(100), FilePos::At(98 * 6 + 5));
  EXPECT_EQ(Find(101), FilePos::At(100 * 6 + 5));
  ExpectComplete();
  // One that comes while the page is sought: the file has another in its place when the place is known.
  Restart();
  file.bytes = pages;
  int opens = 0;
  events.open = [&] {
    if (++opens != 2) return;
    file.bytes = "\n" + pages;
    ++file.number;
  };
  EXPECT_EQ(Find(10), FilePos::At(9 * 6));
  // One at each open, from which there is no getting away.
  events.open = [this] { ++file.number; };
  EXPECT_EQ(Find(10), kPageReadFailed);
  EXPECT_EQ(index->fault, Fault::none);
  for (int i = 0; i < 5; ++i)
    Step(50);
  EXPECT_EQ(index->phase, Phase::PG_PAUSED) << "no hurry with a file that does not keep still";
  EXPECT_EQ(index->sourceError, 0);
  events.open = nullptr;
  Build();
  ExpectComplete();
  ++file.number;
  Step(50);
  EXPECT_EQ(index->phase, Phase::PG_ACTIVE) << "one other file is no unrest";
  // Somebody adds to it all the time.
  events.open = [this] {
    file.bytes += "x";
    ++file.changed;
  };
  EXPECT_EQ(Find(2000), kPageNone);
  // The time of an addition is there before its length.
  const std::int32_t restarts = index->build.restarts;
  opens = 0;
  events.open = [&] { ++opens % 2 == 1 ? void(++file.changed) : void(file.bytes += "x"); };
  Step();
  Step();
  EXPECT_EQ(index->build.restarts, restarts);
}

TEST_F(PageIndexTest, PositionsBehindFourGigabytes) {
  const ScratchFile sparse("");
  constexpr ByteCount kTwo = ByteCount{1} << 31;
  constexpr ByteCount kFour = ByteCount{1} << 32;
  const std::vector<FilePos> pages = {0, kTwo + 5, kFour - 1, kFour + 1, 3 * kTwo + 77};
  {
    std::ofstream out(sparse.Path(), std::ios::binary);
    for (std::size_t i = 1; i < pages.size(); ++i)
      out.seekp(pages[i].Offset() - 1) << "\n\f";
    ASSERT_TRUE(out.good());
  }
  PageIndex big(sparse.Path());
  ByteSource system;
  PageIndexStep(system, big, {4096, {}, nullptr});
  // The scan is set down shortly before each place, since the way there is long and empty.
  for (const ByteCount place : {kTwo - 100, kFour - 100, 3 * kTwo}) {
    big.build.scanned = FilePos::At(place);
    big.build.tail = big.build.head;
    PageIndexStep(system, big, {4096, {}, nullptr});
  }
  ASSERT_EQ(big.phase, Phase::PG_DONE);
  for (std::size_t page = 1; page <= pages.size(); ++page)
    EXPECT_EQ(PageIndexFind(system, big, static_cast<PageNumber>(page), stop), pages[page - 1]);
  EXPECT_EQ(big.pageCount, 5);
}

TEST_F(PageIndexTest, AFullDiskEndsTheIndex) {
  file.bytes = Repeated("page\n\f", 5000);
  rlimit before{};
  getrlimit(RLIMIT_FSIZE, &before);
  for (const auto& [bytes, expected] :
       {std::pair{rlim_t{0}, Fault::indexWrite}, {rlim_t{20000}, Fault::recordWrite}}) {
    Restart();
    const rlimit limit{bytes, before.rlim_max};
    setrlimit(RLIMIT_FSIZE, &limit);
    for (int i = 0; i < 4; ++i)
      Step();
    setrlimit(RLIMIT_FSIZE, &before);
    ExpectEnded(expected);
  }
  Restart();
  file.bytes = "no pages";
  Step(1);
  FileClose(index->build.index);
  index->build.index = open("/dev/null", O_RDONLY | O_CLOEXEC);
  Step();
  ExpectEnded(Fault::headerWrite);
}

TEST_F(PageIndexTest, FaultsSayWhatHappened) {
  const char* const folder = std::getenv("TMPDIR");
  const std::string before = folder != nullptr ? folder : "";
  setenv("TMPDIR", "/no/such/folder", 1);
  Step();
  ExpectEnded(Fault::tempFile);
  EXPECT_EQ(PageIndexFaultText(Fault::tempFile, PG_START, "path"), "Cannot open temp file:\n/no/such/folder");
  before.empty() ? unsetenv("TMPDIR") : setenv("TMPDIR", before.c_str(), 1);
  // A path may hold what looks like a format.
  EXPECT_EQ(PageIndexFaultText(Fault::indexWrite, PG_START, "/tmp/100%s"),
            "Index file write error:\n/tmp/100%s");
  EXPECT_EQ(PageIndexFaultText(Fault::headerWrite, PG_CONT, "path"),
            "Error updating the page index header.\n\nPage indexing failed, [GoTo page] command will not be "
            "available");
  EXPECT_EQ(PageIndexFaultText(Fault::unknownMessage, 1039, "path"), "Unknown message code: 40F");
}

TEST(PageIndexLookup, BadFiles) {
  const std::string header("QLM\x1A\x02\0\0\0", 8);
  const std::string otherHeader("QLN\x1A\x02\0\0\0", 8);
  const std::string record("\x05\0\0\0\0\0\0\0", 8);
  struct Case {
    const char* what;
    std::string content;
    PageNumber page, count;
    FilePos expected;
    Fault fault = Fault::none;
  };
  const Case cases[] = {{"good", header + record, 1, 0, 5},
                        {"no page", header + record, 0, 0, kPageNone},
                        {"behind the header's count", header + record, 3, 0, kPageNone},
                        {"behind the count", header + record, 2, 1, kPageNone},
                        {"short header", "QLM\x1A", 1, 0, kPageReadFailed},
                        {"bad magic", otherHeader + record, 1, 0, kPageReadFailed, Fault::badHeader},
                        {"record missing", header, 1, 0, kPageReadFailed},
                        {"no position", header + std::string(8, '\xFF'), 1, 0, kPageReadFailed}};
  Fault fault = Fault::none;
  for (const Case& c : cases) {
    const ScratchFile file(c.content);
    FileError error = 0;
    const FileHandle index = FileOpenShared(file.Path().c_str(), error);
    fault = Fault::none;
    EXPECT_EQ(PageIndexLookup(index, c.page, c.count, fault), c.expected) << c.what;
    EXPECT_EQ(fault, c.fault) << c.what;
    FileClose(index);
  }
  EXPECT_EQ(PageIndexLookup(kNoFile, 1, 1, fault), kPageNoIndex);
}

}  // namespace
