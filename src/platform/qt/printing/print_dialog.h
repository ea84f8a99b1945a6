// The dialog for a printer, its paper and the pages to print. It shows what printers there are as soon as the
// print service has told, and does not wait for that. What it is given and what was chosen are the records of
// the program; who opens it turns them into the blocks of Win32.
#pragma once

#include <QDialog>
#include <memory>
#include <string>
#include <vector>

#include "platform/printing/print_service.h"
#include "platform/win32.h"

class QComboBox;
class QLabel;
class QLineEdit;
class QRadioButton;
class QSpinBox;
class QTimer;

namespace platform_qt {

// A printer as it is chosen: the names of its device context.
struct PrinterChoice {
  std::string driver, device, output;
  [[nodiscard]] bool IsFile() const;
};

class PrintDialog : public QDialog {
 public:
  enum class Range : std::uint8_t { all, selection, pages };

  // What is asked; with `ranges`, for pages too.
  PrintDialog(QWidget* parent, bool ranges);
  ~PrintDialog() override;
  PrintDialog(const PrintDialog&) = delete;
  PrintDialog& operator=(const PrintDialog&) = delete;

  void OfferSelection(bool there);
  // 0xFFFF: a blank field. Pages from `least` to `most` can be typed.
  void SetPages(int from, int to, int least, int most);
  void SetPrinter(const PrinterChoice& printer);
  void SetMode(const DEVMODEA& mode);

  [[nodiscard]] Range ChosenRange() const;
  [[nodiscard]] int FromPage() const;  // 0xFFFF: the field was left blank
  [[nodiscard]] int ToPage() const;
  [[nodiscard]] PrinterChoice ChosenPrinter() const;
  // The fields of the record that the dialog knows are set as they were chosen; the others stay.
  void TakeMode(DEVMODEA& mode) const;

 protected:
  void accept() override;

 private:
  struct Search;
  void BuildPrinter();
  void BuildRange();
  void BuildPaper();
  void LookForQueues();
  void ShowQueues(const std::vector<platform_printing::PrintQueue>& queues);
  void FollowPrinter();

  std::shared_ptr<Search> search_;
  QTimer* lookAgain_ = nullptr;
  bool chosenByUser_ = false;
  PrinterChoice wanted_;
  std::vector<platform_printing::PrintQueue> queues_;
  int least_ = 0, most_ = 0;

  QComboBox* printer_ = nullptr;
  QLabel* about_ = nullptr;
  QRadioButton* all_ = nullptr;
  QRadioButton* selection_ = nullptr;
  QRadioButton* pages_ = nullptr;
  QLineEdit* from_ = nullptr;
  QLineEdit* to_ = nullptr;
  QLabel* wrong_ = nullptr;
  QSpinBox* copies_ = nullptr;
  QComboBox* paper_ = nullptr;
  QComboBox* orientation_ = nullptr;
  QComboBox* source_ = nullptr;
  QComboBox* sides_ = nullptr;
  QComboBox* ink_ = nullptr;
  QComboBox* quality_ = nullptr;
};

}  // namespace platform_qt
