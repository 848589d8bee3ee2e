#include "formats/StatementParser.h"

#include <algorithm>

#include "geo/AngleNotation.h"
#include "text/Scan.h"

namespace walrim {
namespace {

/// Finds the items of a statement's body and gives each key its value.
class ItemScan {
 public:
  ItemScan(const StatementRow& row, bool strict, Statement& to) : row_(row), strict_(strict), to_(to) {}

  /// Gives how many keys it found.
  std::ptrdiff_t Run(std::string_view body) {
    body_ = body;
    std::size_t at = Visit(0, 0);
    while ((at = NextSeparator(at)) != std::string_view::npos)
      at = Visit(at, at + 1);
    Close(body.size());
    return std::count(seen_.begin(), seen_.end(), true);
  }

 private:
  [[nodiscard]] std::size_t NextSeparator(std::size_t at) const {
    return strict_ ? body_.find(',', at) : body_.find_first_of(", \t", at);
  }

  /// Looks for a key in the item that begins at begin and ends the value before it at end. Gives where it looked.
  std::size_t Visit(std::size_t end, std::size_t begin) {
    std::size_t at = begin;
    bool tab = false;
    for (; at < body_.size() && IsSpace(body_[at]); ++at)
      tab = tab || body_[at] == '\t';
    if (begin > 0 && strict_ && !tab) return at;
    const std::size_t key = KeyAt(at);
    if (key == MaxStatementValues) {
      if (begin == 0 && row_.bare_selector) Open(0, at);
      return at;
    }
    Close(end);
    Open(key, at + row_.keys[key].size() + 1);
    return at;
  }

  [[nodiscard]] std::size_t KeyAt(std::size_t at) const {
    const std::string_view item = body_.substr(at);
    // Keys usually stand in their order: the next one is looked for first.
    const std::size_t next = current_ == MaxStatementValues ? 0 : current_ + 1;
    for (std::size_t i = 0; i < MaxStatementValues; ++i) {
      const std::size_t key = (next + i) % MaxStatementValues;
      const std::string_view name = row_.keys[key];
      const bool is_key = !name.empty() && item.size() > name.size() && item[name.size()] == '=';
      const bool bare = key == 0 && row_.bare_selector;
      if (is_key && !bare && !seen_[key] && BeginsWithWord(item, name)) return key;
    }
    return MaxStatementValues;
  }

  void Open(std::size_t key, std::size_t at) {
    current_ = key;
    value_at_ = at;
    seen_[key] = true;
  }

  void Close(std::size_t end) {
    if (current_ == MaxStatementValues) return;
    const std::string_view value = body_.substr(value_at_, end - value_at_);
    const bool bare = row_.bare_selector && current_ == 0;
    to_.values[current_] = strict_ && !bare ? value : TrimSpace(value);
  }

  const StatementRow& row_;
  bool strict_;
  Statement& to_;
  std::string_view body_;
  std::array<bool, MaxStatementValues> seen_{};
  std::size_t current_ = MaxStatementValues;
  std::size_t value_at_ = 0;
};

}  // namespace

std::optional<Statement> ParseStatement(std::string_view text) {
  text = TrimSpace(text);
  if (text.starts_with("//")) return Statement();
  std::string_view body = text.substr(0, text.find(';'));
  const StatementRow* const row = FindStatementRow(TakeUntilAny(body, " \t,"));
  if (row == nullptr) return text.find("//") == std::string_view::npos ? std::nullopt : std::optional(Statement());
  const bool strict = body.starts_with('\t');
  // The blank or TAB behind the keyword goes; a comma there was a line end.
  TakeBytes(body, 1);
  Statement statement{row->keyword, {}};
  // A point or line is never built with its number alone: then its keys stand on one line in spite of the TAB.
  if (ItemScan(*row, strict, statement).Run(body) < 2 && strict && row->first_always && !row->keys[1].empty()) {
    statement = {row->keyword, {}};
    ItemScan(*row, false, statement).Run(body);
  }
  return statement;
}

std::optional<GeoPoint> TakePosition(std::string_view& pos) {
  const std::string_view lat = TrimBlanks(TakeUpTo(pos, ','));
  const std::string_view lon = TrimBlanks(TakeUpTo(pos, ','));
  return ReadPosition(lat, lon, AngleNotation::MPS);
}

bool StatementSplitter::Next(std::string& statement) {
  statement.clear();
  for (std::string_view line; lines_.Next(line);) {
    if (std::all_of(line.begin(), line.end(), IsSpace) || line.starts_with("//")) continue;
    if (!statement.empty() && statement.back() != ',') statement += ',';
    statement.append(line);
    if (line.find(';') != std::string_view::npos) return true;
  }
  incomplete_ = !statement.empty();
  return false;
}

}  // namespace walrim
