#include "app/ImportSource.h"

#include <algorithm>

#include "text/PercentEscapes.h"
#include "text/Utf8.h"

namespace walrim {

namespace {

constexpr std::string_view Blanks = " \t\r\n";
constexpr std::string_view SchemeEnd = "//";

std::string_view Trim(std::string_view text) {
  const std::size_t first = text.find_first_not_of(Blanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(Blanks) - first + 1);
}

bool IsLetter(char c) {
  return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

/// scheme is what stands before the first "//".
LinkScheme SchemeOf(std::string_view scheme) {
  constexpr std::size_t HttpsLength = 6;
  const std::string upper = UpperCase(scheme);
  if (upper == "HTTP:") return LinkScheme::Http;
  if (upper == "FTP:") return LinkScheme::Ftp;
  if (upper == "FILE:") return LinkScheme::File;
  const bool https =
      upper.size() == HttpsLength && upper.starts_with("HTTP") && IsLetter(upper[4]) && upper.ends_with(':');
  return https ? LinkScheme::Https : LinkScheme::None;
}

bool BeginsWithDrive(std::string_view path) {
  return path.size() >= 2 && IsLetter(path[0]) && path[1] == ':' &&
         (path.size() == 2 || path[2] == '/' || path[2] == '\\');
}

/// Takes the computer's name off the front of what follows "file://"; empty for a path that has none.
std::string_view TakeHost(std::string_view& rest) {
  if (BeginsWithDrive(rest)) return {};
  const std::string_view host = rest.substr(0, rest.find('/'));
  rest.remove_prefix(host.size());
  return host;
}

}  // namespace

ImportLink LinkOf(std::string_view text) {
  text = Trim(text);
  const std::size_t end = text.find(SchemeEnd);
  if (end == std::string_view::npos) return {};
  const LinkScheme scheme = SchemeOf(text.substr(0, end));
  if (scheme == LinkScheme::None) return {};
  return {scheme, std::string(Trim(text.substr(0, text.find_first_of("\r\n"))))};
}

LocalPath LocalPathOf(std::string_view link, char separator) {
  const std::size_t end = link.find(SchemeEnd);
  if (end == std::string_view::npos || SchemeOf(link.substr(0, end)) != LinkScheme::File)
    return {{}, "file://のリンクではありません．"};
  std::string_view rest = link.substr(end + SchemeEnd.size());
  const std::string_view host = TakeHost(rest);
  if (!host.empty() && UpperCase(host) != "LOCALHOST")
    return {{}, "ほかのコンピュータ（" + WithoutControlCharacters(host) + "）のファイルは読み込めません．"};
  std::string path = DecodePercentEscapes(rest);
  const bool slash_before_drive = separator == '\\' && path.starts_with('/') && BeginsWithDrive(path.substr(1));
  if (slash_before_drive) path.erase(0, 1);
  if (path.empty() || path.find('\0') != std::string::npos) return {{}, "リンクにファイルの名前がありません．"};
  std::replace(path.begin(), path.end(), '/', separator);
  return {path, {}};
}

}  // namespace walrim
