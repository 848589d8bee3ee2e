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
#include <utility>
#include <vector>

#include "app/Messages.h"
#include "app/WalrimMain.h"
#include "support/Fakes.h"
#include "support/Processes.h"
#include "support/ScriptedReceiver.h"

namespace walrim {

/// Dialogs that answer what they are told to.
class FakeDialogs : public Dialogs {
 public:
  [[nodiscard]] bool ShowScriptOptions(ScriptOptions& options) override {
    ++mps_shown;
    return on_mps ? on_mps(options) : true;
  }
  [[nodiscard]] std::optional<ClipWaypoint> ShowClipProAtlas(ClipProAtlas& clip) override {
    ++clip_shown;
    return on_clip ? on_clip(clip) : std::nullopt;
  }

  [[nodiscard]] bool ShowDateRepairs(const DataSet& /*data*/, const std::vector<DateRepair>& repairs,
                                     int /*utc_offset_hours*/) override {
    dates_shown = repairs;
    return fixes_dates;
  }

  bool fixes_dates = true;
  std::vector<DateRepair> dates_shown;
  std::function<bool(ScriptOptions&)> on_mps;
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

/// Counts by kind; nothing where none is shown.
using Counts = std::array<std::optional<int>, DataKindCount>;

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
    ASSERT_EQ(main.Imports().ImportFile(path), Outcome::Done);
    std::filesystem::remove(path);
    main.State().Settings().chosen_kinds.fill(true);
    Forget();
  }
  void Forget() {
    desktop.captions.clear();
    desktop.messages.clear();
    desktop.questions.clear();
  }
  [[nodiscard]] DataSet& Data() { return main.State().Data(); }
  /// The idents of the waypoints that are held, in order.
  [[nodiscard]] std::vector<std::string> Idents() {
    std::vector<std::string> idents;
    for (const Waypoint& waypoint : Data().Waypoints())
      idents.push_back(waypoint.ident);
    return idents;
  }
  /// Holds a waypoint behind the others, on WGS84, and ticks every kind.
  void HoldWaypoint(std::string_view ident, std::string_view cmnt = "", double lat_deg = 35.5,
                    double lon_deg = 139.25) {
    Waypoint waypoint;
    waypoint.ident = ident;
    waypoint.cmnt = cmnt;
    waypoint.lat_deg = lat_deg;
    waypoint.lon_deg = lon_deg;
    HoldWaypoint(std::move(waypoint));
  }
  void HoldWaypoint(Waypoint waypoint) {
    ASSERT_EQ(Data().Add(std::move(waypoint)), AddResult::Stored);
    main.State().SetHeldCount(DataKind::Waypoint, static_cast<int>(Data().Count(DataKind::Waypoint)));
    main.State().Settings().chosen_kinds.fill(true);
    Forget();
  }
  /// The counts that are shown of the records that are held, and of those of the receiver.
  [[nodiscard]] Counts Held() { return CountsBy(&ProgramState::HeldCount); }
  [[nodiscard]] Counts InReceiver() { return CountsBy(&ProgramState::ReceiverCount); }
  /// Whether anything was uploaded: the receiver was told how many records come.
  [[nodiscard]] bool Uploaded() const {
    constexpr int Records = 27;
    const std::vector<int> ids = receiver.ReceivedIds();
    return std::find(ids.begin(), ids.end(), Records) != ids.end();
  }
  using Strings = std::vector<std::string>;
  using Checks = DataKinds;

 private:
  [[nodiscard]] Counts CountsBy(std::optional<int> (ProgramState::*count)(DataKind) const) {
    Counts counts;
    for (const DataKind kind : AllDataKinds)
      counts[IndexOf(kind)] = (main.State().*count)(kind);
    return counts;
  }

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
