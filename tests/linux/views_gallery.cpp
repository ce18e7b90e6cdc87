// Shows every kind of view in the frames that the program uses; for looking at, not a test.
// Arguments: a file to save the picture of each window to (without ".png"), then "dark" if wanted;
// or "-alone" for the large window without the palette.

#include "platform/view/Button.h"
#include "platform/view/EffectView.h"
#include "platform/view/ImageView.h"
#include "platform/view/Label.h"
#include "platform/view/PopUpButton.h"
#include "platform/view/ScrollView.h"
#include "platform/view/Separator.h"
#include "platform/view/TableView.h"
#include "platform/view/TextField.h"
#include "platform/view/Window.h"

#include <QApplication>
#include <QPixmap>
#include <QScreen>
#include <QTimer>
#include <QWidget>

#include <algorithm>
#include <cstdio>

using namespace quillbar::platform;

namespace {

std::vector<std::string> names;

template <typename Kind>
std::shared_ptr<Kind> add(View& parent, std::shared_ptr<Kind> view, Rect frame)
{
    view->setFrame(frame);
    return parent.addSubview(std::move(view));
}

std::shared_ptr<Label> addLabel(View& parent, std::string text, Rect frame, double size)
{
    auto label = add(parent, std::make_shared<Label>(std::move(text)), frame);
    label->setFont({ .size = size });
    return label;
}

std::shared_ptr<Button> addCheckBox(View& parent, std::string title, Rect frame, double size)
{
    auto box
        = add(parent, std::make_shared<Button>(ButtonStyle::CheckBox, std::move(title)), frame);
    box->setFont({ .size = size });
    box->onClick = [sender = box.get()] {
        std::printf("click %s %d\n", sender->title().c_str(), sender->state() == ButtonState::On);
    };
    return box;
}

MenuItem item(std::string title, std::string symbol = {})
{
    MenuItem made;
    made.title = std::move(title);
    if (!symbol.empty())
        made.image = SymbolImage { symbol, {}, Size { 16, 16 }, {} };
    return made;
}

struct Row : View {
    Row()
    {
        setIdentifier("row");
        auto const handle = add(*this,
            std::make_shared<ImageView>(
                SymbolImage { "line.3.horizontal", "Drag to reorder", {}, {} }),
            { 8, 8, 14, 14 });
        handle->setScaling(ImageScaling::ProportionallyUpOrDown);
        handle->setContentTintColor(SystemColor::TertiaryLabel);
        name = addLabel(*this, {}, { 26, 7, 128, 16 }, 13);
        recorder = add(*this, std::make_shared<Button>(), { 160, 1, 128, 28 });
        recorder->setAttributedTitle(AttributedText {
            "⌘⌥·17", { .size = 12, .family = FontFamily::Monospaced }, SystemColor::Label, false });
        addCheckBox(*this, "Login", { 294, 7, 58, 16 }, 10)
            ->setToolTip("Open this shortcut when Quillbar starts at login");
        auto const popUp = add(*this, std::make_shared<PopUpButton>(), { 358, 4, 124, 22 });
        popUp->setFont({ .size = 10 });
        for (auto const* title : { "None", "Work", "Personal", "Custom…" })
            popUp->addItem(item(title));
        popUp->onSelect
            = [sender = popUp.get()] { std::printf("select %s\n", sender->visibleText().c_str()); };
        remove = add(*this, std::make_shared<Button>(ButtonStyle::Borderless), {});
        remove->setImage(SymbolImage { "xmark.circle.fill", "Remove", {}, {} });
        remove->setContentTintColor(SystemColor::SecondaryLabel);
    }
    void layout() override
    {
        remove->setFrame({ frame().width - 24, (frame().height - 18) / 2, 20, 18 });
    }
    std::shared_ptr<Label> name;
    std::shared_ptr<Button> recorder;
    std::shared_ptr<Button> remove;
};

void buildTable(View& content)
{
    auto const scroll = add(content, std::make_shared<ScrollView>(), { 24, 206, 512, 156 });
    scroll->setBorder(ScrollBorder::Bezel);
    auto const table = std::make_shared<TableView>();
    table->setRowHeight(30);
    table->setSelectionMode(SelectionMode::None);
    table->rowCount = [] { return names.size(); };
    auto* const shown = table.get();
    table->viewForRow = [shown](std::size_t row) {
        auto view = std::static_pointer_cast<Row>(shown->takeReusableView("row"));
        if (!view)
            view = std::make_shared<Row>();
        view->name->setText(names[row]);
        view->remove->onClick = [shown, row] {
            std::printf("remove %s\n", names[row].c_str());
            names.erase(names.begin() + static_cast<std::ptrdiff_t>(row));
            shown->reloadData();
        };
        return std::static_pointer_cast<View>(view);
    };
    table->dragTextForRow = [](std::size_t row) { return std::optional(names[row]); };
    table->acceptDrop = [shown](std::string const& text, std::size_t gap) {
        auto const from = static_cast<std::size_t>(std::ranges::find(names, text) - names.begin());
        names.erase(names.begin() + static_cast<std::ptrdiff_t>(from));
        names.insert(names.begin() + static_cast<std::ptrdiff_t>(from < gap ? gap - 1 : gap), text);
        for (auto const& name : names)
            std::printf("%s ", name.c_str());
        std::printf("\n");
        shown->reloadData();
        return true;
    };
    scroll->setDocumentView(table);
    table->reloadData();
}

std::shared_ptr<Window> makeSettings()
{
    auto window = std::make_shared<Window>(Size { 560, 700 }, WindowStyle::TitledClosable);
    window->setTitle("Gallery");
    auto& content = window->contentView();
    auto const heading = addLabel(content, "GENERAL", { 24, 20, 240, 18 }, 11);
    heading->setFont({ .size = 11, .weight = FontWeight::Semibold });
    heading->setColor(SystemColor::SecondaryLabel);
    auto const hint
        = addLabel(content, "Drag to reorder · Set a hotkey or login", { 210, 182, 326, 18 }, 10);
    hint->setAlignment(TextAlignment::Right);
    hint->setColor(SystemColor::TertiaryLabel);
    addCheckBox(content, "Start Quillbar at login", { 26, 44, 300, 20 }, 13)
        ->setState(ButtonState::On);
    addLabel(content, "Menu bar icon:", { 28, 88, 120, 20 }, 13);
    auto const icons = add(content, std::make_shared<PopUpButton>(), { 200, 82, 336, 28 });
    for (auto const* symbol : { "heart.fill", "bolt", "star.fill", "moon.fill" })
        icons->addItem(item(symbol, symbol));
    icons->addItem(MenuItem::separator());
    icons->addItem(item("Custom Icon…"));
    addLabel(content, "Quick open hotkey:", { 28, 126, 120, 20 }, 13);
    auto const recorder = add(content, std::make_shared<Button>(), { 200, 120, 336, 28 });
    recorder->setFocusRing(FocusRing::None);
    recorder->setAttributedTitle(AttributedText { "Click to record",
        { .size = 12, .family = FontFamily::Monospaced }, SystemColor::PlaceholderText, false });
    static Token monitor;
    recorder->onClick = [sender = recorder.get()] {
        sender->setTitle("Press keys…");
        monitor = addKeyDownMonitor(
            [sender](KeyEvent const& event) {
                monitor.reset();
                sender->setAttributedTitle({});
                sender->setTitle(
                    std::to_string(event.keyCode) + "/" + std::to_string(event.modifiers));
                std::printf("recorded %s\n", sender->title().c_str());
                return KeyEventResult::Consume;
            },
            KeyMonitorReach::GrabKeyboard);
    };
    add(content, std::make_shared<Separator>(), { 24, 166, 512, 1 });
    buildTable(content);
    auto const scroll = add(content, std::make_shared<ScrollView>(), { 24, 404, 512, 156 });
    scroll->setBorder(ScrollBorder::Bezel);
    auto const list = std::make_shared<View>();
    list->setFrame({ 0, 0, 490, 26 * 1000 + 12 });
    for (int row = 0; row < 1000; ++row)
        addCheckBox(
            *list, "Shortcut agjpqy " + std::to_string(row), { 10, 6 + 26.0 * row, 460, 20 }, 13);
    scroll->setDocumentView(list);
    auto const close
        = add(content, std::make_shared<Button>(ButtonStyle::Push, "Close"), { 358, 636, 82, 30 });
    close->onClick = [shown = window.get()] { shown->close(); };
    auto const save
        = add(content, std::make_shared<Button>(ButtonStyle::Push, "Save"), { 456, 636, 80, 30 });
    save->setKeyEquivalent(ButtonKey::Return);
    save->onClick = [] { std::printf("save\n"); };
    auto const off = add(
        content, std::make_shared<Button>(ButtonStyle::Push, "Saved ✓"), { 456, 580, 80, 30 });
    off->setEnabled(false);
    auto const link
        = add(content, std::make_shared<Button>(ButtonStyle::Borderless), { 190, 636, 120, 22 });
    link->setAttributedTitle(AttributedText {
        "@somebody", { .size = 12, .weight = FontWeight::Medium }, SystemColor::Accent, true });
    auto const body = addLabel(content,
        "Pin the Shortcuts you use most and they'll live right in your menu bar, always a click "
        "away.\n\nSecond paragraph agjpqy.",
        { 24, 566, 330, 70 }, 12);
    body->setLineBreak(LineBreak::WordWrap);
    body->setAlignment(TextAlignment::Center);
    body->setColor(SystemColor::SecondaryLabel);
    auto const footer = addLabel(content, "Quillbar 1.0 agjpqy", { 26, 638, 180, 16 }, 11);
    footer->setColor(SystemColor::TertiaryLabel);
    return window;
}

class PalettePanel : public Panel {
public:
    using Panel::Panel;
    bool canBecomeKeyWindow() const override { return true; }
};

std::shared_ptr<Window> makePalette()
{
    auto panel = std::make_shared<PalettePanel>(Size { 400, 244 }, WindowStyle::Borderless);
    panel->setLevel(WindowLevel::Floating);
    panel->setBackground(WindowBackground::Clear);
    panel->setMovableByBackground(true);
    auto& content = panel->contentView();
    auto const ground = add(content, std::make_shared<EffectView>(), { 0, 0, 400, 244 });
    ground->setCornerRadius(12);
    ground->setBorderWidth(0.5);
    auto const field
        = add(content, std::make_shared<TextField>(TextFieldStyle::Plain), { 22, 14, 356, 30 });
    field->setPlaceholder("Type to jump…");
    field->setFont({ .size = 16, .weight = FontWeight::Medium });
    field->onTextChange
        = [sender = field.get()] { std::printf("typed %s\n", sender->text().c_str()); };
    add(content, std::make_shared<Separator>(), { 18, 52, 364, 1 });
    auto const scroll = add(content, std::make_shared<ScrollView>(), { 8, 60, 384, 150 });
    scroll->setVerticalScroller(VerticalScroller::None);
    scroll->setDrawsBackground(false);
    auto const table = std::make_shared<TableView>();
    table->setRowHeight(32);
    table->rowCount = [] { return std::size_t(100000); };
    auto* const shown = table.get();
    table->viewForRow = [shown](std::size_t row) {
        auto view = shown->takeReusableView("row");
        if (!view) {
            view = std::make_shared<View>();
            view->setIdentifier("row");
            addLabel(*view, {}, { 12, 0, 240, 32 }, 14);
            auto const group = addLabel(*view, "Work", { 270, 0, 102, 32 }, 11);
            group->setAlignment(TextAlignment::Right);
            group->setColor(SystemColor::SecondaryLabel);
        }
        static_cast<Label&>(*view->subviews()[0])
            .setText("Send a Mail to Jürgen " + std::to_string(row));
        return view;
    };
    table->onDoubleClick
        = [shown] { std::printf("double %zu\n", shown->clickedRow().value_or(999)); };
    scroll->setDocumentView(table);
    table->reloadData();
    table->selectRow(0);
    auto const footer = addLabel(content, "↑↓ move · ⏎ run · esc close", { 16, 218, 368, 16 }, 10);
    footer->setColor(SystemColor::TertiaryLabel);
    footer->setAlignment(TextAlignment::Right);
    panel->center();
    panel->makeKeyAndOrderFront();
    panel->makeFirstResponder(field);
    return panel;
}

} // namespace

int main(int argumentCount, char** arguments)
{
    std::setvbuf(stdout, nullptr, _IOLBF, 0);
    QApplication const application(argumentCount, arguments);
    if (argumentCount > 2 && std::string_view(arguments[2]) == "dark") {
        QPalette dark(QColor(0x2b, 0x2b, 0x2b), QColor(0x2b, 0x2b, 0x2b));
        dark.setColor(QPalette::Base, QColor(0x20, 0x20, 0x20));
        dark.setColor(QPalette::Highlight, QColor(0x30, 0x8c, 0xc6));
        QApplication::setPalette(dark);
    }
    for (int index = 0; index < 8; ++index)
        names.push_back("Shortcut" + std::to_string(index));
    names.push_back("A name that is much too long for its place");
    auto const settings = makeSettings();
    settings->center();
    settings->makeKeyAndOrderFront();
    bool const isAlone = argumentCount > 1 && std::string_view(arguments[1]) == "-alone";
    auto const palette = isAlone ? nullptr : makePalette();
    if (argumentCount > 1 && arguments[1][0] != '-')
        QTimer::singleShot(1000, [&] {
            auto const file = QString::fromLocal8Bit(arguments[1]);
            for (auto* const widget : QApplication::topLevelWidgets()) {
                if (widget->isVisible())
                    widget->grab().save(file
                        + (widget->width() > 500 ? QStringLiteral("-settings.png")
                                                 : QStringLiteral("-palette.png")));
            }
            QGuiApplication::primaryScreen()->grabWindow(0).save(
                file + QStringLiteral("-screen.png"));
            QApplication::quit();
        });
    return QApplication::exec();
}
