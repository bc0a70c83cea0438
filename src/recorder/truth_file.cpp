#include "recorder/truth_file.h"

#include <fstream>
#include <system_error>
#include <utility>

namespace veltrix {

namespace {

constexpr std::uintmax_t LargestTruth = 4 * 1024 * 1024;
constexpr UtcTime WriteInterval = NanosecondsPerSecond / 4;

}  // namespace

TruthFile::TruthFile(const Scenario& scenario, std::filesystem::path name, UtcTime start, Say say)
    : table_(scenario), name_(std::move(name)), writtenTo_(start), say_(std::move(say)) {}

void TruthFile::Write(UtcTime now) {
    if (name_.empty() || now - writtenTo_ < WriteInterval) return;
    const std::string rows = table_.Rows(writtenTo_, now);
    writtenTo_ = now;
    if (!rows.empty()) Append(rows);
}

void TruthFile::Append(const std::string& rows) {
    std::error_code error;
    const std::uintmax_t size = std::filesystem::file_size(name_, error);
    std::string firstLine;
    if (!error && size > 0) {
        std::ifstream present(name_);
        std::getline(present, firstLine);
        firstLine += '\n';
    }
    const std::string header = table_.Header();
    const bool goesOn = firstLine == header && size + rows.size() <= LargestTruth;
    if (!firstLine.empty() && !goesOn) {
        std::filesystem::path old = name_;
        old.replace_extension(".old" + name_.extension().string());
        std::filesystem::rename(name_, old, error);
    }
    std::ofstream file(name_, std::ios::app | std::ios::binary);
    file << (goesOn ? rows : header + rows);
    file.close();
    if (file.fail() && !isBroken_) say_(name_.string() + ": cannot be written");
    isBroken_ = file.fail();
}

}  // namespace veltrix
