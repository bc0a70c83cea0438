#include "network/station_sockets.h"

#include "common/arithmetic.h"
#include "common/neutral_text.h"
#include "platform/controls.h"

namespace veltrix {

std::int16_t RowOfTag(const std::string& tag) {
    return RoundToInteger(ValNeutral(tag));
}

std::string SocketLabel(std::string_view array, int index) {
    return "-->" + ElementName(array, index);
}

std::string_view SocketStateText(SocketState state) {
    static constexpr std::array<std::string_view, 10> Texts = {"Closed",
                                                               "Open",
                                                               "Listening",
                                                               "Connection pending",
                                                               "Resolving host",
                                                               "Host resolved",
                                                               "Connecting",
                                                               "Connected",
                                                               "Peer is closing the connection",
                                                               "Error"};
    return Texts.at(static_cast<std::size_t>(state));
}

}  // namespace veltrix
