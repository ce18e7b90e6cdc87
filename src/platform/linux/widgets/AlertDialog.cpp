#include "platform/linux/drawing/Contrast.h"
#include "platform/linux/drawing/Conversions.h"
#include "platform/linux/drawing/ImageRenderer.h"
#include "platform/linux/widgets/ApplicationIcon.h"
#include "platform/linux/widgets/Painting.h"
#include "platform/linux/x11/WindowActivation.h"
#include "platform/view/Alert.h"

#include <QApplication>
#include <QBoxLayout>
#include <QDialog>
#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QStyle>

#include <algorithm>

namespace quillbar::platform {

using namespace Qt::StringLiterals;

namespace {

constexpr int textWidth = 360;
constexpr qsizetype mostLabelLines = 10;
constexpr qsizetype mostLabelCharacters = 600;

// A label can neither scroll nor break a word that is wider than itself.
bool fitsInLabel(QString const& text)
{
    constexpr qsizetype longestWord = 40;
    if (text.size() > mostLabelCharacters || text.count('\n'_L1) >= mostLabelLines)
        return false;
    return std::ranges::all_of(QStringView(text).tokenize(' '_L1), [](QStringView words) {
        return std::ranges::all_of(
            words.tokenize('\n'_L1), [](QStringView word) { return word.size() <= longestWord; });
    });
}

QLabel* makeLabel(QString const& text)
{
    auto* label = new QLabel(text);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    label->setFixedWidth(textWidth);
    return label;
}

QWidget* makeScrollingText(QString const& text)
{
    auto* view = new QPlainTextEdit(text);
    view->setReadOnly(true);
    view->setTabChangesFocus(true);
    view->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    view->setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    view->setFixedWidth(textWidth);
    view->setFixedHeight(view->fontMetrics().lineSpacing() * static_cast<int>(mostLabelLines));
    return view;
}

QLabel* makeIcon(AlertStyle style, QWidget const& dialog)
{
    constexpr Rgba amber { .red = 0.96, .green = 0.62, .blue = 0.04, .alpha = 1 };
    constexpr double side = 40;
    auto const isWarning = style == AlertStyle::Warning;
    auto symbol = symbolImage(isWarning ? "exclamationmark.triangle.fill" : "info.circle.fill");
    auto* label = new QLabel;
    if (!symbol) {
        auto const icon
            = isWarning ? QStyle::SP_MessageBoxWarning : QStyle::SP_MessageBoxInformation;
        label->setPixmap(
            QApplication::style()->standardIcon(icon).pixmap(QSizeF(side, side).toSize()));
        return label;
    }
    auto const tint = isWarning ? Color(amber) : Color(SystemColor::Accent);
    label->setPixmap(QPixmap::fromImage(renderImage(*symbol,
        { .symbolSize = { side, side },
            .devicePixelRatio = dialog.devicePixelRatioF(),
            .foreground = toQColor(tint, dialog.palette()),
            .palette = dialog.palette() })));
    return label;
}

/// Draws a focus ring of its own: QStyle marks the default button, which Tab may have left.
class AlertButton final : public QPushButton {
public:
    using QPushButton::QPushButton;

protected:
    void paintEvent(QPaintEvent* event) override
    {
        constexpr int inset = 3;
        QPushButton::paintEvent(event);
        if (!hasFocus())
            return;
        QPainter painter(this);
        drawFocusRing(painter, rect().adjusted(inset, inset, -inset, -inset),
            legible(palette().color(QPalette::Highlight), palette().color(QPalette::Button),
                outlineContrast));
    }
};

QDialogButtonBox::ButtonRole roleOf(std::size_t button, std::size_t count)
{
    if (button == 0)
        return QDialogButtonBox::AcceptRole;
    return button + 1 == count ? QDialogButtonBox::RejectRole : QDialogButtonBox::ActionRole;
}

/// A long paragraph scrolls, so that the alert fits on the screen and what stands before and after
/// the paragraph stays in sight.
void addTexts(QVBoxLayout& column, Alert const& alert)
{
    constexpr qsizetype mostParagraphs = 5;
    auto* message = makeLabel(toQString(alert.messageText));
    auto font = message->font();
    font.setWeight(QFont::DemiBold);
    message->setFont(font);
    column.addWidget(message);
    auto const text = QString::fromStdString(alert.informativeText);
    if (text.isEmpty())
        return;
    auto paragraphs = text.split(u"\n\n"_s, Qt::SkipEmptyParts);
    if (paragraphs.size() > mostParagraphs)
        paragraphs = { text };
    for (auto const& paragraph : paragraphs) {
        if (fitsInLabel(paragraph)) {
            column.addWidget(makeLabel(paragraph));
            continue;
        }
        auto* view = makeScrollingText(paragraph);
        view->setAccessibleName(message->text());
        column.addWidget(view);
    }
}

QLineEdit* makeField(Alert const& alert)
{
    auto* field = new QLineEdit(toQString(alert.accessory->text));
    field->setPlaceholderText(toQString(alert.accessory->placeholder));
    field->setFixedSize(220, 24);
    field->setAccessibleName(toQString(alert.messageText));
    field->selectAll();
    return field;
}

/// Each button ends the dialog with its number, counted from 1.
QDialogButtonBox* makeButtons(Alert const& alert, QDialog& dialog)
{
    auto* box = new QDialogButtonBox;
    for (std::size_t i = 0; i < alert.buttons.size(); ++i) {
        auto text = toQString(alert.buttons[i]).replace('&'_L1, "&&"_L1);
        auto* button = new AlertButton(text);
        box->addButton(button, roleOf(i, alert.buttons.size()));
        button->setDefault(i == 0);
        QObject::connect(button, &QPushButton::clicked, &dialog,
            [&dialog, i] { dialog.done(static_cast<int>(i) + 1); });
    }
    return box;
}

} // namespace

AlertAnswer runModal(Alert const& alert)
{
    QDialog dialog(QApplication::activeWindow(),
        Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowCloseButtonHint);
    dialog.setWindowIcon(applicationIcon());
    dialog.setWindowTitle(QGuiApplication::applicationDisplayName());
    dialog.setModal(true);
    dialog.setAccessibleName(toQString(alert.messageText));
    dialog.setAccessibleDescription(QString::fromStdString(alert.informativeText));
    auto* const texts = new QVBoxLayout;
    texts->setSpacing(10);
    addTexts(*texts, alert);
    auto* const field = alert.accessory ? makeField(alert) : nullptr;
    if (field)
        texts->addWidget(field);
    auto* const columns = new QHBoxLayout;
    columns->setSpacing(16);
    columns->addWidget(makeIcon(alert.style, dialog), 0, Qt::AlignTop);
    columns->addLayout(texts, 1);
    auto* const rows = new QVBoxLayout(&dialog);
    rows->setContentsMargins(20, 20, 20, 16);
    rows->setSpacing(18);
    rows->setSizeConstraint(QLayout::SetFixedSize);
    rows->addLayout(columns);
    auto* const buttons = makeButtons(alert, dialog);
    rows->addWidget(buttons);
    if (field)
        field->setFocus();
    else
        buttons->buttons().first()->setFocus();

    dialog.show();
    activateWindow(*dialog.windowHandle());
    auto const chosen = static_cast<std::size_t>(dialog.exec());
    return { .button = chosen == QDialog::Rejected ? alert.buttons.size() - 1 : chosen - 1,
        .text = field ? field->text().toStdString() : std::string() };
}

} // namespace quillbar::platform
