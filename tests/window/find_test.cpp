// The search commands and their dialogs, in the running program, as a user drives them.
#include <chrono>
#include <thread>

#include "resources/command_ids.h"
#include "resources/dialogs/find_hex_dialog.h"
#include "resources/dialogs/find_text_dialog.h"
#include "resources/menu.h"
#include "tests/window/dialog_steps.h"
#include "tests/window/viewer.h"
#include "window/reading/lit_hits.h"

namespace {

using platform_testing::Beeps;
using platform_testing::Boxes;
using platform_testing::ControlState;
using platform_testing::StateOfControl;
namespace text_ids = find_text_dialog;
namespace hex_ids = find_hex_dialog;

using namespace dialog_steps;

class Find : public testing::Test {
 protected:
  // Lines of 10 bytes: "line 0000\n" and so on.
  static std::string Lines(int count) {
    std::string text;
    char line[32];
    for (int i = 0; i < count; ++i) {
      std::snprintf(line, sizeof line, "line %04d\n", i);
      text += line;
    }
    return text;
  }
  static void Open(Viewer& viewer, UINT id, std::vector<DialogStep> steps) {
    platform_testing::ForgetRecords();
    platform_testing::ScriptNextDialog(std::move(steps));
    viewer.Key(VK_F3, id == IDM_FIND_TEXT ? MK_SHIFT : MK_CONTROL);
  }
  static void FindText(Viewer& viewer, const std::string& text) {
    Open(viewer, IDM_FIND_TEXT, {Type(text), Press(kEnter)});
  }
  static std::pair<FilePos, FilePos> Selection() { return {MainState.SelStart, MainState.SelEnd}; }
  static std::string Key() {
    const SearchState& search = MainState.Search;
    return {reinterpret_cast<const char*>(search.SearchKey), static_cast<std::size_t>(search.SearchKeyLen)};
  }
  static bool NextIsEnabled(const Viewer& viewer) {
    for (const auto& item : platform_testing::OpenMenu(viewer.Window(), kEditMenu)) {
      if (item.id == IDM_FIND_NEXT) return item.enabled;
    }
    return false;
  }

  static void ExpectRefusal(const std::string& message) {
    ASSERT_EQ(Boxes().size(), 1U) << message;
    EXPECT_EQ(Boxes()[0].text, message);
    EXPECT_EQ(Boxes()[0].caption, "Bad Options");
    EXPECT_EQ(Boxes()[0].style, UINT{MB_ICONHAND});
    EXPECT_EQ(Beeps(), (std::vector<UINT>{16, 64}));
  }
};

TEST_F(Find, TellsAndLightsWhatItFinds) {
  const ScratchFile file("one fox, two foxes\nnone\n" + Lines(200) + std::string(400, '.') + "FOX\n");
  Viewer viewer({file.Path()}, "[Quorl Reading]\nStatusLine=1\nLightHits=1\n");
  EXPECT_EQ(MainState.Notice, "");
  FindText(viewer, "fox");
  EXPECT_EQ(MainState.Notice, "Hit 1");
  for (const char* const told : {"Hit 2", "Hit 3", "Not found below; Find Next goes on at the top",
                                 "Search wrapped to the top", "Hit 2"}) {
    viewer.Key(VK_F3);
    EXPECT_EQ(MainState.Notice, told);
    // The third one stands behind the right edge, and behind where lines end at first.
    EXPECT_EQ(MainState.HorzOffset > 0, std::string(told) == "Hit 3" || told[0] == 'N') << told;
  }
  for (int i = 0; i < 1000 && LitIn(0).empty(); ++i) {
    viewer.Send(WM_TIMER, kLitHitsTimer);
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
  const auto spans = LitIn(0);
  ASSERT_EQ(spans.size(), 2U);
  EXPECT_EQ(spans[0], (LitSpan{0, 4, 7, false}));
  EXPECT_EQ(spans[1], (LitSpan{0, 13, 16, true}));
  // A move has nothing to say.
  viewer.Key(VK_DOWN);
  EXPECT_EQ(MainState.Notice, "");
  FindText(viewer, "cat");
  EXPECT_EQ(MainState.Notice, "Not found");
}

TEST_F(Find, RefusesTextsThatCanBeNoKey) {
  const ScratchFile file("text\n");
  Viewer viewer({file.Path()});
  ControlState key;
  for (const auto& [text, message] :
       {std::pair{"", "Search text length must be a number between 1 and 4096!"},
        {"\xD0\x96", "Invalid character \"\xD0\x96\" in Search text."}}) {
    Open(viewer, IDM_FIND_TEXT, {Type(text), Click(IDOK), Look(text_ids::kKey, key)});
    EXPECT_TRUE(key.focused) << text;
    ExpectRefusal(message);
    EXPECT_EQ(MainState.Search.SearchKeyLen, 0);
  }
  // Nothing that is typed is cut.
  Open(viewer, IDM_FIND_TEXT, {Type(std::string(4097, 'x')), Click(IDOK), Click(IDCANCEL)});
  ExpectRefusal("Search text length must be a number between 1 and 4096!");
  Open(viewer, IDM_FIND_TEXT, {Type("dc8e5a5e-4b9b-4d55-9d3c-6a3a6a1b2c3d"), Click(IDOK)});
  EXPECT_EQ(Key(), "dc8e5a5e-4b9b-4d55-9d3c-6a3a6a1b2c3d");
  Open(viewer, IDM_FIND_HEX, {Type("41"), Click(IDOK)});
  ControlState cased;
  Open(viewer, IDM_FIND_TEXT, {Look(text_ids::kCaseSensitive, cased)});
  EXPECT_EQ(cased.checked, BST_UNCHECKED) << "the other dialog does not tick it";
}

TEST_F(Find, HistoryMovesToTheFrontAndLastsToTheNextRun) {
  const ScratchFile file("text\n");
  ControlState key;
  const DialogStep look = Look(text_ids::kKey, key);
  {
    Viewer viewer({file.Path()});
    for (const char* text : {"one", "two", "three"})
      FindText(viewer, text);
    Open(viewer, IDM_FIND_TEXT, {Choose(text_ids::kKey, 2), Click(IDOK)});
    EXPECT_EQ(Key(), "one");
    EXPECT_LT(MainState.RecentHexCount, 0) << "a list is read when its dialog opens first";
  }
  const std::string profile = Viewer::Profile();
  for (const bool wanted : {true, false}) {
    Viewer viewer({file.Path()}, wanted ? profile : "[Quorl Setup]\nMruSearch=0\n" + profile);
    Open(viewer, IDM_FIND_TEXT, {look, Press(kEnter)});
    EXPECT_EQ(key.rows,
              wanted ? std::vector<std::string>({"one", "three", "two"}) : std::vector<std::string>());
    if (wanted) EXPECT_EQ(Key(), "one") << "the first entry is there to begin with";
  }
}

TEST_F(Find, HexIsLive) {
  const ScratchFile file(Lines(100) + "ABC");
  Viewer viewer({file.Path()});
  FindText(viewer, "line");
  EXPECT_TRUE(NextIsEnabled(viewer));
  Open(viewer, IDM_FIND_HEX, {Click(IDCANCEL)});
  EXPECT_FALSE(NextIsEnabled(viewer)) << "without a history the key is empty";
  std::vector<std::string> shown;
  const auto look = [&shown](HWND dialog) {
    shown.push_back(StateOfControl(dialog, hex_ids::kText).text + '|' +
                    StateOfControl(dialog, hex_ids::kError).text + '|' +
                    StateOfControl(dialog, hex_ids::kKey).selected);
  };
  const std::string refused = "AB|Invalid hex digit \"g\"!|g";
  Open(viewer, IDM_FIND_HEX,
       {Type("41 4"), look, Type("2"), look, Type("g"), look, Click(IDOK), look, Type("4"), look,
        Press(kEnter)});
  EXPECT_EQ(shown, (std::vector<std::string>{"A@| |", "AB| |", refused, refused, "AB@| |"}));
  EXPECT_EQ(Beeps(), (std::vector<UINT>{64, 64, 48}));
  EXPECT_TRUE(Boxes().empty());
  Open(viewer, IDM_FIND_HEX, {Type("414243"), Press(kEnter)});
  EXPECT_EQ(Selection(), std::pair(FilePos::At(1000), FilePos::At(1003)));
  // An empty text: the live check lets it pass, Find does not.
  Open(viewer, IDM_FIND_HEX, {Type("4"), Press(VK_BACK), look, Click(IDOK)});
  EXPECT_EQ(shown.back(), "| |");
  ExpectRefusal("Number of hex digits must be between 1 and 12288!");
  // A chosen entry is shown at once; Cancel leaves the key that it was.
  Open(viewer, IDM_FIND_HEX, {Choose(hex_ids::kKey, 1), look, Click(IDCANCEL)});
  EXPECT_EQ(shown.back(), "AB@| |");
  EXPECT_EQ(Key(), "AB@");
}

// What a search may not change when the user ends it.
struct Before {
  FilePos start = MainState.SelStart, end = MainState.SelEnd, next = MainState.Search.SearchNext;
  FilePos top = Viewer::Top();
  std::int32_t tags = MainState.Tags.count;
  std::string caption = platform_testing::Caption(MainState.MainWindow);
  bool operator==(const Before&) const = default;
};

TEST_F(Find, EscAndCloseEndALongSearch) {
  const ScratchFile file(Lines(300));
  std::filesystem::resize_file(file.Path(), std::uintmax_t{64} << 30);
  for (const UINT command : {IDM_FIND_NEXT, IDM_FIND_MARK_ALL}) {
    Viewer viewer({file.Path()});
    FindText(viewer, "0250");
    viewer.Key(VK_F11);
    ASSERT_EQ(MainState.Tags.count, 1);
    MainState.Search.SearchKey[0] = '?';  // stands nowhere
    const Before before;
    RepaintWindow();
    // Moves asked for meanwhile go with the search that they waited for.
    platform_testing::PressKey(viewer.Window(), VK_END, 0);
    platform_testing::PressKey(viewer.Window(), VK_ESCAPE, 0);
    viewer.Command(command);
    EXPECT_TRUE(Before() == before) << command;
    EXPECT_FALSE(platform_testing::WaitCursorShown(viewer.Window()));
    EXPECT_FALSE(IsIconic(viewer.Window())) << "the search has used the key up";
    EXPECT_TRUE(Beeps().empty());
    PostMessageA(viewer.Window(), WM_CLOSE, 0, 0);
    SendMessageA(viewer.Window(), WM_COMMAND, command, 0);
    EXPECT_TRUE(Before() == before) << command;
    EXPECT_FALSE(viewer.Pump()) << "the window closes then";
  }
}

}  // namespace
