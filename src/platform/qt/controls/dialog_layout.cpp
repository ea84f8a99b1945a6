#include "platform/qt/controls/dialog_layout.h"

#include <QFontMetricsF>
#include <algorithm>
#include <cmath>

namespace platform_qt {

namespace {

// A dialog unit is a quarter of a character wide and an eighth of one high.
constexpr double kUnitsAcross = 4;
constexpr double kUnitsDown = 8;

// Units may grow so far for the sake of a text; what needs more is the template's fault.
constexpr double kMostAcross = 1.5;
constexpr double kMostDown = 1.7;

// A closed list takes a row of this height, whatever the template gives it to drop down.
constexpr int kClosedHeight = 14;
constexpr int kButtonMargin = 8;  // pixels at each side of a text

struct Units {
  double across, down;
};

Units OrdinaryUnits(const QFontMetricsF& metrics) {
  const QString letters = QStringLiteral("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz");
  const double average = metrics.horizontalAdvance(letters) / static_cast<double>(letters.size());
  return {average / kUnitsAcross, (metrics.ascent() + metrics.descent()) / kUnitsDown};
}

// The width that the text takes; 0 where no text is at stake.
double WidthNeeded(const Control& control) {
  switch (control.kind) {
    case ControlKind::label:
      return control.label->wordWrap() ? 0 : control.label->sizeHint().width();
    case ControlKind::button:
    case ControlKind::defaultButton: {
      const QString shown = control.button->text().remove(QLatin1Char('&'));
      return control.button->fontMetrics().horizontalAdvance(shown) + 2 * kButtonMargin;
    }
    case ControlKind::checkBox:
    case ControlKind::threeState:
    case ControlKind::radio:
      return control.button->sizeHint().width();
    case ControlKind::group: {
      const QString shown = control.group->title().remove(QLatin1Char('&'));
      return control.group->fontMetrics().horizontalAdvance(shown) + 2 * kButtonMargin;
    }
    default:
      return 0;
  }
}

double HeightNeeded(const Control& control, int width) {
  switch (control.kind) {
    case ControlKind::label:
      return control.label->wordWrap() ? control.label->heightForWidth(width)
                                       : control.label->sizeHint().height();
    case ControlKind::edit:
    case ControlKind::readOnlyEdit:
    case ControlKind::button:
    case ControlKind::defaultButton:
    case ControlKind::checkBox:
    case ControlKind::threeState:
    case ControlKind::radio:
    case ControlKind::comboBox:
    case ControlKind::simpleCombo:
    case ControlKind::dropDownList:
      return control.widget->sizeHint().height();
    default:
      return 0;
  }
}

// Whether the field of the control takes a row, and its list the rest of its place, or drops down.
bool IsFieldWithList(const Control& control) {
  return control.IsCombo();
}

Units FittingUnits(const std::deque<Control>& controls, const DialogTemplate& description,
                   const Units& ordinary) {
  double across = 1;
  for (std::size_t i = 0; i < controls.size(); ++i) {
    const double width = description.controls[i].width * ordinary.across;
    across = std::max(across, WidthNeeded(controls[i]) / std::max(width, 1.0));
  }
  const Units wide{ordinary.across * std::min(across, kMostAcross), ordinary.down};
  double down = 1;
  for (std::size_t i = 0; i < controls.size(); ++i) {
    const ControlTemplate& place = description.controls[i];
    const int units = IsFieldWithList(controls[i]) ? kClosedHeight : place.height;
    const auto width = static_cast<int>(place.width * wide.across);
    down = std::max(down, HeightNeeded(controls[i], width) / std::max(units * ordinary.down, 1.0));
  }
  return {wide.across, ordinary.down * std::min(down, kMostDown)};
}

}  // namespace

void LayOut(QWidget& dialog, const std::deque<Control>& controls, const DialogTemplate& description) {
  const Units units = FittingUnits(controls, description, OrdinaryUnits(QFontMetricsF(dialog.font())));
  const auto pixels = [](double place) { return static_cast<int>(std::lround(place)); };
  for (std::size_t i = 0; i < description.controls.size(); ++i) {
    const ControlTemplate& place = description.controls[i];
    const Control& control = controls[i];
    // Edges are rounded, not sizes: neighbours meet.
    QRect area(QPoint(pixels(place.x * units.across), pixels(place.y * units.down)),
               QPoint(pixels((place.x + place.width) * units.across) - 1,
                      pixels((place.y + place.height) * units.down) - 1));
    if (IsFieldWithList(control)) {
      const int bottom = area.bottom();
      area.setHeight(std::max(control.widget->sizeHint().height(),
                              pixels(std::min<int>(place.height, kClosedHeight) * units.down)));
      if (control.list != nullptr) {
        control.list->setGeometry(QRect(area.bottomLeft() + QPoint(0, 1), QPoint(area.right(), bottom)));
      }
    }
    control.widget->setGeometry(area);
  }
  dialog.setFixedSize(pixels(description.width * units.across), pixels(description.height * units.down));
}

}  // namespace platform_qt
