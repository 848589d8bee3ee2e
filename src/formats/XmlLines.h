// XML as lines: an element each, two blanks of indentation a level, ended by LF.
#pragma once

#include <string>
#include <string_view>

#include "formats/XmlSyntax.h"
#include "text/TextOutput.h"

namespace walrim {

/// Writes elements, a line each.
class XmlLines {
 public:
  explicit XmlLines(TextOutput& out) : out_(out) {}

  /// The declaration and the beginning of the root.
  void BeginText(std::string_view root, std::string_view attributes) {
    out_.Line().append(R"(<?xml version="1.0" encoding="UTF-8"?>)");
    out_.EndLine("\n");
    Begin(root, attributes);
  }
  void Begin(std::string_view name, std::string_view attributes = {}) {
    BeginTag(name).append(attributes);
    EndTag();
  }
  /// The attributes are to be appended to what is returned.
  std::string& BeginTag(std::string_view name) { return Indent().append(name); }
  void EndTag() {
    out_.EndLine(">\n");
    ++level_;
  }
  void End(std::string_view name) {
    --level_;
    Indent().append("/").append(name);
    out_.EndLine(">\n");
  }
  void Empty(std::string_view name, std::string_view attributes) {
    Indent().append(name).append(attributes);
    out_.EndLine("/>\n");
  }
  /// Nothing for an empty text.
  void Text(std::string_view name, std::string_view text) {
    if (text.empty()) return;
    std::string& line = Indent().append(name).append(">");
    AppendXmlText(line, text);
    line.append("</").append(name);
    out_.EndLine(">\n");
  }
  /// A line that is neither a tag nor has a mark.
  void Line(std::string_view text) {
    Indent().pop_back();
    out_.Line().append(text);
    out_.EndLine("\n");
  }

 private:
  /// Up to the "<" of a tag.
  std::string& Indent() {
    constexpr std::string_view Deepest = "                    <";
    return out_.Line().append(Deepest.substr(Deepest.size() - 1 - level_ * 2));
  }

  TextOutput& out_;
  std::size_t level_ = 0;
};

}  // namespace walrim
