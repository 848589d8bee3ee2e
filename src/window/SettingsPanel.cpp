#include "window/SettingsPanel.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFrame>
#include <QHBoxLayout>
#include <QLabel>
#include <QSpinBox>
#include <QVBoxLayout>

#include "window/Widgets.h"

namespace walrim {

namespace {

/// The zones of the world reach from 12 hours west to 14 hours east.
constexpr int LeastUtcOffset = -12;
constexpr int MostUtcOffset = 14;

QComboBox* MakeOutputTypes() {
  QComboBox* box = MakeComboBox("OutputTypeOption", "保存・コピーの形式");
  for (const Format& format : Formats()) {
    box->addItem(Translated(format.name), static_cast<int>(format.id));
  }
  return box;
}

QSpinBox* MakeUtcOffset() {
  auto* box = new QSpinBox;
  NameControl(*box, "UTCOffsetNum");
  box->setToolTip(Translated("日時に加える協定世界時からの時差（時間）．日本は9"));
  box->setRange(LeastUtcOffset, MostUtcOffset);
  return box;
}

QComboBox* MakeLinkChoice() {
  return MakeChoice<LinkChoice>(
      SettingsPanel::LinkName,
      "データの誤りを検査し，誤りがあれば送り直します．待ち時間が減り，通信が速くなります．"
      "「自動」は，受信機の最初の応答が正しい形であればそうします",
      {{LinkChoice::Automatic, "自動"}, {LinkChoice::Checked, "する"}, {LinkChoice::Plain, "しない"}});
}

/// The frame of what a copy, and a file, has beyond the data.
QFrame* InCopyOption(QCheckBox& header) {
  auto* frame = new QFrame;
  NameControl(*frame, "CopyOption");
  auto* line = new QHBoxLayout(frame);
  line->setContentsMargins({});
  line->addWidget(&header);
  return frame;
}

}  // namespace

SettingsPanel::SettingsPanel(UserSettings& settings, ControlBinder& binder, QWidget* parent) : QWidget(parent) {
  setObjectName("SettingsPanel");
  auto* lines = new QVBoxLayout(this);
  lines->setContentsMargins({});
  const auto add_line = [lines] {
    auto* line = new QHBoxLayout;
    lines->addLayout(line);
    return line;
  };
  BuildOutput(*add_line(), settings, binder);
  BuildLink(*add_line(), settings, binder);
  BuildAutoActions(*add_line(), settings, binder);
  for (std::size_t i = 1; i < tab_order_.size(); ++i)
    setTabOrder(tab_order_[i - 1], tab_order_[i]);
}

void SettingsPanel::Append(QHBoxLayout& line, const char* caption, QWidget* widget) {
  line.addWidget(MakeCaption(caption, *widget));
  line.addWidget(widget);
  line.addSpacing(line.spacing());
  tab_order_.push_back(widget);
}

void SettingsPanel::BuildOutput(QHBoxLayout& line, UserSettings& settings, ControlBinder& binder) {
  QComboBox* type = MakeOutputTypes();
  QComboBox* degree = MakeChoice<AngleNotation>("DegreeType", "緯度・経度の表記",
                                                {{AngleNotation::D, "D（度）"},
                                                 {AngleNotation::DMS, "DMS（度分秒）"},
                                                 {AngleNotation::MPS, "MPS（35/37/56.3）"}});
  QComboBox* datum = MakeChoice<Datum>("Datum", "緯度・経度の測地系",
                                       {{Datum::Wgs84, "WGS84"}, {Datum::Tokyo, "Tokyo（日本測地系）"}});
  QSpinBox* offset = MakeUtcOffset();
  binder.Bind(*type, settings.format);
  binder.Bind(*degree, settings.notation);
  binder.Bind(*datum, settings.datum);
  binder.Bind(*offset, settings.utc_offset_hours);
  Append(line, "形式(&T)", type);
  Append(line, "表記(&G)", degree);
  Append(line, "測地系(&M)", datum);
  Append(line, "時差(&Z)", offset);
  line.addStretch(1);
}

void SettingsPanel::BuildLink(QHBoxLayout& line, UserSettings& settings, ControlBinder& binder) {
  QCheckBox* header = MakeCheckBox("WithHeader", "見出し行(&N)", "種類ごとに列の名前の行を付けます");
  QCheckBox* auto_name =
      MakeCheckBox("AutoFileName", "AutoFileName(%date%_%time%.)", "保存するファイルの名前を日付と時刻から付けます");
  QComboBox* link = MakeLinkChoice();
  binder.Bind(*header, settings.with_header);
  binder.Bind(*auto_name, settings.auto_file_name);
  binder.Bind(*link, settings.link);
  line.addWidget(InCopyOption(*header));
  line.addWidget(auto_name);
  line.addSpacing(line.spacing());
  tab_order_.insert(tab_order_.end(), {header, auto_name});
  Append(line, "誤り検査(&K)", link);
  line.addStretch(1);
}

void SettingsPanel::BuildAutoActions(QHBoxLayout& line, UserSettings& settings, ControlBinder& binder) {
  struct Row {
    const char* control;
    const char* caption;
    const char* tool_tip;
    bool& value;
  };
  const Row rows[] = {
      {"AutoDownload", "自動ダウンロード(&1)", "情報取得のあと，すべての種類をダウンロードします",
       settings.auto_download},
      {"AutoSave", "自動保存(&2)", "ダウンロードのあと，その種類を保存します", settings.auto_save},
      {"AutoCopy", "自動コピー(&3)", "ダウンロードのあと，その種類をクリップボードにコピーします", settings.auto_copy},
      {"AutoUpload", "自動アップロード(&4)",
       "ほかのプログラムやドロップによる取り込みのあと，その種類をアップロードします", settings.auto_upload},
      {"AutoDelete", "自動削除(&5)", "アップロード・保存・コピーのあと，その種類を内部データから削除します",
       settings.auto_delete},
  };
  for (const Row& row : rows) {
    QCheckBox* box = MakeCheckBox(row.control, row.caption, row.tool_tip);
    binder.Bind(*box, row.value);
    line.addWidget(box);
    tab_order_.push_back(box);
  }
  line.addStretch(1);
}

}  // namespace walrim
