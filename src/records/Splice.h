// Changes of lists of records that are their own inverse.
#pragma once

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <utility>
#include <vector>

namespace walrim {

/// A place in a list: what stands there, and how many records stand there in its place after the change.
struct SpliceRun {
  std::size_t at = 0;       ///< index in the list as it stands
  std::size_t present = 0;  ///< records from there on that go
  std::size_t absent = 0;   ///< records that come
};

/// Records that go and records that come, in one list. Exchanged once it has done that, and holds what went and where,
/// so that exchanged again it undoes it. It never holds what is in the list.
template <typename Record>
struct Splice {
  std::size_t owner = 0;        ///< of points: the index of their route or log
  std::vector<SpliceRun> runs;  ///< in rising order, none inside another
  std::vector<Record> absent;   ///< what comes, of all runs one behind the other

  /// Whether the runs fit each other, the records that come, and a list of a size.
  [[nodiscard]] bool FitsInto(std::size_t size) const {
    std::size_t end = 0;
    std::size_t coming = 0;
    for (const SpliceRun& run : runs) {
      if (run.at < end || run.at > size || run.present > size - run.at) return false;
      end = run.at + run.present;
      coming += run.absent;
    }
    return coming == absent.size();
  }

  /// How many records go.
  [[nodiscard]] std::size_t Going() const {
    std::size_t going = 0;
    for (const SpliceRun& run : runs)
      going += run.present;
    return going;
  }

  /// Whether a list that it fits into would be another one.
  [[nodiscard]] bool Changes(const std::vector<Record>& list) const {
    auto coming = absent.begin();
    return std::ranges::any_of(runs, [&](const SpliceRun& run) {
      const auto at = list.begin() + Distance(run.at);
      const auto next = std::exchange(coming, coming + Distance(run.absent));
      return !std::equal(at, at + Distance(run.present), next, coming);
    });
  }

  /// For a list that it fits into.
  void Exchange(std::vector<Record>& list) {
    if (runs.size() == 1 && runs.front().present == list.size()) {
      std::swap(runs.front().present, runs.front().absent);
      list.swap(absent);
      return;
    }
    // All room is there before the first record moves.
    std::vector<Record> gone;
    gone.reserve(Going());
    std::vector<Record> result;
    result.reserve(list.size() - Going() + absent.size());
    auto coming = std::make_move_iterator(absent.begin());
    auto next = std::make_move_iterator(list.begin());
    std::size_t passed = 0;
    for (SpliceRun& run : runs) {
      const std::size_t skipped = std::exchange(passed, run.at + run.present);
      const auto at = next + Distance(run.at - skipped);
      result.insert(result.end(), next, at);
      run.at = result.size();
      result.insert(result.end(), coming, coming + Distance(run.absent));
      coming += Distance(run.absent);
      next = at + Distance(run.present);
      gone.insert(gone.end(), at, next);
      std::swap(run.present, run.absent);
    }
    result.insert(result.end(), next, std::make_move_iterator(list.end()));
    list = std::move(result);
    absent = std::move(gone);
  }

 private:
  [[nodiscard]] static std::ptrdiff_t Distance(std::size_t count) { return static_cast<std::ptrdiff_t>(count); }
};

/// The splices that edits are made of. owner as above.
template <typename Record>
[[nodiscard]] Splice<Record> Replacement(std::size_t at, Record record, std::size_t owner = 0) {
  Splice<Record> splice{owner, {{at, 1, 1}}, {}};
  splice.absent.push_back(std::move(record));
  return splice;
}
template <typename Record>
[[nodiscard]] Splice<Record> Insertion(std::size_t at, std::vector<Record> records, std::size_t owner = 0) {
  const std::size_t count = records.size();
  return {owner, {{at, 0, count}}, std::move(records)};
}
/// Other records in the place of count records from one on.
template <typename Record>
[[nodiscard]] Splice<Record> Replacement(std::size_t at, std::size_t count, std::vector<Record> records,
                                         std::size_t owner = 0) {
  const std::size_t coming = records.size();
  return {owner, {{at, count, coming}}, std::move(records)};
}
/// places: indices in rising order.
template <typename Record>
[[nodiscard]] Splice<Record> Erasure(const std::vector<std::size_t>& places, std::size_t owner = 0) {
  Splice<Record> splice{owner, {}, {}};
  for (const std::size_t at : places) {
    const bool goes_on = !splice.runs.empty() && splice.runs.back().at + splice.runs.back().present == at;
    if (!goes_on) splice.runs.push_back({at, 0, 0});
    ++splice.runs.back().present;
  }
  return splice;
}
/// Moves the record at one index of a list to where it then has another.
template <typename Record>
[[nodiscard]] Splice<Record> Move(const std::vector<Record>& list, std::size_t from, std::size_t to,
                                  std::size_t owner = 0) {
  Splice<Record> splice{owner, {{from, 1, 0}, {to > from ? to + 1 : to, 0, 1}}, {list[from]}};
  if (to < from) std::swap(splice.runs.front(), splice.runs.back());
  return splice;
}

/// What a record says of itself; its points stay. Its own inverse too. Record is Route or TrackLog.
template <typename Record>
struct HeaderExchange {
  std::size_t at = 0;
  Record header;  ///< without points

  void Exchange(std::vector<Record>& list) {
    std::swap(list[at], header);
    list[at].points.swap(header.points);
  }
};

}  // namespace walrim
