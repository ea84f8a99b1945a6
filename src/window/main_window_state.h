// The state of the program's one window, and through it of the whole program: the open file, its run of
// lines, the geometry, the selection and every option. Plain data, zero unless an initial value is given;
// written only on the one thread, by the units of the main window. Logic units do not read it: they take
// what they need as arguments, or own one of the records that it is put together from.
#pragma once

#include <chrono>

#include "engine/hex_format.h"
#include "engine/long_job.h"
#include "engine/raw_format.h"
#include "engine/text_format.h"
#include "engine/view_records.h"
#include "engine/view_run.h"
#include "marks/tag_list.h"
#include "marks/titles.h"
#include "pageindex/page_index.h"
#include "platform/win32.h"
#include "search/search_engine.h"
#include "settings/colors.h"
#include "settings/command_line.h"
#include "setups/setups.h"

// Values of DdeState.
inline constexpr int kDdeServing = 0;
inline constexpr int kDdeIgnoring = 2;

// What the main window keeps of the page index.
struct PageIndexing {
  std::shared_ptr<PageIndex> index;  // of the open file; null: none
  std::shared_ptr<LongJob> step;     // the latest one
  UINT_PTR timer = 0;
  UINT interval = 0;  // of the timer, milliseconds
};

struct MainWindowState : Settings, CommandLineWords {
  // Process.
  HINSTANCE AppInstance = nullptr;
  HCURSOR WaitCursor = nullptr;
  HICON AppIcon = nullptr;
  HWND MainWindow = nullptr;
  HACCEL AccelTable = nullptr;
  std::int32_t DdeState = kDdeIgnoring;

  // The file and its view. An empty File.Fname means that no file is open. Lines and Text are those of Run.
  ViewFile File;
  ViewOptions CaptionCode = 0;  // of VO_UNICODE, as the caption tells it
  std::shared_ptr<ViewRun> Run;
  std::shared_ptr<ViewRun> SpareRun;  // for the next load; may be null
  LineArray Lines;
  TextBuffer Text;
  TagList Tags;
  TitleSet Titles;
  SearchState Search;
  Hit FoundHit{kNoPosition, kNoPosition};  // what Find Next found last
  std::int32_t HitNumber = 0;              // of that hit, counted from where the search was begun
  char DialogFile[kPathBytes] = {};        // the name on its way to WM_FILE_OPEN

  // Geometry and position.
  std::int32_t ClientWidth = 0;  // pixels
  std::int32_t ClientHeight = 0;
  std::int32_t CharHeight = 0;
  std::int32_t CharWidth = 0;
  std::int32_t LinesPerScreen = 0;  // rows below the titles, at least 1 after the first layout
  std::int32_t FormatWidth = 255;   // characters of the longest line, as the formats are told
  std::int32_t HorzOffset = 0;      // characters cut off at the left
  std::int32_t HorzStepSmall = 1;
  std::int32_t HorzStepLarge = 10;
  std::string Notice;                    // UTF-8, over the foot of the view; empty: none
  FilePos PaintedTop = 0;                // top line at the last paint
  FilePos TopBeforeError = kNoPosition;  // where a load from the error page goes back to
  FilePos HeldPosition = kNoPosition;    // byte of the top line that stays on it when lines are made anew

  // Selection and timers.
  FilePos SelStart = kNoPosition;  // below 0: no selection
  FilePos SelEnd = kNoPosition;    // exclusive
  FilePos SelAnchorStart = kNoPosition;
  FilePos SelAnchorEnd = kNoPosition;
  std::int32_t Selecting = 0;
  WPARAM LastMouseKeys = 0;
  LPARAM LastMousePoint = 0;
  std::int32_t AutoScrollLines = 1;
  UINT_PTR AutoScrollTimer = 0;
  UINT AutoScrollDelay = 0;  // of the timer, milliseconds
  PageIndexing Pages;
  std::int32_t WheelRest = 0;  // turn of the wheel, below one line, that is not yet spent
  std::chrono::steady_clock::time_point EscapeNoted;  // when Esc last ended a wait or a dialog
  UINT WheelKind = 0;                                 // message and keys that WheelRest belongs to

  // Format and font.
  FormatProc FormatRoutines[kFormats] = {FormatText, FormatHex, FormatRaw};
  std::int32_t ZoomLevel = 0;  // steps from the font's own size
  std::int32_t PixelsPerInch = 96;
  HFONT ViewFont = nullptr;
  std::int32_t FontIsStock = 0;  // ViewFont must not be deleted
  std::int32_t AlwaysOnTop = 0;
  COLORREF DesktopColors[kColorSlots] = {};  // the window colors' defaults when they were last asked for
};

extern MainWindowState MainState;

inline constexpr const char* kProgramName = "Quorl";
inline constexpr const char* kClassName = "QUORL";

[[nodiscard]] bool FileIsOpen();

// An entry of the run of lines.
[[nodiscard]] inline const LineEntry& LineAt(int index) {
  return MainState.Lines.Aline[index];
}

// Rows that the frozen titles take.
[[nodiscard]] inline std::int32_t TitleRows() {
  return MainState.Titles.Lines.Alast;
}

// Repaints the whole client area at the next paint; nothing is erased, since painting is opaque.
inline void RepaintWindow() {
  InvalidateRect(MainState.MainWindow, nullptr, FALSE);
}
