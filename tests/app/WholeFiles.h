// Files at one go, through what the programs read and write in pieces.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "app/FileStore.h"

namespace walrim {

inline std::optional<FileProblem> WriteWholeFile(const std::string& path, std::string_view bytes) {
  FileWriter file(path);
  file.Add(bytes);
  return file.Finish();
}

inline std::optional<std::string> ReadWholeFile(const std::string& path, FileProblem* problem = nullptr) {
  FileReader file(path);
  std::string bytes;
  for (std::string_view piece = file.Next(); !piece.empty(); piece = file.Next())
    bytes += piece;
  if (!file.Problem()) return bytes;
  if (problem != nullptr) *problem = *file.Problem();
  return std::nullopt;
}

}  // namespace walrim
