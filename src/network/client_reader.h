#pragma once
// The reader of what servers send: their greeting, and their detections.

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "network/link_stream.h"
#include "network/receivers.h"
#include "network/station_list.h"
#include "network/station_sockets.h"
#include "network/wire_text.h"

namespace veltrix {

/// Takes one read of a client socket apart, line by line, and passes each detection on. Nothing is carried
/// over from one read to the next; what does not fit is dropped without a word, the rest of its read with it.
/// Owned by the client side.
class ClientReader {
  public:
    /// What it works with. REQUIRES that all of it outlives this object.
    struct Parts {
        StationSockets& sockets;
        StationList& list;
        const Selection& selection;
        const NetworkReceivers& receivers;
        LinkStream& link;
        const AmplitudeLimits& limits;
        Clock& clock;
        ErrorReporter& errors;
        std::function<HomeStation()> home;
        CheckBox& OptionRemoteCWCCW;
        CheckBox& OptionRemoteShow;
        CheckBox& OptionRealTime;
        TextBox& txtDateRecv;
        TextBox& txtAlarmLatitude;
        TextBox& txtAlarmLongitude;
    };

    explicit ClientReader(Parts parts) : parts_(std::move(parts)) {}

    /// One read of the socket `index`, whose station has row `row`. A call while one runs does nothing: its
    /// data is lost.
    void DataArrival(int index, std::int16_t row, std::string_view buffer);

  private:
    /// A detection line taken apart.
    struct Line {
        DateTime remoteTime = 0;
        double dDir = 0;
        double dAmp = 0;
        double lSampleCount = 0;
        std::string tail;  // from the stopwatch reading on
    };

    void ReadLines(int index, std::int16_t row, std::string_view rest);
    bool ReadDetection(int index, std::int16_t row, std::string_view text);
    static std::optional<Line> TakeApart(std::string_view text);
    void HandOn(int index, std::int16_t row, const Line& line);
    void Locate(const RemoteDetection& detection);
    bool ReadTail(const Socket& socket, std::int16_t row, const std::string& tail);
    void ReadGreeting(Socket& socket, std::int16_t row, std::string_view text);

    Parts parts_;
    bool bBusy_ = false;
};

}  // namespace veltrix
