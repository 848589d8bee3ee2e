// The wordings.
#include "qt/Messages.h"

#include <gtest/gtest.h>

namespace walrim::qt_messages {
namespace {

TEST(QtMessages, OfLinksAreWordedSo) {
  EXPECT_EQ(ServerSilent, "サーバーからの応答がありません．");
  EXPECT_EQ(NoProgress, "サーバーからのデータが進まないため，読み込みを中止しました．");
  EXPECT_EQ(CutShort, "データの途中で接続が切れました．");
  EXPECT_EQ(NoHttp, "サーバーの応答がHTTPの形式ではありません．");
  EXPECT_EQ(Compressed, "圧縮されたデータには対応していません．");
  EXPECT_EQ(BadRedirect, "リンクの転送先が正しくありません．");
  EXPECT_EQ(UnsafeRedirect, "安全でない接続（http）への転送のため中止しました．");
  EXPECT_EQ(TooManyRedirects, "リンクの転送が多すぎます．");
  EXPECT_EQ(LinkIsRead, "ほかのリンクを読み込み中です．");
  EXPECT_EQ(NoWebLink, "このリンクは読み込めません．http://かhttps://で始まるリンクを指定してください．");
  EXPECT_EQ(TooLarge(1000), "データが大きすぎます（1000バイトまで）．");
  EXPECT_EQ(RefusedByServer(404, "Not Found"), "サーバーがステータス404（Not Found）を返しました．");
  EXPECT_EQ(RefusedByServer(500, ""), "サーバーがステータス500を返しました．");
  EXPECT_EQ(OfServer("a.example", NotFound), "サーバー「a.example」が見つかりません．");
  EXPECT_EQ(OfServer("a", NotConnected), "サーバー「a」に接続できません．");
  EXPECT_EQ(OfServer("a", NotSecured), "サーバー「a」と安全な接続ができません．");
  EXPECT_EQ(OfServer("a", NotCertified), "サーバー「a」の証明書を確認できません．");
  EXPECT_EQ(OfServer("a", NotReadFrom("why")), "サーバー「a」から読み込めません（why）．");
}

TEST(QtMessages, OfSerialPortsAreWordedSo) {
  EXPECT_EQ(NoSerialPort, "シリアルポートではありません");
  EXPECT_EQ(LockOutlived(12, "/a"),
            "終了したプログラム（プロセス12）のロックファイルが残っています．/a を削除してください．");
}

TEST(QtMessages, OfTheCommandSocketAreWordedSo) {
  EXPECT_EQ(NoWindow, "Walrimのウィンドウが開かれていません．");
  EXPECT_EQ(NoResult, "Walrimのウィンドウから結果が返りませんでした．");
  EXPECT_EQ(WindowBusy, "Walrimは処理中です．");
  EXPECT_EQ(OtherWindowListens, "別のWalrimのウィンドウがコマンドを受け付けています．");
  EXPECT_EQ(BadCommandText, "コマンドの文字が正しくないか，長すぎます．");
  EXPECT_EQ(WindowNotReached("why"), "Walrimのウィンドウに接続できません（why）．");
  EXPECT_EQ(FolderNotPrivate("/a"), "/a がこの利用者だけのフォルダーではないため，コマンドを使えません．");
  EXPECT_EQ(NotListening("/a"), "コマンドを受け付けられません（/a）．");
}

}  // namespace
}  // namespace walrim::qt_messages
