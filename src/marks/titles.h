// Frozen title lines: a short run of lines with text of their own, which stay at the top of the window
// whatever file is shown. Laid out as the view's run is: the entry behind the last title ends it. Knows no
// window; who changes titles repaints.
#pragma once

#include <vector>

#include "engine/view_records.h"

inline constexpr std::int16_t kTitleSlots = 16;  // the end entry's included, so 15 titles
inline constexpr std::int32_t kTitleText = 32000;

// Lines.Alast is the number of titles. Lines.Acnt is 0 as long as there is no storage.
struct TitleSet {
  LineArray Lines;
  TextBuffer Text;
  std::vector<CellCluster> clusters;  // Text.Tcluster points into it
};

// Begins a use of the titles: gets the storage, if it is missing, and empties the set then, or when `reset`
// asks for it. Result 1; 0 when there is no memory, and the set has no storage then. Ends with
// UnlockTitles.
[[nodiscard]] int LockTitles(TitleSet& titles, bool reset);

// Ends a use. The set must be at rest: the first title at index 0, and 15 titles at most.
void UnlockTitles(TitleSet& titles);

// Empties the set.
void ResetTitles(TitleSet& titles);

// Gives the storage back; no titles are left.
void FreeTitles(TitleSet& titles);

// Adds a title behind the others. False, with the set as it was, when 15 stand in it, or when there is no
// room for the text.
[[nodiscard]] bool AppendTitle(TitleSet& titles, FilePos position, CellView text);

// Writes the entry that ends the titles, and puts the set at rest.
void EndTitles(TitleSet& titles, FilePos end);

// Makes titles of the lines that the bytes from `start` up to `end` touch, each as a whole, as they stand in
// `lines` and `text`: as many as there is room for, and none beyond the run. The set must be locked and
// empty.
void FreezeLines(TitleSet& titles, const LineArray& lines, const TextBuffer& text, FilePos start,
                 FilePos end);
