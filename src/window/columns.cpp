#include "window/columns.h"

#include <algorithm>
#include <string>

#include "dialogs/freeze_columns.h"
#include "window/fonts.h"
#include "window/main_window_state.h"

namespace {

constexpr std::size_t kLongestSample = 515;
constexpr int kSamplePoints = 8;

// The top line as an edit field can show it: a control character takes one column here as it does in the
// view.
std::string SampleLine() {
  const LineArray& lines = MainState.Lines;
  if (lines.Acur >= lines.Alast) return {};
  CellRow sample = CopyOf(LineCells(lines.Aline[lines.Acur], MainState.Text).substr(0, kLongestSample));
  std::ranges::replace_if(
      sample.cells, [](Cell cell) { return cell < U' ' || cell == 0x7F; }, U' ');
  return CellsToUtf8(sample.View());
}

}  // namespace

void FreezeColumns(std::int32_t count) {
  MainState.FrozenColumns = count;
  RepaintWindow();
}

LRESULT FreezeColumnsCommand(UINT /*id*/) {
  // The view's face at one size, whatever the zoom.
  ColumnSample sample{SampleLine(), MainState.ViewLogFont};
  sample.font.lfHeight = FontHeight(kSamplePoints, MainState.PixelsPerInch);
  const auto count = RunFreezeColumns(MainState.MainWindow, MainState.FrozenColumns, sample);
  if (count) FreezeColumns(*count);
  return count ? 1 : 0;
}

LRESULT ClearColumnsCommand(UINT /*id*/) {
  FreezeColumns(0);
  return 0;
}
