// The order of the rooms of src/: which room may include what, and how long a file may be.

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <regex>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace veltrix {
namespace {

constexpr int MostLines = 600;

/// What a room may reach without the platform; each holds those before it. Files are those of the standard
/// library.
enum class Outside { Nothing, Files, Computer, Qt };

/// A folder of src/, or "apps" for all programs.
struct Room {
    std::string_view name;
    std::vector<std::string_view> below;  ///< it may use these, and what these use
    Outside outside = Outside::Nothing;
};

const std::vector<Room> Rooms = {
    {"common", {}},
    {"platform", {"common"}},
    {"platform/qt", {"platform"}, Outside::Qt},
    {"timebase", {"platform"}},
    {"display", {"platform"}},
    {"detection", {"timebase", "display"}},
    {"location", {"detection"}},
    {"cartography", {"location"}},
    {"network", {"cartography"}},
    {"output", {"network"}},
    {"health", {"platform"}},
    {"station", {"output", "health"}},
    {"window", {"station", "platform/qt"}, Outside::Qt},
    {"storm", {"common"}, Outside::Files},
    {"recorder", {"storm"}, Outside::Computer},
    {"archive", {"location", "recorder"}, Outside::Computer},
    {"apps", {"window", "archive"}, Outside::Qt},
};

const std::regex IncludeLine(R"re(\s*#\s*include\s*([<"])([^>"]*).*)re");
const std::regex QtHeader("Qt.*|Q[A-Z].*");
const std::regex FileHeader("filesystem|fstream");
/// Of the operating system, of threads and of signals.
const std::regex ComputerHeader(
    "(arpa|net|netinet|sys)/.*|csignal|ctime|mutex|thread|"
    "(direct|dirent|dlfcn|fcntl|io|netdb|poll|process|pthread|pwd|signal|spawn|syslog|termios|time|unistd|"
    "windows|winsock2)\\.h");

/// The room of a file or header name below src/, the most particular one, or null.
const Room* RoomOf(std::string_view name) {
    const Room* found = nullptr;
    for (const Room& room : Rooms)
        if (name.starts_with(std::string(room.name) + '/') &&
            (found == nullptr || room.name.size() > found->name.size()))
            found = &room;
    return found;
}

bool MayUse(const Room& room, const Room& other) {
    return &room == &other || std::ranges::any_of(room.below, [&other](std::string_view name) {
        return MayUse(*std::ranges::find(Rooms, name, &Room::name), other);
    });
}

Outside PlaceOf(const std::string& header) {
    if (std::regex_match(header, QtHeader)) return Outside::Qt;
    if (std::regex_match(header, ComputerHeader)) return Outside::Computer;
    return std::regex_match(header, FileHeader) ? Outside::Files : Outside::Nothing;
}

bool MayInclude(const Room& room, const std::string& header, bool isQuoted) {
    if (!isQuoted) return PlaceOf(header) <= room.outside;
    // Headers are written "room/file.h", but for those that stand beside a program's main.cpp.
    if (header.find('/') == std::string::npos) return room.name == "apps";
    const Room* const target = RoomOf(header);
    return target != nullptr && MayUse(room, *target);
}

/// What is wrong with a file of src/ or apps/, a line for each fault. `path` is relative to the tree.
std::string Breaches(const std::string& path, const std::string& content) {
    const std::string place = path.starts_with("src/") ? path.substr(4) : path;
    const Room* const room = RoomOf(place);
    if (room == nullptr || (place == path) != (room->name == "apps")) return path + ": in no room\n";
    std::string breaches;
    std::istringstream lines(content);
    int count = 0;
    for (std::string line; std::getline(lines, line);) {
        ++count;
        std::smatch include;
        if (line.find('#') != std::string::npos && std::regex_match(line, include, IncludeLine) &&
            !MayInclude(*room, include[2], include[1] == "\""))
            breaches += path + ':' + std::to_string(count) + ": may not include " + include.str(2) + '\n';
    }
    if (count > MostLines) breaches += path + ": too long\n";
    return breaches;
}

TEST(Layers, TheTreeKeepsItsOrder) {
    const std::filesystem::path tree(VELTRIX_SOURCE_DIR);
    int files = 0;
    for (const char* const part : {"src", "apps"})
        for (const auto& entry : std::filesystem::recursive_directory_iterator(tree / part)) {
            const std::string kind = entry.path().extension().string();
            if (kind != ".h" && kind != ".cpp") continue;
            std::ifstream file(entry.path(), std::ios::binary);
            const std::string content{std::istreambuf_iterator<char>(file), {}};
            EXPECT_EQ(Breaches(std::filesystem::relative(entry.path(), tree).generic_string(), content), "");
            ++files;
        }
    EXPECT_GT(files, 50) << "the check has not found the tree";
    for (const char* const wrong : {"  #  include\t\"platform/clock.h\"  // no", "#include <QTimer>",
                                    "#include <fstream>", "#include \"../common/a.h\""})
        EXPECT_NE(Breaches("src/common/b.h", wrong), "") << wrong;
    EXPECT_NE(Breaches("src/cellar/a.h", ""), "");
    EXPECT_NE(Breaches("src/common/b.h", std::string(MostLines + 1, '\n')), "");
}

}  // namespace
}  // namespace veltrix
