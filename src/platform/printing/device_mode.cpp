#include "platform/printing/device_mode.h"

#include <langinfo.h>

#include <algorithm>
#include <clocale>
#include <cstdint>
#include <string>

#include "platform/posix/user_locale.h"

namespace platform_printing {

namespace {

constexpr int kTenthsPerInch = 254;
constexpr int kMarginsPerInch = 4;
constexpr int kLetterHeightMm = 279;
// What a record of one's own measures may ask for.
constexpr int kLeastPaper = 250;
constexpr int kMostPaper = 20000;

constexpr Paper kPapers[] = {
    {DMPAPER_A4, "A4", "iso_a4_210x297mm", 2100, 2970},
    {DMPAPER_A3, "A3", "iso_a3_297x420mm", 2970, 4200},
    {DMPAPER_A5, "A5", "iso_a5_148x210mm", 1480, 2100},
    {DMPAPER_A2, "A2", "iso_a2_420x594mm", 4200, 5940},
    {DMPAPER_A6, "A6", "iso_a6_105x148mm", 1050, 1480},
    {DMPAPER_LETTER, "Letter", "na_letter_8.5x11in", 2159, 2794},
    {DMPAPER_LEGAL, "Legal", "na_legal_8.5x14in", 2159, 3556},
    {DMPAPER_TABLOID, "Tabloid", "na_ledger_11x17in", 2794, 4318},
    {DMPAPER_EXECUTIVE, "Executive", "na_executive_7.25x10.5in", 1842, 2667},
    {DMPAPER_B4, "JIS B4", "jis_b4_257x364mm", 2570, 3640},
    {DMPAPER_B5, "JIS B5", "jis_b5_182x257mm", 1820, 2570},
};
constexpr const Paper& kA4 = kPapers[0];
constexpr const Paper& kLetter = kPapers[5];
static_assert(kA4.code == DMPAPER_A4 && kLetter.code == DMPAPER_LETTER);

struct Tray {
  short code;           // DMBIN_
  const char* keyword;  // of IPP
};
constexpr Tray kTrays[] = {
    {DMBIN_UPPER, "top"},     {DMBIN_LOWER, "bottom"},      {DMBIN_MIDDLE, "middle"},
    {DMBIN_MANUAL, "manual"}, {DMBIN_ENVELOPE, "envelope"}, {DMBIN_LARGECAPACITY, "large-capacity"},
    {DMBIN_CASSETTE, "main"},
};

bool Holds(const DEVMODEA* mode, DWORD field) {
  return mode != nullptr && (mode->dmFields & field) != 0;
}

Paper PaperOf(const DEVMODEA* mode) {
  if (Holds(mode, DM_PAPERSIZE)) {
    const auto* const paper = std::ranges::find(kPapers, mode->dmPaperSize, &Paper::code);
    if (paper != std::end(kPapers)) return *paper;
  }
  if (Holds(mode, DM_PAPERWIDTH) && Holds(mode, DM_PAPERLENGTH)) {
    return {DMPAPER_USER, "", "", std::clamp<int>(mode->dmPaperWidth, kLeastPaper, kMostPaper),
            std::clamp<int>(mode->dmPaperLength, kLeastPaper, kMostPaper)};
  }
  return UsualPaper();
}

std::string MediaOf(const Paper& paper) {
  if (*paper.media != '\0') return paper.media;
  const auto millimetres = [](int tenths) {
    return std::to_string(tenths / 10) + (tenths % 10 != 0 ? "." + std::to_string(tenths % 10) : "");
  };
  return "custom_" + millimetres(paper.width) + "x" + millimetres(paper.height) + "mm";
}

Quality QualityOf(short quality) {
  switch (quality) {
    case DMRES_DRAFT:
    case DMRES_LOW:
      return Quality::draft;
    case DMRES_MEDIUM:
      return Quality::normal;
    case DMRES_HIGH:
      return Quality::high;
    default:
      return Quality::unset;
  }
}

Sides SidesOf(short duplex) {
  switch (duplex) {
    case DMDUP_SIMPLEX:
      return Sides::one;
    case DMDUP_VERTICAL:
      return Sides::twoLongEdge;
    case DMDUP_HORIZONTAL:
      return Sides::twoShortEdge;
    default:
      return Sides::unset;
  }
}

}  // namespace

std::span<const Paper> Papers() {
  return kPapers;
}

const Paper& UsualPaper() {
  const std::string name(UserLocale("LC_PAPER"));
  if (name.empty() || name == "C" || name == "POSIX" || name.starts_with("C.")) return kA4;
  const locale_t locale = newlocale(LC_PAPER_MASK, name.c_str(), nullptr);
  if (locale == nullptr) return kA4;
  // A number that the system hands out in place of a pointer.
  const auto height =
      static_cast<int>(reinterpret_cast<std::intptr_t>(nl_langinfo_l(_NL_PAPER_HEIGHT, locale)));
  freelocale(locale);
  return height == kLetterHeightMm ? kLetter : kA4;
}

PageFormat PageFormatOf(const DEVMODEA* mode) {
  const Paper paper = PaperOf(mode);
  const auto pixels = [](int tenths) { return tenths * kPageDotsPerInch / kTenthsPerInch; };
  PageFormat format{pixels(paper.width), pixels(paper.height), kPageDotsPerInch / kMarginsPerInch};
  if (Holds(mode, DM_ORIENTATION) && mode->dmOrientation == DMORIENT_LANDSCAPE) {
    std::swap(format.width, format.height);
  }
  return format;
}

PrintWishes WishesOf(const DEVMODEA* mode) {
  PrintWishes wishes;
  wishes.media = MediaOf(PaperOf(mode));
  if (Holds(mode, DM_COPIES)) wishes.copies = std::max<int>(mode->dmCopies, 1);
  if (Holds(mode, DM_DUPLEX)) wishes.sides = SidesOf(mode->dmDuplex);
  if (Holds(mode, DM_COLOR)) {
    wishes.ink = mode->dmColor == DMCOLOR_MONOCHROME ? Ink::gray
                 : mode->dmColor == DMCOLOR_COLOR    ? Ink::color
                                                     : Ink::unset;
  }
  if (Holds(mode, DM_PRINTQUALITY)) {
    wishes.quality = QualityOf(mode->dmPrintQuality);
    wishes.dotsPerInch = std::max<int>(mode->dmPrintQuality, 0);
  }
  if (Holds(mode, DM_DEFAULTSOURCE)) {
    const auto* const tray = std::ranges::find(kTrays, mode->dmDefaultSource, &Tray::code);
    if (tray != std::end(kTrays)) wishes.mediaSource = tray->keyword;
  }
  return wishes;
}

}  // namespace platform_printing
