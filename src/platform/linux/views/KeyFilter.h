#pragma once

#include <QObject>

#include <optional>

class QKeyEvent;
class QWidget;

namespace quillbar::platform {

/// Sees every key press of the application before the widgets do, notes the mouse, and tells the
/// portable windows which view has the keyboard.
class KeyFilter final : public QObject {
public:
    /// Once is enough; lives as long as the application.
    static void install();

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    explicit KeyFilter(QObject* application);

    [[nodiscard]] bool keyPressed(QWidget& target, QKeyEvent const& event);
    [[nodiscard]] bool hasClosedPopUp(QEvent const& event);

    /// When the key went down that an open pop-up was offered.
    std::optional<quint64> popUpKeyTime_;
    /// The key of the last press if that was recorded: its repeats do nothing.
    quint32 recordedScanCode_ = 0;
};

} // namespace quillbar::platform
