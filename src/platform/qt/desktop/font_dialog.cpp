#include <QFont>
#include <QFontDialog>
#include <QFontInfo>
#include <algorithm>
#include <cmath>
#include <cstring>

#include "platform/qt/base/unknown.h"
#include "platform/qt/drawing/fonts.h"
#include "platform/qt/windows/modal.h"
#include "platform/qt/windows/window.h"

namespace platform_qt {

namespace {

constexpr double kPointsPerInch = 72;
constexpr int kOrdinaryDots = 96;
constexpr double kOrdinaryPoints = 10;

// The dialog lists families that exist, and counts in points.
QFont InitialFont(const CHOOSEFONTA& choose, int dots) {
  const LOGFONTA& asked = *choose.lpLogFont;
  QFont font = DescribeFont(asked);
  font.setFamily(QFontInfo(font).family());
  const double points = asked.lfHeight < 0 ? -asked.lfHeight * kPointsPerInch / dots : kOrdinaryPoints;
  font.setPointSizeF(std::max(std::round(points), 1.0));
  return font;
}

void StoreFace(const QString& family, char (&face)[LF_FACESIZE]) {
  QByteArray name = family.toUtf8();
  if (name.size() >= LF_FACESIZE) {
    // Cut between characters.
    qsizetype end = LF_FACESIZE - 1;
    while ((static_cast<unsigned char>(name[end]) & 0xC0) == 0x80) {
      --end;
    }
    name.truncate(end);
  }
  std::memset(face, 0, sizeof face);
  std::memcpy(face, name.constData(), static_cast<std::size_t>(name.size()));
}

// A face that only stands for the one asked for ("Courier New" for most systems), and that the user left as
// it was, keeps its name: the choice then still holds where the real one is installed.
void StoreChoice(const QFont& font, const QString& initialFamily, int dots, CHOOSEFONTA& choose) {
  const double points = font.pointSizeF() > 0 ? font.pointSizeF() : kOrdinaryPoints;
  LOGFONTA& chosen = *choose.lpLogFont;
  chosen.lfHeight = -static_cast<LONG>(std::lround(points * dots / kPointsPerInch));
  chosen.lfWidth = 0;
  chosen.lfWeight = font.weight();
  chosen.lfItalic = font.italic() ? 1 : 0;
  chosen.lfUnderline = font.underline() ? 1 : 0;
  chosen.lfStrikeOut = font.strikeOut() ? 1 : 0;
  if (font.family() != initialFamily) {
    StoreFace(font.family(), chosen.lfFaceName);
  }
  choose.iPointSize = static_cast<INT>(std::lround(points * 10));
}

}  // namespace

}  // namespace platform_qt

using namespace platform_qt;

BOOL ChooseFontA(CHOOSEFONTA* choose) {
  ReportUnknownBits("ChooseFontA", choose->Flags,
                    CF_SCREENFONTS | CF_INITTOLOGFONTSTRUCT | CF_FORCEFONTEXIST);
  const int dots = IsWindowAlive(choose->hwndOwner) ? choose->hwndOwner->target.DotsPerInch() : kOrdinaryDots;
  QFontDialog dialog(ParentFor(choose->hwndOwner));
  dialog.setOption(QFontDialog::DontUseNativeDialog);
  QString initialFamily;
  if ((choose->Flags & CF_INITTOLOGFONTSTRUCT) != 0) {
    const QFont initial = InitialFont(*choose, dots);
    initialFamily = initial.family();
    dialog.setCurrentFont(initial);
  }
  RunModal(dialog, choose->hwndOwner);
  if (dialog.result() != QDialog::Accepted) {
    return FALSE;
  }
  StoreChoice(dialog.selectedFont(), initialFamily, dots, *choose);
  return TRUE;
}
