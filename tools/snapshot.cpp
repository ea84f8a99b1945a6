// quorl-snapshot: runs the viewer's own window off-screen and shows what a user would see in it, as a
// picture or as text. It makes the pictures of the docs and lets anybody see a screen from a terminal.
//
//   quorl-snapshot [--size COLSxROWS] [--keys LIST] [-o out.png | --text] -- [options] file
//
// LIST is a comma-separated list of keys, each with modifiers in front and a count behind if wanted, as in
// PageDown*3,Ctrl+W,Ctrl+Shift+Z,End.

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <optional>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "platform/posix/windows_1252.h"
#include "platform/testing.h"
#include "window/main_window_state.h"
#include "window/start_up.h"

namespace {

using platform_testing::DrawCall;

constexpr const char* kUsage =
    "usage: quorl-snapshot [--size COLSxROWS] [--keys LIST] [-o out.png | --text] -- [options] file\n";

struct KeyName {
  std::string_view name;
  int key;
};
constexpr KeyName kKeyNames[] = {
    {"Backspace", VK_BACK}, {"Esc", VK_ESCAPE}, {"PageUp", VK_PRIOR},  {"PageDown", VK_NEXT},
    {"End", VK_END},        {"Home", VK_HOME},  {"Left", VK_LEFT},     {"Up", VK_UP},
    {"Right", VK_RIGHT},    {"Down", VK_DOWN},  {"Insert", VK_INSERT},
};
constexpr KeyName kModifiers[] = {
    {"Ctrl+", MK_CONTROL}, {"Shift+", MK_SHIFT}, {"Alt+", platform_testing::kAlt}};
constexpr int kFunctionKeys = 12;

struct KeyStroke {
  int modifiers = 0;
  int virtualKey = 0;  // 0: `character` is typed
  char character = 0;
  int count = 1;
};

struct Arguments {
  int columns = 80;
  int rows = 25;
  std::vector<KeyStroke> keys;
  std::string picture;
  std::vector<std::string> words;
};

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

bool ParseSize(std::string_view text, Arguments& arguments) {
  const std::size_t cross = text.find('x');
  if (cross == std::string_view::npos) return false;
  const std::optional<int> columns = Number(text.substr(0, cross));
  const std::optional<int> rows = Number(text.substr(cross + 1));
  if (!columns || !rows) return false;
  arguments.columns = *columns;
  arguments.rows = *rows;
  return true;
}

std::optional<Arguments> ParseArguments(int argc, char** argv) {
  Arguments arguments;
  for (int i = 1; i < argc; ++i) {
    const std::string_view word = argv[i];
    const bool hasValue = i + 1 < argc;
    if (word == "--") {
      arguments.words.assign(argv + i + 1, argv + argc);
      return arguments;
    }
    if (word == "--text") continue;
    if (!hasValue) return std::nullopt;
    const std::string_view value = argv[++i];
    if (word == "--size") {
      if (!ParseSize(value, arguments)) return std::nullopt;
    } else if (word == "--keys") {
      if (!ParseKeys(value, arguments.keys)) return std::nullopt;
    } else if (word == "-o") {
      arguments.picture = value;
    } else {
      return std::nullopt;
    }
  }
  return std::nullopt;
}

bool Pump() {
  return platform_testing::PumpUntilIdle(MainState.MainWindow, MainState.AccelTable);
}

// Makes the client area hold the columns and rows asked for. Bars that come and go with the size take room,
// so it takes a few turns.
bool SettleSize(const Arguments& arguments) {
  for (int turn = 0; turn < 4; ++turn) {
    // A row's text begins one pixel from the edge.
    const int width = arguments.columns * std::max(MainState.CharWidth, 1) + 1;
    const int height = arguments.rows * std::max(MainState.CharHeight, 1);
    if (MainState.ClientWidth == width && MainState.ClientHeight == height) break;
    platform_testing::ResizeClient(MainState.MainWindow, width, height);
    if (!Pump()) return false;
  }
  return true;
}

bool Replay(const std::vector<KeyStroke>& keys) {
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

std::string Utf8(char16_t character) {
  if (character < 0x80) return {static_cast<char>(character)};
  if (character < 0x800) {
    return {static_cast<char>(0xC0 | (character >> 6)), static_cast<char>(0x80 | (character & 0x3F))};
  }
  return {static_cast<char>(0xE0 | (character >> 12)), static_cast<char>(0x80 | ((character >> 6) & 0x3F)),
          static_cast<char>(0x80 | (character & 0x3F))};
}

// One row of the screen, by column.
using ScreenRow = std::map<int, char>;

void PlaceText(const DrawCall& call, ScreenRow& row) {
  const bool clipped = call.rect.right > call.rect.left;
  const int left = clipped ? std::max<int>(call.rect.left, 0) : 0;
  const int right = clipped ? std::min<int>(call.rect.right, MainState.ClientWidth) : MainState.ClientWidth;
  int x = call.x;
  for (const char character : call.text) {
    if (x >= left && x < right) row[x / MainState.CharWidth] = character;
    x += MainState.CharWidth;
  }
}

void PrintScreen() {
  platform_testing::ForgetRecords();
  platform_testing::LogDrawing(true);
  RepaintWindow();
  UpdateWindow(MainState.MainWindow);
  std::vector<ScreenRow> screen(
      static_cast<std::size_t>(MainState.ClientHeight / std::max(MainState.CharHeight, 1)));
  for (const DrawCall& call : platform_testing::DrawingLog()) {
    if (call.kind != DrawCall::Kind::text && call.kind != DrawCall::Kind::fillText) continue;
    const auto row = static_cast<std::size_t>(call.y / MainState.CharHeight);
    if (row < screen.size()) PlaceText(call, screen[row]);
  }
  for (const ScreenRow& row : screen) {
    std::string text;
    int column = 0;
    for (const auto& [at, character] : row) {
      if (character == ' ') continue;
      text.append(static_cast<std::size_t>(at - column), ' ');
      text += Utf8(UnicodeOfWindows1252(static_cast<std::uint8_t>(character)));
      column = at + 1;
    }
    std::puts(text.c_str());
  }
}

int Run(const Arguments& arguments) {
  if (const std::optional<int> refused = StartProgram(nullptr, nullptr, "", SW_SHOWNORMAL)) return *refused;
  int exitCode = 0;
  if (!Pump() || !SettleSize(arguments) || !Replay(arguments.keys) || !SettleSize(arguments)) {
    std::fprintf(stderr,
                 "quorl-snapshot: the program has ended: there was no such file, or a key ended it\n");
    exitCode = 1;
  } else {
    if (arguments.picture.empty()) {
      PrintScreen();
    } else if (!platform_testing::SavePicture(MainState.MainWindow, arguments.picture)) {
      std::fprintf(stderr, "quorl-snapshot: cannot write %s\n", arguments.picture.c_str());
      exitCode = 1;
    }
    SendMessageA(MainState.MainWindow, WM_CLOSE, 0, 0);
  }
  StopProgram();
  return exitCode;
}

}  // namespace

int main(int argc, char** argv) {
  const std::optional<Arguments> arguments = ParseArguments(argc, argv);
  if (!arguments) {
    std::fputs(kUsage, stderr);
    return 2;
  }
  // The user's own profile is neither read nor written.
  const std::filesystem::path settings =
      std::filesystem::temp_directory_path() / ("quorl-snapshot-" + std::to_string(std::random_device()()));
  setenv("XDG_CONFIG_HOME", settings.c_str(), 1);
  platform_testing::StartToolkit(argc, argv);
  platform_testing::SetCommandWords(arguments->words);
  const int exitCode = Run(*arguments);
  std::error_code ignored;
  std::filesystem::remove_all(settings, ignored);
  return exitCode;
}
