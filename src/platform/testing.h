// What a test, and the picture tool, may ask of the platform layer: drive the program with input as a user
// would, answer what it asks, and see what it did. Nothing in the program itself includes this header.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "platform/win32.h"

namespace platform_testing {

// Brings the toolkit up without a display (Qt's "offscreen") unless it runs already, with scaling 1. Timers
// stop by themselves: a test sends WM_TIMER instead of waiting.
void StartToolkit(int argc, char** argv);
// The words that CommandWord hands to the program from now on.
void SetCommandWords(std::vector<std::string> words);

// Runs the message loop (accelerators of `table` to `window` included, both may be null) until no posted
// message, input or paint is left. False when WM_QUIT was met.
bool PumpUntilIdle(HWND window, HACCEL table);
// Number of timers that are set at this moment with this id.
bool TimerIsSet(HWND window, UINT_PTR id);

// Input, as the toolkit delivers it; the message follows at the next pump. `keys` holds MK_SHIFT and
// MK_CONTROL, and kAlt for the Alt key.
inline constexpr int kAlt = 0x1000;
void PressKey(HWND window, int virtualKey, int keys);
void TypeCharacter(HWND window, char character, int keys);  // a letter or digit key
void Wheel(HWND window, int delta, bool horizontal, int keys);
void Mouse(HWND window, UINT message, int x, int y, int keys);
void ResizeClient(HWND window, int width, int height);  // device pixels
// Moves the thumb of a bar as a finished drag does.
void DragThumb(HWND window, int bar, std::int64_t position);
void ClickMenu(HWND window, UINT id);  // opens the pull-down that holds the item, and chooses it

// Boxes and dialogs. A box is closed with its default. Answers are used up in order.
struct Box {
  std::string text, caption;
  UINT style = 0;
};
const std::vector<Box>& Boxes();
// The next open-file dialog returns this path (through the real dialog), or is cancelled. Without an answer
// a dialog is cancelled.
void AnswerNextFileDialog(std::optional<std::string> path);
struct FileDialog {
  std::vector<std::string> filters;  // "Name (pattern pattern)"
  int filterIndex = 0;
  std::string name, directory;
};
const std::vector<FileDialog>& FileDialogs();
// The next font dialog chooses this, or is cancelled.
struct FontAnswer {
  std::string face;
  int points = 10;
  int weight = 400;
  bool italic = false;
};
void AnswerNextFontDialog(std::optional<FontAnswer> answer);
// The next color dialog chooses this, or is cancelled.
void AnswerNextColorDialog(std::optional<COLORREF> color);

// What a user does in a dialog of the program: steps that run one after the other, each when no message waits
// any more, in the next dialog that opens. A dialog that is still open after its last step, or that opens
// without steps, is closed as by its close box.
using DialogStep = std::function<void(HWND dialog)>;
void ScriptNextDialog(std::vector<DialogStep> steps);
// Input for a dialog; what it leads to comes before the next step, or where the dialog is not modal with the
// next pump.
void TypeText(HWND dialog, const std::string& text);  // into the control with the focus
void PressDialogKey(HWND dialog, int virtualKey, int keys);
void ClickControl(HWND dialog, int id);
void ClickInControl(HWND dialog, int id, int x, int y);  // pixels of the control
void ChooseRow(HWND dialog, int id, int row);            // of a list, as a click on it does
void DoubleClickRow(HWND dialog, int id, int row);       // of a list box
struct ControlState {
  std::string text;
  bool enabled = false, focused = false;
  UINT checked = BST_UNCHECKED;
  int row = -1;  // of the list
  std::vector<std::string> rows;
  std::string selected;  // part of the text
};
ControlState StateOfControl(HWND dialog, int id);

// The desktop turns dark, or light again.
void SetDesktopDark(bool dark);

// Files dropped on a window from another program. False when the window refuses them.
bool DropFiles(HWND window, const std::vector<std::string>& paths);

// What is on the clipboard, as UTF-8.
std::string ClipboardText();

const std::vector<UINT>& Beeps();
// How often FileOpenShared opened something since the start.
std::int64_t FilesOpened();
// Forgets boxes, beeps, dialogs, answers and the drawing log.
void ForgetRecords();

// The drawing log: each call that draws or moves pixels, in order, while it is on.
struct DrawCall {
  enum class Kind { text, fillText, line, rectangle, invert, scroll } kind{};
  int x = 0, y = 0;         // text origin; start of a line
  RECT rect{};              // opaque rectangle, rectangle, inverted or scrolled rectangle; end of a line
  std::string text;         // UTF-8
  COLORREF color = 0;       // text, pen
  COLORREF background = 0;  // text background, brush
  int penStyle = PS_SOLID;
};
void LogDrawing(bool on);
const std::vector<DrawCall>& DrawingLog();

// Pixels of the client area, as 0x00BBGGRR, row by row.
struct Pixels {
  int width = 0, height = 0;
  std::vector<COLORREF> at;
  [[nodiscard]] COLORREF Get(int x, int y) const {
    return at[static_cast<std::size_t>(y) * static_cast<std::size_t>(width) + static_cast<std::size_t>(x)];
  }
  bool operator==(const Pixels&) const = default;
};
Pixels ClientPixels(HWND window);
Pixels ControlPixels(HWND dialog, int id);
// What is drawn on a white page, of which the layer has no more than a painter of the toolkit.
Pixels PagePixels(int width, int height, const std::function<void(HDC)>& draw);
// The whole window, or dialog, with menu bar and scroll bars, without its frame, as a PNG file. False when it
// cannot be written.
bool SavePicture(HWND window, const std::string& path);

struct Bar {
  bool visible = false;
  std::int64_t top = 0, position = 0;
};
Bar ScrollBarOf(HWND window, int bar);
std::string Caption(HWND window);
bool WaitCursorShown(HWND window);
struct MenuItem {
  std::string text;
  UINT id = 0;
  bool enabled = false, checked = false, separator = false;
};
// The items of a pull-down as they stand after it was opened (WM_INITMENUPOPUP was sent).
std::vector<MenuItem> OpenMenu(HWND window, int position);

}  // namespace platform_testing
