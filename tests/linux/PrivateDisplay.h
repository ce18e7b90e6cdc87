#pragma once

#include <QProcess>

#include <stdexcept>

namespace quillbar::testing {

/// An X server of the test's own, named in DISPLAY; stopped on destruction.
class PrivateDisplay {
public:
    PrivateDisplay()
    {
        server_.setStandardErrorFile(QProcess::nullDevice());
        server_.start(
            "Xvfb", { "-displayfd", "1", "-screen", "0", "640x480x24", "-nolisten", "tcp" });
        while (!server_.canReadLine()) {
            if (!server_.waitForReadyRead(60'000))
                throw std::runtime_error("Xvfb does not start");
        }
        qputenv("DISPLAY", ':' + server_.readLine().trimmed());
    }
    PrivateDisplay(PrivateDisplay const&) = delete;
    PrivateDisplay& operator=(PrivateDisplay const&) = delete;
    ~PrivateDisplay()
    {
        server_.terminate();
        server_.waitForFinished();
    }

private:
    QProcess server_;
};

} // namespace quillbar::testing
