// A text that is to be imported, wherever it lies.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "app/FileStore.h"
#include "text/TextEncoding.h"

namespace walrim {

/// A text whose encoding is found out: a file, which is read in pieces, once for that and once for its lines; or bytes
/// that are held.
class ImportText {
 public:
  /// "-" is standard input, which is held. A file that cannot be read leaves an empty text and a problem.
  [[nodiscard]] static ImportText OfFile(const std::string& path);
  [[nodiscard]] static ImportText OfBytes(std::string bytes);
  [[nodiscard]] static ImportText OfUtf8(std::string text);

  /// The beginning, by which the format is known; without a byte order mark.
  [[nodiscard]] std::string_view Beginning() const { return beginning_; }
  /// When the file was written last, in Unix time; nothing for standard input and for bytes that are held.
  [[nodiscard]] std::optional<std::int64_t> Modified() const { return file_ ? file_->Modified() : std::nullopt; }
  /// The lines from the first on. This object must outlive them, and stay where it is.
  [[nodiscard]] LineSource Lines();
  /// What went wrong with the file, if anything did; the lines end there.
  [[nodiscard]] const std::optional<FileProblem>& Problem() const { return problem_; }

 private:
  void Begin(std::string_view piece);
  [[nodiscard]] std::string_view NextPiece();

  std::unique_ptr<FileReader> file_;  ///< nothing where the bytes are held
  std::vector<std::string> held_;
  std::size_t next_held_ = 0;
  std::string beginning_;
  TextEncoding encoding_ = TextEncoding::Utf8;
  std::optional<FileProblem> problem_;
};

}  // namespace walrim
