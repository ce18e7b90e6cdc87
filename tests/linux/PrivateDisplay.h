#pragma once

#include "linux/PrivateServer.h"

namespace quillbar::testing {

/// An X server of the test's own, named in DISPLAY; stopped on destruction.
class PrivateDisplay {
public:
    PrivateDisplay() { qputenv("DISPLAY", ':' + server_.address().toUtf8()); }

private:
    PrivateServer server_ { "Xvfb",
        { "-displayfd", "1", "-screen", "0", "640x480x24", "-nolisten", "tcp" } };
};

} // namespace quillbar::testing
