#pragma once

#include "platform/view/View.h"

namespace quillbar::platform {

/// A thin line along the longer side of its frame.
class Separator : public View {
public:
    Separator()
        : View(ViewKind::Separator)
    {
    }
};

} // namespace quillbar::platform
