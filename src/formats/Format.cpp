#include "formats/Format.h"

#include <algorithm>
#include <array>

#include "formats/GpxReader.h"
#include "formats/GpxWriter.h"
#include "formats/KmlWriter.h"
#include "formats/ScriptReader.h"
#include "formats/ScriptWriter.h"
#include "formats/StandardFile.h"
#include "formats/WptPlus.h"
#include "text/Scan.h"

namespace walrim {
namespace {

template <std::size_t Count>
bool BeginsWithOneOf(const TextBeginning& beginning, const std::array<std::string_view, Count>& words) {
  return std::find(words.begin(), words.end(), beginning.first_word) != words.end();
}

bool IsStandard(const TextBeginning& beginning) {
  constexpr std::array<std::string_view, 6> words{"WALRIM", "WPT", "RTH", "RTP", "TRH", "TRP"};
  return BeginsWithOneOf(beginning, words);
}

bool IsWptPlus(const TextBeginning& beginning) {
  constexpr std::array<std::string_view, 7> words{"DATUM", "TOKYO MEAN", "WGS84", "WP", "RN", "RP", "TP"};
  return BeginsWithOneOf(beginning, words);
}

bool IsGpxText(const TextBeginning& beginning) {
  return IsGpx(beginning.text);
}

/// A file is known by its ending, a text without a name by its title.
bool IsScript(const TextBeginning& beginning) {
  if (IsGpxText(beginning)) return false;
  if (beginning.path.empty()) return BeginsWithWord(beginning.text, "//Header");
  const std::string_view path = beginning.path;
  return SameWord(path.substr(path.size() - std::min<std::size_t>(path.size(), 3)), "MPS");
}

// The second bracket of WPT+'s status is full-width: the text is known so.
constexpr std::array Rows{
    Format{FormatId::Standard, "標準", "standard", "grc", "標準ファイル (*.grc)|*.grc|",
           "Import From ClipBoard (標準形式)", std::nullopt, std::nullopt, true, false, IsStandard, ReadStandardFile,
           WriteStandardFile},
    Format{FormatId::WptPlus, "WPT+", "WPT+", "txt", "WPT+ファイル (*.txt)|*.txt|", "Import From ClipBoard (Wpt+形式）",
           std::nullopt, std::nullopt, false, false, IsWptPlus, ReadWptPlus, WriteWptPlus},
    Format{FormatId::Script, "MPS", "map-server script", "mps", "MPSファイル (*.mps)|*.mps|",
           "Import From ClipBoard (MPS形式)", std::nullopt, AngleNotation::DMS, false, true, IsScript, ReadScript,
           WriteScript},
    Format{FormatId::Gpx, "GPX", "GPX 1.1", "gpx", "GPXファイル (*.gpx)|*.gpx|", "Import From ClipBoard (GPX形式)",
           TextEncoding::Utf8, AngleNotation::D, true, false, IsGpxText, ReadGpx, WriteGpx},
    Format{FormatId::Kml, "KML", "KML 2.2, written only", "kml", "KMLファイル (*.kml)|*.kml|", "", TextEncoding::Utf8,
           AngleNotation::D, false, false, nullptr, nullptr, WriteKml},
};

constexpr std::string_view AllFiles = "すべてのファイル (*.*)|*.*|";

}  // namespace

std::span<const Format> Formats() {
  return Rows;
}

const Format& FormatOf(FormatId id) {
  return Rows[static_cast<std::size_t>(id)];
}

const Format* FormatOfEnding(std::string_view ending) {
  const auto* const row =
      std::find_if(Rows.begin(), Rows.end(), [&](const Format& format) { return SameWord(format.ending, ending); });
  return row == Rows.end() ? nullptr : row;
}

const Format* RecognizeFormat(std::string_view beginning, std::string_view path) {
  const std::string_view first_column = beginning.substr(0, beginning.find_first_of("\t,\r\n"));
  const TextBeginning facts{UpperCase(TrimBlanks(first_column)), beginning, path};
  const auto* const row = std::find_if(Rows.begin(), Rows.end(), [&](const Format& format) {
    return format.recognise != nullptr && format.recognise(facts);
  });
  return row == Rows.end() ? nullptr : row;
}

std::string DialogFilter(const Format& format) {
  return std::string(AllFiles).append(format.filter);
}

std::string OpenDialogFilter(const Format& chosen) {
  std::string patterns;
  for (const Format& format : Rows) {
    if (format.read != nullptr) patterns.append(patterns.empty() ? "*." : ";*.").append(format.ending);
  }
  std::string filter = "対応ファイル (" + patterns + ")|" + patterns + "|";
  for (const Format& format : Rows) {
    if (format.read != nullptr && format.id != chosen.id) filter.append(format.filter);
  }
  return filter + (chosen.read != nullptr ? DialogFilter(chosen) : std::string(AllFiles));
}

}  // namespace walrim
