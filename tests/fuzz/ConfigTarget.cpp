#include "fuzz/Target.h"
#include "model/ConfigJson.h"

#include <string>

namespace quillbar::testing {
namespace {

void requireRoundTrip(Config const& config)
{
    auto const text = encodeConfig(config);
    auto const again = decodeConfig(text);
    require(again.has_value(), "what is written can be read");
    require(*again == config, "what is written is read as it was");
    require(encodeConfig(*again) == text, "it is written in one way only");
}

} // namespace
} // namespace quillbar::testing

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    using namespace quillbar::testing;
    if (auto const config = quillbar::decodeConfig(textOf(data, size)))
        requireRoundTrip(*config);
    return 0;
}
