// What a user's disk and window can do to a viewer: odd files, files that change while they are viewed, and
// windows of hardly any size. Nothing here may crash, hang, or show a wrong byte.
#include <fcntl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <filesystem>
#include <functional>

#include "tests/window/viewer.h"
#include "window/navigation.h"

namespace {

constexpr int kAllKeys[] = {VK_DOWN,  VK_UP,   VK_NEXT, VK_PRIOR, VK_END,  VK_UP,   VK_DOWN,
                            VK_PRIOR, VK_HOME, VK_NEXT, VK_END,   VK_NEXT, VK_HOME, VK_RIGHT};

const std::vector<std::vector<std::string>> kVariants = {{}, {"-W"}, {"-H"}, {"-R"}, {"-C"}, {"-A", "-W"}};

TEST(Faults, SmallAndOddFiles) {
  std::vector<std::string> contents = {"",
                                       "\x1A",
                                       "\n",
                                       "a",
                                       "\r\n",
                                       "a\x1A",
                                       "\f",
                                       "\f\f\n\f\n",
                                       "\t\t",
                                       "\x1A\x1A\n\x1A",
                                       std::string(1, '\0')};
  for (const std::size_t size : {65534U, 65535U, 65536U, 65537U})
    contents.push_back(std::string(size, 'z'));
  contents.push_back(std::string(70000, '\0'));
  contents.push_back(std::string(70000, '\n'));
  contents.push_back(std::string(70000, '\f'));
  for (const std::string& content : contents) {
    const ScratchFile file(content);
    for (std::vector<std::string> words : kVariants) {
      words.push_back(file.Path());
      Viewer viewer(words);
      EXPECT_FALSE(Viewer::ErrorPage());
      for (const int key : kAllKeys) {
        viewer.Key(key);
        ASSERT_FALSE(Viewer::ErrorPage()) << content.size() << " bytes, key " << key << " " << words[0];
      }
      platform_testing::DragThumb(viewer.Window(), SB_VERT, MainState.File.Flen / 2);
      viewer.Pump();
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
    for (std::vector<std::string> words : kVariants) {
      words.push_back(path);
      Viewer viewer(words);
      platform_testing::DragThumb(viewer.Window(), SB_VERT, MainState.File.Flen / 2);
      viewer.Pump();
      const FilePos middle = Viewer::Top();
      if (path == line.Path()) {
        viewer.Key(VK_NEXT, 0, 12);
        EXPECT_GT(Viewer::Top(), middle);
        viewer.Key(VK_PRIOR, 0, 12);
        EXPECT_EQ(Viewer::Top(), middle) << words[0];
      }
      for (const int key : kAllKeys) {
        viewer.Key(key);
        ASSERT_FALSE(Viewer::ErrorPage()) << path << ", key " << key << " " << words[0];
      }
    }
  }
}

TEST(Faults, APathThatIsNoFileIsAskedForAndNeverHangs) {
  const std::filesystem::path folder =
      std::filesystem::temp_directory_path() / ("quorl faults " + std::to_string(std::random_device()()));
  std::filesystem::create_directory(folder);
  const std::string pipe = (folder / "pipe").string();
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  const std::string socketPath = (folder / "s").string();
  const int server = socket(AF_UNIX, SOCK_STREAM, 0);
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  socketPath.copy(address.sun_path, sizeof address.sun_path - 1);
  ASSERT_EQ(bind(server, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
  for (const std::string& path :
       {folder.string(), folder.string() + "/", pipe, socketPath, std::string("/dev/null"),
        std::string("/dev/zero"), std::string("/no/such")}) {
    Viewer viewer({path});
    EXPECT_FALSE(viewer.Running()) << path;
    EXPECT_EQ(platform_testing::FileDialogs().size(), 1U) << path;
  }
  // The road that tests nothing shows the error page.
  for (const std::string& path : {folder.string(), pipe, std::string("/dev/zero")}) {
    Viewer viewer({"-D"});
    viewer.Send(WM_FILE_OPEN, 0, reinterpret_cast<LPARAM>(path.c_str()));
    EXPECT_TRUE(Viewer::ErrorPage()) << path;
  }
  close(server);
  std::filesystem::remove_all(folder);
}

// Each change happens in the middle of a file; the user then presses every key, the file comes back, and
// Home shows its first line.
TEST(Faults, FilesThatChangeWhileTheyAreViewed) {
  const std::string content = NumberedLines(3000);
  struct Case {
    const char* what;
    std::function<void(ScratchFile&)> change;
    bool readable;
  };
  const Case cases[] = {
      {"removed", [](ScratchFile& file) { file.Remove(); }, false},
      {"truncated", [](ScratchFile& file) { file.Write("line 0\nshort\n"); }, true},
      {"emptied", [](ScratchFile& file) { file.Write(""); }, true},
      {"grown", [](ScratchFile& file) { file.Append(NumberedLines(500)); }, true},
      {"replaced",
       [](ScratchFile& file) {
         file.Remove();
         file.Write(std::string(4000, '\n'));
       },
       true},
      {"a directory in its place",
       [](ScratchFile& file) {
         file.Remove();
         std::filesystem::create_directory(file.Path());
       },
       false},
  };
  for (const Case& c : cases) {
    for (std::vector<std::string> words : kVariants) {
      ScratchFile file(content);
      words.push_back(file.Path());
      Viewer viewer(words);
      viewer.MoveTo(30000);
      c.change(file);
      for (const int key : kAllKeys) {
        viewer.Key(key);
        if (c.readable) {
          ASSERT_FALSE(Viewer::ErrorPage()) << c.what << ", key " << key;
        }
      }
      viewer.Send(WM_VIEW_LOAD, 0, kNoPosition);
      EXPECT_EQ(Viewer::ErrorPage(), !c.readable) << c.what;
      for (const int key : kAllKeys)
        viewer.Key(key);
      if (std::filesystem::is_directory(file.Path())) std::filesystem::remove(file.Path());
      file.Write(content);
      viewer.Key(VK_END);
      viewer.Key(VK_HOME);
      EXPECT_FALSE(Viewer::ErrorPage()) << c.what;
      EXPECT_EQ(Viewer::Top(), 0) << c.what;
    }
  }
}

TEST(Faults, AFileMadeUnreadable) {
  constexpr uid_t kNobody = 65534;
  const ScratchFile file(NumberedLines(3000));
  Viewer viewer({file.Path()});
  const uid_t user = geteuid();
  if (user == 0) {
    ASSERT_EQ(seteuid(kNobody), 0) << "root may read every file";
  }
  ScratchFile twin("");  // belongs to whoever the test is now
  twin.Write(NumberedLines(3000));
  viewer.Send(WM_FILE_OPEN, 0, reinterpret_cast<LPARAM>(twin.Path().c_str()));
  viewer.Key(VK_NEXT);
  EXPECT_FALSE(Viewer::ErrorPage());
  std::filesystem::permissions(twin.Path(), std::filesystem::perms::none);
  viewer.Key(VK_END);
  EXPECT_TRUE(Viewer::ErrorPage());
  std::filesystem::permissions(twin.Path(), std::filesystem::perms::owner_read);
  viewer.Key(VK_END);
  EXPECT_FALSE(Viewer::ErrorPage());
  if (user == 0) {
    ASSERT_EQ(seteuid(user), 0);
  }
}

TEST(Faults, TheErrorPageGoesAndTheViewIsWhereItWas) {
  ScratchFile file(NumberedLines(3000));
  Viewer viewer({file.Path()});
  viewer.MoveTo(30000);
  const FilePos top = Viewer::Top();
  file.Remove();
  viewer.Send(WM_VIEW_LOAD, 0, kNoPosition);
  ASSERT_TRUE(Viewer::ErrorPage());
  EXPECT_EQ(Viewer::Text(3), "* Status=100");
  // Inside the page nothing is loaded; one line down and up is a step of one row.
  viewer.Key(VK_DOWN, 0, 2);
  viewer.Key(VK_UP);
  EXPECT_EQ(Viewer::Text(2), "* Status=100");
  viewer.Send(WM_VIEW_LOAD, 0, kNoPosition);
  ASSERT_TRUE(Viewer::ErrorPage()) << "still gone";
  file.Write(NumberedLines(3000));
  viewer.Key(VK_PRIOR);
  EXPECT_FALSE(Viewer::ErrorPage());
  EXPECT_EQ(Viewer::Top(), top);
}

TEST(Faults, AWindowTooNarrowForAHexRow) {
  const ScratchFile file(std::string(5000, 'x'));
  Viewer viewer({"-H", "-W", file.Path()});
  viewer.MoveTo(1600);
  viewer.Resize(21, 10);
  ASSERT_TRUE(Viewer::ErrorPage());
  EXPECT_EQ(Viewer::Text(3), "* Status=110");
  for (const int key : kAllKeys)
    viewer.Key(key);
  viewer.Resize(22, 10);
  EXPECT_FALSE(Viewer::ErrorPage());
  viewer.Resize(21, 10);
  viewer.Resize(80, 10);
  EXPECT_FALSE(Viewer::ErrorPage());
}

TEST(Faults, WindowsOfHardlyAnySize) {
  const ScratchFile file(NumberedLines(3000));
  for (std::vector<std::string> words : kVariants) {
    if (!words.empty() && words[0] == "-H") continue;  // has a case of its own
    words.push_back(file.Path());
    Viewer viewer(words);
    const std::pair<int, int> sizes[] = {{1, 1}, {MainState.CharWidth - 1, 500}, {600, 1}, {1, 700}, {3, 40}};
    for (const auto& [width, height] : sizes) {
      viewer.ResizePixels(width, height);
      for (const int key : kAllKeys) {
        viewer.Key(key);
        ASSERT_FALSE(Viewer::ErrorPage()) << width << " x " << height << ", key " << key;
      }
    }
    viewer.Resize(80, 24);
    viewer.Key(VK_HOME);
    EXPECT_EQ(Viewer::Top(), 0);
  }
}

TEST(Faults, TinyLettersOnATallWindow) {
  const ScratchFile file(NumberedLines(9000));
  Viewer viewer({file.Path()});
  MainState.ZoomLevel = -9;
  viewer.Send(WM_VIEW_FONT);
  viewer.ResizePixels(400, 2400);
  EXPECT_GT(MainState.LinesPerScreen, kViewLines);
  for (const int key : kAllKeys) {
    viewer.Key(key);
    ASSERT_FALSE(Viewer::ErrorPage());
  }
}

TEST(Faults, TitlesHigherThanTheWindow) {
  const ScratchFile file(NumberedLines(300));
  Viewer viewer({file.Path()});
  ASSERT_EQ(LockTitles(MainState.Titles, true), 1);
  MainState.Titles.Lines.Alast = 15;
  viewer.Resize(80, 5);
  EXPECT_EQ(MainState.LinesPerScreen, 1);
  for (const int key : kAllKeys)
    viewer.Key(key);
  EXPECT_FALSE(Viewer::ErrorPage());
}

}  // namespace
