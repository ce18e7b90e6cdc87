#include "platform/Fatal.h"

#include <cstdio>
#include <cstdlib>

namespace quillbar::platform {

void fatalError(std::string_view message)
{
    std::fprintf(stderr, "quillbar: %.*s\n", static_cast<int>(message.size()), message.data());
    std::abort();
}

} // namespace quillbar::platform
