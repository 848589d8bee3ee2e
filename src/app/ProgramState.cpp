#include "app/ProgramState.h"

#include <algorithm>

#include "app/Messages.h"

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
    wanted[IndexOf(kind)] = settings_.chosen_kinds[IndexOf(kind)] && Loaded(kind);
  return wanted;
}

void ProgramState::Empty(DataKind kind) {
  data_.Clear(kind);
  held_[IndexOf(kind)] = std::nullopt;
  full_[IndexOf(kind)] = false;
  if (kind == DataKind::TrackLog) date_repairs_.clear();
  desktop_.ControlsChanged();
  desktop_.RecordsChanged();
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
