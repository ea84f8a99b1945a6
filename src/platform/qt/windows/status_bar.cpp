#include "platform/qt/windows/status_bar.h"

#include <QEvent>
#include <QResizeEvent>
#include <QStyleOptionToolButton>
#include <QStylePainter>
#include <algorithm>

#include "platform/qt/windows/queue.h"

namespace platform_qt {

namespace {

constexpr int kShowMs = 40;      // the longest that a change waits
constexpr int kPaddingX = 6;     // device independent pixels at each side of a text
constexpr int kPaddingY = 2;     // above and below it
constexpr int kLeastFirst = 16;  // characters: where the first field would get less, others go

// The text in the whole of the button, which styles shorten to make room for what is not there.
class FieldButton : public QToolButton {
 public:
  using QToolButton::QToolButton;

 protected:
  void paintEvent(QPaintEvent* /*event*/) override {
    QStylePainter painter(this);
    QStyleOptionToolButton option;
    initStyleOption(&option);
    option.text.clear();
    painter.drawComplexControl(QStyle::CC_ToolButton, option);
    painter.setPen(palette().color(QPalette::WindowText));
    painter.drawText(rect().adjusted(kPaddingX, 0, 0, 0), Qt::AlignVCenter | Qt::TextSingleLine, text());
  }
};

}  // namespace

StatusBar::StatusBar(QWidget* parent, HWND owner) : QWidget(parent), owner_(owner) {
  setFocusPolicy(Qt::NoFocus);
  setContextMenuPolicy(Qt::NoContextMenu);
  setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
  timer_.setSingleShot(true);
  timer_.setInterval(kShowMs);
  connect(&timer_, &QTimer::timeout, this, [this] { Show(); });
}

void StatusBar::Set(const StatusLine& line) {
  if (line == line_) return;
  line_ = line;
  if (!timer_.isActive()) timer_.start();
}

QSize StatusBar::sizeHint() const {
  return {0, fontMetrics().height() + 2 * kPaddingY};
}

void StatusBar::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  if (!buttons_.empty()) Show();  // else the first line is still to come
}

void StatusBar::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) {
    updateGeometry();
    if (!buttons_.empty()) Show();
  }
}

int StatusBar::WidthOf(const StatusField& field) const {
  return fontMetrics().horizontalAdvance(QString::fromStdString(field.text)) + 2 * kPaddingX;
}

void StatusBar::AddButton() {
  auto* const button = new FieldButton(this);
  button->setAutoRaise(true);
  button->setFocusPolicy(Qt::NoFocus);
  button->setContextMenuPolicy(Qt::NoContextMenu);
  button->setToolButtonStyle(Qt::ToolButtonTextOnly);
  const std::size_t place = buttons_.size();
  connect(button, &QToolButton::clicked, this, [this, place] {
    const StatusField& field = place == 0 ? line_.first : line_.fields[place - 1];
    if (owner_ != nullptr && field.command != 0) AppendPosted(owner_, WM_COMMAND, field.command, 0);
  });
  buttons_.push_back(button);
}

void StatusBar::Fill(QToolButton& button, const StatusField& field, int width) {
  const QString text = QString::fromStdString(field.text);
  const QString shown =
      width >= WidthOf(field)
          ? text
          : fontMetrics().elidedText(text, Qt::ElideMiddle, std::max(width - 2 * kPaddingX, 0));
  button.setText(shown);
  const QString hint = QString::fromStdString(field.hint);
  button.setToolTip(shown == text ? hint : (hint.isEmpty() ? text : text + '\n' + hint));
  button.setAccessibleName(text);
}

void StatusBar::Show() {
  timer_.stop();
  while (buttons_.size() <= line_.fields.size())
    AddButton();
  // From the left as many fields as fit beside a first one of the least width.
  const int least = std::min(WidthOf(line_.first), fontMetrics().averageCharWidth() * kLeastFirst);
  int room = width() - least;
  std::vector<int> widths(line_.fields.size());
  for (std::size_t i = 0; i < widths.size(); ++i) {
    if (line_.fields[i].text.empty()) continue;
    widths[i] = WidthOf(line_.fields[i]);
    if (widths[i] > room) {
      std::fill(widths.begin() + static_cast<std::ptrdiff_t>(i), widths.end(), 0);
      break;
    }
    room -= widths[i];
  }
  const int first = room + least;
  const int firstWidth = std::min(first, WidthOf(line_.first));
  int x = first;
  for (std::size_t i = 1; i < buttons_.size(); ++i) {
    const bool shown = i <= widths.size() && widths[i - 1] > 0;
    if (shown) {
      buttons_[i]->setGeometry(x, 0, widths[i - 1], height());
      Fill(*buttons_[i], line_.fields[i - 1], widths[i - 1]);
      x += widths[i - 1];
    }
    buttons_[i]->setVisible(shown);
  }
  buttons_[0]->setGeometry(0, 0, firstWidth, height());
  Fill(*buttons_[0], line_.first, firstWidth);
  buttons_[0]->setVisible(!line_.first.text.empty());
}

}  // namespace platform_qt
