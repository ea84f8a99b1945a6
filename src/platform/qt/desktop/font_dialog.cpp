#include <QCheckBox>
#include <QFont>
#include <QFontDatabase>
#include <QFontDialog>
#include <QFontInfo>
#include <QGridLayout>
#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <utility>

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

// The style of a family that comes nearest to a font: what is regular has many names.
QString NearestStyle(const QString& family, const QFont& font) {
  const QStringList styles = QFontDatabase::styles(family);
  const auto distance = [&](const QString& style) {
    // The font itself tells of a slant under any name; the question of the library is for "italic" alone.
    const QFont candidate = QFontDatabase::font(family, style, font.pointSize());
    return std::abs(static_cast<int>(candidate.weight()) - static_cast<int>(font.weight())) +
           (candidate.italic() == font.italic() ? 0 : static_cast<int>(QFont::Black));
  };
  const auto nearest =
      std::min_element(styles.begin(), styles.end(),
                       [&](const QString& a, const QString& b) { return distance(a) < distance(b); });
  return nearest != styles.end() ? *nearest : QString();
}

// The toolkit's dialog with two habits of its own: faces of fixed pitch alone are listed, as columns want
// them, until the user asks for all; and another face keeps weight and slant, whatever its styles are called.
class FontDialog : public QFontDialog {
 public:
  explicit FontDialog(QWidget* parent) : QFontDialog(parent) {
    setOption(DontUseNativeDialog);
    setOption(MonospacedFonts);
    auto* const grid = qobject_cast<QGridLayout*>(layout());
    if (grid != nullptr) {
      all_ = new QCheckBox(QStringLiteral("&All faces, not of fixed pitch alone"), this);
      grid->addWidget(all_, grid->rowCount(), 0, 1, grid->columnCount());
      connect(all_, &QCheckBox::toggled, this, [this](bool all) { ListFaces(all); });
    }
    // Behind the signal, the dialog goes on to choose a style.
    connect(
        this, &QFontDialog::currentFontChanged, this, [this] { KeepStyle(currentFont()); },
        Qt::QueuedConnection);
  }

  void Begin(const QFont& font) {
    former_ = font;
    if (all_ != nullptr && !QFontInfo(font).fixedPitch()) all_->setChecked(true);
    setCurrentFont(font);
  }

 private:
  void ListFaces(bool all) {
    const QFont font = currentFont();
    setOption(MonospacedFonts, !all);
    setCurrentFont(font);
  }

  void KeepStyle(const QFont& font) {
    const QFont former = std::exchange(former_, font);
    if (font.family() == former.family() ||
        (font.weight() == former.weight() && font.italic() == former.italic())) {
      return;
    }
    const QString style = NearestStyle(font.family(), former);
    QFont kept = QFontDatabase::font(font.family(), style, font.pointSize());
    kept.setPointSizeF(font.pointSizeF());
    kept.setUnderline(font.underline());
    kept.setStrikeOut(font.strikeOut());
    setCurrentFont(kept);
  }

  QFont former_;
  QCheckBox* all_ = nullptr;
};

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
  FontDialog dialog(ParentFor(choose->hwndOwner));
  QString initialFamily;
  if ((choose->Flags & CF_INITTOLOGFONTSTRUCT) != 0) {
    const QFont initial = InitialFont(*choose, dots);
    initialFamily = initial.family();
    dialog.Begin(initial);
  }
  RunModal(dialog, choose->hwndOwner);
  if (dialog.result() != QDialog::Accepted) {
    return FALSE;
  }
  StoreChoice(dialog.selectedFont(), initialFamily, dots, *choose);
  return TRUE;
}
