// The program with everything around it in the test's hands: folders, line, receiver, dialogs and links.
#pragma once

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "app/WalrimMain.h"
#include "support/Fakes.h"
#include "support/Processes.h"
#include "support/ScriptedReceiver.h"

namespace walrim {

/// Dialogs that answer what they are told to.
class FakeDialogs : public Dialogs {
 public:
  [[nodiscard]] bool ShowMpsOption(MpsOptions& options) override {
    ++mps_shown;
    return on_mps ? on_mps(options) : true;
  }
  [[nodiscard]] std::optional<ClipWaypoint> ShowClipProAtlas(ClipProAtlas& clip) override {
    ++clip_shown;
    return on_clip ? on_clip(clip) : std::nullopt;
  }

  std::function<bool(MpsOptions&)> on_mps;
  std::function<std::optional<ClipWaypoint>(ClipProAtlas&)> on_clip;
  int mps_shown = 0;
  int clip_shown = 0;
};

/// A desktop that lets a test look around whenever the program changes a control.
class WatchedDesktop : public RecordingDesktop {
 public:
  void ControlsChanged() override {
    RecordingDesktop::ControlsChanged();
    if (on_change) on_change();
  }

  std::function<void()> on_change;
};

/// A variable of the environment, set until this goes.
class EnvironmentVariable {
 public:
  EnvironmentVariable(const char* name, const std::string& value) : name_(name) {
    if (const char* before = std::getenv(name)) before_ = before;
    ::setenv(name, value.c_str(), 1);
  }
  EnvironmentVariable(const EnvironmentVariable&) = delete;
  EnvironmentVariable& operator=(const EnvironmentVariable&) = delete;
  ~EnvironmentVariable() {
    if (before_) {
      ::setenv(name_, before_->c_str(), 1);
    } else {
      ::unsetenv(name_);
    }
  }

 private:
  const char* name_;
  std::optional<std::string> before_;
};

/// A fixture with a working folder, a folder for temporary files of its own, which every test leaves empty, and a
/// receiver on the line.
class AppTest : public ::testing::Test {
 protected:
  AppTest() { std::filesystem::current_path(folder.Path("")); }
  ~AppTest() override { std::filesystem::current_path(before_); }
  void TearDown() override { EXPECT_EQ(scratch.Names(), std::vector<std::string>{}); }

  [[nodiscard]] std::string Path(std::string_view name) const { return folder.Path(name); }
  /// Writes a file into the working folder; returns its path.
  [[nodiscard]] std::string Put(std::string_view name, std::string_view text) const {
    PutFile(Path(name), text);
    return Path(name);
  }
  /// Puts standard lines into the data set and ticks every kind; what was shown meanwhile is forgotten.
  void Hold(std::string_view standard_lines) {
    const std::string path = scratch.Path("hold.grc");
    PutFile(path, standard_lines);
    ASSERT_EQ(main.ImportFile(path), Outcome::Done);
    std::filesystem::remove(path);
    main.controls.DoCheck.fill(true);
    Forget();
  }
  void Forget() {
    desktop.captions.clear();
    desktop.messages.clear();
    desktop.questions.clear();
  }
  /// The idents of the waypoints that are held, in order.
  [[nodiscard]] std::vector<std::string> Idents() {
    std::vector<std::string> idents;
    for (int slot = 1; slot <= main.Data().WaypointCount; ++slot)
      idents.push_back(main.Data().GetWaypoint(slot)[WaypointField::ident]);
    return idents;
  }
  [[nodiscard]] std::string HeldValue(int slot, WaypointField field) { return main.Data().GetWaypoint(slot)[field]; }
  /// Whether anything was uploaded: the receiver was told how many records come.
  [[nodiscard]] bool Uploaded() const {
    constexpr int Records = 27;
    const std::vector<int> ids = receiver.ReceivedIds();
    return std::find(ids.begin(), ids.end(), Records) != ids.end();
  }
  using Strings = std::vector<std::string>;
  using Checks = std::array<bool, DataKindCount>;

 private:
  std::filesystem::path before_ = std::filesystem::current_path();

 protected:
  TemporaryFolder folder;
  TemporaryFolder scratch;
  EnvironmentVariable tmpdir{"TMPDIR", scratch.Path("")};
  FakeClock clock;
  ScriptedPort port{clock};
  ScriptedReceiver receiver{port};
  FakeEventLoop loop;
  WatchedDesktop desktop;
  FakeDialogs dialogs;
  FakeInet inet;
  WalrimMain main{port, clock, loop, desktop, &dialogs, &inet};
};

}  // namespace walrim
