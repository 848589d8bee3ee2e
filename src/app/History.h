// The steps that can be undone and redone.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>
#include <optional>
#include <vector>

#include "records/DataChanges.h"
#include "walks/RollOver.h"

namespace walrim {

/// What a command did, for the name of its step.
enum class StepKind : std::uint8_t {
  Import,
  Paste,
  Download,
  Delete,
  FixDates,
  Restore,  ///< of what was held when a program did not come to its end
  Edit,
  NewRecord,
  Join,
  Cut,
  Reverse,
  Shorten,
  Reorder
};

struct StepName {
  StepKind kind = StepKind::Edit;
  ConcernedRecords concerned;
};

/// What is known of the records that are held beside themselves.
struct HeldMarks {
  std::array<std::optional<int>, DataKindCount> counts;  ///< as shown
  DataKinds full{};
  std::shared_ptr<const std::vector<DateRepair>> date_repairs = std::make_shared<const std::vector<DateRepair>>();
  /// A number for what is held of each kind. The same number is the same records.
  std::array<std::uint64_t, DataKindCount> revisions{};
  DataKinds dropped{};  ///< kinds of which nothing is held any more of what was in no file
};

/// A command's changes. Either what undoes them or what redoes them.
struct Step {
  StepName name;
  DataChanges changes;
  HeldMarks marks;  ///< what they were, or will be
};

/// What was done, and of that what was undone.
class History {
 public:
  static constexpr std::size_t MostSteps = 50;

  /// The newest step. What was undone before can no longer be redone; of more than MostSteps the oldest goes.
  void Add(Step step);
  void Clear();
  /// What comes next; nothing where there is none.
  [[nodiscard]] const StepName* NextUndo() const { return done_.empty() ? nullptr : &done_.back().name; }
  [[nodiscard]] const StepName* NextRedo() const { return undone_.empty() ? nullptr : &undone_.back().name; }
  /// The step that NextUndo, or NextRedo, names, which counts as undone or redone now. There is one.
  [[nodiscard]] Step& Undo();
  [[nodiscard]] Step& Redo();

 private:
  std::deque<Step> done_;
  std::deque<Step> undone_;
};

}  // namespace walrim
