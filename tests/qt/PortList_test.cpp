#include "qt/PortList.h"

#include <gtest/gtest.h>

namespace walrim {
namespace {

SystemPort Usb(const std::string& name) {
  return {name, "/dev/" + name, name + " adapter", true};
}
SystemPort Onboard(const std::string& name) {
  return {name, "/dev/" + name, "", false};
}

std::vector<std::string> Names(const std::vector<SystemPort>& ports) {
  std::vector<std::string> names;
  for (const SystemPort& port : ports)
    names.push_back(port.name);
  return names;
}

using Texts = std::vector<std::string>;

TEST(NaturalLess, ComparesRunsOfDigitsAsNumbers) {
  EXPECT_TRUE(NaturalLess("ttyUSB2", "ttyUSB10"));
  EXPECT_FALSE(NaturalLess("ttyUSB10", "ttyUSB2"));
  EXPECT_TRUE(NaturalLess("ttyACM9", "ttyUSB0"));
  EXPECT_TRUE(NaturalLess("tty1a10", "tty1b2"));
  EXPECT_TRUE(NaturalLess("ttyUSB", "ttyUSB0"));
  EXPECT_FALSE(NaturalLess("ttyUSB0", "ttyUSB"));
  EXPECT_TRUE(NaturalLess("tty99999999999999999998", "tty99999999999999999999"));
}

TEST(NaturalLess, IsFalseBothWaysForEqualNames) {
  for (const char* name : {"", "ttyS0", "12"})
    EXPECT_FALSE(NaturalLess(name, name)) << name;
  EXPECT_FALSE(NaturalLess("tty07", "tty7"));
  EXPECT_FALSE(NaturalLess("tty7", "tty07"));
}

TEST(OrderPorts, PutsUsbAdaptersFirstAndEachGroupInNaturalOrder) {
  const auto ordered = OrderPorts({Onboard("ttyS10"), Usb("ttyUSB10"), Onboard("ttyS2"), Usb("ttyUSB2"), Usb("ttyACM3"),
                                   Usb("ttyUSB0"), Onboard("ttyS0")});
  EXPECT_EQ(Names(ordered), (Texts{"ttyACM3", "ttyUSB0", "ttyUSB2", "ttyUSB10", "ttyS0", "ttyS2", "ttyS10"}));
}

TEST(OrderPorts, KeepsTheOrderOfPortsOfTheSameName) {
  SystemPort first = Usb("ttyUSB0");
  SystemPort second = Usb("ttyUSB0");
  first.device = "/dev/a";
  second.device = "/dev/b";
  const auto ordered = OrderPorts({first, Onboard("ttyS0"), second});
  EXPECT_EQ(ordered[0].device, "/dev/a");
  EXPECT_EQ(ordered[1].device, "/dev/b");
}

TEST(NumberPorts, GivesTheFirstFourTheirNumbers) {
  const auto ports =
      NumberPorts({Onboard("ttyS1"), Onboard("ttyS0"), Usb("ttyUSB1"), Onboard("ttyS2"), Usb("ttyUSB0")});
  EXPECT_EQ(ports, (std::vector<NumberedPort>{{1, "/dev/ttyUSB0", "ttyUSB0 adapter"},
                                              {2, "/dev/ttyUSB1", "ttyUSB1 adapter"},
                                              {3, "/dev/ttyS0", ""},
                                              {4, "/dev/ttyS1", ""},
                                              {0, "/dev/ttyS2", ""}}));
}

TEST(NumberPorts, IsEmptyWithoutPorts) {
  EXPECT_TRUE(NumberPorts({}).empty());
}

TEST(NumberPorts, AMappedNumberBelongsToItsDevice) {
  const auto ports = NumberPorts({Usb("ttyUSB0"), Usb("ttyUSB1")}, {{1, "/dev/pts/3"}});
  EXPECT_EQ(ports, (std::vector<NumberedPort>{{1, "/dev/pts/3", ""},
                                              {2, "/dev/ttyUSB0", "ttyUSB0 adapter"},
                                              {3, "/dev/ttyUSB1", "ttyUSB1 adapter"}}));
}

TEST(NumberPorts, AMappedPortOfTheSystemIsListedOnce) {
  const auto ports = NumberPorts({Usb("ttyUSB0"), Usb("ttyUSB1")}, {{4, "/dev/ttyUSB0"}});
  EXPECT_EQ(ports, (std::vector<NumberedPort>{{1, "/dev/ttyUSB1", "ttyUSB1 adapter"},
                                              {4, "/dev/ttyUSB0", "ttyUSB0 adapter"}}));
}

TEST(NumberPorts, FourMappedNumbersLeaveNoneForTheOthers) {
  const auto ports = NumberPorts({Usb("ttyUSB0")}, {{1, "/a"}, {2, "/b"}, {3, "/c"}, {4, "/d"}});
  ASSERT_EQ(ports.size(), 5U);
  EXPECT_EQ(ports[4], (NumberedPort{0, "/dev/ttyUSB0", "ttyUSB0 adapter"}));
}

TEST(ParsePortMapping, ReadsANumberAndADevice) {
  EXPECT_EQ(ParsePortMapping("1=/dev/pts/3"), std::pair(1, std::string("/dev/pts/3")));
  EXPECT_EQ(ParsePortMapping("4=a=b"), std::pair(4, std::string("a=b")));
}

TEST(ParsePortMapping, RefusesWhatIsNone) {
  for (const char* text : {"", "1", "1=", "0=/dev/a", "5=/dev/a", "x=/dev/a", "12=/dev/a", "=/dev/a"}) {
    EXPECT_EQ(ParsePortMapping(text), std::nullopt) << text;
  }
}

TEST(ListPorts, TellsDevicesOfThisComputerOnce) {
  const auto ports = ListPorts();
  EXPECT_EQ(ports.size(), SystemPorts().size());
  for (std::size_t i = 0; i < ports.size(); ++i) {
    EXPECT_TRUE(ports[i].device.starts_with("/dev/")) << ports[i].device;
    EXPECT_EQ(ports[i].number, i < 4 ? static_cast<int>(i) + 1 : 0);
  }
}

}  // namespace
}  // namespace walrim
