// Values of the records' texts, evaluated leniently and kept within what the device tables hold.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace walrim {

/// LeadingInteger within 0..255.
[[nodiscard]] std::uint8_t ByteOf(std::string_view text);
/// LeadingInteger within 0..65535.
[[nodiscard]] std::uint16_t WordOf(std::string_view text);
/// LeadingNumber as a single; UnknownMetres where it fits none.
[[nodiscard]] float SingleOf(std::string_view text);
/// A height, depth or distance as SingleOf reads it.
[[nodiscard]] std::string MetresText(float metres);
/// LeadingInteger within the receiver's unsigned 32-bit times.
[[nodiscard]] double TimeOf(std::string_view text);
/// True for the word TRUE in any case.
[[nodiscard]] bool TruthOf(std::string_view text);
[[nodiscard]] std::string_view TruthText(bool truth);

/// Puts a text into one that a zero byte ends on the wire: zeros inside become blanks.
void AssignText(std::string& to, std::string_view text);
/// The same in upper case.
void AssignUpper(std::string& to, std::string_view text);

void AssignNumber(std::string& to, long long value);

}  // namespace walrim
