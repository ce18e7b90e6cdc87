#pragma once

#include "platform/view/Menu.h"

#import <AppKit/AppKit.h>

namespace quillbar::platform {

/// The menu with its items, images and key equivalents. Choosing an item carries out its action;
/// the menu keeps what the actions need. Main thread.
[[nodiscard]] NSMenu* nsMenu(Menu const& menu);

/// One item, as in nsMenu().
[[nodiscard]] NSMenuItem* nsMenuItem(MenuItem const& item);

} // namespace quillbar::platform
