#pragma once

namespace quillbar::platform {

/// Gives the widgets of views their roles in the accessibility tree. Once is enough.
void installAccessibility();

} // namespace quillbar::platform
