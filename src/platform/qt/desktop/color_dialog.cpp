#include <QColorDialog>
#include <array>

#include "platform/qt/base/unknown.h"
#include "platform/qt/drawing/pixels.h"
#include "platform/qt/windows/modal.h"

namespace platform_qt {

namespace {

constexpr int kCustomColors = 16;
constexpr COLORREF kUnset = 0xFFFFFFFF;

// The program's custom colors in the toolkit's dialog. The toolkit keeps its own ones in a file that all its
// programs share; they are put back, so that this program's colors do not get there.
class CustomColors {
 public:
  explicit CustomColors(COLORREF* colors) : colors_(colors) {
    for (int i = 0; i < kCustomColors; ++i) {
      former_[static_cast<std::size_t>(i)] = QColorDialog::customColor(i);
      QColorDialog::setCustomColor(i, colors[i] == kUnset ? QColor(Qt::white) : QColor(PixelOf(colors[i])));
    }
  }
  ~CustomColors() {
    for (int i = 0; i < kCustomColors; ++i) {
      const QColor color = QColorDialog::customColor(i);
      if (colors_[i] != kUnset || color.rgb() != QColor(Qt::white).rgb()) {
        colors_[i] = ColorOf(color.rgb());
      }
      QColorDialog::setCustomColor(i, former_[static_cast<std::size_t>(i)]);
    }
  }
  CustomColors(const CustomColors&) = delete;
  CustomColors& operator=(const CustomColors&) = delete;

 private:
  COLORREF* colors_;
  std::array<QColor, kCustomColors> former_;
};

}  // namespace

}  // namespace platform_qt

using namespace platform_qt;

BOOL ChooseColorA(CHOOSECOLORA* choose) {
  ReportUnknownBits("ChooseColorA", choose->Flags, CC_RGBINIT);
  const CustomColors custom(choose->lpCustColors);
  QColorDialog dialog(ParentFor(choose->hwndOwner));
  dialog.setOption(QColorDialog::DontUseNativeDialog);
  if ((choose->Flags & CC_RGBINIT) != 0) {
    dialog.setCurrentColor(QColor(PixelOf(choose->rgbResult)));
  }
  RunModal(dialog, choose->hwndOwner);
  if (dialog.result() != QDialog::Accepted) {
    return FALSE;
  }
  choose->rgbResult = ColorOf(dialog.selectedColor().rgb());
  return TRUE;
}
