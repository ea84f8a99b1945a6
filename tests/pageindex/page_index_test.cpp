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

constexpr const char* kNoGoTo = "\n\nPage indexing failed, [GoTo page] command will not be available";

std::vector<FilePos> PlainPages(const std::string& content) {
  std::vector<FilePos> pages = {0};
  for (std::size_t i = 1; i < content.size(); ++i) {
    const bool lineBreak = content[i - 1] == '\r' || content[i - 1] == '\n';
    if (lineBreak && content[i] == '\f') pages.push_back(static_cast<FilePos>(i));
  }
  return pages;
}

std::string Pages(int count) {
  std::string content;
  for (int i = 0; i < count; ++i)
    content += "page\n\f";
  return content;
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
  // Lookups meanwhile move the place at which the index file is read and written.
  void Build() {
    EXPECT_EQ(PageIndexCount(state), -1);
    ASSERT_EQ(Send(PG_START), PageIndexFault::none);
    while (state.phase == PageIndexPhase::PG_ACTIVE) {
      const FilePos count = PageIndexCount(state);
      ASSERT_NE(Lookup(count, count), kPageNone);
      ASSERT_EQ(Lookup(count + 1, count), kPageNone);
      ASSERT_EQ(Lookup(1, 0), kPageNone) << "the header's count is 0 until the end";
      ASSERT_EQ(Send(PG_CONT), PageIndexFault::none);
    }
    ASSERT_EQ(state.phase, PageIndexPhase::PG_DONE);
    EXPECT_EQ(state.source, kNoFile);
  }
  void ExpectIdle() const {
    EXPECT_EQ(state.phase, PageIndexPhase::PG_IDLE);
    EXPECT_EQ(state.source, kNoFile);
    EXPECT_EQ(PageIndexCount(state), -1);
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
    const std::int32_t block = blocks[random() % std::size(blocks)];
    // Now and then a length that is a multiple of the block. Blocks of one or no byte are no blocks in which
    // the scan could get on.
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

TEST(PageIndex, MessagesLeadBackToIdle) {
  const ScratchFile file("a\n\fb");
  IndexRun run(file.Path());
  using Fault = PageIndexFault;
  for (const auto& [message, fault] : {std::pair{PG_CONT, Fault::notActive},
                                       {PG_STOP, Fault::none},
                                       {1039U, Fault::unknownMessage},
                                       {PG_END, Fault::none}}) {
    run.Build();
    EXPECT_EQ(run.Send(message), fault);
    run.ExpectIdle();
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
  const ScratchFile plain("no pages");
  struct Case {
    bool source;  // which of the files of the run is another
    FileHandle file;
    PageIndexFault expected;
    const char* text;
  };
  const auto open = [&plain](int flags) { return ::open(plain.Path().c_str(), flags | O_CLOEXEC); };
  const Case cases[] = {
      {true, Unseekable(), PageIndexFault::seek, "Seek error."},
      {true, open(O_WRONLY), PageIndexFault::read, "Read error."},
      {false, Unseekable(), PageIndexFault::headerSeek, "Error locating the page index header."},
      {false, open(O_RDONLY), PageIndexFault::headerWrite, "Error updating the page index header."},
  };
  for (const Case& c : cases) {
    IndexRun run(plain.Path());
    ASSERT_EQ(run.Send(PG_START), PageIndexFault::none);
    FileHandle& place = c.source ? run.state.source : run.state.index;
    FileClose(place);
    place = c.file;
    EXPECT_EQ(run.Send(PG_CONT), c.expected) << c.text;
    run.ExpectIdle();
    EXPECT_NE(run.state.index, kNoFile) << "stays until the next stop";
    EXPECT_EQ(PageIndexFaultText(c.expected, PG_CONT, "path"), c.text + std::string(kNoGoTo));
    run.Build();
  }
}

TEST(PageIndex, AFullDiskIsAResult) {
  const std::string content = Pages(5000);
  const ScratchFile file(content);
  IndexRun run(file.Path());
  rlimit before{};
  getrlimit(RLIMIT_FSIZE, &before);
  for (const auto& [bytes, expected] :
       {std::pair{rlim_t{0}, PageIndexFault::indexWrite}, {rlim_t{20000}, PageIndexFault::recordWrite}}) {
    const rlimit limit{bytes, before.rlim_max};
    setrlimit(RLIMIT_FSIZE, &limit);
    PageIndexFault fault = run.Send(PG_START);
    while (fault == PageIndexFault::none)
      fault = run.Send(PG_CONT);
    setrlimit(RLIMIT_FSIZE, &before);
    EXPECT_EQ(fault, expected);
    run.ExpectIdle();
  }
  EXPECT_EQ(PageIndexFaultText(PageIndexFault::recordWrite, PG_CONT, ""),
            "Error writing the page index file." + std::string(kNoGoTo));
  run.Build();
  ExpectPages(run, PlainPages(content));
}

TEST(PageIndex, AFailedStartHoldsNothingAndSaysWhy) {
  IndexRun run("/no/such/file");
  EXPECT_EQ(run.Send(PG_START), PageIndexFault::sourceOpen);
  const char* const folder = std::getenv("TMPDIR");
  const std::string before = folder != nullptr ? folder : "";
  setenv("TMPDIR", "/no/such/folder", 1);
  EXPECT_EQ(run.Send(PG_START), PageIndexFault::tempFile);
  run.ExpectIdle();
  EXPECT_EQ(run.state.index, kNoFile);
  EXPECT_EQ(run.state.block, nullptr);
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
    FilePos count, expected;  // of page 1
    PageIndexFault fault = PageIndexFault::none;
  };
  const Case cases[] = {{"good", header + record, 0, 5},
                        {"short header", "QLM\x1A", 0, kPageReadFailed},
                        {"bad magic", otherHeader + record, 0, kPageReadFailed, PageIndexFault::badHeader},
                        {"record missing", header, 0, kPageReadFailed},
                        {"no position", header + std::string(8, '\xFF'), 0, kPageReadFailed}};
  PageIndexFault fault = PageIndexFault::none;
  for (const Case& c : cases) {
    const ScratchFile file(c.content);
    const FileHandle index = FileOpenShared(file.Path().c_str());
    fault = PageIndexFault::none;
    EXPECT_EQ(PageIndexLookup(index, 1, c.count, fault), c.expected) << c.what;
    EXPECT_EQ(fault, c.fault) << c.what;
    FileClose(index);
  }
  EXPECT_EQ(PageIndexLookup(kNoFile, 1, 1, fault), kPageNoIndex);
}

}  // namespace
