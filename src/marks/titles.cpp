#include "marks/titles.h"

#include <cassert>
#include <new>

namespace {

void ResetTitles(TitleSet& titles) {
  titles.Lines.Acur = titles.Lines.Afirst = titles.Lines.Alast = 0;
  titles.Lines.Aline[0] = LineEntry{};
  titles.Text.Tend = 0;
}

}  // namespace

int LockTitles(TitleSet& titles, bool reset) {
  const bool fresh = titles.Lines.Aline == nullptr || titles.Text.Tbuf == nullptr;
  if (titles.Lines.Aline == nullptr) titles.Lines.Aline = new (std::nothrow) LineEntry[kTitleSlots]();
  if (titles.Text.Tbuf == nullptr) titles.Text.Tbuf = new (std::nothrow) char[kTitleText]();
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

void FreeTitles(TitleSet& titles) {
  delete[] titles.Lines.Aline;
  delete[] titles.Text.Tbuf;
  titles = TitleSet{};
}

int LoadTitles(const char* section, TitleSet& titles) {
  if (section == nullptr || section[0] == '\0' || titles.Lines.Aline == nullptr) return 0;
  ResetTitles(titles);
  return 1;
}
