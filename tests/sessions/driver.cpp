// Recorded sessions: keys in, screens out. Each *.session here says what file is viewed and what a user does,
// and holds what the user then sees; this driver does it and compares. README.md tells how they are written.
//
//   driver [GTEST OPTIONS]        compares every session
//   driver --write [FILE...]      writes the sessions anew with what is seen now
//   driver --make FILE FOLDER     makes the files of a session in a folder, for another driver
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <functional>
#include <iostream>
#include <map>
#include <span>
#include <sstream>
#include <thread>

#include "platform/testing.h"
#include "tests/scratch.h"
#include "tools/replay.h"
#include "window/main_window_state.h"
#include "window/private_messages.h"
#include "window/start_up.h"

namespace {

using Words = std::vector<std::string>;
namespace fs = std::filesystem;

const fs::path kSource = QUORL_SOURCE;

[[noreturn]] void Refuse(const std::string& what) {
  throw std::runtime_error(what);
}

// The words of a line; one in quotes may hold blanks and keeps its quotes.
Words Split(const std::string& line) {
  Words words;
  bool quoted = false, inside = false;
  for (const char c : line) {
    if (c == ' ' && !quoted) {
      inside = false;
      continue;
    }
    if (!inside) words.emplace_back();
    inside = true;
    if (c == '"') quoted = !quoted;
    words.back() += c;
  }
  return words;
}

// Up to the blank, which is taken away with it.
std::string TakeWord(std::string& rest) {
  const std::size_t blank = std::min(rest.find(' '), rest.size());
  std::string word = rest.substr(0, blank);
  rest.erase(0, blank + 1);
  return word;
}

// A text with \n, \xHH and the like.
std::string Unescape(const std::string& text) {
  static const std::map<char, char> kEscapes = {{'n', '\n'}, {'r', '\r'}, {'t', '\t'},
                                                {'f', '\f'}, {'s', ' '},  {'\\', '\\'}};
  std::string plain;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] != '\\') {
      plain += text[i];
    } else if (text[++i] == 'x') {
      plain += static_cast<char>(std::stoi(text.substr(i + 1, 2), nullptr, 16));
      i += 2;
    } else {
      plain += kEscapes.at(text[i]);
    }
  }
  return plain;
}

std::string Escape(const std::string& text) {
  std::string escaped;
  for (const char c : text)
    escaped += c == '\n' ? "\\n" : c == '\r' ? "\\r" : c == '\t' ? "\\t" : std::string(1, c);
  return escaped;
}

// What a line of a recipe adds to a file.
std::string Ingredient(std::string line) {
  const std::string verb = TakeWord(line);
  std::string content;
  if (verb == "put") return Unescape(line);
  if (verb == "sample") return ContentOf(kSource / "samples" / line);
  if (verb == "repeat") {
    for (int times = std::stoi(TakeWord(line)); times > 0; --times)
      content += Unescape(line);
  } else if (verb == "lines") {  // #### in the pattern is the number with zeros in front, # alone without
    const int count = std::stoi(TakeWord(line));
    const std::size_t at = line.find('#');
    const std::size_t width =
        at == std::string::npos ? 0 : std::min(line.find_first_not_of('#', at), line.size()) - at;
    for (int i = 0; i < count; ++i) {
      std::string number = std::to_string(i), text = line;
      if (number.size() < width) number.insert(0, width - number.size(), '0');
      if (width > 0) text.replace(at, width, number);
      content += Unescape(text) + "\n";
    }
  } else if (verb == "bytes") {
    const int first = std::stoi(TakeWord(line), nullptr, 16);
    for (int byte = first; byte <= std::stoi(line, nullptr, 16); ++byte)
      content += static_cast<char>(byte);
  } else {
    Refuse("no such ingredient: " + verb);
  }
  return content;
}

struct Setting {
  Words words;  // of the command line
  int columns = 60, rows = 10;
};

std::pair<int, int> ParseSize(const std::string& text) {
  return {std::stoi(text), std::stoi(text.substr(text.find('x') + 1))};
}

constexpr std::string_view kPlainReading = "[Quorl Reading]\nStatusLine=0\nLightHits=0\n";

fs::path ProfileFile() {
  return fs::current_path() / "quorl" / "QUORL.INI";
}

// The lines in front of the first step; makes the files, and the profile, in the current folder.
Setting ReadSetting(const Words& lines) {
  Setting setting;
  std::string file, first, profile;
  for (std::string line : lines) {
    if (line.empty() || line[0] == '#') continue;
    if (line.starts_with("  ")) {
      line.erase(0, 2);
      if (file.empty())
        profile += line + "\n";
      else if (line.starts_with("stretch "))
        fs::resize_file(file, std::stoull(line.substr(8)));
      else
        PutContent(file, Ingredient(line), std::ios::app);
      continue;
    }
    const std::string verb = TakeWord(line);
    if (verb == "file") {
      file = line;
      if (first.empty()) first = file;
      PutContent(file, "", std::ios::trunc);
    } else if (verb == "profile") {
      file.clear();
    } else if (verb == "show") {
      setting.words = Split(line);
    } else if (verb == "size") {
      std::tie(setting.columns, setting.rows) = ParseSize(line);
    } else {
      Refuse("no such setting: " + verb);
    }
  }
  if (setting.words.empty()) setting.words = {first};
  // What is beside the view is off unless the session speaks of it.
  if (profile.find("[Quorl Reading]") == std::string::npos) profile += kPlainReading;
  fs::create_directories(ProfileFile().parent_path());
  PutContent(ProfileFile(), profile, std::ios::trunc);
  return setting;
}

// A running program, and what a session can do with it. Each step gives the lines that its user sees.
class Player {
 public:
  explicit Player(const Setting& setting) : setting_(setting) { Start(setting.words); }
  ~Player() { Stop(); }
  Player(const Player&) = delete;
  Player& operator=(const Player&) = delete;

  Words Play(std::string step) {
    const std::string verb = TakeWord(step);
    Words seen;
    if (verb == "screen") {
      seen = Screen(step);
    } else if (verb == "menu") {
      seen = Menu(std::stoi(step));
    } else if (verb == "clipboard") {
      seen = Lines(platform_testing::ClipboardText());
    } else if (verb == "settings") {
      std::string text = ContentOf(ProfileFile());
      if (const std::size_t at = text.find(kPlainReading); at != std::string::npos)
        text.erase(at, kPlainReading.size());
      seen = Lines(text);
    } else {
      Do(verb, step);
    }
    TakeNotes(seen);
    return seen;
  }

 private:
  static HWND Window() { return MainState.MainWindow; }

  void Start(const Words& words) {
    platform_testing::SetCommandWords(words);
    running_ = StartProgram(nullptr, nullptr, "", SW_SHOWNORMAL) == std::nullopt && replay::Pump();
    running_ = running_ && replay::SettleSize(setting_.columns, setting_.rows);
    if (!running_) return;
    MainState.FormatWidth = -1;  // else lines keep the length that the first size gave them
    SendMessageA(Window(), WM_VIEW_LAYOUT, 0, 0);
    replay::Pump();
  }
  void Stop() {
    if (running_) SendMessageA(Window(), WM_CLOSE, 0, 0);
    if (running_) replay::Pump();
    StopProgram();
    MainState = MainWindowState{};
    platform_testing::ForgetRecords();
    beeps_ = boxes_ = dialogs_ = 0;
    running_ = false;
  }

  // The folder of the session has another name each time.
  static std::string WithoutFolder(std::string text) {
    const std::string folder = fs::current_path();
    for (std::size_t at = 0; (at = text.find(folder, at)) != std::string::npos;)
      text.replace(at, folder.size(), "~");
    return text;
  }
  static Words Lines(const std::string& text) {
    Words lines;
    std::istringstream stream(WithoutFolder(text));
    for (std::string line; std::getline(stream, line);)
      lines.push_back("| " + Escape(line));
    return lines;
  }
  void TakeNotes(Words& seen) {
    const auto& beeps = platform_testing::Beeps();
    for (; beeps_ < beeps.size(); ++beeps_)
      seen.push_back("beep " + std::to_string(beeps[beeps_]));
    const auto& boxes = platform_testing::Boxes();
    for (; boxes_ < boxes.size(); ++boxes_)
      seen.push_back("box \"" + boxes[boxes_].caption + "\": " + WithoutFolder(Escape(boxes[boxes_].text)));
    const auto& dialogs = platform_testing::FileDialogs();
    for (; dialogs_ < dialogs.size(); ++dialogs_) {
      const auto& dialog = dialogs[dialogs_];
      seen.push_back("asks for a file: \"" + dialog.name + "\" in " + WithoutFolder(dialog.directory) +
                     ", filter " + std::to_string(dialog.filterIndex));
    }
    if (!running_ && !ended_) seen.emplace_back("the program ends");
    ended_ = !running_;
  }

  Words Screen(const std::string& rows) const {
    if (!running_) return {"no window"};
    const platform_testing::Pixels shown = platform_testing::ClientPixels(Window());
    const std::vector<replay::ScreenRow> screen = replay::ReadScreen();
    Words seen{"[" + platform_testing::Caption(Window()) + "] at " + BarText(SB_VERT) + ", column " +
               BarText(SB_HORZ)};
    if (shown != platform_testing::ClientPixels(Window()))
      seen.emplace_back("STALE: a repaint shows another picture");
    const std::size_t count = rows.empty() ? screen.size() : std::stoul(rows);
    for (const replay::ScreenRow& row : std::span(screen).first(std::min(count, screen.size())))
      seen.push_back(std::string(1, row.selected ? '*' : ' ') + row.kind + row.rule + "|" + row.text);
    return seen;
  }
  static std::string BarText(int bar) {
    const platform_testing::Bar state = platform_testing::ScrollBarOf(Window(), bar);
    return state.visible ? std::to_string(state.position) + "/" + std::to_string(state.top) : "-";
  }
  static std::string Plain(std::string text) {
    text = text.substr(0, text.find('\t'));
    std::erase(text, '&');
    return text;
  }
  static Words Menu(int position) {
    Words seen;
    for (const auto& item : platform_testing::OpenMenu(Window(), position)) {
      std::string text = item.text.substr(0, item.text.find('\t'));
      if (!item.enabled && !item.separator) text = "(" + text + ")";
      seen.push_back(item.separator ? "| -" : (item.checked ? "|*" : "| ") + text);
    }
    return seen;
  }
  static void Choose(const std::string& text) {
    for (int position = 0; position < GetMenuItemCount(GetMenu(Window())); ++position) {
      for (const auto& item : platform_testing::OpenMenu(Window(), position)) {
        if (item.separator || Plain(item.text) != text) continue;
        platform_testing::ClickMenu(Window(), item.id);
        return;
      }
    }
    Refuse("no such item: " + text);
  }

  static std::vector<replay::KeyStroke> Keys(const std::string& list) {
    std::vector<replay::KeyStroke> keys;
    if (!replay::ParseKeys(list, keys)) Refuse("not keys: " + list);
    return keys;
  }
  // What opens a dialog, a key or the number of a command, and then texts and keys in it.
  void Dialog(const std::string& step) {
    Words words = Split(step);
    // They let the dialog become the active window, without which it has no access keys.
    std::vector<platform_testing::DialogStep> script(2, [](HWND) {});
    for (std::string word : std::span(words).subspan(1)) {
      if (word[0] == '"') {
        word = Unescape(word.substr(1, word.size() - 2));
        script.emplace_back([word](HWND dialog) { platform_testing::TypeText(dialog, word); });
        continue;
      }
      for (const replay::KeyStroke& key : Keys(word)) {
        const int code = key.virtualKey != 0 ? key.virtualKey : std::toupper(key.character);
        for (int i = 0; i < key.count; ++i)
          script.emplace_back(
              [code, key](HWND dialog) { platform_testing::PressDialogKey(dialog, code, key.modifiers); });
      }
    }
    platform_testing::ScriptNextDialog(script);
    if (std::isdigit(words[0][0]) != 0)
      SendMessageA(Window(), WM_COMMAND, std::stoul(words[0]), 0);
    else
      running_ = replay::Press(Keys(words[0]));
  }
  static void Mouse(UINT message, const std::string& row, int keys) {
    const int y = std::stoi(row) * MainState.CharHeight + MainState.CharHeight / 2;
    platform_testing::Mouse(Window(), message, 2 * MainState.CharWidth, y, keys);
    replay::Pump();
  }
  static void UseMouse(const std::string& verb, Words words) {
    const int keys = words.back() == "shift" ? MK_SHIFT : 0;
    if (verb == "right-click") return Mouse(WM_RBUTTONDOWN, words[0], keys);
    Mouse(WM_LBUTTONDOWN, words[0], keys);
    if (verb == "drag") {
      Mouse(WM_MOUSEMOVE, words[1], keys);
      words[0] = words[1];
    }
    Mouse(WM_LBUTTONUP, words[0], keys);
    if (verb != "double-click") return;
    Mouse(WM_LBUTTONDBLCLK, words[0], keys);
    Mouse(WM_LBUTTONUP, words[0], keys);
  }
  static void Wheel(const Words& words) {
    const std::string how = words.size() > 1 ? words[1] : "";
    const int keys = how == "shift" ? MK_SHIFT : how == "ctrl" ? MK_CONTROL : 0;
    platform_testing::Wheel(Window(), std::stoi(words[0]) * WHEEL_DELTA, how == "sideways", keys);
  }
  static void MakePageIndex() {
    using namespace std::chrono_literals;
    for (int i = 0; i < 5000 && MainState.Pages.index->phase != PageIndexPhase::PG_DONE; ++i) {
      SendMessageA(Window(), PG_CONT, 0, 0);
      replay::Pump();
      std::this_thread::sleep_for(1ms);
    }
  }
  void Restart(const std::string& words) {
    Stop();
    for (const std::string& answer : answers_)
      platform_testing::AnswerNextFileDialog(answer);
    answers_.clear();
    Start(words.empty() ? setting_.words : Split(words));
    ended_ = false;
  }

  void Do(const std::string& verb, const std::string& rest) {
    const Words words = Split(rest);
    const auto number = [&words](std::size_t i) { return std::stoll(words.at(i)); };
    const std::map<std::string, std::function<void()>> verbs = {
        {"keys", [&] { running_ = replay::Press(Keys(rest)); }},
        {"dialog", [&] { Dialog(rest); }},
        {"command", [&] { SendMessageA(Window(), WM_COMMAND, static_cast<WPARAM>(number(0)), 0); }},
        {"choose", [&] { Choose(rest); }},
        {"click", [&] { UseMouse(verb, words); }},
        {"shift-click",
         [&] {
           UseMouse(verb, {words.at(0), "shift"});
         }},
        {"drag", [&] { UseMouse(verb, words); }},
        {"double-click", [&] { UseMouse(verb, words); }},
        {"right-click", [&] { UseMouse(verb, words); }},
        {"wheel", [&] { Wheel(words); }},
        {"thumb", [&] { platform_testing::DragThumb(Window(), SB_VERT, number(0)); }},
        {"thumb-sideways", [&] { platform_testing::DragThumb(Window(), SB_HORZ, number(0)); }},
        {"resize",
         [&] {
           std::tie(setting_.columns, setting_.rows) = ParseSize(rest);
           replay::SettleSize(setting_.columns, setting_.rows);
         }},
        {"drop", [&] { platform_testing::DropFiles(Window(), {fs::current_path() / rest}); }},
        {"answer", [&] { answers_.push_back(rest), platform_testing::AnswerNextFileDialog(rest); }},
        {"append",
         [&] { PutContent(words.at(0), Unescape(rest.substr(words[0].size() + 1)), std::ios::app); }},
        {"rewrite",
         [&] { PutContent(words.at(0), Unescape(rest.substr(words[0].size() + 1)), std::ios::trunc); }},
        {"remove", [&] { fs::remove(rest); }},
        {"index", [] { MakePageIndex(); }},
        {"restart", [&] { Restart(rest); }},
    };
    const auto found = verbs.find(verb);
    if (found == verbs.end()) Refuse("no such step: " + verb);
    found->second();
    if (running_) running_ = replay::Pump();
  }

  Setting setting_;
  Words answers_;  // to file dialogs, for a next start
  bool running_ = false, ended_ = false;
  std::size_t beeps_ = 0, boxes_ = 0, dialogs_ = 0;
};

Words LinesOf(const fs::path& path) {
  Words lines;
  std::istringstream stream(ContentOf(path));
  for (std::string line; std::getline(stream, line);)
    lines.push_back(line);
  return lines;
}

bool IsStep(const std::string& line) {
  return line.starts_with("> ");
}

// The session with what is seen now.
Words Played(const Words& lines) {
  const fs::path before = fs::current_path();
  const ScratchFolder folder;
  fs::current_path(folder.Path());
  const auto steps = std::ranges::find_if(lines, IsStep);
  Words played(lines.begin(), steps);
  {
    Player player(ReadSetting(played));
    for (auto line = steps; line != lines.end(); ++line) {
      if (line->starts_with("#")) {
        if (!played.back().starts_with("#")) played.emplace_back();
        played.push_back(*line);
      }
      if (!IsStep(*line)) continue;
      played.push_back(*line);
      for (std::string& seen : player.Play(line->substr(2))) {
        seen.erase(seen.find_last_not_of(' ') + 1);
        played.push_back(std::move(seen));
      }
    }
  }
  fs::current_path(before);
  return played;
}

class SessionTest : public testing::Test {
 public:
  explicit SessionTest(fs::path path) : path_(std::move(path)) {}
  void TestBody() override {
    const Words recorded = LinesOf(path_);
    const Words played = Played(recorded);
    for (std::size_t i = 0; i < std::max(recorded.size(), played.size()); ++i) {
      const std::string was = i < recorded.size() ? recorded[i] : "(end)";
      const std::string is = i < played.size() ? played[i] : "(end)";
      if (was == is) continue;
      std::size_t step = std::min(i, played.size() - 1);
      while (step > 0 && !IsStep(played[step]))
        --step;
      FAIL() << path_.string() << ':' << i + 1 << ": after \"" << played[step] << "\"\n  recorded " << was
             << "\n  now      " << is << "\ntools/sessions --write shows all differences in git";
    }
  }

 private:
  fs::path path_;
};

std::vector<fs::path> AllSessions() {
  std::vector<fs::path> paths;
  for (const auto& entry : fs::directory_iterator(kSource / "tests" / "sessions"))
    if (entry.path().extension() == ".session") paths.push_back(entry.path());
  std::ranges::sort(paths);
  return paths;
}

void Write(const fs::path& path) {
  std::string content;
  for (const std::string& line : Played(LinesOf(path)))
    content += line + "\n";
  PutContent(path, content, std::ios::trunc);
}

// Prints the size, and the words of the command line, a line each.
void Make(const std::string& session, const std::string& folder) {
  const Words lines = LinesOf(fs::absolute(session));
  fs::current_path(folder);
  const Setting setting = ReadSetting({lines.begin(), std::ranges::find_if(lines, IsStep)});
  std::cout << setting.columns << 'x' << setting.rows << '\n';
  for (const std::string& word : setting.words)
    std::cout << word << '\n';
}

}  // namespace

int main(int argc, char** argv) {
  setenv("LC_ALL", "C.UTF-8", 1);
  const Words words(argv + 1, argv + argc);
  if (words.size() == 3 && words[0] == "--make") {
    Make(words[1], words[2]);
    return 0;
  }
  testing::InitGoogleTest(&argc, argv);
  platform_testing::StartToolkit(argc, argv);
  if (!words.empty() && words[0] == "--write") {
    std::vector<fs::path> paths(words.begin() + 1, words.end());
    for (const fs::path& path : paths.empty() ? AllSessions() : paths)
      Write(fs::absolute(path));
    return 0;
  }
  for (const fs::path& path : AllSessions()) {
    testing::RegisterTest("Sessions", path.stem().c_str(), nullptr, nullptr, __FILE__, __LINE__,
                          [path]() -> testing::Test* { return new SessionTest(path); });
  }
  return RUN_ALL_TESTS();
}
