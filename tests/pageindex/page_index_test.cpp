// The page index against a plain scan of the content, for every size of a block, and what becomes of it when
// files and disks fail.
#include "pageindex/page_index.h"

#include <fcntl.h>
#include <sys/resource.h>

#include <cstring>
#include <random>

#include "platform/file.h"
#include "tests/scratch.h"

namespace {

std::vector<FilePos> PlainPages(const std::string& content) {
  std::vector<FilePos> pages = {0};
  for (std::size_t i = 1; i < content.size(); ++i) {
    const bool lineBreak = content[i - 1] == '\r' || content[i - 1] == '\n';
    if (lineBreak && content[i] == '\f') pages.push_back(static_cast<FilePos>(i));
  }
  return pages;
}

// A run of the index on one file, released at the end.
class IndexRun {
 public:
  explicit IndexRun(const std::string& path, std::int32_t blockBytes = 8192)
      : path_(path), blockBytes_(blockBytes) {}
  ~IndexRun() { static_cast<void>(Send(PG_END)); }
  IndexRun(const IndexRun&) = delete;
  IndexRun& operator=(const IndexRun&) = delete;

  PageIndexFault Send(std::uint32_t message) {
    return PageIndexRun(message, state, path_.c_str(), blockBytes_);
  }
  void Build() {
    ASSERT_EQ(Send(PG_START), PageIndexFault::none);
    while (state.phase == PageIndexPhase::PG_ACTIVE)
      ASSERT_EQ(Send(PG_CONT), PageIndexFault::none);
    ASSERT_EQ(state.phase, PageIndexPhase::PG_DONE);
  }
  [[nodiscard]] FilePos Lookup(FilePos page, FilePos count) const {
    PageIndexFault fault = PageIndexFault::none;
    const FilePos position = PageIndexLookup(state.index, page, count, fault);
    EXPECT_EQ(fault, PageIndexFault::none);
    return position;
  }
  PageIndexState state;

 private:
  std::string path_;
  std::int32_t blockBytes_;
};

void ExpectPages(const IndexRun& run, const std::vector<FilePos>& pages) {
  const auto count = static_cast<FilePos>(pages.size());
  ASSERT_EQ(run.state.pageCount, count);
  ASSERT_EQ(PageIndexCount(run.state), count);
  ASSERT_EQ(FileSize(run.state.index), 8 * (count + 1));
  for (FilePos page = 1; page <= count; ++page)
    ASSERT_EQ(run.Lookup(page, 0), pages[static_cast<std::size_t>(page - 1)]) << "page " << page;
  EXPECT_EQ(run.Lookup(0, 0), kPageNone);
  EXPECT_EQ(run.Lookup(count + 1, 0), kPageNone);
  EXPECT_EQ(run.Lookup(count + 1, count), kPageNone);
}

TEST(PageIndex, RandomFilesAndBlocks) {
  std::mt19937 random(3);
  ScratchFile file("");
  const std::int32_t blocks[] = {-1, 0, 1, 2, 3, 5, 64, 511, 512, 4096, 8192, 65536, 70000};
  for (int i = 0; i < 60; ++i) {
    const std::int32_t block =
        i % 2 == 0 ? blocks[random() % std::size(blocks)] : static_cast<std::int32_t>(2 + random() % 69999);
    // Now and then a length that is a multiple of the block.
    // Blocks of one or no byte are no blocks in which the scan could get on.
    const auto size = static_cast<std::size_t>(std::max(block, 2));
    const std::size_t length =
        random() % 3 == 0 ? size * (random() % (140000 / size + 1)) : random() % (block < 64 ? 3000 : 140000);
    static const std::string kAlphabets[] = {"\n\f", "\r\n\fab ", "abcdefghijklmnop\r\n\f\n\f"};
    const std::string& alphabet = kAlphabets[i % 3];
    std::string content(length, '\0');
    for (char& byte : content)
      byte = alphabet[random() % alphabet.size()];
    file.Write(content);
    SCOPED_TRACE("block " + std::to_string(block) + ", length " + std::to_string(length));
    IndexRun run(file.Path(), block);
    run.Build();
    ASSERT_NO_FATAL_FAILURE(ExpectPages(run, PlainPages(content)));
  }
}

TEST(PageIndex, ServesWhileItGrows) {
  std::string content;
  for (int i = 0; i < 50; ++i)
    content += "page\n\f";
  const std::vector<FilePos> pages = PlainPages(content);
  const ScratchFile file(content);
  IndexRun run(file.Path(), 16);
  EXPECT_EQ(PageIndexCount(run.state), -1) << "before the first start";
  ASSERT_EQ(run.Send(PG_START), PageIndexFault::none);
  EXPECT_EQ(run.Lookup(1, 1), 0);
  while (run.state.phase == PageIndexPhase::PG_ACTIVE) {
    // Each lookup moves the place at which the index file is read and written.
    const FilePos count = PageIndexCount(run.state);
    ASSERT_GE(count, 1);
    ASSERT_EQ(run.Lookup(count, count), pages[static_cast<std::size_t>(count - 1)]);
    ASSERT_EQ(run.Lookup(count + 1, count), kPageNone);
    ASSERT_EQ(run.Lookup(1, 0), kPageNone) << "the header's count is 0 until the end";
    ASSERT_EQ(run.Send(PG_CONT), PageIndexFault::none);
  }
  ExpectPages(run, pages);
  EXPECT_EQ(run.state.source, kNoFile);
}

TEST(PageIndex, MessagesLeadBackToIdle) {
  struct Case {
    std::uint32_t message;
    PageIndexFault fault;
  };
  const ScratchFile file("a\n\fb");
  IndexRun run(file.Path());
  for (const auto& [message, fault] :
       {Case{PG_CONT, PageIndexFault::notActive}, Case{PG_STOP, PageIndexFault::none},
        Case{1039, PageIndexFault::unknownMessage}, Case{PG_END, PageIndexFault::none}}) {
    run.Build();
    EXPECT_EQ(run.Send(message), fault);
    EXPECT_EQ(run.state.phase, PageIndexPhase::PG_IDLE);
    EXPECT_EQ(run.state.source, kNoFile);
    EXPECT_EQ(PageIndexCount(run.state), -1);
    if (message == PG_STOP) EXPECT_NE(run.state.block, nullptr) << "the buffer stays for the next start";
  }
  EXPECT_EQ(run.state.index, kNoFile);
  EXPECT_EQ(run.state.block, nullptr);
}

TEST(PageIndex, PositionsBehindFourGigabytes) {
  const ScratchFile file("");
  constexpr FilePos kTwo = FilePos{1} << 31;
  constexpr FilePos kFour = FilePos{1} << 32;
  const std::vector<FilePos> pages = {0, kTwo + 5, kFour - 1, kFour + 1, 3 * kTwo + 77};
  {
    std::ofstream out(file.Path(), std::ios::binary);
    for (std::size_t i = 1; i < pages.size(); ++i)
      out.seekp(pages[i] - 1) << "\n\f";
    ASSERT_TRUE(out.good());
  }
  IndexRun run(file.Path(), 4096);
  ASSERT_EQ(run.Send(PG_START), PageIndexFault::none);
  // The scan is set down shortly before each place, since the way there is long and empty.
  for (const FilePos place : {kTwo - 10, kFour - 10, 3 * kTwo}) {
    run.state.scanOffset = place;
    ASSERT_EQ(run.Send(PG_CONT), PageIndexFault::none);
  }
  ASSERT_EQ(run.state.phase, PageIndexPhase::PG_DONE);
  ExpectPages(run, pages);
}

TEST(PageIndex, ASourceThatShrinksOrGrowsMeanwhile) {
  const std::string half = "a\n\fb\n\f";
  ScratchFile file(half + half);
  IndexRun run(file.Path(), 6);
  ASSERT_EQ(run.Send(PG_START), PageIndexFault::none);
  ASSERT_EQ(run.Send(PG_CONT), PageIndexFault::none);
  file.Write(half);
  ASSERT_EQ(run.Send(PG_CONT), PageIndexFault::none);
  ASSERT_EQ(run.state.phase, PageIndexPhase::PG_DONE);
  ExpectPages(run, PlainPages(half));

  ASSERT_EQ(run.Send(PG_START), PageIndexFault::none);
  file.Append("a\n\f");
  while (run.state.phase == PageIndexPhase::PG_ACTIVE)
    ASSERT_EQ(run.Send(PG_CONT), PageIndexFault::none);
  ExpectPages(run, PlainPages(half + "a\n\f"));
}

// A descriptor on which seeking fails and the rest does not.
FileHandle Unseekable() {
  int ends[2];
  if (pipe(ends) != 0) std::abort();
  close(ends[1]);
  return ends[0];
}

TEST(PageIndex, AFailedStepEndsTheBuildAndNothingElse) {
  const ScratchFile pages("a\n\fb");
  const ScratchFile plain("no pages");
  constexpr const char* kWrite = "Error writing the page index file.";
  struct Case {
    const ScratchFile& file;
    FileHandle source, index;  // put in place of the run's own, unless kNoFile
    PageIndexFault expected;
    const char* text;
  };
  const auto open = [&pages](int flags) { return ::open(pages.Path().c_str(), flags | O_CLOEXEC); };
  const Case cases[] = {
      {pages, Unseekable(), kNoFile, PageIndexFault::seek, "Seek error."},
      {pages, open(O_WRONLY), kNoFile, PageIndexFault::read, "Read error."},
      {pages, kNoFile, Unseekable(), PageIndexFault::recordWrite, kWrite},
      {pages, kNoFile, open(O_RDONLY), PageIndexFault::recordWrite, kWrite},
      {plain, kNoFile, Unseekable(), PageIndexFault::headerSeek, "Error locating the page index header."},
      {plain, kNoFile, open(O_RDONLY), PageIndexFault::headerWrite, "Error updating the page index header."},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.text);
    IndexRun run(c.file.Path());
    ASSERT_EQ(run.Send(PG_START), PageIndexFault::none);
    for (auto [place, other] :
         {std::pair{&run.state.source, c.source}, std::pair{&run.state.index, c.index}}) {
      if (other == kNoFile) continue;
      FileClose(*place);
      *place = other;
    }
    EXPECT_EQ(run.Send(PG_CONT), c.expected);
    EXPECT_EQ(run.state.phase, PageIndexPhase::PG_IDLE);
    EXPECT_EQ(run.state.source, kNoFile);
    EXPECT_NE(run.state.index, kNoFile) << "stays until the next stop";
    EXPECT_EQ(PageIndexCount(run.state), -1);
    EXPECT_EQ(PageIndexFaultText(c.expected, PG_CONT, "path"),
              std::string(c.text) + "\n\nPage indexing failed, [GoTo page] command will not be available");
    EXPECT_EQ(run.Send(PG_STOP), PageIndexFault::none);
    run.Build();
  }
}

// Holds the files that this process writes to a size, as a full disk would.
class SizeLimit {
 public:
  explicit SizeLimit(rlim_t bytes) {
    getrlimit(RLIMIT_FSIZE, &before_);
    rlimit now = before_;
    now.rlim_cur = bytes;
    setrlimit(RLIMIT_FSIZE, &now);
  }
  ~SizeLimit() { setrlimit(RLIMIT_FSIZE, &before_); }
  SizeLimit(const SizeLimit&) = delete;
  SizeLimit& operator=(const SizeLimit&) = delete;

 private:
  rlimit before_{};
};

TEST(PageIndex, AFullDiskIsAResult) {
  std::string content;
  for (int i = 0; i < 5000; ++i)
    content += "\n\f";
  const ScratchFile file(content);
  IndexRun run(file.Path());
  PageIndexFault fault = PageIndexFault::none;
  for (const rlim_t bytes : {0, 8}) {
    {
      const SizeLimit limit(bytes);
      fault = run.Send(PG_START);
    }
    EXPECT_EQ(fault, PageIndexFault::indexWrite);
    EXPECT_EQ(run.state.index, kNoFile);
    EXPECT_EQ(run.state.block, nullptr);
  }
  {
    const SizeLimit limit(20000);
    fault = run.Send(PG_START);
    while (fault == PageIndexFault::none)
      fault = run.Send(PG_CONT);
  }
  EXPECT_EQ(fault, PageIndexFault::recordWrite);
  run.Build();
  ExpectPages(run, PlainPages(content));
}

TEST(PageIndex, AFailedStartHoldsNothing) {
  IndexRun run("/no/such/file");
  EXPECT_EQ(run.Send(PG_START), PageIndexFault::sourceOpen);
  EXPECT_EQ(run.state.phase, PageIndexPhase::PG_IDLE);
  EXPECT_EQ(run.state.index, kNoFile);
  EXPECT_EQ(run.state.block, nullptr);

  const char* const folder = std::getenv("TMPDIR");
  const std::string before = folder != nullptr ? folder : "";
  setenv("TMPDIR", "/no/such/folder", 1);
  EXPECT_EQ(run.Send(PG_START), PageIndexFault::tempFile);
  EXPECT_EQ(PageIndexFaultText(PageIndexFault::tempFile, PG_START, "path"),
            "Cannot open temp file:\n/no/such/folder");
  before.empty() ? unsetenv("TMPDIR") : setenv("TMPDIR", before.c_str(), 1);
  // A path may hold what looks like a format.
  EXPECT_EQ(PageIndexFaultText(PageIndexFault::sourceOpen, PG_START, "/tmp/100%s"),
            "Cannot open file:\n/tmp/100%s");
  EXPECT_EQ(PageIndexFaultText(PageIndexFault::indexWrite, PG_START, "/tmp/a"),
            "Index file write error:\n/tmp/a");
  EXPECT_EQ(PageIndexFaultText(PageIndexFault::unknownMessage, 1039, "/tmp/a"), "Unknown message code: 40F");
}

TEST(PageIndexLookup, BadFiles) {
  const std::string header("QLM\x1A\x02\0\0\0", 8);
  const std::string otherHeader("QLN\x1A\x02\0\0\0", 8);
  const std::string record("\x05\0\0\0\0\0\0\0", 8);
  struct Case {
    const char* what;
    std::string content;
    FilePos page, count, expected;
  };
  const Case cases[] = {
      {"good", header + record + record, 2, 0, 5},
      {"short header", "QLM\x1A", 1, 0, kPageReadFailed},
      {"bad magic", otherHeader + record, 1, 0, kPageReadFailed},
      {"bad magic, count given", otherHeader + record, 1, 1, 5},
      {"record missing", header + record, 2, 0, kPageReadFailed},
      {"half a record", header + record + "\x05", 2, 2, kPageReadFailed},
      {"no position", header + std::string(8, '\xFF'), 1, 0, kPageReadFailed},
  };
  PageIndexFault fault = PageIndexFault::none;
  for (const Case& c : cases) {
    const ScratchFile file(c.content);
    const FileHandle index = FileOpenShared(file.Path().c_str());
    fault = PageIndexFault::none;
    EXPECT_EQ(PageIndexLookup(index, c.page, c.count, fault), c.expected) << c.what;
    EXPECT_EQ(fault == PageIndexFault::badHeader, std::string(c.what) == "bad magic");
    FileClose(index);
  }
  EXPECT_EQ(PageIndexLookup(kNoFile, 1, 1, fault), kPageNoIndex);
}

}  // namespace
