// The settings loader over arbitrary bytes: it must end without a crash, and
// whatever it accepts must store and load back to the same fields.

#include <cstdint>
#include <cstdlib>
#include <vector>

#include "app/main_dialog/settings.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::vector<std::uint8_t> bytes(data, data + size);
    tivox::CSettings settings;
    if (!settings.Load(bytes))
        return 0;
    const std::vector<std::uint8_t> stored = settings.Store();
    tivox::CSettings again;
    if (!again.Load(stored) || again.Store() != stored)
        std::abort();
    return 0;
}
