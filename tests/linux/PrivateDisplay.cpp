#include "linux/PrivateDisplay.h"

#include <stdexcept>

namespace quillbar::testing {

PrivateDisplay::PrivateDisplay()
{
    server_.setStandardErrorFile(QProcess::nullDevice());
    server_.start("Xvfb", { "-displayfd", "1", "-screen", "0", "640x480x24", "-nolisten", "tcp" });
    while (!server_.canReadLine()) {
        if (!server_.waitForReadyRead(10'000))
            throw std::runtime_error("Xvfb does not start");
    }
    qputenv("DISPLAY", ':' + server_.readLine().trimmed());
}

PrivateDisplay::~PrivateDisplay()
{
    server_.terminate();
    server_.waitForFinished();
}

} // namespace quillbar::testing
