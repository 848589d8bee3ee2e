// A WPT+ text is read and written; what was written loses no line, and from then on reading and writing change nothing.
// Only quotes bring a comma into a text, which then cuts its line when it is written.
#include <cstdlib>

#include "format_texts.h"

using namespace walrim;

namespace {

std::string Write(const DataSet& data) {
  return WriteText(FormatId::WptPlus, data);
}

DataSet Reread(std::string_view text) {
  DataSet data;
  const ImportResult result = ReadText(FormatId::WptPlus, text, data);
  if (result.skipped.count != 0 || result.messages.count != 0) std::abort();
  return data;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  DataSet data;
  const std::string text = DecodedInput(bytes, size);
  if (ReadText(FormatId::WptPlus, text, data).messages.kept.size() > MessageList::MostKept) std::abort();
  (void)WriteText(FormatId::WptPlus, data, InForm(AngleNotation::DMS, Datum::Tokyo));
  if (text.find('"') != std::string::npos) return 0;
  // The first writing rounds positions to 15 digits.
  const std::string settled = Write(Reread(Write(data)));
  if (Write(Reread(settled)) != settled) std::abort();
  return 0;
}
