#pragma once

#include <QAbstractNativeEventFilter>
#include <QObject>

namespace quillbar::platform {

/// Shows windows again that a window manager left hidden: one that ends between being asked to
/// show a window and showing it leaves that window hidden, while the program takes it for shown
/// (X11). Main thread.
class WindowManagerWatch final : public QObject, private QAbstractNativeEventFilter {
public:
    /// Once is enough; lives as long as the application.
    static void install();

private:
    explicit WindowManagerWatch(QObject* application);

    bool nativeEventFilter(QByteArray const& eventType, void* message, qintptr* result) override;
};

} // namespace quillbar::platform
