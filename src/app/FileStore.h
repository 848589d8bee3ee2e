// Files, read and written whole.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace walrim {

/// Larger files are refused: the fullest data set takes a tenth of it.
inline constexpr std::size_t LargestFile = 64U * 1024U * 1024U;

/// The system's words for what went wrong with a file.
struct FileProblem {
  std::string detail;
};

/// Reads a whole file, or standard input's rest for "-". What else is no regular file (a pipe, a device) is refused, as
/// whoever reads it may wait for ever. Nothing on an error, then *problem says why.
[[nodiscard]] std::optional<std::string> ReadWholeFile(const std::string& path, FileProblem* problem = nullptr);

/// Writes a file whole or not at all: to a new file beside it, flushed to the disk, then moved over it. What stood
/// there before is untouched on an error, and whoever reads it meanwhile sees the one or the other whole. Owner and
/// rights stay as far as the user may give them; a file that the user may not write is not replaced. A symbolic link's
/// target is written, but not that of another user's link in a folder where everybody may put one; other hard links
/// keep the old contents; something that is no regular file (a pipe, a device) is written directly. Nothing on success.
[[nodiscard]] std::optional<FileProblem> WriteWholeFile(const std::string& path, std::string_view bytes);

/// Why a path is not to be followed to what it names: it is a link of another user, see WriteWholeFile.
[[nodiscard]] std::optional<FileProblem> CheckLink(const std::string& path);

/// Whether a file could be written at a path: its folder exists and may be written to, and so may
/// a file that stands there. Creates nothing.
[[nodiscard]] std::optional<FileProblem> CheckWritable(const std::string& path);

/// False only where certainly nothing stands at a path: what cannot be looked at may be there.
[[nodiscard]] bool FileExists(const std::string& path);

}  // namespace walrim
