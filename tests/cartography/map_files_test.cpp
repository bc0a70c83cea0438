// A map's two files.

#include <gtest/gtest.h>

#include "cartography/map_files.h"
#include "display/bitmap_file.h"
#include "support/memory_files.h"
#include "support/number_raised_by.h"

namespace veltrix {
namespace {

struct MapFiles : testing::Test {
    ManualClock clock;
    MemoryFiles files{clock};
};

TEST_F(MapFiles, TheGeometryIsReadByTheBeginningsOfItsLines) {
    const std::pair<const char*, MapPlace> table[] = {
        {"Radius: 1500\nLongitude: -9.5\nLatitude: 48.25\n", {1500, -9.5, 48.25}},
        {"La:1\r\nLo:2\r\nRa:3\r\n", {3, 2, 1}},
        {"Range of the map: 700 km", {700, 4.43579, 50.93272}},
        {"Longitude (east): 12,5", {2000, 12.5, 50.93272}},
        {"Radius: 100: 200", {100, 4.43579, 50.93272}},
        {"Radius:", {0, 4.43579, 50.93272}},
        {"Latitude: north", {2000, 4.43579, 0}},
        {"", {}},
        {"Radius 100\n Radius: 100\nradius: 100\nRADIUS: 100\n: 100\nR: 100\nThe Radius: 100", {}},
    };
    for (const auto& [content, place] : table) {
        files.Put("MAP.dat", content);
        EXPECT_EQ(ReadGeometry(files, "MAP.dat"), place) << content;
    }
    EXPECT_EQ(ReadGeometry(files, "MAP_1.dat"), MapPlace{});
    EXPECT_EQ(ReadGeometry(files, ""), MapPlace{});
    files.FailOn(FileOperation::ReadLines, "MAP.dat", errors::PermissionDenied);
    EXPECT_EQ(NumberRaisedBy([this] { ReadGeometry(files, "MAP.dat"); }), errors::PermissionDenied);
}

TEST_F(MapFiles, AMapThatIsWrittenIsReadAlike) {
    const Bitmap map{2, 1, {Red, Cyan}};
    for (const MapPlace& place :
         {MapPlace{}, MapPlace{123.456, -179.99999, -0.00001}, MapPlace{9000, 0, 89.99}}) {
        WriteMap(files, "Maps_1.BMP", place, map);
        EXPECT_EQ(ReadGeometry(files, "Maps_1.dat"), place);
        EXPECT_EQ(files.Content("Maps_1.BMP"), BmpBytes(map));
    }
    EXPECT_EQ(GeometryName("a.jpeg") + GeometryName("BMP") + GeometryName(""), "a.jdat");
    WriteMap(files, "MAP_2000.BMP", {}, map);
    EXPECT_EQ(files.Content("MAP_2000.dat"), "Radius: 2000\nLongitude: 4.43579\nLatitude: 50.93272\n");
}

}  // namespace
}  // namespace veltrix
