#include "dialogs/ScriptOptionsDialog.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <optional>
#include <string_view>

#include "text/Numbers.h"
#include "text/Scan.h"

namespace walrim {
namespace {

/// True where a number stands that is too large for any: it reads as 0, and no negative exponent makes it that small.
bool BeyondNumbers(std::string_view text) {
  text = TrimBlanks(text);
  if (text.starts_with('-') || text.starts_with('+')) text.remove_prefix(1);
  const std::string_view mantissa = TakeBytes(text, text.find_first_not_of("0123456789."));
  const auto has_value = [](std::string_view digits) {
    return digits.find_first_of("123456789") != std::string_view::npos;
  };
  if (!has_value(mantissa)) return false;
  if (!Take(text, 'e') && !Take(text, 'E')) return has_value(mantissa.substr(0, mantissa.find('.')));
  return !text.starts_with('-');
}

std::optional<std::int16_t> Integer16(std::string_view text) {
  using Limits = std::numeric_limits<std::int16_t>;
  const double value = std::round(LeadingNumber(text));
  if (value < Limits::min() || value > Limits::max() || (value == 0 && BeyondNumbers(text))) return std::nullopt;
  return static_cast<std::int16_t>(value);
}

}  // namespace

ScriptOptionControls ShowScriptOptions(const ScriptOptions& options) {
  return {std::to_string(options.utc_offset_hours), options.origin_name, options.destination_name,
          options.numbering_down, std::to_string(options.track_log_step)};
}

ScriptOptionProblem ApplyScriptOptions(const ScriptOptionControls& controls, ScriptOptions& options) {
  const auto utc_offset = Integer16(controls.utc_offset);
  if (!utc_offset) return ScriptOptionProblem::UtcOffsetOverflow;
  const auto step = Integer16(controls.track_log_step);
  if (!step) return ScriptOptionProblem::TrackLogStepOverflow;
  options.utc_offset_hours = *utc_offset;
  options.origin_name = controls.origin_name;
  options.destination_name = controls.destination_name;
  options.numbering_down = controls.numbering_down;
  options.track_log_step = *step;
  return ScriptOptionProblem::None;
}

}  // namespace walrim
