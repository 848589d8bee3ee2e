// The terminal as a desktop: messages and status go to standard error.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/Clock.h"
#include "platform/Desktop.h"

namespace walrim {

/// On a terminal the status is one line that is rewritten in place; elsewhere it is a line whenever the text changes,
/// but at most a few times a second while it only counts.
class TerminalDesktop : public Desktop {
 public:
  /// What becomes of a question.
  enum class Questions {
    Refuse,  ///< there is nobody to ask
    Ask,     ///< on the terminal
    Agree
  };
  struct Options {
    bool quiet = false;        ///< no status
    bool force = false;        ///< the answer to whether a file is to be overwritten
    bool on_terminal = false;  ///< standard error is a terminal
    Questions questions = Questions::Refuse;
  };

  TerminalDesktop(Options options, const Clock& clock);
  ~TerminalDesktop() override;
  TerminalDesktop(const TerminalDesktop&) = delete;
  TerminalDesktop& operator=(const TerminalDesktop&) = delete;

  void ShowMessage(std::string_view text) override;
  /// Shows the question. Where there is nobody to ask, the answer is No.
  [[nodiscard]] bool AskYesNo(std::string_view text) override;
  /// With force the answer is OK; without, shows the question and what helps, and the answer is Cancel.
  [[nodiscard]] bool AskOkCancel(std::string_view text) override;
  [[nodiscard]] std::optional<std::string> OpenFileDialog(std::string_view /*filter*/) override { return {}; }
  [[nodiscard]] std::optional<std::string> SaveFileDialog(std::string_view /*filter*/) override { return {}; }
  void SetClipboardText(std::string_view /*text*/) override {}
  [[nodiscard]] std::string ClipboardText() override { return {}; }
  void SetStatusCaption(std::string_view text) override;
  [[nodiscard]] std::string StatusCaption() const override { return status_; }
  void SetProgress(std::int64_t /*done*/, std::int64_t /*total*/) override {}  // the status text tells it
  void ControlsChanged() override {}

  /// Asks on standard error, and reads the answer from standard input; whatever is not yes is No.
  [[nodiscard]] bool AskOnTerminal(std::string_view text);
  /// Lets the status that stands on the terminal's line stay there.
  void KeepStatus() { EndStatusLine(); }
  /// True once a question was asked that there is nobody to answer.
  [[nodiscard]] bool AskedYesNo() const { return asked_yes_no_; }

 private:
  void PrintStatus();
  void EndStatusLine();

  Options options_;
  const Clock& clock_;
  std::string status_;
  std::string printed_;  ///< what stands on the terminal's line, or was printed last
  std::string pending_;  ///< a counting text that was held back
  std::chrono::nanoseconds printed_at_{};
  bool asked_yes_no_ = false;
};

}  // namespace walrim
