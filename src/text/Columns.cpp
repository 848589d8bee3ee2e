#include "text/Columns.h"

#include <stdexcept>

#include "text/Scan.h"

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace walrim {
namespace {

/// Bit i is set where byte i of 16 is a TAB or a comma.
unsigned SeparatorsOf16(const char* at) {
#if defined(__SSE2__)
  const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(at));
  const __m128i found =
      _mm_or_si128(_mm_cmpeq_epi8(bytes, _mm_set1_epi8('\t')), _mm_cmpeq_epi8(bytes, _mm_set1_epi8(',')));
  return static_cast<unsigned>(_mm_movemask_epi8(found));
#else
  unsigned mask = 0;
  for (unsigned i = 0; i < 16; ++i)
    mask |= (at[i] == '\t' || at[i] == ',' ? 1U : 0U) << i;
  return mask;
#endif
}

/// Fills columns one after the other.
class ColumnSink {
 public:
  explicit ColumnSink(std::array<std::string_view, MaxColumns>& columns)
      : next_(columns.data()), end_(next_ + MaxColumns) {}

  void Add(const char* begin, const char* end) {
    if (next_ == end_) throw std::out_of_range("a line has more columns than it may");
    std::string_view column(begin, static_cast<std::size_t>(end - begin));
    if (begin != end && (*begin == ' ' || end[-1] == ' ')) column = TrimBlanks(column);
    *next_++ = column;
  }
  [[nodiscard]] const std::string_view* Next() const { return next_; }

 private:
  std::string_view* next_;
  std::string_view* end_;
};

}  // namespace

std::size_t SplitColumns(std::string_view line, std::array<std::string_view, MaxColumns>& columns) {
  ColumnSink sink(columns);
  const char* column = line.data();
  const char* at = line.data();
  const char* const end = at + line.size();
  for (; end - at >= 16; at += 16) {
    for (unsigned mask = SeparatorsOf16(at); mask != 0; mask &= mask - 1) {
      const char* const separator = at + __builtin_ctz(mask);
      sink.Add(column, separator);
      column = separator + 1;
    }
  }
  for (; at != end; ++at) {
    if (*at != '\t' && *at != ',') continue;
    sink.Add(column, at);
    column = at + 1;
  }
  sink.Add(column, end);
  return static_cast<std::size_t>(sink.Next() - columns.data());
}

}  // namespace walrim
