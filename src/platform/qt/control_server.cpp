#include "platform/qt/control_server.h"

#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <QLocalServer>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <utility>

#include "platform/qt/control_connection.h"

namespace veltrix {

namespace {

/// True when a program accepts connections on the socket.
bool IsServed(const std::string& path) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (path.size() >= sizeof address.sun_path) return false;
    std::memcpy(address.sun_path, path.c_str(), path.size() + 1);
    const int probe = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    if (probe < 0) return false;
    const int result = ::connect(probe, reinterpret_cast<const sockaddr*>(&address), sizeof address);
    // A queue that is full is a server's, too.
    const bool isServed = result == 0 || errno == EAGAIN || errno == EACCES;
    ::close(probe);
    return isServed;
}

/// Why no socket can be made there.
std::string WhyNot(const std::string& path) {
    const std::string folder = std::filesystem::path(path).parent_path().string();
    if (path.size() >= sizeof(sockaddr_un::sun_path)) return "the name is too long";
    if (::access(folder.c_str(), W_OK | X_OK) != 0) return folder + ": " + std::strerror(errno);
    return "the system refuses it";
}

}  // namespace

/// Hands out the connections as they come from the system: the library's own sockets end when a client has
/// only said that it will send no more.
class ControlServer::Listener final : public QLocalServer {
  public:
    explicit Listener(Answerer answerer) : answerer_(std::make_shared<Answerer>(std::move(answerer))) {}

  protected:
    void incomingConnection(quintptr socket) override {
        new ControlConnection(static_cast<int>(socket), this, answerer_);
    }

  private:
    std::shared_ptr<Answerer> answerer_;
};

ControlServer::ControlServer(Answerer answerer)
    : listener_(std::make_unique<Listener>(std::move(answerer))) {}

ControlServer::~ControlServer() = default;

std::string ControlServer::Listen(const std::string& path) {
    const std::string absolute = std::filesystem::absolute(path).string();
    const std::string refusal = "cannot open the control socket " + path + ": ";
    struct stat status;
    if (::lstat(absolute.c_str(), &status) == 0) {
        if (!S_ISSOCK(status.st_mode)) return refusal + "the name is taken";
        if (IsServed(absolute)) return refusal + "another program serves there";
        if (::unlink(absolute.c_str()) != 0) return refusal + std::strerror(errno);
    }
    // With this option the socket gets its name only when nobody else can reach it any more.
    listener_->setSocketOptions(QLocalServer::UserAccessOption);
    if (!listener_->listen(QString::fromStdString(absolute))) return refusal + WhyNot(absolute);
    if (::chmod(absolute.c_str(), 0600) != 0) return refusal + std::strerror(errno);
    return {};
}

}  // namespace veltrix
