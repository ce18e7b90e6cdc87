#pragma once

#include <QProcess>

namespace quillbar::testing {

/// An X server of the test's own, named in DISPLAY; stopped on destruction.
class PrivateDisplay {
public:
    PrivateDisplay();
    PrivateDisplay(PrivateDisplay const&) = delete;
    PrivateDisplay& operator=(PrivateDisplay const&) = delete;
    ~PrivateDisplay();

private:
    QProcess server_;
};

} // namespace quillbar::testing
