#include "cli/TerminalDesktop.h"

#include <array>
#include <chrono>
#include <cstdio>

#include "cli/Messages.h"
#include "text/Scan.h"
#include "text/Utf8.h"

namespace walrim {

namespace {

/// Between two printed texts that only count.
constexpr std::chrono::milliseconds CountingInterval{250};

/// A progress text without what changes with every record.
std::string_view WithoutCounters(std::string_view text) {
  return text.substr(0, text.find('['));
}

void Print(std::string_view text) {
  std::fwrite(text.data(), 1, text.size(), stderr);
}

/// Names and descriptions come from outside; only line feeds may reach the terminal as what they are.
std::string Printable(std::string_view text) {
  std::string printable;
  for (std::size_t end = text.find('\n'); end != std::string_view::npos; end = text.find('\n')) {
    printable += WithoutControlCharacters(text.substr(0, end)) + "\n";
    text.remove_prefix(end + 1);
  }
  return printable + WithoutControlCharacters(text);
}

}  // namespace

TerminalDesktop::TerminalDesktop(Options options, const Clock& clock) : options_(options), clock_(clock) {}

TerminalDesktop::~TerminalDesktop() {
  EndStatusLine();
}

void TerminalDesktop::ShowMessage(std::string_view text) {
  EndStatusLine();
  Print(Printable(text) + "\n");
}

bool TerminalDesktop::AskYesNo(std::string_view text) {
  switch (options_.questions) {
    case Questions::Agree:
      ShowMessage(text);
      return true;
    case Questions::Ask:
      return AskOnTerminal(text);
    case Questions::Refuse:
      break;
  }
  asked_yes_no_ = true;
  ShowMessage(text);
  return false;
}

bool TerminalDesktop::AskOnTerminal(std::string_view text) {
  EndStatusLine();
  Print(Printable(text) + " [y/N] ");
  std::array<char, 16> answer{};
  if (std::fgets(answer.data(), static_cast<int>(answer.size()), stdin) == nullptr) return false;
  const std::string word = LowerCase(TrimSpace(answer.data()));
  return word == "y" || word == "yes";
}

bool TerminalDesktop::AskOkCancel(std::string_view text) {
  if (options_.force) return true;
  ShowMessage(text);
  ShowMessage(cli_messages::ForceAdvice);
  return false;
}

void TerminalDesktop::SetStatusCaption(std::string_view text) {
  status_ = text;
  if (options_.quiet) return;
  const bool counting = text.find('[') != std::string_view::npos && WithoutCounters(text) == WithoutCounters(printed_);
  if (counting && clock_.Monotonic() - printed_at_ < CountingInterval) {
    pending_ = text;
    return;
  }
  if (!counting && !pending_.empty()) {
    // The last count is worth showing, also when it came soon after the one before.
    status_ = pending_;
    PrintStatus();
    status_ = text;
  }
  PrintStatus();
}

void TerminalDesktop::PrintStatus() {
  pending_.clear();
  if (status_.empty() || status_ == printed_) return;
  Print(options_.on_terminal ? "\r\033[K" + Printable(status_) : Printable(status_) + "\n");
  printed_ = status_;
  printed_at_ = clock_.Monotonic();
}

void TerminalDesktop::EndStatusLine() {
  if (!pending_.empty()) {
    const std::string current = status_;
    status_ = pending_;
    PrintStatus();
    status_ = current;
  }
  if (options_.on_terminal && !printed_.empty()) Print("\n");
  printed_.clear();
}

}  // namespace walrim
