#include "qt/CommandSocket.h"

#include <QCoreApplication>
#include <QEvent>
#include <QEventLoop>
#include <QFile>
#include <QFileInfo>
#include <QLocalServer>
#include <QLocalSocket>
#include <QPointer>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <thread>
#include <unistd.h>
#include <vector>

#include "qt/Messages.h"

namespace walrim {
namespace {

using Outcome = CommandAnswer::Outcome;
using std::chrono::hours;
using std::chrono::milliseconds;

/// A client in a thread of its own; Answer lets the event loop run until it has ended.
class Caller {
 public:
  Caller(const std::string& name, CommandCall call, std::optional<milliseconds> reply_wait = std::nullopt)
      : thread_([this, name, call = std::move(call), reply_wait] {
          answer_ = SendCommand({name, {}}, call, reply_wait);
          QMetaObject::invokeMethod(
              &loop_, [this] { loop_.exit(); }, Qt::QueuedConnection);
        }) {}

  CommandAnswer Answer() {
    loop_.exec();
    thread_.join();
    return answer_;
  }

 private:
  QEventLoop loop_;
  CommandAnswer answer_;
  std::thread thread_;
};

/// Lets the event loop run until a client has been disconnected.
void AwaitEnd(QLocalSocket& client) {
  if (client.state() == QLocalSocket::UnconnectedState) return;
  QEventLoop loop;
  QObject::connect(&client, &QLocalSocket::disconnected, &loop, &QEventLoop::quit);
  loop.exec();
}

std::string CallText(const CommandCall& call) {
  return EncodeCall(call).value();
}

void Write(QLocalSocket& client, const std::string& bytes) {
  client.write(bytes.data(), static_cast<qint64>(bytes.size()));
  client.flush();
}

/// The server's end of the first client that calls.
class FirstCallerWatch : public QObject {
 public:
  FirstCallerWatch() { QCoreApplication::instance()->installEventFilter(this); }
  bool IsThere() const { return caller_ != nullptr; }
  bool Left() const { return caller_ == nullptr || caller_->state() == QLocalSocket::UnconnectedState; }

 private:
  /// The server notes at a client that it has called.
  bool eventFilter(QObject* watched, QEvent* event) override {
    auto* const client = qobject_cast<QLocalSocket*>(watched);
    if (client != nullptr && event->type() == QEvent::DynamicPropertyChange && !seen_) {
      seen_ = true;
      caller_ = client;
    }
    return false;
  }

  bool seen_ = false;
  QPointer<QLocalSocket> caller_;
};

class CommandSocketTest : public ::testing::Test {
 protected:
  CommandSocket::Handler Record() {
    return [this](const std::string& word, const std::string& arg1, const std::string& arg2) {
      calls.push_back({word, arg1, arg2});
      return result;
    };
  }

  void Connect(QLocalSocket& client) {
    client.connectToServer(QString::fromStdString(name));
    ASSERT_TRUE(client.waitForConnected()) << client.errorString().toStdString();
  }

  CommandAnswer Send(const CommandCall& call) { return Caller(name, call).Answer(); }

  QTemporaryDir folder;
  std::string name = folder.path().toStdString() + "/command";
  std::vector<CommandCall> calls;
  std::optional<std::int32_t> result = 0;
};

TEST_F(CommandSocketTest, ACallReachesTheWindowAndItsResultComesBack) {
  CommandSocket socket(Record());
  ASSERT_EQ(socket.Listen(name), "");
  for (const std::int32_t value : {0, 1, -9, INT32_MAX, INT32_MIN}) {
    result = value;
    const CommandAnswer answer = Send({"GetFile", "/データ/a b.grc", ""});
    EXPECT_EQ(answer.outcome, Outcome::Result);
    EXPECT_EQ(answer.result, value);
    EXPECT_EQ(answer.error, "");
  }
  ASSERT_EQ(calls.size(), 5U);
  EXPECT_EQ(calls[0], (CommandCall{"GetFile", "/データ/a b.grc", ""}));
}

TEST_F(CommandSocketTest, ABusyWindowSaysSo) {
  CommandSocket socket(Record());
  ASSERT_EQ(socket.Listen(name), "");
  result = std::nullopt;
  const CommandAnswer answer = Send({"Delete", "ALL", ""});
  EXPECT_EQ(answer.outcome, Outcome::Busy);
  EXPECT_NE(answer.error, "");
}

TEST_F(CommandSocketTest, ACallDuringAnotherOneIsAnsweredAsBusy) {
  std::vector<CommandAnswer> during;
  CommandSocket socket([&](const std::string& word, const std::string&, const std::string&) {
    calls.push_back({word, "", ""});
    for (int i = 0; i < 2; ++i)
      during.push_back(Send({"Delete", "ALL", ""}));
    return std::optional<std::int32_t>(3);
  });
  ASSERT_EQ(socket.Listen(name), "");
  const CommandAnswer answer = Send({"GetFile", "a", ""});
  EXPECT_EQ(answer.outcome, Outcome::Result);
  EXPECT_EQ(answer.result, 3);
  ASSERT_EQ(during.size(), 2U);
  for (const CommandAnswer& busy : during)
    EXPECT_EQ(busy.outcome, Outcome::Busy);
  EXPECT_EQ(calls.size(), 1U);
}

TEST_F(CommandSocketTest, WithoutAWindowACallSaysSo) {
  EXPECT_EQ(SendCommand({name, {}}, {"Delete", "ALL", ""}).outcome, Outcome::NoWindow);
  EXPECT_EQ(SendCommand({"", {}}, {"Delete", "ALL", ""}).outcome, Outcome::NoWindow);
  {
    CommandSocket socket(Record());
    ASSERT_EQ(socket.Listen(name), "");
  }
  const CommandAnswer answer = SendCommand({name, {}}, {"Delete", "ALL", ""});
  EXPECT_EQ(answer.outcome, Outcome::NoWindow);
  EXPECT_NE(answer.error, "");
  EXPECT_FALSE(QFile::exists(QString::fromStdString(name)));
}

TEST_F(CommandSocketTest, TheSocketOfAKilledProgramDoesNotBlockTheNext) {
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  ASSERT_LT(name.size(), sizeof address.sun_path);
  name.copy(address.sun_path, name.size());
  const int killed = ::socket(AF_UNIX, SOCK_STREAM, 0);
  ASSERT_EQ(::bind(killed, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
  ASSERT_EQ(::listen(killed, 1), 0);
  ::close(killed);
  QFile lock(QString::fromStdString(name + ".lock"));
  ASSERT_TRUE(lock.open(QIODevice::WriteOnly));
  lock.close();
  ASSERT_EQ(SendCommand({name, {}}, {"Delete", "ALL", ""}).outcome, Outcome::NoWindow);

  CommandSocket socket(Record());
  EXPECT_EQ(socket.Listen(name), "");
  EXPECT_EQ(Send({"Delete", "ALL", ""}).outcome, Outcome::Result);
}

TEST_F(CommandSocketTest, ALivingServerIsNotDisplaced) {
  CommandSocket first(Record());
  ASSERT_EQ(first.Listen(name), "");
  result = 1;
  CommandSocket second([](const auto&, const auto&, const auto&) { return std::optional<std::int32_t>(2); });
  EXPECT_NE(second.Listen(name), "");
  EXPECT_EQ(Send({"x", "", ""}).result, 1);

  ASSERT_TRUE(QFile::remove(QString::fromStdString(name + ".lock")));
  EXPECT_NE(second.Listen(name), "") << "also where its lock was cleared away";
  EXPECT_EQ(Send({"x", "", ""}).result, 1);

  first.Close();
  EXPECT_EQ(second.Listen(name), "");
  EXPECT_EQ(Send({"x", "", ""}).result, 2);
}

TEST_F(CommandSocketTest, WhenTheFirstGoesTheSecondTakesTheCommands) {
  CommandSocket first(Record());
  ASSERT_EQ(first.Listen(name), "");
  CommandSocket second([](const auto&, const auto&, const auto&) { return std::optional<std::int32_t>(2); });
  EXPECT_NE(second.ListenWhenFree(name, milliseconds{1}), "");
  first.Close();
  EXPECT_TRUE(QTest::qWaitFor([&] { return Send({"x", "", ""}).outcome == Outcome::Result; }));
  EXPECT_EQ(Send({"x", "", ""}).result, 2);
}

TEST_F(CommandSocketTest, WhoeverIsClosedNoLongerWaitsForTheName) {
  CommandSocket first(Record());
  ASSERT_EQ(first.Listen(name), "");
  CommandSocket second([](const auto&, const auto&, const auto&) { return std::optional<std::int32_t>(2); });
  CommandSocket third(Record());
  EXPECT_NE(second.ListenWhenFree(name, milliseconds{1}), "");
  EXPECT_NE(third.ListenWhenFree(name, milliseconds{1}), "");
  second.Close();
  first.Close();
  result = 3;
  EXPECT_TRUE(QTest::qWaitFor([&] { return Send({"x", "", ""}).outcome == Outcome::Result; }));
  EXPECT_EQ(Send({"x", "", ""}).result, 3);
}

TEST_F(CommandSocketTest, WhatIsNoSocketIsNotRemoved) {
  QFile file(QString::fromStdString(name));
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.write("data");
  file.close();
  CommandSocket socket(Record());
  EXPECT_NE(socket.Listen(name), "");
  EXPECT_EQ(QFileInfo(file).size(), 4);
  EXPECT_NE(socket.Listen(folder.path().toStdString() + "/missing/command"), "");
  EXPECT_NE(socket.Listen(""), "");
}

TEST_F(CommandSocketTest, OnlyTheUserMayUseTheSocket) {
  CommandSocket socket(Record());
  ASSERT_EQ(socket.Listen(name), "");
  struct stat file {};
  ASSERT_EQ(lstat(name.c_str(), &file), 0);
  EXPECT_EQ(file.st_mode & (S_IRWXG | S_IRWXO), 0U);
  EXPECT_TRUE(S_ISSOCK(file.st_mode));
}

TEST_F(CommandSocketTest, BrokenAndOversizedMessagesAreDroppedUnheard) {
  CommandSocket socket(Record(), hours{1});
  ASSERT_EQ(socket.Listen(name), "");
  const std::string call = CallText({"Delete", "ALL", ""});
  for (const std::string& bytes : {std::string("\xFF\xFF\xFF\xFF", 4), std::string("GET / HTTP/1.1\r\n\r\n"),
                                   call + "x", call + call, std::string(1'000'000, '\x01')}) {
    QLocalSocket client;
    Connect(client);
    Write(client, bytes);
    AwaitEnd(client);
    EXPECT_EQ(client.bytesAvailable(), 0);
  }
  EXPECT_TRUE(calls.empty());
  EXPECT_EQ(Send({"x", "", ""}).outcome, Outcome::Result);
}

TEST_F(CommandSocketTest, ACallMayComeInPieces) {
  CommandSocket socket(Record(), hours{1});
  ASSERT_EQ(socket.Listen(name), "");
  result = 5;
  QLocalSocket client;
  Connect(client);
  const std::string call = CallText({"SetDoCheck", "1", "0"});
  std::size_t sent = 0;
  QTimer timer;
  QObject::connect(&timer, &QTimer::timeout, [&] {
    if (sent < call.size()) Write(client, call.substr(sent++, 1));
  });
  timer.start(0);
  AwaitEnd(client);
  ASSERT_EQ(calls.size(), 1U);
  EXPECT_EQ(calls[0], (CommandCall{"SetDoCheck", "1", "0"}));
  EXPECT_EQ(client.readAll().toStdString(), EncodeReply({5}));
}

TEST_F(CommandSocketTest, ASlowClientHoldsUpNobody) {
  CommandSocket socket(Record(), hours{1});
  ASSERT_EQ(socket.Listen(name), "");
  QLocalSocket silent;
  QLocalSocket half;
  Connect(silent);
  Connect(half);
  const std::string call = CallText({"late", "", ""});
  Write(half, call.substr(0, 7));
  EXPECT_EQ(Send({"x", "", ""}).outcome, Outcome::Result);
  EXPECT_EQ(silent.state(), QLocalSocket::ConnectedState);
  Write(half, call.substr(7));
  AwaitEnd(half);
  EXPECT_EQ(half.readAll().toStdString(), EncodeReply({0}));
}

TEST_F(CommandSocketTest, AClientThatDoesNotCallInTimeIsDropped) {
  CommandSocket socket(Record(), milliseconds{20});
  ASSERT_EQ(socket.Listen(name), "");
  QLocalSocket silent;
  Connect(silent);
  AwaitEnd(silent);
  QLocalSocket trickling;
  Connect(trickling);
  Write(trickling, std::string("\xFF\0\0\0", 4));
  QTimer timer;
  QObject::connect(&timer, &QTimer::timeout, [&] { Write(trickling, "x"); });
  timer.start(milliseconds{2});
  AwaitEnd(trickling);
  EXPECT_TRUE(calls.empty());
}

TEST_F(CommandSocketTest, ManySilentClientsGiveWayToANewOne) {
  CommandSocket socket(Record(), hours{1});
  ASSERT_EQ(socket.Listen(name), "");
  std::vector<std::unique_ptr<QLocalSocket>> silent;
  for (int i = 0; i < 40; ++i) {
    silent.push_back(std::make_unique<QLocalSocket>());
    Connect(*silent.back());
    const bool tenth = i % 10 == 9;
    ASSERT_TRUE(!tenth || Send({"x", "", ""}).outcome == Outcome::Result) << i;
  }
  AwaitEnd(*silent.front());
  EXPECT_EQ(silent.back()->state(), QLocalSocket::ConnectedState);
}

TEST_F(CommandSocketTest, AClientThatLeavesBeforeItsResultDoesNoHarm) {
  QLocalSocket client;
  CommandSocket socket([&](const std::string& word, const std::string&, const std::string&) {
    calls.push_back({word, "", ""});
    if (word == "left") client.abort();
    return std::optional<std::int32_t>(1);
  });
  ASSERT_EQ(socket.Listen(name), "");
  Connect(client);
  Write(client, CallText({"left", "", ""}));
  AwaitEnd(client);
  EXPECT_EQ(Send({"x", "", ""}).outcome, Outcome::Result);
  EXPECT_EQ(calls.size(), 2U);
}

TEST_F(CommandSocketTest, AClientThatLeavesWhileItsCommandAsksTheUserDoesNoHarm) {
  QLocalSocket client;
  const FirstCallerWatch first;
  bool gone = false;
  CommandSocket socket([&](const std::string& word, const std::string&, const std::string&) {
    calls.push_back({word, "", ""});
    if (word != "ask") return std::optional<std::int32_t>(1);
    client.abort();
    // As a message box does, the loop takes what has come: also that the client has left.
    gone = QTest::qWaitFor([&] { return first.Left(); });
    for (int i = 0; i < 3; ++i)
      EXPECT_EQ(Send({"x", "", ""}).outcome, Outcome::Busy);
    EXPECT_TRUE(first.IsThere()) << "its signal is still being delivered";
    return std::optional<std::int32_t>(1);
  });
  ASSERT_EQ(socket.Listen(name), "");
  Connect(client);
  Write(client, CallText({"ask", "", ""}));
  ASSERT_TRUE(QTest::qWaitFor([&] { return !calls.empty(); }));
  EXPECT_TRUE(gone);
  EXPECT_EQ(Send({"x", "", ""}).outcome, Outcome::Result);
  EXPECT_TRUE(QTest::qWaitFor([&] { return !first.IsThere(); })) << "but no longer";
}

TEST_F(CommandSocketTest, ACommandMayEndTheWindow) {
  std::unique_ptr<CommandSocket> socket;
  socket = std::make_unique<CommandSocket>([&](const auto&, const auto&, const auto&) {
    socket.reset();
    return std::optional<std::int32_t>(4);
  });
  ASSERT_EQ(socket->Listen(name), "");
  const CommandAnswer answer = Send({"x", "", ""});
  EXPECT_EQ(answer.outcome, Outcome::Result);
  EXPECT_EQ(answer.result, 4);
  EXPECT_EQ(SendCommand({name, {}}, {"x", "", ""}).outcome, Outcome::NoWindow);
}

TEST_F(CommandSocketTest, AServerThatDoesNotAnswerRightIsAFailure) {
  for (const QByteArray& bytes : {QByteArray(), QByteArray("junk that is no reply"), QByteArray("\x05\0\0\0\x02", 5)}) {
    QLocalServer server;
    ASSERT_TRUE(server.listen(QString::fromStdString(name)));
    QObject::connect(&server, &QLocalServer::newConnection, [&] {
      QLocalSocket* const client = server.nextPendingConnection();
      client->write(bytes);
      client->disconnectFromServer();
    });
    const CommandAnswer answer = Send({"x", "", ""});
    EXPECT_EQ(answer.outcome, Outcome::Failed);
    EXPECT_NE(answer.error, "");
  }
  QLocalServer silent;
  ASSERT_TRUE(silent.listen(QString::fromStdString(name)));
  EXPECT_EQ(Caller(name, {"x", "", ""}, milliseconds{20}).Answer().outcome, Outcome::Failed);
}

TEST_F(CommandSocketTest, WhatCannotBeSentIsAFailure) {
  CommandSocket socket(Record());
  ASSERT_EQ(socket.Listen(name), "");
  EXPECT_EQ(SendCommand({name, {}}, {"GetFile", std::string(MostCommandBytes, 'x'), ""}).outcome, Outcome::Failed);
  EXPECT_EQ(SendCommand({name, {}}, {"GetFile", "\xFF", ""}).outcome, Outcome::Failed);
  EXPECT_EQ(Send({"GetFile", std::string(MostCommandBytes - 20, 'x'), ""}).outcome, Outcome::Result);
}

TEST(CommandPlace, LiesInAFolderOfTheUserAlone) {
  const QTemporaryDir folder;
  const std::string top = folder.path().toStdString();
  const std::string runtime = top + "/runtime";
  ASSERT_EQ(mkdir(runtime.c_str(), 0700), 0);
  EXPECT_EQ(FindCommandPlace(runtime, top).name, runtime + "/walrim-command");
  EXPECT_EQ(FindCommandPlace(runtime, top).problem, "");
  ASSERT_EQ(chmod(runtime.c_str(), 0755), 0);
  const std::string own = top + "/walrim-" + std::to_string(geteuid());
  for (const std::string& unfit : {runtime, top + "/missing", std::string()}) {
    EXPECT_EQ(FindCommandPlace(unfit, top).name, own + "/walrim-command");
    struct stat made {};
    ASSERT_EQ(lstat(own.c_str(), &made), 0);
    EXPECT_EQ(made.st_mode & 0777, 0700U);
  }
  ASSERT_EQ(chmod(own.c_str(), 0770), 0);
  const std::string problem = qt_messages::FolderNotPrivate(own);
  EXPECT_EQ(FindCommandPlace("", top).name, "");
  EXPECT_EQ(FindCommandPlace("", top).problem, problem);
  ASSERT_EQ(rmdir(own.c_str()), 0);
  ASSERT_EQ(symlink(runtime.c_str(), own.c_str()), 0);
  ASSERT_EQ(chmod(runtime.c_str(), 0700), 0);
  EXPECT_EQ(FindCommandPlace("", top).name, "") << "a link may lead anywhere";
}

TEST(CommandPlace, ThatIsAnotherUsersIsNamed) {
  if (geteuid() != 0) GTEST_SKIP() << "only the administrator can make a folder of another user";
  const QTemporaryDir folder;
  const std::string top = folder.path().toStdString();
  const std::string own = top + "/walrim-0";
  ASSERT_EQ(mkdir(own.c_str(), 0700), 0);
  ASSERT_EQ(chown(own.c_str(), 65534, 65534), 0);
  const CommandPlace place = FindCommandPlace("", top);
  EXPECT_EQ(place.name, "");
  EXPECT_NE(place.problem.find(own), std::string::npos);
  const CommandAnswer answer = SendCommand(place, {"Delete", "ALL", ""});
  EXPECT_EQ(answer.outcome, CommandAnswer::Outcome::NoWindow);
  EXPECT_EQ(answer.error, place.problem);
}

}  // namespace
}  // namespace walrim
