#pragma once

#include <QProcess>
#include <QString>
#include <QStringList>

#include <stdexcept>

namespace quillbar::testing {

/// A server of the test's own that prints its address in a line; stopped on destruction.
class PrivateServer {
public:
    PrivateServer(QString const& program, QStringList const& arguments)
    {
        process_.setStandardErrorFile(QProcess::nullDevice());
        process_.start(program, arguments);
        while (!process_.canReadLine()) {
            if (!process_.waitForReadyRead(60'000))
                throw std::runtime_error(program.toStdString() + " does not start");
        }
        address_ = QString::fromUtf8(process_.readLine()).trimmed();
    }
    PrivateServer(PrivateServer const&) = delete;
    PrivateServer& operator=(PrivateServer const&) = delete;
    ~PrivateServer()
    {
        process_.terminate();
        process_.waitForFinished();
    }

    [[nodiscard]] QString const& address() const { return address_; }

private:
    QProcess process_;
    QString address_;
};

} // namespace quillbar::testing
