// The Win32 operations that the program uses: the small exact subset that `platform/qt` and
// `platform/posix` provide, with Win32's own arguments, values, structures and meaning. On Windows this is
// the system's own header. There is no operation here without a caller; each comment says what the program
// relies on, and where the layer differs. A flag or message that the layer does not know is an assertion in
// a debug build and a line on stderr in release.
//
// Pixels are device pixels. Text of the view and of printed pages is bytes of the Windows-1252 set; every
// other text (captions, menus, boxes, paths) is UTF-8.
#pragma once

#ifdef _WIN32

#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

#include <commdlg.h>
#include <shellapi.h>

#else

#include <cstddef>
#include <cstdint>

// --- Types -----------------------------------------------------------------------------------------------

#define CALLBACK
#define WINAPI

using BYTE = std::uint8_t;
using WORD = std::uint16_t;
using DWORD = std::uint32_t;
using UINT = unsigned int;
using INT = int;
using LONG = std::int32_t;
using BOOL = int;
using ATOM = WORD;
using LPSTR = char*;
using LPCSTR = const char*;
using LPVOID = void*;
using UINT_PTR = std::uintptr_t;
using LONG_PTR = std::intptr_t;
using ULONG_PTR = std::uintptr_t;
using WPARAM = UINT_PTR;
using LPARAM = LONG_PTR;
using LRESULT = LONG_PTR;
using INT_PTR = std::intptr_t;
using COLORREF = DWORD;  // 0x00BBGGRR

#define FALSE 0
#define TRUE 1

// NOLINTBEGIN(bugprone-macro-parentheses): a name that is declared takes none.
#define QUORL_DECLARE_HANDLE(name) \
  struct name##__;                 \
  using name = name##__*
// NOLINTEND(bugprone-macro-parentheses)
using HANDLE = void*;
using HGDIOBJ = void*;
struct SECURITY_ATTRIBUTES;
QUORL_DECLARE_HANDLE(HINSTANCE);
QUORL_DECLARE_HANDLE(HWND);
QUORL_DECLARE_HANDLE(HDC);
QUORL_DECLARE_HANDLE(HMENU);
QUORL_DECLARE_HANDLE(HACCEL);
QUORL_DECLARE_HANDLE(HICON);
QUORL_DECLARE_HANDLE(HFONT);
QUORL_DECLARE_HANDLE(HBRUSH);
QUORL_DECLARE_HANDLE(HPEN);
#undef QUORL_DECLARE_HANDLE
using HCURSOR = HICON;
using HMODULE = HINSTANCE;

struct POINT {
  LONG x, y;
};
struct SIZE {
  LONG cx, cy;
};
struct RECT {
  LONG left, top, right, bottom;
};
struct MSG {
  HWND hwnd;
  UINT message;
  WPARAM wParam;
  LPARAM lParam;
  DWORD time;
  POINT pt;
};
struct PAINTSTRUCT {
  HDC hdc;
  BOOL fErase;
  RECT rcPaint;
  BOOL fRestore;
  BOOL fIncUpdate;
  BYTE rgbReserved[32];
};
using WNDPROC = LRESULT(CALLBACK*)(HWND, UINT, WPARAM, LPARAM);
using TIMERPROC = void(CALLBACK*)(HWND, UINT, UINT_PTR, DWORD);
struct WNDCLASSA {
  UINT style;
  WNDPROC lpfnWndProc;
  int cbClsExtra;
  int cbWndExtra;
  HINSTANCE hInstance;
  HICON hIcon;
  HCURSOR hCursor;
  HBRUSH hbrBackground;
  LPCSTR lpszMenuName;
  LPCSTR lpszClassName;
};
inline constexpr int LF_FACESIZE = 32;
struct LOGFONTA {
  LONG lfHeight;  // below 0: character height in pixels, without internal leading
  LONG lfWidth;
  LONG lfEscapement;
  LONG lfOrientation;
  LONG lfWeight;
  BYTE lfItalic;
  BYTE lfUnderline;
  BYTE lfStrikeOut;
  BYTE lfCharSet;
  BYTE lfOutPrecision;
  BYTE lfClipPrecision;
  BYTE lfQuality;
  BYTE lfPitchAndFamily;
  char lfFaceName[LF_FACESIZE];
};
struct TEXTMETRICA {
  LONG tmHeight;
  LONG tmAscent;
  LONG tmDescent;
  LONG tmInternalLeading;
  LONG tmExternalLeading;
  LONG tmAveCharWidth;
  LONG tmMaxCharWidth;
  LONG tmWeight;
  LONG tmOverhang;
  LONG tmDigitizedAspectX;
  LONG tmDigitizedAspectY;
  BYTE tmFirstChar;
  BYTE tmLastChar;
  BYTE tmDefaultChar;
  BYTE tmBreakChar;
  BYTE tmItalic;
  BYTE tmUnderlined;
  BYTE tmStruckOut;
  BYTE tmPitchAndFamily;
  BYTE tmCharSet;
};
inline constexpr BYTE TMPF_FIXED_PITCH = 0x01;  // set where the pitch is not fixed
struct ACCEL {
  BYTE fVirt;
  WORD key;
  WORD cmd;
};

constexpr WORD LOWORD(ULONG_PTR value) {
  return static_cast<WORD>(value & 0xFFFF);
}
constexpr WORD HIWORD(ULONG_PTR value) {
  return static_cast<WORD>((value >> 16) & 0xFFFF);
}
constexpr WPARAM MAKEWPARAM(UINT low, UINT high) {
  return static_cast<WPARAM>((low & 0xFFFF) | ((high & 0xFFFF) << 16));
}
constexpr LPARAM MAKELPARAM(UINT low, UINT high) {
  return static_cast<LPARAM>((low & 0xFFFF) | ((high & 0xFFFF) << 16));
}
constexpr COLORREF RGB(BYTE red, BYTE green, BYTE blue) {
  return static_cast<COLORREF>(red) | (static_cast<COLORREF>(green) << 8) |
         (static_cast<COLORREF>(blue) << 16);
}

// --- Messages that the layer delivers --------------------------------------------------------------------

inline constexpr UINT WM_CREATE = 0x0001;
inline constexpr UINT WM_DESTROY = 0x0002;
inline constexpr UINT WM_SIZE = 0x0005;  // also when a scroll bar or the menu appears and takes room
inline constexpr UINT WM_PAINT = 0x000F;
inline constexpr UINT WM_CLOSE = 0x0010;
inline constexpr UINT WM_QUIT = 0x0012;
inline constexpr UINT WM_ERASEBKGND = 0x0014;
inline constexpr UINT WM_SYSCOLORCHANGE = 0x0015;  // to top-level windows: GetSysColor gives others now
inline constexpr UINT WM_DRAWITEM = 0x002B;
inline constexpr UINT WM_SETFONT = 0x0030;
inline constexpr UINT WM_HELP = 0x0053;  // to a dialog: F1 was pressed. Differs: without a record
inline constexpr UINT WM_KEYDOWN = 0x0100;
inline constexpr UINT WM_CHAR = 0x0102;  // control characters only: what accelerators of the ASCII kind need
inline constexpr UINT WM_INITDIALOG = 0x0110;
inline constexpr UINT WM_COMMAND = 0x0111;
inline constexpr UINT WM_TIMER = 0x0113;
inline constexpr UINT WM_HSCROLL = 0x0114;
inline constexpr UINT WM_VSCROLL = 0x0115;
inline constexpr UINT WM_INITMENUPOPUP = 0x0117;
inline constexpr UINT WM_EXITMENULOOP =
    0x0212;                                    // a pull-down has closed, or the menu has given the keys back
inline constexpr UINT WM_DPICHANGED = 0x02E0;  // LOWORD(wParam): LOGPIXELSY of the window from now on
inline constexpr UINT WM_MOUSEMOVE =
    0x0200;  // while a button is down; moves that follow each other become one
inline constexpr UINT WM_LBUTTONDOWN = 0x0201;
inline constexpr UINT WM_LBUTTONUP = 0x0202;
inline constexpr UINT WM_LBUTTONDBLCLK = 0x0203;
inline constexpr UINT WM_RBUTTONDOWN = 0x0204;
inline constexpr UINT WM_MOUSEWHEEL = 0x020A;  // touchpads deliver parts of WHEEL_DELTA
inline constexpr UINT WM_MOUSEHWHEEL = 0x020E;
inline constexpr UINT WM_DROPFILES = 0x0233;
inline constexpr UINT WM_USER = 0x0400;

inline constexpr int WHEEL_DELTA = 120;
inline constexpr int MK_SHIFT = 0x0004;
inline constexpr int MK_CONTROL = 0x0008;

inline constexpr WPARAM SIZE_RESTORED = 0;
inline constexpr WPARAM SIZE_MINIMIZED = 1;
inline constexpr WPARAM SIZE_MAXIMIZED = 2;

inline constexpr int SB_HORZ = 0;
inline constexpr int SB_VERT = 1;
inline constexpr int SB_LINEUP = 0;
inline constexpr int SB_LINEDOWN = 1;
inline constexpr int SB_PAGEUP = 2;
inline constexpr int SB_PAGEDOWN = 3;
inline constexpr int SB_THUMBPOSITION = 4;
inline constexpr int SB_THUMBTRACK = 5;
inline constexpr int SB_TOP = 6;
inline constexpr int SB_BOTTOM = 7;
inline constexpr int SB_ENDSCROLL = 8;

inline constexpr int VK_BACK = 0x08;
inline constexpr int VK_SHIFT = 0x10;
inline constexpr int VK_CONTROL = 0x11;
inline constexpr int VK_MENU = 0x12;
inline constexpr int VK_ESCAPE = 0x1B;
inline constexpr int VK_PRIOR = 0x21;
inline constexpr int VK_NEXT = 0x22;
inline constexpr int VK_END = 0x23;
inline constexpr int VK_HOME = 0x24;
inline constexpr int VK_LEFT = 0x25;
inline constexpr int VK_UP = 0x26;
inline constexpr int VK_RIGHT = 0x27;
inline constexpr int VK_DOWN = 0x28;
inline constexpr int VK_INSERT = 0x2D;
inline constexpr int VK_ADD = 0x6B;  // of the number pad, as the next one
inline constexpr int VK_SUBTRACT = 0x6D;
inline constexpr int VK_F1 = 0x70;
inline constexpr int VK_F2 = 0x71;
inline constexpr int VK_F3 = 0x72;
inline constexpr int VK_F5 = 0x74;
inline constexpr int VK_F11 = 0x7A;
inline constexpr int VK_F12 = 0x7B;
inline constexpr int VK_OEM_PLUS = 0xBB;
inline constexpr int VK_OEM_MINUS = 0xBD;

// --- Windows ---------------------------------------------------------------------------------------------

inline constexpr UINT CS_DBLCLKS = 0x0008;
inline constexpr DWORD WS_OVERLAPPED = 0x00000000;
inline constexpr DWORD WS_HSCROLL = 0x00100000;
inline constexpr DWORD WS_VSCROLL = 0x00200000;
inline constexpr DWORD WS_OVERLAPPEDWINDOW = 0x00CF0000;
inline constexpr DWORD WS_CLIPCHILDREN = 0x02000000;
inline constexpr int CW_USEDEFAULT = static_cast<int>(0x80000000U);
inline constexpr int COLOR_BACKGROUND = 1;
inline constexpr int SW_SHOWNORMAL = 1;
inline constexpr int SW_SHOWMINIMIZED = 2;
inline constexpr int SW_MAXIMIZE = 3;
inline constexpr int SW_MINIMIZE = 6;
inline constexpr int SW_RESTORE = 9;
inline constexpr int SW_SHOWDEFAULT = 10;
inline constexpr int GCLP_HCURSOR = -12;
inline constexpr UINT SWP_NOSIZE = 0x0001;
inline constexpr UINT SWP_NOMOVE = 0x0002;
#define HWND_TOP (static_cast<HWND>(nullptr))
#define HWND_TOPMOST (reinterpret_cast<HWND>(static_cast<LONG_PTR>(-1)))
#define HWND_NOTOPMOST (reinterpret_cast<HWND>(static_cast<LONG_PTR>(-2)))
#define IDC_ARROW (reinterpret_cast<LPCSTR>(static_cast<ULONG_PTR>(32512)))
#define IDC_WAIT (reinterpret_cast<LPCSTR>(static_cast<ULONG_PTR>(32514)))

// Registers a window class. Relied on: the procedure, the icon, the cursor, the background brush given as a
// system color plus 1, CS_DBLCLKS. 0 on failure, and when the name is registered already.
ATOM RegisterClassA(const WNDCLASSA* windowClass);
BOOL UnregisterClassA(LPCSTR className, HINSTANCE instance);

// Creates a top-level window; WM_CREATE runs inside the call (its lParam is not used), and -1 from it fails
// the call. Sizes are outer sizes. `menu` becomes the window's menu bar.
HWND CreateWindowExA(DWORD exStyle, LPCSTR className, LPCSTR caption, DWORD style, int x, int y, int width,
                     int height, HWND parent, HMENU menu, HINSTANCE instance, LPVOID param);
BOOL DestroyWindow(HWND window);
// The first ShowWindow sends WM_SIZE before it returns.
BOOL ShowWindow(HWND window, int show);
BOOL UpdateWindow(HWND window);  // sends WM_PAINT at once if an update region is pending
BOOL IsIconic(HWND window);
BOOL SetWindowTextA(HWND window, LPCSTR text);
int GetWindowTextA(HWND window, LPSTR text, int size);
// Relied on: raising with HWND_TOP, HWND_TOPMOST and HWND_NOTOPMOST, always with SWP_NOMOVE | SWP_NOSIZE.
BOOL SetWindowPos(HWND window, HWND after, int x, int y, int width, int height, UINT flags);
HWND SetFocus(HWND window);
BOOL GetClientRect(HWND window, RECT* rect);
// The rectangle that makes CreateWindowExA put a window where this one is. Differs: the sizes of both leave
// out the border that the window manager draws.
BOOL GetWindowRect(HWND window, RECT* rect);
ULONG_PTR SetClassLongPtrA(HWND window, int index, LONG_PTR value);  // GCLP_HCURSOR only
LRESULT CALLBACK DefWindowProcA(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
DWORD GetModuleFileNameA(HMODULE module, LPSTR path, DWORD size);  // module null: the program itself

// --- Messages, timers, keys ------------------------------------------------------------------------------

// Posted messages come first in, first out; then input; then WM_PAINT while an update region is pending;
// then timers, each at most once however late. 0 at WM_QUIT.
BOOL GetMessageA(MSG* message, HWND window, UINT first, UINT last);
inline constexpr UINT PM_REMOVE = 0x0001;
// Takes the next message without waiting, for a handler that takes long. Relied on: messages of any number
// and window, in the order of GetMessageA, and removed; TRUE with WM_QUIT too. FALSE when there is none.
BOOL PeekMessageA(MSG* message, HWND window, UINT first, UINT last, UINT remove);
BOOL TranslateMessage(const MSG* message);
LRESULT DispatchMessageA(const MSG* message);
LRESULT SendMessageA(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
BOOL PostMessageA(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
void PostQuitMessage(int exitCode);

// Events, by which another thread wakes the window's. Relied on: manual reset, without name and security.
// SetEvent is the one operation of this header that any thread may call.
inline constexpr DWORD WAIT_OBJECT_0 = 0;
inline constexpr DWORD WAIT_TIMEOUT = 258;
inline constexpr DWORD QS_ALLINPUT = 0x1CFF;
HANDLE CreateEventA(SECURITY_ATTRIBUTES* security, BOOL manualReset, BOOL set, LPCSTR name);
BOOL SetEvent(HANDLE event);
BOOL ResetEvent(HANDLE event);
// Waits for the event and serves nothing meanwhile.
DWORD WaitForSingleObject(HANDLE event, DWORD milliseconds);
// Waits for one event or none, or for a message of any kind that can be taken: WAIT_OBJECT_0 + `count`.
DWORD MsgWaitForMultipleObjects(DWORD count, const HANDLE* events, BOOL all, DWORD milliseconds, DWORD kinds);
UINT_PTR SetTimer(HWND window, UINT_PTR id, UINT milliseconds, TIMERPROC procedure);  // procedure: null
BOOL KillTimer(HWND window, UINT_PTR id);
short GetKeyState(int virtualKey);  // VK_SHIFT, VK_CONTROL, VK_MENU as of the message being handled
// The mouse with its button down: moves outside the window arrive too, with negative or large coordinates.
HWND SetCapture(HWND window);
BOOL ReleaseCapture();
inline constexpr UINT SPI_GETWHEELSCROLLLINES = 0x0068;
BOOL SystemParametersInfoA(UINT action, UINT param, void* result, UINT flags);
// The rectangle around all screens, in the pixels that CreateWindowExA counts in.
inline constexpr int SM_XVIRTUALSCREEN = 76;
inline constexpr int SM_YVIRTUALSCREEN = 77;
inline constexpr int SM_CXVIRTUALSCREEN = 78;
inline constexpr int SM_CYVIRTUALSCREEN = 79;
int GetSystemMetrics(int index);

// Accelerators. An entry without FVIRTKEY matches WM_CHAR by character; one with it matches WM_KEYDOWN by
// key and by the exact set of FSHIFT, FCONTROL and FALT.
inline constexpr BYTE FVIRTKEY = 0x01;
inline constexpr BYTE FNOINVERT = 0x02;
inline constexpr BYTE FSHIFT = 0x04;
inline constexpr BYTE FCONTROL = 0x08;
inline constexpr BYTE FALT = 0x10;
HACCEL CreateAcceleratorTableA(ACCEL* entries, int count);
BOOL DestroyAcceleratorTable(HACCEL table);
int TranslateAcceleratorA(HWND window, HACCEL table, MSG* message);

// --- Menus -----------------------------------------------------------------------------------------------

inline constexpr UINT MF_STRING = 0x0000;
inline constexpr UINT MF_ENABLED = 0x0000;
inline constexpr UINT MF_GRAYED = 0x0001;
inline constexpr UINT MF_CHECKED = 0x0008;
inline constexpr UINT MF_UNCHECKED = 0x0000;
inline constexpr UINT MF_POPUP = 0x0010;
inline constexpr UINT MF_BYCOMMAND = 0x0000;
inline constexpr UINT MF_BYPOSITION = 0x0400;
inline constexpr UINT MF_SEPARATOR = 0x0800;

HMENU CreateMenu();
HMENU CreatePopupMenu();
// In the text, & marks the mnemonic and a tab parts the label from the key text.
BOOL AppendMenuA(HMENU menu, UINT flags, UINT_PTR idOrPopup, LPCSTR text);
BOOL DeleteMenu(HMENU menu, UINT item, UINT flags);
// Result: the former state, or -1 (as DWORD) when there is no such item.
DWORD CheckMenuItem(HMENU menu, UINT id, UINT flags);
BOOL EnableMenuItem(HMENU menu, UINT id, UINT flags);
HMENU GetMenu(HWND window);
HMENU GetSubMenu(HMENU menu, int position);
int GetMenuItemCount(HMENU menu);
UINT GetMenuItemID(HMENU menu, int position);  // 0: a separator; -1 (as UINT): a pull-down, or no such item
// The item's text as it was given, cut to `size` - 1 bytes; the length copied. MF_BYPOSITION only.
int GetMenuStringA(HMENU menu, UINT position, LPSTR text, int size, UINT flags);
BOOL DrawMenuBar(HWND window);

// --- Painting --------------------------------------------------------------------------------------------

// Each window has a picture of its client area. BeginPaint gives a device context clipped to the update
// region and empties that region (and erases first, with WM_ERASEBKGND, if any part asked for it); GetDC
// draws at once. ScrollWindow moves pixels and adds the strip that it uncovers to the update region.
HDC BeginPaint(HWND window, PAINTSTRUCT* paint);
BOOL EndPaint(HWND window, const PAINTSTRUCT* paint);
HDC GetDC(HWND window);
int ReleaseDC(HWND window, HDC dc);
BOOL InvalidateRect(HWND window, const RECT* rect, BOOL erase);  // rect null: the whole client area
BOOL GetUpdateRect(HWND window, RECT* rect, BOOL erase);         // rect may be null; FALSE: nothing pending
BOOL ScrollWindow(HWND window, int dx, int dy, const RECT* scroll, const RECT* clip);

inline constexpr UINT ETO_OPAQUE = 0x0002;
inline constexpr UINT ETO_CLIPPED = 0x0004;
inline constexpr int PS_SOLID = 0;
inline constexpr int PS_DOT = 2;
inline constexpr int NULL_PEN = 8;
inline constexpr int ANSI_FIXED_FONT = 11;
inline constexpr int HORZRES = 8;
inline constexpr int VERTRES = 10;
inline constexpr int LOGPIXELSX = 88;
inline constexpr int LOGPIXELSY = 90;
inline constexpr int COLOR_MENU = 4;
inline constexpr int COLOR_WINDOW = 5;
inline constexpr int COLOR_MENUTEXT = 7;
inline constexpr int COLOR_WINDOWTEXT = 8;
inline constexpr int COLOR_APPWORKSPACE = 12;
inline constexpr int COLOR_HIGHLIGHT = 13;
inline constexpr int COLOR_HIGHLIGHTTEXT = 14;

HGDIOBJ SelectObject(HDC dc, HGDIOBJ object);  // fonts, pens, brushes; the former object of that kind
BOOL DeleteObject(HGDIOBJ object);
HGDIOBJ GetStockObject(int index);
HBRUSH CreateSolidBrush(COLORREF color);
HPEN CreatePen(int style, int width, COLORREF color);
COLORREF SetBkColor(HDC dc, COLORREF color);    // the former color
COLORREF SetTextColor(HDC dc, COLORREF color);  // the former color
// UTF-8 text of a font made by CreateFontIndirectA, and of ANSI_FIXED_FONT, stands on a grid: each character
// advances by tmAveCharWidth, also in a proportional font. A byte that is no UTF-8 is one character. (The
// view's text is drawn by operations of the layer's own, see cells.h.)
BOOL ExtTextOutA(HDC dc, int x, int y, UINT options, const RECT* rect, LPCSTR text, UINT count,
                 const INT* advances);
BOOL TextOutA(HDC dc, int x, int y, LPCSTR text, int count);
BOOL GetTextExtentPointA(HDC dc, LPCSTR text, int count, SIZE* size);
BOOL MoveToEx(HDC dc, int x, int y, POINT* former);
BOOL LineTo(HDC dc, int x, int y);  // the end point itself is not drawn
// Outlined with the pen, filled with the brush; the right and bottom edges are excluded, and one pixel more
// of each with NULL_PEN.
BOOL Rectangle(HDC dc, int left, int top, int right, int bottom);
BOOL InvertRect(HDC dc, const RECT* rect);
DWORD GetSysColor(int index);  // from the desktop's palette

// --- Fonts and cursors -----------------------------------------------------------------------------------

// The face resolves through the system's font service, so that "Courier New" finds a metric-compatible
// face. Null when no font can be made.
HFONT CreateFontIndirectA(const LOGFONTA* font);
// HORZRES and VERTRES are the pixels that can be drawn on; LOGPIXELSX and LOGPIXELSY are alike.
int GetDeviceCaps(HDC dc, int index);
BOOL GetTextMetricsA(HDC dc, TEXTMETRICA* metrics);
// The face that stands for the font's, cut to `size` - 1 bytes; the length copied, with the NUL.
int GetTextFaceA(HDC dc, int size, LPSTR face);
HCURSOR LoadCursorA(HINSTANCE instance, LPCSTR name);  // IDC_ARROW, IDC_WAIT
HCURSOR SetCursor(HCURSOR cursor);
// Relied on: 32 bits a pixel, one plane; `xorBits` are blue, green, red, alpha from the top row down, and
// `andBits` are ignored since the alpha decides.
HICON CreateIcon(HINSTANCE instance, int width, int height, BYTE planes, BYTE bitsPixel, const BYTE* andBits,
                 const BYTE* xorBits);
BOOL DestroyIcon(HICON icon);

inline constexpr DWORD CF_SCREENFONTS = 0x00000001;
inline constexpr DWORD CF_INITTOLOGFONTSTRUCT = 0x00000040;
inline constexpr DWORD CF_FORCEFONTEXIST = 0x00010000;
struct CHOOSEFONTA {
  DWORD lStructSize;
  HWND hwndOwner;
  HDC hDC;
  LOGFONTA* lpLogFont;
  INT iPointSize;  // tenths of a point
  DWORD Flags;
  COLORREF rgbColors;
  LPARAM lCustData;
  void* lpfnHook;
  LPCSTR lpTemplateName;
  HINSTANCE hInstance;
  LPSTR lpszStyle;
  WORD nFontType;
  WORD ___MISSING_ALIGNMENT__;
  INT nSizeMin;
  INT nSizeMax;
};
// The toolkit's font dialog, modal to the owner; the layer's message loop runs behind it. On OK fills
// lpLogFont (lfHeight below 0, in pixels) and iPointSize. 0 when the user cancels; nothing has changed then.
BOOL ChooseFontA(CHOOSEFONTA* choose);

inline constexpr DWORD CC_RGBINIT = 0x00000001;
struct CHOOSECOLORA {
  DWORD lStructSize;
  HWND hwndOwner;
  HWND hInstance;
  COLORREF rgbResult;
  COLORREF* lpCustColors;  // 16, shown and changed by the dialog; all bits set: none
  DWORD Flags;
  LPARAM lCustData;
  void* lpfnHook;
  LPCSTR lpTemplateName;
};
// The toolkit's color dialog, modal to the owner. On OK fills rgbResult. 0 when the user cancels. The custom
// colors are kept on both roads.
BOOL ChooseColorA(CHOOSECOLORA* choose);

// --- Dialogs and their controls --------------------------------------------------------------------------
//
// A dialog is opened by RunDialog or StartDialog (platform/dialog.h). Its procedure gets WM_INITDIALOG
// (wParam: the control that gets the focus if the result is TRUE; lParam: the creation parameter), WM_COMMAND
// (low word the control's id, high word its notification, lParam the control), WM_DRAWITEM and what is posted
// to it. Enter gives WM_COMMAND of the default button, Esc IDCANCEL, closing the dialog's window WM_CLOSE.
// Notifications tell what the user did, and never what the program did through these calls. Texts of fields
// and lists are UTF-8.

using DLGPROC = INT_PTR(CALLBACK*)(HWND, UINT, WPARAM, LPARAM);
struct DRAWITEMSTRUCT {
  UINT CtlType;  // ODT_BUTTON
  UINT CtlID;
  UINT itemID;
  UINT itemAction;
  UINT itemState;
  HWND hwndItem;
  HDC hDC;  // of the control: its upper left corner is 0, 0
  RECT rcItem;
  ULONG_PTR itemData;
};
inline constexpr UINT ODT_BUTTON = 4;

inline constexpr WORD BN_CLICKED = 0;
inline constexpr WORD EN_CHANGE = 0x0300;
inline constexpr WORD CBN_SELCHANGE = 1;
inline constexpr WORD CBN_EDITCHANGE = 5;
inline constexpr WORD CBN_CLOSEUP = 8;
inline constexpr WORD LBN_SELCHANGE = 1;
inline constexpr WORD LBN_DBLCLK = 2;
inline constexpr UINT BST_UNCHECKED = 0;
inline constexpr UINT BST_CHECKED = 1;
inline constexpr UINT BST_INDETERMINATE = 2;

// Messages that controls understand; those of combo boxes hold for drop-down lists too.
inline constexpr UINT EM_GETSEL = 0x00B0;     // result: the start in the low, the end in the high word
inline constexpr UINT EM_SETSEL = 0x00B1;     // wParam start, lParam end; 0, -1 selects all
inline constexpr UINT EM_LIMITTEXT = 0x00C5;  // characters that the user can type
inline constexpr UINT CB_LIMITTEXT = 0x0141;
inline constexpr UINT CB_SETEDITSEL = 0x0142;  // lParam: the start in the low, the end in the high word
inline constexpr UINT CB_ADDSTRING = 0x0143;
inline constexpr UINT CB_GETCURSEL = 0x0147;  // CB_ERR: none, or the text was edited since
inline constexpr UINT CB_SETCURSEL = 0x014E;  // -1: none, and the text is emptied
inline constexpr LRESULT CB_ERR = -1;
inline constexpr UINT LB_ADDSTRING = 0x0180;     // the row
inline constexpr UINT LB_DELETESTRING = 0x0182;  // the rows that are left; the choice stays with its text
inline constexpr UINT LB_SETCURSEL = 0x0186;     // -1: none
inline constexpr UINT LB_GETCURSEL = 0x0188;     // LB_ERR: none
inline constexpr LRESULT LB_ERR = -1;
inline constexpr UINT STM_SETICON = 0x0170;

BOOL EndDialog(HWND dialog, INT_PTR result);  // the dialog closes when the handler has returned
HWND GetDlgItem(HWND dialog, int id);
HWND GetParent(HWND window);  // of a control: its dialog
BOOL SetDlgItemTextA(HWND dialog, int id, LPCSTR text);
UINT GetDlgItemTextA(HWND dialog, int id, LPSTR text, int size);  // the length copied, cut to `size` - 1
BOOL SetDlgItemInt(HWND dialog, int id, UINT value, BOOL isSigned);
LRESULT SendDlgItemMessageA(HWND dialog, int id, UINT message, WPARAM wParam, LPARAM lParam);
// Differs: ticking a radio button clears the others of its group.
BOOL CheckDlgButton(HWND dialog, int id, UINT state);
UINT IsDlgButtonChecked(HWND dialog, int id);
BOOL CheckRadioButton(HWND dialog, int first, int last, int checked);
BOOL EnableWindow(HWND window, BOOL enable);  // FALSE: it was enabled before
BOOL IsWindowEnabled(HWND window);            // also FALSE: a modal dialog or box is over it

// A value of the program's own that a dialog carries, 0 at first.
inline constexpr int DWLP_USER = static_cast<int>(sizeof(LRESULT) + sizeof(DLGPROC));
LONG_PTR GetWindowLongPtrA(HWND dialog, int index);  // DWLP_USER only

// A procedure in front of a control's own. Relied on: WM_LBUTTONDOWN and WM_KEYDOWN reach it before the
// control acts on them, and the control acts once the procedure has passed them on by CallWindowProcA.
inline constexpr int GWLP_WNDPROC = -4;
LONG_PTR SetWindowLongPtrA(HWND window, int index, LONG_PTR value);  // the former procedure
LRESULT CallWindowProcA(WNDPROC former, HWND window, UINT message, WPARAM wParam, LPARAM lParam);

// --- Files dropped on a window ---------------------------------------------------------------------------

struct HDROP__;
using HDROP = HDROP__*;
void DragAcceptFiles(HWND window, BOOL accept);
// Path of file number `index` of a WM_DROPFILES, cut to `size` - 1 bytes; the length copied.
UINT DragQueryFileA(HDROP drop, UINT index, LPSTR path, UINT size);
void DragFinish(HDROP drop);

// --- Boxes, beeps, files ---------------------------------------------------------------------------------

inline constexpr UINT MB_OK = 0x0000;
inline constexpr UINT MB_OKCANCEL = 0x0001;
inline constexpr UINT MB_DEFBUTTON2 = 0x0100;
inline constexpr UINT MB_ICONHAND = 0x0010;
inline constexpr UINT MB_ICONEXCLAMATION = 0x0030;
inline constexpr UINT MB_ICONASTERISK = 0x0040;
inline constexpr int IDOK = 1;
inline constexpr int IDCANCEL = 2;
// The button pressed; IDCANCEL also for a box that is closed, where it has that button. Caption null:
// "Error".
int MessageBoxA(HWND owner, LPCSTR text, LPCSTR caption, UINT style);
BOOL MessageBeep(UINT type);

// The help book, in a window of its own, opened at the page of a number (HELP_CONTEXT) or at the one that
// tells how to use it; 0 when there is no such page or no book. HELP_QUIT puts it away. Differs: `file` names
// a book of this system's kind by its name, in whatever ending and case.
inline constexpr UINT HELP_CONTEXT = 0x0001;
inline constexpr UINT HELP_QUIT = 0x0002;
inline constexpr UINT HELP_HELPONHELP = 0x0004;
BOOL WinHelpA(HWND owner, LPCSTR file, UINT command, ULONG_PTR data);

inline constexpr DWORD OFN_HIDEREADONLY = 0x00000004;
struct OPENFILENAMEA {
  DWORD lStructSize;
  HWND hwndOwner;
  HINSTANCE hInstance;
  LPCSTR lpstrFilter;
  LPSTR lpstrCustomFilter;
  DWORD nMaxCustFilter;
  DWORD nFilterIndex;
  LPSTR lpstrFile;
  DWORD nMaxFile;
  LPSTR lpstrFileTitle;
  DWORD nMaxFileTitle;
  LPCSTR lpstrInitialDir;
  LPCSTR lpstrTitle;
  DWORD Flags;
  WORD nFileOffset;
  WORD nFileExtension;
  LPCSTR lpstrDefExt;
  LPARAM lCustData;
  void* lpfnHook;
  LPCSTR lpTemplateName;
  void* pvReserved;
  DWORD dwReserved;
  DWORD FlagsEx;
};
// The toolkit's dialog for a file to open. Relied on: pairs of filter name and pattern, the filter shown
// first, the name to begin with (a pattern fills nothing in), the initial directory. The absolute path
// chosen stands in lpstrFile, and nobody has looked whether there is such a file; 0 when the user cancels.
BOOL GetOpenFileNameA(OPENFILENAMEA* open);

// --- Profile ---------------------------------------------------------------------------------------------
//
// A profile file holds sections of keys. Sections and keys are found without regard to ASCII case and to
// blanks around them; blanks around a value, and then one pair of like quotes around it, are not part of it.
// Of names that stand twice the first counts. A section is never null in a read. A file that is
// missing, unreadable, no regular file, UTF-16 or longer than 1 MB reads as empty, and is never written over
// unless it is missing. Text is bytes; a value is read up to a NUL. A name without a directory lies in the
// user's settings folder (see SettingsPath), which is created by the first save.

// The decimal number of a key: a sign, then digits up to the first other character; 0 when there is none,
// and modulo 2^32. The default when the key is absent.
UINT GetPrivateProfileIntA(LPCSTR section, LPCSTR key, INT fallback, LPCSTR file);

// The text of a key, cut to `size` - 1 bytes and ended by a NUL; the default (null: empty) when the key is
// absent. A null key: the names of all keys of the section, each ended by a NUL, with one more NUL behind the
// last. Result: the length copied, without the last NUL. A size of 0 copies nothing.
DWORD GetPrivateProfileStringA(LPCSTR section, LPCSTR key, LPCSTR fallback, LPSTR buffer, DWORD size,
                               LPCSTR file);

// Writes a key; file and section come into being as needed. A null value deletes the key, a null key the
// section. All else in the file stays byte for byte; the file is replaced in one step, and keeps its mode
// and a link that leads to it. 0 when that failed, and the old file stands. Differs: a value with blanks or
// quotes at its ends is written in quotes, so that it reads back as it is; a value with a line feed, which
// no profile can hold, is refused.
BOOL WritePrivateProfileStringA(LPCSTR section, LPCSTR key, LPCSTR value, LPCSTR file);

// --- Settings of the user's country
// -------------------------------------------------------------------------
//
// The section "intl" (whatever its case) alone, made at each call from the locales that the environment
// names: of numbers the key sDecimal, of measures iMeasure (0 metric, 1 inches), of time sShortDate (a
// picture of the letters d, M and y and of one separator), iTime (1: 24 hours), iTLzero (1: the hour has two
// digits), sTime, s1159 and s2359. Texts are UTF-8. An absent key is one of which the locale says nothing, as
// "C" and "POSIX" never do.

UINT GetProfileIntA(LPCSTR section, LPCSTR key, INT fallback);
// Cut to `size` - 1 bytes and ended by a NUL; the length copied. A size of 0 copies nothing.
DWORD GetProfileStringA(LPCSTR section, LPCSTR key, LPCSTR fallback, LPSTR buffer, DWORD size);

// --- Printers ----------------------------------------------------------------------------------------------
//
// Records that describe a printer and how it is to print. Texts are UTF-8.

inline constexpr DWORD DM_ORIENTATION = 0x00000001;
inline constexpr DWORD DM_PAPERSIZE = 0x00000002;
inline constexpr DWORD DM_PAPERLENGTH = 0x00000004;
inline constexpr DWORD DM_PAPERWIDTH = 0x00000008;
inline constexpr DWORD DM_SCALE = 0x00000010;
inline constexpr DWORD DM_COPIES = 0x00000100;
inline constexpr DWORD DM_DEFAULTSOURCE = 0x00000200;
inline constexpr DWORD DM_PRINTQUALITY = 0x00000400;
inline constexpr DWORD DM_COLOR = 0x00000800;
inline constexpr DWORD DM_DUPLEX = 0x00001000;
inline constexpr DWORD DM_YRESOLUTION = 0x00002000;
inline constexpr DWORD DM_TTOPTION = 0x00004000;
inline constexpr int CCHDEVICENAME = 32;
inline constexpr int CCHFORMNAME = 32;
struct DEVMODEA {
  BYTE dmDeviceName[CCHDEVICENAME];
  WORD dmSpecVersion;
  WORD dmDriverVersion;
  WORD dmSize;
  WORD dmDriverExtra;
  DWORD dmFields;  // DM_ bits of the fields that count
  short dmOrientation;
  short dmPaperSize;
  short dmPaperLength;  // tenths of a millimetre
  short dmPaperWidth;
  short dmScale;
  short dmCopies;
  short dmDefaultSource;
  short dmPrintQuality;  // dots per inch; below 0: a grade
  short dmColor;
  short dmDuplex;
  short dmYResolution;
  short dmTTOption;
  short dmCollate;
  BYTE dmFormName[CCHFORMNAME];
  WORD dmLogPixels;
  DWORD dmBitsPerPel;
  DWORD dmPelsWidth;
  DWORD dmPelsHeight;
  DWORD dmDisplayFlags;
  DWORD dmDisplayFrequency;
  DWORD dmICMMethod;
  DWORD dmICMIntent;
  DWORD dmMediaType;
  DWORD dmDitherType;
  DWORD dmReserved1;
  DWORD dmReserved2;
  DWORD dmPanningWidth;  // a record with a dmSize of 148 ends before it
  DWORD dmPanningHeight;
};
// Offsets are bytes from the start of the record, behind which the zero-terminated texts stand.
struct DEVNAMES {
  WORD wDriverOffset;
  WORD wDeviceOffset;
  WORD wOutputOffset;
  WORD wDefault;
};

inline constexpr short DMORIENT_PORTRAIT = 1;
inline constexpr short DMORIENT_LANDSCAPE = 2;
inline constexpr short DMPAPER_LETTER = 1;
inline constexpr short DMPAPER_TABLOID = 3;
inline constexpr short DMPAPER_LEGAL = 5;
inline constexpr short DMPAPER_EXECUTIVE = 7;
inline constexpr short DMPAPER_A3 = 8;
inline constexpr short DMPAPER_A4 = 9;
inline constexpr short DMPAPER_A5 = 11;
inline constexpr short DMPAPER_B4 = 12;  // of JIS, as B5
inline constexpr short DMPAPER_B5 = 13;
inline constexpr short DMPAPER_A2 = 66;
inline constexpr short DMPAPER_A6 = 70;
inline constexpr short DMPAPER_USER = 256;  // of dmPaperWidth and dmPaperLength
inline constexpr short DMBIN_UPPER = 1;
inline constexpr short DMBIN_LOWER = 2;
inline constexpr short DMBIN_MIDDLE = 3;
inline constexpr short DMBIN_MANUAL = 4;
inline constexpr short DMBIN_ENVELOPE = 5;
inline constexpr short DMBIN_LARGECAPACITY = 11;
inline constexpr short DMBIN_CASSETTE = 14;
inline constexpr short DMRES_DRAFT = -1;
inline constexpr short DMRES_LOW = -2;
inline constexpr short DMRES_MEDIUM = -3;
inline constexpr short DMRES_HIGH = -4;
inline constexpr short DMCOLOR_MONOCHROME = 1;
inline constexpr short DMCOLOR_COLOR = 2;
inline constexpr short DMDUP_SIMPLEX = 1;
inline constexpr short DMDUP_VERTICAL = 2;  // turned over the long edge
inline constexpr short DMDUP_HORIZONTAL = 3;

// --- Printing ----------------------------------------------------------------------------------------------
//
// Printers are the queues of the system's print service, and one that writes a PDF file. The service is asked
// only by the calls of this part. A printer's device context is drawn on between StartPage and EndPage, by
// the calls of a window's; its pages have 600 dots per inch, and a margin of a quarter of an inch that cannot
// be drawn on. Queues: the driver is "cups", the device the queue's name, the output the server. The file:
// "pdf", "PDF file", "disk".

// Relied on: StartDocA, StartPage and EndPage fail with one of these, below 0.
inline constexpr int SP_ERROR = -1;
inline constexpr int SP_APPABORT = -2;
inline constexpr int SP_USERABORT = -3;
inline constexpr int SP_OUTOFDISK = -4;
inline constexpr int SP_OUTOFMEMORY = -5;

// A printer's device context; `mode` may be null. Null when no printer can be meant by the names. Whether
// there is such a printer is found out by StartDocA.
HDC CreateDCA(LPCSTR driver, LPCSTR device, LPCSTR output, const DEVMODEA* mode);
BOOL DeleteDC(HDC dc);  // a document that has not ended is aborted

struct DOCINFOA {
  int cbSize;
  LPCSTR lpszDocName;
  LPCSTR lpszOutput;
  LPCSTR lpszDatatype;
  DWORD fwType;
};
// Begins a job. Relied on: lpszOutput null. Where the job goes to a file, the user is asked for its name;
// SP_USERABORT when they give none.
int StartDocA(HDC dc, const DOCINFOA* document);
int StartPage(HDC dc);
int EndPage(HDC dc);   // above 0: the page has gone out
int EndDoc(HDC dc);    // above 0: the job is whole, and on its way
int AbortDoc(HDC dc);  // the job is cancelled, or the file is as it was before

using ABORTPROC = BOOL(CALLBACK*)(HDC, int);
// The procedure is called at pages and while a printer is waited for, some times a second; 0 ends the job
// with SP_APPABORT.
int SetAbortProc(HDC dc, ABORTPROC procedure);

inline constexpr DWORD PD_SELECTION = 0x00000001;
inline constexpr DWORD PD_PAGENUMS = 0x00000002;
inline constexpr DWORD PD_NOSELECTION = 0x00000004;
inline constexpr DWORD PD_PRINTSETUP = 0x00000040;
inline constexpr DWORD PD_RETURNDC = 0x00000100;
inline constexpr DWORD PD_RETURNDEFAULT = 0x00000400;
inline constexpr DWORD PD_USEDEVMODECOPIES = 0x00040000;
inline constexpr DWORD PDERR_NODEFAULTPRN = 0x1008;

using HGLOBAL = HANDLE;
struct PRINTDLGA {
  DWORD lStructSize;
  HWND hwndOwner;
  HGLOBAL hDevMode;  // both are the caller's; null, or replaced by what the user chose
  HGLOBAL hDevNames;
  HDC hDC;
  DWORD Flags;
  WORD nFromPage;  // 0xFFFF: the field is blank
  WORD nToPage;
  WORD nMinPage;
  WORD nMaxPage;
  WORD nCopies;
  HINSTANCE hInstance;
  LPARAM lCustData;
  void* lpfnPrintHook;
  void* lpfnSetupHook;
  LPCSTR lpPrintTemplateName;
  LPCSTR lpSetupTemplateName;
  HGLOBAL hPrintTemplate;
  HGLOBAL hSetupTemplate;
};
// The dialog for a printer, its paper and, without PD_PRINTSETUP, the pages. With PD_RETURNDEFAULT there is
// no dialog, and the service's default printer is chosen. 0 when the user cancels, or on a failure.
BOOL PrintDlgA(PRINTDLGA* dialog);
DWORD CommDlgExtendedError();  // why PrintDlgA failed; 0: the user has cancelled

// --- Clipboard ---------------------------------------------------------------------------------------------

inline constexpr UINT GMEM_MOVEABLE = 0x0002;
inline constexpr UINT GMEM_ZEROINIT = 0x0040;
inline constexpr UINT CF_UNICODETEXT = 13;

// Blocks of memory that are handed over to the clipboard, and to PrintDlgA.
HGLOBAL GlobalAlloc(UINT flags, std::size_t bytes);  // null when there is no memory
void* GlobalLock(HGLOBAL block);
BOOL GlobalUnlock(HGLOBAL block);
HGLOBAL GlobalFree(HGLOBAL block);  // null: freed

// Relied on: CF_UNICODETEXT, zero-terminated UTF-16, lines ended by CR LF, which other programs get as this
// system ends lines. The block belongs to the clipboard once SetClipboardData has
// succeeded.
BOOL OpenClipboard(HWND owner);
BOOL EmptyClipboard();
HANDLE SetClipboardData(UINT format, HANDLE block);
BOOL CloseClipboard();

#endif
