#include "app/CellEdits.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "app/Messages.h"
#include "records/Symbols.h"
#include "text/Cp932.h"
#include "text/Numbers.h"
#include "text/Scan.h"
#include "text/Utf8.h"

namespace walrim {

namespace {

/// The data of one packet: a longer text can be sent by no means.
constexpr std::size_t WidestText = 250;
constexpr std::size_t IdentWidth = 6;
constexpr std::size_t CommentWidth = 40;
constexpr std::size_t RouteCommentWidth = 20;
/// Beyond what any receiver tells.
constexpr double GreatestHeight_m = 100000;

template <typename Record>
CellEdit<Record> Refused(std::string_view why) {
  return {std::nullopt, std::string(why)};
}

/// Without what pads a field.
std::string Bare(std::string_view text) {
  std::string bare(text);
  std::ranges::replace(bare, '\0', ' ');
  return std::string(TrimBlanks(bare));
}

/// The text that a user means, or why there is none. before is what the field holds.
CellEdit<std::string> TextOf(std::string_view typed, std::string_view before) {
  const std::string_view text = TrimBlanks(typed);
  if (WithoutControlCharacters(text) != text) return Refused<std::string>(messages::LineBreakInText);
  const std::size_t widest = std::max(WidestText, Cp932Width(before));
  if (Cp932Width(text) > widest) return Refused<std::string>(messages::TextTooLong(widest));
  return {UpperCase(text), {}};
}

std::string Padded(std::string text, std::size_t width) {
  text.append(width - Cp932Width(text), ' ');
  return text;
}

Waypoint WithoutFixedWidths(Waypoint waypoint) {
  if (HasSmallSymbol(waypoint)) waypoint.smbl = LargeSymbolFor(waypoint.smbl.value_or(0));
  waypoint.symbol_set = SymbolSet::Large;
  waypoint.type = WaypointType::D108;
  waypoint.ident = Bare(waypoint.ident);
  waypoint.cmnt = Bare(waypoint.cmnt);
  return waypoint;
}

CellEdit<Waypoint> EditText(const Waypoint& before, std::string Waypoint::*member, std::size_t width,
                            std::string_view typed) {
  CellEdit<std::string> text = TextOf(typed, before.*member);
  if (!text.record) return Refused<Waypoint>(text.refusal);
  Waypoint after = before;
  const bool fits = HasFixedWidthTexts(before.type) && Cp932Width(*text.record) <= width;
  if (!fits && HasFixedWidthTexts(before.type)) after = WithoutFixedWidths(std::move(after));
  after.*member = fits ? Padded(std::move(*text.record), width) : std::move(*text.record);
  return {std::move(after), {}};
}

CellEdit<Waypoint> EditSymbol(const Waypoint& before, std::string_view text) {
  const std::span<const NamedCode> symbols = SymbolNames(before.type);
  const auto code = static_cast<int>(LeadingInteger(text, -1, std::numeric_limits<std::uint16_t>::max()));
  if (!AllDigits(text) || NameOf(symbols, code).empty()) return Refused<Waypoint>(messages::NoSuchSymbol);
  Waypoint after = before;
  after.smbl = static_cast<std::uint16_t>(code);
  after.symbol_set = before.type == WaypointType::D108 ? SymbolSet::Large : SymbolSet::Untold;
  return {std::move(after), {}};
}

template <typename Record>
CellEdit<Record> EditHeight(const Record& before, std::string_view typed) {
  const std::string_view text = TrimBlanks(typed);
  const double metres = LeadingNumber(text);
  if (!text.empty() && !IsNumber(text)) return Refused<Record>(messages::NoHeight(WithoutControlCharacters(text)));
  if (std::abs(metres) > GreatestHeight_m) return Refused<Record>(messages::HeightOutOfRange);
  Record after = before;
  after.alt_m = text.empty() ? std::nullopt : std::optional(static_cast<float>(metres));
  return {std::move(after), {}};
}

/// A waypoint or a point of a log.
template <typename Record>
CellEdit<Record> EditPlace(const Record& before, PositionAxis axis, std::string_view text, const PositionForm& form) {
  const PositionEdit edit = EditPosition({before.lat_deg, before.lon_deg, 0}, axis, text, form);
  if (!edit.point) return Refused<Record>(edit.refusal);
  Record after = before;
  after.lat_deg = edit.point->latitude_deg;
  after.lon_deg = edit.point->longitude_deg;
  return {std::move(after), {}};
}

CellEdit<Waypoint> EditFieldOf(const Waypoint& before, EditField field, std::string_view text,
                               const PositionForm& form) {
  switch (field) {
    case EditField::Name:
      return EditText(before, &Waypoint::ident, IdentWidth, text);
    case EditField::Comment:
      return EditText(before, &Waypoint::cmnt, CommentWidth, text);
    case EditField::Latitude:
      return EditPlace(before, PositionAxis::Latitude, text, form);
    case EditField::Longitude:
      return EditPlace(before, PositionAxis::Longitude, text, form);
    case EditField::Height:
      return EditHeight(before, text);
    case EditField::Symbol:
      return EditSymbol(before, text);
  }
  return {};
}

}  // namespace

CellEdit<Waypoint> EditWaypoint(const Waypoint& before, EditField field, std::string_view text,
                                const PositionForm& form) {
  CellEdit<Waypoint> edit = EditFieldOf(before, field, text, form);
  if (edit.record) edit.record->missing = false;
  return edit;
}

CellEdit<Route> EditRoute(const Route& before, std::string_view typed) {
  CellEdit<std::string> text = TextOf(typed, before.cmnt);
  if (!text.record) return Refused<Route>(text.refusal);
  const bool fits = before.type == RouteHeaderType::D201 && Cp932Width(*text.record) <= RouteCommentWidth;
  Route after{before.type, before.nmbr, {}, {}, before.chosen};
  if (!fits) after.type = RouteHeaderType::D202;
  after.cmnt = fits ? Padded(std::move(*text.record), RouteCommentWidth) : std::move(*text.record);
  return {std::move(after), {}};
}

CellEdit<TrackLog> EditLog(const TrackLog& before, std::string_view typed) {
  if (before.headless) return Refused<TrackLog>(messages::HeadlessLogHasNoName);
  CellEdit<std::string> text = TextOf(typed, before.trk_ident);
  if (!text.record) return Refused<TrackLog>(text.refusal);
  return {TrackLog{false, before.dspl, before.color, std::move(*text.record), {}, before.chosen}, {}};
}

CellEdit<TrackPoint> EditTrackPoint(const TrackPoint& before, EditField field, std::string_view text,
                                    const PositionForm& form) {
  switch (field) {
    case EditField::Latitude:
      return EditPlace(before, PositionAxis::Latitude, text, form);
    case EditField::Longitude:
      return EditPlace(before, PositionAxis::Longitude, text, form);
    case EditField::Height:
      return EditHeight(before, text);
    case EditField::Name:
    case EditField::Comment:
    case EditField::Symbol:
      break;
  }
  return {};
}

}  // namespace walrim
