#include "qt/SystemPortFacts.h"

#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/file.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

#include "qt/PseudoTerminal.h"
#include "support/Fakes.h"

namespace walrim {
namespace {

namespace fs = std::filesystem;

class SystemPortFactsTest : public testing::Test {
 protected:
  SystemPortFactsTest() : folder_(fs::temp_directory_path() / ("walrim-facts-" + std::to_string(getpid()))) {
    fs::create_directories(folder_ / "proc");
    places.processes = folder_ / "proc";
    places.devices = folder_ / "tty";
    places.gpsd_port = 1;  // nobody listens there
  }
  ~SystemPortFactsTest() override { fs::remove_all(folder_); }

  void Put(const fs::path& file, const std::string& text) {
    fs::create_directories((folder_ / file).parent_path());
    std::ofstream(folder_ / file) << text;
  }

  fs::path folder_;
  SystemPlaces places;
  FakeClock clock;
};

TEST_F(SystemPortFactsTest, NamesTheProcessThatHasADeviceOpen) {
  Put("proc/4711/comm", "minicom\n");
  fs::create_directories(folder_ / "proc/4711/fd");
  fs::create_symlink("/dev/null", folder_ / "proc/4711/fd/3");
  Put("proc/4712/comm", "bystander\n");
  const SystemPortFacts facts(clock, {}, places);
  EXPECT_EQ(facts.Holders("/dev/null"), (std::vector<PortHolder>{{PortHolder::Kind::Process, "minicom", 4711}}));
  EXPECT_TRUE(facts.Holders("/dev/zero").empty());
}

TEST_F(SystemPortFactsTest, TheOtherEndOfAPseudoTerminalIsNoRival) {
  const PseudoTerminal line;
  fs::create_directories(folder_ / "proc/4711/fd");
  fs::create_symlink(line.Device(), folder_ / "proc/4711/fd/3");
  const SystemPortFacts facts(clock, {}, places);
  EXPECT_EQ(facts.Holders(line.Device()).size(), 1U);
  fs::create_symlink("/dev/ptmx", folder_ / "proc/4711/fd/4");
  EXPECT_TRUE(facts.Holders(line.Device()).empty());
}

TEST_F(SystemPortFactsTest, NamesModemManagerBesides) {
  Put("proc/12/comm", "ModemManager\n");
  EXPECT_EQ(SystemPortFacts(clock, {}, places).Holders("/dev/null"),
            (std::vector<PortHolder>{{PortHolder::Kind::ModemManager, "", 0}}));
}

/// As another window of ours keeps a port: by a lock, which the system shows of every user's processes.
TEST_F(SystemPortFactsTest, NamesTheProcessThatHasADeviceLocked) {
  const PseudoTerminal line;
  int ready[2];
  int done[2];
  ASSERT_EQ(pipe(ready), 0);
  ASSERT_EQ(pipe(done), 0);
  const pid_t child = fork();
  if (child == 0) {
    const int port = open(line.Device().c_str(), O_RDWR | O_NOCTTY);
    char byte = flock(port, LOCK_EX | LOCK_NB) == 0 ? 'y' : 'n';
    static_cast<void>(!write(ready[1], &byte, 1));
    close(done[1]);
    static_cast<void>(!read(done[0], &byte, 1));
    _exit(0);
  }
  char locked = 'n';
  ASSERT_EQ(read(ready[0], &locked, 1), 1);
  ASSERT_EQ(locked, 'y');
  SystemPlaces real;
  real.gpsd_port = 1;
  bool found = false;
  for (const PortHolder& holder : SystemPortFacts(clock, {}, real).Holders(line.Device())) {
    found = found || (holder.kind == PortHolder::Kind::Process && holder.process == child);
  }
  EXPECT_TRUE(found);
  close(done[1]);
  waitpid(child, nullptr, 0);
  for (const int descriptor : {ready[0], ready[1], done[0]})
    close(descriptor);
}

TEST_F(SystemPortFactsTest, AsksTheGpsDaemon) {
  const int server = socket(AF_INET, SOCK_STREAM, 0);
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  ASSERT_EQ(bind(server, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
  socklen_t size = sizeof address;
  ASSERT_EQ(getsockname(server, reinterpret_cast<sockaddr*>(&address), &size), 0);
  ASSERT_EQ(listen(server, 1), 0);
  std::string asked;
  std::thread daemon([&] {
    const int client = accept(server, nullptr, nullptr);
    char bytes[64];
    const ssize_t got = read(client, bytes, sizeof bytes);
    asked.assign(bytes, got > 0 ? static_cast<std::size_t>(got) : 0);
    const std::string answer =
        "{\"class\":\"VERSION\",\"release\":\"3.22\"}\r\n"
        "{\"class\":\"DEVICES\",\"devices\":[{\"class\":\"DEVICE\",\"path\":\"/dev/null\"}]}\r\n";
    static_cast<void>(!write(client, answer.data(), answer.size()));
    close(client);
  });
  places.gpsd_port = ntohs(address.sin_port);
  const auto holders = SystemPortFacts(clock, {}, places).Holders("/dev/null");
  daemon.join();
  close(server);
  EXPECT_EQ(asked, "?DEVICES;\n");
  EXPECT_EQ(holders, (std::vector<PortHolder>{{PortHolder::Kind::Gpsd, "", 0}}));
}

TEST(GpsdLists, ReadsItsAnswer) {
  const std::string answer =
      "{\"class\":\"VERSION\"}\n{\"class\":\"DEVICES\",\"devices\":[{\"path\":\"/dev/zero\"}]}\n";
  EXPECT_TRUE(GpsdLists(answer, "/dev/zero"));
  EXPECT_FALSE(GpsdLists(answer, "/dev/null"));
  EXPECT_FALSE(GpsdLists("no JSON\n[1]\n{\"devices\":7}\n{\"devices\":[3]}", "/dev/null"));
}

TEST_F(SystemPortFactsTest, ReadsTheAdapter) {
  Put("usb/1-2/idVendor", "0403\n");
  Put("usb/1-2/idProduct", "6001\n");
  Put("usb/1-2/1-2:1.0/null/latency_timer", "16\n");
  fs::create_directories(folder_ / "tty/null");
  fs::create_symlink(folder_ / "usb/1-2/1-2:1.0/null", folder_ / "tty/null/device");
  const SystemPortFacts facts(clock, {}, places);
  EXPECT_EQ(facts.Adapter("/dev/null").usb_id, "0403:6001");
  EXPECT_EQ(facts.Adapter("/dev/null").latency_ms, 16);
  EXPECT_EQ(facts.Adapter("/dev/zero").usb_id, "");
  EXPECT_FALSE(facts.Adapter("/dev/zero").latency_ms);
}

TEST_F(SystemPortFactsTest, KnowsWhatWent) {
  SystemPortFacts facts(clock, {}, places);
  EXPECT_FALSE(facts.VanishedLately("/dev/ttyUSB1"));
  facts.Look({{1, "/dev/ttyUSB0", ""}, {2, "/dev/ttyUSB1", ""}});
  clock.Advance(std::chrono::seconds(1));
  facts.Look({{1, "/dev/ttyUSB0", ""}});
  EXPECT_TRUE(facts.VanishedLately("/dev/ttyUSB1"));
  clock.Advance(std::chrono::seconds(90));
  EXPECT_FALSE(facts.VanishedLately("/dev/ttyUSB1"));
}

}  // namespace
}  // namespace walrim
