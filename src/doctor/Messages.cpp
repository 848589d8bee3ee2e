#include "doctor/Messages.h"

#include <cstdio>

#include "text/Numbers.h"
#include "text/Phrase.h"

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
  const std::string aim = product.empty() ? Phrase("GARMIN（古い機種では GRMN/GRMN）") : newer ? "GARMIN" : "GRMN/GRMN";
  return Phrase("受信機の Setup → Interface を %1 にしてから，もう一度調べてください．", aim);
}

std::string DeviceOf(const LineReport& report) {
  return report.opened.device.empty() ? Phrase("ポート%1", report.port) : report.opened.device;
}

std::string HolderText(const PortHolder& holder) {
  const std::string process = holder.process > 0 ? Phrase("（プロセス%1）", holder.process) : "";
  switch (holder.kind) {
    case PortHolder::Kind::Process:
      return Phrase("%1%2が使っています．終了してください．",
                    holder.name.empty() ? Phrase("他のプログラム") : holder.name, process);
    case PortHolder::Kind::LockFile:
      return Phrase("ロックファイル%1%2があります．そのプログラムを終了してください．", holder.name, process);
    case PortHolder::Kind::Gpsd:
      return Phrase("GPSの常駐プログラムgpsdが使っています．止めるには： sudo systemctl stop gpsd.socket gpsd");
    case PortHolder::Kind::ModemManager:
      return Phrase(
          "ModemManagerが動いています．つないだ直後の30秒ほどは，モデムかどうかを調べるためにポートを使います．");
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

std::string Listed(const Texts& texts, std::string_view between) {
  std::string list;
  for (const std::string& text : texts)
    list.append(list.empty() ? std::string_view() : between).append(text);
  return list;
}

/// What the sentences say proves that the cable is right.
Texts SentenceTexts(const SentenceFacts& facts) {
  Texts seen;
  if (facts.lat_deg && facts.lon_deg) {
    seen.push_back(Phrase("位置 %1，%2", DegreesText(*facts.lat_deg), DegreesText(*facts.lon_deg)));
  }
  if (facts.utc) seen.push_back(Phrase("時刻 %1 UTC", DateTimeText(*facts.utc)));
  if (facts.satellites) seen.push_back(Phrase("衛星 %1個", *facts.satellites));
  if (!facts.product.empty()) seen.push_back(facts.product);
  if (seen.empty()) return {Phrase("ケーブルは正しくつながっています．")};
  return {Phrase("ケーブルは正しくつながっています（%1）．", Listed(seen, Phrase("　")))};
}

Texts WrongSetting(const LineReport& report) {
  Texts texts{GarminMode(report.sentences.product)};
  for (std::string& text : SentenceTexts(report.sentences))
    texts.push_back(std::move(text));
  return texts;
}

Texts WithBrltty(const LineReport& report, Texts texts) {
  if (report.finding == Finding::Vanished || report.adapter.TakenByBrltty()) texts.push_back(Phrase(Brltty));
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
  return {Phrase("アダプターがデータを%1ミリ秒ためてから渡しています．1ミリ秒にすると速くなります．",
                 *report.adapter.latency_ms)};
}

std::string SettingName(const LineReport& report, std::string_view name) {
  return Phrase("受信機の出力が%1（%2ボー）になっています．", name, report.baud);
}

std::string FiguresText(const LineFigures& figures) {
  Texts texts{Phrase("%1回のうち%2回，正しい応答がありました", figures.requests, figures.answers)};
  if (figures.damaged_frames > 0) texts.push_back(Phrase("壊れたフレーム %1個", figures.damaged_frames));
  if (figures.stray_bytes > 0) texts.push_back(Phrase("余分なバイト %1個", figures.stray_bytes));
  if (figures.ack) texts.push_back(Phrase("応答まで%1ミリ秒", figures.ack->count()));
  if (figures.round_trip) texts.push_back(Phrase("往復%1ミリ秒", figures.round_trip->count()));
  return Listed(texts, Phrase("，"));
}

/// What came unasked.
std::string HeardText(const LineReport& report) {
  if (report.finding == Finding::Nmea) return Phrase("%1ボーでNMEAの文が届いています", report.baud);
  if (report.finding == Finding::TextOut) return Phrase("%1ボーでText Outの文が届いています", report.baud);
  return report.finding == Finding::Rtcm ? Phrase("RTCMのデータが届いています") : Phrase("知っている文は届きません");
}

std::string NotOpenedText(const LineReport& report) {
  if (report.opened.detail.empty()) return Phrase("%1を開けません．", DeviceOf(report));
  return Phrase("%1を開けません：%2．", DeviceOf(report), report.opened.detail);
}

}  // namespace

std::string Headline(const LineReport& report) {
  switch (report.finding) {
    case Finding::NoPort:
      return Phrase("%1がありません．", DeviceOf(report));
    case Finding::Vanished:
      return Phrase("%1が消えました．", DeviceOf(report));
    case Finding::NotPermitted:
      return Phrase("%1を開く権限がありません．", DeviceOf(report));
    case Finding::Held:
      return Phrase("%1は他のプログラムが使用中です．", DeviceOf(report));
    case Finding::NotOpened:
      return NotOpenedText(report);
    case Finding::Silent:
      return Phrase("受信機から何も届きません．");
    case Finding::Nmea:
      return SettingName(report, "NMEA");
    case Finding::TextOut:
      return SettingName(report, "Text Out");
    case Finding::Rtcm:
      return SettingName(report, "RTCM");
    case Finding::Damaged:
      return Phrase("届くデータが壊れています．");
    case Finding::Slow:
      return Phrase("正しい応答がありますが，遅れています．");
    case Finding::Healthy:
      return Phrase("正常です．");
    case Finding::Cancelled:
      return Phrase("中止しました．");
  }
  return {};
}

std::vector<std::string> Advice(const LineReport& report) {
  switch (report.finding) {
    case Finding::NoPort:
      return WithBrltty(report, {Phrase("ケーブルかUSBアダプターを差し込んでください．"), Phrase(TryOtherPorts)});
    case Finding::Vanished:
      return WithBrltty(report, {Phrase("ケーブルかUSBアダプターが抜けかけています．差し直してください．")});
    case Finding::NotPermitted:
      if (report.opened.group.empty()) return {Phrase("管理者に，このポートを使う許可をもらってください．")};
      return {Phrase("グループ%1に加わってください．次の命令を実行し，いったんログアウトして，ログインし直します．",
                     report.opened.group)};
    case Finding::Held:
      return Joined(HolderTexts(report), {Phrase("使っているプログラムを終了してから，もう一度調べてください．")});
    case Finding::NotOpened:
      return {Phrase("ほかのポートを選ぶか，ケーブルかUSBアダプターを差し直してください．")};
    case Finding::Silent:
      return Joined({Phrase(CheckCable), GarminMode({}), Phrase(TryOtherPorts)}, HolderTexts(report));
    case Finding::Nmea:
    case Finding::TextOut:
    case Finding::Rtcm:
      return WrongSetting(report);
    case Finding::Damaged:
      return Joined(Joined({Phrase(UseCheckedLink)}, LatencyTexts(report)), HolderTexts(report));
    case Finding::Slow:
      return Joined(LatencyTexts(report), {Phrase(OtherAdapter)});
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
      return Phrase("ポート：%1", report.opened.Ok() ? Phrase("%1を開きました", DeviceOf(report)) : Headline(report));
    case ExamStep::Answer:
      return Phrase("応答：%1",
                    report.answered ? Phrase("受信機が応えました") : Phrase("9600ボーで呼んでも応えません"));
    case ExamStep::Listening:
      return Phrase("受信：%1", HeardText(report));
    case ExamStep::OtherSpeeds:
      return Phrase("ほかの速さ：%1", HeardText(report));
    case ExamStep::Figures:
      return Phrase("品質：%1", FiguresText(report.figures));
    case ExamStep::Holders:
      return Phrase("他のプログラム：%1",
                    report.holders.empty() ? Phrase("見あたりません") : HolderTexts(report).front());
  }
  return {};
}

std::string Examining(std::string_view port) {
  return Phrase("ポート%1の接続を調べています", port);
}

std::string AskedPort(const PortChoice& port, bool answers) {
  return Phrase("%1：%2", port.device, answers ? Phrase("受信機が応えました") : Phrase("応答がありません"));
}

std::string FoundAt(const PortChoice& port) {
  return Phrase("%1で受信機が応えました．このポートを選びました．", port.device);
}

std::string PortAppeared(std::string_view device, std::string_view description) {
  std::string text(device);
  if (!description.empty()) text += " (" + std::string(description) + ")";
  return Phrase("%1がつながれました．情報取得（F5）で受信機を調べられます．", text);
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
