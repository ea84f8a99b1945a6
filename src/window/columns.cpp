#include "window/columns.h"

#include <algorithm>
#include <string>

#include "dialogs/freeze_columns.h"
#include "platform/ansi_text.h"
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
  const LineEntry& line = lines.Aline[lines.Acur];
  const std::size_t length = std::min(static_cast<std::size_t>(std::max(line.Llen, 0)), kLongestSample);
  std::string sample(MainState.Text.Tbuf + line.Ltext, length);
  std::ranges::replace_if(
      sample, [](char byte) { return static_cast<unsigned char>(byte) < ' ' || byte == '\x7F'; }, ' ');
  return AnsiToUtf8(sample);
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
