#include "marks/titles.h"

#include <algorithm>
#include <cassert>
#include <new>

int LockTitles(TitleSet& titles, bool reset) {
  const bool fresh = titles.Lines.Aline == nullptr || titles.Text.Tbuf == nullptr;
  if (titles.Lines.Aline == nullptr) titles.Lines.Aline = new (std::nothrow) LineEntry[kTitleSlots]();
  if (titles.Text.Tbuf == nullptr) titles.Text.Tbuf = new (std::nothrow) Cell[kTitleText]();
  if (titles.Lines.Aline == nullptr || titles.Text.Tbuf == nullptr) {
    FreeTitles(titles);
    return 0;
  }
  titles.Lines.Acnt = kTitleSlots;
  titles.Text.Tlen = kTitleText - 1;
  if (fresh || reset) ResetTitles(titles);
  return 1;
}

void UnlockTitles(TitleSet& titles) {
  assert(titles.Lines.Acur == 0 && titles.Lines.Afirst == 0);
  assert(titles.Lines.Alast >= 0 && titles.Lines.Alast < titles.Lines.Acnt);
  static_cast<void>(titles);
}

void ResetTitles(TitleSet& titles) {
  titles.Lines.Acur = titles.Lines.Afirst = titles.Lines.Alast = 0;
  titles.Lines.Aline[0] = LineEntry{};
  titles.Text.Tend = 0;
  titles.clusters.clear();
  titles.Text.Tclusters = 0;
}

void FreeTitles(TitleSet& titles) {
  delete[] titles.Lines.Aline;
  delete[] titles.Text.Tbuf;
  titles = TitleSet{};
}

bool AppendTitle(TitleSet& titles, FilePos position, CellView text) {
  const auto length = static_cast<std::int32_t>(text.size());
  LineArray& lines = titles.Lines;
  if (lines.Alast >= kTitleSlots - 1 || titles.Text.Tlen - titles.Text.Tend <= length) return false;
  LineEntry& entry = lines.Aline[lines.Alast++];
  entry = LineEntry{};
  entry.Lpos = position;
  entry.Ltext = titles.Text.Tend;
  entry.Llen = length;
  CopyCells(text, titles.Text.Tbuf + titles.Text.Tend, titles.clusters);
  titles.Text.Tcluster = titles.clusters.data();
  titles.Text.Tclusters = static_cast<std::int32_t>(titles.clusters.size());
  titles.Text.Tend += length;
  return true;
}

void EndTitles(TitleSet& titles, FilePos end) {
  LineArray& lines = titles.Lines;
  lines.Aline[lines.Alast] = LineEntry{};
  lines.Aline[lines.Alast].Lpos = end;
  lines.Acur = lines.Afirst;
}

void FreezeLines(TitleSet& titles, const LineArray& lines, const TextBuffer& text, FilePos start,
                 FilePos end) {
  FilePos last = -1;
  for (int i = lines.Afirst; i < lines.Alast; ++i) {
    const LineEntry& line = lines.Aline[i];
    if (line.Lpos >= end || lines.Aline[i + 1].Lpos <= start) continue;
    if (!AppendTitle(titles, line.Lpos, LineCells(line, text))) break;
    last = line.Lpos;
  }
  EndTitles(titles, last + 1);
}
