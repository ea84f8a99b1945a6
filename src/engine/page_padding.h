// Page padding: every page of the run is filled up with empty lines to the same number of rows, and each
// line learns its row within its page. A page begins at a form feed, which a line flag shows, and at the
// start of the file. Works on a run that LoadView has just made; knows no file and no window.
#pragma once

#include "engine/view_records.h"

// Pads the pages of the run to `pageLength` rows (at least 1). `fileLength` is the length of the file: blank
// lines at its end give way to one gap line. Lines in front of Acur make room towards the start of the
// array, those behind it towards its end, and what finds no room drops out there; the top line stays.
// Afterwards 0 <= Afirst <= Acur <= Alast < Acnt holds as before, and the entry at Alast is the sentinel.
void PadPages(LineArray& lines, const TextBuffer& text, FilePos fileLength, std::int32_t pageLength);
