// What is said of something that cannot be taken in.
#pragma once

#include <string>

namespace walrim {

inline std::string RefusedFile(const std::string& name) {
  return "未対応のファイルです．\n" + name +
         "\n標準形式（grc），WPT+形式（txt），MPS形式（mps）のファイルを取り込めます．";
}
inline const std::string RefusedText =
    "未対応のファイルです．\n標準形式，WPT+形式，MPS形式の文字列か，地図上の位置を取り込めます．";
inline const std::string EmptyClipboard = "クリップボードにデータがありません．";

}  // namespace walrim
