#include "shortcuts/Report.h"

#include <cstdio>

namespace quillbar::shortcuts {

void report(std::string_view message)
{
    std::fprintf(stderr, "shortcuts: %.*s\n", static_cast<int>(message.size()), message.data());
}

} // namespace quillbar::shortcuts
