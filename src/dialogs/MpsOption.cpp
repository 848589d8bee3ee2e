#include "dialogs/MpsOption.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <optional>
#include <string_view>

#include "text/Numbers.h"
#include "text/Utf8.h"

namespace walrim {
namespace {

/// True where a number stands that is too large for any: it reads as 0, and no negative exponent makes it that small.
bool BeyondNumbers(std::string_view text) {
  text = TrimBlanks(text);
  if (!text.empty() && (text.front() == '-' || text.front() == '+')) text.remove_prefix(1);
  const std::size_t mantissa_size = std::min(text.find_first_not_of("0123456789."), text.size());
  const std::string_view mantissa = text.substr(0, mantissa_size);
  const std::string_view whole = mantissa.substr(0, mantissa.find('.'));
  if (mantissa.find_first_of("123456789") == std::string_view::npos) return false;
  text.remove_prefix(mantissa_size);
  if (text.empty() || (text.front() != 'e' && text.front() != 'E')) {
    return whole.find_first_of("123456789") != std::string_view::npos;
  }
  return text.size() < 2 || text[1] != '-';
}

std::optional<std::int16_t> Integer16(std::string_view text) {
  using Limits = std::numeric_limits<std::int16_t>;
  const double value = std::round(LeadingNumber(text));
  if (value < Limits::min() || value > Limits::max() || (value == 0 && BeyondNumbers(text))) return std::nullopt;
  return static_cast<std::int16_t>(value);
}

}  // namespace

MpsOptionControls ShowMpsOptions(const MpsOptions& options) {
  return {std::to_string(options.utc_offset_hours), options.origin_name, options.destination_name,
          options.numbering_down == 1, std::to_string(options.track_log_step)};
}

MpsOptionProblem ApplyMpsOptions(const MpsOptionControls& controls, MpsOptions& options) {
  const auto utc_offset = Integer16(controls.OptUTCOffset);
  if (!utc_offset) return MpsOptionProblem::UtcOffsetOverflow;
  const auto step = Integer16(controls.OptWptTrackLogStep);
  if (!step) return MpsOptionProblem::TrackLogStepOverflow;
  options.utc_offset_hours = *utc_offset;
  options.origin_name = controls.OptMpsWptOrgName;
  options.destination_name = controls.OptMpsWptDestinationName;
  options.numbering_down = controls.OptMpsWptRPnumberingDown ? 1 : 0;
  options.track_log_step = *step;
  return MpsOptionProblem::None;
}

}  // namespace walrim
