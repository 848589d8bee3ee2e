// In which encoding a text is, and its lines whatever that is.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace walrim {

/// How a text is encoded.
enum class TextEncoding : std::uint8_t { ShiftJis, Utf8 };

/// The bytes that a UTF-8 text may begin with to say that it is one.
inline constexpr std::string_view Utf8Mark = "\xEF\xBB\xBF";

/// Finds out how a text is encoded from all its bytes, which may come in pieces.
///
/// A text with the UTF-8 mark, and one that is valid UTF-8, is UTF-8, all else Shift-JIS (code page 932). One where
/// every sequence that is not ASCII is a pair of half-width katakana is Shift-JIS although it is valid UTF-8 too.
class EncodingDetector {
 public:
  void Add(std::string_view bytes);
  /// What the bytes so far are as a whole text.
  [[nodiscard]] TextEncoding Encoding() const;

 private:
  void Check(std::string_view bytes);

  std::string begun_;  ///< the beginning of a character whose rest has not come
  std::string first_;  ///< as many bytes as the mark has
  bool valid_ = true;
  bool pairs_ = false;   ///< pairs of half-width katakana have come
  bool others_ = false;  ///< and what can only be UTF-8
};

/// How a whole text is encoded.
[[nodiscard]] TextEncoding EncodingOf(std::string_view bytes);

/// The lines of a text, one after the other, in UTF-8. Lines end with CR LF, LF or CR; a text's last end begins no
/// further line.
class LineSource {
 public:
  /// Gives the next bytes of a text; nothing at its end. The bytes stay valid until the next call.
  using Fetch = std::function<std::string_view()>;

  /// The lines of a text that is held in memory; it must outlive this object.
  LineSource(std::string_view bytes, TextEncoding encoding);
  /// The lines of what is fetched; only a line and a piece are held at once.
  LineSource(Fetch fetch, TextEncoding encoding);

  /// The next line without its end, valid until the next call; false behind the last one.
  [[nodiscard]] bool Next(std::string_view& line);
  /// The number of the line that came last, from 1.
  [[nodiscard]] int LineNumber() const { return line_number_; }
  /// All that was not read yet, with its line ends, as bytes in the text's own encoding; without the UTF-8 mark. Stops
  /// where there are more than most.
  [[nodiscard]] std::string RestBytes(std::size_t most = static_cast<std::size_t>(-1));
  /// How the bytes are encoded, as far as that was found out without knowing the format.
  [[nodiscard]] TextEncoding Encoding() const { return encoding_; }

 private:
  [[nodiscard]] bool FetchPiece();
  [[nodiscard]] bool NextBytes(std::string_view& line);
  [[nodiscard]] std::string_view Decoded(std::string_view bytes);

  Fetch fetch_;
  TextEncoding encoding_;
  std::string_view piece_;     ///< what is left of the bytes fetched last
  std::size_t line_feed_ = 0;  ///< the first line feed in it, or its end
  std::string begun_;          ///< the beginning of a line that earlier pieces held
  std::string decoded_;
  bool at_start_ = true;
  bool marked_ = false;         ///< the text began with the UTF-8 mark
  bool behind_return_ = false;  ///< the piece before ended with a CR, whose LF may come
  int line_number_ = 0;
};

}  // namespace walrim
