#include "pageindex/page_index.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <cstdio>
#include <cstring>
#include <limits>
#include <new>

#include "platform/temp_file.h"

namespace {

constexpr std::array<std::uint8_t, 4> kMagic = {'Q', 'L', 'M', 0x1A};
constexpr std::size_t kRecordBytes = 8;  // of a page, and of the header in front of them
constexpr std::int32_t kLeastBlock = 2;
// The header has 32 bits for the count, and a lookup takes it as signed. A file that needs more has 4 GB of
// line breaks and form feeds and nothing else; its further pages are left out.
constexpr FilePos kMostPages = std::numeric_limits<std::int32_t>::max();

constexpr std::uint32_t kStopIcon = 16;  // as the numbers of beeps and of the icons of boxes
constexpr std::uint32_t kWarningIcon = 48;

constexpr const char* kStepCaption = "Quorl Page Indexing";
#define QUORL_PAGE_STEP_TEXT(what) what "\n\nPage indexing failed, [GoTo page] command will not be available"

constexpr PageIndexBox StartBox(const char* text) {
  return {"Program Error", text, kWarningIcon, kWarningIcon, true, false};
}
constexpr PageIndexBox StepBox(const char* text) {
  return {kStepCaption, text, 0, kNoBeep, false, false};
}

// In the order of PageIndexFault, from tempFile on.
constexpr PageIndexBox kBoxes[] = {
    StartBox("Cannot open temp file:\n%s"),
    StartBox("Cannot allocate file I/O buffer for page index."),
    StartBox("Cannot open file:\n%s"),
    StartBox("Index file write error:\n%s"),
    StepBox(QUORL_PAGE_STEP_TEXT("Seek error.")),
    StepBox(QUORL_PAGE_STEP_TEXT("Read error.")),
    StepBox(QUORL_PAGE_STEP_TEXT("Error writing the page index file.")),
    StepBox(QUORL_PAGE_STEP_TEXT("Error locating the page index header.")),
    StepBox(QUORL_PAGE_STEP_TEXT("Error updating the page index header.")),
    {"Program error", "PG_CONT while not PG_ACTIVE", kStopIcon, kStopIcon, true, false},
    {"Program error", "Unknown message code: %X", kStopIcon, kStopIcon, true, true},
    {"Program Error", "Index file corrupted.", kWarningIcon, kWarningIcon, false, false},
};
#undef QUORL_PAGE_STEP_TEXT
static_assert(std::size(kBoxes) == static_cast<std::size_t>(PageIndexFault::badHeader));

using Record = std::array<std::uint8_t, kRecordBytes>;

// Low word first, and within it the low byte first: the second word is the high half of the position.
Record MakeRecord(FilePos position) {
  Record record;
  for (std::size_t i = 0; i < kRecordBytes; ++i) {
    record[i] = static_cast<std::uint8_t>(static_cast<std::uint64_t>(position) >> (8 * i));
  }
  return record;
}

std::uint64_t ReadNumber(const std::uint8_t* bytes, std::size_t count) {
  std::uint64_t number = 0;
  for (std::size_t i = 0; i < count; ++i)
    number |= static_cast<std::uint64_t>(bytes[i]) << (8 * i);
  return number;
}

bool WriteHeader(FileHandle index, FilePos pageCount) {
  Record header = MakeRecord(pageCount << 32);
  std::copy(kMagic.begin(), kMagic.end(), header.begin());
  return TempFileWrite(index, header.data(), header.size());
}

void CloseHandle(FileHandle& file) {
  if (file != kNoFile) FileClose(file);
  file = kNoFile;
}

void PageIndexReset(PageIndexState& state) {
  CloseHandle(state.source);
  CloseHandle(state.index);
  state.scanOffset = 0;
  state.pageCount = 0;
  state.phase = PageIndexPhase::PG_IDLE;
}

void PageIndexFree(PageIndexState& state) {
  delete[] state.block;
  state.block = nullptr;
  state.blockBytes = 0;
}

PageIndexFault PageIndexStart(PageIndexState& state, const char* path, std::int32_t blockBytes) {
  state.index = TempFileOpen();
  if (state.index == kNoFile) return PageIndexFault::tempFile;
  PageIndexFree(state);
  state.blockBytes = std::max(blockBytes, kLeastBlock);
  state.block = new (std::nothrow) std::uint8_t[static_cast<std::size_t>(state.blockBytes)]();
  if (state.block == nullptr) return PageIndexFault::noMemory;
  state.source = FileOpenShared(path);
  if (state.source == kNoFile) return PageIndexFault::sourceOpen;
  const Record first = MakeRecord(0);
  if (!WriteHeader(state.index, 0) || !TempFileWrite(state.index, first.data(), first.size())) {
    return PageIndexFault::indexWrite;
  }
  state.pageCount = 1;
  state.behindLineBreak = false;
  state.phase = PageIndexPhase::PG_ACTIVE;
  return PageIndexFault::none;
}

// Records on their way into the index file. A lookup may have moved the file's position, so each write says
// where it goes.
class PageRecords {
 public:
  explicit PageRecords(PageIndexState& state) : state_(state) {}

  [[nodiscard]] bool Append(FilePos position) {
    if (state_.pageCount >= kMostPages) return true;
    if (count_ == records_.size() && !Flush()) return false;
    ++state_.pageCount;
    records_[count_++] = MakeRecord(position);
    return true;
  }

  [[nodiscard]] bool Flush() {
    if (count_ == 0) return true;
    const FilePos first = state_.pageCount - static_cast<FilePos>(count_) + 1;
    const std::size_t bytes = count_ * kRecordBytes;
    count_ = 0;
    return FileSeek(state_.index, first * static_cast<FilePos>(kRecordBytes)) &&
           TempFileWrite(state_.index, records_.data(), bytes);
  }

 private:
  PageIndexState& state_;
  std::array<Record, 512> records_;
  std::size_t count_ = 0;
};

bool IsLineBreak(std::uint8_t byte) {
  return byte == '\r' || byte == '\n';
}

// Records the pages that start in the `count` bytes of the block.
bool RecordPages(PageIndexState& state, std::size_t count) {
  PageRecords records(state);
  const std::uint8_t* const end = state.block + count;
  const std::uint8_t* place = state.block;
  const auto nextFormFeed = [&] {
    place = static_cast<const std::uint8_t*>(std::memchr(place, '\f', static_cast<std::size_t>(end - place)));
    return place != nullptr;
  };
  for (; nextFormFeed(); ++place) {
    const bool pageStarts = place == state.block ? state.behindLineBreak : IsLineBreak(place[-1]);
    if (pageStarts && !records.Append(state.scanOffset + (place - state.block))) return false;
  }
  return records.Flush();
}

PageIndexFault PageIndexStep(PageIndexState& state) {
  if (!FileSeek(state.source, state.scanOffset)) return PageIndexFault::seek;
  const std::int64_t read = FileRead(state.source, state.block, static_cast<std::size_t>(state.blockBytes));
  if (read < 0) return PageIndexFault::read;
  if (!RecordPages(state, static_cast<std::size_t>(read))) return PageIndexFault::recordWrite;
  if (read > 0) state.behindLineBreak = IsLineBreak(state.block[read - 1]);
  state.scanOffset += read;
  if (read == state.blockBytes) return PageIndexFault::none;
  if (!FileSeek(state.index, 0)) return PageIndexFault::headerSeek;
  if (!WriteHeader(state.index, state.pageCount)) return PageIndexFault::headerWrite;
  state.phase = PageIndexPhase::PG_DONE;
  return PageIndexFault::none;
}

PageIndexFault RunMessage(std::uint32_t message, PageIndexState& state, const char* path,
                          std::int32_t blockBytes) {
  PageIndexFault fault = PageIndexFault::none;
  switch (message) {
    case PG_START:
      PageIndexReset(state);
      fault = PageIndexStart(state, path, blockBytes);
      if (fault != PageIndexFault::none) {
        PageIndexReset(state);
        PageIndexFree(state);
      }
      return fault;
    case PG_CONT:
      if (state.phase != PageIndexPhase::PG_ACTIVE) {
        PageIndexReset(state);
        return PageIndexFault::notActive;
      }
      fault = PageIndexStep(state);
      if (fault != PageIndexFault::none) state.phase = PageIndexPhase::PG_IDLE;
      return fault;
    case PG_STOP:
      PageIndexReset(state);
      return fault;
    case PG_END:
      PageIndexReset(state);
      PageIndexFree(state);
      return fault;
    default:
      PageIndexReset(state);
      return PageIndexFault::unknownMessage;
  }
}

}  // namespace

const PageIndexBox& PageIndexBoxOf(PageIndexFault fault) {
  assert(fault != PageIndexFault::none);
  return kBoxes[static_cast<std::size_t>(fault) - 1];
}

std::string PageIndexFaultText(PageIndexFault fault, std::uint32_t message, const char* path) {
  std::string text = PageIndexBoxOf(fault).text;
  std::string word;
  if (fault == PageIndexFault::unknownMessage) {
    char number[16];
    std::snprintf(number, sizeof number, "%X", static_cast<unsigned>(message));
    word = number;
  } else {
    word = fault == PageIndexFault::tempFile ? TempFolder() : path;
  }
  if (const std::size_t mark = text.find('%'); mark != std::string::npos) text.replace(mark, 2, word);
  return text;
}

PageIndexFault PageIndexRun(std::uint32_t message, PageIndexState& state, const char* path,
                            std::int32_t blockBytes) {
  const PageIndexFault fault = RunMessage(message, state, path, blockBytes);
  if (state.phase != PageIndexPhase::PG_ACTIVE) CloseHandle(state.source);
  return fault;
}

FilePos PageIndexCount(const PageIndexState& state) {
  const bool serves = (state.phase == PageIndexPhase::PG_ACTIVE || state.phase == PageIndexPhase::PG_DONE) &&
                      state.index != kNoFile;
  return serves ? state.pageCount : -1;
}

FilePos PageIndexLookup(FileHandle index, FilePos page, FilePos count, PageIndexFault& fault) {
  if (index == kNoFile) return kPageNoIndex;
  if (page < 1) return kPageNone;
  Record record;
  const auto readRecord = [&](FilePos number) {
    return FileSeek(index, number * static_cast<FilePos>(kRecordBytes)) &&
           FileRead(index, record.data(), record.size()) == static_cast<std::int64_t>(record.size());
  };
  if (count == 0) {
    if (!readRecord(0)) return kPageReadFailed;
    if (!std::equal(kMagic.begin(), kMagic.end(), record.begin())) {
      fault = PageIndexFault::badHeader;
      return kPageReadFailed;
    }
    count = static_cast<FilePos>(ReadNumber(record.data() + kMagic.size(), 4));
  }
  if (count < page) return kPageNone;
  if (!readRecord(page)) return kPageReadFailed;
  const auto position = static_cast<FilePos>(ReadNumber(record.data(), record.size()));
  return position < 0 ? kPageReadFailed : position;
}
