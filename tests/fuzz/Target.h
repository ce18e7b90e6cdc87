#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string_view>

/// What the fuzzer and the replay call, once for each text; defined by each target.
extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size);

namespace quillbar::testing {

/// Ends the program where a rule does not hold, in every build.
inline void require(bool holds, char const* rule)
{
    if (holds)
        return;
    std::fprintf(stderr, "broken rule: %s\n", rule);
    std::abort();
}

inline std::string_view textOf(std::uint8_t const* data, std::size_t size)
{
    return { reinterpret_cast<char const*>(data), size };
}

} // namespace quillbar::testing
