// A GPX text is read; what was read is written and read back, and then is the same data set: in a standard file, and in
// GPX again. What is refused leaves nothing.
#include <cstdlib>

#include "format_texts.h"
#include "formats/GpxReader.h"

using namespace walrim;

namespace {

bool HoldsAnything(const DataSet& data) {
  return data.Holds(DataKind::Waypoint) || data.Holds(DataKind::Route) || data.Holds(DataKind::TrackLog);
}

void Check(bool holds) {
  if (!holds) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  const std::string_view input(reinterpret_cast<const char*>(bytes), size);
  LineSource lines(input, EncodingOf(input));
  DataSet data;
  const ImportResult result = ReadGpx(lines, data, {UtcOffsetHours});
  Check(result.refusal.empty() || !HoldsAnything(data));
  (void)IsGpx(input);

  // Rounding to a standard file's digits comes first.
  DataSet held;
  (void)ReadText(FormatId::Standard, WriteText(FormatId::Standard, data), held);
  const std::string gpx = WriteText(FormatId::Gpx, held);
  Check(gpx.empty() == !HoldsAnything(held));
  if (gpx.empty()) return 0;
  DataSet back;
  const ImportResult again = ReadText(FormatId::Gpx, gpx, back);
  Check(again.refusal.empty() && again.skipped.count == 0 && again.messages.count == 0);
  Check(WriteText(FormatId::Standard, back) == WriteText(FormatId::Standard, held));
  Check(WriteText(FormatId::Gpx, back) == gpx);
  return 0;
}
