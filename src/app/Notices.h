// What a command has to tell beyond its messages.
#pragma once

#include <string>
#include <utility>
#include <vector>

namespace walrim {

/// Damaged records and the like, in the order they were noticed.
class Notices {
 public:
  void Add(std::string notice) { texts_.push_back(std::move(notice)); }
  void Clear() { texts_.clear(); }
  [[nodiscard]] const std::vector<std::string>& Texts() const { return texts_; }
  /// Puts what an earlier command told in front.
  void Prepend(const std::vector<std::string>& earlier) {
    texts_.insert(texts_.begin(), earlier.begin(), earlier.end());
  }
  [[nodiscard]] std::vector<std::string> Take() { return std::exchange(texts_, {}); }
  /// All of them, one behind the other.
  [[nodiscard]] std::string Joined() const {
    std::string joined;
    for (const std::string& text : texts_)
      joined += text;
    return joined;
  }

 private:
  std::vector<std::string> texts_;
};

}  // namespace walrim
