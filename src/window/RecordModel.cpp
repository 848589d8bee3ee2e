#include "window/RecordModel.h"

#include <QFont>
#include <QGuiApplication>
#include <QPalette>
#include <algorithm>
#include <iterator>
#include <stdexcept>
#include <utility>

#include "geo/GeneralLib.h"
#include "text/Dates.h"
#include "text/Numbers.h"
#include "text/Utf8.h"

namespace walrim {
namespace {

/// From here up a height or depth is one that nobody knows.
constexpr double UnknownFrom = 1.0e24;

bool IsText(CellKind kind) {
  return kind == CellKind::Text || kind == CellKind::NamedCode;
}

Qt::Alignment AlignmentOf(CellKind kind) {
  if (IsText(kind)) return Qt::AlignLeft | Qt::AlignVCenter;
  if (kind == CellKind::Time || kind == CellKind::Truth) return Qt::AlignCenter;
  return Qt::AlignRight | Qt::AlignVCenter;
}

std::string_view Unwrapped(std::string_view text, ColumnForm form) {
  if (form == ColumnForm::Bare || !text.starts_with("=\"") || text.size() < 3) return text;
  text.remove_prefix(2);
  text.remove_suffix(1);
  return text;
}

/// The columns of a standard line. Only TAB ends one: a comma may stand in a text.
void CutColumns(std::string_view line, std::vector<std::string_view>& columns) {
  columns.clear();
  for (std::size_t tab = line.find('\t'); tab != std::string_view::npos; tab = line.find('\t')) {
    columns.push_back(line.substr(0, tab));
    line.remove_prefix(tab + 1);
  }
  columns.push_back(line);
}

double PointNumber(std::string_view text) {
  const std::size_t dash = text.find('-');
  const double point = dash == std::string_view::npos ? 0 : LeadingNumber(text.substr(dash + 1));
  return LeadingNumber(text) * 65536 + point;
}

std::optional<double> Seconds(std::string_view text) {
  const auto time = ParseDateTime(text);
  if (!time) return std::nullopt;
  return static_cast<double>(SecondsSinceGarminEpoch(*time));
}

}  // namespace

RecordModel::RecordModel(InternalData& data, const NameTablesByType& names, const Section& section,
                         std::span<const RecordColumn> columns, QObject* parent)
    : QAbstractTableModel(parent),
      data_(data),
      names_(names),
      section_(section),
      columns_(columns),
      writer_(std::in_place, data, names, TextSettings()) {}

int RecordModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

int RecordModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(columns_.size());
}

QVariant RecordModel::data(const QModelIndex& index, int role) const {
  if (!checkIndex(index, CheckIndexOption::IndexIsValid)) return {};
  const RecordColumn& column = columns_[static_cast<std::size_t>(index.column())];
  if (IsMissing(RefOf(index.row()))) {
    const QVariant mark = MissingMark(role);
    if (mark.isValid()) return mark;
  }
  switch (role) {
    case Qt::DisplayRole:
      return ShownText(RefOf(index.row()), column);
    case Qt::ToolTipRole:
      return CodeTip(RefOf(index.row()), column);
    case Qt::TextAlignmentRole:
      return static_cast<int>(AlignmentOf(column.kind));
    default:
      return {};
  }
}

QVariant RecordModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || section < 0 || section >= columnCount()) return {};
  const RecordColumn& column = columns_[static_cast<std::size_t>(section)];
  switch (role) {
    case Qt::DisplayRole:
      return QString::fromUtf8(column.title);
    case Qt::TextAlignmentRole:
      return static_cast<int>(AlignmentOf(column.kind));
    case Qt::ToolTipRole:
      if (column.kind == CellKind::Angle) return QString::fromStdString(settings_.datum + ", " + settings_.degree_type);
      return {};
    default:
      return {};
  }
}

QString RecordModel::ShownText(RowRef ref, const RecordColumn& column) const {
  if (!Holds(ref)) return {};
  const std::string text = CellText(ref, column);
  return QString::fromStdString(WithoutControlCharacters(TrimBlanks(text)));
}

/// What stands in the place of a record that never came looks like no record.
QVariant RecordModel::MissingMark(int role) const {
  switch (role) {
    case Qt::FontRole: {
      QFont font = QGuiApplication::font();
      font.setItalic(true);
      return font;
    }
    case Qt::ForegroundRole:
      return QGuiApplication::palette().brush(QPalette::PlaceholderText);
    case Qt::ToolTipRole:
    case Qt::AccessibleDescriptionRole:
      return QStringLiteral("受信機から届かなかった記録です");
    default:
      return {};
  }
}

QVariant RecordModel::CodeTip(RowRef ref, const RecordColumn& column) const {
  if (column.kind != CellKind::NamedCode || !Holds(ref)) return {};
  const std::string_view code = TrimBlanks(Field(ref, column.code_field));
  return QStringLiteral("コード %1").arg(QString::fromStdString(std::string(code)));
}

std::string RecordModel::CellText(RowRef ref, const RecordColumn& column) const {
  const std::string_view text = Field(ref, column.field);
  switch (column.kind) {
    case CellKind::Metres:
      return LeadingNumber(text) >= UnknownFrom ? std::string() : std::string(text);
    case CellKind::Truth:
      return text == "TRUE" ? "○" : "";
    case CellKind::NamedCode:
      return std::string(text.empty() ? Field(ref, column.code_field) : text);
    default:
      return std::string(text);
  }
}

std::string_view RecordModel::Field(RowRef ref, int field) const {
  if (field < 0) return {};
  Fetch(ref);
  const auto at = static_cast<std::size_t>(field);
  if (section_.Lead() + at >= line_columns_.size()) return {};
  return Unwrapped(line_columns_[section_.Lead() + at], section_.columns[at].form);
}

void RecordModel::Fetch(RowRef ref) const {
  if (fetched_ == ref) return;
  fetched_ = ref;
  line_.clear();
  try {
    AppendShownLine(*writer_, line_, ref);
  } catch (const std::out_of_range&) {
    line_.clear();
  }
  CutColumns(line_, line_columns_);
}

std::optional<double> RecordModel::NumberKey(RowRef ref, const RecordColumn& column) const {
  const std::string text = CellText(ref, column);
  if (TrimBlanks(text).empty()) return std::nullopt;
  switch (column.kind) {
    case CellKind::PointNumber:
      return PointNumber(text);
    case CellKind::Angle:
      return DegreesOfAngle(text, settings_.degree_type);
    case CellKind::Time:
      return Seconds(text);
    case CellKind::Truth:
      return 1;
    default:
      return LeadingNumber(text);
  }
}

void RecordModel::Refresh(const TextSettings& settings) {
  settings_ = settings;
  writer_.emplace(data_, names_, settings);
  fetched_.reset();
  ForgetDerived();
  if (!AddMissing(HeldRows())) return Reset();
  if (rows_.empty()) return;
  Reorder();
  Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1));
  Q_EMIT headerDataChanged(Qt::Horizontal, 0, columnCount() - 1);
}

/// Adds the rows that came at the end. False, with nothing done, when rows are gone.
bool RecordModel::AddMissing(const std::vector<RowRef>& held) {
  std::vector<RowRef> known = rows_;
  std::sort(known.begin(), known.end());
  if (!std::includes(held.begin(), held.end(), known.begin(), known.end())) return false;
  std::vector<RowRef> missing;
  std::set_difference(held.begin(), held.end(), known.begin(), known.end(), std::back_inserter(missing));
  if (missing.empty()) return true;
  beginInsertRows({}, rowCount(), rowCount() + static_cast<int>(missing.size()) - 1);
  rows_.insert(rows_.end(), missing.begin(), missing.end());
  endInsertRows();
  return true;
}

void RecordModel::Reset() {
  beginResetModel();
  fetched_.reset();
  rows_ = Ordered(HeldRows());
  endResetModel();
}

void RecordModel::AppendCopy(std::string& out, int row) const {
  const RowRef ref = RefOf(row);
  if (Holds(ref)) AppendLines(out, ref);
}

void RecordModel::AppendLine(std::string& out, std::string_view tag, int record, int point) const {
  const std::size_t before = out.size();
  try {
    writer_->AppendDataLine(out, tag, record, point);
    out.append("\r\n");
  } catch (const std::out_of_range&) {
    out.resize(before);
  }
}

}  // namespace walrim
