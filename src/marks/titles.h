// Frozen title lines: a short run of lines with text of their own, which stay at the top of the window
// whatever file is shown. Laid out as the view's run is: the entry behind the last title ends it. Knows no
// window; who changes titles repaints.
#pragma once

#include "engine/view_records.h"

inline constexpr std::int16_t kTitleSlots = 16;  // the end entry's included, so 15 titles
inline constexpr std::int32_t kTitleText = 32000;

// Lines.Alast is the number of titles. Lines.Acnt is 0 as long as there is no storage.
struct TitleSet {
  LineArray Lines;
  TextBuffer Text;
};

// Begins a use of the titles: gets the storage, if it is missing, and empties the set then, or when `reset`
// asks for it. Result 1; 0 when there is no memory, and the set has no storage then. Ends with
// UnlockTitles.
[[nodiscard]] int LockTitles(TitleSet& titles, bool reset);

// Ends a use. The set must be at rest: the first title at index 0, and 15 titles at most.
void UnlockTitles(TitleSet& titles);

// Gives the storage back; no titles are left.
void FreeTitles(TitleSet& titles);

// Reads the titles of a profile section, which replace those in the set: none, as long as no profile is
// read. Result 1; 0 when the section has no name or the set no storage.
int LoadTitles(const char* section, TitleSet& titles);
