#include "platform/linux/tray/AlertDialog.h"

#include "platform/linux/drawing/Conversions.h"

#include <QApplication>
#include <QBoxLayout>
#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
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

QLabel* makeIcon(AlertStyle style)
{
    auto const* appStyle = QApplication::style();
    auto const side = appStyle->pixelMetric(QStyle::PM_MessageBoxIconSize);
    auto icon = style == AlertStyle::Warning ? appStyle->standardIcon(QStyle::SP_MessageBoxWarning)
                                             : QApplication::windowIcon();
    if (icon.isNull())
        icon = appStyle->standardIcon(QStyle::SP_MessageBoxInformation);
    auto* label = new QLabel;
    label->setPixmap(icon.pixmap(side, side));
    return label;
}

QDialogButtonBox::ButtonRole roleOf(std::size_t button, std::size_t count)
{
    if (button == 0)
        return QDialogButtonBox::AcceptRole;
    return button + 1 == count ? QDialogButtonBox::RejectRole : QDialogButtonBox::ActionRole;
}

} // namespace

AlertDialog::AlertDialog(Alert const& alert)
    : QDialog(QApplication::activeWindow())
    , button_(alert.buttons.empty() ? 0 : alert.buttons.size() - 1)
{
    setWindowTitle(QGuiApplication::applicationDisplayName());
    setModal(true);
    auto* texts = new QVBoxLayout;
    texts->setSpacing(10);
    addTexts(*texts, alert);
    if (alert.accessory)
        addField(*texts, alert);
    auto* columns = new QHBoxLayout;
    columns->setSpacing(16);
    columns->addWidget(makeIcon(alert.style), 0, Qt::AlignTop);
    columns->addLayout(texts, 1);
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(20, 20, 20, 16);
    rows->setSpacing(18);
    rows->setSizeConstraint(QLayout::SetFixedSize);
    rows->addLayout(columns);
    rows->addWidget(makeButtons(alert));
}

AlertAnswer AlertDialog::answer() const
{
    return { .button = button_, .text = field_ ? field_->text().toStdString() : std::string() };
}

void AlertDialog::addTexts(QVBoxLayout& column, Alert const& alert)
{
    constexpr qsizetype mostParagraphs = 5;
    auto* message = makeLabel(toQString(alert.messageText));
    auto font = message->font();
    font.setWeight(QFont::DemiBold);
    message->setFont(font);
    column.addWidget(message);
    auto const text = toQString(alert.informativeText);
    setAccessibleName(message->text());
    setAccessibleDescription(text);
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

void AlertDialog::addField(QVBoxLayout& column, Alert const& alert)
{
    field_ = new QLineEdit(toQString(alert.accessory->text));
    field_->setPlaceholderText(toQString(alert.accessory->placeholder));
    field_->setFixedSize(220, 24);
    field_->setAccessibleName(toQString(alert.messageText));
    field_->selectAll();
    field_->setFocus();
    column.addWidget(field_);
}

QWidget* AlertDialog::makeButtons(Alert const& alert)
{
    auto* box = new QDialogButtonBox;
    if (alert.buttons.empty())
        box->addButton(QDialogButtonBox::Ok);
    for (std::size_t i = 0; i < alert.buttons.size(); ++i) {
        auto text = toQString(alert.buttons[i]).replace('&'_L1, "&&"_L1);
        auto* button = box->addButton(text, roleOf(i, alert.buttons.size()));
        button->setDefault(i == 0);
        if (i == 0 && !field_)
            button->setFocus();
        connect(button, &QPushButton::clicked, this, [this, i] { button_ = i; });
    }
    connect(box, &QDialogButtonBox::clicked, this, &QDialog::accept);
    return box;
}

AlertAnswer runModal(Alert const& alert)
{
    AlertDialog dialog(alert);
    dialog.show();
    dialog.raise();
    dialog.activateWindow();
    dialog.exec();
    return dialog.answer();
}

} // namespace quillbar::platform
