// The local socket by which other programs of the same user call the commands of a running window.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "platform/Descriptor.h"
#include "text/CommandMessage.h"

class QLocalServer;
class QLocalSocket;
class QTimer;

namespace walrim {

/// Where commands are taken.
struct CommandPlace {
  std::string name;     ///< the socket's path; empty where there can be none
  std::string problem;  ///< then why, in Japanese
};

/// The socket of the user who runs the program: in the runtime folder, or where that is not the user's alone, in a
/// folder of the temporary one.
[[nodiscard]] CommandPlace FindCommandPlace();
[[nodiscard]] CommandPlace FindCommandPlace(const std::string& runtime_folder, const std::string& temporary_folder);

/// The server. Needs a QCoreApplication; all happens in its event loop.
class CommandSocket {
 public:
  /// Runs a command and returns its result; nothing where the window is busy. Must not throw. It may let the event
  /// loop run, then other calls are answered as busy, and it may destroy the CommandSocket.
  using Handler = std::function<std::optional<std::int32_t>(const std::string& word, const std::string& arg1,
                                                            const std::string& arg2)>;

  /// A client that has not sent its call after patience is dropped.
  explicit CommandSocket(Handler handler, std::chrono::milliseconds patience = std::chrono::seconds{2});
  ~CommandSocket();
  CommandSocket(const CommandSocket&) = delete;
  CommandSocket& operator=(const CommandSocket&) = delete;

  /// Takes calls under a name (a path). What a killed program left there is replaced, a living server is not. Returns
  /// why it cannot; empty on success.
  [[nodiscard]] std::string Listen(const std::string& name);
  /// The same; where it cannot, it is tried again at this interval until it can or Close is called: the window that had
  /// the name may have been closed.
  [[nodiscard]] std::string ListenWhenFree(const std::string& name,
                                           std::chrono::milliseconds interval = std::chrono::seconds{1});
  /// Takes no more calls. A command that is running still gets its result back.
  void Close();

 private:
  [[nodiscard]] bool Lock(const std::string& name);
  void CloseServer();
  void Accept();
  void Read(QLocalSocket& client);
  void Run(QLocalSocket& client, const CommandCall& call);

  Handler handler_;
  std::chrono::milliseconds patience_;
  std::unique_ptr<QLocalServer> server_;
  std::unique_ptr<QTimer> retry_;
  Descriptor lock_;  ///< the file that a living server holds locked
  /// A handler is running; it may outlive this.
  std::shared_ptr<bool> running_ = std::make_shared<bool>(false);
};

/// What became of a call.
struct CommandAnswer {
  enum class Outcome {
    Result,    ///< the command was run
    Busy,      ///< the window is busy and did nothing
    NoWindow,  ///< no window takes calls
    Failed,    ///< the call could not be sent, or its result did not come back
  };
  Outcome outcome = Outcome::Failed;
  std::int32_t result = 0;
  std::string error;  ///< in Japanese; empty for a result
};

/// Calls a command of the window that listens at a place and waits for its result: for ever, as a command takes its
/// time, or at most reply_wait.
[[nodiscard]] CommandAnswer SendCommand(const CommandPlace& place, const CommandCall& call,
                                        std::optional<std::chrono::milliseconds> reply_wait = std::nullopt);

}  // namespace walrim
