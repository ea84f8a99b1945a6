#include "platform/printing/print_service.h"

#include <sys/socket.h>
#include <sys/un.h>

#include "platform/printing/device_mode.h"
#include "tests/scratch.h"

using namespace platform_printing;

namespace {

TEST(PrintWishes, BecomeAttributesOfAJob) {
  const auto words = [](const PrintWishes& wishes) {
    std::string all;
    for (const PrintAttribute& attribute : AttributesOf(wishes))
      all += attribute.name + "=" + attribute.value + ";";
    return all;
  };
  EXPECT_EQ(words({}), "");
  EXPECT_EQ(words({3, Sides::twoLongEdge, Turn::landscape, Quality::high, Ink::gray, "iso_a4_210x297mm", ""}),
            "copies=3;sides=two-sided-long-edge;orientation-requested=4;print-quality=5;"
            "print-color-mode=monochrome;media=iso_a4_210x297mm;");
  const std::pair<const char*, const char*> sizes[] = {
      {"na_letter_8.5x11in",
       "media-col={media-source=tray-1 media-size={x-dimension=21590 y-dimension=27940}};"},
      {"iso_a4_210x297mm",
       "media-col={media-source=tray-1 media-size={x-dimension=21000 y-dimension=29700}};"},
      {"", "media-col={media-source=tray-1};"},
      {"odd_name", "media-col={media-source=tray-1};"},
      {"odd_1x2pt", "media-col={media-source=tray-1};"}};
  for (const auto& [media, expected] : sizes) {
    PrintWishes wishes;
    wishes.media = media;
    wishes.mediaSource = "tray-1";
    EXPECT_EQ(words(wishes), expected) << media;
  }
}

// The record of the program, as a page and as wishes; what is not set, or has no name here, is asked of
// nobody.
TEST(DeviceMode, BecomesAPageAndWishes) {
  setenv("LC_ALL", "C.UTF-8", 1);
  DEVMODEA mode{};
  mode.dmCopies = 7;
  EXPECT_EQ(WishesOf(&mode).copies, 1) << "its bit is not set";
  EXPECT_EQ(WishesOf(nullptr).media, "iso_a4_210x297mm");
  EXPECT_EQ(PageFormatOf(nullptr).width, 4960);
  EXPECT_EQ(PageFormatOf(nullptr).height, 7015);
  EXPECT_EQ(PageFormatOf(nullptr).margin, 150);

  mode.dmFields =
      DM_COPIES | DM_PAPERSIZE | DM_ORIENTATION | DM_DUPLEX | DM_COLOR | DM_PRINTQUALITY | DM_DEFAULTSOURCE;
  mode.dmPaperSize = DMPAPER_LETTER;
  mode.dmOrientation = DMORIENT_LANDSCAPE;
  mode.dmDuplex = DMDUP_HORIZONTAL;
  mode.dmColor = DMCOLOR_MONOCHROME;
  mode.dmPrintQuality = 300;
  mode.dmDefaultSource = DMBIN_MANUAL;
  const PrintWishes wishes = WishesOf(&mode);
  EXPECT_EQ(wishes.copies, 7);
  EXPECT_EQ(wishes.media, "na_letter_8.5x11in");
  EXPECT_EQ(wishes.sides, Sides::twoShortEdge);
  EXPECT_EQ(wishes.ink, Ink::gray);
  EXPECT_EQ(wishes.dotsPerInch, 300);
  EXPECT_EQ(wishes.mediaSource, "manual");
  EXPECT_EQ(wishes.turn, Turn::unset) << "the page itself is wide";
  EXPECT_EQ(PageFormatOf(&mode).width, 6600);
  EXPECT_EQ(PageFormatOf(&mode).height, 5100);

  mode.dmPaperSize = 12345;
  mode.dmPaperWidth = 1005;
  mode.dmPaperLength = 30000;
  mode.dmFields |= DM_PAPERWIDTH | DM_PAPERLENGTH;
  mode.dmDuplex = mode.dmColor = mode.dmDefaultSource = mode.dmPrintQuality = -99;
  const PrintWishes strange = WishesOf(&mode);
  EXPECT_EQ(strange.media, "custom_100.5x2000mm");
  EXPECT_EQ(strange.sides, Sides::unset);
  EXPECT_EQ(strange.ink, Ink::unset);
  EXPECT_EQ(strange.quality, Quality::unset);
  EXPECT_EQ(strange.mediaSource, "");
  EXPECT_EQ(strange.dotsPerInch, 0);
  unsetenv("LC_ALL");
}

// No service, at an address where nobody listens: no queues, and jobs that fail at once.
TEST(PrintService, WithoutAServiceThereAreNoQueues) {
  const ScratchFolder folder;
  setenv("CUPS_SERVER", folder.Path("no.sock").c_str(), 1);
  EXPECT_TRUE(ListPrintQueues(2000).empty());
  // One that takes connections and never answers.
  const std::string deaf = folder.Path("deaf.sock");
  const int listener = socket(AF_UNIX, SOCK_STREAM, 0);
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  ASSERT_LT(deaf.size(), sizeof address.sun_path);
  deaf.copy(address.sun_path, sizeof address.sun_path - 1);
  ASSERT_EQ(bind(listener, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
  ASSERT_EQ(listen(listener, 5), 0);
  setenv("CUPS_SERVER", deaf.c_str(), 1);
  EXPECT_TRUE(ListPrintQueues(300).empty());
  close(listener);
  setenv("CUPS_SERVER", folder.Path("no.sock").c_str(), 1);
  PrintJobStream job;
  EXPECT_NE(job.Begin("any", "title", {}), 0);
  EXPECT_NE(job.Write("x", 1), 0);
  EXPECT_NE(job.Finish(), 0);
  job.Abort();
  unsetenv("CUPS_SERVER");
}

}  // namespace
