#include "window/printing/print_file.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>

#include "print/printer_settings.h"
#include "resources/command_ids.h"
#include "tests/window/viewer.h"

namespace {

namespace testing_layer = platform_testing;

std::string TextOfPdf(const std::string& path) {
  FILE* const pipe = popen(("pdftotext -layout '" + path + "' -").c_str(), "r");
  std::string text;
  for (int byte = 0; pipe != nullptr && (byte = std::fgetc(pipe)) != EOF;)
    text += byte == '\f' ? "" : std::string(1, static_cast<char>(byte));
  if (pipe != nullptr) pclose(pipe);
  return text;
}

void ChoosePdf() {
  MainState.PrinterMode.emplace();
  MainState.PrinterNames = MakePrinterNames("pdf", "PDF file", "disk");
  MainState.PrintOptions = 0;
}

// What is asked for while a job is under way touches neither its pages nor its end. The messages come while
// the job asks for the name of its file.
TEST(Printing, AJobKeepsWhatItBeganWith) {
  const ScratchFile file(NumberedLines(300));
  const ScratchFile other("something else\n");
  Viewer viewer({file.Path()});
  const ScratchFolder folder;
  ChoosePdf();
  testing_layer::AnswerNextFileDialog(folder.Path("job.pdf"));
  const auto post = [&viewer](UINT id) { PostMessageA(viewer.Window(), WM_COMMAND, id, 0); };
  post(IDM_PRINT_FILE);
  post(IDM_PRINT_PAGE);
  post(IDM_PRINT_SETUP);
  post(IDM_HEX);
  PostMessageA(viewer.Window(), WM_FILE_OPEN, 0, reinterpret_cast<LPARAM>(other.Path().c_str()));
  post(IDM_EXIT);
  SendMessageA(viewer.Window(), WM_COMMAND, IDM_PRINT_FILE, 0);
  EXPECT_EQ(TextOfPdf(folder.Path("job.pdf")), NumberedLines(300));
  EXPECT_EQ(testing_layer::FileDialogs().size(), 1U) << "one job";
  EXPECT_EQ(MainState.FormatIndex, kFormatHex);
  EXPECT_EQ(MainState.File.Fname, other.Path());
  EXPECT_TRUE(testing_layer::Boxes().empty());
  EXPECT_FALSE(viewer.Pump()) << "the program ends behind the job";
}

// Closing the window, as a signal does, cancels the job.
TEST(Printing, ACloseCancelsTheJob) {
  const ScratchFile file(NumberedLines(300));
  Viewer viewer({file.Path()});
  const ScratchFolder folder;
  ChoosePdf();
  testing_layer::AnswerNextFileDialog(folder.Path("job.pdf"));
  PostMessageA(viewer.Window(), WM_CLOSE, 0, 0);
  SendMessageA(viewer.Window(), WM_COMMAND, IDM_PRINT_FILE, 0);
  EXPECT_FALSE(std::filesystem::exists(folder.Path("job.pdf")));
  EXPECT_TRUE(testing_layer::Boxes().empty());
  EXPECT_FALSE(viewer.Pump());
}

TEST(Printing, TellsWhatFailed) {
  const ScratchFile file(NumberedLines(300));
  Viewer viewer({file.Path()});
  const ScratchFolder folder;
  const auto told = [&](const std::string& path) {
    testing_layer::ForgetRecords();
    testing_layer::AnswerNextFileDialog(path);
    viewer.Command(IDM_PRINT_FILE);
    std::string texts;
    for (const testing_layer::Box& box : testing_layer::Boxes())
      texts += box.text + "|";
    return texts;
  };
  ChoosePdf();
  const std::string missing = folder.Path("no/job.pdf");
  EXPECT_EQ(told(missing),
            "Cannot initialize document printing!\n\n" + missing + ": No such file or directory|");
  MainState.MarginTop = 2000;
  EXPECT_EQ(told(folder.Path("job.pdf")), "Invalid page margins, nothing printed!|");
  MainState.MarginTop = 0;
  MainState.FormatIndex = kFormatHex;
  MainState.FormatFlags = VO_FIXEDLEN;
  MainState.LineLength = 5;
  EXPECT_EQ(told(folder.Path("job.pdf")), "Program error|Printing error occurred.|");
  EXPECT_FALSE(std::filesystem::exists(folder.Path("job.pdf")));
  MainState.PrinterNames = MakePrinterNames("cups", "gone", "localhost");
  setenv("CUPS_SERVER", folder.Path("no.sock").c_str(), 1);
  EXPECT_EQ(told("").substr(0, 36), "Cannot initialize document printing!");
  unsetenv("CUPS_SERVER");
  EXPECT_EQ(testing_layer::FileDialogs().size(), 0U);
}

}  // namespace
