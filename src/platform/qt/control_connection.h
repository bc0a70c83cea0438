#pragma once
// One client of the control socket.

#include <QObject>
#include <QSocketNotifier>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace veltrix {

/// Reads requests, one a line, and sends their answers. Owned by the server; it ends itself when the client
/// has gone and everything that it had asked for is done, also where nobody waits for the answers any more.
class ControlConnection final : public QObject {
  public:
    /// Gives the lines of the answer to one request, the closing one included.
    using Answerer = std::function<std::vector<std::string>(std::string_view request)>;

    /// Takes over a connected socket.
    ControlConnection(int socket, QObject* server, std::shared_ptr<Answerer> answerer);
    ~ControlConnection() override;
    ControlConnection(const ControlConnection&) = delete;
    ControlConnection& operator=(const ControlConnection&) = delete;

  private:
    void Receive();
    void Continue();
    void ContinueLater();
    void Refuse();
    void Send(std::string_view text);
    void SendUnsent();
    void End();

    int socket_;
    std::shared_ptr<Answerer> answerer_;
    QSocketNotifier readable_;
    QSocketNotifier writable_;
    std::string received_;  // requests that wait
    std::string unsent_;    // answers that the system does not take yet
    bool answering_ = false;
    bool isLastReceived_ = false;  // the client sends no more
    bool isDeaf_ = false;          // the client reads no more
    bool isEnding_ = false;
};

}  // namespace veltrix
