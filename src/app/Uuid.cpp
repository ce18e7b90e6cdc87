#include "app/Uuid.h"

#include <random>

namespace quillbar {

std::string randomUuid()
{
    constexpr auto const* digits = "0123456789ABCDEF";
    // 4 is the version; the digit after the third dash holds the variant in its upper two bits.
    std::string uuid = "xxxxxxxx-xxxx-4xxx-yxxx-xxxxxxxxxxxx";
    std::random_device random;
    std::uniform_int_distribution<std::size_t> anyDigit(0, 15);
    for (auto& character : uuid) {
        if (character == 'x')
            character = digits[anyDigit(random)];
        else if (character == 'y')
            character = digits[8 + anyDigit(random) % 4];
    }
    return uuid;
}

} // namespace quillbar
