#pragma once

#include "platform/view/Alert.h"

#include <QDialog>

#include <cstddef>

class QDialogButtonBox;
class QLineEdit;
class QVBoxLayout;

namespace quillbar::platform {

/// An alert as a dialog. However long its text, it fits on the screen: a long paragraph scrolls,
/// what stands before and after it stays in sight.
class AlertDialog : public QDialog {
public:
    explicit AlertDialog(Alert const& alert);
    AlertDialog(AlertDialog const&) = delete;
    AlertDialog& operator=(AlertDialog const&) = delete;
    ~AlertDialog() override = default;

    [[nodiscard]] AlertAnswer answer() const;

private:
    void addTexts(QVBoxLayout& column, Alert const& alert);
    void addField(QVBoxLayout& column, Alert const& alert);
    [[nodiscard]] QDialogButtonBox* makeButtons(Alert const& alert);

    QLineEdit* field_ = nullptr;
    std::size_t button_;
};

} // namespace quillbar::platform
