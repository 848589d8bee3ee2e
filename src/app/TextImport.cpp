#include "app/TextImport.h"

#include "formats/MpsWpt.h"
#include "formats/ProAtlas.h"

namespace walrim {

namespace {

ImportResult ReadWptInto(InternalData& data, const std::string& text, int utc_offset_hours) {
  WptReader reader(data, utc_offset_hours);
  reader.ReadText(text);
  ImportResult result;
  result.summary = reader.Summary();
  result.messages = reader.Messages();
  return result;
}

}  // namespace

ImportResult ReadTextInto(InternalData& data, const std::string& text, FileFormat format, int utc_offset_hours) {
  if (format == FileFormat::WptPlus) return ReadWptInto(data, text, utc_offset_hours);
  if (format == FileFormat::Standard) {
    StandardReader reader(data, utc_offset_hours);
    reader.ReadText(text);
    ImportResult result;
    result.summary = reader.Summary();
    return result;
  }
  const Conversion wpt = ConvertScriptToWpt(text);
  ImportResult result = ReadWptInto(data, wpt.text, utc_offset_hours);
  result.skipped_statements = wpt.skipped;
  result.first_skipped_statement_why = wpt.first_skipped_why;
  return result;
}

}  // namespace walrim
