// Texts that may be links. A link is the text's first line; a path that is written as a link comes back from it, with
// another computer's name it is refused. The first byte chooses how the link is written, the rest is the text or path.
#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "app/ImportLink.h"
#include "text/Scan.h"

using namespace walrim;

namespace {

constexpr std::string_view LineEnds = "\r\n";
constexpr std::string_view Blanks = " \t\r\n";

void CheckAnyText(std::string_view text) {
  const ImportLink found = LinkOf(text);
  if (found.link.empty() != (found.scheme == LinkScheme::None)) std::abort();
  for (const char separator : {'/', '\\'}) {
    const LocalPath local = LocalPathOf(text, separator);
    if (local.path.empty() == local.refusal.empty()) std::abort();
    if (separator == '\\' && local.path.find('/') != std::string::npos) std::abort();
  }
  if (found.link.empty()) return;
  if (text.find(found.link) == std::string_view::npos || found.link.find_first_of(LineEnds) != std::string::npos)
    std::abort();
  const ImportLink again = LinkOf(found.link);
  if (again.scheme != found.scheme || again.link != found.link) std::abort();
  if (found.scheme != LinkScheme::File && LocalPathOf(found.link, '/').refusal.empty()) std::abort();
}

std::string InCases(std::string_view text, std::uint8_t choice) {
  std::string mixed(text);
  for (std::size_t i = 0; i < mixed.size(); ++i) {
    if ((choice >> (i % 8) & 1) != 0) mixed[i] = UpperCase(mixed[i]);
  }
  return mixed;
}

/// A link of each scheme with the text behind it, blanks around it and a line below.
void CheckSchemes(std::string_view text, std::uint8_t choice) {
  struct Scheme {
    std::string_view text;
    LinkScheme scheme;
  };
  constexpr std::array schemes{Scheme{"http://", LinkScheme::Http}, Scheme{"https://", LinkScheme::Https},
                               Scheme{"ftp://", LinkScheme::Ftp}, Scheme{"file://", LinkScheme::File},
                               Scheme{"mailto://", LinkScheme::None}};
  std::string line(text.substr(0, text.find_first_of(LineEnds)));
  line.erase(line.find_last_not_of(Blanks) + 1);
  for (const Scheme& one : schemes) {
    const std::string link = InCases(one.text, choice) + line;
    const ImportLink found = LinkOf(" \r\n" + link + "\t\r\nhttp://second");
    if (found.scheme != one.scheme) std::abort();
    if (found.link != (one.scheme == LinkScheme::None ? "" : link)) std::abort();
  }
}

std::string Escaped(std::string_view path, std::uint8_t choice) {
  constexpr std::string_view digits = "0123456789ABCDEFabcdef";
  std::string text;
  for (const char c : path) {
    const auto byte = static_cast<unsigned char>(c);
    const bool plain = c == '/' || (choice % 2 == 0 && c != '%');
    if (plain)
      text += c;
    else
      text.append(1, '%').append(1, digits[byte / 16U]).append(1, digits[byte % 16U]);
  }
  return text;
}

void CheckPath(std::string_view text, std::uint8_t choice) {
  const std::string path = "/" + std::string(text);
  const std::string escaped = Escaped(path, choice);
  for (const std::string_view host : {"", "localhost", "LocalHost"}) {
    const LocalPath local = LocalPathOf("file://" + std::string(host) + escaped, '/');
    const bool has_zero = path.find('\0') != std::string::npos;
    if (local.path != (has_zero ? "" : path)) std::abort();
  }
  if (!LocalPathOf("file://elsewhere" + escaped, '/').path.empty()) std::abort();
  if (path.find('\0') != std::string::npos) return;
  std::string expected = "C:" + path;
  std::replace(expected.begin(), expected.end(), '/', '\\');
  for (const std::string_view slashes : {"//", "///"}) {
    if (LocalPathOf("file:" + std::string(slashes) + "C:" + escaped, '\\').path != expected) std::abort();
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  if (size == 0) return 0;
  const std::string_view text(reinterpret_cast<const char*>(bytes) + 1, size - 1);
  CheckAnyText(text);
  CheckSchemes(text, bytes[0]);
  CheckPath(text, bytes[0]);
  return 0;
}
