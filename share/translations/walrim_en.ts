<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="ja">
<context>
    <name>walrim</name>
    <message>
        <source>ポート</source>
        <translation>Port</translation>
    </message>
    <message>
        <source>%1がありません．</source>
        <translation>%1 is not there.</translation>
    </message>
    <message>
        <source>%1は他のプログラムが使用中です．</source>
        <translation>Another program uses %1.</translation>
    </message>
    <message>
        <source>%1を開く権限がありません．</source>
        <translation>You have no permission to open %1.</translation>
    </message>
    <message>
        <source>グループ%1に加わってください： sudo usermod -aG %1 $USER</source>
        <translation> Join the group %1: sudo usermod -aG %1 $USER</translation>
    </message>
    <message>
        <source>%1を開けません：%2</source>
        <translation>%1 cannot be opened: %2</translation>
    </message>
    <message>
        <source>%1の値が受信機の範囲を超えています．</source>
        <translation>A value of %1 is beyond the receiver's range.</translation>
    </message>
    <message>
        <source>%1の文字「%2」は受信機に送れません．</source>
        <translation>The character “%2” of %1 cannot be sent to the receiver.</translation>
    </message>
    <message>
        <source>緯度</source>
        <translation>Latitude</translation>
    </message>
    <message>
        <source>経度</source>
        <translation>Longitude</translation>
    </message>
    <message>
        <source>度（D形式，例 35.6252）</source>
        <translation>degrees (D, such as 35.6252)</translation>
    </message>
    <message>
        <source>度（D形式，例 139.2437）</source>
        <translation>degrees (D, such as 139.2437)</translation>
    </message>
    <message>
        <source>度分秒（DMS形式，例 35.373072）</source>
        <translation>degrees, minutes and seconds (DMS, such as 35.373072)</translation>
    </message>
    <message>
        <source>度分秒（DMS形式，例 139.143732）</source>
        <translation>degrees, minutes and seconds (DMS, such as 139.143732)</translation>
    </message>
    <message>
        <source>%1「%2」は%3として読めません．</source>
        <translation>%1 “%2” cannot be read as %3.</translation>
    </message>
    <message>
        <source>%1「%2」は-%3度から%3度までの範囲にありません．</source>
        <translation>%1 “%2” is not between -%3 and %3 degrees.</translation>
    </message>
    <message>
        <source>%1「%2」は南緯・西経のため，度分秒（DMS形式）では扱えません．</source>
        <translation>%1 “%2” is south or west, which degrees, minutes and seconds (DMS) cannot express.</translation>
    </message>
    <message>
        <source>%1「%2」は位置として読めません．度（例 35.6252），度分秒（例 35°37'30.7"），地図のリンクのどれかで入力してください．</source>
        <translation>%1 “%2” cannot be read as a position. Type degrees (such as 35.6252), degrees, minutes and seconds (such as 35°37'30.7") or a link to a map.</translation>
    </message>
    <message>
        <source>「%1」は%2ではありません．</source>
        <translation>“%1” is no %2.</translation>
    </message>
    <message>
        <source>その位置は地球の上にありません．</source>
        <translation>That position is not on the globe.</translation>
    </message>
    <message>
        <source>角度の表記が不明です</source>
        <translation>the notation of angles is unknown</translation>
    </message>
    <message>
        <source>測地系が不明です</source>
        <translation>the datum is unknown</translation>
    </message>
    <message>
        <source>列が多すぎます</source>
        <translation>there are too many columns</translation>
    </message>
    <message>
        <source>緯度または経度がありません</source>
        <translation>latitude or longitude is missing</translation>
    </message>
    <message>
        <source>緯度または経度の書き方が不正です</source>
        <translation>latitude or longitude is written wrongly</translation>
    </message>
    <message>
        <source>緯度または経度が範囲外です</source>
        <translation>latitude or longitude is out of range</translation>
    </message>
    <message>
        <source>前にルートのヘッダ行(RTH)がありません</source>
        <translation>no line that begins a route (RTH) stands in front of it</translation>
    </message>
    <message>
        <source>前にトラックログのヘッダ行(TRH)がありません</source>
        <translation>no line that begins a track log (TRH) stands in front of it</translation>
    </message>
    <message>
        <source>ヘッダ行を格納できなかったため，この点も格納できません</source>
        <translation>the point has no room because its header had none</translation>
    </message>
    <message>
        <source>位置が読めません</source>
        <translation>the position cannot be read</translation>
    </message>
    <message>
        <source>トラックログの点が多すぎます</source>
        <translation>the track log has too many points</translation>
    </message>
    <message>
        <source>文の後ろに同じ行の続きがあります</source>
        <translation>something stands behind the statement in its line</translation>
    </message>
    <message>
        <source>文に終わりがありません</source>
        <translation>the statement has no end</translation>
    </message>
    <message>
        <source>XMLの書き方が不正です</source>
        <translation>the XML is not well formed</translation>
    </message>
    <message>
        <source>XMLにない文字があります</source>
        <translation>it has a character that XML has not</translation>
    </message>
    <message>
        <source>XMLにない実体参照があります</source>
        <translation>it has an entity that XML has not</translation>
    </message>
    <message>
        <source>実体の宣言には対応していません</source>
        <translation>declarations of entities are not supported</translation>
    </message>
    <message>
        <source>要素の入れ子が深すぎます</source>
        <translation>elements are nested too deeply</translation>
    </message>
    <message>
        <source>要素の属性が多すぎます</source>
        <translation>an element has too many attributes</translation>
    </message>
    <message>
        <source>属性の値が長すぎます</source>
        <translation>the value of an attribute is too long</translation>
    </message>
    <message>
        <source>文字コードが宣言と合わないか，対応していません</source>
        <translation>the encoding is not the declared one, or not supported</translation>
    </message>
    <message>
        <source>64MBを超えています</source>
        <translation>it is larger than 64 MB</translation>
    </message>
    <message>
        <source>GPXではありません</source>
        <translation>it is not GPX</translation>
    </message>
    <message>
        <source>%1（%2行目の%3文字目）</source>
        <translation>%1 (line %2, character %3)</translation>
    </message>
    <message>
        <source>知らないシンボルはWaypointにしました：%1．</source>
        <translation>Unknown symbols became Waypoint: %1.</translation>
    </message>
    <message>
        <source>受信機にないシンボルは近いものにしました：%1．</source>
        <translation>Symbols that the receiver lacks became similar ones: %1.</translation>
    </message>
    <message>
        <source>99点を超えるルートが%1本あり，続きを別のルートにしました．</source>
        <translation>%1 route(s) had more than 99 points; the rest became other routes.</translation>
    </message>
    <message>
        <source>サーバーからの応答がありません．</source>
        <translation>The server does not answer.</translation>
    </message>
    <message>
        <source>サーバーからのデータが進まないため，読み込みを中止しました．</source>
        <translation>No more data came from the server; reading was given up.</translation>
    </message>
    <message>
        <source>データの途中で接続が切れました．</source>
        <translation>The connection broke in the middle of the data.</translation>
    </message>
    <message>
        <source>サーバーの応答がHTTPの形式ではありません．</source>
        <translation>The server's answer is not HTTP.</translation>
    </message>
    <message>
        <source>圧縮されたデータには対応していません．</source>
        <translation>Compressed data are not supported.</translation>
    </message>
    <message>
        <source>リンクの転送先が正しくありません．</source>
        <translation>The link is redirected to a wrong place.</translation>
    </message>
    <message>
        <source>安全でない接続（http）への転送のため中止しました．</source>
        <translation>Given up: the link is redirected to an unsafe connection (http).</translation>
    </message>
    <message>
        <source>リンクの転送が多すぎます．</source>
        <translation>The link is redirected too often.</translation>
    </message>
    <message>
        <source>ほかのリンクを読み込み中です．</source>
        <translation>Another link is being read.</translation>
    </message>
    <message>
        <source>このリンクは読み込めません．http://かhttps://で始まるリンクを指定してください．</source>
        <translation>This link cannot be read. Give one that begins with http:// or https://.</translation>
    </message>
    <message>
        <source>データが大きすぎます（%1バイトまで）．</source>
        <translation>The data are too large (at most %1 bytes).</translation>
    </message>
    <message>
        <source>サーバーがステータス%1を返しました．</source>
        <translation>The server answered with the status %1.</translation>
    </message>
    <message>
        <source>サーバーがステータス%1（%2）を返しました．</source>
        <translation>The server answered with the status %1 (%2).</translation>
    </message>
    <message>
        <source>が見つかりません．</source>
        <translation> was not found.</translation>
    </message>
    <message>
        <source>に接続できません．</source>
        <translation> cannot be connected to.</translation>
    </message>
    <message>
        <source>と安全な接続ができません．</source>
        <translation> allows no secure connection.</translation>
    </message>
    <message>
        <source>の証明書を確認できません．</source>
        <translation> has a certificate that cannot be verified.</translation>
    </message>
    <message>
        <source>から読み込めません（%1）．</source>
        <translation> cannot be read from (%1).</translation>
    </message>
    <message>
        <source>サーバー「%1」%2</source>
        <translation>The server “%1”%2</translation>
    </message>
    <message>
        <source>シリアルポートではありません</source>
        <translation>it is no serial port</translation>
    </message>
    <message>
        <source>終了したプログラム（プロセス%1）のロックファイルが残っています．%2 を削除してください．</source>
        <translation>A program that has ended (process %1) left its lock file. Remove %2.</translation>
    </message>
    <message>
        <source>Walrimのウィンドウが開かれていません．</source>
        <translation>No window of Walrim is open.</translation>
    </message>
    <message>
        <source>Walrimのウィンドウから結果が返りませんでした．</source>
        <translation>The window of Walrim gave no result.</translation>
    </message>
    <message>
        <source>Walrimは処理中です．</source>
        <translation>Walrim is busy.</translation>
    </message>
    <message>
        <source>別のWalrimのウィンドウがコマンドを受け付けています．</source>
        <translation>Another window of Walrim takes commands.</translation>
    </message>
    <message>
        <source>コマンドの文字が正しくないか，長すぎます．</source>
        <translation>The command's text is wrong or too long.</translation>
    </message>
    <message>
        <source>Walrimのウィンドウに接続できません（%1）．</source>
        <translation>The window of Walrim cannot be connected to (%1).</translation>
    </message>
    <message>
        <source>%1 がこの利用者だけのフォルダーではないため，コマンドを使えません．</source>
        <translation>%1 is not this user's alone, so commands cannot be used.</translation>
    </message>
    <message>
        <source>コマンドを受け付けられません（%1）．</source>
        <translation>Commands cannot be taken (%1).</translation>
    </message>
    <message>
        <source>ほかのUSBポートかアダプターで試してください．</source>
        <translation>Try another USB port or adapter.</translation>
    </message>
    <message>
        <source>電源，プラグの向きと奥までの差し込み，ポートの番号を確かめてください．</source>
        <translation>Check the power, that the plug is the right way round and all the way in, and the port's number.</translation>
    </message>
    <message>
        <source>ほかのポートにつながっているかもしれません．すべてのポートを探すことができます（walrim-cli doctor --find）．</source>
        <translation>It may be at another port. All ports can be searched (walrim-cli doctor --find).</translation>
    </message>
    <message>
        <source>「誤り検査」を「する」（--checked-link）にすると，壊れたデータを送り直させます．USBアダプターかケーブルを替えてみてください．</source>
        <translation>With “Error check” set to “On” (--checked-link) damaged data are sent again. Try another USB adapter or cable.</translation>
    </message>
    <message>
        <source>点字ディスプレイ用のbrlttyが，このアダプター（CH340，CP210x）を自分のものにすることがあります．点字ディスプレイを使わないならアンインストールしてください．</source>
        <translation>brltty, for Braille displays, may take this adapter (CH340, CP210x) for its own. Uninstall it if you use no Braille display.</translation>
    </message>
    <message>
        <source>GARMIN（古い機種では GRMN/GRMN）</source>
        <translation>GARMIN (GRMN/GRMN on older models)</translation>
    </message>
    <message>
        <source>受信機の Setup → Interface を %1 にしてから，もう一度調べてください．</source>
        <translation>Set Setup → Interface of the receiver to %1, then examine it again.</translation>
    </message>
    <message>
        <source>ポート%1</source>
        <translation>Port %1</translation>
    </message>
    <message>
        <source>（プロセス%1）</source>
        <translation> (process %1)</translation>
    </message>
    <message>
        <source>%1%2が使っています．終了してください．</source>
        <translation>%1%2 uses it. Close that program.</translation>
    </message>
    <message>
        <source>他のプログラム</source>
        <translation>Another program</translation>
    </message>
    <message>
        <source>ロックファイル%1%2があります．そのプログラムを終了してください．</source>
        <translation>There is the lock file %1%2. Close its program.</translation>
    </message>
    <message>
        <source>GPSの常駐プログラムgpsdが使っています．止めるには： sudo systemctl stop gpsd.socket gpsd</source>
        <translation>The GPS service gpsd uses it. To stop it: sudo systemctl stop gpsd.socket gpsd</translation>
    </message>
    <message>
        <source>ModemManagerが動いています．つないだ直後の30秒ほどは，モデムかどうかを調べるためにポートを使います．</source>
        <translation>ModemManager is running. For some 30 seconds after plugging in it uses the port to see whether it is a modem.</translation>
    </message>
    <message>
        <source>位置 %1，%2</source>
        <translation>position %1, %2</translation>
    </message>
    <message>
        <source>時刻 %1 UTC</source>
        <translation>time %1 UTC</translation>
    </message>
    <message>
        <source>衛星 %1個</source>
        <translation>%1 satellite(s)</translation>
    </message>
    <message>
        <source>ケーブルは正しくつながっています．</source>
        <translation>The cable is connected properly.</translation>
    </message>
    <message>
        <source>ケーブルは正しくつながっています（%1）．</source>
        <translation>The cable is connected properly (%1).</translation>
    </message>
    <message>
        <source>　</source>
        <translation>, </translation>
    </message>
    <message>
        <source>アダプターがデータを%1ミリ秒ためてから渡しています．1ミリ秒にすると速くなります．</source>
        <translation>The adapter holds data back for %1 milliseconds. One millisecond would be faster.</translation>
    </message>
    <message>
        <source>受信機の出力が%1（%2ボー）になっています．</source>
        <translation>The receiver's output is set to %1 (%2 baud).</translation>
    </message>
    <message>
        <source>%1回のうち%2回，正しい応答がありました</source>
        <translation>%2 of %1 requests were answered properly</translation>
    </message>
    <message>
        <source>壊れたフレーム %1個</source>
        <translation>%1 damaged frame(s)</translation>
    </message>
    <message>
        <source>余分なバイト %1個</source>
        <translation>%1 stray byte(s)</translation>
    </message>
    <message>
        <source>応答まで%1ミリ秒</source>
        <translation>answer after %1 ms</translation>
    </message>
    <message>
        <source>往復%1ミリ秒</source>
        <translation>round trip %1 ms</translation>
    </message>
    <message>
        <source>，</source>
        <translation>, </translation>
    </message>
    <message>
        <source>%1ボーでNMEAの文が届いています</source>
        <translation>NMEA sentences come at %1 baud</translation>
    </message>
    <message>
        <source>%1ボーでText Outの文が届いています</source>
        <translation>Text Out sentences come at %1 baud</translation>
    </message>
    <message>
        <source>RTCMのデータが届いています</source>
        <translation>RTCM data come</translation>
    </message>
    <message>
        <source>知っている文は届きません</source>
        <translation>no known sentences come</translation>
    </message>
    <message>
        <source>%1を開けません．</source>
        <translation>%1 cannot be opened.</translation>
    </message>
    <message>
        <source>%1を開けません：%2．</source>
        <translation>%1 cannot be opened: %2.</translation>
    </message>
    <message>
        <source>%1が消えました．</source>
        <translation>%1 has vanished.</translation>
    </message>
    <message>
        <source>受信機から何も届きません．</source>
        <translation>Nothing comes from the receiver.</translation>
    </message>
    <message>
        <source>届くデータが壊れています．</source>
        <translation>The data that come are damaged.</translation>
    </message>
    <message>
        <source>正しい応答がありますが，遅れています．</source>
        <translation>The answers are right, but late.</translation>
    </message>
    <message>
        <source>正常です．</source>
        <translation>All is well.</translation>
    </message>
    <message>
        <source>中止しました．</source>
        <translation>Cancelled.</translation>
    </message>
    <message>
        <source>ケーブルかUSBアダプターを差し込んでください．</source>
        <translation>Plug in the cable or the USB adapter.</translation>
    </message>
    <message>
        <source>ケーブルかUSBアダプターが抜けかけています．差し直してください．</source>
        <translation>The cable or the USB adapter is loose. Plug it in again.</translation>
    </message>
    <message>
        <source>管理者に，このポートを使う許可をもらってください．</source>
        <translation>Ask the administrator for permission to use this port.</translation>
    </message>
    <message>
        <source>グループ%1に加わってください．次の命令を実行し，いったんログアウトして，ログインし直します．</source>
        <translation>Join the group %1: run the following command, log out, and log in again.</translation>
    </message>
    <message>
        <source>使っているプログラムを終了してから，もう一度調べてください．</source>
        <translation>Close the program that uses it, then examine it again.</translation>
    </message>
    <message>
        <source>ほかのポートを選ぶか，ケーブルかUSBアダプターを差し直してください．</source>
        <translation>Choose another port, or plug the cable or the USB adapter in again.</translation>
    </message>
    <message>
        <source>ポート：%1</source>
        <translation>Port: %1</translation>
    </message>
    <message>
        <source>%1を開きました</source>
        <translation>%1 was opened</translation>
    </message>
    <message>
        <source>応答：%1</source>
        <translation>Answer: %1</translation>
    </message>
    <message>
        <source>受信機が応えました</source>
        <translation>the receiver answered</translation>
    </message>
    <message>
        <source>9600ボーで呼んでも応えません</source>
        <translation>no answer at 9600 baud</translation>
    </message>
    <message>
        <source>受信：%1</source>
        <translation>Listening: %1</translation>
    </message>
    <message>
        <source>ほかの速さ：%1</source>
        <translation>Other speeds: %1</translation>
    </message>
    <message>
        <source>品質：%1</source>
        <translation>Quality: %1</translation>
    </message>
    <message>
        <source>他のプログラム：%1</source>
        <translation>Other programs: %1</translation>
    </message>
    <message>
        <source>見あたりません</source>
        <translation>none seen</translation>
    </message>
    <message>
        <source>ポート%1の接続を調べています</source>
        <translation>Examining the connection at port %1</translation>
    </message>
    <message>
        <source>%1：%2</source>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>応答がありません</source>
        <translation>no answer</translation>
    </message>
    <message>
        <source>%1で受信機が応えました．このポートを選びました．</source>
        <translation>A receiver answered at %1. This port is chosen now.</translation>
    </message>
    <message>
        <source>%1がつながれました．情報取得（F5）で受信機を調べられます．</source>
        <translation>%1 was plugged in. Get info (F5) asks the receiver.</translation>
    </message>
    <message>
        <source>未対応のファイルです．
</source>
        <translation>This file is not supported.
</translation>
    </message>
    <message>
        <source>，ほか%1件</source>
        <translation> and %1 more</translation>
    </message>
    <message>
        <source>取り込み</source>
        <translation>Import</translation>
    </message>
    <message>
        <source>貼り付け</source>
        <translation>Paste</translation>
    </message>
    <message>
        <source>ダウンロード</source>
        <translation>Download</translation>
    </message>
    <message>
        <source>削除</source>
        <translation>Delete</translation>
    </message>
    <message>
        <source>日付の修正</source>
        <translation>Repair dates</translation>
    </message>
    <message>
        <source>復元</source>
        <translation>Restore</translation>
    </message>
    <message>
        <source>編集</source>
        <translation>Edit</translation>
    </message>
    <message>
        <source>追加</source>
        <translation>Add</translation>
    </message>
    <message>
        <source>結合</source>
        <translation>Join</translation>
    </message>
    <message>
        <source>分割</source>
        <translation>Split</translation>
    </message>
    <message>
        <source>逆順</source>
        <translation>Reverse</translation>
    </message>
    <message>
        <source>間引き</source>
        <translation>Thin out</translation>
    </message>
    <message>
        <source>並べ替え</source>
        <translation>Reorder</translation>
    </message>
    <message>
        <source>%1 %2件</source>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>%1 %2点</source>
        <translation>%1: %2 point(s)</translation>
    </message>
    <message>
        <source>%1（%2）</source>
        <translation>%1 (%2)</translation>
    </message>
    <message>
        <source>%1：受け取れませんでした．</source>
        <translation>%1: could not be received.</translation>
    </message>
    <message>
        <source>%1：%2件すべてが届きました．</source>
        <translation>%1: all %2 records came.</translation>
    </message>
    <message>
        <source>%1：%2件のうち%3件が届き，%4件は届きませんでした．</source>
        <translation>%1: %3 of %2 records came, %4 did not.</translation>
    </message>
    <message>
        <source>%1：%2件が届きました．</source>
        <translation>%1: %2 records came.</translation>
    </message>
    <message>
        <source>%1件は破損しています．</source>
        <translation> %1 of them are damaged.</translation>
    </message>
    <message>
        <source>（%1点）</source>
        <translation> (%1 points)</translation>
    </message>
    <message>
        <source>取り込み：Waypoint %1，Route %2%3，TrackLog %4%5．</source>
        <translation>Imported: Waypoint %1, Route %2%3, TrackLog %4%5.</translation>
    </message>
    <message>
        <source>%1（UTC）</source>
        <translation>%1 (UTC)</translation>
    </message>
    <message>
        <source>誤り検査：する</source>
        <translation>Error check: on</translation>
    </message>
    <message>
        <source>誤り検査：しない</source>
        <translation>Error check: off</translation>
    </message>
    <message>
        <source>（自動）</source>
        <translation> (automatic)</translation>
    </message>
    <message>
        <source>破損した記録が%1件届きました．「誤り検査」を「する」にして，もう一度ダウンロードしてください．</source>
        <translation>%1 damaged record(s) came. Set “Error check” to “On” and download again.</translation>
    </message>
    <message>
        <source>%1：%2件中%3件が届きませんでした．</source>
        <translation>%1: %3 of %2 records did not come.</translation>
    </message>
    <message>
        <source>前の内部データには，「編集」の「元に戻す」で戻せます．</source>
        <translation>Edit → Undo brings back what was held before.</translation>
    </message>
    <message>
        <source>受信機が受け取らなかった記録が%1件あります．</source>
        <translation>The receiver did not take %1 record(s).</translation>
    </message>
    <message>
        <source>受信機にない絵や色を，近いものに替えて送信しました：%1．</source>
        <translation>Pictures or colours that the receiver lacks were replaced by similar ones: %1.</translation>
    </message>
    <message>
        <source>長すぎる記録の文字列の末尾を切って送信しました：%1</source>
        <translation>Texts of records that were too long were cut at their ends: %1</translation>
    </message>
    <message>
        <source>受信機の欄より長い文字列が%1件あり，末尾を切って送信しました．</source>
        <translation>%1 text(s) longer than the receiver's fields were cut at their ends.</translation>
    </message>
    <message>
        <source>受信機が転送の終わりを受け取らなかったため，書き込まれていない可能性があります．</source>
        <translation>The receiver did not take the end of the transfer; perhaps nothing was stored.</translation>
    </message>
    <message>
        <source>受信機の時計：%1</source>
        <translation>Receiver's clock: %1</translation>
    </message>
    <message>
        <source>受信機の時計は%1，コンピュータの時計は%2です．受信機の時計をコンピュータに合わせますか？</source>
        <translation>The receiver's clock shows %1, the computer's %2. Set the receiver's clock by the computer's?</translation>
    </message>
    <message>
        <source>受信機の時計を合わせました：%1</source>
        <translation>The receiver's clock was set: %1</translation>
    </message>
    <message>
        <source>受信機の時計が合いませんでした．受信機は%1を示しています．</source>
        <translation>The receiver's clock did not take the time. It shows %1.</translation>
    </message>
    <message>
        <source>%1～%2</source>
        <translation>%1 to %2</translation>
    </message>
    <message>
        <source>日付が1024週の単位で遅れているトラックログが%1件あります（%2は，正しくは%3）．</source>
        <translation>The dates of %1 track log(s) are multiples of 1024 weeks behind (%2 should be %3).</translation>
    </message>
    <message>
        <source>トラックログ%1件の日付を直しました．</source>
        <translation>The dates of %1 track log(s) were repaired.</translation>
    </message>
    <message>
        <source>．</source>
        <translation>.</translation>
    </message>
    <message>
        <source>元に戻す</source>
        <translation>Undo</translation>
    </message>
    <message>
        <source>元に戻す：%1</source>
        <translation>Undo: %1</translation>
    </message>
    <message>
        <source>やり直し</source>
        <translation>Redo</translation>
    </message>
    <message>
        <source>やり直し：%1</source>
        <translation>Redo: %1</translation>
    </message>
    <message>
        <source>元に戻しました：%1</source>
        <translation>Undone: %1</translation>
    </message>
    <message>
        <source>やり直しました：%1</source>
        <translation>Done again: %1</translation>
    </message>
    <message>
        <source>正常に終了しなかったWalrimの内部データが残っています（%1，%2）．復元しますか？</source>
        <translation>A Walrim that did not come to its end left data (%1, %2). Restore them?</translation>
    </message>
    <message>
        <source>正常に終了しなかったWalrimの内部データは，壊れているため復元できません：%1</source>
        <translation>The data that a Walrim left that did not come to its end are damaged and cannot be restored: %1</translation>
    </message>
    <message>
        <source>復元用のファイルを書けません：%1</source>
        <translation>The recovery file cannot be written: %1</translation>
    </message>
    <message>
        <source>長すぎます．入力できるのは%1バイト（漢字やかなは2バイト）までです．</source>
        <translation>Too long. There is room for %1 bytes (a Japanese character takes two).</translation>
    </message>
    <message>
        <source>高度「%1」は数として読めません．わからないときは空にしてください．</source>
        <translation>The height “%1” is no number. Leave it empty if it is not known.</translation>
    </message>
    <message>
        <source>ポイントを間引きました：%1点 → %2点</source>
        <translation>Points thinned out: %1 → %2</translation>
    </message>
    <message>
        <source>トラックログを分けました：%1本 → %2本</source>
        <translation>Track logs split: %1 → %2</translation>
    </message>
    <message>
        <source>外れ値はありません</source>
        <translation>There are no outliers</translation>
    </message>
    <message>
        <source>外れ値を%1点選びました．「選んだ行を削除」で取り除けます</source>
        <translation>%1 outlier(s) chosen. “Delete chosen rows” takes them out</translation>
    </message>
    <message>
        <source>送る前のデータを受信機へ送り戻し，読み戻して確かめました．</source>
        <translation>What the receiver held before was sent back, read again and compared.</translation>
    </message>
    <message>
        <source>送る前になかったWaypoint %1件（%2%3）は受信機に残っています．要らなければ，受信機で消してください．</source>
        <translation> %1 waypoint(s) that were not there before (%2%3) are still in the receiver. Delete them there if they are not wanted.</translation>
    </message>
    <message>
        <source>受信機のデータを保存しました：%1</source>
        <translation>The receiver's data were saved: %1</translation>
    </message>
    <message>
        <source>名前の対応に読めない行があります：%1．</source>
        <translation>The table of names has lines that cannot be read: %1.</translation>
    </message>
    <message>
        <source>名前の対応を%1件取り込みました．</source>
        <translation>%1 pair(s) of names were imported.</translation>
    </message>
    <message>
        <source>%1件の短い名前を，覚えている元の名前に戻しました．</source>
        <translation>%1 short name(s) became the long ones that are remembered.</translation>
    </message>
    <message>
        <source>通信記録を保存しました：%1</source>
        <translation>The trace was saved: %1</translation>
    </message>
    <message>
        <source>ファイルに書き込めません：%1（%2）</source>
        <translation>The file cannot be written: %1 (%2)</translation>
    </message>
    <message>
        <source>%1の文字「%2」はShift-JISでは表せません．UTF-8で保存しますか？</source>
        <translation>The character “%2” of %1 does not exist in Shift-JIS. Save as UTF-8?</translation>
    </message>
    <message>
        <source>%1行目の「%2」</source>
        <translation>line %1, “%2”</translation>
    </message>
    <message>
        <source>%1行目の%2「%3」</source>
        <translation>line %1, %2 “%3”</translation>
    </message>
    <message>
        <source>保存されていない変更があります（%1）．終了する前に保存しますか？</source>
        <translation>There are unsaved changes (%1). Save them before closing?</translation>
    </message>
    <message>
        <source>どのファイルにも保存せずに消した記録があります（%1）．「元に戻す」で戻せますが，終了すると戻せません．終了しますか？</source>
        <translation>Records that were in no file have been deleted (%1). Undo brings them back, but not after closing. Close?</translation>
    </message>
    <message>
        <source>南緯・西経の位置が%1件あります．DMSの表記では正しく読み戻せません．</source>
        <translation>%1 position(s) are south or west. In DMS they cannot be read back properly.</translation>
    </message>
    <message>
        <source>コンマか引用符を含む文字列が%1件あります．このファイルを読み込むと，そこで切れます．</source>
        <translation>%1 text(s) have a comma or a quotation mark. Reading this file again will cut them there.</translation>
    </message>
    <message>
        <source>%1件の記録は，文字列の中の記号のためスクリプトに書けませんでした．</source>
        <translation>%1 record(s) could not be written to the script because of signs in their texts.</translation>
    </message>
    <message>
        <source>%1点は，位置が地球上にないため書けませんでした．</source>
        <translation>%1 point(s) could not be written: their positions are not on the globe.</translation>
    </message>
    <message>
        <source>ほかのコンピュータ（%1）のファイルは読み込めません．</source>
        <translation>Files of another computer (%1) cannot be read.</translation>
    </message>
    <message>
        <source>リンクを開けませんでした：%1</source>
        <translation>The link could not be opened: %1</translation>
    </message>
    <message>
        <source>標準</source>
        <translation>standard</translation>
    </message>
    <message>
        <source>%1形式</source>
        <translation>%1</translation>
    </message>
    <message>
        <source>%1の文字列か，地図上の位置を取り込めます．</source>
        <translation>Texts of %1 can be imported, and positions on maps.</translation>
    </message>
    <message>
        <source>%1形式（%2）</source>
        <translation>%1 (%2)</translation>
    </message>
    <message>
        <source>%1
%2のファイルを取り込めます．</source>
        <translation>%1
Files of %2 can be imported.</translation>
    </message>
    <message>
        <source>取り込めません：%1．</source>
        <translation>Cannot be imported: %1.</translation>
    </message>
    <message>
        <source>取り込めません：%1：%2．</source>
        <translation>%1 cannot be imported: %2.</translation>
    </message>
    <message>
        <source>ファイルを読み込めません：%1（%2）</source>
        <translation>The file cannot be read: %1 (%2)</translation>
    </message>
    <message>
        <source>ほかに%1行，分からない命令があります．</source>
        <translation>%1 more line(s) have unknown commands.</translation>
    </message>
    <message>
        <source>%1個の文を読み飛ばしました（最初の理由：%2）．</source>
        <translation>%1 statement(s) were skipped (first reason: %2).</translation>
    </message>
    <message>
        <source>%1行を読み飛ばしました（最初は%2行目：%3）．</source>
        <translation>%1 line(s) were skipped (the first is line %2: %3).</translation>
    </message>
    <message>
        <source>%1行で列が多すぎます（最初は%2行目）．文字列の中のコンマで切れている可能性があります．</source>
        <translation>%1 line(s) have too many columns (the first is line %2). Perhaps commas in texts cut them.</translation>
    </message>
    <message>
        <source>%1点の日時が読めません（最初は%2行目）．時刻なしとして取り込みました．</source>
        <translation>The times of %1 point(s) cannot be read (the first is in line %2). They came in without a time.</translation>
    </message>
    <message>
        <source>処理を中止しました：%1</source>
        <translation>The command was given up: %1</translation>
    </message>
    <message>
        <source>受信機が要求に応じませんでした．</source>
        <translation>The receiver did not comply with the request.</translation>
    </message>
    <message>
        <source>受信機を識別できませんでした．</source>
        <translation>The receiver could not be identified.</translation>
    </message>
    <message>
        <source>受信機からの応答が正しくないため，通信を中止しました．</source>
        <translation>The receiver's answer was wrong; the transfer was given up.</translation>
    </message>
    <message>
        <source>受信データが異常なため，通信を中止しました．</source>
        <translation>What came made no sense; the transfer was given up.</translation>
    </message>
    <message>
        <source>受信機から日時の応答がないため，時計を合わせられません．</source>
        <translation>The receiver does not tell its time; its clock cannot be set.</translation>
    </message>
    <message>
        <source>書き出した内容を読み戻すと失われるものがあるため，内部データは削除しませんでした．</source>
        <translation>What was written does not hold everything, so the data were not deleted here.</translation>
    </message>
    <message>
        <source>切って送信した文字列があるため，内部データは削除しませんでした．</source>
        <translation>Texts were cut for the receiver, so the data were not deleted here.</translation>
    </message>
    <message>
        <source>復元する</source>
        <translation>Restore</translation>
    </message>
    <message>
        <source>捨てる</source>
        <translation>Discard</translation>
    </message>
    <message>
        <source>あとで</source>
        <translation>Later</translation>
    </message>
    <message>
        <source>いまの内部データに入りきらないため，復元しませんでした．保存して削除すると，次に起動したときに復元できます．</source>
        <translation>There is not enough room beside what is held. Save and delete that; the next start can restore the data.</translation>
    </message>
    <message>
        <source>改行やタブは入力できません．</source>
        <translation>Line breaks and tabs are not possible here.</translation>
    </message>
    <message>
        <source>そのシンボルは一覧にありません．</source>
        <translation>That symbol is not in the list.</translation>
    </message>
    <message>
        <source>高度は-100000 mから100000 mまでの数で入力してください．</source>
        <translation>Type a height between -100000 and 100000 m.</translation>
    </message>
    <message>
        <source>見出しのないトラックログには名前を付けられません．</source>
        <translation>A track log without a header has no name.</translation>
    </message>
    <message>
        <source>ほかの処理が終わってから入力してください．</source>
        <translation>Wait for the command that is running.</translation>
    </message>
    <message>
        <source>この記録はもうありません．</source>
        <translation>This record is no longer there.</translation>
    </message>
    <message>
        <source>分けるところがありません</source>
        <translation>There is nothing to split</translation>
    </message>
    <message>
        <source>「編集」の「日付を直す」で直せます．</source>
        <translation>Edit → Repair dates mends them.</translation>
    </message>
    <message>
        <source>保存</source>
        <translation>Save</translation>
    </message>
    <message>
        <source>保存しない</source>
        <translation>Do not save</translation>
    </message>
    <message>
        <source>戻る</source>
        <translation>Back</translation>
    </message>
    <message>
        <source>受信機のデータを保存できなかったため，送信しませんでした．</source>
        <translation>Nothing was sent, as the receiver's data could not be saved.</translation>
    </message>
    <message>
        <source>送信したデータを受信機から読み戻せなかったため，比べられませんでした．</source>
        <translation>What was sent could not be read back from the receiver, so it was not compared.</translation>
    </message>
    <message>
        <source>すべてのファイル (*.*)|*.*|名前の対応 (*.tsv)|*.tsv|</source>
        <translation>All files (*.*)|*.*|Table of names (*.tsv)|*.tsv|</translation>
    </message>
    <message>
        <source>通信の記録はまだありません．受信機と通信してから保存してください．</source>
        <translation>Nothing has gone over the line yet.</translation>
    </message>
    <message>
        <source>記録の中の位置を隠しますか？隠すと，最初の位置が0度になるように，すべての位置をずらします．</source>
        <translation>Hide the positions? All of them are moved so that the first one is at 0 degrees.</translation>
    </message>
    <message>
        <source>隠して保存</source>
        <translation>Save hidden</translation>
    </message>
    <message>
        <source>そのまま保存</source>
        <translation>Save as it is</translation>
    </message>
    <message>
        <source>すべてのファイル (*.*)|*.*|通信記録 (*.txt)|*.txt|</source>
        <translation>All files (*.*)|*.*|Traces (*.txt)|*.txt|</translation>
    </message>
    <message>
        <source>クリップボードにデータがありません．</source>
        <translation>The clipboard is empty.</translation>
    </message>
    <message>
        <source>標準入力</source>
        <translation>standard input</translation>
    </message>
    <message>
        <source>file://のリンクではありません．</source>
        <translation>That is no file:// link.</translation>
    </message>
    <message>
        <source>リンクにファイルの名前がありません．</source>
        <translation>The link names no file.</translation>
    </message>
    <message>
        <source>緯度または経度が範囲外です（緯度は-90度から90度，経度は-180度から180度）．</source>
        <translation>Latitude or longitude is out of range (-90 to 90, -180 to 180 degrees).</translation>
    </message>
    <message>
        <source>ほかの利用者が置いたリンクです</source>
        <translation>the link is another user's</translation>
    </message>
    <message>
        <source>通常のファイルではありません</source>
        <translation>it is no ordinary file</translation>
    </message>
    <message>
        <source>受信機のつながったポートを探しています</source>
        <translation>Searching the port that the receiver is at</translation>
    </message>
    <message>
        <source>受信機が応えるポートはありませんでした．</source>
        <translation>No receiver answered at any port.</translation>
    </message>
    <message>
        <source>%1件を取り込みました．</source>
        <translation>%1 record(s) were read in.</translation>
    </message>
    <message>
        <source>%1件を取り込みました（重複 %2件）．</source>
        <translation>%1 record(s) were read in (%2 were there before).</translation>
    </message>
    <message>
        <source>%1件を %2 に保存しました．</source>
        <translation>%1 record(s) were saved to %2.</translation>
    </message>
    <message>
        <source>%1件をコピーしました．</source>
        <translation>%1 record(s) were copied.</translation>
    </message>
    <message>
        <source>%1件を送信しました．</source>
        <translation>%1 record(s) were sent.</translation>
    </message>
    <message>
        <source>送信中：%1</source>
        <translation>Sending: %1</translation>
    </message>
    <message>
        <source>受信中：%1</source>
        <translation>Receiving: %1</translation>
    </message>
    <message>
        <source>%1（%2/%3）</source>
        <translation>%1 (%2/%3)</translation>
    </message>
    <message>
        <source>Walrimについて</source>
        <translation>About Walrim</translation>
    </message>
    <message>
        <source>度と度分秒を切り替えます</source>
        <translation>Switches between degrees and degrees, minutes and seconds</translation>
    </message>
    <message>
        <source>ウェイポイントの名前</source>
        <translation>The waypoint's name</translation>
    </message>
    <message>
        <source>コメント</source>
        <translation>Comment</translation>
    </message>
    <message>
        <source>受信機での表示</source>
        <translation>How the receiver shows it</translation>
    </message>
    <message>
        <source>新しいウェイポイント</source>
        <translation>New waypoint</translation>
    </message>
    <message>
        <source>地図からの地点</source>
        <translation>Place from a map</translation>
    </message>
    <message>
        <source>シンボル．日本語・英語の名前の一部を入力すると，探せます</source>
        <translation>Symbol. Type a part of its English or Japanese name to find it</translation>
    </message>
    <message>
        <source>経度(&amp;L)</source>
        <translation>&amp;Longitude</translation>
    </message>
    <message>
        <source>緯度(&amp;B)</source>
        <translation>L&amp;atitude</translation>
    </message>
    <message>
        <source>名前(&amp;N)</source>
        <translation>&amp;Name</translation>
    </message>
    <message>
        <source>コメント(&amp;C)</source>
        <translation>&amp;Comment</translation>
    </message>
    <message>
        <source>シンボル(&amp;S)</source>
        <translation>&amp;Symbol</translation>
    </message>
    <message>
        <source>表示(&amp;D)</source>
        <translation>&amp;Display</translation>
    </message>
    <message>
        <source>キャンセル</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>データ</source>
        <translation>Data</translation>
    </message>
    <message>
        <source>中止(&amp;C)</source>
        <translation>&amp;Cancel</translation>
    </message>
    <message>
        <source>保存(&amp;S)...</source>
        <translation>&amp;Save...</translation>
    </message>
    <message>
        <source>コピー(&amp;Y)</source>
        <translation>Cop&amp;y</translation>
    </message>
    <message>
        <source>削除(&amp;X)</source>
        <translation>Delete (&amp;X)</translation>
    </message>
    <message>
        <source>選択した種類を内部データから削除します（確認しません）</source>
        <translation>Deletes the chosen kinds here (without asking)</translation>
    </message>
    <message>
        <source>取り込み(&amp;O)...</source>
        <translation>&amp;Open...</translation>
    </message>
    <message>
        <source>貼り付け(&amp;V)</source>
        <translation>Paste (&amp;V)</translation>
    </message>
    <message>
        <source>受信機</source>
        <translation>Receiver</translation>
    </message>
    <message>
        <source>内部データ</source>
        <translation>Held here</translation>
    </message>
    <message>
        <source>ダウンロードする種類</source>
        <translation>Kinds to download</translation>
    </message>
    <message>
        <source>アップロード・保存・コピー・削除する種類</source>
        <translation>Kinds to upload, save, copy and delete</translation>
    </message>
    <message>
        <source>受信機にある件数</source>
        <translation>Records in the receiver</translation>
    </message>
    <message>
        <source>内部データの件数</source>
        <translation>Records held here</translation>
    </message>
    <message>
        <source>～</source>
        <translation>to</translation>
    </message>
    <message>
        <source>日付を直す</source>
        <translation>Repair dates</translation>
    </message>
    <message>
        <source>次のトラックログの日付は，1024週の単位で遅れています．直しますか？</source>
        <translation>The dates of these track logs are multiples of 1024 weeks behind. Repair them?</translation>
    </message>
    <message>
        <source>直す(&amp;F)</source>
        <translation>&amp;Repair</translation>
    </message>
    <message>
        <source>トラックログ</source>
        <translation>Track log</translation>
    </message>
    <message>
        <source>今の日時</source>
        <translation>Now</translation>
    </message>
    <message>
        <source>直した日時</source>
        <translation>Repaired</translation>
    </message>
    <message>
        <source>・</source>
        <translation>• </translation>
    </message>
    <message>
        <source>もう一度(&amp;A)</source>
        <translation>&amp;Again</translation>
    </message>
    <message>
        <source>この接続をもう一度調べます</source>
        <translation>Examines this connection again</translation>
    </message>
    <message>
        <source>すべてのポートを探す(&amp;W)</source>
        <translation>Search all ports (&amp;W)</translation>
    </message>
    <message>
        <source>すべてのシリアルポートを順に調べ，受信機が応えたポートを選びます</source>
        <translation>Asks all serial ports in turn and chooses the one where a receiver answers</translation>
    </message>
    <message>
        <source>通信記録を保存(&amp;J)...</source>
        <translation>Save trace (&amp;J)...</translation>
    </message>
    <message>
        <source>送受信したデータの記録をファイルに保存します</source>
        <translation>Saves a record of what went over the line</translation>
    </message>
    <message>
        <source>表に戻る(&amp;B)</source>
        <translation>&amp;Back to the tables</translation>
    </message>
    <message>
        <source>データの表を表示します</source>
        <translation>Shows the tables of the data</translation>
    </message>
    <message>
        <source>命令をコピー</source>
        <translation>Copy command</translation>
    </message>
    <message>
        <source>この命令をクリップボードにコピーします</source>
        <translation>Copies this command to the clipboard</translation>
    </message>
    <message>
        <source>データの誤りを検査し，誤りがあれば送り直します．待ち時間が減り，通信が速くなります．「自動」は，受信機の最初の応答が正しい形であればそうします</source>
        <translation>Data are tested and sent again if they are damaged. Less waiting makes transfers faster. “Automatic” does so where the receiver's first answer is in proper form</translation>
    </message>
    <message>
        <source>自動</source>
        <translation>Automatic</translation>
    </message>
    <message>
        <source>する</source>
        <translation>On</translation>
    </message>
    <message>
        <source>しない</source>
        <translation>Off</translation>
    </message>
    <message>
        <source>情報取得(&amp;I)</source>
        <translation>Get &amp;info</translation>
    </message>
    <message>
        <source>受信機の機種と件数を調べます（F5）</source>
        <translation>Asks the receiver what it is and how much it holds (F5)</translation>
    </message>
    <message>
        <source>ポート(&amp;P)</source>
        <translation>&amp;Port</translation>
    </message>
    <message>
        <source>誤り検査(&amp;K)</source>
        <translation>Error chec&amp;k</translation>
    </message>
    <message>
        <source>ヘルプ(&amp;H)</source>
        <translation>&amp;Help</translation>
    </message>
    <message>
        <source>Walrimについて(&amp;A)</source>
        <translation>&amp;About Walrim</translation>
    </message>
    <message>
        <source>ファイル(&amp;F)</source>
        <translation>&amp;File</translation>
    </message>
    <message>
        <source>リンクから取り込み(&amp;L)...</source>
        <translation>Open &amp;link...</translation>
    </message>
    <message>
        <source>設定を覚える(&amp;K)</source>
        <translation>&amp;Keep settings</translation>
    </message>
    <message>
        <source>形式・測地系・自動処理などの設定を，次に起動したときにも使います</source>
        <translation>Uses format, datum, automatic actions and so on again at the next start</translation>
    </message>
    <message>
        <source>終了(&amp;Q)</source>
        <translation>&amp;Quit</translation>
    </message>
    <message>
        <source>編集(&amp;E)</source>
        <translation>&amp;Edit</translation>
    </message>
    <message>
        <source>コピー(&amp;C)</source>
        <translation>&amp;Copy</translation>
    </message>
    <message>
        <source>削除(&amp;D)</source>
        <translation>&amp;Delete</translation>
    </message>
    <message>
        <source>名前の対応を取り込む(&amp;N)...</source>
        <translation>Import names (&amp;A)...</translation>
    </message>
    <message>
        <source>名前の対応を書き出す(&amp;X)...</source>
        <translation>E&amp;xport names...</translation>
    </message>
    <message>
        <source>日付を直す(&amp;F)...</source>
        <translation>Repair dates (&amp;F)...</translation>
    </message>
    <message>
        <source>表示(&amp;L)</source>
        <translation>&amp;View</translation>
    </message>
    <message>
        <source>受信機(&amp;R)</source>
        <translation>&amp;Receiver</translation>
    </message>
    <message>
        <source>ダウンロード(&amp;D)</source>
        <translation>&amp;Download</translation>
    </message>
    <message>
        <source>アップロード(&amp;U)</source>
        <translation>&amp;Upload</translation>
    </message>
    <message>
        <source>受信機へ安全に送る(&amp;S)...</source>
        <translation>&amp;Send safely...</translation>
    </message>
    <message>
        <source>受信機を送る前に戻す(&amp;B)</source>
        <translation>Send &amp;back what it held before</translation>
    </message>
    <message>
        <source>接続を調べる(&amp;X)</source>
        <translation>E&amp;xamine connection</translation>
    </message>
    <message>
        <source>受信機の時計を合わせる(&amp;T)...</source>
        <translation>Set receiver's clock (&amp;T)...</translation>
    </message>
    <message>
        <source>リンクから取り込み</source>
        <translation>Open link</translation>
    </message>
    <message>
        <source>最近使ったファイル(&amp;R)</source>
        <translation>&amp;Recent files</translation>
    </message>
    <message>
        <source>一覧を消す(&amp;X)</source>
        <translation>Clear list (&amp;X)</translation>
    </message>
    <message>
        <source>国土地理院</source>
        <translation>Geospatial Information Authority of Japan</translation>
    </message>
    <message>
        <source>なし（海岸線だけ）(&amp;N)</source>
        <translation>&amp;None (coastlines only)</translation>
    </message>
    <message>
        <source>地理院地図(&amp;G)</source>
        <translation>&amp;GSI Maps</translation>
    </message>
    <message>
        <source>ほかのタイル(&amp;T)...</source>
        <translation>Other &amp;tiles...</translation>
    </message>
    <message>
        <source>地図(&amp;M)</source>
        <translation>&amp;Map</translation>
    </message>
    <message>
        <source>全体を表示(&amp;A)</source>
        <translation>Show &amp;all</translation>
    </message>
    <message>
        <source>拡大(&amp;I)</source>
        <translation>Zoom &amp;in</translation>
    </message>
    <message>
        <source>縮小(&amp;O)</source>
        <translation>Zoom &amp;out</translation>
    </message>
    <message>
        <source>地図の背景(&amp;B)</source>
        <translation>Map's &amp;background</translation>
    </message>
    <message>
        <source>タイルのアドレス</source>
        <translation>Address of tiles</translation>
    </message>
    <message>
        <source>地図のタイルのアドレス（{z}，{x}，{y}を含むもの）</source>
        <translation>Address of a map's tiles (with {z}, {x} and {y})</translation>
    </message>
    <message>
        <source>矢印キーで動かし，＋と－で拡大・縮小，0で全体を表示します</source>
        <translation>Arrow keys move it, + and - zoom, 0 shows all</translation>
    </message>
    <message>
        <source>＋</source>
        <translation>+</translation>
    </message>
    <message>
        <source>拡大（＋）</source>
        <translation>Zoom in (+)</translation>
    </message>
    <message>
        <source>－</source>
        <translation>−</translation>
    </message>
    <message>
        <source>縮小（－）</source>
        <translation>Zoom out (-)</translation>
    </message>
    <message>
        <source>全体</source>
        <translation>All</translation>
    </message>
    <message>
        <source>すべてのデータが見えるようにします（0）</source>
        <translation>Shows all data (0)</translation>
    </message>
    <message>
        <source>ここにドロップすると，内部データに取り込みます．</source>
        <translation>Drop here to read it in.</translation>
    </message>
    <message>
        <source>中止しています...</source>
        <translation>Cancelling...</translation>
    </message>
    <message>
        <source>内部データの件数（保存されていない変更があります）</source>
        <translation>Records held here (with unsaved changes)</translation>
    </message>
    <message>
        <source>データはありません．情報取得のあと，ダウンロードを押すか，ファイルを取り込んでください．</source>
        <translation>There are no data. Get info, then download; or open a file.</translation>
    </message>
    <message>
        <source>受信機から届かなかった記録です</source>
        <translation>This record never came from the receiver</translation>
    </message>
    <message>
        <source>破損して届いた記録，または破損した点を含む記録です</source>
        <translation>This record came damaged, or has a damaged point</translation>
    </message>
    <message>
        <source>チェックのある記録だけを，保存・コピー・アップロード・削除します</source>
        <translation>Only ticked records are saved, copied, uploaded and deleted</translation>
    </message>
    <message>
        <source>閉じる</source>
        <translation>Close</translation>
    </message>
    <message>
        <source>このまま送信すると，次のものが失われるか変わります．チェックを付けた提案どおりに直して送信します（名前は書き換えられます）．</source>
        <translation>Sent as they are, these records lose something or change. They are sent with the ticked proposals (names can be edited).</translation>
    </message>
    <message>
        <source>失われるものはありません．</source>
        <translation>Nothing would be lost.</translation>
    </message>
    <message>
        <source>送信したデータは，すべて受信機にあります．</source>
        <translation>All that was sent is in the receiver.</translation>
    </message>
    <message>
        <source>タイルのアドレスは，http://かhttps://で始まり，{z}，{x}，{y}を含むものにしてください．</source>
        <translation>The address of tiles must begin with http:// or https:// and have {z}, {x} and {y}.</translation>
    </message>
    <message>
        <source>高度のデータはありません</source>
        <translation>There are no heights</translation>
    </message>
    <message>
        <source>選択</source>
        <translation>Chosen</translation>
    </message>
    <message>
        <source>すべて</source>
        <translation>All</translation>
    </message>
    <message>
        <source>点数</source>
        <translation>Points</translation>
    </message>
    <message>
        <source>区間数</source>
        <translation>Segments</translation>
    </message>
    <message>
        <source>距離</source>
        <translation>Distance</translation>
    </message>
    <message>
        <source>時間</source>
        <translation>Time</translation>
    </message>
    <message>
        <source>移動時間</source>
        <translation>Moving time</translation>
    </message>
    <message>
        <source>平均速度</source>
        <translation>Average speed</translation>
    </message>
    <message>
        <source>移動平均速度</source>
        <translation>Moving average</translation>
    </message>
    <message>
        <source>最高速度</source>
        <translation>Highest speed</translation>
    </message>
    <message>
        <source>登り</source>
        <translation>Ascent</translation>
    </message>
    <message>
        <source>下り</source>
        <translation>Descent</translation>
    </message>
    <message>
        <source>最低高度</source>
        <translation>Lowest</translation>
    </message>
    <message>
        <source>最高高度</source>
        <translation>Highest</translation>
    </message>
    <message>
        <source>長さ</source>
        <translation>Length</translation>
    </message>
    <message>
        <source>数値が範囲（-32768～32767）を超えています：</source>
        <translation>The number is out of range (-32768 to 32767): </translation>
    </message>
    <message>
        <source>デモ受信機（実機不要）</source>
        <translation>Demonstration receiver</translation>
    </message>
    <message>
        <source>距離に沿って見ます</source>
        <translation>Over the distance</translation>
    </message>
    <message>
        <source>時間に沿って見ます</source>
        <translation>Over the time</translation>
    </message>
    <message>
        <source>左右の矢印キーで点を移り，Shiftと一緒に押すと範囲を選びます</source>
        <translation>Left and right arrows move from point to point, with Shift they choose a range</translation>
    </message>
    <message>
        <source>番号</source>
        <translation>No.</translation>
    </message>
    <message>
        <source>名前</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>高度 m</source>
        <translation>Height m</translation>
    </message>
    <message>
        <source>シンボル</source>
        <translation>Symbol</translation>
    </message>
    <message>
        <source>表示</source>
        <translation>Display</translation>
    </message>
    <message>
        <source>施設</source>
        <translation>Facility</translation>
    </message>
    <message>
        <source>市</source>
        <translation>City</translation>
    </message>
    <message>
        <source>住所</source>
        <translation>Address</translation>
    </message>
    <message>
        <source>州</source>
        <translation>State</translation>
    </message>
    <message>
        <source>国</source>
        <translation>Country</translation>
    </message>
    <message>
        <source>交差点</source>
        <translation>Crossroad</translation>
    </message>
    <message>
        <source>開始</source>
        <translation>Begins</translation>
    </message>
    <message>
        <source>終了</source>
        <translation>Ends</translation>
    </message>
    <message>
        <source>距離 km</source>
        <translation>Distance km</translation>
    </message>
    <message>
        <source>日時</source>
        <translation>Time</translation>
    </message>
    <message>
        <source>水深 m</source>
        <translation>Depth m</translation>
    </message>
    <message>
        <source>区間 m</source>
        <translation>Leg m</translation>
    </message>
    <message>
        <source>新区間</source>
        <translation>New segment</translation>
    </message>
    <message>
        <source>ウェイポイント</source>
        <translation>Waypoints</translation>
    </message>
    <message>
        <source>ルート</source>
        <translation>Routes</translation>
    </message>
    <message>
        <source>行をコピー</source>
        <translation>Copy rows</translation>
    </message>
    <message>
        <source>すべて選ぶ</source>
        <translation>Tick all</translation>
    </message>
    <message>
        <source>すべて外す</source>
        <translation>Untick all</translation>
    </message>
    <message>
        <source>選択した行だけ</source>
        <translation>Tick chosen rows only</translation>
    </message>
    <message>
        <source>geo: リンクをコピー</source>
        <translation>Copy geo: link</translation>
    </message>
    <message>
        <source>内部データに加えます（元に戻せます）</source>
        <translation>Adds them to the data held here (can be undone)</translation>
    </message>
    <message>
        <source>残っているファイルを消します</source>
        <translation>Removes the file that was left</translation>
    </message>
    <message>
        <source>次に起動したときに，もう一度尋ねます</source>
        <translation>Asks again at the next start</translation>
    </message>
    <message>
        <source>新しいウェイポイント(&amp;N)...</source>
        <translation>&amp;New waypoint...</translation>
    </message>
    <message>
        <source>セルを編集(&amp;I)</source>
        <translation>Ed&amp;it cell</translation>
    </message>
    <message>
        <source>選んだ行を削除(&amp;L)</source>
        <translation>De&amp;lete chosen rows</translation>
    </message>
    <message>
        <source>前へ移す(&amp;U)</source>
        <translation>Move &amp;up</translation>
    </message>
    <message>
        <source>後ろへ移す(&amp;W)</source>
        <translation>Move do&amp;wn</translation>
    </message>
    <message>
        <source>逆順にする(&amp;B)</source>
        <translation>Reverse (&amp;B)</translation>
    </message>
    <message>
        <source>トラックログをつなぐ(&amp;J)</source>
        <translation>&amp;Join track logs</translation>
    </message>
    <message>
        <source>この点の前でトラックログを分ける(&amp;K)</source>
        <translation>Split trac&amp;k log before this point</translation>
    </message>
    <message>
        <source>トラックログを日ごとに分ける(&amp;Y)</source>
        <translation>Split track logs by da&amp;y</translation>
    </message>
    <message>
        <source>トラックログを時間の空きで分ける(&amp;G)...</source>
        <translation>Split track logs by &amp;gap...</translation>
    </message>
    <message>
        <source>外れ値を選ぶ(&amp;O)</source>
        <translation>Choose &amp;outliers</translation>
    </message>
    <message>
        <source>ポイントを間引く(&amp;M)...</source>
        <translation>Thin out points (&amp;M)...</translation>
    </message>
    <message>
        <source>トラックログを時間の空きで分ける</source>
        <translation>Split track logs by gap</translation>
    </message>
    <message>
        <source>次のポイントまでに空いた時間（時間）</source>
        <translation>Time without a point (hours)</translation>
    </message>
    <message>
        <source>ポイントを間引く</source>
        <translation>Thin out points</translation>
    </message>
    <message>
        <source>トラックログごとに残すポイントの数（曲がりの大きいところと，区間の両端が残ります）</source>
        <translation>Points to keep in each track log (the sharpest bends and the ends of segments stay)</translation>
    </message>
    <message>
        <source>MPS・WPT+出力の設定</source>
        <translation>Settings of MPS and WPT+</translation>
    </message>
    <message>
        <source>時差の補正（時間）(&amp;Z)</source>
        <translation>Hours to add (&amp;Z)</translation>
    </message>
    <message>
        <source>日時に加える時間数</source>
        <translation>Hours that are added to times</translation>
    </message>
    <message>
        <source>出発地の名前(&amp;S)</source>
        <translation>Name of the &amp;start</translation>
    </message>
    <message>
        <source>ルートの最初の点の名前．空欄なら点の名前のまま</source>
        <translation>Name of a route's first point. Empty: its own</translation>
    </message>
    <message>
        <source>目的地の名前(&amp;G)</source>
        <translation>Name of the &amp;goal</translation>
    </message>
    <message>
        <source>ルートの最後の点の名前．空欄なら点の名前のまま</source>
        <translation>Name of a route's last point. Empty: its own</translation>
    </message>
    <message>
        <source>ルートの点の番号を大きい方から付ける(&amp;D)</source>
        <translation>Number points in &amp;descending order</translation>
    </message>
    <message>
        <source>最後の点を1番とします</source>
        <translation>The last point is number 1</translation>
    </message>
    <message>
        <source>トラックログの間隔（点）(&amp;T)</source>
        <translation>S&amp;tep of track logs (points)</translation>
    </message>
    <message>
        <source>点として描く間隔．1ならすべての点を描きます</source>
        <translation>How many points lie between two that are drawn. 1 draws all</translation>
    </message>
    <message>
        <source>設定に反映して，出力を続けます</source>
        <translation>Keeps the settings and goes on</translation>
    </message>
    <message>
        <source>出力をやめます</source>
        <translation>Writes nothing</translation>
    </message>
    <message>
        <source>更新(&amp;U)</source>
        <translation>&amp;Update</translation>
    </message>
    <message>
        <source>ここまでの変更を設定に反映します</source>
        <translation>Keeps the changes</translation>
    </message>
    <message>
        <source>保存・コピーの形式</source>
        <translation>Format to save and copy in</translation>
    </message>
    <message>
        <source>日時に加える協定世界時からの時差（時間）．日本は9</source>
        <translation>Hours that times are ahead of UTC. Japan: 9</translation>
    </message>
    <message>
        <source>緯度・経度の表記</source>
        <translation>Notation of latitude and longitude</translation>
    </message>
    <message>
        <source>D（度）</source>
        <translation>D (degrees)</translation>
    </message>
    <message>
        <source>DMS（度分秒）</source>
        <translation>DMS (degrees, minutes, seconds)</translation>
    </message>
    <message>
        <source>MPS（35/37/56.3）</source>
        <translation>MPS (35/37/56.3)</translation>
    </message>
    <message>
        <source>緯度・経度の測地系</source>
        <translation>Datum of latitude and longitude</translation>
    </message>
    <message>
        <source>Tokyo（日本測地系）</source>
        <translation>Tokyo</translation>
    </message>
    <message>
        <source>見出し行(&amp;N)</source>
        <translation>Header li&amp;nes</translation>
    </message>
    <message>
        <source>種類ごとに列の名前の行を付けます</source>
        <translation>Writes a line with the columns' names for each kind</translation>
    </message>
    <message>
        <source>保存するファイルの名前を日付と時刻から付けます</source>
        <translation>Names files by date and time</translation>
    </message>
    <message>
        <source>形式(&amp;T)</source>
        <translation>Forma&amp;t</translation>
    </message>
    <message>
        <source>表記(&amp;G)</source>
        <translation>Notation (&amp;G)</translation>
    </message>
    <message>
        <source>測地系(&amp;M)</source>
        <translation>Datu&amp;m</translation>
    </message>
    <message>
        <source>時差(&amp;Z)</source>
        <translation>Time &amp;zone</translation>
    </message>
    <message>
        <source>自動ダウンロード(&amp;1)</source>
        <translation>Download (&amp;1)</translation>
    </message>
    <message>
        <source>情報取得のあと，すべての種類をダウンロードします</source>
        <translation>Downloads all kinds after Get info</translation>
    </message>
    <message>
        <source>自動保存(&amp;2)</source>
        <translation>Save (&amp;2)</translation>
    </message>
    <message>
        <source>ダウンロードのあと，その種類を保存します</source>
        <translation>Saves the kinds after a download</translation>
    </message>
    <message>
        <source>自動コピー(&amp;3)</source>
        <translation>Copy (&amp;3)</translation>
    </message>
    <message>
        <source>ダウンロードのあと，その種類をクリップボードにコピーします</source>
        <translation>Copies the kinds to the clipboard after a download</translation>
    </message>
    <message>
        <source>自動アップロード(&amp;4)</source>
        <translation>Upload (&amp;4)</translation>
    </message>
    <message>
        <source>ほかのプログラムやドロップによる取り込みのあと，その種類をアップロードします</source>
        <translation>Uploads the kinds after an import by another program or a drop</translation>
    </message>
    <message>
        <source>自動削除(&amp;5)</source>
        <translation>Delete (&amp;5)</translation>
    </message>
    <message>
        <source>アップロード・保存・コピーのあと，その種類を内部データから削除します</source>
        <translation>Deletes the kinds here after an upload, a save or a copy</translation>
    </message>
    <message>
        <source>もう一度（誤り検査）</source>
        <translation>Again (error check)</translation>
    </message>
    <message>
        <source>データの誤りを検査しながら，もう一度ダウンロードします</source>
        <translation>Downloads again, with data tested</translation>
    </message>
    <message>
        <source>届かなかった記録を取り除く</source>
        <translation>Take out records that never came</translation>
    </message>
    <message>
        <source>受信機から届かなかった記録を内部データから取り除きます（元に戻せます）</source>
        <translation>Takes out the records that never came from the receiver (can be undone)</translation>
    </message>
    <message>
        <source>この結果を消します</source>
        <translation>Closes this result</translation>
    </message>
    <message>
        <source>受信機と比べた結果</source>
        <translation>Compared with the receiver</translation>
    </message>
    <message>
        <source>アップロードの前に</source>
        <translation>Before the upload</translation>
    </message>
    <message>
        <source>失われるもの</source>
        <translation>What is lost</translation>
    </message>
    <message>
        <source>提案</source>
        <translation>Proposal</translation>
    </message>
    <message>
        <source>確認</source>
        <translation>Check</translation>
    </message>
    <message>
        <source>すべて提案どおり(&amp;A)</source>
        <translation>&amp;All as proposed</translation>
    </message>
    <message>
        <source>すべてそのまま(&amp;L)</source>
        <translation>A&amp;ll as they are</translation>
    </message>
    <message>
        <source>受信機の名前も調べる(&amp;N)</source>
        <translation>Look at the receiver's &amp;names</translation>
    </message>
    <message>
        <source>アップロードする(&amp;U)</source>
        <translation>&amp;Upload</translation>
    </message>
    <message>
        <source>戻る(&amp;B)</source>
        <translation>&amp;Back</translation>
    </message>
    <message>
        <source>断面図</source>
        <translation>Profile</translation>
    </message>
    <message>
        <source>概要</source>
        <translation>Overview</translation>
    </message>
    <message>
        <source>はい(&amp;Y)</source>
        <translation>&amp;Yes</translation>
    </message>
    <message>
        <source>いいえ(&amp;N)</source>
        <translation>&amp;No</translation>
    </message>
    <message>
        <source>取り込むファイル</source>
        <translation>File to open</translation>
    </message>
    <message>
        <source>名前を付けて保存</source>
        <translation>Save as</translation>
    </message>
    <message>
        <source>「%1」</source>
        <translation>“%1”</translation>
    </message>
    <message>
        <source>%1%2→%3</source>
        <translation>%1 %2 → %3</translation>
    </message>
    <message>
        <source>%1（%2件）</source>
        <translation>%1 (%2)</translation>
    </message>
    <message>
        <source>名前%1</source>
        <translation>name %1</translation>
    </message>
    <message>
        <source>絵</source>
        <translation>picture</translation>
    </message>
    <message>
        <source>番号%1</source>
        <translation>number %1</translation>
    </message>
    <message>
        <source>%1点ずつに分ける</source>
        <translation>parts of %1 points</translation>
    </message>
    <message>
        <source>トラックログを短くする</source>
        <translation>a shorter track log</translation>
    </message>
    <message>
        <source>送れない文字と長すぎる文字列を除く</source>
        <translation>without characters that cannot be sent and texts that are too long</translation>
    </message>
    <message>
        <source>受信機に残りません</source>
        <translation>does not stay in the receiver</translation>
    </message>
    <message>
        <source>%1点のうち%2点だけが残ります</source>
        <translation>only %2 of %1 points stay</translation>
    </message>
    <message>
        <source>受信機にある%1を上書きします</source>
        <translation>overwrites %1 in the receiver</translation>
    </message>
    <message>
        <source>ほかの場所と同じ名前です</source>
        <translation>has the name of another place</translation>
    </message>
    <message>
        <source>ほかのルートと同じ名前です</source>
        <translation>has the name of another route</translation>
    </message>
    <message>
        <source>名前がありません</source>
        <translation>has no name</translation>
    </message>
    <message>
        <source>小文字が大文字になります</source>
        <translation>small letters become capitals</translation>
    </message>
    <message>
        <source>色が残りません</source>
        <translation>the colour does not stay</translation>
    </message>
    <message>
        <source>標高が残りません</source>
        <translation>the height does not stay</translation>
    </message>
    <message>
        <source>水深が残りません</source>
        <translation>the depth does not stay</translation>
    </message>
    <message>
        <source>近接警報の距離が残りません</source>
        <translation>the proximity distance does not stay</translation>
    </message>
    <message>
        <source>施設や住所が残りません</source>
        <translation>facility and address do not stay</translation>
    </message>
    <message>
        <source>名前が残りません</source>
        <translation>the name does not stay</translation>
    </message>
    <message>
        <source>日時が残りません</source>
        <translation>the time does not stay</translation>
    </message>
    <message>
        <source>名前に受信機の文字がないため，%1</source>
        <translation>the name has no letter that the receiver has: %1</translation>
    </message>
    <message>
        <source>%1と同じ名前か番号になるため，%2</source>
        <translation>gets the name or number of %1: %2</translation>
    </message>
    <message>
        <source>受信機に入りきらないため，%1</source>
        <translation>the receiver has no room: %1</translation>
    </message>
    <message>
        <source>%1の文字列が長すぎて受信機が受け取らないため，%2</source>
        <translation>texts of %1 are too long for the receiver: %2</translation>
    </message>
    <message>
        <source>文字列が長すぎて受信機が受け取らないため，%1</source>
        <translation>texts are too long for the receiver: %1</translation>
    </message>
    <message>
        <source>%1に送れない文字か位置があるため，%2</source>
        <translation>%1 has a character or a position that cannot be sent: %2</translation>
    </message>
    <message>
        <source>送れない文字か位置があるため，%1</source>
        <translation>it has a character or a position that cannot be sent: %1</translation>
    </message>
    <message>
        <source>%1（提案：%2）</source>
        <translation>%1 (proposal: %2)</translation>
    </message>
    <message>
        <source>%1 チェックあり</source>
        <translation>%1 ticked</translation>
    </message>
    <message>
        <source>%1 チェックなし</source>
        <translation>%1 not ticked</translation>
    </message>
    <message>
        <source>%1と同じ名前になります</source>
        <translation>gets the same name as %1</translation>
    </message>
    <message>
        <source>「%1」は，受信機では「%2」になります．</source>
        <translation>“%1” becomes “%2” in the receiver.</translation>
    </message>
    <message>
        <source>「%1」には受信機の文字がないため，もとの提案に戻しました．</source>
        <translation>“%1” has no letter that the receiver has; the proposal is back.</translation>
    </message>
    <message>
        <source>受信機のデータは，送信したものと%1件違います．</source>
        <translation>What the receiver holds differs in %1 point(s) from what was sent.</translation>
    </message>
    <message>
        <source>この背景では，地図に見えている場所の画像を %1 から取り寄せます．どこを見ているかがそのサーバーに伝わります．よろしいですか？</source>
        <translation>This background gets pictures of the places that are in view from %1. That server learns where you look. Go on?</translation>
    </message>
    <message>
        <source>登りと下りは，%1 m以上の高度の変化だけを数えています．</source>
        <translation>Ascent and descent count changes of height of %1 m and more.</translation>
    </message>
    <message>
        <source>%1   %2   登り %3   下り %4   平均 %5</source>
        <translation>%1   %2   up %3   down %4   average %5</translation>
    </message>
    <message>
        <source>ハンディGPS（GARMIN社）用データローダー
GPS 12からeTrexまでの受信機のウェイポイント，ルート，トラックログを
受け取り，保存し，送り返します．

MITライセンスで配布されています．
Qt %1 を使っています．</source>
        <translation>Data loader for handheld GPS receivers by Garmin.
Receives waypoints, routes and track logs of receivers
from the GPS 12 to the eTrex, saves them and sends them back.

Distributed under the MIT licence.
Uses Qt %1.</translation>
    </message>
    <message>
        <source>Language（言語）(&amp;L)</source>
        <translation>&amp;Language</translation>
    </message>
    <message>
        <source>%1で開く</source>
        <translation>Open in %1</translation>
    </message>
    <message>
        <source>Google マップ</source>
        <translation>Google Maps</translation>
    </message>
    <message>
        <source>Yahoo!マップ</source>
        <translation>Yahoo! Maps</translation>
    </message>
    <message>
        <source>地理院地図</source>
        <translation>GSI Maps</translation>
    </message>
    <message>
        <source>記録の表</source>
        <translation>Tables of records</translation>
    </message>
    <message>
        <source>使い方(&amp;H)</source>
        <translation>&amp;Help</translation>
    </message>
    <message>
        <source>取り込むファイルのリンク（https://，http://，file://），または地図のページのアドレス</source>
        <translation>Link to a file (https://, http://, file://), or the address of a map's page</translation>
    </message>
    <message>
        <source>中止</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>通信を中止します（Esc）</source>
        <translation>Ends the transfer (Esc)</translation>
    </message>
    <message>
        <source>チェックした種類を受信機から受け取ります（Ctrl+D）</source>
        <translation>Takes the ticked kinds from the receiver (Ctrl+D)</translation>
    </message>
    <message>
        <source>選択した種類を受信機へ送ります（Ctrl+U）</source>
        <translation>Sends the chosen kinds to the receiver (Ctrl+U)</translation>
    </message>
    <message>
        <source>設定</source>
        <translation>Settings</translation>
    </message>
    <message>
        <source>保存の形式，通信，自動処理の設定を表示します（Ctrl+,）</source>
        <translation>Shows the settings of format, line and automatic actions (Ctrl+,)</translation>
    </message>
    <message>
        <source>ファイルを内部データに取り込みます（Ctrl+O）</source>
        <translation>Reads a file into the data held here (Ctrl+O)</translation>
    </message>
    <message>
        <source>クリップボードの内容を内部データに取り込みます（Ctrl+V）</source>
        <translation>Reads the clipboard into the data held here (Ctrl+V)</translation>
    </message>
    <message>
        <source>選択した種類をファイルに保存します（Ctrl+S）</source>
        <translation>Saves the chosen kinds to a file (Ctrl+S)</translation>
    </message>
    <message>
        <source>選択した種類をクリップボードにコピーします（Ctrl+Shift+C）</source>
        <translation>Copies the chosen kinds to the clipboard (Ctrl+Shift+C)</translation>
    </message>
    <message>
        <source>クリックすると，この種類のチェックを付けるか外します</source>
        <translation>A click ticks this kind or unticks it</translation>
    </message>
    <message>
        <source>ポートなし</source>
        <translation>No port</translation>
    </message>
    <message>
        <source>受信機をつないだシリアルポート．一覧にないポートは，/dev/で始まるパスを入力して選べます</source>
        <translation>The serial port that the receiver is plugged into. One that is not in the list can be typed as a path that begins with /dev/</translation>
    </message>
    <message>
        <source>Walrimの使い方</source>
        <translation>How to use Walrim</translation>
    </message>
    <message>
        <source>フォルダーを開く</source>
        <translation>Open folder</translation>
    </message>
    <message>
        <source>保存したファイルのあるフォルダーを開きます</source>
        <translation>Opens the folder of the saved file</translation>
    </message>
    <message>
        <source>重複を取り除く</source>
        <translation>Take out duplicates</translation>
    </message>
    <message>
        <source>取り込む前からあった記録と同じものを取り除きます（元に戻せます）</source>
        <translation>Takes out records that were held before the import (can be undone)</translation>
    </message>
    <message>
        <source>進み具合</source>
        <translation>Progress</translation>
    </message>
    <message>
        <source>緯度と経度の表記</source>
        <translation>Notation of latitude and longitude</translation>
    </message>
    <message>
        <source>度</source>
        <translation>degrees</translation>
    </message>
    <message>
        <source>度分秒</source>
        <translation>degrees, minutes, seconds</translation>
    </message>
    <message>
        <source>30秒間，データが進んでいません．待っても進まないときは，「中止」を押して，電源とケーブルを確かめてください．</source>
        <translation>Nothing has moved for 30 seconds. If waiting does not help, press Cancel and check power and cable.</translation>
    </message>
    <message>
        <source> 件数</source>
        <translation> count</translation>
    </message>
    <message>
        <source>のポイント</source>
        <translation> points</translation>
    </message>
    <message>
        <source>%1 / %2件 が一致</source>
        <translation>%1 of %2 match</translation>
    </message>
    <message>
        <source>（ポイント %1 / %2）</source>
        <translation> (points: %1 of %2)</translation>
    </message>
    <message>
        <source>隠れている行も，チェックがあれば保存・コピー・アップロード・削除されます．</source>
        <translation>Hidden rows that are ticked are saved, copied, uploaded and deleted as well.</translation>
    </message>
    <message>
        <source>空の列を隠す(&amp;E)</source>
        <translation>Hide &amp;empty columns</translation>
    </message>
    <message>
        <source>表を検索(&amp;F)</source>
        <translation>&amp;Find in tables</translation>
    </message>
    <message>
        <source>登り m</source>
        <translation>Ascent m</translation>
    </message>
    <message>
        <source>断面図と概要</source>
        <translation>Profile and overview</translation>
    </message>
    <message>
        <source>（%1）</source>
        <translation> (%1)</translation>
    </message>
    <message>
        <source>この文字を含む行だけを表示します（Escで閉じます）</source>
        <translation>Shows only rows with this text (Esc closes)</translation>
    </message>
    <message>
        <source>名前・コメント・シンボルなど</source>
        <translation>Name, comment, symbol and so on</translation>
    </message>
    <message>
        <source>すべての行を表示します</source>
        <translation>Shows all rows</translation>
    </message>
    <message>
        <source>検索(&amp;Z)</source>
        <translation>Find (&amp;Z)</translation>
    </message>
    <message>
        <source>地図</source>
        <translation>Map</translation>
    </message>
    <message>
        <source>コード %1</source>
        <translation>Code %1</translation>
    </message>
    <message>
        <source>%1（コード %2）</source>
        <translation>%1 (code %2)</translation>
    </message>
    <message>
        <source>:/help/ja.md</source>
        <translation>:/help/en.md</translation>
    </message>
</context>
</TS>
