// The connection assistant's commands.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "app/Outcome.h"
#include "app/ProgramState.h"
#include "doctor/LineExam.h"
#include "platform/Desktop.h"

namespace walrim {

class DoctorCommands {
 public:
  /// All must outlive this object.
  DoctorCommands(ProgramState& state, LineExam exam, Desktop& desktop)
      : state_(state), exam_(std::move(exam)), desktop_(desktop) {}

  /// Examines the line of the port that is set; the report is there then, the steps as they are done. Done for a
  /// healthy line, else NoReceiver or Cancelled.
  Outcome Examine();
  /// Asks every port that nobody keeps for a receiver, and sets the one that answers.
  Outcome FindReceiver();
  void Cancel() { exam_.Cancel(); }

  /// Called with each line of Lines as it comes.
  void SetLineTold(std::function<void(std::string_view)> line_told) { line_told_ = std::move(line_told); }
  /// What the command that ran last has looked at, a line a step or a port.
  [[nodiscard]] const std::vector<std::string>& Lines() const { return lines_; }
  /// What runs, or what was found, in one sentence.
  [[nodiscard]] const std::string& Headline() const { return headline_; }
  /// Of the last examination; nothing where the last command was none.
  [[nodiscard]] const std::optional<LineReport>& Report() const { return report_; }

 private:
  Outcome Run(std::string headline, const std::function<Outcome()>& command);
  void ShowHeadline(std::string headline);
  void Tell(std::string line);

  ProgramState& state_;
  LineExam exam_;
  Desktop& desktop_;
  std::function<void(std::string_view)> line_told_;
  std::vector<std::string> lines_;
  std::string headline_;
  std::optional<LineReport> report_;
};

}  // namespace walrim
