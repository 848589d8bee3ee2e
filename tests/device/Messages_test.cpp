// The wordings.
#include "device/Messages.h"

#include <gtest/gtest.h>

namespace walrim {
namespace {

TEST(DeviceMessages, AreWordedSo) {
  EXPECT_EQ(device_messages::SilentReceiver, "電源が入っていないか，接続されていません．");
  EXPECT_EQ(device_messages::DataLoss,
            "GPS内のデータ不具合もしくは通信エラーのためデータの取りこぼしが発生した可能性があります．");
  EXPECT_EQ(device_messages::ValueOutOfRange("Waypoint 1"), "Waypoint 1の値が受信機の範囲を超えています．");
  EXPECT_EQ(device_messages::CharacterNotSendable("Route 2", "é"), "Route 2の文字「é」は受信機に送れません．");
  const std::string in_use = "\nSerial Port [ 3 ] は既に使われています";
  EXPECT_EQ(device_messages::PortNotOpened("3", {PortProblem::Missing, "/dev/ttyS2", "", ""}),
            std::string("/dev/ttyS2がありません．") + in_use);
  EXPECT_EQ(device_messages::PortNotOpened("3", {PortProblem::Missing, "", "", ""}),
            std::string("ポートがありません．") + in_use);
  EXPECT_EQ(device_messages::PortNotOpened("3", {PortProblem::InUse, "/dev/ttyS2", "", ""}),
            std::string("/dev/ttyS2は他のプログラムが使用中です．") + in_use);
  EXPECT_EQ(
      device_messages::PortNotOpened("3", {PortProblem::NotPermitted, "/dev/ttyS2", "dialout", ""}),
      std::string("/dev/ttyS2を開く権限がありません．グループdialoutに加わってください： sudo usermod -aG dialout "
                  "$USER") +
          in_use);
  EXPECT_EQ(device_messages::PortNotOpened("3", {PortProblem::NotPermitted, "/dev/ttyS2", "", ""}),
            std::string("/dev/ttyS2を開く権限がありません．") + in_use);
  EXPECT_EQ(device_messages::PortNotOpened("3", {PortProblem::Other, "/dev/ttyS2", "", "busy"}),
            std::string("/dev/ttyS2を開けません：busy") + in_use);
}

}  // namespace
}  // namespace walrim
