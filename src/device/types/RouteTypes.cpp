#include "device/types/RouteTypes.h"

#include <utility>

#include "text/Scan.h"

namespace walrim {

namespace {

constexpr std::size_t RouteCommentWidth = 20;

template <typename Wire, typename Record>
void WalkD201(Wire& wire, Record& route) {
  wire.Byte(route.nmbr);
  wire.Text(route.cmnt, RouteCommentWidth);
}

template <typename Wire, typename Record>
void WalkD202(Wire& wire, Record& route) {
  wire.ZeroText(route.cmnt);
}

template <typename Wire, typename Record>
void WalkD210(Wire& wire, Record& link) {
  wire.Word(link.link_class);
  wire.Bytes(link.subclass);
  wire.ZeroText(link.ident);
}

/// The header as one of D201.
Route FittingD201(const Route& from, EncodeNotes& notes) {
  NoteCutText(from.cmnt, RouteCommentWidth, notes);
  const bool own = from.type == RouteHeaderType::D201;
  return {RouteHeaderType::D201, from.nmbr, own ? from.cmnt : UpperCase(from.cmnt), {}};
}

/// The header as one of D202: without the blanks at the end of its name.
Route FittingD202(const Route& from) {
  if (from.type == RouteHeaderType::D202) return {from.type, from.nmbr, from.cmnt, {}};
  std::string cmnt = Blanked(from.cmnt);
  cmnt.erase(cmnt.find_last_not_of(' ') + 1);
  return {RouteHeaderType::D202, from.nmbr, cmnt, {}};
}

}  // namespace

Route DecodeRouteHeader(std::span<const std::uint8_t> data, RouteHeaderType type, int number) {
  Route route{type, static_cast<std::uint8_t>(number), {}, {}};
  PacketReader reader(data);
  switch (type) {
    case RouteHeaderType::D201:
      WalkD201(reader, route);
      break;
    case RouteHeaderType::D202:
      WalkD202(reader, route);
      break;
  }
  return route;
}

std::vector<std::uint8_t> EncodeRouteHeader(const Route& route, RouteHeaderType type, EncodeNotes& notes) {
  PacketWriter writer(notes);
  Route fitting;
  switch (type) {
    case RouteHeaderType::D201:
      fitting = FittingD201(route, notes);
      WalkD201(writer, std::as_const(fitting));
      break;
    case RouteHeaderType::D202:
      fitting = FittingD202(route);
      WalkD202(writer, std::as_const(fitting));
      break;
  }
  return writer.Finish();
}

RouteLink DecodeRouteLink(std::span<const std::uint8_t> data) {
  RouteLink link;
  PacketReader reader(data);
  WalkD210(reader, link);
  return link;
}

std::vector<std::uint8_t> EncodeRouteLink(const RouteLink& link, RouteLinkType type, EncodeNotes& notes) {
  PacketWriter writer(notes);
  switch (type) {
    case RouteLinkType::None:
    case RouteLinkType::Empty:
      break;
    case RouteLinkType::D210:
      WalkD210(writer, link);
      break;
  }
  return writer.Finish();
}

}  // namespace walrim
