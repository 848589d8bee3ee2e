// Files that are read and written in pieces, and written whole or not at all.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "app/FileReplacement.h"
#include "platform/Descriptor.h"

namespace walrim {

/// Larger files are refused: the fullest data set takes a tenth of it.
inline constexpr std::size_t LargestFile = 64U * 1024U * 1024U;

/// The name that stands for standard input where files are read, and for standard output where they are written.
inline constexpr std::string_view StandardStream = "-";

/// The system's words for what went wrong with a file.
struct FileProblem {
  std::string detail;
};

/// Writes to a descriptor until nothing is left; false, with the reason in errno, where that fails.
[[nodiscard]] bool WriteAll(int fd, std::string_view bytes);

/// A file that is read in pieces. What is neither standard input nor a regular file (a pipe, a device) is refused, as
/// whoever reads it may wait for ever.
class FileReader {
 public:
  explicit FileReader(const std::string& path);

  /// The next piece, of the same size but for the last one; empty at the end and on an error. Valid until the next
  /// call.
  [[nodiscard]] std::string_view Next();
  /// When a file was written last, in Unix time; nothing for standard input.
  [[nodiscard]] std::optional<std::int64_t> Modified() const;
  /// Goes back to the beginning, which standard input cannot.
  void Rewind();
  /// What went wrong, if anything did.
  [[nodiscard]] const std::optional<FileProblem>& Problem() const { return problem_; }

 private:
  Descriptor file_;
  std::string piece_;
  bool standard_input_ = false;
  std::size_t read_ = 0;  ///< bytes since the beginning
  std::optional<FileProblem> problem_;
};

/// Writes a file whole or not at all: to a new file beside it, flushed to the disk, then moved over it. What stood
/// there before is untouched on an error, and whoever reads it meanwhile sees the one or the other whole. Owner and
/// rights stay as far as the user may give them; a file that the user may not write is not replaced. A symbolic link's
/// target is written, but not that of another user's link in a folder where everybody may put one; other hard links
/// keep the old contents; standard output and what is no regular file (a pipe, a device) get all bytes at the end.
class FileWriter {
 public:
  explicit FileWriter(std::string path) : path_(std::move(path)) {}

  /// Nothing happens before the first call, nor behind one that failed.
  void Add(std::string_view bytes);
  /// Forgets all bytes.
  void StartOver();
  /// Puts the file into its place; why it could not, now or before.
  [[nodiscard]] std::optional<FileProblem> Finish();

 private:
  void Begin();
  void WriteHeld();

  std::string path_;
  bool begun_ = false;
  std::optional<FileReplacement> file_;  ///< where a new file may stand
  std::string target_;                   ///< what gets the held bytes where none may
  std::vector<std::string> held_;
  std::optional<FileProblem> problem_;
};

/// Why a path is not to be followed to what it names: it is a link of another user, see FileWriter.
[[nodiscard]] std::optional<FileProblem> CheckLink(const std::string& path);

/// Whether a file could be written at a path: its folder exists and may be written to, and so may
/// a file that stands there. Creates nothing.
[[nodiscard]] std::optional<FileProblem> CheckWritable(const std::string& path);

/// False only where certainly nothing stands at a path: what cannot be looked at may be there.
[[nodiscard]] bool FileExists(const std::string& path);

}  // namespace walrim
