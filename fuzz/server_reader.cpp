// What a visitor says to the server side: hellos and online entries, in reads that a form feed ends.

#include "network_station.h"

using namespace veltrix;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view input = InputText(data, size);
    NetworkStation station;
    station.VisitFromAlpha();
    station.Say(ReadsOf(input));
    MustHold(station.peer->State() == SocketState::Connected);
    station.network.server.ListServerSockets();
    station.computer.loop.Run(100);
    station.Check(input);
    return 0;
}
