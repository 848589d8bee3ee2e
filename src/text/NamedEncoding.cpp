#include "text/NamedEncoding.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <iconv.h>

#include "text/Cp932.h"
#include "text/Scan.h"

namespace walrim {
namespace {

/// Names of Shift-JIS, which the converters of the system take for narrower than Windows' programs write it.
constexpr std::array<std::string_view, 7> ShiftJisNames{"SHIFT_JIS", "SHIFT-JIS",   "X-SJIS", "SJIS",
                                                        "CP932",     "WINDOWS-31J", "MS932"};
/// Only these are asked of the system, whatever a text calls itself.
constexpr std::array<std::string_view, 40> Names{
    "UTF-16LE",     "UTF-16BE",     "UTF-32LE",     "UTF-32BE",     "EUC-JP",       "EUC-KR",       "EUC-CN",
    "GB2312",       "GBK",          "GB18030",      "BIG5",         "ISO-8859-1",   "ISO-8859-2",   "ISO-8859-3",
    "ISO-8859-4",   "ISO-8859-5",   "ISO-8859-6",   "ISO-8859-7",   "ISO-8859-8",   "ISO-8859-9",   "ISO-8859-10",
    "ISO-8859-11",  "ISO-8859-13",  "ISO-8859-14",  "ISO-8859-15",  "ISO-8859-16",  "WINDOWS-1250", "WINDOWS-1251",
    "WINDOWS-1252", "WINDOWS-1253", "WINDOWS-1254", "WINDOWS-1255", "WINDOWS-1256", "WINDOWS-1257", "WINDOWS-1258",
    "WINDOWS-874",  "KOI8-R",       "KOI8-U",       "MACINTOSH",    "US-ASCII"};

template <std::size_t Count>
bool IsOneOf(const std::array<std::string_view, Count>& names, std::string_view name) {
  return std::any_of(names.begin(), names.end(), [name](std::string_view known) { return SameWord(known, name); });
}

std::optional<std::string> Convert(std::string_view bytes, const std::string& name) {
  const iconv_t converter = iconv_open("UTF-8", name.c_str());
  if (converter == reinterpret_cast<iconv_t>(-1)) return std::nullopt;
  std::string text;
  std::string in_bytes(bytes);
  char* in = in_bytes.data();
  std::size_t in_left = in_bytes.size();
  bool converted = true;
  while (converted && in_left > 0) {
    std::array<char, 16384> piece{};
    char* out = piece.data();
    std::size_t out_left = piece.size();
    const std::size_t result = iconv(converter, &in, &in_left, &out, &out_left);
    converted = result != static_cast<std::size_t>(-1) || errno == E2BIG;
    text.append(piece.data(), piece.size() - out_left);
  }
  iconv_close(converter);
  return converted ? std::optional(text) : std::nullopt;
}

}  // namespace

std::optional<std::string> DecodeNamed(std::string_view bytes, std::string_view name) {
  if (IsOneOf(ShiftJisNames, name)) return DecodeCp932(bytes);
  return IsOneOf(Names, name) ? Convert(bytes, UpperCase(name)) : std::nullopt;
}

}  // namespace walrim
