#include "text/Scan.h"

namespace walrim {

std::string UpperCase(std::string_view text) {
  std::string upper(text);
  for (char& c : upper)
    c = UpperCase(c);
  return upper;
}

std::string LowerCase(std::string_view text) {
  std::string lower(text);
  for (char& c : lower)
    c = LowerCase(c);
  return lower;
}

}  // namespace walrim
