#include "print/printer_settings.h"

#include "tests/scratch.h"

namespace {

constexpr const char* kWhole =
    "[P]\nPrtOrientation=2\nPrtPaperSize=9\nPrtPaperLength=2970\nPrtPaperWidth=2100\nPrtScale=100\n"
    "PrtCopies=2\nPrtDefaultSource=7\nPrtPrintQuality=-3\nPrtColor=1\nPrtDuplex=3\nPrtYResolution=600\n"
    "PrtTTOption=4\nPrtDevice=Laser\nPrtSpecVersion=1025\nPrtDriverVersion=65535\nPrtDriver=winspool\n"
    "PrtOutput=LPT1:\n";

std::vector<std::string> Names(const ChosenPrinter& printer) {
  const PrinterNameBlock& names = printer.PrinterNames.value();
  return {names.At(names.offsets.wDriverOffset), names.At(names.offsets.wDeviceOffset),
          names.At(names.offsets.wOutputOffset)};
}
using Texts = std::vector<std::string>;

class PrinterSettings : public testing::Test {
 protected:
  int Load(const std::string& content) {
    return LoadPrinter(folder_.Write("p.ini", content).c_str(), "P", printer_);
  }
  std::string Save(const std::string& over) {
    const std::string file = folder_.Write("p.ini", over);
    EXPECT_EQ(SavePrinter(file.c_str(), "P", printer_), 0);
    return ContentOf(file);
  }

  ScratchFolder folder_;
  ChosenPrinter printer_;
};

TEST_F(PrinterSettings, ComeBackAsTheyWereSaved) {
  EXPECT_EQ(Load(kWhole), 1);
  const DEVMODEA& mode = printer_.PrinterMode.value();
  EXPECT_EQ(mode.dmFields, 0x7F1FU) << "each of the twelve";
  EXPECT_EQ(mode.dmPrintQuality, -3);
  EXPECT_EQ(mode.dmDriverVersion, 65535);
  EXPECT_EQ(mode.dmSize, 148);
  EXPECT_STREQ(reinterpret_cast<const char*>(mode.dmDeviceName), "Laser");
  EXPECT_EQ(Names(printer_), (Texts{"winspool", "Laser", "LPT1:"}));
  EXPECT_EQ(Save(""), kWhole);
  // What counts no more leaves no key behind. A zero is written, and does not count at the next load.
  printer_.PrinterMode->dmFields = DM_COPIES;
  printer_.PrinterMode->dmCopies = 0;
  const std::string saved = Save(kWhole);
  EXPECT_EQ(saved,
            "[P]\nPrtCopies=0\nPrtDevice=Laser\nPrtSpecVersion=1025\nPrtDriverVersion=65535\n"
            "PrtDriver=winspool\nPrtOutput=LPT1:\n");
  EXPECT_EQ(Load(saved), 1);
  EXPECT_EQ(printer_.PrinterMode->dmFields, 0U);
}

TEST_F(PrinterSettings, ASectionWithoutAPrinterTakesTheOneAtHandAway) {
  for (const char* section : {"", "[P]\nPrtDriver=winspool\nPrtOutput=LPT1:\n", "[P]\nPrtCopies=65536\n"}) {
    ASSERT_EQ(Load(kWhole), 1);
    EXPECT_EQ(Load(section), 0);
    EXPECT_FALSE(printer_.PrinterMode.has_value());
    EXPECT_EQ(Names(printer_), (Texts{"winspool", "Laser", "LPT1:"}));
    EXPECT_EQ(Save("[P]\nPrtCopies=9\nPrtDriver=x\n"),
              "[P]\nPrtCopies=9\nPrtDriver=winspool\nPrtOutput=LPT1:\n");
  }
  EXPECT_EQ(Load("[P]\nPrtCopies=2\n"), 1);
  EXPECT_EQ(printer_.PrinterMode->dmFields, DM_COPIES);
  EXPECT_EQ(printer_.PrinterMode->dmSize, 148);
  EXPECT_EQ(Names(printer_), (Texts{"", "", ""}));
  printer_ = {};
  EXPECT_EQ(Save(kWhole), kWhole) << "no printer, nothing to save";
}

// A name that dmDeviceName has no room for names no other printer: the whole one is kept, saved and asked
// for.
TEST_F(PrinterSettings, NamesAreWhole) {
  const std::string text = std::string(30, 'x') + "\u00E9 second floor";
  for (const std::string& name : {text, std::string(kMostPrinterName, 'y')}) {
    const std::string profile = "[P]\nPrtDevice=" + name + "\n";
    EXPECT_EQ(Load(profile), 1);
    EXPECT_EQ(DeviceName(printer_), name);
    EXPECT_NE(Save("").find("PrtDevice=" + name + "\n"), std::string::npos);
  }
  ASSERT_EQ(Load("[P]\nPrtDevice=" + text + "\n"), 1);
  EXPECT_STREQ(reinterpret_cast<const char*>(printer_.PrinterMode->dmDeviceName), text.substr(0, 30).c_str());
  // A record of another printer counts.
  printer_.PrinterMode->dmDeviceName[0] = 'z';
  EXPECT_EQ(DeviceName(printer_), 'z' + text.substr(1, 29));
  printer_.PrinterMode.reset();
  EXPECT_EQ(DeviceName(printer_), text);
  // What is too long for any name is cut behind a whole character.
  ASSERT_EQ(Load("[P]\nPrtDevice=" + std::string(kMostPrinterName - 1, 'y') + "\u00E9\nPrtOutput=o\n"), 1);
  EXPECT_EQ(Names(printer_), (Texts{"", std::string(kMostPrinterName - 1, 'y'), "o"}));
}

}  // namespace
