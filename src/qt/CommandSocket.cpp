#include "qt/CommandSocket.h"

#include <QDir>
#include <QLocalServer>
#include <QLocalSocket>
#include <QPointer>
#include <QTimer>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

#include "qt/Messages.h"

namespace walrim {

namespace {

using Outcome = CommandAnswer::Outcome;

constexpr qsizetype MostClients = 16;
/// One byte more than the largest message, so that a larger one shows.
constexpr qint64 MostMessageBytes = static_cast<qint64>(MostCommandBytes) + 4 + 1;
constexpr int ConnectWaitMs = 2000;

QString Text(const std::string& text) {
  return QString::fromStdString(text);
}

/// True for a folder that this user alone may use.
bool IsPrivateFolder(const std::string& path) {
  struct stat folder {};
  return !path.empty() && lstat(path.c_str(), &folder) == 0 && S_ISDIR(folder.st_mode) && folder.st_uid == geteuid() &&
         (folder.st_mode & (S_IRWXG | S_IRWXO)) == 0;
}

bool ServerAnswers(const std::string& name) {
  QLocalSocket probe;
  probe.connectToServer(Text(name));
  return probe.waitForConnected(ConnectWaitMs);
}

/// Removes a socket's file that no server answers at; false where something else stands there.
bool RemoveStaleSocket(const std::string& name) {
  struct stat file {};
  if (lstat(name.c_str(), &file) != 0) return true;
  return S_ISSOCK(file.st_mode) && unlink(name.c_str()) == 0;
}

void Drop(QLocalSocket& client) {
  client.abort();
  client.deleteLater();
}

/// A client's command runs inside its signal, and may let the event loop run: until it has ended, the client stays.
void DeleteUnlessRunning(QLocalSocket& client) {
  if (!client.property("running").toBool()) client.deleteLater();
}

QList<QLocalSocket*> ClientsOf(const QLocalServer& server) {
  return server.findChildren<QLocalSocket*>(QString(), Qt::FindDirectChildrenOnly);
}

/// Gives the oldest waiting client's place to a new one.
void KeepClientsFew(const QLocalServer& server) {
  const auto clients = ClientsOf(server);
  qsizetype waiting = 0;
  for (qsizetype i = clients.size(); i-- > 0;) {
    const bool has_called = clients[i]->property("called").toBool();
    if (!has_called && ++waiting > MostClients) Drop(*clients[i]);
  }
}

void Answer(QLocalSocket& client, const CommandReply& reply) {
  const std::string message = EncodeReply(reply);
  client.write(message.data(), static_cast<qint64>(message.size()));
  // The server may be gone before the event loop turns again.
  client.flush();
  client.disconnectFromServer();
}

CommandAnswer Unanswered(Outcome outcome, std::string_view error) {
  return {outcome, 0, std::string(error)};
}

CommandAnswer Connect(QLocalSocket& socket, const std::string& name) {
  socket.connectToServer(Text(name));
  if (socket.waitForConnected(ConnectWaitMs)) return {Outcome::Result, 0, {}};
  const bool nobody =
      socket.error() == QLocalSocket::ServerNotFoundError || socket.error() == QLocalSocket::ConnectionRefusedError;
  if (nobody) return Unanswered(Outcome::NoWindow, qt_messages::NoWindow);
  return Unanswered(Outcome::Failed, qt_messages::WindowNotReached(socket.errorString().toStdString()));
}

CommandAnswer AwaitReply(QLocalSocket& socket, int wait_ms) {
  CommandReply reply;
  MessageState state = MessageState::Incomplete;
  bool more = true;
  while (state == MessageState::Incomplete && more) {
    more = socket.waitForReadyRead(wait_ms);
    if (!more && socket.state() == QLocalSocket::UnconnectedState) break;
    const QByteArray bytes = socket.peek(MostMessageBytes);
    state = DecodeReply({bytes.constData(), static_cast<std::size_t>(bytes.size())}, reply);
  }
  if (state != MessageState::Complete) return Unanswered(Outcome::Failed, qt_messages::NoResult);
  if (!reply.result) return Unanswered(Outcome::Busy, qt_messages::WindowBusy);
  return {Outcome::Result, *reply.result, {}};
}

}  // namespace

CommandPlace FindCommandPlace() {
  return FindCommandPlace(qEnvironmentVariable("XDG_RUNTIME_DIR").toStdString(), QDir::tempPath().toStdString());
}

CommandPlace FindCommandPlace(const std::string& runtime_folder, const std::string& temporary_folder) {
  constexpr const char* File = "/walrim-command";
  if (IsPrivateFolder(runtime_folder)) return {runtime_folder + File, {}};
  const std::string folder = temporary_folder + "/walrim-" + std::to_string(geteuid());
  mkdir(folder.c_str(), S_IRWXU);
  if (IsPrivateFolder(folder)) return {folder + File, {}};
  return {{}, qt_messages::FolderNotPrivate(folder)};
}

CommandSocket::CommandSocket(Handler handler, std::chrono::milliseconds patience)
    : handler_(std::move(handler)), patience_(patience) {}

CommandSocket::~CommandSocket() {
  Close();
}

/// The system lets go of a lock however a program ends, so that it, unlike a socket's file, never outlives its server.
bool CommandSocket::Lock(const std::string& name) {
  lock_.Reset(open((name + ".lock").c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, S_IRUSR | S_IWUSR));
  return lock_.Valid();
}

std::string CommandSocket::Listen(const std::string& name) {
  CloseServer();
  if (name.empty() || !Lock(name)) return qt_messages::NotListening(name);
  if (flock(lock_.Get(), LOCK_EX | LOCK_NB) != 0 || ServerAnswers(name)) {
    CloseServer();
    return std::string(qt_messages::OtherWindowListens);
  }
  server_ = std::make_unique<QLocalServer>();
  server_->setSocketOptions(QLocalServer::UserAccessOption);
  QObject::connect(server_.get(), &QLocalServer::newConnection, [this] { Accept(); });
  if (RemoveStaleSocket(name) && server_->listen(Text(name))) return {};
  CloseServer();
  return qt_messages::NotListening(name);
}

std::string CommandSocket::ListenWhenFree(const std::string& name, std::chrono::milliseconds interval) {
  const std::string problem = Listen(name);
  if (problem.empty()) return problem;
  retry_ = std::make_unique<QTimer>();
  QObject::connect(retry_.get(), &QTimer::timeout, [this, name] {
    if (Listen(name).empty()) retry_->stop();
  });
  retry_->start(interval);
  return problem;
}

void CommandSocket::Close() {
  if (retry_) retry_->stop();
  CloseServer();
}

void CommandSocket::CloseServer() {
  if (server_) {
    server_->close();
    server_->disconnect();
    for (QLocalSocket* const client : ClientsOf(*server_))
      QObject::disconnect(client, &QLocalSocket::readyRead, nullptr, nullptr);
    // A running handler was called by a signal of one of the server's clients.
    if (*running_) server_.release()->deleteLater();
    server_.reset();
  }
  lock_.Reset();
}

void CommandSocket::Accept() {
  while (QLocalSocket* const client = server_->nextPendingConnection()) {
    client->setReadBufferSize(MostMessageBytes);
    QObject::connect(client, &QLocalSocket::disconnected, client, [client] { DeleteUnlessRunning(*client); });
    QObject::connect(client, &QLocalSocket::readyRead, client, [this, client] { Read(*client); });
    auto* const patience = new QTimer(client);
    patience->setSingleShot(true);
    QObject::connect(patience, &QTimer::timeout, client, [client] {
      if (!client->property("called").toBool()) Drop(*client);
    });
    patience->start(patience_);
    KeepClientsFew(*server_);
  }
}

void CommandSocket::Read(QLocalSocket& client) {
  if (client.property("called").toBool()) return;
  const QByteArray bytes = client.peek(MostMessageBytes);
  CommandCall call;
  const MessageState state = DecodeCall({bytes.constData(), static_cast<std::size_t>(bytes.size())}, call);
  if (state == MessageState::Broken) return Drop(client);
  if (state == MessageState::Incomplete) return;
  client.setProperty("called", true);
  Run(client, call);
}

void CommandSocket::Run(QLocalSocket& client, const CommandCall& call) {
  if (*running_) return Answer(client, {});
  const QPointer<QLocalSocket> caller(&client);
  // The handler may end in the destruction of this.
  const Handler handler = handler_;
  const std::shared_ptr<bool> running = running_;
  *running = true;
  client.setProperty("running", true);
  const CommandReply reply{handler(call.word, call.arg1, call.arg2)};
  *running = false;
  if (!caller) return;
  caller->setProperty("running", false);
  if (caller->state() == QLocalSocket::UnconnectedState) return caller->deleteLater();
  Answer(*caller, reply);
}

CommandAnswer SendCommand(const CommandPlace& place, const CommandCall& call,
                          std::optional<std::chrono::milliseconds> reply_wait) {
  if (!place.problem.empty()) return Unanswered(Outcome::NoWindow, place.problem);
  const auto message = EncodeCall(call);
  if (!message) return Unanswered(Outcome::Failed, qt_messages::BadCommandText);
  QLocalSocket socket;
  const CommandAnswer connected = Connect(socket, place.name);
  if (connected.outcome != Outcome::Result) return connected;
  socket.write(message->data(), static_cast<qint64>(message->size()));
  while (socket.bytesToWrite() > 0 && socket.waitForBytesWritten(ConnectWaitMs)) {
  }
  return AwaitReply(socket, reply_wait ? static_cast<int>(reply_wait->count()) : -1);
}

}  // namespace walrim
