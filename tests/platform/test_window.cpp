#include "tests/platform/test_window.h"

#include <algorithm>
#include <cassert>

namespace {

TestWindow* current = nullptr;

constexpr LPCSTR kClassName = "TEST";

}  // namespace

TestWindow::TestWindow(int width, int height, HMENU menu, bool show) {
  assert(current == nullptr && "one at a time");
  current = this;
  WNDCLASSA windowClass{};
  windowClass.style = CS_DBLCLKS;
  windowClass.lpfnWndProc = Procedure;
  windowClass.hCursor = LoadCursorA(nullptr, IDC_ARROW);
  windowClass.hbrBackground = reinterpret_cast<HBRUSH>(static_cast<ULONG_PTR>(COLOR_WINDOW + 1));
  windowClass.lpszClassName = kClassName;
  RegisterClassA(&windowClass);
  handle_ = CreateWindowExA(0, kClassName, "Test", WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, CW_USEDEFAULT, 0,
                            CW_USEDEFAULT, 0, nullptr, menu, nullptr, nullptr);
  if (show) {
    platform_testing::ResizeClient(handle_, width, height);
    ShowWindow(handle_, SW_SHOWNORMAL);
    platform_testing::PumpUntilIdle(handle_, nullptr);
    Forget();
  }
}

TestWindow::~TestWindow() {
  paint = nullptr;
  handle = nullptr;
  DestroyWindow(handle_);
  platform_testing::PumpUntilIdle(nullptr, nullptr);
  UnregisterClassA(kClassName, nullptr);
  if (accelerators != nullptr) DestroyAcceleratorTable(accelerators);
  platform_testing::LogDrawing(false);
  platform_testing::ForgetRecords();
  current = nullptr;
}

LRESULT CALLBACK TestWindow::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  TestWindow& self = *current;
  if (message != WM_ERASEBKGND) self.log.push_back({message, wParam, lParam});
  if (self.handle && self.handle(message, wParam, lParam)) return 0;
  if (message == WM_PAINT && self.paint) {
    PAINTSTRUCT record{};
    const HDC dc = BeginPaint(window, &record);
    self.paint(dc, record);
    EndPaint(window, &record);
    return 0;
  }
  return DefWindowProcA(window, message, wParam, lParam);
}

std::vector<UINT> TestWindow::Messages() const {
  std::vector<UINT> messages;
  for (const Received& received : log)
    messages.push_back(received.message);
  return messages;
}

int TestWindow::Count(UINT message) const {
  return static_cast<int>(std::count_if(
      log.begin(), log.end(), [message](const Received& received) { return received.message == message; }));
}

void TestWindow::Draw(const std::function<void(HDC)>& draw) {
  const HDC dc = GetDC(handle_);
  draw(dc);
  ReleaseDC(handle_, dc);
}

std::vector<std::string> TestWindow::Art(int x, int y, int width, int height) const {
  const platform_testing::Pixels pixels = platform_testing::ClientPixels(handle_);
  static constexpr std::pair<COLORREF, char> kLetters[] = {{kWhite, '.'}, {kBlack, '#'}, {kRed, 'r'},
                                                           {kGreen, 'g'}, {kBlue, 'b'},  {kYellow, 'y'}};
  std::vector<std::string> art(static_cast<std::size_t>(height));
  for (int row = 0; row < height; ++row) {
    for (int column = x; column < x + width; ++column) {
      const auto* letter = std::find_if(std::begin(kLetters), std::end(kLetters), [&](const auto& each) {
        return each.first == pixels.Get(column, y + row);
      });
      art[static_cast<std::size_t>(row)] += letter == std::end(kLetters) ? '?' : letter->second;
    }
  }
  return art;
}

void FillWith(HDC dc, const RECT& rect, COLORREF color) {
  const COLORREF former = SetBkColor(dc, color);
  ExtTextOutA(dc, 0, 0, ETO_OPAQUE | ETO_CLIPPED, &rect, "", 0, nullptr);
  SetBkColor(dc, former);
}
