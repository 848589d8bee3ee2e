// Any text as a script. A script of ours made of what it gives is read back with no more than one statement left out.
#include <cstdlib>

#include "format_texts.h"

using namespace walrim;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  DataSet data;
  (void)ReadText(FormatId::Script, DecodedInput(bytes, size), data);
  DataSet back;
  if (ReadText(FormatId::Script, WriteText(FormatId::Script, data), back).statements.count > 1) std::abort();
  return 0;
}
