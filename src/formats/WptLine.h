// The lines of a WPT+ text, one command word and its fields, read from anywhere and composed from parts.
//
//   text   = [datum] *line                               lines end with CR LF; CR LF, LF and CR are read
//   datum  = "Datum," name "," ellipsoid 5*("," number)
//   line   = "WP" point | "RN," number "," comment | "RP" point | "TP" track-point
//   point  = "," form "," ident "," lat "," lon "," date "," time "," comment
//   track-point = "," form "," lat "," lon "," date "," time "," new-track-flag
#pragma once

#include <array>
#include <cstddef>
#include <initializer_list>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace walrim {

inline constexpr std::size_t WptFieldCount = 7;

/// What one line says.
struct WptLine {
  /// "Datum", "WP", "RN", "RP", "TP" however the line writes it; "eof" behind the last line; empty for any other word.
  std::string_view command;
  /// The fields after the command; of Datum the whole rest; of an unknown command the message about it. Fields that the
  /// line ends before are empty. The views hold until the next Read.
  std::array<std::string_view, WptFieldCount> fields;
  bool overfull = false;  ///< more than blanks stands behind the last field: a comma cut it
};
inline constexpr std::string_view WptEnd = "eof";

/// "command [XY] is not suppoted"
[[nodiscard]] std::string UnsupportedCommand(std::string_view command);

/// Messages for the user: the first few, and how many there were.
struct MessageList {
  static constexpr std::size_t MostKept = 20;
  std::vector<std::string> kept;
  int count = 0;
  void Add(std::string_view message);
};

/// The Datum line of a datum's name ("Tokyo" or, for any other, "WGS84").
[[nodiscard]] std::string_view DatumLine(std::string_view datum);
/// Field of the Datum line that a text converted from a script begins with. The blank belongs to it.
inline constexpr std::string_view ScriptDatumField = "Tokyo mean ,Bessel 1841,739.845,0.10037483,-128,481,664";
/// The datum's name, "Tokyo" or "WGS84", that the field of a Datum line begins with; what else stands there as it is.
[[nodiscard]] std::string_view DatumOfField(std::string_view field);

/// A line made of a command and its fields; fields that are not given are empty. An unknown command gives the message
/// about it. Blanks follow some of the commas; the reader skips them.
[[nodiscard]] std::string ComposeWptLine(std::string_view command, std::initializer_list<std::string_view> fields);

/// Reads the lines of a text. Items are delimited by commas; blanks before one are skipped, and one in double quotes
/// may hold commas. An item never reaches over a line's end. Lines of blanks are passed over.
class WptLineReader {
 public:
  /// The text must outlive the reader.
  explicit WptLineReader(std::string_view text) : text_(text) {}

  /// Behind an unknown command the rest of its line is read next, unless SkipLine is called.
  [[nodiscard]] WptLine Read();
  /// Passes over what is left of the line.
  void SkipLine() { rest_ = {}; }

  [[nodiscard]] int LineNumber() const { return line_number_; }  ///< of the line read last, from 1
  [[nodiscard]] std::size_t Offset() const { return offset_; }   ///< bytes read so far

 private:
  [[nodiscard]] bool NextLine();

  std::string_view text_;
  std::size_t offset_ = 0;
  int line_number_ = 0;
  std::string_view rest_;
  std::string message_;
};

/// Takes the line at offset off a text, without its end (CR LF, LF or CR), and moves offset behind it.
[[nodiscard]] std::string_view TakeTextLine(std::string_view text, std::size_t& offset);

}  // namespace walrim
