// What the connection assistant tells, in Japanese.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "doctor/LineReport.h"

namespace walrim::doctor_messages {

/// What was found, in one sentence.
[[nodiscard]] std::string Headline(const LineReport& report);
/// What to do next, a sentence or two each; empty for a healthy line that has nothing to improve.
[[nodiscard]] std::vector<std::string> Advice(const LineReport& report);
/// A command line for the user's shell that helps; empty where none does.
[[nodiscard]] std::string ShellCommand(const LineReport& report);

/// The line of a step that has been done, as far as the report goes: what was looked at, and what was seen.
[[nodiscard]] std::string StepLine(ExamStep step, const LineReport& report);

// ---- Asking all ports

inline constexpr std::string_view Searching = "受信機のつながったポートを探しています";
inline constexpr std::string_view FoundNowhere = "受信機が応えるポートはありませんでした．";
[[nodiscard]] std::string Examining(std::string_view port);
[[nodiscard]] std::string AskedPort(const PortChoice& port, bool answers);
[[nodiscard]] std::string FoundAt(const PortChoice& port);

/// A port that was not there before.
[[nodiscard]] std::string PortAppeared(std::string_view device, std::string_view description);

/// A finding's name for other programs: "nmea", "not-permitted".
[[nodiscard]] std::string_view FindingWord(Finding finding);

}  // namespace walrim::doctor_messages
