#include "network/presence.h"

#include "display/colours.h"

namespace veltrix {

namespace {

constexpr double MinutesOnShow = 30;
constexpr ColourValue HeardOf = Rgb(192, 192, 192);

void Colour(ClassMapper& row, ColourValue colour) {
    if (colour != Presence::BaseColour() && row.Picture7) row.Picture7->BringToFront();
    row.lColor = colour;
}

}  // namespace

ColourValue Presence::BaseColour() {
    return GreyBase / 2;
}

void Presence::MarkOnline(std::string_view address, SocketState state) {
    if (state != SocketState::Connected) return;
    for (std::int16_t i = 1; i <= C_NUMBEROFMAPPERS; ++i) {
        ClassMapper& row = list_.Rows()[i];
        if (row.sIP != address && row.sRemoteIP != address) continue;
        row.bOnline = true;
        list_.Heard(i);
        return;
    }
}

void Presence::UpdateStationColors() {
    Mappers& rows = list_.Rows();
    ColourValue colour = BaseColour();
    for (int i = 1; i <= C_NUMBEROFMAPPERS; ++i) {
        ClassMapper& row = rows[i];
        const bool isHeardOf = row.MapperActive() && row.HearedFromSince(MinutesOnShow, clock_.Now());
        colour = isHeardOf ? HeardOf : BaseColour();
        Colour(row, colour);
    }
    // A closed socket gives its row the colour that was last in hand; this is accepted.
    for (const auto& socket : sockets_.sckClient) {
        if (socket->State() != SocketState::Closed) colour = Yellow;
        if (socket->State() == SocketState::Connected) colour = Red;
        Colour(rows[RowOfTag(socket->Tag)], colour);
    }
    for (int i = 1; i <= C_NUMBEROFMAPPERS; ++i)
        if (Marker* const mark = rows[i].Picture7) mark->SetBackColor(rows[i].lColor);
}

}  // namespace veltrix
