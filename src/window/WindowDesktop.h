// The desktop as a window shows it: message boxes, file dialogs, the clipboard, the status line.
#pragma once

#include <QString>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "platform/Desktop.h"

class QFileDialog;
class QMessageBox;
class QWidget;

namespace walrim {

class StatusLine;

class WindowDesktop : public Desktop {
 public:
  /// What is called when the program has changed controls, or the records that are held.
  struct Hooks {
    std::function<void()> controls_changed;
    std::function<void()> records_changed;
    std::function<void(const std::string& path)> file_used;
  };

  /// Where the file dialogs begin, and where they ended last.
  struct Folders {
    QString open;
    QString save;
  };

  /// All must outlive this object.
  WindowDesktop(QWidget& window, StatusLine& status_line, Hooks hooks);

  [[nodiscard]] const Folders& LastFolders() const { return folders_; }
  void SetLastFolders(Folders folders) { folders_ = std::move(folders); }

  void ShowMessage(std::string_view text) override;
  [[nodiscard]] bool AskYesNo(std::string_view text) override;
  [[nodiscard]] bool AskOkCancel(std::string_view text) override;
  [[nodiscard]] Answer AskThree(std::string_view text, const ThreeAnswers& answers) override;
  [[nodiscard]] std::optional<std::string> OpenFileDialog(std::string_view filter) override;
  [[nodiscard]] std::optional<std::string> SaveFileDialog(std::string_view filter) override;
  void SetClipboardText(std::string_view text) override;
  [[nodiscard]] std::string ClipboardText() override;
  [[nodiscard]] bool OpenLink(std::string_view link) override;
  void SetStatusCaption(std::string_view text) override;
  [[nodiscard]] std::string StatusCaption() const override;
  void FileUsed(std::string_view path) override { hooks_.file_used(std::string(path)); }
  void SetProgress(std::int64_t done, std::int64_t total) override;
  void BeginPart(std::string_view text, double begin, double end) override;
  void EndParts() override;
  void ControlsChanged() override { hooks_.controls_changed(); }
  void RecordsChanged() override { hooks_.records_changed(); }

  /// Until Speak nobody is asked or told anything: every question is answered as it does least.
  void FallSilent() { silent_ = true; }
  void Speak() { silent_ = false; }

 private:
  [[nodiscard]] std::optional<std::string> RunFileDialog(QFileDialog& dialog, std::string_view filter);

  QWidget& window_;
  StatusLine& status_line_;
  Hooks hooks_;
  Folders folders_;
  bool silent_ = false;
};

}  // namespace walrim
