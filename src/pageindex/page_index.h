// The page index: a background job that walks the viewed file in short steps and notes in a temporary file
// where pages start. Page 1 starts at 0, each further page at a form feed that stands directly behind a CR or
// LF. Knows no window: who has the steps run owns boxes, beeps and the timer, and shows what a result says.
// The one idea: the record of page n stands at 8 x n of the index file, so a lookup is one read, and the
// index serves while it grows. What is noted holds for one file; each step looks whether that is still there.
#pragma once

#include <array>
#include <atomic>
#include <chrono>
#include <cstdint>
#include <memory>
#include <string>

#include "engine/byte_source.h"
#include "engine/file_pos.h"
#include "engine/text_lines.h"
#include "platform/file.h"

// Messages of the job, private messages of the main window.
inline constexpr std::uint32_t PG_START = 1035;  // start indexing the viewed file
inline constexpr std::uint32_t PG_CONT = 1036;   // run a step
inline constexpr std::uint32_t PG_STOP = 1037;   // end the run
inline constexpr std::uint32_t PG_END = 1038;    // end the run and release what it held

// The number of a page, from 1 on, and how many there are.
using PageNumber = std::int64_t;

enum class PageIndexPhase : int {
  PG_IDLE = 1,    // ended by a fault; it never goes on
  PG_ACTIVE = 2,  // a step gets on
  PG_DONE = 3,    // all of the file is noted; a step looks whether it has grown or is another one
  PG_PAUSED = 4,  // the file could not be read, or does not keep still; a step tries again
};

// What can go wrong with the index itself: a row each of PageIndexBoxOf. That the viewed file cannot be read
// is no fault.
enum class PageIndexFault : int {
  none,
  tempFile,     // no temporary file
  noMemory,     // no block buffer
  indexWrite,   // the first write failed
  recordWrite,  // a later write failed
  headerWrite,  // the header could not be brought up to date
  notActive,    // PG_CONT without a build
  unknownMessage,
  badHeader,  // lookup
};

// The first bytes of what is noted, or the last ones.
struct PageIndexProbe {
  std::array<std::uint8_t, 64> bytes{};
  std::int32_t count = 0;
};

// What the reader's thread knows.
struct PageIndexBuild {
  FileHandle index = kNoFile;  // the index file
  ByteIdentity known;          // the viewed file, as the latest open found it
  FilePos scanned = 0;         // file offset of the next block
  PageNumber pageCount = 1;    // pages found so far
  FilePos shortAt = -1;        // where the file ended although it is said to be longer
  PageIndexProbe head;         // the bytes from 0 on, and those up to `scanned`: when they have changed,
  PageIndexProbe tail;         // the file was emptied and written anew
  std::unique_ptr<std::uint8_t[]> block;
  bool finished = false;              // the header holds the count
  std::int32_t restarts = 0;          // so often the file turned out to be another one, in all
  std::int32_t restartsAtFinish = 0;  // and up to the latest time that the index was finished
};

// The index of one file. Made in the phase PG_ACTIVE; the first step opens the temporary file.
//
// Threads. A step, a find and a lookup run on the reader's thread, one at a time: they take as long as the
// disk does. Any thread may make a PageIndex, read its path and, at any time, its atomics, and call
// PageIndexPagesOf, PageIndexBoxOf and PageIndexFaultText. `build` is the reader's thread's own. Hold the
// index by std::shared_ptr, in the window and in each job: the last to let go closes the temporary file,
// whichever thread that is.
struct PageIndex {
  explicit PageIndex(std::string file, TextUnit textUnit = TextUnit::byte);
  ~PageIndex();
  PageIndex(const PageIndex&) = delete;
  PageIndex& operator=(const PageIndex&) = delete;

  const std::string path;  // of the viewed file
  const TextUnit unit;     // of its text: in UTF-16, a page starts at an even offset
  std::atomic<PageIndexPhase> phase{PageIndexPhase::PG_ACTIVE};
  std::atomic<PageNumber> pageCount{1};   // pages that can be looked up
  std::atomic<FilePos> scanned{0};        // bytes; with `length`, how far a step or a find has got
  std::atomic<FilePos> length{0};         // of the file, as far as known
  std::atomic<FileError> sourceError{0};  // why the phase is PG_PAUSED; 0: the file does not keep still
  // Set when the phase becomes PG_IDLE. Who shows it takes it away with exchange(none), so that it is shown
  // once.
  std::atomic<PageIndexFault> fault{PageIndexFault::none};

  PageIndexBuild build;
};

struct PageStepLimits {
  std::int32_t leastBytes = 8192;           // scanned in any case; below 1 counts as 1
  std::chrono::microseconds budget{4000};   // and then on, until the step has taken so long
  const std::atomic<bool>* stop = nullptr;  // a user waits: scan no further block
};

// Runs one step with a source that no action is under way on; it is closed again behind it. index.phase is
// the outcome.
void PageIndexStep(ByteSource& source, PageIndex& index, const PageStepLimits& limits);

// Negative results of a lookup and of a find.
inline constexpr FilePos kPageNone = -1;        // the number is below 1 or above the count
inline constexpr FilePos kPageNoIndex = -2;     // no index file, or the index has ended with a fault
inline constexpr FilePos kPageReadFailed = -3;  // a read failed, the header is bad, or the file kept changing
inline constexpr FilePos kPageStopped = -4;     // a find was stopped

// The file offset of page `page` in the file as it is now, or a negative result. Indexes on as far as that
// takes, however long; what was noted up to a stop stays. index.scanned and index.length tell the progress.
[[nodiscard]] FilePos PageIndexFind(ByteSource& source, PageIndex& index, PageNumber page,
                                    const std::atomic<bool>& stop);

// The pages that can be found.
struct PageIndexPages {
  PageNumber count = -1;  // known so far; -1: the index cannot serve
  bool more = false;      // further ones may follow
};
[[nodiscard]] PageIndexPages PageIndexPagesOf(const PageIndex& index);

// The file offset that the index file holds for page `page`, or a negative result. `count` is the number of
// pages; 0 takes it from the header, which says 0 as long as the build runs. With a bad header, `fault`
// becomes badHeader; else it is left as it is.
[[nodiscard]] FilePos PageIndexLookup(FileHandle index, PageNumber page, PageNumber count,
                                      PageIndexFault& fault);

// The box of a fault. The beep comes before the box, or behind it.
struct PageIndexBox {
  const char* caption;
  const char* text;  // the format of PageIndexFaultText
  std::uint32_t icon;
  std::uint32_t beep;  // kNoBeep for none
  bool owned;          // by the main window; else by none
  bool beepBehind;
};
inline constexpr std::uint32_t kNoBeep = 0xFFFFFFFF;

// `fault` is not none.
[[nodiscard]] const PageIndexBox& PageIndexBoxOf(PageIndexFault fault);

// The text of a fault that `message` met on the file at `path`.
[[nodiscard]] std::string PageIndexFaultText(PageIndexFault fault, std::uint32_t message, const char* path);
