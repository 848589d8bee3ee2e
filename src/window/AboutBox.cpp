#include "window/AboutBox.h"

#include <QAbstractButton>
#include <QMessageBox>

#include "app/ProgramName.h"
#include "window/Messages.h"
#include "window/Resources.h"
#include "window/Widgets.h"

namespace walrim {

namespace {

constexpr int IconSize = 96;

}  // namespace

QIcon ProgramIcon() {
  CallInResources();
  return QIcon(":/walrim.svg");
}

void ShowAboutBox(QWidget& window) {
  const std::string_view version = ProgramVersion();
  QMessageBox box(&window);
  box.setObjectName("AboutBox");
  box.setWindowTitle(Translated("Walrimについて"));
  box.setIconPixmap(ProgramIcon().pixmap(QSize(IconSize, IconSize), window.devicePixelRatioF()));
  box.setTextFormat(Qt::PlainText);
  box.setText("Walrim " + Translated(version));
  box.setInformativeText(QString::fromStdString(window_messages::About(qVersion())));
  box.setStandardButtons(QMessageBox::Ok);
  box.button(QMessageBox::Ok)->setText("OK");
  box.exec();
}

}  // namespace walrim
