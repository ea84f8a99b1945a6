// quorl-snapshot: runs the viewer's own window off-screen and shows what a user would see in it, as a
// picture or as text. It makes the pictures of the docs and lets anybody see a screen from a terminal.
//
//   quorl-snapshot [--size COLSxROWS] [--keys LIST] [-o out.png | --text] -- [options] file
//
// LIST is a comma-separated list of keys, as in PageDown*3,Ctrl+W,Ctrl+Shift+Z,End.

#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "platform/testing.h"
#include "tools/replay.h"
#include "window/main_window_state.h"
#include "window/start_up.h"

namespace {

constexpr const char* kUsage =
    "usage: quorl-snapshot [--size COLSxROWS] [--keys LIST] [-o out.png | --text] -- [options] file\n";

struct Arguments {
  int columns = 80;
  int rows = 25;
  std::vector<replay::KeyStroke> keys;
  std::string picture;
  std::vector<std::string> words;
};

std::optional<int> Number(std::string_view text) {
  int number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc() || end != text.data() + text.size() || number < 1) return std::nullopt;
  return number;
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
      if (!replay::ParseKeys(value, arguments.keys)) return std::nullopt;
    } else if (word == "-o") {
      arguments.picture = value;
    } else {
      return std::nullopt;
    }
  }
  return std::nullopt;
}

int Run(const Arguments& arguments) {
  if (const std::optional<int> refused = StartProgram(nullptr, nullptr, "", SW_SHOWNORMAL)) return *refused;
  int exitCode = 0;
  const auto settle = [&arguments] { return replay::SettleSize(arguments.columns, arguments.rows); };
  if (!replay::Pump() || !settle() || !replay::Press(arguments.keys) || !settle()) {
    std::fprintf(stderr,
                 "quorl-snapshot: the program has ended: there was no such file, or a key ended it\n");
    exitCode = 1;
  } else {
    if (arguments.picture.empty()) {
      for (const replay::ScreenRow& row : replay::ReadScreen())
        std::puts(row.text.c_str());
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
