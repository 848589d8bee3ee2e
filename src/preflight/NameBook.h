// Which short names long ones have on receivers, as a text that a user can edit.
//
//   # long name, short name, position, date
//   北穂高岳	KITAHO	36.51300 137.66000	2026-11-22
//
// UTF-8, TABs between the columns. The position, degrees on WGS84 with north and east positive, and the date may be
// left out. Lines that begin with # and empty ones are the user's, and stay.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace walrim {

struct NamePlace {
  double lat_deg = 0;
  double lon_deg = 0;

  friend bool operator==(const NamePlace&, const NamePlace&) = default;
};

struct NamePair {
  std::string long_name;
  std::string short_name;  ///< of ASCII
  std::optional<NamePlace> place;
  std::string date;  ///< as it stands

  friend bool operator==(const NamePair&, const NamePair&) = default;
};

class NameBook {
 public:
  static constexpr std::size_t MostNames = 20000;
  static constexpr std::size_t LongestName = 200;  ///< bytes

  /// Adds the lines of a text. A line that is none is left out, and counted: UTF-8 that is not well-formed, a name that
  /// is empty, too long, has control characters, or a short one that is not ASCII.
  [[nodiscard]] int Read(std::string_view text);
  [[nodiscard]] std::string Text() const;

  /// In place of the pair of the same long name and place.
  void Remember(NamePair pair);

  [[nodiscard]] const std::vector<NamePair>& Pairs() const { return pairs_; }
  /// The short name that a long one got last; empty where it has none.
  [[nodiscard]] std::string ShortOf(std::string_view long_name) const;
  /// The long name of a record that a receiver holds: short name and place match, to some metres. Empty where none
  /// does.
  [[nodiscard]] std::string LongOf(std::string_view short_name, const NamePlace& place) const;

 private:
  std::vector<NamePair> pairs_;
  std::vector<std::string> remarks_;
};

}  // namespace walrim
