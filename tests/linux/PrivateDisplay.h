#pragma once

#include <sys/types.h>

namespace quillbar::testing {

/// An X server of the test's own, named in DISPLAY; stopped on destruction.
class PrivateDisplay {
public:
    PrivateDisplay();
    PrivateDisplay(PrivateDisplay const&) = delete;
    PrivateDisplay& operator=(PrivateDisplay const&) = delete;
    ~PrivateDisplay();

private:
    pid_t server_ = -1;
};

} // namespace quillbar::testing
