#include "formats/XmlSyntax.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <system_error>
#include <utility>
#include <vector>

#include "formats/Messages.h"
#include "text/NamedEncoding.h"
#include "text/Numbers.h"
#include "text/Scan.h"
#include "text/Utf8.h"

namespace walrim {
namespace {

using namespace format_messages;
using namespace std::string_view_literals;

constexpr std::string_view NoCharacter = "\xEF\xBF\xBD";

constexpr bool IsControl(char c) {
  return static_cast<unsigned char>(c) < 0x20 && c != '\t' && c != '\r' && c != '\n';
}

/// Whether U+FFFE or U+FFFF, which no text holds, stands at the front.
bool IsNoncharacter(std::string_view text) {
  return text.starts_with("\xEF\xBF\xBE") || text.starts_with("\xEF\xBF\xBF");
}

bool IsXmlCharacter(unsigned long code) {
  if (code < 0x20) return code == '\t' || code == '\n' || code == '\r';
  return code <= 0x10FFFF && code != 0xFFFE && code != 0xFFFF && (code < 0xD800 || code > 0xDFFF);
}

/// Whether a text, up to the semicolon, is one of the references that every XML text may use.
bool IsKnownReference(std::string_view name) {
  if (!Take(name, '#')) return name == "amp" || name == "lt" || name == "gt" || name == "quot" || name == "apos";
  const int base = Take(name, 'x') ? 16 : 10;
  unsigned long code = 0;
  const auto [end, error] = std::from_chars(name.data(), name.data() + name.size(), code, base);
  return !name.empty() && error == std::errc() && end == name.data() + name.size() && IsXmlCharacter(code);
}

/// Some bytes of all.
class ByteSet {
 public:
  constexpr explicit ByteSet(std::string_view bytes) {
    for (const char c : bytes)
      held_[static_cast<unsigned char>(c)] = true;
  }
  /// Takes everything off the front up to the first of them, which stays.
  [[nodiscard]] constexpr std::string_view TakeUntil(std::string_view& text) const {
    std::size_t length = 0;
    while (length < text.size() && !held_[static_cast<unsigned char>(text[length])])
      ++length;
    return TakeBytes(text, length);
  }

 private:
  std::array<bool, 256> held_{};
};

/// No name goes on with these.
constexpr ByteSet NameEnds(" \t\r\n/><\"'=&");
/// What stands for itself neither in an element nor in an attribute in double quotes.
constexpr ByteSet Marks("&<>\"");

/// Not 0 where a block has bytes that need a closer look: control characters, and what a noncharacter may begin with.
/// Bytes in place of truths let all of a block be compared at once.
constexpr std::size_t BlockSize = 64;
unsigned char Suspicion(const char* block) {
  unsigned char suspicion = 0;
  for (std::size_t i = 0; i < BlockSize; ++i) {
    const auto c = static_cast<unsigned char>(block[i]);
    const unsigned char control = c < 0x20 ? 1 : 0;
    const unsigned char line_feed = c == '\n' ? 1 : 0;
    suspicion |= (control ^ line_feed) | (c == 0xEF ? 1 : 0);
  }
  return suspicion;
}

/// Where the first byte is that no XML text may hold; the text's size where there is none.
std::size_t FindNoCharacter(std::string_view text) {
  for (std::size_t begin = 0; begin < text.size(); begin += BlockSize) {
    const std::size_t end = std::min(begin + BlockSize, text.size());
    if (end - begin == BlockSize && Suspicion(text.data() + begin) == 0) continue;
    for (std::size_t i = begin; i < end; ++i) {
      if (IsControl(text[i]) || IsNoncharacter(text.substr(i))) return i;
    }
  }
  return text.size();
}

/// Walks the marks of a text once.
class XmlChecker {
 public:
  explicit XmlChecker(std::string_view text)
      : text_(text), rest_(text), references_(text.find('&') != std::string_view::npos) {}

  XmlFindings Run() {
    if (const std::size_t at = FindNoCharacter(text_); at != text_.size()) Fail(NoXmlCharacter, text_.substr(at));
    while (!rest_.empty() && why_.empty())
      Step();
    if (why_.empty() && (level_ > 0 || !RootSeen())) Fail(NotWellFormed);
    if (!why_.empty()) found_.problem = XmlProblem{why_, Offset()};
    return std::move(found_);
  }

 private:
  [[nodiscard]] bool RootSeen() const { return !found_.root_tag.empty(); }
  [[nodiscard]] std::size_t Offset() const { return text_.size() - rest_.size(); }

  void Fail(std::string_view why) { why_ = why; }
  /// at is a part of the text.
  void Fail(std::string_view why, std::string_view at) {
    why_ = why;
    rest_ = text_.substr(static_cast<std::size_t>(at.data() - text_.data()));
  }

  void Step() {
    if (rest_.front() != '<') return PassText();
    const char mark = rest_.size() > 1 ? rest_[1] : '\0';
    if (mark == '/') return PassEnd();
    if (mark != '!' && mark != '?') return PassTag();
    if (rest_.starts_with("<!--")) return PassUntil("-->", 4);
    if (rest_.starts_with("<?")) return PassUntil("?>", 2);
    if (rest_.starts_with("<![CDATA[") && level_ > 0) return PassUntil("]]>", 9);
    if (rest_.starts_with("<!DOCTYPE") && !RootSeen()) return PassDoctype();
    PassTag();
  }

  void PassUntil(std::string_view end, std::size_t from) {
    const std::size_t at = rest_.find(end, from);
    if (at == std::string_view::npos) return Fail(NotWellFormed);
    rest_.remove_prefix(at + end.size());
  }

  void PassText() {
    const std::string_view text = TakeBytes(rest_, rest_.find('<'));
    if (level_ > 0) return references_ ? static_cast<void>(ReferencesKnown(text)) : void();
    if (const std::string_view stray = TrimSpace(text); !stray.empty()) Fail(NotWellFormed, stray);
  }

  bool ReferencesKnown(std::string_view text) {
    if (!references_) return true;
    for (std::size_t at = text.find('&'); at != std::string_view::npos; at = text.find('&', at + 1)) {
      const std::size_t end = text.find(';', at);
      if (end != std::string_view::npos && IsKnownReference(text.substr(at + 1, end - at - 1))) continue;
      Fail(UnknownEntity, text.substr(at));
      return false;
    }
    return true;
  }

  void PassDoctype() {
    int brackets = 0;
    for (std::size_t i = 0; i < rest_.size(); ++i) {
      const char c = rest_[i];
      if (rest_.substr(i).starts_with("<!ENTITY")) return Fail(EntityDeclared);
      brackets += c == '[' ? 1 : c == ']' ? -1 : 0;
      if (c == '>' && brackets == 0) return rest_.remove_prefix(i + 1);
    }
    Fail(NotWellFormed);
  }

  void PassEnd() {
    // Within the root's elements it need not be found where a tag ends.
    if (level_ > 2) {
      --level_;
      return rest_.remove_prefix(2);
    }
    const std::size_t end = rest_.find('>');
    if (end == std::string_view::npos || level_ == 0) return Fail(NotWellFormed);
    if (--level_ == 0 && NameOfEnd(rest_.substr(0, end)) != root_name_) return Fail(NotWellFormed);
    rest_.remove_prefix(end + 1);
    if (level_ == 1) found_.elements.push_back(text_.substr(element_, Offset() - element_));
  }

  static std::string_view NameOfEnd(std::string_view tag) { return TrimSpace(tag.substr(2)); }

  void PassTag() {
    if (level_ == 0 && RootSeen()) return Fail(NotWellFormed);
    std::string_view tag = rest_.substr(1);
    const std::string_view name = NameEnds.TakeUntil(tag);
    const bool bare = tag.starts_with('>');
    const bool whole = !name.empty() && !IsDigit(name.front()) && (bare || PassAttributes(tag));
    const bool closed = whole && Take(tag, '/');
    if (!whole || !Take(tag, '>')) {
      if (why_.empty()) Fail(NotWellFormed);
      return;
    }
    NoteTag(name, rest_.substr(0, rest_.size() - tag.size()), closed);
    if (!closed && ++level_ > MostXmlLevels) return Fail(TooDeep);
    rest_ = tag;
  }

  void NoteTag(std::string_view name, std::string_view tag, bool closed) {
    if (level_ == 0) {
      root_name_ = name;
      found_.root_tag = tag;
    } else if (level_ == 1) {
      element_ = Offset();
      if (closed) found_.elements.push_back(tag);
    }
  }

  /// Takes the attributes off a tag; false where one is none, or comes twice.
  bool PassAttributes(std::string_view& tag) {
    names_.clear();
    for (;;) {
      const std::size_t before = tag.size();
      TakeSpace(tag);
      if (tag.empty() || tag.front() == '/' || tag.front() == '>') return NamesDiffer();
      if (tag.size() == before || !PassAttribute(tag)) return false;
      if (names_.size() > MostXmlAttributes) {
        Fail(TooManyAttributes);
        return false;
      }
    }
  }

  bool PassAttribute(std::string_view& tag) {
    names_.push_back(NameEnds.TakeUntil(tag));
    found_.inner_namespaces |= level_ > 0 && names_.back().starts_with("xmlns");
    TakeSpace(tag);
    if (names_.back().empty() || !Take(tag, '=')) return false;
    TakeSpace(tag);
    if (tag.empty() || (tag.front() != '"' && tag.front() != '\'')) return false;
    const char quote = TakeBytes(tag, 1).front();
    const std::string_view value = TakeBytes(tag, tag.find(quote));
    if (value.size() > MostXmlAttributeBytes) Fail(TooLongAttribute);
    return why_.empty() && Take(tag, quote) && value.find('<') == std::string_view::npos && ReferencesKnown(value);
  }

  bool NamesDiffer() {
    if (names_.size() < 2) return true;
    std::sort(names_.begin(), names_.end());
    return std::adjacent_find(names_.begin(), names_.end()) == names_.end();
  }

  static void TakeSpace(std::string_view& text) {
    while (!text.empty() && IsSpace(text.front()))
      text.remove_prefix(1);
  }

  std::string_view text_;
  std::string_view rest_;  ///< where something is wrong, from there on
  std::string_view why_;
  std::vector<std::string_view> names_;  ///< of the attributes of a tag
  int level_ = 0;
  bool references_ = false;  ///< there is something that may be one
  std::string_view root_name_;
  std::size_t element_ = 0;  ///< where the present one of the root's elements begins
  XmlFindings found_;
};

std::string_view ReferenceFor(char mark) {
  return mark == '&' ? "&amp;" : mark == '<' ? "&lt;" : mark == '>' ? "&gt;" : "&quot;";
}

/// What a text says that it is encoded in; empty where it does not.
std::string_view DeclaredEncoding(std::string_view text) {
  if (!text.starts_with("<?xml")) return {};
  const std::string_view declaration = text.substr(0, text.find("?>"));
  std::size_t at = declaration.find("encoding");
  if (at == std::string_view::npos) return {};
  at = declaration.find_first_of("\"'", at);
  if (at == std::string_view::npos) return {};
  const std::size_t end = declaration.find(declaration[at], at + 1);
  return end == std::string_view::npos ? std::string_view() : declaration.substr(at + 1, end - at - 1);
}

}  // namespace

XmlFindings CheckXml(std::string_view text) {
  return XmlChecker(text).Run();
}

std::optional<std::string> DecodeXml(std::string bytes, bool known_utf8) {
  constexpr struct {
    std::string_view begin;
    std::size_t mark;
    std::string_view name;
  } Wide[]{{"\xFF\xFE\0\0"sv, 4, "UTF-32LE"}, {"\0\0\xFE\xFF"sv, 4, "UTF-32BE"}, {"\xFF\xFE"sv, 2, "UTF-16LE"},
           {"\xFE\xFF"sv, 2, "UTF-16BE"},     {"<\0\0\0"sv, 0, "UTF-32LE"},      {"\0\0\0<"sv, 0, "UTF-32BE"},
           {"<\0"sv, 0, "UTF-16LE"},          {"\0<"sv, 0, "UTF-16BE"}};
  for (const auto& [begin, mark, name] : Wide) {
    if (bytes.starts_with(begin)) return DecodeNamed(std::string_view(bytes).substr(mark), name);
  }
  const std::string_view declared = DeclaredEncoding(bytes);
  if (!known_utf8 && !declared.empty() && !SameWord(declared, "UTF-8")) return DecodeNamed(bytes, declared);
  return IsValidUtf8(bytes) ? std::optional(std::move(bytes)) : std::nullopt;
}

std::string RootElement(std::string_view beginning) {
  std::string text(beginning);
  std::erase_if(text, [](char c) { return c == '\0' || c == '\xFE' || c == '\xFF'; });
  std::string_view rest = text;
  Take(rest, "\xEF\xBB\xBF");
  for (rest = TrimSpace(rest); rest.starts_with("<?") || rest.starts_with("<!"); rest = TrimSpace(rest)) {
    const std::string_view end = rest.starts_with("<!--") ? "-->" : rest.starts_with("<?") ? "?>" : ">";
    // The declarations of a document type may stand in brackets.
    const std::size_t bracket = rest.starts_with("<!--") ? rest.size() : std::min(rest.find('['), rest.size());
    const std::size_t from = bracket < rest.find(end) ? rest.find(']', bracket) : 0;
    const std::size_t at = rest.find(end, from);
    if (at == std::string_view::npos) return {};
    rest.remove_prefix(at + end.size());
  }
  if (!Take(rest, '<')) return {};
  const std::string_view name = TakeUntilAny(rest, " \t\r\n/>");
  return std::string(name.substr(name.find(':') + 1));
}

std::string XmlCharacters(std::string_view text) {
  std::string characters;
  if (FindNoCharacter(text) == text.size() && IsValidUtf8(text)) return characters.append(text);
  while (!text.empty()) {
    if (IsControl(text.front())) {
      characters.append(NoCharacter);
      text.remove_prefix(1);
    } else if (static_cast<unsigned char>(text.front()) < 0x80) {
      characters += text.front();
      text.remove_prefix(1);
    } else {
      const bool none = IsNoncharacter(text);
      const char32_t character = TakeCharacter(text);
      AppendCharacter(characters, none ? U'\xFFFD' : character);
    }
  }
  return characters;
}

void AppendXmlText(std::string& out, std::string_view text) {
  for (;;) {
    out.append(Marks.TakeUntil(text));
    if (text.empty()) return;
    out.append(ReferenceFor(TakeBytes(text, 1).front()));
  }
}

}  // namespace walrim
