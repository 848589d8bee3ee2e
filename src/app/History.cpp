#include "app/History.h"

#include <utility>

namespace walrim {

void History::Add(Step step) {
  undone_.clear();
  done_.push_back(std::move(step));
  if (done_.size() > MostSteps) done_.pop_front();
}

void History::Clear() {
  done_.clear();
  undone_.clear();
}

Step& History::Undo() {
  undone_.push_back(std::move(done_.back()));
  done_.pop_back();
  return undone_.back();
}

Step& History::Redo() {
  done_.push_back(std::move(undone_.back()));
  undone_.pop_back();
  return done_.back();
}

}  // namespace walrim
