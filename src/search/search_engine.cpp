#include "search/search_engine.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <chrono>
#include <cstring>
#include <memory>
#include <new>

#include "marks/tag_list.h"
#include "platform/file.h"
#include "search/byte_scan.h"

namespace {

constexpr FilePos kProgressBytes = FilePos{16} << 20;
constexpr std::chrono::milliseconds kProgressInterval{30};  // a slow disk may need long for 16 MB

// The data that is read starts at a cache line; what is carried from the slice before stands in front of it.
constexpr std::size_t kLineBytes = 64;
constexpr std::size_t kBufferBytes = kLineBytes + kLineBytes + kSearchReadBytes;
static_assert(kSearchKeyBytes - 1 <= kLineBytes);
static_assert(kBufferBytes <= 32760);

// A filter that stops the scan in vain more often than this within so many bytes costs more than choosing
// another one. A filter that asks three bytes already is given up less easily, since there may be no better.
constexpr std::int32_t kRefusedLimit = 256;
constexpr std::int32_t kRefusedLimitOfThree = 4096;
constexpr FilePos kRefusedBytes = FilePos{1} << 20;

// Calls the caller's report often enough, and not more often.
class ProgressClock {
 public:
  explicit ProgressClock(const SearchProgress& progress) : progress_(progress) {}

  // Whether the search may go on. `position` has been reached.
  [[nodiscard]] bool GoesOn(FilePos position, FilePos end) {
    if (progress_.report == nullptr) return true;
    const auto now = std::chrono::steady_clock::now();
    if (last_ < 0) last_ = position;
    if (position - last_ < kProgressBytes && now - time_ < kProgressInterval) return true;
    last_ = position;
    const bool goesOn = progress_.report(progress_.context, position, end);
    time_ = std::chrono::steady_clock::now();
    return goesOn;
  }

 private:
  SearchProgress progress_;
  FilePos last_ = kNoPosition;
  std::chrono::steady_clock::time_point time_ = std::chrono::steady_clock::now();
};

// One pass over the file, which gives the hits in ascending order.
class SearchPass {
 public:
  SearchPass(std::int32_t keyLen, const std::uint8_t* key, std::uint16_t flags,
             const SearchProgress& progress)
      : key_(MakeByteKey(key, keyLen, (flags & SEARCH_CASE) == 0)), clock_(progress) {}
  ~SearchPass() {
    if (source_ != kNoFile) FileClose(source_);
  }
  SearchPass(const SearchPass&) = delete;
  SearchPass& operator=(const SearchPass&) = delete;

  // Begins at file.Fcur. 0, or the negative result that ends the search.
  [[nodiscard]] FilePos Begin(const ViewFile& file);

  // The next hit, or the negative result that ends the search.
  [[nodiscard]] FilePos NextHit();

  // The file offset of the slice in the buffer.
  [[nodiscard]] FilePos SliceStart() const { return start_; }

 private:
  // Carries the bytes with which a hit across the border may begin, and reads on behind them. 0, or the
  // negative result that ends the search.
  [[nodiscard]] FilePos NextSlice();

  // Chooses another filter when the present one has proved bad.
  void ReviewFilter();

  ByteKey key_;
  ProgressClock clock_;
  FileHandle source_ = kNoFile;
  std::unique_ptr<std::uint8_t[]> buffer_;
  std::uint8_t* data_ = nullptr;   // where each read goes
  std::uint8_t* slice_ = nullptr;  // the bytes carried, and behind them those read
  std::int32_t have_ = 0;          // bytes of the slice
  std::int32_t next_ = 0;          // index in the slice at which the search goes on
  std::int32_t refused_ = 0;       // since the filter was reviewed
  FilePos reviewed_ = 0;           // the slice's file offset then
  FilePos start_ = 0;              // the slice's file offset
  FilePos end_ = 0;                // the file's length as the caller knows it
};

FilePos SearchPass::Begin(const ViewFile& file) {
  start_ = reviewed_ = file.Fcur;
  end_ = file.Flen;
  buffer_.reset(new (std::nothrow) std::uint8_t[kBufferBytes]);
  if (buffer_ == nullptr) return kSearchNoMemory;
  void* place = buffer_.get() + kLineBytes;
  std::size_t room = kBufferBytes - kLineBytes;
  data_ = static_cast<std::uint8_t*>(std::align(kLineBytes, kSearchReadBytes, place, room));
  slice_ = data_;
  source_ = FileOpenShared(file.Fname);
  if (source_ == kNoFile) return kSearchNoFile;
  if (!FileSeek(source_, start_)) return kSearchSeekFailed;
  const FilePos status = NextSlice();
  if (status == 0) ChooseFilter(key_, slice_, have_);
  return status;
}

FilePos SearchPass::NextSlice() {
  const std::int32_t carried = std::min(have_, key_.length - 1);
  std::memmove(data_ - carried, slice_ + have_ - carried, static_cast<std::size_t>(carried));
  start_ += have_ - carried;
  slice_ = data_ - carried;
  have_ = carried;
  next_ = 0;
  const FilePos position = start_ + carried;
  const FilePos wanted = std::min(kSearchReadBytes - position % kSearchReadBytes, end_ - position);
  if (wanted <= 0) return kSearchNoHit;
  if (!clock_.GoesOn(start_, end_)) return kSearchCanceled;
  const std::int64_t got = FileRead(source_, data_, static_cast<std::size_t>(wanted));
  if (got < 1) return kSearchNoHit;
  // A file that has become shorter ends here.
  if (got < wanted) end_ = position + got;
  have_ += static_cast<std::int32_t>(got);
  return 0;
}

void SearchPass::ReviewFilter() {
  if (refused_ > (key_.asksThird ? kRefusedLimitOfThree : kRefusedLimit)) {
    ChooseFilter(key_, slice_, have_);
    key_.asksThird = true;
  } else if (start_ < reviewed_ + kRefusedBytes) {
    return;
  }
  refused_ = 0;
  reviewed_ = start_;
}

FilePos SearchPass::NextHit() {
  for (;;) {
    const std::int32_t hit = FindBytes(key_, slice_, have_, next_, refused_);
    if (hit >= 0) {
      next_ = hit + 1;
      return start_ + hit;
    }
    ReviewFilter();
    const FilePos status = NextSlice();
    if (status != 0) return status;
  }
}

// The negative result of a search that need not begin; 0 when it must.
FilePos RefuseSearch(const ViewFile& file, std::int32_t keyLen) {
  assert(file.Fcur >= 0 && keyLen <= kSearchKeyBytes);
  if (file.Fcur > file.Flen - keyLen) return kSearchNoHit;
  return keyLen < 1 ? kSearchNoKey : 0;
}

}  // namespace

bool SearchIsDefined(const SearchState& search) {
  return search.SearchFlags != 0 && search.SearchKeyLen != 0;
}

const char* SearchFailureText(FilePos result) {
  return result == kSearchNoMemory ? "Cannot allocate memory for search buffer" : nullptr;
}

std::int32_t FindInBuffer(std::int32_t bufferLen, const std::uint8_t* buffer, std::int32_t keyLen,
                          const std::uint8_t* key, std::uint16_t flags) {
  if (bufferLen < keyLen) return -1;
  ByteKey prepared = MakeByteKey(key, keyLen, (flags & SEARCH_CASE) == 0);
  ChooseFilter(prepared, buffer, bufferLen);
  std::int32_t refused = 0;
  return FindBytes(prepared, buffer, bufferLen, 0, refused);
}

FilePos SearchFile(ViewFile& file, std::int32_t keyLen, const std::uint8_t* key, std::uint16_t flags,
                   const SearchProgress& progress) {
  if (const FilePos refusal = RefuseSearch(file, keyLen); refusal != 0) return refusal;
  SearchPass pass(keyLen, key, flags, progress);
  FilePos result = pass.Begin(file);
  if (result == 0) result = pass.NextHit();
  file.Fcur = pass.SliceStart();
  return result;
}

FilePos FindNext(ViewFile& file, SearchState& search, FilePos paintedTop, FilePos& selStart, FilePos& selEnd,
                 const SearchProgress& progress) {
  FilePos from = search.SearchNext >= file.Flen ? 0 : search.SearchNext;
  if (from < 0) from = std::max(paintedTop, selEnd);
  file.Fcur = std::max<FilePos>(from, 0);
  const FilePos hit = SearchFile(file, search.SearchKeyLen, search.SearchKey, search.SearchFlags, progress);
  if (hit == kSearchCanceled) return hit;
  selStart = hit < 0 ? kNoPosition : hit;
  selEnd = hit < 0 ? kNoPosition : hit + search.SearchKeyLen;
  search.SearchNext = hit < 0 ? 0 : kNoPosition;
  return hit;
}

bool HitIsOnScreen(const LineArray& lines, std::int32_t linesPerScreen, FilePos hit) {
  const std::int32_t last = std::min<std::int32_t>(lines.Acur + linesPerScreen, lines.Alast);
  return lines.Aline[lines.Acur].Lpos <= hit && hit < lines.Aline[last].Lpos;
}

FilePos MarkAll(ViewFile& file, SearchState& search, TagList& tags, const SearchProgress& progress) {
  // The hits go into a copy, so that a search that is canceled leaves the list as it was.
  std::array<TagEntry, kTagSlots> entries{};
  assert(tags.capacity < kTagSlots);
  std::copy_n(tags.entries, tags.count, entries.begin());
  TagList marked{entries.data(), tags.capacity, tags.count};

  file.Fcur = 0;
  FilePos first = RefuseSearch(file, search.SearchKeyLen);
  if (first == 0) {
    SearchPass pass(search.SearchKeyLen, search.SearchKey, search.SearchFlags, progress);
    first = pass.Begin(file);
    if (first == 0) first = pass.NextHit();
    FilePos hit = first;
    while (hit >= 0) {
      TagInsert(marked, hit, kTagBySearch);
      if (marked.count >= marked.capacity) break;
      hit = pass.NextHit();
    }
    file.Fcur = pass.SliceStart();
    if (hit == kSearchCanceled) return hit;
  }
  std::copy_n(marked.entries, marked.count, tags.entries);
  tags.count = marked.count;
  search.SearchNext = kNoPosition;
  return first;
}
