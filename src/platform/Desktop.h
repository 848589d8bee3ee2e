// Whoever runs the program: a window, a terminal, or a test that records.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace walrim {

/// The answers to a question with three of them, as they stand on its buttons. Back is the safe one: nothing is done.
struct ThreeAnswers {
  std::string_view first;
  std::string_view second;
  std::string_view back;
};
enum class Answer : std::uint8_t { First, Second, Back };

/// Texts are UTF-8. Message boxes are modal: they return when they have been answered.
class Desktop {
 public:
  virtual ~Desktop() = default;

  /// A message box with an OK button alone.
  virtual void ShowMessage(std::string_view text) = 0;
  /// A question with Yes and No; true for Yes.
  [[nodiscard]] virtual bool AskYesNo(std::string_view text) = 0;
  /// A question with OK and Cancel; true for OK.
  [[nodiscard]] virtual bool AskOkCancel(std::string_view text) = 0;
  /// A question with three answers, for desktops that have windows.
  [[nodiscard]] virtual Answer AskThree(std::string_view /*text*/, const ThreeAnswers& /*answers*/) {
    return Answer::Back;
  }

  /// File dialogs with a filter such as "すべてのファイル (*.*)|*.*|", of which opening begins with the first entry and
  /// saving with the last: a path; nothing when the user cancels them, and whenever they fail.
  [[nodiscard]] virtual std::optional<std::string> OpenFileDialog(std::string_view filter) = 0;
  [[nodiscard]] virtual std::optional<std::string> SaveFileDialog(std::string_view filter) = 0;

  virtual void SetClipboardText(std::string_view text) = 0;
  [[nodiscard]] virtual std::string ClipboardText() = 0;

  /// Opens a link with the program that the user has for such links; false where there is none.
  [[nodiscard]] virtual bool OpenLink(std::string_view /*link*/) { return false; }

  /// The status line's text (its Caption); empty clears it.
  virtual void SetStatusCaption(std::string_view text) = 0;
  [[nodiscard]] virtual std::string StatusCaption() const = 0;

  /// A file was read or written.
  virtual void FileUsed(std::string_view /*path*/) {}

  /// How far the running operation has come: done of total steps; a total of 0 ends the showing.
  virtual void SetProgress(std::int64_t done, std::int64_t total) = 0;
  /// What SetProgress tells from now on is a part of an operation: the one from begin to end of the whole, which is 1.
  virtual void BeginPart(std::string_view /*text*/, double /*begin*/, double /*end*/) {}
  /// The operation of which BeginPart told is over.
  virtual void EndParts() {}

  /// A control's value, background or enabled state was changed by the program.
  virtual void ControlsChanged() = 0;
  /// A kind of the data set holds other records than before, in the middle of a command too.
  virtual void RecordsChanged() {}
};

}  // namespace walrim
