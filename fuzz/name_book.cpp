// Names that a user has edited: nothing breaks, and what is written is what is read again.
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "preflight/NameBook.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  walrim::NameBook book;
  static_cast<void>(book.Read({reinterpret_cast<const char*>(bytes), size}));
  const std::string text = book.Text();
  walrim::NameBook again;
  if (again.Read(text) != 0 || again.Text() != text) std::abort();
  for (const walrim::NamePair& pair : book.Pairs()) {
    if (book.ShortOf(pair.long_name).empty()) std::abort();
    if (pair.place && book.LongOf(pair.short_name, *pair.place).empty()) std::abort();
  }
  return 0;
}
