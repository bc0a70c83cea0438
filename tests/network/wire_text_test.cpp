// The lines that stations send, to the byte, and what is taken for a station in those that arrive.
#include "network/wire_text.h"

#include <gtest/gtest.h>

#include <cmath>
#include <tuple>

#include "network/capability.h"
#include "network/station_record.h"

namespace veltrix {
namespace {

const DateTime Noon = DateTimeOf({2008, 6, 21, 14, 3, 9, 6});

TEST(WireText, LinesAreWhatTheyAreToTheByte) {
    const HomeStation alpha{"Alpha", "Hello, all", 5.12345, 52.6789, 5.12345, 52.6789, "1.2.3", 17};
    EXPECT_EQ(GreetingText(alpha, Noon),
              "#O2008/06/21 14:03:09 Connected to Veltrix, Alpha, 005.12345, 052.67890, 1.2.3, 17\n\r");
    EXPECT_EQ(MarkedEntryText({Noon, "0.0.0.0", 52.6789, 5.12345, "Alpha", alpha.sAnnouncement}),
              "2008/06/21 14:03:09,0.0.0.0,52.67890,005.12345,Alpha,Hello  all,#O\r");
    EXPECT_EQ(PlainEntryText({Noon, "10.0.0.9", 52.6789, 5.12345, "Alpha", ""}),
              "2008/06/21 14:03:09,10.0.0.9,52.67890,005.12345,Alpha,\r");
    EXPECT_EQ(DetectionText({Noon, 7.125, -45.25, 678901, 42}, alpha),
              "2008/06/21 14:03:09,007.13,0000678901,-045.3,000000042,52.67890,05.12345,Alpha\r");
    EXPECT_EQ(FormatLinkLine(Noon + 0.25 / SecondsPerDay, 1234.56, 359.96, -1),
              "2008-06-21 14:03:09.750000, 001234.6, 360.0, -1\n\r");
    // From the half second on the clock text shows the next second.
    EXPECT_EQ(FormatLinkLine(Noon + 0.6 / SecondsPerDay, 0, 0, -1),
              "2008-06-21 14:03:10.100000, 000000.0, 000.0, -1\n\r");
}

TEST(WireText, FarPlacesAndNamesWithCommas) {
    HomeStation far{"A,B,C", "", -123.456789, -8.5, -123.456789, -8.5, "1.2.3", -17.6};
    EXPECT_EQ(GreetingText(far, Noon),
              "#O2008/06/21 14:03:09 Connected to Veltrix, A B,C, -123.45679, -008.50000, 1.2.3, -18\n\r");
    EXPECT_EQ(MarkedEntryText({Noon, "10.0.0.9", -8.5, -123.456789, "A,B,C", "x,y,z"}),
              "2008/06/21 14:03:09,10.0.0.9,-08.50000,-123.45679,A B,C,x y,z,#O\r");
    // The name stands as it is, and a longitude from 100 degrees on outgrows its mask.
    EXPECT_EQ(DetectionText({Noon, 359.999, -100, 2099999999, 0}, far),
              "2008/06/21 14:03:09,360.00,2099999999,-100.0,000000000,-08.50000,-123.45679,A,B,C\r");
    far.LongitudeField = 179.99999;
    far.sStationName.clear();
    EXPECT_EQ(DetectionText({Noon, 0, 0.04, 0, -3}, far),
              "2008/06/21 14:03:09,000.00,0000000000,000.0,-000000003,-08.50000,179.99999,\r");
}

TEST(WireText, MarksAreReadFromTheStartOfALine) {
    const std::tuple<const char*, std::int32_t, std::int32_t> table[] = {
        {"#", 0, 0},     {"#O", 0, 1},  {"#o", 0, 0},     {"#Q#O2008", 0, 1}, {"2008#O", 0, 0},
        {"#O#Q#", 2, 3}, {"##O", 0, 0}, {"#O2008", 4, 5}, {" #O", 8, 8},      {"#Q2#O", 0, 0}};
    for (const auto& [line, before, after] : table) EXPECT_EQ(ParseMarks(line, before), after) << line;
    EXPECT_TRUE(CapabilityTest(CapabilitySet(2, 4), 5));
    EXPECT_FALSE(CapabilityTest(6, 1));
}

TEST(WireText, AStationNeedsAPlaceAndAName) {
    const auto expect = [](const std::string& name, const std::string& longitude, const std::string& latitude,
                           bool isValid, double dLongitude, double dLatitude) {
        const std::string greeting[] = {"#O", name, longitude, latitude, " 1.2.3", " -17.5\n"};
        const std::string tail[] = {"42", latitude, longitude, name};
        for (const auto& [bValid, record] : {ParseGreeting(greeting), ParseDetectionTail(tail)}) {
            EXPECT_EQ(bValid, isValid) << name;
            EXPECT_EQ(record.dLatitude, dLatitude) << latitude;
            EXPECT_EQ(record.dLongitude, dLongitude) << longitude;
            EXPECT_EQ(record.sStationName == "New Station", !isValid && dLongitude == 5) << name;
        }
        const Station greeted = ParseGreeting(greeting).record;
        EXPECT_EQ(greeted.dClock, isValid ? -17.5 : 0);
        EXPECT_EQ(greeted.sVersion, isValid ? " 1.2.3" : "");
    };
    expect(" Alpha", " 005.12345", " 052.67890", true, 5.12345, 52.6789);
    expect("A,B", "5,5", "-0.00001", true, 5.5, -0.00001);
    expect(" A", "179.99999", "88.99999", true, 179.99999, 88.99999);
    expect("AB", "-179.99999", "-88.99999x", true, -179.99999, -88.99999);
    // What is given in place of a place or a name that cannot stand.
    for (const char* const latitude : {"0", "89", "-89", "1e308", "-1e999", "nan", "inf", "", "-"})
        expect("AB", "5", latitude, false, 0, 52);
    for (const char* const longitude : {"0.00", "180", "-180", "1e308", "-1e999", "nan", "inf", "", "x5"})
        expect("AB", longitude, "8.5", false, 0, 8.5);
    expect(std::string(8192, 'x'), "5.5", "8.5", true, 5.5, 8.5);
    for (const std::string& name : {std::string(), std::string("A"), std::string(8193, 'x')})
        expect(name, "5.5", "8.5", false, 5, 52);
    EXPECT_FALSE(ValidLongitude(std::nan("")) || ValidLatitude(std::nan("")));
}

TEST(WireText, AddressesAreCheckedRoughly) {
    const std::tuple<std::string, bool, bool> table[] = {
        {"10.0.0.9", true, true},      {"0.0.0.0", false, true},
        {" 0.0.0.0 ", false, false},   {"", false, true},
        {"a.b.example", false, false}, {"a.b.c.d", true, false},
        {"...", true, false},          {"1", false, true}};
    for (const auto& [address, isValid, isNumeric] : table) {
        EXPECT_EQ(IsValidIPv4(address), isValid) << address;
        EXPECT_EQ(IsAddressNumeric(address), isNumeric) << address;
    }
}

}  // namespace
}  // namespace veltrix
