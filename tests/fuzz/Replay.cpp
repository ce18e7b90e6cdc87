#include "fuzz/Target.h"

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace {

void feed(std::string const& text)
{
    // A copy of exactly this size, so that a read past its end is one past the allocation.
    std::vector<std::uint8_t> const bytes(text.begin(), text.end());
    LLVMFuzzerTestOneInput(bytes.data(), bytes.size());
}

/// The text as it stands, cut short at every place, and with every bit flipped.
void feedWithNeighbours(std::string text)
{
    feed(text);
    for (std::size_t length = 0; length < text.size(); ++length)
        feed(text.substr(0, length));
    for (auto& byte : text) {
        auto const original = byte;
        for (auto bit = 0; bit < 8; ++bit) {
            byte = static_cast<char>(original ^ (1 << bit));
            feed(text);
        }
        byte = original;
    }
}

} // namespace

/// Replays the files of a folder; fails when there are none.
int main(int /*argumentCount*/, char** arguments)
{
    auto count = 0;
    for (auto const& entry : std::filesystem::directory_iterator(arguments[1])) {
        std::printf("%s\n", entry.path().c_str());
        // A crash must not take the name of its file along.
        std::fflush(stdout);
        std::ifstream file(entry.path(), std::ios::binary);
        feedWithNeighbours({ std::istreambuf_iterator<char>(file), {} });
        ++count;
    }
    return count > 0 ? 0 : 1;
}
