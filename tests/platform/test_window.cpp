#include "tests/platform/test_window.h"

#include <algorithm>
#include <map>

namespace {

TestWindow* current = nullptr;

}  // namespace

TestWindow::TestWindow(int width, int height, HMENU menu) {
  current = this;
  WNDCLASSA windowClass{};
  windowClass.style = CS_DBLCLKS;
  windowClass.lpfnWndProc = Procedure;
  windowClass.hbrBackground = reinterpret_cast<HBRUSH>(static_cast<ULONG_PTR>(COLOR_WINDOW + 1));
  windowClass.lpszClassName = "TEST";
  RegisterClassA(&windowClass);
  handle_ = CreateWindowExA(0, "TEST", "Test", WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, CW_USEDEFAULT, 0,
                            CW_USEDEFAULT, 0, nullptr, menu, nullptr, nullptr);
  platform_testing::ResizeClient(handle_, width, height);
  ShowWindow(handle_, SW_SHOWNORMAL);
  Pump();
  log.clear();
}

TestWindow::~TestWindow() {
  paint = nullptr;
  handle = nullptr;
  DestroyWindow(handle_);
  platform_testing::PumpUntilIdle(nullptr, nullptr);
  UnregisterClassA("TEST", nullptr);
  if (accelerators != nullptr) DestroyAcceleratorTable(accelerators);
  platform_testing::ForgetRecords();
}

LRESULT CALLBACK TestWindow::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  TestWindow& self = *current;
  if (message != WM_ERASEBKGND) self.log.push_back({message, wParam, lParam});
  if (self.handle && self.handle(message, wParam, lParam)) return 0;
  if (message != WM_PAINT || !self.paint) return DefWindowProcA(window, message, wParam, lParam);
  PAINTSTRUCT record{};
  const HDC dc = BeginPaint(window, &record);
  self.paint(dc, record);
  EndPaint(window, &record);
  return 0;
}

std::vector<UINT> TestWindow::Messages() const {
  std::vector<UINT> messages;
  for (const Received& received : log)
    messages.push_back(received.message);
  return messages;
}

int TestWindow::Count(UINT message) const {
  const std::vector<UINT> messages = Messages();
  return static_cast<int>(std::count(messages.begin(), messages.end(), message));
}

void TestWindow::Draw(const std::function<void(HDC)>& draw) {
  const HDC dc = GetDC(handle_);
  draw(dc);
  ReleaseDC(handle_, dc);
}

std::vector<std::string> TestWindow::Art(int x, int y, int width, int height) const {
  static const std::map<COLORREF, char> letters = {
      {kWhite, '.'}, {RGB(0, 0, 0), '#'}, {kRed, 'r'}, {RGB(0, 255, 0), 'g'}, {kBlue, 'b'}, {kYellow, 'y'}};
  const platform_testing::Pixels pixels = platform_testing::ClientPixels(handle_);
  std::vector<std::string> art(static_cast<std::size_t>(height));
  for (std::string& row : art) {
    for (int column = x; column < x + width; ++column) {
      const auto letter = letters.find(pixels.Get(column, y));
      row += letter == letters.end() ? '?' : letter->second;
    }
    ++y;
  }
  return art;
}

void FillWith(HDC dc, const RECT& rect, COLORREF color) {
  const COLORREF former = SetBkColor(dc, color);
  ExtTextOutA(dc, 0, 0, ETO_OPAQUE | ETO_CLIPPED, &rect, "", 0, nullptr);
  SetBkColor(dc, former);
}
