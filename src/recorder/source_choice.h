#pragma once
// Which source the recorder plays.

#include <chrono>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace veltrix {

/// The source and its options.
struct SourceChoice {
    enum class Kind { Card, File, Storm };

    Kind kind = Kind::Card;
    std::string name;     ///< of the sound file, or of the scenario
    std::string station;  ///< of the storm; empty: the first
    std::string device;   ///< of the card; empty: the default one
    bool fullSpeed = false;
    std::chrono::milliseconds idle =
        std::chrono::minutes(10);  ///< a station that takes no block for so long is gone
};

/// Keys of SndInput.ini in lower case, with their values.
using RecorderIni = std::map<std::string, std::string>;

/// The keys of an INI text that stand before any section or in section [SndInput]. Throws WrongRecorderOption
/// for an unknown key; `name` is used in the message.
RecorderIni ParseRecorderIni(std::string_view text, std::string_view name);

/// The keys of the first SndInput.ini that stands in one of the folders; none, where there is no such file.
RecorderIni LoadRecorderIni(const std::vector<std::filesystem::path>& folders);

/// The choice made by `environment`, which goes before the file's `source` key, with the file's options,
/// which those of the environment go before. Throws WrongRecorderOption.
SourceChoice ChooseSource(const std::optional<std::string>& environment, const RecorderIni& ini);

}  // namespace veltrix
