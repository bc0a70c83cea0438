#include "storm/truth.h"

#include <charconv>

namespace veltrix {

namespace {

void Append(std::string& line, double value, int decimals) {
    char text[64];
    const auto end = std::to_chars(text, text + sizeof text, value, std::chars_format::fixed, decimals).ptr;
    line += ',';
    line.append(text, end);
}

}  // namespace

TruthTable::TruthTable(const Scenario& scenario) : scenario_(scenario), strikes_(scenario) {}

std::string TruthTable::Header() const {
    std::string line = "time,latitude,longitude,cell,strength,polarity";
    for (const StormStation& station : scenario_.stations)
        for (const char* const title :
             {"arrival", "distance", "bearing", "antenna_bearing", "peak", "filtered_peak"})
            line += "," + station.name + ":" + title;
    return line + "\n";
}

std::string TruthTable::Row(const Strike& strike) const {
    std::string line = UtcText(strike.time);
    Append(line, strike.latitude, 6);
    Append(line, strike.longitude, 6);
    line += ',';
    line += scenario_.cells[strike.cell].name;
    Append(line, strike.strength, 1);
    line += strike.polarity > 0 ? ",1" : ",-1";
    for (const StormStation& station : scenario_.stations) {
        const Arrival arrival = propagation_.At(station, strike);
        line += ',';
        line += UtcText(arrival.time);
        Append(line, arrival.distance, 3);
        Append(line, arrival.trueBearing, 4);
        Append(line, arrival.antennaBearing, 4);
        Append(line, arrival.peak, 1);
        Append(line, arrival.filteredPeak, 1);
    }
    return line + "\n";
}

std::string TruthTable::Rows(UtcTime from, UtcTime to) const {
    std::string rows;
    for (const Strike& strike : strikes_.Between(from, to)) rows += Row(strike);
    return rows;
}

}  // namespace veltrix
