#include "tools/replay.h"

#include <algorithm>
#include <charconv>
#include <map>
#include <optional>
#include <span>

#include "platform/cells.h"
#include "platform/testing.h"
#include "window/main_window_state.h"

namespace replay {

namespace {

using platform_testing::DrawCall;

struct KeyName {
  std::string_view name;
  int key;
};
constexpr KeyName kKeyNames[] = {
    {"Backspace", VK_BACK}, {"Tab", 0x09},         {"Enter", 0x0D},       {"Esc", VK_ESCAPE},
    {"Space", 0x20},        {"PageUp", VK_PRIOR},  {"PageDown", VK_NEXT}, {"End", VK_END},
    {"Home", VK_HOME},      {"Left", VK_LEFT},     {"Up", VK_UP},         {"Right", VK_RIGHT},
    {"Down", VK_DOWN},      {"Insert", VK_INSERT},
};
constexpr KeyName kModifiers[] = {
    {"Ctrl+", MK_CONTROL}, {"Shift+", MK_SHIFT}, {"Alt+", platform_testing::kAlt}};
constexpr int kFunctionKeys = 12;

bool TakePrefix(std::string_view& text, std::string_view prefix) {
  if (!text.starts_with(prefix)) return false;
  text.remove_prefix(prefix.size());
  return true;
}

std::optional<int> Number(std::string_view text) {
  int number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc() || end != text.data() + text.size() || number < 1) return std::nullopt;
  return number;
}

std::optional<KeyStroke> ParseKey(std::string_view name) {
  KeyStroke stroke;
  if (const std::size_t star = name.rfind('*'); star != std::string_view::npos && star > 0) {
    const std::optional<int> count = Number(name.substr(star + 1));
    if (!count) return std::nullopt;
    stroke.count = *count;
    name = name.substr(0, star);
  }
  for (bool found = true; found;) {
    found = false;
    for (const KeyName& modifier : kModifiers) {
      if (!TakePrefix(name, modifier.name)) continue;
      stroke.modifiers |= modifier.key;
      found = true;
    }
  }
  const auto* named = std::ranges::find(kKeyNames, name, &KeyName::name);
  if (named != std::end(kKeyNames)) {
    stroke.virtualKey = named->key;
    return stroke;
  }
  if (name.size() == 1) {
    stroke.character = name[0];
    return stroke;
  }
  const std::optional<int> function = TakePrefix(name, "F") ? Number(name) : std::nullopt;
  if (!function || *function > kFunctionKeys) return std::nullopt;
  stroke.virtualKey = VK_F1 + *function - 1;
  return stroke;
}

constexpr const char* kFrozenEnd = "|";
constexpr const char* kTextEnd = "\u00BB";

// The screen as it is drawn, call by call.
class Canvas {
 public:
  explicit Canvas(std::span<const DrawCall> calls)
      : rows_(static_cast<std::size_t>(std::max(MainState.ClientHeight / Height(), 0))),
        cells_(rows_.size()) {
    for (const DrawCall& call : calls)
      if (call.kind == DrawCall::Kind::line && call.rect.left == call.rect.right) rule_ = call.rect.left;
    for (const DrawCall& call : calls)
      Draw(call);
  }

  std::vector<ScreenRow> Rows() {
    for (std::size_t i = 0; i < rows_.size(); ++i) {
      int column = 0;
      for (const auto& [at, character] : cells_[i]) {
        if (character == " ") continue;
        rows_[i].text.append(static_cast<std::size_t>(at - column), ' ');
        rows_[i].text += character;
        column = at + 1;
      }
    }
    return std::move(rows_);
  }

 private:
  static int Width() { return std::max(MainState.CharWidth, 1); }
  static int Height() { return std::max(MainState.CharHeight, 1); }
  static char KindOf(const DrawCall& call) {
    constexpr std::pair<ColorSlot, char> kKinds[] = {
        {WindowText, ' '}, {TagText, 't'}, {HeadingText, '='}, {MessageText, '!'}, {CommentText, 'i'}};
    for (const auto& [slot, kind] : kKinds)
      if (call.color == ColorTable[slot] && call.background == ColorTable[slot + 1]) return kind;
    return '?';
  }
  [[nodiscard]] int ColumnOf(int x) const { return x / Width() + (rule_ >= 0 && x > rule_ ? 1 : 0); }

  void Draw(const DrawCall& call) {
    switch (call.kind) {
      case DrawCall::Kind::text:
      case DrawCall::Kind::fillText:
        DrawText(call);
        break;
      case DrawCall::Kind::line:
        DrawLine(call);
        break;
      case DrawCall::Kind::rectangle:
        DrawRectangle(call);
        break;
      case DrawCall::Kind::invert:
        for (int y = call.rect.top; y < call.rect.bottom; y += Height())
          if (ScreenRow* const row = RowAt(y)) row->selected = !row->selected;
        break;
      default:
        break;
    }
  }
  ScreenRow* RowAt(int y) {
    const auto row = static_cast<std::size_t>(y / Height());
    return y >= 0 && row < rows_.size() ? &rows_[row] : nullptr;
  }
  void Put(int y, int column, const std::string& character) {
    if (RowAt(y) != nullptr) cells_[static_cast<std::size_t>(y / Height())][column] = character;
  }
  void DrawText(const DrawCall& call) {
    ScreenRow* const row = RowAt(call.y);
    if (row == nullptr) return;
    const bool filled = call.kind == DrawCall::Kind::fillText;
    if (filled) {
      row->kind = KindOf(call);
      std::erase_if(cells_[static_cast<std::size_t>(row - rows_.data())],
                    [&](const auto& cell) { return cell.first >= ColumnOf(call.rect.left); });
    }
    const bool clipped = call.rect.right > call.rect.left;
    const int left = clipped ? std::max<int>(call.rect.left, 0) : 0;
    const int right = clipped ? std::min<int>(call.rect.right, MainState.ClientWidth) : MainState.ClientWidth;
    int x = call.x;
    const CellRow cells = CellsOfUtf8(call.text);
    for (std::size_t i = 0; i < cells.cells.size(); ++i) {
      if (x >= left && x < right) Put(call.y, ColumnOf(x), CellsToUtf8(cells.View().substr(i, 1)));
      x += MainState.CharWidth;
    }
  }
  void DrawLine(const DrawCall& call) {
    if (call.rect.left == call.rect.right) {
      for (int y = call.rect.top; y < call.rect.bottom; y += Height())
        Put(y, call.rect.left / Width(), kFrozenEnd);
    } else if (ScreenRow* const row = RowAt(call.rect.top)) {
      row->rule = call.penStyle == PS_DOT ? '-' : '_';
    }
  }
  void DrawRectangle(const DrawCall& call) {
    if (call.rect.left >= 0) {
      Put(call.rect.top, ColumnOf(call.rect.left), kTextEnd);
      return;
    }
    for (int y = call.rect.top; y < call.rect.bottom; y += Height())
      if (ScreenRow* const row = RowAt(y)) row->kind = '~';
  }

  std::vector<ScreenRow> rows_;
  std::vector<std::map<int, std::string>> cells_;
  int rule_ = -1;  // of the frozen columns
};

}  // namespace

bool ParseKeys(std::string_view list, std::vector<KeyStroke>& keys) {
  while (!list.empty()) {
    const std::size_t comma = std::min(list.find(','), list.size());
    const std::optional<KeyStroke> stroke = ParseKey(list.substr(0, comma));
    if (!stroke) return false;
    keys.push_back(*stroke);
    list.remove_prefix(std::min(comma + 1, list.size()));
  }
  return true;
}

bool Pump() {
  return platform_testing::PumpUntilIdle(MainState.MainWindow, MainState.AccelTable);
}

bool Press(const std::vector<KeyStroke>& keys) {
  for (const KeyStroke& stroke : keys) {
    for (int i = 0; i < stroke.count; ++i) {
      if (stroke.virtualKey != 0) {
        platform_testing::PressKey(MainState.MainWindow, stroke.virtualKey, stroke.modifiers);
      } else {
        platform_testing::TypeCharacter(MainState.MainWindow, stroke.character, stroke.modifiers);
      }
      if (!Pump()) return false;
    }
  }
  return true;
}

bool SettleSize(int columns, int rows) {
  // Bars that come and go with the size take room, so it takes a few turns.
  for (int turn = 0; turn < 4; ++turn) {
    // A row's text begins one pixel from the edge.
    const int width = columns * std::max(MainState.CharWidth, 1) + 1;
    const int height = rows * std::max(MainState.CharHeight, 1);
    if (MainState.ClientWidth == width && MainState.ClientHeight == height) break;
    platform_testing::ResizeClient(MainState.MainWindow, width, height);
    if (!Pump()) return false;
  }
  return true;
}

std::vector<ScreenRow> ReadScreen() {
  const std::vector<DrawCall>& log = platform_testing::DrawingLog();
  const std::size_t before = log.size();
  platform_testing::LogDrawing(true);
  RepaintWindow();
  UpdateWindow(MainState.MainWindow);
  platform_testing::LogDrawing(false);
  return Canvas(std::span(log).subspan(before)).Rows();
}

}  // namespace replay
