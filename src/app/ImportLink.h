// What a text that was dropped, pasted or typed refers to.
#pragma once

#include <string>
#include <string_view>

namespace walrim {

/// The schemes of links that the import knows. Http and Https are fetched.
enum class LinkScheme { None, Http, Https, Ftp, File };

/// A text's link: its first line without blanks around it. scheme is None, and link empty, for a text that is none.
struct ImportLink {
  LinkScheme scheme = LinkScheme::None;
  std::string link;
};

/// Reads "HTTP://", "HTTPS://", "FTP://" and "FILE://", in any case, at the beginning of a text. Any one letter in the
/// place of the S counts as Https; whoever fetches it refuses what it does not know.
[[nodiscard]] ImportLink LinkOf(std::string_view text);

/// The path of a File link, or why it has none.
struct LocalPath {
  std::string path;
  std::string refusal;  ///< empty where there is a path
};

/// What follows "file://" with its escapes decoded and every "/" turned to separator. A drive ("C:") may follow two or
/// three slashes; another computer's name is refused.
[[nodiscard]] LocalPath LocalPathOf(std::string_view link, char separator);

}  // namespace walrim
