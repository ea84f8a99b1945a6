#include "platform/qt/windows/scroll_bar.h"

#include <QGuiApplication>
#include <QMouseEvent>
#include <QWheelEvent>
#include <algorithm>
#include <utility>

#include "platform/qt/windows/keys.h"
#include "platform/qt/windows/queue.h"

namespace platform_qt {

namespace {

// The toolkit's range of a bar whose own range is larger: far finer than any screen.
constexpr int kLargestValue = 1 << 30;

int RangeFor(std::int64_t top) {
  return static_cast<int>(std::min<std::int64_t>(top, kLargestValue));
}

// number * factor / divisor without overflow, for factor and divisor up to kLargestValue.
std::int64_t Scaled(std::int64_t number, std::int64_t factor, std::int64_t divisor) {
  return number / divisor * factor + number % divisor * factor / divisor;
}

}  // namespace

ScrollBar::ScrollBar(QWidget* parent, HWND owner, int which, std::function<void(QWheelEvent*)> wheel)
    : QScrollBar(which == SB_VERT ? Qt::Vertical : Qt::Horizontal, parent),
      owner_(owner),
      which_(which),
      wheel_(std::move(wheel)) {
  setFocusPolicy(Qt::NoFocus);
  setContextMenuPolicy(Qt::NoContextMenu);
  // A window may be smaller than a bar likes to be.
  const bool vertical = which == SB_VERT;
  setSizePolicy(vertical ? QSizePolicy::Fixed : QSizePolicy::Ignored,
                vertical ? QSizePolicy::Ignored : QSizePolicy::Fixed);
  connect(this, &QAbstractSlider::actionTriggered, this, [this](int action) { TakeAction(action); });
  connect(this, &QAbstractSlider::sliderReleased, this, [this] {
    dropWaits_ = true;
    acted_ = false;
    Append(SB_THUMBPOSITION);
    Append(SB_ENDSCROLL);
  });
}

void ScrollBar::Set(std::int64_t top, std::int64_t position, std::int64_t page) {
  top_ = std::max<std::int64_t>(top, 0);
  position_ = std::clamp<std::int64_t>(position, 0, top_);
  page_ = std::max<std::int64_t>(page, 0);
  if (top_ == 0 && isSliderDown()) {
    // The bar goes away under the mouse, and no release will come.
    const QSignalBlocker quiet(this);
    setSliderDown(false);
  }
  // A thumb under the mouse, or just dropped, is not pulled away.
  if (!isSliderDown() && !dropWaits_) {
    Apply();
  }
}

int ScrollBar::ValueOf(std::int64_t position) const {
  if (top_ <= kLargestValue) {
    return static_cast<int>(position);
  }
  if (position >= top_) {
    return kLargestValue;
  }
  return static_cast<int>(static_cast<long double>(position) / static_cast<long double>(top_) *
                          kLargestValue);
}

void ScrollBar::Apply() {
  const int range = RangeFor(top_);
  const int pageStep =
      page_ == 0 || top_ == 0
          ? std::max(range / 10, 1)
          : static_cast<int>(std::clamp<std::int64_t>(ValueOf(std::min(page_, top_)), 1, range));
  shownValue_ = ValueOf(position_);
  userMoved_ = false;
  const QSignalBlocker quiet(this);
  setRange(0, range);
  setPageStep(std::max(pageStep, 1));
  setValue(shownValue_);
}

std::int64_t ScrollBar::Thumb() const {
  if (!userMoved_) {
    return position_;
  }
  const int value = sliderPosition();
  if (value >= maximum()) {
    return top_;
  }
  return maximum() == top_ ? value : Scaled(top_, value, maximum());
}

void ScrollBar::DropIsOver() {
  dropWaits_ = false;
}

void ScrollBar::TakeAction(int action) {
  switch (action) {
    case SliderSingleStepAdd:
      Append(SB_LINEDOWN);
      break;
    case SliderSingleStepSub:
      Append(SB_LINEUP);
      break;
    case SliderPageStepAdd:
      Append(SB_PAGEDOWN);
      break;
    case SliderPageStepSub:
      Append(SB_PAGEUP);
      break;
    case SliderToMinimum:
      Append(SB_TOP);
      break;
    case SliderToMaximum:
      Append(SB_BOTTOM);
      break;
    case SliderMove:
      userMoved_ = true;
      if (isSliderDown()) {
        Append(SB_THUMBTRACK);
      }
      return;
    default:
      return;
  }
  acted_ = true;
  // The program decides where the thumb goes.
  setSliderPosition(value());
}

void ScrollBar::Append(int code) {
  if (owner_ == nullptr) {
    return;
  }
  const auto position = static_cast<std::uint64_t>(Thumb());
  const bool thumb = code == SB_THUMBTRACK || code == SB_THUMBPOSITION;
  AppendInput(owner_, which_ == SB_VERT ? WM_VSCROLL : WM_HSCROLL,
              MAKEWPARAM(static_cast<UINT>(code), thumb ? static_cast<UINT>(position & 0xFFFF) : 0), 0,
              ModifiersOf(QGuiApplication::keyboardModifiers()));
}

void ScrollBar::mouseReleaseEvent(QMouseEvent* event) {
  QScrollBar::mouseReleaseEvent(event);
  if (acted_) {
    acted_ = false;
    Append(SB_ENDSCROLL);
  }
}

void ScrollBar::wheelEvent(QWheelEvent* event) {
  wheel_(event);
}

}  // namespace platform_qt
