#include "app/ImportText.h"

#include <utility>

#include "text/Scan.h"

namespace walrim {

namespace {

/// More than the first line of any format's text, and most comments in front of one.
constexpr std::size_t BeginningSize = 16384;

}  // namespace

void ImportText::Begin(std::string_view piece) {
  static_cast<void>(Take(piece, "\xEF\xBB\xBF"));
  beginning_ = piece.substr(0, BeginningSize);
}

ImportText ImportText::OfFile(const std::string& path) {
  ImportText text;
  auto file = std::make_unique<FileReader>(path);
  EncodingDetector detector;
  bool at_beginning = true;
  for (std::string_view piece = file->Next(); !piece.empty(); piece = file->Next()) {
    if (std::exchange(at_beginning, false)) text.Begin(piece);
    detector.Add(piece);
    if (path == StandardStream) text.held_.emplace_back(piece);
  }
  text.encoding_ = detector.Encoding();
  text.problem_ = file->Problem();
  if (path != StandardStream) text.file_ = std::move(file);
  return text;
}

ImportText ImportText::OfBytes(std::string bytes) {
  EncodingDetector detector;
  detector.Add(bytes);
  ImportText text = OfUtf8(std::move(bytes));
  text.encoding_ = detector.Encoding();
  return text;
}

ImportText ImportText::OfUtf8(std::string utf8) {
  ImportText text;
  text.Begin(utf8);
  text.held_.push_back(std::move(utf8));
  return text;
}

LineSource ImportText::Lines() {
  next_held_ = 0;
  if (file_) file_->Rewind();
  return LineSource([this] { return NextPiece(); }, encoding_);
}

std::string_view ImportText::NextPiece() {
  if (file_) {
    const std::string_view piece = file_->Next();
    problem_ = file_->Problem();
    return piece;
  }
  return next_held_ < held_.size() ? std::string_view(held_[next_held_++]) : std::string_view();
}

}  // namespace walrim
