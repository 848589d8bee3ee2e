#include "window/DateRepairsDialog.h"

#include <QDialogButtonBox>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

#include "text/Dates.h"
#include "window/Widgets.h"

namespace walrim {

namespace {

constexpr QSize StartSize{720, 320};

QString RangeText(GarminSeconds first, GarminSeconds last, int utc_offset_hours) {
  const auto text = [&](GarminSeconds time) {
    return QString::fromStdString(DateTimeText(LocalTimeOfGarminTime(time, utc_offset_hours)));
  };
  return text(first) + Translated("～") + text(last);
}

/// The name of a log, or its number where it has none.
QString LogText(const DataSet& data_set, std::size_t log) {
  const std::string& name = data_set.Logs()[log].trk_ident;
  const auto number = static_cast<int>(log) + data_set.FirstLogNumber();
  return name.empty() ? QString::number(number) : QString::fromStdString(name);
}

}  // namespace

DateRepairsDialog::DateRepairsDialog(const DataSet& data_set, const std::vector<DateRepair>& repairs,
                                     int utc_offset_hours, QWidget* parent)
    : QDialog(parent) {
  setObjectName("DateRepairs");
  setWindowTitle(Translated("日付を直す"));
  resize(StartSize);
  auto* column = new QVBoxLayout(this);
  auto* caption = new QLabel(Translated("次のトラックログの日付は，1024週の単位で遅れています．直しますか？"));
  column->addWidget(caption);
  column->addWidget(MakeTable(data_set, repairs, utc_offset_hours));
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
  buttons->button(QDialogButtonBox::Ok)->setText(Translated("直す(&F)"));
  buttons->button(QDialogButtonBox::Cancel)->setText(Translated("キャンセル"));
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  column->addWidget(buttons);
}

QTableWidget* DateRepairsDialog::MakeTable(const DataSet& data_set, const std::vector<DateRepair>& repairs,
                                           int utc_offset_hours) {
  auto* table = new QTableWidget(static_cast<int>(repairs.size()), 3);
  NameControl(*table, "DateRepairTable");
  table->setHorizontalHeaderLabels({Translated("トラックログ"), Translated("今の日時"), Translated("直した日時")});
  table->setEditTriggers(QAbstractItemView::NoEditTriggers);
  table->setSelectionBehavior(QAbstractItemView::SelectRows);
  table->verticalHeader()->hide();
  int row = 0;
  for (const DateRepair& repair : repairs) {
    table->setItem(row, 0, new QTableWidgetItem(LogText(data_set, repair.log)));
    table->setItem(row, 1, new QTableWidgetItem(RangeText(repair.old_first, repair.old_last, utc_offset_hours)));
    table->setItem(row, 2, new QTableWidgetItem(RangeText(repair.new_first, repair.new_last, utc_offset_hours)));
    ++row;
  }
  table->resizeColumnsToContents();
  table->horizontalHeader()->setStretchLastSection(true);
  return table;
}

}  // namespace walrim
