#include "doctor/Messages.h"

#include <cstdio>

#include "text/Numbers.h"

namespace walrim::doctor_messages {

namespace {

using Texts = std::vector<std::string>;

constexpr const char* OtherAdapter = "ほかのUSBポートかアダプターで試してください．";
constexpr const char* CheckCable = "電源，プラグの向きと奥までの差し込み，ポートの番号を確かめてください．";
constexpr const char* TryOtherPorts =
    "ほかのポートにつながっているかもしれません．すべてのポートを探すことができます（walrim-cli doctor --find）．";
constexpr const char* UseCheckedLink =
    "「誤り検査」を「する」（--checked-"
    "link）にすると，壊れたデータを送り直させます．USBアダプターかケーブルを替えてみてください．";
constexpr const char* Brltty =
    "点字ディスプレイ用のbrlttyが，このアダプター（CH340，CP210x）を自分のものにすることがあります．"
    "点字ディスプレイを使わないならアンインストールしてください．";

/// The aim in the receiver's menu. Older models name both directions of the line.
std::string GarminMode(std::string_view product) {
  const bool newer = product.starts_with("eTrex") || product.starts_with("eMap");
  const std::string aim = product.empty() ? "GARMIN（古い機種では GRMN/GRMN）" : newer ? "GARMIN" : "GRMN/GRMN";
  return "受信機の Setup → Interface を " + aim + " にしてから，もう一度調べてください．";
}

std::string DeviceOf(const LineReport& report) {
  return report.opened.device.empty() ? "ポート" + report.port : report.opened.device;
}

std::string HolderText(const PortHolder& holder) {
  const std::string process = holder.process > 0 ? "（プロセス" + std::to_string(holder.process) + "）" : "";
  switch (holder.kind) {
    case PortHolder::Kind::Process:
      return (holder.name.empty() ? "他のプログラム" : holder.name) + process + "が使っています．終了してください．";
    case PortHolder::Kind::LockFile:
      return "ロックファイル" + holder.name + process + "があります．そのプログラムを終了してください．";
    case PortHolder::Kind::Gpsd:
      return "GPSの常駐プログラムgpsdが使っています．止めるには： sudo systemctl stop gpsd.socket gpsd";
    case PortHolder::Kind::ModemManager:
      return "ModemManagerが動いています．つないだ直後の30秒ほどは，モデムかどうかを調べるためにポートを使います．";
  }
  return {};
}

Texts HolderTexts(const LineReport& report) {
  Texts texts;
  for (const PortHolder& holder : report.holders)
    texts.push_back(HolderText(holder));
  return texts;
}

std::string DegreesText(double degrees) {
  char text[32];
  std::snprintf(text, sizeof text, "%.5f", degrees);
  return text;
}

/// What the sentences say proves that the cable is right.
Texts SentenceTexts(const SentenceFacts& facts) {
  std::string seen;
  if (facts.lat_deg && facts.lon_deg) {
    seen += "位置 " + DegreesText(*facts.lat_deg) + "，" + DegreesText(*facts.lon_deg) + "　";
  }
  if (facts.utc) seen += "時刻 " + DateTimeText(*facts.utc) + " UTC　";
  if (facts.satellites) seen += "衛星 " + std::to_string(*facts.satellites) + "個　";
  if (!facts.product.empty()) seen += facts.product + "　";
  if (seen.empty()) return {"ケーブルは正しくつながっています．"};
  constexpr std::size_t Gap = 3;  // bytes of the last wide blank
  return {"ケーブルは正しくつながっています（" + seen.substr(0, seen.size() - Gap) + "）．"};
}

Texts WrongSetting(const LineReport& report) {
  Texts texts{GarminMode(report.sentences.product)};
  for (std::string& text : SentenceTexts(report.sentences))
    texts.push_back(std::move(text));
  return texts;
}

Texts WithBrltty(const LineReport& report, Texts texts) {
  if (report.finding == Finding::Vanished || report.adapter.TakenByBrltty()) texts.emplace_back(Brltty);
  return texts;
}

Texts Joined(Texts first, Texts second) {
  for (std::string& text : second)
    first.push_back(std::move(text));
  return first;
}

/// Adapters of FTDI hold bytes back for 16 ms as they come.
Texts LatencyTexts(const LineReport& report) {
  constexpr int ShortLatencyMs = 2;
  if (report.adapter.latency_ms.value_or(0) <= ShortLatencyMs) return {};
  return {"アダプターがデータを" + std::to_string(*report.adapter.latency_ms) +
          "ミリ秒ためてから渡しています．1ミリ秒にすると速くなります．"};
}

std::string SettingName(const LineReport& report, std::string_view name) {
  return "受信機の出力が" + std::string(name) + "（" + std::to_string(report.baud) + "ボー）になっています．";
}

std::string FiguresText(const LineFigures& figures) {
  std::string text =
      std::to_string(figures.requests) + "回のうち" + std::to_string(figures.answers) + "回，正しい応答がありました";
  if (figures.damaged_frames > 0) text += "，壊れたフレーム " + std::to_string(figures.damaged_frames) + "個";
  if (figures.stray_bytes > 0) text += "，余分なバイト " + std::to_string(figures.stray_bytes) + "個";
  if (figures.ack) text += "，応答まで" + std::to_string(figures.ack->count()) + "ミリ秒";
  if (figures.round_trip) text += "，往復" + std::to_string(figures.round_trip->count()) + "ミリ秒";
  return text;
}

/// What came unasked.
std::string HeardText(const LineReport& report) {
  const std::string speed = std::to_string(report.baud) + "ボーで";
  if (report.finding == Finding::Nmea) return speed + "NMEAの文が届いています";
  if (report.finding == Finding::TextOut) return speed + "Text Outの文が届いています";
  return report.finding == Finding::Rtcm ? "RTCMのデータが届いています" : "知っている文は届きません";
}

std::string NotOpenedText(const LineReport& report) {
  return DeviceOf(report) + "を開けません" + (report.opened.detail.empty() ? "" : "：" + report.opened.detail) + "．";
}

}  // namespace

std::string Headline(const LineReport& report) {
  switch (report.finding) {
    case Finding::NoPort:
      return DeviceOf(report) + "がありません．";
    case Finding::Vanished:
      return DeviceOf(report) + "が消えました．";
    case Finding::NotPermitted:
      return DeviceOf(report) + "を開く権限がありません．";
    case Finding::Held:
      return DeviceOf(report) + "は他のプログラムが使用中です．";
    case Finding::NotOpened:
      return NotOpenedText(report);
    case Finding::Silent:
      return "受信機から何も届きません．";
    case Finding::Nmea:
      return SettingName(report, "NMEA");
    case Finding::TextOut:
      return SettingName(report, "Text Out");
    case Finding::Rtcm:
      return SettingName(report, "RTCM");
    case Finding::Damaged:
      return "届くデータが壊れています．";
    case Finding::Slow:
      return "正しい応答がありますが，遅れています．";
    case Finding::Healthy:
      return "正常です．";
    case Finding::Cancelled:
      return "中止しました．";
  }
  return {};
}

std::vector<std::string> Advice(const LineReport& report) {
  switch (report.finding) {
    case Finding::NoPort:
      return WithBrltty(report, {"ケーブルかUSBアダプターを差し込んでください．", TryOtherPorts});
    case Finding::Vanished:
      return WithBrltty(report, {"ケーブルかUSBアダプターが抜けかけています．差し直してください．"});
    case Finding::NotPermitted:
      if (report.opened.group.empty()) return {"管理者に，このポートを使う許可をもらってください．"};
      return {"グループ" + report.opened.group +
              "に加わってください．次の命令を実行し，いったんログアウトして，ログインし直します．"};
    case Finding::Held:
      return Joined(HolderTexts(report), {"使っているプログラムを終了してから，もう一度調べてください．"});
    case Finding::NotOpened:
      return {"ほかのポートを選ぶか，ケーブルかUSBアダプターを差し直してください．"};
    case Finding::Silent:
      return Joined({CheckCable, GarminMode({}), TryOtherPorts}, HolderTexts(report));
    case Finding::Nmea:
    case Finding::TextOut:
    case Finding::Rtcm:
      return WrongSetting(report);
    case Finding::Damaged:
      return Joined(Joined({UseCheckedLink}, LatencyTexts(report)), HolderTexts(report));
    case Finding::Slow:
      return Joined(LatencyTexts(report), {OtherAdapter});
    case Finding::Healthy:
      return LatencyTexts(report);
    case Finding::Cancelled:
      return {};
  }
  return {};
}

std::string ShellCommand(const LineReport& report) {
  if (report.finding == Finding::NotPermitted && !report.opened.group.empty()) {
    return "sudo usermod -aG " + report.opened.group + " $USER";
  }
  return {};
}

std::string StepLine(ExamStep step, const LineReport& report) {
  switch (step) {
    case ExamStep::Port:
      return "ポート：" + (report.opened.Ok() ? DeviceOf(report) + "を開きました" : Headline(report));
    case ExamStep::Answer:
      return std::string("応答：") + (report.answered ? "受信機が応えました" : "9600ボーで呼んでも応えません");
    case ExamStep::Listening:
      return "受信：" + HeardText(report);
    case ExamStep::OtherSpeeds:
      return "ほかの速さ：" + HeardText(report);
    case ExamStep::Figures:
      return "品質：" + FiguresText(report.figures);
    case ExamStep::Holders:
      return "他のプログラム：" + (report.holders.empty() ? "見あたりません" : HolderTexts(report).front());
  }
  return {};
}

std::string Examining(std::string_view port) {
  return "ポート" + std::string(port) + "の接続を調べています";
}

std::string AskedPort(const PortChoice& port, bool answers) {
  return port.device + "：" + (answers ? "受信機が応えました" : "応答がありません");
}

std::string FoundAt(const PortChoice& port) {
  return port.device + "で受信機が応えました．このポートを選びました．";
}

std::string PortAppeared(std::string_view device, std::string_view description) {
  std::string text(device);
  if (!description.empty()) text += " (" + std::string(description) + ")";
  return text + "がつながれました．情報取得（F5）で受信機を調べられます．";
}

std::string_view FindingWord(Finding finding) {
  switch (finding) {
    case Finding::NoPort:
      return "no-port";
    case Finding::Vanished:
      return "vanished";
    case Finding::NotPermitted:
      return "not-permitted";
    case Finding::Held:
      return "held";
    case Finding::NotOpened:
      return "not-opened";
    case Finding::Silent:
      return "silent";
    case Finding::Nmea:
      return "nmea";
    case Finding::Rtcm:
      return "rtcm";
    case Finding::TextOut:
      return "text-out";
    case Finding::Damaged:
      return "damaged";
    case Finding::Slow:
      return "slow";
    case Finding::Healthy:
      return "healthy";
    case Finding::Cancelled:
      return "cancelled";
  }
  return {};
}

}  // namespace walrim::doctor_messages
