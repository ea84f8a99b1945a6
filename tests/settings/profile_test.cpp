#include "settings/profile.h"

#include <sys/stat.h>

#include "platform/paths.h"
#include "tests/scratch.h"

namespace {

TEST(LocateProfile, TakesTheFirstThatCounts) {
  const char* const kNone = nullptr;
  const char* const kMaster = "[quorl setup]\nMASTERPROFILE = 1\n";
  const char* const kPlain = "[Quorl Setup]\nMasterProfile=2\n";
  struct Case {
    const char* what;
    const char *beside, *own;  // contents of the file beside the program and of the user's own
    mode_t besideMode, ownMode;
    const char* found;
    int result;
  };
  const Case cases[] = {
      {"no file anywhere", kNone, kNone, 0644, 0644, "QUORL.INI", 0},
      {"the user's own alone", kNone, kPlain, 0644, 0644, "quorl/QUORL.INI", 0},
      {"the user's own wins", kPlain, kPlain, 0644, 0644, "quorl/QUORL.INI", 0},
      {"but not over a master", kMaster, kPlain, 0644, 0644, "program/QUORL.INI", 0},
      {"even one that is read-only", kMaster, kPlain, 0444, 0644, "program/QUORL.INI", -1},
      {"a master in the own one means nothing", kPlain, kMaster, 0444, 0644, "quorl/QUORL.INI", 0},
  };
  for (const Case& c : cases) {
    const ScratchFolder folder;
    if (c.beside != nullptr) chmod(folder.Write("program/QUORL.INI", c.beside).c_str(), c.besideMode);
    if (c.own != nullptr) chmod(folder.Write("quorl/QUORL.INI", c.own).c_str(), c.ownMode);
    // A file in the current directory does not steer the program.
    folder.Write("here/QUORL.INI", kMaster);
    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::current_path(folder.Path("here"));
    char path[kPathBytes];
    std::snprintf(path, sizeof path, "%s", folder.Path("program/QUORL.INI").c_str());
    EXPECT_EQ(LocateProfile(path, sizeof path), c.result) << c.what;
    EXPECT_EQ(path, std::string(c.found) == "QUORL.INI" ? c.found : folder.Path(c.found)) << c.what;
    std::filesystem::current_path(before);
  }
}

TEST(ReadAdvancedKeys, ReadsAndBounds) {
  const ScratchFolder folder;
  AdvancedKeys keys;
  ReadAdvancedKeys(folder.Path("absent").c_str(), keys);
  EXPECT_EQ(keys.MruFiles, 1);
  EXPECT_EQ(keys.FastMouseLines, 10);
  EXPECT_EQ(keys.PageIndexingBuffer, 8192);
  const std::string lines =
      "[Quorl Setup]\nDiagMode=1\nMruFiles=0\nMruSearch=7\nFastMouseDelay=0\nFastMouseLines=-1\n"
      "SlowMouseDelay=-9\nSlowMouseLines=-5\nPageIndexingDelay=-1\nPadPageLength=60\nShowPageGap=1\n"
      "PadLineLength=132\nDebugFileName=";
  const std::string file = lines + std::string(300, 'd') + "\n[Quorl]\nCuaKeyboard=1\n";
  ReadAdvancedKeys(folder.Write("p.ini", file).c_str(), keys);
  EXPECT_EQ(
      (std::vector<int>{keys.DiagMode, keys.MruFiles, keys.MruSearch, keys.FastMouseDelay,
                        keys.FastMouseLines, keys.SlowMouseDelay, keys.SlowMouseLines, keys.PageIndexingDelay,
                        keys.PadPageLength, keys.ShowPageGap, keys.PadLineLength, keys.CuaKeyboard}),
      (std::vector<int>{1, 0, 7, 1, 0, 1, 0, 0, 60, 1, 132, 0}));
  EXPECT_EQ(keys.DebugFileName, std::string(256, 'd'));
}

}  // namespace
