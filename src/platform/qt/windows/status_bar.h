// The line of fields at the foot of a window. Of its window it knows the handle alone.
#pragma once

#include <QTimer>
#include <QToolButton>
#include <QWidget>
#include <vector>

#include "platform/status.h"

namespace platform_qt {

class StatusBar : public QWidget {
 public:
  StatusBar(QWidget* parent, HWND owner);
  void Disown() { owner_ = nullptr; }
  void Set(const StatusLine& line);
  [[nodiscard]] const StatusLine& Line() const { return line_; }
  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override { return {0, sizeHint().height()}; }

 protected:
  void resizeEvent(QResizeEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  // Brings the buttons up to date with the line, and puts them in their places.
  void Show();
  void Fill(QToolButton& button, const StatusField& field, int width);
  // What the text of a field takes, with what the style has around it.
  [[nodiscard]] int WidthOf(const StatusField& field) const;
  void AddButton();

  HWND owner_;
  StatusLine line_;
  QTimer timer_;  // runs while a change waits for being shown
  std::vector<QToolButton*> buttons_;
};

}  // namespace platform_qt
