#include "window/UploadActions.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QLabel>
#include <QListWidget>
#include <QVBoxLayout>
#include <algorithm>
#include <filesystem>
#include <system_error>

#include "app/Messages.h"
#include "app/RecoveryFiles.h"
#include "preflight/Messages.h"
#include "text/Scan.h"
#include "window/Messages.h"
#include "window/Widgets.h"

namespace walrim {

namespace {

constexpr QSize StartSize{640, 360};

QString Text(std::string_view utf8) {
  return Translated(utf8);
}

}  // namespace

UploadActions::UploadActions(WalrimMain& main, const Clock& clock, QWidget& window)
    : main_(main), clock_(clock), window_(window), review_(window) {
  main_.Uploads().SetReview(&review_);
}

Outcome UploadActions::Upload() {
  return main_.Uploads().Upload();
}

Outcome UploadActions::SendSafely() {
  UploadCare care;
  care.verify = true;
  care.backup = BackupPath(clock_.LocalTime());
  const Outcome outcome = main_.Uploads().Upload(care);
  if (outcome == Outcome::Done) ShowDifferences(messages::BackupSaved(care.backup));
  return outcome;
}

Outcome UploadActions::SendBackup() {
  const Outcome outcome = main_.Uploads().SendBackup();
  if (outcome == Outcome::Done) ShowDifferences(messages::BackupSent(main_.Uploads().NamesBeyondBackup()));
  return outcome;
}

void UploadActions::ShowDifferences(const std::string& about_backup) {
  const UploadCommands& uploads = main_.Uploads();
  QDialog dialog(&window_);
  dialog.setObjectName("UploadDifferences");
  dialog.setWindowTitle(Translated("受信機と比べた結果"));
  auto* column = new QVBoxLayout(&dialog);
  const auto count = uploads.Differences().size();
  if (count > 0) dialog.resize(StartSize);
  auto* caption = new QLabel(count == 0 ? Text(window_messages::AllThere) : Text(window_messages::Differ(count)));
  caption->setWordWrap(true);
  column->addWidget(caption);
  auto* list = new QListWidget;
  NameControl(*list, "Differences");
  for (const Difference& difference : uploads.Differences())
    list->addItem(Text(preflight_messages::DifferenceLine(uploads.Sent(), difference)));
  list->setVisible(count > 0);
  column->addWidget(list);
  auto* backup = new QLabel(Text(about_backup));
  NameControl(*backup, "AboutBackup");
  backup->setWordWrap(true);
  backup->setTextInteractionFlags(Qt::TextSelectableByMouse);
  column->addWidget(backup);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok);
  QObject::connect(buttons, &QDialogButtonBox::accepted, &dialog, &QDialog::accept);
  column->addWidget(buttons);
  dialog.exec();
}

std::string BackupPath(const CivilTime& now) {
  const std::filesystem::path folder = UserStateFolder().value_or(std::filesystem::current_path()) / "walrim";
  std::error_code error;
  std::filesystem::create_directories(folder, error);
  std::string moment = DateTimeText(now);
  std::erase_if(moment, [](char c) { return !IsDigit(c) && c != ' '; });
  std::ranges::replace(moment, ' ', '-');
  return (folder / ("backup-" + moment + ".grc")).string();
}

}  // namespace walrim
