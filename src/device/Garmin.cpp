#include "device/Garmin.h"

#include "device/Download.h"
#include "device/Identification.h"
#include "device/ReceiverClock.h"
#include "device/Upload.h"

namespace walrim {

ProductInfo Garmin::ConnectDevice(std::string_view port_name) {
  session_.Report() = {};
  if (!session_.ProbePort(port_name)) return {};
  ProductInfo info = RequestProduct(session_, port_name);
  if (!info.description.empty()) session_.SetProtocols(ProtocolsOf(info.description));
  return info;
}

std::int32_t Garmin::Download(DataSet& data, DataKind kind, std::string_view port_name, TransferMode mode) {
  session_.Report() = {};
  return walrim::Download(session_, data, kind).Run(port_name, mode);
}

std::int32_t Garmin::Upload(const DataSet& data, DataKind kind, std::string_view port_name) {
  session_.Report() = {};
  return UploadRecords(session_, data, kind, port_name);
}

std::optional<CivilTime> Garmin::AskClock(std::string_view port_name) {
  return AskReceiverClock(session_, port_name);
}

bool Garmin::SetClock(std::string_view port_name, const CivilTime& utc) {
  session_.Report() = {};
  return SetReceiverClock(session_, port_name, utc);
}

}  // namespace walrim
