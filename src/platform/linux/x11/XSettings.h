#pragma once

#include <QAbstractNativeEventFilter>
#include <QByteArray>
#include <xcb/xcb.h>

#include <functional>

namespace quillbar::platform {

/// What the desktop's settings manager tells every X11 client (the XSETTINGS protocol). Where there
/// is no X server, nothing is told. Main thread; ends before the application object.
class XSettings final : private QAbstractNativeEventFilter {
public:
    /// `onChange` is called when any of the settings may have changed.
    explicit XSettings(std::function<void()> onChange);

    /// Empty where there is no manager, or no such setting that is a text. Waits for the X server.
    [[nodiscard]] QByteArray text(QByteArray const& name) const;

private:
    bool nativeEventFilter(QByteArray const& eventType, void* message, qintptr* result) override;

    std::function<void()> onChange_;
    xcb_connection_t* connection_;
    xcb_atom_t settings_ = XCB_ATOM_NONE;
    xcb_atom_t manager_ = XCB_ATOM_NONE;
    xcb_atom_t selection_ = XCB_ATOM_NONE;
};

/// The same on a connection of its own, for the time before there is an application object. Empty
/// also where no X server answers. Waits for the X server.
[[nodiscard]] QByteArray readXSetting(QByteArray const& name);

} // namespace quillbar::platform
