#include "platform/qt/qt_sockets.h"

#include <utility>

#include "platform/qt/qt_socket.h"

namespace veltrix {

namespace {

constexpr std::chrono::seconds AgeOfRequests{60};
constexpr std::chrono::seconds PatienceAtClose{5};

}  // namespace

QtSockets::QtSockets(QtEventLoop& loop, std::string address)
    : loop_(loop), address_(std::move(address)), requests_(AgeOfRequests), closing_(PatienceAtClose) {}

std::unique_ptr<Socket> QtSockets::MakeSocket() {
    return std::make_unique<QtSocket>(*this);
}

}  // namespace veltrix
