// The rules of XML for texts that come from outside, and the writing of texts into it.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace walrim {

/// Why and where a text is not taken as XML.
struct XmlProblem {
  std::string_view why;  ///< in Japanese
  std::size_t offset = 0;
};

struct XmlFindings {
  std::optional<XmlProblem> problem;
  std::string_view root_tag;               ///< of the beginning of the root, a part of the text
  std::vector<std::string_view> elements;  ///< the root's, each a part of the text
  bool inner_namespaces = false;           ///< an element below the root says what a prefix stands for
};

/// Looks through a UTF-8 text. What keeps it from being taken: it is not well-formed, declares or uses entities other
/// than XML's own, or has elements that lie deeper than MostXmlLevels or have more attributes than MostXmlAttributes,
/// or longer ones than MostXmlAttributeBytes (a namespace is looked for among them at every element). Whether tags
/// within the root's elements match, and are names, is left to whoever builds a tree of them.
[[nodiscard]] XmlFindings CheckXml(std::string_view text);
inline constexpr int MostXmlLevels = 100;
inline constexpr std::size_t MostXmlAttributes = 100;
inline constexpr std::size_t MostXmlAttributeBytes = 65536;

/// UTF-8 of an XML text in any of the encodings that XML may be in: by its byte order mark, by its first bytes, by what
/// it declares, else UTF-8. known_utf8 says that it is UTF-8 whatever it declares. Nothing where it is not what it
/// says, or says what nobody knows.
[[nodiscard]] std::optional<std::string> DecodeXml(std::string bytes, bool known_utf8);

/// The local name of the first element of a text of which only the beginning may be there; empty where it is no XML.
/// Bytes of UTF-16 will do.
[[nodiscard]] std::string RootElement(std::string_view beginning);

/// A text with U+FFFD for what no XML text may hold.
[[nodiscard]] std::string XmlCharacters(std::string_view text);
/// Appends a text as the content of an element or of an attribute in double quotes. XML must be able to hold it.
void AppendXmlText(std::string& out, std::string_view text);

}  // namespace walrim
