// In which encoding a text is, and its lines whatever that is.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

namespace walrim {

/// How a text is encoded.
enum class TextEncoding { ShiftJis, Utf8 };

/// Finds out how a text is encoded from all its bytes, which may come in pieces.
///
/// A text with a byte order mark, and one that is valid UTF-8, is UTF-8, all else Shift-JIS (code page 932). One where
/// every sequence that is not ASCII is a pair of half-width katakana is Shift-JIS although it is valid UTF-8 too.
class EncodingDetector {
 public:
  void Add(std::string_view bytes);
  /// What the bytes so far are as a whole text.
  [[nodiscard]] TextEncoding Encoding() const;
};

/// The lines of a text, one after the other, in UTF-8. Lines end with CR LF, LF or CR; a text's last end begins no
/// further line.
class LineSource {
 public:
  /// Gives the next bytes of a text; nothing at its end. The bytes stay valid until the next call.
  using Fetch = std::function<std::string_view()>;

  /// The lines of a UTF-8 text, which must outlive this object.
  explicit LineSource(std::string_view utf8);
  /// The lines of what is fetched; only a line and a piece are held at once. A byte order mark is left out.
  LineSource(Fetch fetch, TextEncoding encoding);

  /// The next line without its end, valid until the next call; false behind the last one.
  [[nodiscard]] bool Next(std::string_view& line);
  /// The number of the line that came last, from 1.
  [[nodiscard]] int LineNumber() const;
  /// All that was not read yet, with its line ends.
  [[nodiscard]] std::string Rest();
};

}  // namespace walrim
