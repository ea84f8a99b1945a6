#include "window/fonts.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>

#include "resources/command_ids.h"
#include "window/main_window_state.h"
#include "window/private_messages.h"

int FontHeight(int points, int pixelsPerInch) {
  return (-35 - points * pixelsPerInch) / 72;
}

int ZoomedHeight(int height, int zoomLevel) {
  const std::int64_t base = std::abs(height);
  const std::int64_t size = std::clamp<std::int64_t>(base / 5 * zoomLevel + base, 1, INT16_MAX);
  return static_cast<int>(height < 0 ? -size : size);
}

void BuildViewFont() {
  MainWindowState& state = MainState;
  const HDC dc = GetDC(state.MainWindow);
  state.PixelsPerInch = GetDeviceCaps(dc, LOGPIXELSY);
  if (state.ViewLogFont.lfHeight >= 0) {
    if (state.FontPoints < 1) state.FontPoints = 10;
    state.ViewLogFont.lfHeight = FontHeight(state.FontPoints, state.PixelsPerInch);
  }
  if (state.ViewFont != nullptr && state.FontIsStock == 0) DeleteObject(state.ViewFont);
  state.FontIsStock = 0;

  LOGFONTA font = state.ViewLogFont;
  if (state.ZoomLevel != 0) font.lfHeight = ZoomedHeight(font.lfHeight, state.ZoomLevel);
  state.ViewFont = CreateFontIndirectA(&font);
  if (state.ViewFont == nullptr) {
    state.ViewFont = static_cast<HFONT>(GetStockObject(ANSI_FIXED_FONT));
    state.FontIsStock = 1;
  }

  const HGDIOBJ former = SelectObject(dc, state.ViewFont);
  TEXTMETRICA metrics{};
  GetTextMetricsA(dc, &metrics);
  state.CharHeight = metrics.tmHeight;
  state.CharWidth = metrics.tmAveCharWidth;
  SelectObject(dc, former);
  ReleaseDC(state.MainWindow, dc);
}

int ChooseViewFont(HWND owner) {
  MainWindowState& state = MainState;
  CHOOSEFONTA choose{};
  choose.lStructSize = sizeof choose;
  choose.hwndOwner = owner;
  choose.lpLogFont = &state.ViewLogFont;
  choose.Flags = CF_SCREENFONTS | CF_INITTOLOGFONTSTRUCT | CF_FORCEFONTEXIST;
  std::copy(std::begin(state.FontFace), std::end(state.FontFace), state.ViewLogFont.lfFaceName);
  if (ChooseFontA(&choose) == 0) return 0;
  std::copy(std::begin(state.ViewLogFont.lfFaceName), std::end(state.ViewLogFont.lfFaceName), state.FontFace);
  state.FontPoints = choose.iPointSize / 10;
  return 1;
}

std::string FontInUse() {
  const MainWindowState& state = MainState;
  const HFONT font = CreateFontIndirectA(&state.ViewLogFont);
  if (font == nullptr) return "the system's own, as no other can be made";
  const HDC dc = GetDC(state.MainWindow);
  const HGDIOBJ former = SelectObject(dc, font);
  char face[256];
  GetTextFaceA(dc, sizeof face, face);
  TEXTMETRICA metrics{};
  GetTextMetricsA(dc, &metrics);
  SelectObject(dc, former);
  ReleaseDC(state.MainWindow, dc);
  DeleteObject(font);
  const std::string_view asked = state.FontFace;
  std::string text =
      (asked.empty() ? "no face" : std::string(asked)) + ", " + std::to_string(state.FontPoints) + " points";
  // A face that was named by its beginning is found.
  if (asked.empty() || !std::string_view(face).starts_with(asked)) text += std::string(", shown in ") + face;
  if ((metrics.tmPitchAndFamily & TMPF_FIXED_PITCH) != 0) text += " (of no fixed pitch)";
  return text;
}

void FollowScale(int pixelsPerInch) {
  MainWindowState& state = MainState;
  if (pixelsPerInch == state.PixelsPerInch || state.ViewFont == nullptr) return;
  LONG& height = state.ViewLogFont.lfHeight;
  height = static_cast<LONG>(std::lround(static_cast<double>(height) * pixelsPerInch / state.PixelsPerInch));
  state.FormatWidth = -1;
  SendMessageA(state.MainWindow, WM_VIEW_FONT, 0, 0);
  PostMessageA(state.MainWindow, WM_VIEW_LAYOUT, 0, 0);
}

LRESULT FontCommand(UINT /*id*/) {
  if (ChooseViewFont(MainState.MainWindow) == 0) return 0;
  MainState.FormatWidth = -1;
  SendMessageA(MainState.MainWindow, WM_VIEW_FONT, 0, 0);
  PostMessageA(MainState.MainWindow, WM_VIEW_LAYOUT, 0, 0);
  return 0;
}

LRESULT ZoomCommand(UINT id) {
  if (id == IDM_ZOOM_IN) ++MainState.ZoomLevel;
  if (id == IDM_ZOOM_OUT) --MainState.ZoomLevel;
  if (id == IDM_ZOOM_RESET) MainState.ZoomLevel = 0;
  SendMessageA(MainState.MainWindow, WM_VIEW_FONT, 0, 0);
  RepaintWindow();
  return 0;
}
