#include "app/OutputTypes.h"

#include <algorithm>

#include "text/Utf8.h"

namespace walrim {

namespace {

constexpr OutputType Types[] = {
    {"標準", "grc", "標準ファイル (*.grc)|*.grc|", FileFormat::Standard},
    {"WPT+", "txt", "WPT+ファイル (*.txt)|*.txt|", FileFormat::WptPlus},
    {"MPS", "mps", "MPSファイル (*.mps)|*.mps|", FileFormat::MapServerScript},
};

template <typename Matches>
const OutputType& FirstOf(Matches matches) {
  const auto* found = std::find_if(std::begin(Types), std::end(Types), matches);
  return found != std::end(Types) ? *found : Types[0];
}

}  // namespace

std::span<const OutputType> OutputTypes() {
  return Types;
}

const OutputType& OutputTypeOfName(std::string_view name) {
  return FirstOf([&](const OutputType& type) { return type.name == name; });
}

const OutputType& OutputTypeOfExtension(std::string_view extension) {
  return FirstOf([&](const OutputType& type) { return UpperCase(type.extension) == UpperCase(extension); });
}

std::string DialogFilter(const OutputType& type) {
  return "すべてのファイル (*.*)|*.*|" + std::string(type.filter);
}

}  // namespace walrim
