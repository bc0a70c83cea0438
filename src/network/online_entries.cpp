#include "network/online_entries.h"

#include <utility>

#include "common/neutral_text.h"
#include "network/capability.h"

namespace veltrix {

OnlineEntries::OnlineEntries(ClassOnline& online, StationSockets& sockets, StationList& list,
                             std::function<HomeStation()> home)
    : online_(online), sockets_(sockets), list_(list), home_(std::move(home)) {}

void OnlineEntries::SendOnlineEntry() {
    const std::optional<ClassOnline::Entry> entry = online_.From();
    if (!entry) return;
    const HomeStation home = home_();
    const std::string marked =
        MarkedEntryText({entry->dTime, entry->IP, ValNeutral(entry->dLatitude), ValNeutral(entry->dLongitude),
                         entry->sStationName, home.sAnnouncement});
    // Our own place under the name of another: such a server takes the line as a sign of life only.
    const std::string plain =
        PlainEntryText({latestDetection, sockets_.sckServer[ListenIndex]->LocalIP(), home.HomeLatitude,
                        home.HomeLongitude, entry->sStationName, home.sAnnouncement});
    for (auto& socket : sockets_.sckClient) {
        if (socket->State() != SocketState::Connected) continue;
        const ClassMapper& row = list_.Rows()[RowOfTag(socket->Tag)];
        socket->SendData(CapabilityTest(row.tCapability, UnderstandsMarkedEntries) ? marked : plain);
    }
}

}  // namespace veltrix
