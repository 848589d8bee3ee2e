#include "app/ImportLink.h"

#include <algorithm>

#include "app/Messages.h"
#include "text/PercentEscapes.h"
#include "text/Scan.h"
#include "text/Utf8.h"

namespace walrim {

namespace {

constexpr std::string_view SchemeEnd = "//";

/// scheme is what stands before the first "//".
LinkScheme SchemeOf(std::string_view scheme) {
  constexpr std::size_t HttpsLength = 6;
  if (SameWord(scheme, "HTTP:")) return LinkScheme::Http;
  if (SameWord(scheme, "FTP:")) return LinkScheme::Ftp;
  if (SameWord(scheme, "FILE:")) return LinkScheme::File;
  const bool https =
      scheme.size() == HttpsLength && BeginsWithWord(scheme, "HTTP") && IsLetter(scheme[4]) && scheme.ends_with(':');
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
  text = TrimSpace(text);
  const std::size_t end = text.find(SchemeEnd);
  if (end == std::string_view::npos) return {};
  const LinkScheme scheme = SchemeOf(text.substr(0, end));
  if (scheme == LinkScheme::None) return {};
  return {scheme, std::string(TrimSpace(text.substr(0, text.find_first_of("\r\n"))))};
}

LocalPath LocalPathOf(std::string_view link, char separator) {
  const std::size_t end = link.find(SchemeEnd);
  if (end == std::string_view::npos || SchemeOf(link.substr(0, end)) != LinkScheme::File)
    return {{}, std::string(messages::NoFileLink)};
  std::string_view rest = link.substr(end + SchemeEnd.size());
  const std::string_view host = TakeHost(rest);
  if (!host.empty() && !SameWord(host, "LOCALHOST"))
    return {{}, messages::FileOfAnotherComputer(WithoutControlCharacters(host))};
  std::string path = DecodePercentEscapes(rest);
  const bool slash_before_drive = separator == '\\' && path.starts_with('/') && BeginsWithDrive(path.substr(1));
  if (slash_before_drive) path.erase(0, 1);
  if (path.empty() || path.find('\0') != std::string::npos) return {{}, std::string(messages::NoFileName)};
  std::replace(path.begin(), path.end(), '/', separator);
  return {path, {}};
}

}  // namespace walrim
