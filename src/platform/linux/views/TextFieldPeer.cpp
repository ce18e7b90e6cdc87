#include "platform/linux/drawing/Conversions.h"
#include "platform/linux/views/NativeView.h"
#include "platform/view/TextField.h"

#include <QLineEdit>

namespace quillbar::platform {

namespace {

class TextFieldPeer final : public Peer<QLineEdit, TextField> {
public:
    TextFieldPeer(View& view, QWidget& parent)
        : Peer(view, parent)
    {
        if (portableView()->style() == TextFieldStyle::Plain) {
            setFrame(false);
            auto clear = palette();
            clear.setColor(QPalette::Base, Qt::transparent);
            setPalette(clear);
        }
        connect(this, &QLineEdit::textEdited, this, [this](QString const& text) {
            if (auto* const field = portableView())
                field->userTyped(text.toStdString());
        });
    }

    void sync() override
    {
        if (auto const font = toQFont(portableView()->font()); font != QWidget::font())
            setFont(font);
        if (auto const placeholder = toQString(portableView()->placeholder());
            placeholder != placeholderText())
            setPlaceholderText(placeholder);
        // Setting the same text would move the cursor and end a composition.
        if (auto const text = toQString(portableView()->text()); text != QLineEdit::text())
            setText(text);
    }
};

} // namespace

NativeView* makeTextFieldPeer(View& view, QWidget& parent)
{
    return new TextFieldPeer(view, parent);
}

} // namespace quillbar::platform
