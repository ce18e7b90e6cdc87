#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace quillbar::platform {

enum class AlertStyle : std::uint8_t { Informational, Warning };

/// A one-line text field of 220 × 24 points inside an alert.
struct AlertField {
    std::string text;
    std::string placeholder;
};

/// A modal question. Plain text throughout.
struct Alert {
    AlertStyle style = AlertStyle::Informational;
    std::string messageText;
    std::string informativeText;
    /// One at least. The first is the default one, chosen by Return.
    std::vector<std::string> buttons;
    std::optional<AlertField> accessory;
};

struct AlertAnswer {
    /// Index into Alert::buttons; closing the alert without a choice counts as the last button.
    std::size_t button = 0;
    /// The field's text when the alert closed, whichever button closed it.
    std::string text;
};

/// Shows the alert and blocks until it is answered; timers and events go on meanwhile. Main thread.
[[nodiscard]] AlertAnswer runModal(Alert const& alert);

} // namespace quillbar::platform
