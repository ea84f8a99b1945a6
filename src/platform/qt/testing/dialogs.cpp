#include "platform/testing.h"

#include <QApplication>
#include <QClipboard>
#include <QColorDialog>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFile>
#include <QFileDialog>
#include <QFileSystemModel>
#include <QFontDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>
#include <deque>

#include "platform/qt/base/hooks.h"
#include "platform/qt/controls/program_dialog.h"
#include "platform/qt/testing/records.h"
#include "platform/qt/windows/queue.h"

namespace platform_testing {

namespace {

struct Records {
  std::vector<Box> boxes;
  std::vector<FileDialog> fileDialogs;
  std::vector<UINT> beeps;
  std::deque<std::optional<std::string>> fileAnswers;
  std::deque<std::optional<FontAnswer>> fontAnswers;
  std::deque<std::optional<COLORREF>> colorAnswers;
};

Records records;

template <typename Answer>
Answer TakeAnswer(std::deque<Answer>& answers, Answer otherwise) {
  if (answers.empty()) {
    return otherwise;
  }
  Answer answer = answers.front();
  answers.pop_front();
  return answer;
}

// A program that never comes to rest must not keep a dialog open for ever.
constexpr int kMostRounds = 1000;

// Presses a button of the dialog when its message loop has served what waits.
void PressLater(QDialog& dialog, QDialogButtonBox::StandardButton button, int rounds = kMostRounds) {
  QTimer::singleShot(0, &dialog, [&dialog, button, rounds] {
    QPushButton* const widget = dialog.findChild<QDialogButtonBox*>()->button(button);
    const bool enabled = widget != nullptr && widget->isEnabled();
    if ((!platform_qt::QueueIsIdle() || !enabled) && rounds > 0) {
      PressLater(dialog, button, rounds - 1);
      return;
    }
    if (enabled) {
      widget->click();
    }
    // The toolkit may refuse the answer; then the dialog must not wait for ever.
    if (dialog.isVisible()) {
      dialog.reject();
    }
  });
}

UINT StyleOf(QMessageBox::Icon icon) {
  switch (icon) {
    case QMessageBox::Critical:
      return MB_ICONHAND;
    case QMessageBox::Warning:
      return MB_ICONEXCLAMATION;
    case QMessageBox::Information:
      return MB_ICONASTERISK;
    default:
      return MB_OK;
  }
}

void TakeBox(QMessageBox& box) {
  records.boxes.push_back({box.text().toStdString(), box.windowTitle().toStdString(), StyleOf(box.icon())});
  PressLater(box, QDialogButtonBox::Ok);
}

// Presses a button when the dialog has listed its folder, in a thread of its own.
void PressWhenListed(QFileDialog& dialog, QDialogButtonBox::StandardButton button) {
  auto* const model = dialog.findChild<QFileSystemModel*>();
  QObject::connect(model, &QFileSystemModel::directoryLoaded, &dialog,
                   [&dialog, button](const QString& path) {
                     if (path == dialog.directory().absolutePath()) {
                       PressLater(dialog, button);
                     }
                   });
}

void TakeFileDialog(QFileDialog& dialog) {
  FileDialog record;
  for (const QString& filter : dialog.nameFilters())
    record.filters.push_back(filter.toStdString());
  const auto* const filters = dialog.findChild<QComboBox*>(QStringLiteral("fileTypeCombo"));
  record.filterIndex = filters->currentIndex() + 1;
  record.directory = dialog.directory().absolutePath().toStdString();
  auto* const name = dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
  record.name = name->text().toStdString();
  records.fileDialogs.push_back(record);
  const auto answer = TakeAnswer<std::optional<std::string>>(records.fileAnswers, std::nullopt);
  if (answer) {
    name->setText(QFile::decodeName(answer->c_str()));
    PressWhenListed(dialog, dialog.acceptMode() == QFileDialog::AcceptSave ? QDialogButtonBox::Save
                                                                           : QDialogButtonBox::Open);
  } else {
    PressLater(dialog, QDialogButtonBox::Cancel);
  }
}

void TakeFontDialog(QFontDialog& dialog) {
  const auto answer = TakeAnswer<std::optional<FontAnswer>>(records.fontAnswers, std::nullopt);
  if (answer) {
    QFont font(QString::fromStdString(answer->face), answer->points);
    font.setWeight(static_cast<QFont::Weight>(answer->weight));
    font.setItalic(answer->italic);
    dialog.setCurrentFont(font);
  }
  PressLater(dialog, answer ? QDialogButtonBox::Ok : QDialogButtonBox::Cancel);
}

void TakeColorDialog(QColorDialog& dialog) {
  const auto answer = TakeAnswer<std::optional<COLORREF>>(records.colorAnswers, std::nullopt);
  if (answer) {
    dialog.setCurrentColor(QColor(platform_qt::PixelOf(*answer)));
  }
  PressLater(dialog, answer ? QDialogButtonBox::Ok : QDialogButtonBox::Cancel);
}

}  // namespace

namespace {

void TakeDialog(QDialog& dialog) {
  if (auto* const box = qobject_cast<QMessageBox*>(&dialog)) {
    TakeBox(*box);
  } else if (auto* const file = qobject_cast<QFileDialog*>(&dialog)) {
    TakeFileDialog(*file);
  } else if (auto* const font = qobject_cast<QFontDialog*>(&dialog)) {
    TakeFontDialog(*font);
  } else if (auto* const color = qobject_cast<QColorDialog*>(&dialog)) {
    TakeColorDialog(*color);
  } else if (auto* const program = dynamic_cast<platform_qt::ProgramDialog*>(&dialog)) {
    RunScript(*program);
  }
}

}  // namespace

void HookDialogs() {
  platform_qt::hooks.dialogShown = TakeDialog;
  platform_qt::hooks.beeped = [](UINT type) { records.beeps.push_back(type); };
}

void ForgetDialogs() {
  records = Records{};
}

const std::vector<Box>& Boxes() {
  return records.boxes;
}

void AnswerNextFileDialog(std::optional<std::string> path) {
  records.fileAnswers.push_back(std::move(path));
}

const std::vector<FileDialog>& FileDialogs() {
  return records.fileDialogs;
}

void AnswerNextFontDialog(std::optional<FontAnswer> answer) {
  records.fontAnswers.push_back(std::move(answer));
}

void AnswerNextColorDialog(std::optional<COLORREF> color) {
  records.colorAnswers.push_back(color);
}

std::string ClipboardText() {
  return QApplication::clipboard()->text().toStdString();
}

const std::vector<UINT>& Beeps() {
  return records.beeps;
}

}  // namespace platform_testing
