#include "platform/printing/print_service.h"

#include <sys/socket.h>
#include <sys/un.h>

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
  EXPECT_EQ(job.JobNumber(), 0);
  EXPECT_EQ(job.Ask().stage, PrintJobState::Stage::unknown);
  unsetenv("CUPS_SERVER");
}

}  // namespace
