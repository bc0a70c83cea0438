#include "platform/qt/control_connection.h"

#include <fcntl.h>
#include <sys/socket.h>
#include <unistd.h>

#include <QPointer>
#include <array>
#include <cerrno>
#include <utility>

#include "common/failure.h"
#include "common/one_line.h"

namespace veltrix {

namespace {

constexpr std::size_t LongestRequest = 65536;
constexpr std::size_t MostUnsent = 1 << 20;

std::string Line(std::string text) {
    return OnOneLine(std::move(text)) + "\n";
}

std::string AnswerTo(std::string_view request, const ControlConnection::Answerer& answerer) {
    std::string answer;
    try {
        for (std::string& line : answerer(request)) answer += Line(std::move(line));
    } catch (const Failure& failure) {
        answer = Line("error " + failure.Description());
    }
    return answer;
}

bool MustWait(int error) {
    return error == EAGAIN || error == EINTR;
}

}  // namespace

ControlConnection::ControlConnection(int socket, QObject* server, std::shared_ptr<Answerer> answerer)
    : QObject(server),
      socket_(socket),
      answerer_(std::move(answerer)),
      readable_(socket, QSocketNotifier::Read),
      writable_(socket, QSocketNotifier::Write) {
    ::fcntl(socket_, F_SETFL, ::fcntl(socket_, F_GETFL) | O_NONBLOCK);
    writable_.setEnabled(false);
    connect(&readable_, &QSocketNotifier::activated, this, [this] { Receive(); });
    connect(&writable_, &QSocketNotifier::activated, this, [this] { SendUnsent(); });
}

ControlConnection::~ControlConnection() {
    readable_.setEnabled(false);
    writable_.setEnabled(false);
    ::close(socket_);
}

void ControlConnection::Receive() {
    std::array<char, LongestRequest + 2> buffer;  // a request of the greatest length with its line end
    const ssize_t count = ::recv(socket_, buffer.data(), buffer.size() - received_.size(), 0);
    if (count < 0 && MustWait(errno)) return;
    if (count > 0) received_.append(buffer.data(), static_cast<std::size_t>(count));
    isLastReceived_ = count <= 0;
    if (isLastReceived_ || received_.size() == buffer.size()) readable_.setEnabled(false);
    Continue();
}

/// Takes the next request that is complete, if none is being answered.
void ControlConnection::Continue() {
    if (answering_ || isEnding_) return;
    const std::size_t end = received_.find('\n');
    const std::size_t length = std::min(end, received_.size());
    if (length > LongestRequest) return Refuse();
    if (end == std::string::npos) {
        if (isLastReceived_ && unsent_.empty()) End();
        return;
    }
    std::string request = received_.substr(0, end);
    received_.erase(0, end + 1);
    if (request.ends_with('\r')) request.pop_back();

    answering_ = true;
    // Held here, for the answer may end the server and this connection with it.
    const QPointer<ControlConnection> self(this);
    const std::shared_ptr<Answerer> answerer = answerer_;
    const std::string answer = AnswerTo(request, *answerer);
    if (!self) return;
    answering_ = false;
    Send(answer);
    if (unsent_.size() > MostUnsent) return End();
    readable_.setEnabled(!isLastReceived_);
    ContinueLater();
}

/// The other clients come first.
void ControlConnection::ContinueLater() {
    QMetaObject::invokeMethod(
        this, [this] { Continue(); }, Qt::QueuedConnection);
}

void ControlConnection::Refuse() {
    Send("error a request has at most " + std::to_string(LongestRequest) + " bytes\n");
    End();
}

void ControlConnection::Send(std::string_view text) {
    if (isDeaf_) return;
    unsent_ += text;
    SendUnsent();
}

void ControlConnection::SendUnsent() {
    while (!unsent_.empty()) {
        const ssize_t sent = ::send(socket_, unsent_.data(), unsent_.size(), MSG_NOSIGNAL);
        if (sent < 0 && MustWait(errno)) break;
        isDeaf_ = sent < 0;
        unsent_.erase(0, isDeaf_ ? unsent_.size() : static_cast<std::size_t>(sent));
    }
    writable_.setEnabled(!unsent_.empty());
    if (unsent_.empty()) ContinueLater();
}

void ControlConnection::End() {
    isEnding_ = true;
    readable_.setEnabled(false);
    writable_.setEnabled(false);
    // What was sent shall be read before the end is seen, though more was on its way here.
    ::shutdown(socket_, SHUT_WR);
    deleteLater();
}

}  // namespace veltrix
