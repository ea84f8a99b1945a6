// The search of the program: a byte string in the open file, found forward, one hit at a time (Find Next) or
// all of them into the tag list (Mark All). Works on the bytes of the file, so display format and wrap do not
// matter. Knows no window: the caller shows the wait cursor, beeps, moves the view, and may look in through
// SearchProgress. The one idea: a search is a single pass over the file through one small buffer, of which
// the last bytes are carried to the front, so that no byte is read twice and no hit across a border is lost.
#pragma once

#include "engine/view_records.h"

// Bytes of one read at most. Reads end at multiples of it in the file, which are borders of the system's own
// pages. Fewer would cost more calls; more would leave too little room in the processor's nearest cache for
// both the bytes read and those that they are copied from.
inline constexpr std::int32_t kSearchReadBytes = 20480;

inline constexpr std::int32_t kSearchKeyBytes = 36;

// Bits of SearchState::SearchFlags.
inline constexpr std::uint16_t SEARCH_TEXT = 0x0001;      // a search is defined
inline constexpr std::uint16_t SEARCH_HEX = 0x0002;       // a search is defined, its key came as hex text
inline constexpr std::uint16_t SEARCH_CASE = 0x0004;      // exact compare; else A to Z equal a to z
inline constexpr std::uint16_t SEARCH_MARK_ALL = 0x0100;  // Mark All was asked for, not Find Next
inline constexpr std::uint16_t SEARCH_FROM_TOP = 0x0200;  // the search is to start at the top of the file

// The one search of the program. Lives for the whole run and stays as it is when files come and go.
struct SearchState {
  std::uint8_t SearchKey[kSearchKeyBytes] = {};  // in the file's character code; may hold zero bytes
  std::int32_t SearchKeyLen = 0;                 // bytes; 0: no key yet
  std::uint16_t SearchFlags = SEARCH_FROM_TOP;   // 0: no search was ever defined
  FilePos SearchNext = kNoPosition;              // where the next Find Next starts; below 0: by the view
};

// Whether there is something to search for. Without it Find Next and Mark All only beep.
[[nodiscard]] bool SearchIsDefined(const SearchState& search);

// Negative results of a search. All mean that there is no hit; only kSearchCanceled also means that
// everything is as it was before.
inline constexpr FilePos kSearchNoHit = -1;      // also: too few bytes left, or a read gave nothing
inline constexpr FilePos kSearchNoKey = -2;      // the key length is below 1
inline constexpr FilePos kSearchNoMemory = -10;  // no memory for the buffer
inline constexpr FilePos kSearchNoFile = -21;    // the file could not be opened
inline constexpr FilePos kSearchSeekFailed = -22;
inline constexpr FilePos kSearchCanceled = -30;  // SearchProgress said so

// The box for a failed search (beep and icon of a stop sign, no owner): its text, or null for a result that
// has none.
inline constexpr const char* kSearchFailureCaption = "Find Error";
[[nodiscard]] const char* SearchFailureText(FilePos result);

// Lets the caller of a long search keep the program alive. `report` is called from time to time, every 16 MB
// and every thirtieth of a second at the latest where reads do not hang, with the position that the search
// has reached and the position at which it ends. False ends the search. It must not change the file record,
// the search state or the tags that the search was given.
struct SearchProgress {
  bool (*report)(void* context, FilePos position, FilePos end) = nullptr;
  void* context = nullptr;
};

// The offset of the first place in the buffer at which the key stands, or -1. `flags` as in SearchFlags.
// Lengths in bytes; the key length is at least 1.
[[nodiscard]] std::int32_t FindInBuffer(std::int32_t bufferLen, const std::uint8_t* buffer,
                                        std::int32_t keyLen, const std::uint8_t* key, std::uint16_t flags);

// The file offset of the first hit at or behind file.Fcur that ends at file.Flen or before, or a negative
// result. A key has at most kSearchKeyBytes bytes. The file is opened for the call and closed on every road
// out. file.Fcur moves on to the start of the last slice searched. A file that has become shorter is searched
// as far as it goes.
[[nodiscard]] FilePos SearchFile(ViewFile& file, std::int32_t keyLen, const std::uint8_t* key,
                                 std::uint16_t flags, const SearchProgress& progress = {});

// Find Next on a defined search: finds the next hit and makes it the selection. The start is SearchNext, or
// if that is negative the larger of `paintedTop`, the top line's offset at the last paint, and `selEnd`. The
// result is that of SearchFile. On a hit the selection is the hit. Without one the selection is cleared and
// the next search starts at the top; the caller repaints and beeps. Canceled, nothing has changed.
[[nodiscard]] FilePos FindNext(ViewFile& file, SearchState& search, FilePos paintedTop, FilePos& selStart,
                               FilePos& selEnd, const SearchProgress& progress = {});

// Whether the line that holds `hit` is among the `linesPerScreen` lines from the top line on, so that a hit
// there moves nothing.
[[nodiscard]] bool HitIsOnScreen(const LineArray& lines, std::int32_t linesPerScreen, FilePos hit);

// Mark All on a defined search: tags every hit of the file, overlapping ones too. The result is the first
// hit, or that of SearchFile where there is none. When the list is full nothing can change any more and the
// search ends. A hit puts the first hit's line on top; without one the view goes to the bottom. Canceled,
// nothing has changed.
[[nodiscard]] FilePos MarkAll(ViewFile& file, SearchState& search, TagList& tags,
                              const SearchProgress& progress = {});
