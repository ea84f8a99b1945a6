// Page padding: every page of the run is filled up with empty rows to the same number of rows, and each line
// learns its row within its page. A page begins at a form feed, which a line flag shows, and at the start of
// the file. Padding rows have no place of their own in the file: they span no byte, and steps, tags and
// selections fall on the real line behind them. Works on a run that LoadView has just made; knows no file and
// no window.
#pragma once

#include "engine/view_records.h"

// The longest page that padding makes: a quarter of the array, so that some pages fit whatever is asked for.
// A page that has more lines by itself keeps them.
constexpr std::int32_t LongestPaddedPage(const LineArray& lines) {
  return std::max(lines.Acnt / 4, 1);
}

// Pads the pages of the run to `pageLength` rows, a gap line in front of them not counted. A page whose start
// is not in the run stays as it is. `fileLength` is the length of the file: blank lines at its end give way
// to one gap line.
//
// What finds no room drops out at the ends of the run, which begins and ends with lines, not with padding.
// The top line stays the top line, and in its entry if all rows find room so. 0 <= Afirst <= Acur < Alast <
// Acnt holds as before, and the entry at Alast is the sentinel. The cost is linear in Acnt.
void PadPages(LineArray& lines, const TextBuffer& text, FilePos fileLength, std::int32_t pageLength);

// Leaves the page at the head of a padded run out if the run does not have its start, nor as many lines as a
// full one: how far it must be filled up cannot be told. So rows are the same in every run that has
// `pageLength` lines above its top line.
void DropUnknownPage(LineArray& lines, std::int32_t pageLength);
