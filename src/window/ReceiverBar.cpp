#include "window/ReceiverBar.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <utility>

#include "window/ElidedLabel.h"
#include "window/Widgets.h"

namespace walrim {

ReceiverBar::ReceiverBar(PortBox::Ports ports, QWidget* parent)
    : QWidget(parent),
      port(new PortBox(std::move(ports))),
      get_info(MakeButton("Get_GpsInfo", "情報取得(&I)", "受信機の機種と件数を調べます（F5）")),
      down_load(MakeButton("GpsDownLoad", "ダウンロード(&D)", "チェックした種類を受信機から受け取ります（Ctrl+D）")),
      up_load(MakeButton("GpsUpLoad", "アップロード(&U)", "選択した種類を受信機へ送ります（Ctrl+U）")),
      cancel(MakeButton("Cancel", "中止(&C)", "通信を中止します（Esc）")),
      info_(new ElidedLabel("GpsInfo", Qt::ElideRight)) {
  setObjectName("ReceiverBar");
  auto* line = new QHBoxLayout(this);
  line->setContentsMargins({});
  line->addWidget(MakeCaption("ポート(&P)", *port));
  line->addWidget(port);
  line->addWidget(get_info);
  line->addWidget(info_, 1);
  for (QPushButton* button : {down_load, up_load, cancel})
    line->addWidget(button);
}

void ReceiverBar::ShowReceiver(const std::string& text, const std::string& clock) {
  info_->ShowText(QString::fromStdString(text));
  if (clock.empty()) return;
  info_->setToolTip(info_->text().toHtmlEscaped() + "<br>" + QString::fromStdString(clock).toHtmlEscaped());
}

void ReceiverBar::ShowState(bool command_runs, bool cancel_enabled) {
  for (QWidget* widget : std::initializer_list<QWidget*>{port, get_info, down_load, up_load})
    widget->setEnabled(!command_runs);
  cancel->setEnabled(cancel_enabled);
}

std::vector<QWidget*> ReceiverBar::TabOrder() const {
  return {port, get_info, down_load, up_load, cancel};
}

}  // namespace walrim
