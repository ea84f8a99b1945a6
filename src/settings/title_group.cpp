#include "settings/title_group.h"

#include <algorithm>
#include <string>

#include "platform/profile_batch.h"
#include "settings/profile_values.h"

namespace {

constexpr std::size_t kLongestTitle = 512;                               // characters
constexpr std::size_t kLongestCell = 4 * (1 + CellCluster::kMostMarks);  // bytes of UTF-8

// A number in the file, of which a hand may have made anything, decides how many keys are deleted.
constexpr std::int32_t kMostFormerTitles = 1000;

std::string TitleKey(int number) {
  return "Title" + std::to_string(number);
}

std::string TitleText(const TitleSet& titles, int index) {
  const LineEntry& line = titles.Lines.Aline[index];
  CellRow title = CopyOf(LineCells(line, titles.Text).substr(0, kLongestTitle));
  std::ranges::replace_if(
      title.cells, [](Cell cell) { return cell == U'\n' || cell == U'\r' || cell == U'\0'; }, U' ');
  return CellsToUtf8(title.View());
}

// What is no UTF-8 was written when titles stood in the profile as the bytes of their cells.
CellRow TitleCells(const std::string& text) {
  CellRow row = CellsOfUtf8(text);
  const auto isBad = [](Cell cell) { return (cell & kCellKinds) == kBadCell; };
  if (std::ranges::any_of(row.cells, isBad)) row = {CellsOfBytes(text), {}};
  return row;
}

void WriteTitles(const char* profile, const char* section, const TitleSet* titles) {
  const std::int32_t former = std::min(ReadProfileInt(profile, section, "Titles", 0), kMostFormerTitles);
  const bool given = titles != nullptr && titles->Lines.Acnt > 0;
  const int count = given ? titles->Lines.Alast - titles->Lines.Acur : 0;
  for (int i = 0; i < count; ++i) {
    WriteProfileText(profile, section, TitleKey(i + 1).c_str(), TitleText(*titles, titles->Lines.Acur + i));
  }
  WriteProfileInt(profile, section, "Titles", count);
  for (int i = count + 1; i <= former; ++i)
    DeleteProfileKey(profile, section, TitleKey(i).c_str());
}

}  // namespace

int LoadTitles(const char* profile, const char* section, TitleSet& titles) {
  if (section == nullptr || section[0] == '\0' || titles.Lines.Aline == nullptr) return 0;
  ResetTitles(titles);
  const std::int32_t count = ReadProfileInt(profile, section, "Titles", 0);
  for (int i = 0; i < count; ++i) {
    const std::string text =
        ReadProfileText(profile, section, TitleKey(i + 1).c_str(), "", kLongestTitle * kLongestCell);
    if (!AppendTitle(titles, FilePos::At(i), TitleCells(text).View().substr(0, kLongestTitle))) break;
  }
  EndTitles(titles, FilePos::At(titles.Lines.Alast));
  return 1;
}

FileError SaveTitles(const char* profile, const char* section, const TitleSet* titles) {
  return SaveProfile(profile, [=] { WriteTitles(profile, section, titles); });
}
