#include "formats/ScriptTheme.h"

#include "text/Numbers.h"
#include "text/Scan.h"

namespace walrim {
namespace {

constexpr std::string_view ThemeMark = "Walrim Datum:";
constexpr std::string_view OffsetMark = " UTCOffset:";

std::optional<Datum> DatumIn(std::string_view text) {
  const std::string upper = UpperCase(text);
  const auto names = [&upper](std::string_view name) { return upper.find(name) != std::string::npos; };
  if (names("WGS") || names("JGD")) return Datum::Wgs84;
  return names("TOKYO") ? std::optional(Datum::Tokyo) : std::nullopt;
}

int HoursIn(std::string_view theme) {
  constexpr int MostHours = 32768;
  const std::size_t at = theme.find(OffsetMark);
  if (!theme.starts_with(ThemeMark) || at == std::string_view::npos) return 0;
  return static_cast<int>(LeadingInteger(theme.substr(at + OffsetMark.size()), -MostHours, MostHours));
}

}  // namespace

std::string ThemeText(const ScriptTheme& theme) {
  std::string text(ThemeMark);
  return text.append(DatumName(theme.datum)).append(OffsetMark).append(std::to_string(theme.utc_offset_hours));
}

void ScriptThemeFinder::Take(const Statement& statement) {
  const bool theme = statement.keyword == StatementKeyword::Theme;
  if (!theme && statement.keyword != StatementKeyword::Georef) return;
  const std::string_view text = statement.values[0];
  if (!datum_) datum_ = DatumIn(text);
  if (theme && !hours_) hours_ = HoursIn(text);
}

}  // namespace walrim
