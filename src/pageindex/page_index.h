// The page index: a background job that walks the viewed file in small blocks, one for each message, and
// notes in a temporary file where pages start. Page 1 starts at 0; every further page starts at a form feed
// that stands directly behind a CR or LF. Knows no window: who sends the messages owns boxes, beeps and the
// timer, and shows what a result says. The one idea: the record of page n stands at 8 x n of the index file,
// so a lookup is one seek, and the index serves while it grows.
#pragma once

#include <cstdint>
#include <string>

#include "engine/file_pos.h"
#include "platform/file.h"

// Messages of the job, private messages of the main window.
inline constexpr std::uint32_t PG_START = 1035;  // start indexing the viewed file
inline constexpr std::uint32_t PG_CONT = 1036;   // scan one block
inline constexpr std::uint32_t PG_STOP = 1037;   // end the run
inline constexpr std::uint32_t PG_END = 1038;    // end the run and release what it held

enum class PageIndexPhase : int { none = 0, PG_IDLE = 1, PG_ACTIVE = 2, PG_DONE = 3 };

struct PageIndexState {
  PageIndexPhase phase = PageIndexPhase::none;
  FileHandle index = kNoFile;   // the index file; stays open for lookups when the build has ended
  FileHandle source = kNoFile;  // the viewed file; open during the build only
  FilePos scanOffset = 0;       // file offset of the next block
  FilePos pageCount = 0;        // pages found so far, at least 1 during a build
  std::uint8_t* block = nullptr;
  std::int32_t blockBytes = 0;
  bool behindLineBreak = false;  // the byte before scanOffset is a CR or LF
};

// What can go wrong: a row each of PageIndexBoxOf.
enum class PageIndexFault : int {
  none,
  tempFile,    // start: no temporary file
  noMemory,    // start: no block buffer
  sourceOpen,  // start: the viewed file cannot be opened
  indexWrite,  // start: the first write failed
  seek,        // step, and so the next four
  read,
  recordWrite,
  headerSeek,
  headerWrite,
  notActive,  // PG_CONT without a build
  unknownMessage,
  badHeader,  // lookup
};

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

// Runs one message on the file at `path`, which PG_START alone uses. `blockBytes` is the setting for the
// size of a block; below 2, the size in which a page start fits, it counts as 2. state.phase is the outcome.
// After PG_END the state holds nothing.
[[nodiscard]] PageIndexFault PageIndexRun(std::uint32_t message, PageIndexState& state, const char* path,
                                          std::int32_t blockBytes);

// The number of pages that can be looked up now, or -1 when the index cannot serve.
[[nodiscard]] FilePos PageIndexCount(const PageIndexState& state);

// Negative results of a lookup.
inline constexpr FilePos kPageNone = -1;        // the number is below 1 or above the count
inline constexpr FilePos kPageNoIndex = -2;     // no index file
inline constexpr FilePos kPageReadFailed = -3;  // a seek or a read failed, or the header is bad

// The file offset of page `page`, or a negative result. `count` is the number of pages; 0 takes it from the
// header, which says 0 as long as the build runs. Serves during a build. With a bad header, `fault` becomes
// badHeader; else it is left as it is.
[[nodiscard]] FilePos PageIndexLookup(FileHandle index, FilePos page, FilePos count, PageIndexFault& fault);
