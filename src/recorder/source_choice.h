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
    std::string name;     ///< of the sound files, or of the scenario
    std::string station;  ///< of the storm; empty: the first
    std::string device;   ///< of the card; empty: the default one
    int rate = 0;         ///< of the card, frames a second; 0: the best that it offers
    bool fullSpeed = false;
    bool loops = false;  ///< files: from the first one on again
    bool waits = false;  ///< files: for further ones at the end
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
