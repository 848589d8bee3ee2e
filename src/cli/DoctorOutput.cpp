#include "cli/DoctorOutput.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include "doctor/Messages.h"

namespace walrim {

namespace {

QString Text(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

QJsonArray Array(const std::vector<std::string>& texts) {
  QJsonArray array;
  for (const std::string& text : texts)
    array.append(Text(text));
  return array;
}

std::string_view HolderWord(PortHolder::Kind kind) {
  switch (kind) {
    case PortHolder::Kind::Process:
      return "process";
    case PortHolder::Kind::LockFile:
      return "lock-file";
    case PortHolder::Kind::Gpsd:
      return "gpsd";
    case PortHolder::Kind::ModemManager:
      return "modem-manager";
  }
  return {};
}

QJsonArray Holders(const std::vector<PortHolder>& holders) {
  QJsonArray array;
  for (const PortHolder& holder : holders) {
    QJsonObject object{{"kind", Text(HolderWord(holder.kind))}};
    if (!holder.name.empty()) object.insert("name", Text(holder.name));
    if (holder.process > 0) object.insert("process", holder.process);
    array.append(object);
  }
  return array;
}

QJsonObject Figures(const LineFigures& figures) {
  QJsonObject object{{"requests", figures.requests},
                     {"answers", figures.answers},
                     {"damagedFrames", figures.damaged_frames},
                     {"strayBytes", figures.stray_bytes}};
  if (figures.ack) object.insert("ackMs", static_cast<qint64>(figures.ack->count()));
  if (figures.round_trip) object.insert("roundTripMs", static_cast<qint64>(figures.round_trip->count()));
  return object;
}

QJsonObject Sentences(const SentenceFacts& facts) {
  QJsonObject object{{"nmea", facts.nmea_sentences}, {"text", facts.text_sentences}};
  if (facts.lat_deg && facts.lon_deg) {
    object.insert("latitude", *facts.lat_deg);
    object.insert("longitude", *facts.lon_deg);
  }
  if (facts.utc) object.insert("utc", Text(DateTimeText(*facts.utc)));
  if (facts.satellites) object.insert("satellites", *facts.satellites);
  if (!facts.product.empty()) object.insert("product", Text(facts.product));
  return object;
}

QJsonObject Adapter(const PortAdapter& adapter) {
  QJsonObject object;
  if (!adapter.usb_id.empty()) object.insert("usbId", Text(adapter.usb_id));
  if (adapter.latency_ms) object.insert("latencyMs", *adapter.latency_ms);
  return object;
}

}  // namespace

std::string DoctorText(const LineReport& report) {
  std::string text = "\n" + doctor_messages::Headline(report) + "\n";
  if (!report.description.empty()) text += report.description + "\n";
  for (const std::string& advice : doctor_messages::Advice(report))
    text += "・" + advice + "\n";
  const std::string command = doctor_messages::ShellCommand(report);
  if (!command.empty()) text += "    " + command + "\n";
  return text;
}

std::string DoctorJson(const LineReport& report, const std::vector<std::string>& steps) {
  QJsonObject object{{"finding", Text(doctor_messages::FindingWord(report.finding))},
                     {"healthy", report.Healthy()},
                     {"port", Text(report.port)},
                     {"baud", report.baud},
                     {"headline", Text(doctor_messages::Headline(report))},
                     {"advice", Array(doctor_messages::Advice(report))},
                     {"steps", Array(steps)},
                     {"holders", Holders(report.holders)},
                     {"figures", Figures(report.figures)},
                     {"sentences", Sentences(report.sentences)},
                     {"adapter", Adapter(report.adapter)}};
  const auto insert = [&](const char* key, const std::string& text) {
    if (!text.empty()) object.insert(key, Text(text));
  };
  insert("device", report.opened.device);
  insert("description", report.description);
  insert("command", doctor_messages::ShellCommand(report));
  return QJsonDocument(object).toJson(QJsonDocument::Indented).toStdString();
}

}  // namespace walrim
