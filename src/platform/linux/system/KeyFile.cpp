#include "platform/linux/system/KeyFile.h"

#include <fstream>
#include <iterator>
#include <system_error>

namespace quillbar::platform {

namespace {

std::string_view withoutBlanks(std::string_view text)
{
    constexpr std::string_view blanks = " \t\r";
    auto const first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

} // namespace

std::vector<KeyFileLine> parseKeyFile(std::string_view text)
{
    std::vector<KeyFileLine> lines;
    std::string_view group;
    while (!text.empty()) {
        auto const end = text.find('\n');
        auto const line = withoutBlanks(text.substr(0, end));
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
        if (line.starts_with('[') && line.ends_with(']')) {
            group = line.substr(1, line.size() - 2);
            continue;
        }
        auto const equals = line.find('=');
        if (equals == std::string_view::npos || line.starts_with('#'))
            continue;
        lines.push_back({ group, withoutBlanks(line.substr(0, equals)),
            withoutBlanks(line.substr(equals + 1)) });
    }
    return lines;
}

std::string readSmallFile(std::filesystem::path const& file, std::size_t limit)
{
    std::error_code error;
    // Opening a pipe would wait for its other end.
    if (!std::filesystem::is_regular_file(file, error)
        || std::filesystem::file_size(file, error) > limit || error)
        return {};
    std::ifstream stream(file, std::ios::binary);
    return { std::istreambuf_iterator<char>(stream), {} };
}

} // namespace quillbar::platform
