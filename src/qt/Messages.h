// What a user can be shown of links, of serial ports and of the socket for commands.
#pragma once

#include <string>
#include <string_view>

#include "text/Phrase.h"

namespace walrim::qt_messages {

// ---- Links

inline constexpr std::string_view ServerSilent = "サーバーからの応答がありません．";
inline constexpr std::string_view NoProgress = "サーバーからのデータが進まないため，読み込みを中止しました．";
inline constexpr std::string_view CutShort = "データの途中で接続が切れました．";
inline constexpr std::string_view NoHttp = "サーバーの応答がHTTPの形式ではありません．";
inline constexpr std::string_view Compressed = "圧縮されたデータには対応していません．";
inline constexpr std::string_view BadRedirect = "リンクの転送先が正しくありません．";
inline constexpr std::string_view UnsafeRedirect = "安全でない接続（http）への転送のため中止しました．";
inline constexpr std::string_view TooManyRedirects = "リンクの転送が多すぎます．";
inline constexpr std::string_view LinkIsRead = "ほかのリンクを読み込み中です．";
inline constexpr std::string_view NoWebLink =
    "このリンクは読み込めません．http://かhttps://で始まるリンクを指定してください．";
[[nodiscard]] inline std::string TooLarge(long long most_bytes) {
  return Phrase("データが大きすぎます（%1バイトまで）．", most_bytes);
}
/// reason is the server's own word for the status; empty where it gives none.
[[nodiscard]] inline std::string RefusedByServer(int status, const std::string& reason) {
  if (reason.empty()) return Phrase("サーバーがステータス%1を返しました．", status);
  return Phrase("サーバーがステータス%1（%2）を返しました．", status, reason);
}

// What goes wrong between here and a server.

inline constexpr std::string_view NotFound = "が見つかりません．";
inline constexpr std::string_view NotConnected = "に接続できません．";
inline constexpr std::string_view NotSecured = "と安全な接続ができません．";
inline constexpr std::string_view NotCertified = "の証明書を確認できません．";
[[nodiscard]] inline std::string NotReadFrom(std::string_view why) {
  return Phrase("から読み込めません（%1）．", why);
}
[[nodiscard]] inline std::string OfServer(std::string_view host, std::string_view problem) {
  return Phrase("サーバー「%1」%2", host, Phrase(problem));
}

// ---- Serial ports

inline constexpr std::string_view NoSerialPort = "シリアルポートではありません";
/// process is the number of the program that is gone.
[[nodiscard]] inline std::string LockOutlived(int process, const std::string& path) {
  return Phrase("終了したプログラム（プロセス%1）のロックファイルが残っています．%2 を削除してください．", process,
                path);
}

// ---- The socket for commands

inline constexpr std::string_view NoWindow = "Walrimのウィンドウが開かれていません．";
inline constexpr std::string_view NoResult = "Walrimのウィンドウから結果が返りませんでした．";
inline constexpr std::string_view WindowBusy = "Walrimは処理中です．";
inline constexpr std::string_view OtherWindowListens = "別のWalrimのウィンドウがコマンドを受け付けています．";
inline constexpr std::string_view BadCommandText = "コマンドの文字が正しくないか，長すぎます．";
[[nodiscard]] inline std::string WindowNotReached(const std::string& why) {
  return Phrase("Walrimのウィンドウに接続できません（%1）．", why);
}
[[nodiscard]] inline std::string FolderNotPrivate(const std::string& folder) {
  return Phrase("%1 がこの利用者だけのフォルダーではないため，コマンドを使えません．", folder);
}
[[nodiscard]] inline std::string NotListening(const std::string& name) {
  return Phrase("コマンドを受け付けられません（%1）．", name);
}

}  // namespace walrim::qt_messages
