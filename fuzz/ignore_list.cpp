// The list of addresses to be thrown out. The first line of the input is the address that is asked for.

#include "network/ignore_list.h"

#include "common/trimmed.h"
#include "fuzz_input.h"
#include "support/memory_files.h"

using namespace veltrix;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view input = InputText(data, size);
    const std::string_view address = input.substr(0, input.find('\n'));
    const std::string_view content = input.substr(std::min(address.size() + 1, input.size()));
    ManualClock clock;
    MemoryFiles files(clock);
    files.Put("IgnoreList.txt", std::string(content));
    IgnoreList ignored(files);
    const bool isIgnored = ignored.IsIgnored(address);
    MustHold(!isIgnored || content.find(Trimmed(address)) != std::string_view::npos);
    MustHold(ignored.IsIgnored(address) == isIgnored);
    // Before all others an entry is never overwritten.
    files.Put("IgnoreList.txt", "10.0.0.9 \r\n" + std::string(content));
    MustHold(ignored.IsIgnored(" 10.0.0.9"));
    return 0;
}
