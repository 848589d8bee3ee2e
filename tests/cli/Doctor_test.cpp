// walrim-cli doctor in front of receivers of every kind, over a pseudo-terminal.
#include <QJsonDocument>
#include <QJsonObject>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <string>
#include <sys/file.h>
#include <unistd.h>
#include <vector>

#include "doctor/Messages.h"
#include "support/Processes.h"

namespace walrim {
namespace {

struct Examined {
  int status = -1;
  std::string out;
  std::string err;
  QJsonObject json;

  [[nodiscard]] std::string Finding() const { return json.value("finding").toString().toStdString(); }
};

class Doctor : public ::testing::Test {
 protected:
  static Examined Run(const std::vector<std::string>& words) {
    std::vector<std::string> all{WALRIM_CLI, "doctor"};
    all.insert(all.end(), words.begin(), words.end());
    Process process(all);
    Examined examined;
    examined.status = process.Wait();
    examined.out = process.Out();
    examined.err = process.Err();
    examined.json = QJsonDocument::fromJson(QByteArray::fromStdString(examined.out)).object();
    return examined;
  }
  /// In front of a receiver with these options.
  static Examined Examine(std::vector<std::string> options) {
    options.insert(options.begin(), WALRIM_RECEIVER);
    Process receiver(options);
    EXPECT_TRUE(receiver.ReadUntil("\n")) << receiver.Err();
    return Run({"--json", "--port", receiver.Out().substr(0, receiver.Out().find('\n'))});
  }
};

TEST_F(Doctor, AHealthyLineExitsWithZero) {
  const Examined examined = Examine({});
  EXPECT_EQ(examined.status, 0);
  EXPECT_EQ(examined.Finding(), "healthy");
  EXPECT_TRUE(examined.json.value("healthy").toBool());
  EXPECT_EQ(examined.json.value("figures").toObject().value("answers").toInt(),
            examined.json.value("figures").toObject().value("requests").toInt());
  EXPECT_EQ(examined.err, "");
}

TEST_F(Doctor, EachTroubleHasItsFinding) {
  // The others are the examination's own tests: each takes seconds of a real line.
  const std::pair<std::vector<std::string>, std::string> cases[] = {{{"--mode", "text"}, "text-out"},
                                                                    {{"--mode", "silent"}, "silent"}};
  for (const auto& [options, finding] : cases) {
    const Examined examined = Examine(options);
    EXPECT_EQ(examined.Finding(), finding) << options[1];
    EXPECT_EQ(examined.status, 3) << options[1];
  }
}

TEST_F(Doctor, SentencesProveTheCable) {
  const Examined examined = Examine({"--mode", "nmea"});
  EXPECT_EQ(examined.Finding(), "nmea") << examined.out;
  const QJsonObject sentences = examined.json.value("sentences").toObject();
  EXPECT_NEAR(sentences.value("latitude").toDouble(), 35.6323, 1e-4);
  EXPECT_EQ(sentences.value("satellites").toInt(), 5);
}

TEST_F(Doctor, WhoKeepsThePortIsNamed) {
  Process receiver({WALRIM_RECEIVER});
  ASSERT_TRUE(receiver.ReadUntil("\n"));
  const std::string port = receiver.Out().substr(0, receiver.Out().find('\n'));
  const int held = open(port.c_str(), O_RDWR | O_NOCTTY);
  ASSERT_EQ(flock(held, LOCK_EX | LOCK_NB), 0);
  const Examined examined = Run({"--port", port});
  close(held);
  EXPECT_EQ(examined.status, 3);
  EXPECT_NE(examined.out.find("cli_tests（プロセス" + std::to_string(getpid()) + "）"), std::string::npos)
      << examined.out;
}

TEST_F(Doctor, APortIsGivenOrLookedFor) {
  EXPECT_EQ(Run({}).status, 2);
  EXPECT_EQ(Run({"--find", "--port", "1"}).status, 2);
}

TEST_F(Doctor, AMissingPortIsToldInWords) {
  const Examined examined = Run({"--port", "/dev/walrim-no-such-port"});
  EXPECT_EQ(examined.status, 3);
  EXPECT_NE(examined.out.find("/dev/walrim-no-such-portがありません．"), std::string::npos) << examined.out;
}

}  // namespace
}  // namespace walrim
