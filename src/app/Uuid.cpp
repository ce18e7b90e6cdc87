#include "app/Uuid.h"

#include <array>
#include <uuid/uuid.h>

namespace quillbar {

std::string randomUuid()
{
    constexpr std::size_t textSize = 37;
    uuid_t uuid {};
    uuid_generate_random(uuid);
    std::array<char, textSize> text {};
    uuid_unparse_upper(uuid, text.data());
    return text.data();
}

} // namespace quillbar
