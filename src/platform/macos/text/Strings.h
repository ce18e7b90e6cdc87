#pragma once

#import <Foundation/Foundation.h>

#include <string>
#include <string_view>

namespace quillbar::platform {

/// The UTF-8 text; each malformed sequence becomes U+FFFD.
[[nodiscard]] NSString* nsString(std::string_view text);

/// In UTF-8; empty for nil. An unpaired surrogate becomes U+FFFD.
[[nodiscard]] std::string utf8(NSString* text);

} // namespace quillbar::platform
