#include "platform/qt/printing/print_dialog.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QSpinBox>
#include <QTimer>
#include <QVBoxLayout>
#include <algorithm>
#include <future>
#include <thread>

#include "platform/printing/device_mode.h"
#include "platform/qt/printing/printers.h"

namespace platform_qt {

using namespace platform_printing;

namespace {

constexpr int kBlank = 0xFFFF;
constexpr int kPatienceMs = 10000;
constexpr std::chrono::milliseconds kUnnoticed{300};
constexpr int kLookAgainMs = 100;
constexpr int kMostCopies = 999;
constexpr int kFieldDigits = 6;

// A field of the record that is one of some values; the first row leaves it to the printer.
struct Value {
  short value;
  const char* label;
};
constexpr Value kSources[] = {{DMBIN_CASSETTE, "Main tray"},       {DMBIN_UPPER, "Upper tray"},
                              {DMBIN_MIDDLE, "Middle tray"},       {DMBIN_LOWER, "Lower tray"},
                              {DMBIN_LARGECAPACITY, "Large tray"}, {DMBIN_MANUAL, "By hand"},
                              {DMBIN_ENVELOPE, "Envelopes"}};
constexpr Value kDuplex[] = {{DMDUP_SIMPLEX, "One side"},
                             {DMDUP_VERTICAL, "Both, turned over the long edge"},
                             {DMDUP_HORIZONTAL, "Both, turned over the short edge"}};
constexpr Value kInks[] = {{DMCOLOR_MONOCHROME, "Black and white"}, {DMCOLOR_COLOR, "Color"}};
constexpr Value kQualities[] = {{DMRES_DRAFT, "Draft"}, {DMRES_MEDIUM, "Normal"}, {DMRES_HIGH, "High"}};
constexpr Value kOrientations[] = {{DMORIENT_PORTRAIT, "Portrait"}, {DMORIENT_LANDSCAPE, "Landscape"}};

template <std::size_t kCount>
QComboBox* ChoiceOf(const Value (&values)[kCount], const char* first) {
  auto* const box = new QComboBox;
  if (first != nullptr) {
    box->addItem(QString::fromUtf8(first), 0);
  }
  for (const Value& value : values) {
    box->addItem(QString::fromUtf8(value.label), int{value.value});
  }
  return box;
}

// A value that no row has gets a row of its own, so that it is kept.
void Choose(QComboBox& box, bool counts, short value) {
  if (!counts) {
    return;
  }
  int row = box.findData(int{value});
  if (row < 0) {
    box.addItem(QStringLiteral("Number %1").arg(value), int{value});
    row = box.count() - 1;
  }
  box.setCurrentIndex(row);
}

void Take(const QComboBox& box, DEVMODEA& mode, short DEVMODEA::*field, DWORD bit) {
  const int value = box.currentData().toInt();
  mode.*field = static_cast<short>(value);
  mode.dmFields = value != 0 ? mode.dmFields | bit : mode.dmFields & ~bit;
}

QString Shown(const std::string& text) {
  return QString::fromUtf8(text.c_str());
}

// All that is known of a queue beside its name.
QString AboutQueue(const PrintQueue& queue) {
  QStringList parts;
  for (const std::string& part : {queue.about, queue.location, queue.model}) {
    if (!part.empty()) {
      parts.append(Shown(part));
    }
  }
  if (!queue.accepts) {
    parts.append(QStringLiteral("takes no jobs now"));
  }
  return parts.join(QStringLiteral(", "));
}

}  // namespace

bool PrinterChoice::IsFile() const {
  return driver == kFileDriver;
}

// The answer of the service, which a thread of its own waits for; the last of both lets it go.
struct PrintDialog::Search {
  std::promise<std::vector<PrintQueue>> promise;
  std::future<std::vector<PrintQueue>> queues = promise.get_future();
};

PrintDialog::PrintDialog(QWidget* parent, bool ranges) : QDialog(parent) {
  setWindowTitle(ranges ? QStringLiteral("Print") : QStringLiteral("Print Setup"));
  auto* const rows = new QVBoxLayout(this);
  rows->setSizeConstraint(QLayout::SetFixedSize);
  BuildPrinter();
  if (ranges) {
    BuildRange();
  }
  BuildPaper();
  auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
  connect(buttons, &QDialogButtonBox::accepted, this, &PrintDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &PrintDialog::reject);
  rows->addWidget(buttons);
  printer_->setFocus();
  LookForQueues();
}

PrintDialog::~PrintDialog() = default;

void PrintDialog::BuildPrinter() {
  auto* const group = new QGroupBox(QStringLiteral("Printer"));
  auto* const form = new QFormLayout(group);
  printer_ = new QComboBox;
  printer_->setObjectName(QStringLiteral("printer"));
  printer_->setSizeAdjustPolicy(QComboBox::AdjustToContents);
  printer_->setMinimumContentsLength(40);
  printer_->addItem(QString::fromUtf8(kFileDevice));
  about_ = new QLabel;
  about_->setWordWrap(true);
  form->addRow(QStringLiteral("&Name:"), printer_);
  form->addRow(QString(), about_);
  layout()->addWidget(group);
  connect(printer_, &QComboBox::currentIndexChanged, this, [this] { FollowPrinter(); });
  connect(printer_, &QComboBox::activated, this, [this] { chosenByUser_ = true; });
}

void PrintDialog::BuildRange() {
  auto* const group = new QGroupBox(QStringLiteral("Print"));
  auto* const rows = new QVBoxLayout(group);
  all_ = new QRadioButton(QStringLiteral("&All"));
  selection_ = new QRadioButton(QStringLiteral("&Selection"));
  pages_ = new QRadioButton(QStringLiteral("Pa&ges"));
  from_ = new QLineEdit;
  to_ = new QLineEdit;
  wrong_ = new QLabel;
  auto* const line = new QHBoxLayout;
  const auto add = [line](const QString& label, QLineEdit* field) {
    field->setMaxLength(kFieldDigits);
    field->setFixedWidth(field->fontMetrics().averageCharWidth() * (kFieldDigits + 4));
    auto* const text = new QLabel(label);
    text->setBuddy(field);
    line->addWidget(text);
    line->addWidget(field);
  };
  line->addWidget(pages_);
  add(QStringLiteral("&from"), from_);
  add(QStringLiteral("&to"), to_);
  line->addStretch();
  rows->addWidget(all_);
  rows->addWidget(selection_);
  rows->addLayout(line);
  rows->addWidget(wrong_);
  wrong_->hide();
  layout()->addWidget(group);
  all_->setChecked(true);
  for (QLineEdit* const field : {from_, to_}) {
    connect(field, &QLineEdit::textEdited, this, [this] { pages_->setChecked(true); });
  }
  // By its key, a button is chosen a tenth of a second later, and Enter may come first.
  for (QRadioButton* const button : {all_, selection_, pages_}) {
    connect(button, &QRadioButton::pressed, button, [button] { button->setChecked(true); });
  }
  // Who chooses pages wants to type them.
  connect(pages_, &QRadioButton::clicked, this, [this] { from_->setFocus(); });
}

void PrintDialog::BuildPaper() {
  auto* const group = new QGroupBox(QStringLiteral("Paper"));
  auto* const form = new QFormLayout(group);
  paper_ = new QComboBox;
  for (const Paper& paper : Papers()) {
    paper_->addItem(QString::fromUtf8(paper.label), int{paper.code});
  }
  Choose(*paper_, true, UsualPaper().code);
  orientation_ = ChoiceOf(kOrientations, nullptr);
  copies_ = new QSpinBox;
  copies_->setRange(1, kMostCopies);
  source_ = ChoiceOf(kSources, "As the printer is set");
  sides_ = ChoiceOf(kDuplex, "As the printer is set");
  ink_ = ChoiceOf(kInks, "As the printer is set");
  quality_ = ChoiceOf(kQualities, "As the printer is set");
  form->addRow(QStringLiteral("&Copies:"), copies_);
  form->addRow(QStringLiteral("&Paper:"), paper_);
  form->addRow(QStringLiteral("&Orientation:"), orientation_);
  form->addRow(QStringLiteral("So&urce:"), source_);
  form->addRow(QStringLiteral("S&ides:"), sides_);
  form->addRow(QStringLiteral("Co&lor:"), ink_);
  form->addRow(QStringLiteral("&Quality:"), quality_);
  layout()->addWidget(group);
}

// A service that answers at once is not waited for noticeably; another one adds its printers when it does.
void PrintDialog::LookForQueues() {
  search_ = std::make_shared<Search>();
  std::thread([search = search_] { search->promise.set_value(ListPrintQueues(kPatienceMs)); }).detach();
  if (search_->queues.wait_for(kUnnoticed) == std::future_status::ready) {
    ShowQueues(search_->queues.get());
    return;
  }
  FollowPrinter();
  lookAgain_ = new QTimer(this);
  connect(lookAgain_, &QTimer::timeout, this, [this] {
    if (search_->queues.wait_for(std::chrono::seconds(0)) == std::future_status::ready) {
      lookAgain_->stop();
      ShowQueues(search_->queues.get());
    }
  });
  lookAgain_->start(kLookAgainMs);
}

// The queues stand in front of the file, the default one first.
void PrintDialog::ShowQueues(const std::vector<PrintQueue>& queues) {
  const PrinterChoice chosen = ChosenPrinter();
  for (std::size_t i = 0; i < queues_.size(); ++i) {
    printer_->removeItem(0);
  }
  queues_ = queues;
  for (std::size_t i = 0; i < queues_.size(); ++i) {
    const QString name = Shown(queues_[i].name);
    printer_->insertItem(static_cast<int>(i),
                         queues_[i].isDefault ? name + QStringLiteral(" (default)") : name);
  }
  search_.reset();
  SetPrinter(chosenByUser_ ? chosen : wanted_);
}

void PrintDialog::SetPrinter(const PrinterChoice& printer) {
  wanted_ = printer;
  if (search_ != nullptr && printer.driver == kQueueDriver && queues_.empty()) {
    // It stands there until the service tells of it.
    queues_.push_back({.name = printer.device});
    printer_->insertItem(0, Shown(printer.device));
  }
  const auto queue = std::find_if(queues_.begin(), queues_.end(), [&printer](const PrintQueue& one) {
    return printer.driver == kQueueDriver && one.name == printer.device;
  });
  const int file = printer_->count() - 1;
  const bool missing = printer.driver == kQueueDriver && queue == queues_.end();
  const bool first = printer.driver != kFileDriver && queue == queues_.end();
  printer_->setCurrentIndex(first                    ? 0
                            : queue != queues_.end() ? static_cast<int>(queue - queues_.begin())
                                                     : file);
  FollowPrinter();
  if (missing && search_ == nullptr) {
    about_->setText(QStringLiteral("The printer %1 is not there.").arg(Shown(printer.device)));
  }
}

void PrintDialog::FollowPrinter() {
  const bool file = ChosenPrinter().IsFile();
  const auto row = static_cast<std::size_t>(printer_->currentIndex());
  if (search_ != nullptr) {
    about_->setText(QStringLiteral("Looking for printers..."));
  } else if (row < queues_.size()) {
    about_->setText(AboutQueue(queues_[row]));
  } else {
    about_->setText(queues_.empty() ? QStringLiteral("There is no other printer.") : QString());
  }
  for (QWidget* const field : std::initializer_list<QWidget*>{copies_, source_, sides_, ink_, quality_}) {
    if (field != nullptr) {
      field->setEnabled(!file);
    }
  }
}

void PrintDialog::OfferSelection(bool there) {
  selection_->setEnabled(there);
  (there ? selection_ : all_)->setChecked(true);
}

void PrintDialog::SetPages(int from, int to, int least, int most) {
  least_ = least;
  most_ = most;
  if (from != kBlank) {
    from_->setText(QString::number(from));
  }
  if (to != kBlank) {
    to_->setText(QString::number(to));
  }
}

void PrintDialog::SetMode(const DEVMODEA& mode) {
  const auto counts = [&mode](DWORD bit) { return (mode.dmFields & bit) != 0; };
  if (counts(DM_COPIES)) {
    copies_->setValue(mode.dmCopies);
  }
  if (counts(DM_PAPERSIZE) || (counts(DM_PAPERWIDTH) && counts(DM_PAPERLENGTH))) {
    const short code = counts(DM_PAPERSIZE) ? mode.dmPaperSize : DMPAPER_USER;
    if (code == DMPAPER_USER && counts(DM_PAPERWIDTH) && counts(DM_PAPERLENGTH)) {
      paper_->addItem(QStringLiteral("%1 x %2 mm").arg(mode.dmPaperWidth / 10).arg(mode.dmPaperLength / 10),
                      int{code});
    }
    Choose(*paper_, true, code);
  }
  Choose(*orientation_, counts(DM_ORIENTATION), mode.dmOrientation);
  Choose(*source_, counts(DM_DEFAULTSOURCE), mode.dmDefaultSource);
  Choose(*sides_, counts(DM_DUPLEX), mode.dmDuplex);
  Choose(*ink_, counts(DM_COLOR), mode.dmColor);
  Choose(*quality_, counts(DM_PRINTQUALITY), mode.dmPrintQuality);
}

void PrintDialog::TakeMode(DEVMODEA& mode) const {
  mode.dmCopies = static_cast<short>(copies_->value());
  mode.dmFields |= DM_COPIES;
  Take(*paper_, mode, &DEVMODEA::dmPaperSize, DM_PAPERSIZE);
  Take(*orientation_, mode, &DEVMODEA::dmOrientation, DM_ORIENTATION);
  Take(*source_, mode, &DEVMODEA::dmDefaultSource, DM_DEFAULTSOURCE);
  Take(*sides_, mode, &DEVMODEA::dmDuplex, DM_DUPLEX);
  Take(*ink_, mode, &DEVMODEA::dmColor, DM_COLOR);
  Take(*quality_, mode, &DEVMODEA::dmPrintQuality, DM_PRINTQUALITY);
}

PrintDialog::Range PrintDialog::ChosenRange() const {
  return pages_->isChecked() ? Range::pages : selection_->isChecked() ? Range::selection : Range::all;
}

int PrintDialog::FromPage() const {
  return from_->text().isEmpty() ? kBlank : from_->text().toInt();
}

int PrintDialog::ToPage() const {
  return to_->text().isEmpty() ? kBlank : to_->text().toInt();
}

PrinterChoice PrintDialog::ChosenPrinter() const {
  const auto row = static_cast<std::size_t>(printer_->currentIndex());
  if (row < queues_.size()) {
    return {kQueueDriver, queues_[row].name, PrintServer()};
  }
  return {kFileDriver, kFileDevice, kFileOutput};
}

// Pages that make no range are not accepted.
void PrintDialog::accept() {
  if (pages_ != nullptr && pages_->isChecked()) {
    const auto isWrong = [this](const QLineEdit& field) {
      bool number = false;
      const int page = field.text().toInt(&number);
      return !field.text().isEmpty() && (!number || page < least_ || page > most_);
    };
    QLineEdit* const wrong = isWrong(*from_) ? from_ : isWrong(*to_) ? to_ : nullptr;
    const bool backward =
        wrong == nullptr && !to_->text().isEmpty() && FromPage() != kBlank && FromPage() > ToPage();
    if (wrong != nullptr || backward) {
      wrong_->setText(backward ? QStringLiteral("The last page comes before the first one.")
                               : QStringLiteral("Pages are numbers from %1 to %2.").arg(least_).arg(most_));
      wrong_->show();
      (wrong != nullptr ? wrong : to_)->setFocus();
      (wrong != nullptr ? wrong : to_)->selectAll();
      return;
    }
  }
  QDialog::accept();
}

}  // namespace platform_qt
