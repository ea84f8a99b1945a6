#include "platform/posix/profile_file.h"

#include <sys/stat.h>

#include <chrono>
#include <cstring>
#include <thread>

#include "platform/paths.h"
#include "platform/profile_batch.h"
#include "platform/win32.h"
#include "tests/scratch.h"

namespace {

std::string Text(const char* key, const std::string& file) {
  char buffer[200];
  const DWORD length = GetPrivateProfileStringA("S", key, "-", buffer, sizeof buffer, file.c_str());
  EXPECT_EQ(length, std::strlen(buffer));
  return buffer;
}

bool Put(const std::string& file, const char* section, const char* key, const char* value) {
  return WritePrivateProfileStringA(section, key, value, file.c_str()) != FALSE;
}

mode_t ModeOf(const std::string& path) {
  struct stat status {};
  EXPECT_EQ(stat(path.c_str(), &status), 0);
  return status.st_mode & 0777;
}

TEST(ProfileFile, ReadsNumbersAndCutsTextsToTheBuffer) {
  const ScratchFolder folder;
  const std::pair<const char*, INT> cases[] = {{"-5", -5},    {"+5", 5}, {"12ab", 12},      {"0x10", 0},
                                               {"\" 7\"", 7}, {"", 0},   {"4294967295", -1}};
  for (const auto& [value, number] : cases) {
    const std::string file = folder.Write("p.ini", std::string("[S]\nK=") + value + "\n");
    EXPECT_EQ(static_cast<INT>(GetPrivateProfileIntA("S", "K", 77, file.c_str())), number) << value;
    EXPECT_EQ(static_cast<INT>(GetPrivateProfileIntA("S", "L", -77, file.c_str())), -77);
  }
  const std::string file = folder.Write("p.ini", "[S]\nK=abcdef\n");
  char buffer[] = "#######";
  EXPECT_EQ(GetPrivateProfileStringA("S", "K", "", buffer, 4, file.c_str()), 3U);
  EXPECT_EQ(std::string(buffer, 8), std::string("abc\0###\0", 8));
}

TEST(ProfileFile, KeepsEveryByteThatIsNotItsOwn) {
  const ScratchFolder folder;
  const std::string head =
      "\xEF\xBB\xBF; mine!\r\n\r\n[OTHER program]\r\n  Path = C:\\x ; keep\r\nFORMAT=9\r\n[quorl]\t; c\r\n";
  const std::string middle = "LINELENGTH\t=\t127\r\nMine=caf\xC3\xA9\r\n";
  const std::string tail = "# TabLength=4\r\n\r\n; colors I like\r\n[Quorl Colors]\r\n";
  const std::string end = "TagText=1\r\nnot a key line\r\nlast=line";
  const std::string file =
      folder.Write("p.ini", head + "  format = 0  \r\n" + middle + tail + "TagBgnd=2\r\n" + end);
  EXPECT_TRUE(Put(file, "Quorl", "Format", "2"));
  EXPECT_TRUE(Put(file, "Quorl", "LineLength", "127"));
  EXPECT_TRUE(Put(file, "Quorl", "TabLength", "8"));
  EXPECT_TRUE(Put(file, "Quorl Colors", "TagBgnd", nullptr));
  EXPECT_TRUE(Put(file, "Titles", "Title1", "  Name"));
  EXPECT_TRUE(Put(file, "Print Setup", nullptr, nullptr));
  // What no line can hold.
  EXPECT_FALSE(Put(file, "Quorl", "K", "a\n[Quorl Setup]\nMasterProfile=1"));
  EXPECT_FALSE(Put(file, "S\nT", "K", "1"));
  for (const char* key : {"", "K\n", "K=", ";K", "[K]"})
    EXPECT_FALSE(Put(file, "Quorl", key, "1")) << key;
  EXPECT_EQ(ContentOf(file), head + "  format = 2  \r\n" + middle + "TabLength=8\r\n" + tail + end +
                                 "\r\n\r\n[Titles]\r\nTitle1=\"  Name\"\r\n");
}

TEST(ProfileFile, BareNameLiesInTheSettingsFolder) {
  const ScratchFolder folder;
  setenv("XDG_CONFIG_HOME", folder.Path("deep/config").c_str(), 1);
  EXPECT_TRUE(Put("QUORL.INI", "S", "K", nullptr));
  EXPECT_EQ(Text("K", "QUORL.INI"), "-");
  EXPECT_EQ(folder.Names(), "") << "nothing to save, nothing to create";
  EXPECT_TRUE(Put("QUORL.INI", "S", "K", "1"));
  EXPECT_EQ(ContentOf(folder.Path("deep/config/quorl/QUORL.INI")), "[S]\nK=1\n");
  EXPECT_EQ(ModeOf(folder.Path("deep/config/quorl")), 0700U);
  EXPECT_FALSE(Put(folder.Path("no/p.ini"), "S", "K", "1")) << "only the settings folder is created";
  char path[kPathBytes];
  setenv("XDG_CONFIG_HOME", "relative", 1);
  setenv("HOME", folder.Path("home").c_str(), 1);
  ASSERT_TRUE(SettingsPath("a", path, sizeof path));
  EXPECT_EQ(path, folder.Path("home/.config/quorl/a"));
}

TEST(ProfileFile, KeepsModeAndLinks) {
  const ScratchFolder folder;
  const std::string file = folder.Write("real/p.ini", "[S]\nK=1\n");
  ASSERT_EQ(chmod(file.c_str(), 0640), 0);
  std::filesystem::create_symlink("real/p.ini", folder.Path("one"));
  std::filesystem::create_symlink(folder.Path("one"), folder.Path("two"));
  std::filesystem::create_symlink("real/new.ini", folder.Path("dangling"));
  std::filesystem::create_symlink("circle", folder.Path("circle"));
  EXPECT_TRUE(Put(folder.Path("two"), "S", "K", "2"));
  EXPECT_EQ(ContentOf(file), "[S]\nK=2\n");
  EXPECT_EQ(ModeOf(file), 0640U);
  EXPECT_TRUE(Put(folder.Path("dangling"), "S", "K", "3"));
  EXPECT_EQ(ContentOf(folder.Path("real/new.ini")), "[S]\nK=3\n");
  for (const char* link : {"one", "two", "dangling"})
    EXPECT_TRUE(std::filesystem::is_symlink(folder.Path(link))) << link;
  EXPECT_FALSE(Put(folder.Path("circle"), "S", "K", "4"));
}

// As an ordinary user where the tests run as root, whom no mode bits of a folder stop.
TEST(ProfileFile, ReadOnlyFileAndFolder) {
  const ScratchFolder folder;
  const std::string content = "[S]\nK=1\n";
  const std::string locked = folder.Write("locked.ini", content);
  const std::string inside = folder.Write("shut/p.ini", content);
  ASSERT_EQ(chmod(locked.c_str(), 0444), 0);
  EXPECT_FALSE(FileMayBeWritten(locked.c_str())) << "even by root";
  EXPECT_FALSE(Put(locked, "S", "K", "2"));
  EXPECT_EQ(ContentOf(locked), content);
  ASSERT_EQ(chmod(folder.Path().c_str(), 0777) + chmod(inside.c_str(), 0666), 0);
  for (const bool open : {false, true}) {
    ASSERT_EQ(chmod(folder.Path("shut").c_str(), open ? 0777 : 0555), 0);
    const bool wasRoot = geteuid() == 0;
    ASSERT_TRUE(!wasRoot || seteuid(65534) == 0);
    EXPECT_EQ(FileMayBeWritten(inside.c_str()), open);
    EXPECT_EQ(Put(inside, "S", "K", "2"), open);
    EXPECT_EQ(Put(folder.Path("shut/new.ini"), "S", "K", "2"), open);
    ASSERT_TRUE(!wasRoot || seteuid(0) == 0);
    EXPECT_EQ(ContentOf(inside), open ? "[S]\nK=2\n" : content);
  }
}

TEST(ProfileFile, WhatIsNoProfileReadsEmptyAndStays) {
  const ScratchFolder folder;
  const std::string huge = folder.Write("huge.ini", "[S]\nK=1\n");
  ASSERT_EQ(truncate(huge.c_str(), 50'000'000), 0);
  const std::string wide = folder.Write("wide.ini", std::string("\xFF\xFE[\0S\0]\0\n\0K\0=\0001\0\n\0", 18));
  const std::string pipe = folder.Path("pipe.ini");
  ASSERT_EQ(mkfifo(pipe.c_str(), 0666), 0);
  for (const std::string& file : {huge, wide, pipe}) {
    EXPECT_EQ(Text("K", file), "-") << file;
    EXPECT_FALSE(Put(file, "S", "K", "2")) << file;
    bool asked = false;
    EXPECT_NE(SaveProfile(file.c_str(), [&asked] { asked = true; }), 0) << file;
    EXPECT_FALSE(asked) << file;
  }
  EXPECT_EQ(std::filesystem::file_size(huge), 50'000'000U);
  EXPECT_EQ(std::filesystem::file_size(wide), 18U);
  EXPECT_TRUE(std::filesystem::is_fifo(pipe));
}

TEST(ProfileFile, SeesEveryChangeAtOnceAndReadsTheDiskNoMoreThanItMust) {
  const ScratchFolder folder;
  std::string file;
  for (int i = 0; i < 300; ++i) {
    const std::string value = std::to_string(100 + i);
    file = folder.Write("p.ini", "[S]\nK=" + value + "\n");
    ASSERT_EQ(Text("K", file), value);
  }
  // A file that is younger than a tick of the clock is read again each time.
  std::this_thread::sleep_for(std::chrono::milliseconds(120));
  const std::int64_t before = ProfileReadsFromDisk();
  for (int i = 0; i < 30; ++i) {
    EXPECT_EQ(Text("K", file), "399");
    EXPECT_EQ(Text("K", folder.Path("absent.ini")), "-");
  }
  EXPECT_EQ(ProfileReadsFromDisk(), before + 1);
}

TEST(ProfileFile, ASaveOfManyKeysIsMadeAtItsEndWithAllOrNone) {
  const ScratchFolder folder;
  const std::string content = "; by hand\n[S]\nK=1\nL=1\nM=9\n";
  const std::string file = folder.Write("p.ini", content);
  const auto save = [&file](const char* lastValue) {
    return SaveProfile(file.c_str(), [&file, lastValue] {
      EXPECT_TRUE(Put(file, "S", "K", "2"));
      const FileError inner = SaveProfile(file.c_str(), [&file] { Put(file, "S", "L", nullptr); });
      EXPECT_EQ(inner, 0);
      EXPECT_EQ(Text("K", file), "2");
      EXPECT_EQ(Text("L", file), "-");
      Put(file, "S", "N", lastValue);
    });
  };
  EXPECT_EQ(FileErrorText(save("no\nline")), "Invalid argument");
  EXPECT_EQ(ContentOf(file), content);
  EXPECT_EQ(save("3"), 0);
  EXPECT_EQ(ContentOf(file), "; by hand\n[S]\nK=2\nM=9\nN=3\n");
}

}  // namespace
