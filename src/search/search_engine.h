// The search of the program: a byte string in the open file, found forward, one hit at a time (Find Next) or
// all of them into the tag list (Mark All). Works on the bytes of the file, so display format and wrap do not
// matter. Knows no window: the caller runs a search on the reader's thread, gives it copies of all that it
// needs, and applies its result. The one idea: a search is a single pass over the file through one small
// buffer, of which the last bytes are carried to the front, so that no byte is read twice and no hit across a
// border is lost.
#pragma once

#include <vector>

#include "engine/byte_source.h"
#include "engine/long_job.h"
#include "engine/view_records.h"
#include "marks/tag_list.h"
#include "settings/recent_lists.h"

// Bytes of one read at most. Reads end at multiples of it in the file, which are borders of the system's own
// pages. Fewer would cost more calls; more would leave too little room in the processor's nearest cache for
// both the bytes read and those that they are copied from.
inline constexpr std::int32_t kSearchReadBytes = 20480;

// Bits of SearchState::SearchFlags.
inline constexpr std::uint16_t SEARCH_TEXT = 0x0001;      // a search is defined
inline constexpr std::uint16_t SEARCH_CASE = 0x0004;      // exact compare; else A to Z equal a to z
inline constexpr std::uint16_t SEARCH_MARK_ALL = 0x0100;  // Mark All was asked for, not Find Next
inline constexpr std::uint16_t SEARCH_FROM_TOP = 0x0200;  // the search is to start at the top of the file
// The code of a key that is text, of those of VO_UNICODE: hits begin where characters do, and without
// SEARCH_CASE letters beyond ASCII fold too. None: a search for bytes.
inline constexpr std::uint16_t SEARCH_CODES = VO_UNICODE;

// The one search of the program. Lives for the whole run and stays as it is when files come and go.
struct SearchState {
  std::uint8_t SearchKey[kSearchKeyBytes] = {};  // in the file's character code; may hold zero bytes
  std::int32_t SearchKeyLen = 0;                 // bytes; 0: no key yet
  std::uint16_t SearchFlags = SEARCH_FROM_TOP;   // 0: no search was ever defined
  bool TextCase = false;                         // SEARCH_CASE of the last search for a text
  FilePos SearchNext = kNoPosition;              // where the next Find Next starts; below 0: by the view
};

// Whether there is something to search for. Without it Find Next and Mark All only beep.
[[nodiscard]] bool SearchIsDefined(const SearchState& search);

// Negative results of a search. None of them is a hit; after kSearchCanceled and kSearchReadFailed everything
// is as it was before.
inline constexpr FilePos kSearchNoHit = -1;        // also: too few bytes left
inline constexpr FilePos kSearchNoKey = -2;        // the key length is below 1
inline constexpr FilePos kSearchNoMemory = -10;    // no memory for the buffer
inline constexpr FilePos kSearchReadFailed = -23;  // the source knows the reason
inline constexpr FilePos kSearchCanceled = -30;    // LongJob::stop was set

// The box for a failed search (beep and icon of a stop sign, no owner).
inline constexpr const char* kSearchFailureCaption = "Find Error";
inline constexpr const char* kSearchNoMemoryText = "Cannot allocate memory for search buffer";

// The offset of the first place in the buffer at which the key stands, or -1. `flags` as in SearchFlags.
// Lengths in bytes; the key length is at least 1. A code in the flags does not count here.
[[nodiscard]] std::int32_t FindInBuffer(std::int32_t bufferLen, const std::uint8_t* buffer,
                                        std::int32_t keyLen, const std::uint8_t* key, std::uint16_t flags);

// The file offset of the first hit at or behind `from` in the file that `source` has open, or a negative
// result. A key has at most kSearchKeyBytes bytes. A file that becomes shorter is searched as far as it goes.
// `job` tells how far the search is (where a failed read was to begin, in the end), and is asked for each
// slice whether it shall stop.
[[nodiscard]] FilePos SearchFile(ByteSource& source, FilePos from, std::int32_t keyLen,
                                 const std::uint8_t* key, std::uint16_t flags, LongJob& job);

// What Find Next leads to.
struct FindResult {
  FilePos hit = kSearchNoHit;      // the result of SearchFile
  FilePos selStart = kNoPosition;  // the selection and
  FilePos selEnd = kNoPosition;
  FilePos searchNext = 0;  // the start of the next search, where hit is a place or kSearchNoHit
};

// Find Next on a defined search. The start is SearchNext, or if that is negative the larger of `paintedTop`,
// the top line's offset at the last paint, and `selEnd`. On a hit the selection is the hit. Without one it is
// none and the next search starts at the top; the caller repaints and beeps.
[[nodiscard]] FindResult FindNext(ByteSource& source, const SearchState& search, FilePos paintedTop,
                                  FilePos selEnd, LongJob& job);

// A place where the key stands.
struct Hit {
  FilePos start;
  FilePos end;  // exclusive
  bool operator==(const Hit&) const = default;
};

// The hits of a defined search that begin at or behind `from` and in front of `to`, in ascending order, and
// `most` of them at most. Reads little more than that stretch. What there is before a failure or a stop.
[[nodiscard]] std::vector<Hit> HitsBetween(ByteSource& source, const SearchState& search, FilePos from,
                                           FilePos to, std::size_t most, LongJob& job);

// Whether the line that holds `hit` is among the `linesPerScreen` lines from the top line on, so that a hit
// there moves nothing.
[[nodiscard]] bool HitIsOnScreen(const LineArray& lines, std::int32_t linesPerScreen, FilePos hit);

// Mark All on a defined search: tags every hit of the file, overlapping ones too, in `tags`, a copy of the
// list with its slot for the sentinel. The result is the first hit, or that of SearchFile where there is
// none. When `capacity` tags are there nothing can change any more and the search ends. A hit puts the first
// hit's line on top; without one the view goes to the bottom. After any negative result but kSearchNoHit, the
// copy is not to be used.
[[nodiscard]] FilePos MarkAll(ByteSource& source, const SearchState& search, std::vector<TagEntry>& tags,
                              std::int16_t capacity, LongJob& job);
