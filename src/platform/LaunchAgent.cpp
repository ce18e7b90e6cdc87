#include "platform/LaunchAgent.h"

#include <string_view>

namespace quillbar::platform {

namespace {

std::string escaped(std::string_view text)
{
    std::string result;
    result.reserve(text.size());
    for (auto const character : text) {
        switch (character) {
        case '&':
            result += "&amp;";
            break;
        case '<':
            result += "&lt;";
            break;
        case '>':
            result += "&gt;";
            break;
        default:
            result += character;
        }
    }
    return result;
}

} // namespace

std::string launchAgentPropertyList(LoginEntry const& entry)
{
    return R"(<?xml version="1.0" encoding="UTF-8"?>
<!DOCTYPE plist PUBLIC "-//Apple//DTD PLIST 1.0//EN" "http://www.apple.com/DTDs/PropertyList-1.0.dtd">
<plist version="1.0">
<dict>
	<key>Label</key>
	<string>)"
        + escaped(entry.label) + R"(</string>
	<key>ProgramArguments</key>
	<array>
		<string>)"
        + escaped(entry.executablePath) + R"(</string>
	</array>
	<key>RunAtLoad</key>
	<true/>
</dict>
</plist>
)";
}

} // namespace quillbar::platform
