// A table of fixed size that takes memory only where something was put into it.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <memory>
#include <stdexcept>
#include <utility>
#include <vector>

namespace walrim {

/// Entries 0 to size - 1, each Entry{} until it is written to. References stay valid until the entry is reset.
template <typename Entry>
class PagedTable {
 public:
  explicit PagedTable(std::size_t size) : size_(size), pages_((size + PageSize - 1) / PageSize) {}

  [[nodiscard]] std::size_t size() const { return size_; }

  /// Reading leaves the table as it is. Throws std::out_of_range from size() on, as at does.
  const Entry& operator[](std::size_t index) const { return at(index); }
  Entry& operator[](std::size_t index) { return at(index); }
  [[nodiscard]] const Entry& at(std::size_t index) const {
    static const Entry unwritten{};
    CheckIndex(index);
    const auto& page = pages_[index / PageSize];
    return page ? (*page)[index % PageSize] : unwritten;
  }
  Entry& at(std::size_t index) {
    CheckIndex(index);
    auto& page = pages_[index / PageSize];
    if (!page) page = std::make_unique<Page>();
    return (*page)[index % PageSize];
  }

  /// Takes entries from, to - 1 and all between out of a table of the same size, which has then what they were at
  /// first.
  void Take(PagedTable& other, std::size_t from, std::size_t to) {
    Reset(from, to);
    for (std::size_t first = from; first < to;) {
      const std::size_t page = first / PageSize;
      const std::size_t end = std::min(to, (page + 1) * PageSize);
      if (end - first == PageSize) {
        pages_[page] = std::move(other.pages_[page]);
      } else if (other.pages_[page]) {
        for (std::size_t i = first; i < end; ++i)
          at(i) = std::move(other.at(i));
      }
      first = end;
    }
    other.Reset(from, to);
  }

  /// Makes entries from, to - 1 and all between what they were at first. to is at most size().
  void Reset(std::size_t from, std::size_t to) {
    for (std::size_t first = from; first < to;) {
      const std::size_t page = first / PageSize;
      const std::size_t end = std::min(to, (page + 1) * PageSize);
      if (end - first == PageSize) {
        pages_[page].reset();
      } else if (pages_[page]) {
        const auto begin = pages_[page]->begin();
        std::fill(begin + static_cast<std::ptrdiff_t>(first % PageSize),
                  begin + static_cast<std::ptrdiff_t>(first % PageSize + (end - first)), Entry{});
      }
      first = end;
    }
  }
  void Reset() { Reset(0, size_); }

 private:
  static constexpr std::size_t PageSize = 100;
  using Page = std::array<Entry, PageSize>;

  void CheckIndex(std::size_t index) const {
    if (index >= size_) throw std::out_of_range("no such entry");
  }

  std::size_t size_;
  std::vector<std::unique_ptr<Page>> pages_;
};

}  // namespace walrim
