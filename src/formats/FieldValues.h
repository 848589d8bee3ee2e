// Values of the fields and columns of lines, read leniently and kept within what the records hold.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace walrim {

/// A column's text: what stands in ="...", else the column without quotes and equals signs. scratch holds the text
/// where it had to be copied.
[[nodiscard]] std::string_view PlainText(std::string_view column, std::string& scratch);
/// Whether a column is ="text" as a whole.
[[nodiscard]] bool IsWrapped(std::string_view column);
/// Whether a column without quotes and equals signs is a word, in any case.
[[nodiscard]] bool SaysWord(std::string_view column, std::string_view word);

/// LeadingInteger within 0..255.
[[nodiscard]] std::uint8_t ByteOf(std::string_view text);
/// LeadingInteger within 0..65535.
[[nodiscard]] std::uint16_t WordOf(std::string_view text);
/// Metres; UnknownMetres where they fit no single.
[[nodiscard]] float SingleOf(std::string_view text);
/// The number that stands for a height or depth that is not known.
inline constexpr float UnknownMetres = 1.0e25F;
/// A height or depth; nothing for UnknownMetres.
[[nodiscard]] std::optional<float> MetresOf(std::string_view text);
void AppendMetres(std::string& out, std::optional<float> metres);
/// True for the word TRUE in any case.
[[nodiscard]] bool TruthOf(std::string_view text);
/// A text with blanks for zero characters.
[[nodiscard]] std::string LineText(std::string_view text);
/// A text with blanks for what would end a column or a line: zero characters, TABs and line ends.
[[nodiscard]] std::string OneLine(std::string_view text);
/// Capitals, with blanks for zero characters.
[[nodiscard]] std::string CapitalText(std::string_view text);
/// The same cut to the two bytes of a state or a country.
[[nodiscard]] std::string StateText(std::string_view text);

}  // namespace walrim
