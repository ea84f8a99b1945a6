// A window for tests: it keeps what its procedure received, paints what it is told to, and goes with the
// test.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "platform/testing.h"
#include "platform/win32.h"

struct Received {
  UINT message;
  WPARAM wParam;
  LPARAM lParam;
  bool operator==(const Received&) const = default;
};

class TestWindow {
 public:
  // Shown with a client area of this size, idle, with an empty log.
  explicit TestWindow(int width = 200, int height = 100, HMENU menu = nullptr);
  ~TestWindow();
  TestWindow(const TestWindow&) = delete;
  TestWindow& operator=(const TestWindow&) = delete;

  [[nodiscard]] HWND Handle() const { return handle_; }
  bool Pump() { return platform_testing::PumpUntilIdle(handle_, accelerators); }

  std::vector<Received> log;  // all but WM_ERASEBKGND
  [[nodiscard]] std::vector<UINT> Messages() const;
  [[nodiscard]] int Count(UINT message) const;

  HACCEL accelerators = nullptr;
  std::function<void(HDC, const PAINTSTRUCT&)> paint;
  std::function<bool(UINT, WPARAM, LPARAM)> handle;  // true: with the answer 0

  void Draw(const std::function<void(HDC)>& draw);  // at once
  // The pixels of a part, a letter for each color: '.' white, '#' black, 'r' 'g' 'b' the pure ones, 'y'
  // yellow, '?' any other.
  [[nodiscard]] std::vector<std::string> Art(int x, int y, int width, int height) const;

 private:
  static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

  HWND handle_ = nullptr;
};

inline constexpr COLORREF kWhite = RGB(255, 255, 255);
inline constexpr COLORREF kRed = RGB(255, 0, 0);
inline constexpr COLORREF kBlue = RGB(0, 0, 255);
inline constexpr COLORREF kYellow = RGB(255, 255, 0);

void FillWith(HDC dc, const RECT& rect, COLORREF color);
