#include <algorithm>

#include "formats/StatementTable.h"
#include "formats/WptLine.h"

namespace walrim {
namespace {

std::string LowerCase(std::string_view text) {
  std::string lower(text);
  for (char& c : lower) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  }
  return lower;
}

bool IsSpace(char c) {
  return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

std::string_view WithoutSpace(std::string_view text) {
  while (!text.empty() && IsSpace(text.front()))
    text.remove_prefix(1);
  while (!text.empty() && IsSpace(text.back()))
    text.remove_suffix(1);
  return text;
}

/// Finds the items of a statement's body and gives each key its value.
class ItemScan {
 public:
  ItemScan(const StatementRow& row, bool strict, Statement& to) : row_(row), strict_(strict), to_(to) {}

  /// Gives how many keys it found.
  std::ptrdiff_t Run(std::string_view body) {
    body_ = body;
    Visit(0, 0);
    for (std::size_t at = 0; at < body.size(); ++at) {
      if (body[at] == ',' || body[at] == '\n') Visit(at, at + 1);
    }
    Close(body.size());
    return std::count(seen_.begin(), seen_.end(), true);
  }

 private:
  /// Looks for a key in the item that begins at begin and ends the value before it at end.
  void Visit(std::size_t end, std::size_t begin) {
    std::size_t at = begin;
    while (at < body_.size() && body_[at] != '\n' && IsSpace(body_[at]))
      ++at;
    if (begin > 0 && strict_ && body_.substr(begin, at - begin).find('\t') == std::string_view::npos) return;
    const std::size_t key = KeyAt(at);
    if (key == MaxStatementValues) {
      if (begin == 0 && row_.bare_selector) Open(0, at);
      return;
    }
    Close(end);
    Open(key, at + row_.keys[key].size() + 1);
  }

  [[nodiscard]] std::size_t KeyAt(std::size_t at) const {
    const std::string_view item = body_.substr(at);
    for (std::size_t key = row_.bare_selector ? 1 : 0; key < row_.keys.size() && !row_.keys[key].empty(); ++key) {
      const std::string_view name = row_.keys[key];
      if (!seen_[key] && item.starts_with(name) && item.size() > name.size() && item[name.size()] == '=') return key;
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
    std::string_view value = body_.substr(value_at_, end - value_at_);
    if (!value.empty() && value.back() == '\r') value.remove_suffix(1);
    const bool bare = row_.bare_selector && current_ == 0;
    to_.values[current_] = strict_ && !bare ? value : WithoutSpace(value);
  }

  const StatementRow& row_;
  bool strict_;
  Statement& to_;
  std::string_view body_;
  std::array<bool, MaxStatementValues> seen_{};
  std::size_t current_ = MaxStatementValues;
  std::size_t value_at_ = 0;
};

/// The text between two marks; without the second, all behind the first.
std::string_view Between(std::string_view text, std::string_view first, std::string_view second) {
  const std::size_t at = text.find(first);
  if (at == std::string_view::npos) return {};
  text.remove_prefix(at + first.size());
  return text.substr(0, text.find(second));
}

Statement ParseHeader(std::string_view text) {
  Statement statement{"hedder", {}};
  statement.values[0] = Between(text, HeaderStart, HeaderTempl);
  statement.values[1] = Between(text, HeaderTempl, HeaderDate);
  statement.values[2] = Between(text, HeaderDate, ";");
  return statement;
}

Statement ParseComment(std::string_view text) {
  if (text.starts_with("//")) text.remove_prefix(2);
  if (!text.empty() && text.back() == ';') text.remove_suffix(1);
  return {"comment", {text}};
}

Statement ParseMapServer(std::string_view body) {
  Statement statement{"mapserver", {}};
  body = WithoutSpace(body);
  if (body == "end") {
    statement.values[0] = body;
  } else {
    statement.values[0] = Between(body, ScriptStart, Savable);
    statement.values[1] = Between(body, Savable, " ");
  }
  return statement;
}

}  // namespace

std::optional<Statement> ParseStatement(std::string_view text) {
  const bool strict = text.starts_with("\t\t");
  text = WithoutSpace(text);
  if (text.starts_with(HeaderStart)) return ParseHeader(text);
  if (text.starts_with("//")) return ParseComment(text);
  const std::string_view whole = text;
  text = text.substr(0, text.find(';'));
  const std::size_t keyword_size = std::min(text.find_first_of(" \t\r\n,"), text.size());
  const StatementRow* row = keyword_size > 9 ? nullptr : FindStatementRow(LowerCase(text.substr(0, keyword_size)));
  if (row == nullptr || row->layout == StatementLayout::Comment || row->layout == StatementLayout::Header) {
    if (whole.find("//") == std::string_view::npos) return std::nullopt;
    return ParseComment(whole);
  }
  // The blank or TAB behind the keyword goes; a comma there was a line end.
  const std::string_view body = text.substr(std::min(keyword_size + 1, text.size()));
  if (row->layout == StatementLayout::MapServer) return ParseMapServer(body);
  Statement statement{row->keyword, {}};
  // A point or line is never built with its number alone: then its keys stand behind commas in spite of its TABs.
  if (ItemScan(*row, strict, statement).Run(body) < 2 && strict && row->first_always && !row->keys[1].empty()) {
    statement = {row->keyword, {}};
    ItemScan(*row, false, statement).Run(body);
  }
  return statement;
}

bool StatementSplitter::Next(std::string& statement) {
  statement.clear();
  while (offset_ < script_.size()) {
    const std::string_view line = TakeTextLine(script_, offset_);
    if (WithoutSpace(line).empty() || line.starts_with("//")) continue;
    if (!statement.empty() && statement.back() != ',') statement += ',';
    statement.append(line);
    if (line.find(';') != std::string_view::npos) return true;
  }
  incomplete_ = !statement.empty();
  return false;
}

}  // namespace walrim
