#include "app/ProgramState.h"

#include <algorithm>

#include "app/Messages.h"
#include "records/Chosen.h"

namespace walrim {

bool AnyOf(const DataKinds& kinds) {
  return std::ranges::any_of(kinds, [](bool chosen) { return chosen; });
}

void ProgramState::SetHeldCount(DataKind kind, int count) {
  const std::size_t k = IndexOf(kind);
  held_[k] = count;
  // After a download the count is that of the packets; what can be full is the number of waypoints, routes and logs.
  if (!full_[k] && data_.Count(kind) >= LimitOf(kind)) {
    full_[k] = true;
    desktop_.ShowMessage(messages::KindFull(kind));
  }
  desktop_.ControlsChanged();
  desktop_.RecordsChanged();
}

bool ProgramState::AnyLoaded() const {
  return std::ranges::any_of(AllDataKinds, [this](DataKind kind) { return Loaded(kind); });
}

DataKinds ProgramState::WantedKinds() const {
  DataKinds wanted{};
  for (const DataKind kind : AllDataKinds)
    wanted[IndexOf(kind)] = settings_.chosen_kinds[IndexOf(kind)] && Loaded(kind) && !NoneChosen(data_, kind);
  return wanted;
}

bool ProgramState::NothingChecked() const {
  const auto wanted = [this](DataKind kind) { return settings_.chosen_kinds[IndexOf(kind)] && Loaded(kind); };
  return std::ranges::any_of(AllDataKinds, wanted) && !AnyOf(WantedKinds());
}

void ProgramState::Empty(DataKind kind) {
  data_.Clear(kind);
  held_[IndexOf(kind)] = std::nullopt;
  full_[IndexOf(kind)] = false;
  if (kind == DataKind::TrackLog) date_repairs_.clear();
  desktop_.ControlsChanged();
  desktop_.RecordsChanged();
}

void ProgramState::EmptyOfChosen(DataKind kind) {
  if (AllChosen(data_, kind)) return Empty(kind);
  if (NoneChosen(data_, kind)) return;
  const std::vector<std::size_t> indices = ChosenIndices(data_, kind);
  for (std::size_t i = indices.size(); kind == DataKind::TrackLog && i > 0; --i)
    date_repairs_ = RepairsBeside(std::move(date_repairs_), indices[i - 1], 1, 0);
  RemoveChosen(data_, kind);
  full_[IndexOf(kind)] = false;
  SetHeldCount(kind, static_cast<int>(data_.Count(kind)));
}

void ProgramState::SetDateRepairs(std::vector<DateRepair> repairs) {
  date_repairs_ = std::move(repairs);
  desktop_.ControlsChanged();
}

void ProgramState::SetReceiverCount(DataKind kind, std::optional<int> count) {
  in_receiver_[IndexOf(kind)] = count;
  desktop_.ControlsChanged();
}

void ProgramState::SetReceiverClock(std::string text) {
  receiver_clock_ = std::move(text);
  desktop_.ControlsChanged();
}

void ProgramState::SetCancelEnabled(bool enabled) {
  cancel_requested_ = false;
  cancel_enabled_ = enabled;
  desktop_.ControlsChanged();
}

}  // namespace walrim
