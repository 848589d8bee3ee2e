#include "window/HelpDialog.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QFile>
#include <QPushButton>
#include <QStandardPaths>
#include <QTextBrowser>
#include <QVBoxLayout>

#include "device/Models.h"
#include "window/Resources.h"
#include "window/Widgets.h"

namespace walrim {

namespace {

constexpr QSize StartSize{720, 560};
constexpr const char* DialogName = "Help";

/// A folder of the program's, as the desktop's rules have it.
QString FolderOf(QStandardPaths::StandardLocation location) {
  return QStandardPaths::writableLocation(location) + "/walrim/";
}

/// Qt knows no place for states.
QString StateFolder() {
  const QString given = qEnvironmentVariable("XDG_STATE_HOME");
  const QString home = QStandardPaths::writableLocation(QStandardPaths::HomeLocation);
  return (given.startsWith(QLatin1Char('/')) ? given : home + "/.local/state") + "/walrim/";
}

}  // namespace

QString HelpPage() {
  CallInResources();
  QFile file(Translated(":/help/ja.md"));
  QString page = file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
  QStringList models;
  for (const std::string_view model : KnownModels())
    models.append(Translated(model));
  page.replace("%MODELS%", models.join(Translated("，")));
  page.replace("%STATE%", StateFolder());
  page.replace("%DATA%", FolderOf(QStandardPaths::GenericDataLocation));
  page.replace("%CONFIG%", FolderOf(QStandardPaths::GenericConfigLocation));
  return page;
}

void ShowHelp(QWidget& window) {
  if (auto* open = window.findChild<QDialog*>(DialogName)) {
    open->raise();
    open->activateWindow();
    return;
  }
  auto* dialog = new QDialog(&window);
  dialog->setObjectName(DialogName);
  dialog->setAttribute(Qt::WA_DeleteOnClose);
  dialog->setWindowTitle(Translated("Walrimの使い方"));
  dialog->resize(StartSize);
  auto* page = new QTextBrowser;
  page->setObjectName("HelpPage");
  page->setAccessibleName(dialog->windowTitle());
  page->setOpenExternalLinks(true);
  page->setMarkdown(HelpPage());
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close);
  buttons->button(QDialogButtonBox::Close)->setText(Translated("閉じる"));
  QObject::connect(buttons, &QDialogButtonBox::rejected, dialog, &QDialog::reject);
  auto* column = new QVBoxLayout(dialog);
  column->addWidget(page);
  column->addWidget(buttons);
  dialog->show();
}

}  // namespace walrim
