#pragma once

#include "platform/view/View.h"

namespace quillbar {

/// The plain container that the windows lay out their content in. Every view's coordinates already
/// run top-down, so that there is nothing to add.
using FlippedView = platform::View;

} // namespace quillbar
