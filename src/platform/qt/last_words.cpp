#include "platform/qt/last_words.h"

#include <QSocketNotifier>
#include <QTimer>
#include <utility>

namespace veltrix {

class LastWords::Connection final : public QObject {
  public:
    Connection(InetSocket socket, std::string unsent, std::chrono::milliseconds patience, QObject* owner)
        : QObject(owner),
          socket_(std::move(socket)),
          unsent_(std::move(unsent)),
          writable_(socket_.Descriptor(), QSocketNotifier::Write) {
        connect(&writable_, &QSocketNotifier::activated, this, [this] { SendOn(); });
        QTimer::singleShot(patience, this, [this] { End(); });
    }
    ~Connection() override { writable_.setEnabled(false); }

  private:
    void SendOn() {
        const InetSocket::Written written = socket_.Send(unsent_);
        unsent_.erase(0, written.count);
        if (unsent_.empty() || written.error != 0) End();
    }
    void End() {
        writable_.setEnabled(false);
        if (unsent_.empty()) socket_.EndOrderly();
        socket_ = InetSocket();
        deleteLater();
    }

    InetSocket socket_;
    std::string unsent_;
    QSocketNotifier writable_;
};

void LastWords::Send(InetSocket socket, std::string unsent) {
    if (connections_.children().size() >= Most) delete connections_.children().front();
    new Connection(std::move(socket), std::move(unsent), patience_, &connections_);
}

}  // namespace veltrix
