// The calls of libFuzzer, which looks for bytes that reach new code.
#include "call.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *bytes, std::size_t size);

int LLVMFuzzerTestOneInput(const std::uint8_t *bytes, std::size_t size)
{
    const fuzz::Call call = fuzz::callOf(bytes, size);
    if (!call.wrong.empty()) {
        std::fprintf(stderr, "%s: %s\nreplay ", call.what.c_str(), call.wrong.c_str());
        for (std::size_t k = 0; k < size; ++k)
            std::fprintf(stderr, "%02x", bytes[k]);
        std::fprintf(stderr, "\n");
        std::abort();
    }
    return 0;
}
