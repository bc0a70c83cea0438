// What a station answers to a ping, in reads that a form feed ends.

#include "network_station.h"

using namespace veltrix;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view input = InputText(data, size);
    NetworkStation station;
    station.ServeAtAlpha();
    station.network.ping.StationListPingUpdate("10.0.0.9");
    station.computer.loop.Run(10);
    MustHold(station.peer->State() == SocketState::Connected);
    station.Say(ReadsOf(input));
    const bool isAnswered = input.find_first_not_of('\f') != std::string_view::npos;
    MustHold((station.network.sockets.sckPing->State() == SocketState::Closed) == isAnswered);
    station.network.entries.SendOnlineEntry();
    station.Check(input);
    return 0;
}
