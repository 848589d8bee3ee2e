// A device module, and a receiver of a few lines at the other end of its line.
#pragma once

#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "device/Garmin.h"
#include "support/Fakes.h"
#include "support/ScriptedReceiver.h"

namespace walrim {

struct DeviceWorld {
  /// Identifies a receiver of a model, and forgets what that took.
  void Meet(std::string_view description, LinkChoice choice = LinkChoice::Plain) {
    receiver.description = description;
    garmin.SetLinkChoice(choice);
    if (garmin.ConnectDevice("1").product_id != receiver.product_id) std::abort();
    receiver.received.clear();
    port.sent.clear();
    port.opened = 0;
    port.closed = 0;
    loop.yields = 0;
  }
  [[nodiscard]] std::int32_t Download(DataKind kind = DataKind::Waypoint) {
    garmin.ClearCancel();
    return garmin.Download(data, kind, "1", TransferMode::Transfer);
  }
  [[nodiscard]] std::int32_t Upload(DataKind kind) {
    garmin.ClearCancel();
    return garmin.Upload(data, kind, "1");
  }

  FakeClock clock;
  ScriptedPort port{clock};
  ScriptedReceiver receiver{port};
  FakeEventLoop loop;
  RecordingDesktop desktop;
  DataSet data;
  Garmin garmin{port, clock, loop, desktop};
};

}  // namespace walrim
