// The libFuzzer entry point; compiled once per target, whose name the build defines.
#include "fuzz/Targets.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size);

int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size)
{
    vorlane::fuzz::VORLANE_FUZZ_TARGET(vorlane::fuzz::Input({bytes, size}));
    return 0;
}
