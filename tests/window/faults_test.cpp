// What a user's disk and window can do to a viewer: odd files, files that change while they are viewed, and
// windows of hardly any size. Nothing here may crash, hang, or show a wrong byte.
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>

#include <functional>

#include "tests/window/viewer.h"
#include "window/navigation.h"

namespace {

// Where keys lead: no error page anywhere, unless `readable` is false.
void PressAll(Viewer& viewer, const std::string& what, bool readable = true) {
  for (const int key : {VK_DOWN, VK_UP, VK_NEXT, VK_PRIOR, VK_END, VK_UP, VK_DOWN, VK_PRIOR, VK_HOME, VK_NEXT,
                        VK_END, VK_NEXT, VK_HOME, VK_RIGHT}) {
    viewer.Key(key);
    if (readable) ASSERT_FALSE(Viewer::ErrorPage()) << what << ", key " << key;
  }
}

void DragToTheMiddle(Viewer& viewer) {
  platform_testing::DragThumb(viewer.Window(), SB_VERT, MainState.File.Flen.Offset() / 2);
  viewer.Pump();
}

void Open(Viewer& viewer, const std::string& path) {
  viewer.Send(WM_FILE_OPEN, 0, reinterpret_cast<LPARAM>(path.c_str()));
}

// Each format, and what changes how it cuts lines.
std::vector<std::vector<std::string>> Variants(const std::string& path) {
  return {{path}, {"-W", path}, {"-H", path}, {"-R", path}, {"-C", path}, {"-A", "-W", path}};
}

TEST(Faults, SmallAndOddFiles) {
  std::vector<std::string> contents = {
      "", "\x1A", "\n", "a", "\r\n", "a\x1A", "\t\t", "\f\f\n\f\n", "\f", "\x1A\n\x1A", std::string(1, '\0')};
  for (const std::size_t size : {65534U, 65535U, 65536U, 65537U})
    contents.emplace_back(size, 'z');
  for (const char byte : {'\0', '\n', '\f'})
    contents.emplace_back(70000, byte);
  for (const std::string& content : contents) {
    const ScratchFile file(content);
    for (const auto& words : Variants(file.Path())) {
      Viewer viewer(words);
      EXPECT_FALSE(Viewer::ErrorPage());
      PressAll(viewer, std::to_string(content.size()) + " bytes " + words[0]);
      DragToTheMiddle(viewer);
      EXPECT_FALSE(Viewer::ErrorPage());
      EXPECT_TRUE(platform_testing::Boxes().empty());
    }
  }
}

// A line of 300 MB, and bytes of any value: each key leads somewhere, and pages down and up come back.
TEST(Faults, ALineOfAnyLengthAndBytesOfAnyValue) {
  std::mt19937 random(8);
  std::string bytes(400000, ' ');
  for (char& byte : bytes)
    byte = static_cast<char>(random());
  const ScratchFile noise(bytes);
  const ScratchFile line("start");
  std::filesystem::resize_file(line.Path(), 300000000);
  for (const std::string& path : {noise.Path(), line.Path()}) {
    for (const auto& words : Variants(path)) {
      Viewer viewer(words);
      DragToTheMiddle(viewer);
      const FilePos middle = Viewer::Top();
      if (path == line.Path()) {
        viewer.Key(VK_NEXT, 0, 12);
        EXPECT_GT(Viewer::Top(), middle);
        viewer.Key(VK_PRIOR, 0, 12);
        EXPECT_EQ(Viewer::Top(), middle) << words[0];
      }
      PressAll(viewer, words[0]);
    }
  }
}

// Such a path is told and asked for at start-up; in a running viewer it is told, and the file at hand stays.
TEST(Faults, APathThatIsNoFileNeverHangs) {
  const ScratchFile base(""), own("text\n");
  const std::string fifo = base.Path() + ".fifo", loop = base.Path() + ".loop",
                    local = base.Path() + ".socket";
  ASSERT_EQ(mkfifo(fifo.c_str(), 0600), 0);
  std::filesystem::create_symlink(loop, loop);
  sockaddr_un address{AF_UNIX, {}};
  local.copy(address.sun_path, sizeof address.sun_path - 1);
  const int server = socket(AF_UNIX, SOCK_STREAM, 0);
  ASSERT_EQ(bind(server, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
  for (const std::string& path : {std::string("/tmp"), std::string("/tmp/"), std::string("/dev/null"),
                                  std::string("/dev/zero"), std::string("/no/such"), fifo, loop, local}) {
    {
      Viewer viewer({path});
      EXPECT_FALSE(viewer.Running()) << path;
      EXPECT_EQ(platform_testing::FileDialogs().size(), 1U) << path;
      EXPECT_EQ(platform_testing::Boxes().size(), 1U) << path;
    }
    Viewer viewer({own.Path()});
    Open(viewer, path);
    ASSERT_EQ(platform_testing::Boxes().size(), 1U) << path;
    EXPECT_EQ(platform_testing::Boxes()[0].text.find("Cannot open " + path + ":\n"), 0U);
    EXPECT_EQ(MainState.File.Fname, own.Path());
  }
  close(server);
  for (const std::string& path : {fifo, loop, local})
    std::filesystem::remove(path);
}

// Each change happens in the middle of a file; the user then presses every key, the file comes back, and
// Home shows its first line.
TEST(Faults, FilesThatChangeWhileTheyAreViewed) {
  const std::string content = NumberedLines(3000);
  struct Case {
    const char* what;
    std::function<void(ScratchFile&)> change;
    bool readable;
    const char* reason = "";
  };
  const Case cases[] = {
      {"removed", [](ScratchFile& file) { file.Remove(); }, false, "No such file or directory"},
      {"truncated", [](ScratchFile& file) { file.Write("line 0\nshort\n"); }, true},
      {"emptied", [](ScratchFile& file) { file.Write(""); }, true},
      {"grown", [](ScratchFile& file) { file.Append(NumberedLines(500)); }, true},
      {"replaced", [](ScratchFile& file) { file.Remove(), file.Write(std::string(4000, '\n')); }, true},
      {"a directory in its place",
       [](ScratchFile& file) { file.Remove(), std::filesystem::create_directory(file.Path()); }, false,
       "Is a directory"},
  };
  for (const Case& c : cases) {
    ScratchFile file(content);
    for (const auto& words : Variants(file.Path())) {
      file.Write(content);
      Viewer viewer(words);
      viewer.MoveTo(30000);
      c.change(file);
      PressAll(viewer, c.what);
      const std::string shown = Viewer::Text(3);
      viewer.Send(WM_VIEW_LOAD, 0, kNoPosition.Offset());
      // The lines of a file that cannot be read any more stay, and the window says why.
      const std::string name = std::filesystem::path(file.Path()).filename();
      EXPECT_EQ(MainState.Notice, c.readable ? "" : name + ": " + c.reason) << c.what;
      if (!c.readable) EXPECT_EQ(Viewer::Text(3), shown);
      PressAll(viewer, c.what);
      if (std::filesystem::is_directory(file.Path())) std::filesystem::remove(file.Path());
      file.Write(content);
      viewer.Key(VK_END);
      viewer.Key(VK_HOME);
      EXPECT_EQ(MainState.Notice, "") << c.what;
      EXPECT_EQ(Viewer::Top(), FilePos::At(0)) << c.what;
    }
  }
}

TEST(Faults, AFileMadeUnreadable) {
  constexpr uid_t kNobody = 65534;
  const ScratchFile file(NumberedLines(3000));
  Viewer viewer({file.Path()});
  const uid_t user = geteuid();
  if (user == 0) ASSERT_EQ(seteuid(kNobody), 0) << "root may read every file";
  ScratchFile twin("");  // belongs to whoever the test is now
  twin.Write(NumberedLines(3000));
  Open(viewer, twin.Path());
  viewer.Key(VK_NEXT);
  EXPECT_FALSE(Viewer::ErrorPage());
  std::filesystem::permissions(twin.Path(), std::filesystem::perms::none);
  const FilePos top = Viewer::Top();
  viewer.Key(VK_END);
  EXPECT_EQ(Viewer::Top(), top);
  EXPECT_NE(MainState.Notice.find("Permission denied"), std::string::npos);
  std::filesystem::permissions(twin.Path(), std::filesystem::perms::owner_read);
  viewer.Key(VK_END);
  EXPECT_GT(Viewer::Top(), top);
  EXPECT_EQ(MainState.Notice, "");
  if (user == 0) ASSERT_EQ(seteuid(user), 0);
}

TEST(Faults, AWindowTooNarrowForAHexRow) {
  const ScratchFile file(std::string(5000, 'x'));
  Viewer viewer({"-H", "-W", file.Path()});
  viewer.MoveTo(1600);
  viewer.Resize(21, 10);
  ASSERT_TRUE(Viewer::ErrorPage());
  EXPECT_EQ(Viewer::Text(0), "Too narrow for");
  viewer.Key(VK_NEXT);
  EXPECT_EQ(Viewer::Text(0), "Too narrow for") << "what fits the screen stays on it";
  PressAll(viewer, "narrow", false);
  viewer.Resize(22, 10);
  EXPECT_FALSE(Viewer::ErrorPage());
}

TEST(Faults, WindowsOfHardlyAnySizeAndTallOnes) {
  const ScratchFile file(NumberedLines(3000));
  for (const auto& words : Variants(file.Path())) {
    if (words[0] == "-H") continue;  // has a case of its own
    Viewer viewer(words);
    const std::pair<int, int> sizes[] = {{1, 1}, {MainState.CharWidth - 1, 500}, {600, 1}, {3, 40}};
    for (const auto& [width, height] : sizes) {
      viewer.ResizePixels(width, height);
      PressAll(viewer, std::to_string(width) + " x " + std::to_string(height));
    }
  }
  Viewer viewer({file.Path()});
  MainState.ZoomLevel = -9;
  viewer.Send(WM_VIEW_FONT);
  viewer.ResizePixels(400, 2400);
  EXPECT_GT(MainState.LinesPerScreen, kViewLines);
  PressAll(viewer, "tiny letters");
}

TEST(Faults, TitlesHigherThanTheWindow) {
  const ScratchFile file(NumberedLines(300));
  Viewer viewer({file.Path()});
  ASSERT_EQ(LockTitles(MainState.Titles, true), 1);
  MainState.Titles.Lines.Alast = 15;
  viewer.Resize(80, 5);
  EXPECT_EQ(MainState.LinesPerScreen, 1);
  PressAll(viewer, "titles");
}

}  // namespace
