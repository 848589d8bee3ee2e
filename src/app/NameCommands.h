// The short names that long Japanese ones have on receivers, and the file that remembers them.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "app/Outcome.h"
#include "app/ProgramState.h"
#include "platform/Clock.h"
#include "platform/Desktop.h"
#include "preflight/NameBook.h"

namespace walrim {

class NameCommands {
 public:
  /// All must outlive this object.
  NameCommands(ProgramState& state, const Clock& clock, Desktop& desktop)
      : state_(state), clock_(clock), desktop_(desktop) {}

  /// Where the names are kept. Without a path none are known, and none are remembered.
  void Use(std::string path) { path_ = std::move(path); }

  /// The short name that was given to a long one; empty where there is none.
  [[nodiscard]] std::string ShortOf(std::string_view long_name);
  /// Remembers which short names the Japanese ones of what was held have in what is sent, a copy of it.
  void Remember(const DataSet& held, const DataSet& sent);
  /// Gives what was downloaded its long names again, as a step that can be undone. Whether there were any.
  [[nodiscard]] bool FindLongNames();

  /// Writes all names to a file that the user chooses, and adds those of one.
  Outcome Export();
  Outcome Import();

 private:
  void Load();
  void Save();
  [[nodiscard]] bool Write(const std::string& path);
  [[nodiscard]] std::optional<std::string> TextOf(const std::string& path);
  void RememberOne(const Waypoint& held, const Waypoint& sent);

  ProgramState& state_;
  const Clock& clock_;
  Desktop& desktop_;
  std::string path_;
  bool loaded_ = false;
  bool changed_ = false;
  NameBook book_;
};

/// The names' file in the user's data folder, by the values of XDG_DATA_HOME and HOME; empty where neither tells it.
[[nodiscard]] std::string NamesPath(const char* data_home, const char* home);

}  // namespace walrim
