#include "platform/view/TextField.h"
#include "support/HeadlessTest.h"
#include "support/Person.h"
#include "ui/HotkeyRecorder.h"

namespace quillbar {
namespace {

using test::click;
using test::press;

class Recording : public test::HeadlessTest {
protected:
    Recording()
    {
        window->contentView().addSubview(recorder);
        window->contentView().addSubview(field);
        recorder->onRecord = [this](auto keyCode, auto modifiers) {
            recorded.push_back({ keyCode, modifiers });
        };
        window->makeKeyAndOrderFront();
    }

    std::shared_ptr<platform::Window> window = std::make_shared<platform::Window>(
        platform::Size { 300, 100 }, platform::WindowStyle::TitledClosable);
    std::shared_ptr<HotkeyRecorder> recorder = std::make_shared<HotkeyRecorder>();
    std::shared_ptr<platform::TextField> field = std::make_shared<platform::TextField>();
    std::vector<Hotkey> recorded;
};

TEST_F(Recording, NextKey_becomesTheHotkeyAndGoesNoFurther)
{
    struct {
        std::uint32_t keyCode;
        platform::KeyModifiers modifiers;
        char const* text;
    } const cases[] = {
        { 17, 0x900, "⌘⌥·17" },
        { 53, 0, "Esc" },
        { 36, 0, "Return" },
        { 57, 0, "·57" },
        { 2, 0x10200, "⇧C" },
    };
    for (auto const& [keyCode, modifiers, text] : cases) {
        recorded.clear();
        EXPECT_TRUE(click(recorder));
        EXPECT_EQ(recorder->visibleText(), "Press keys…");
        EXPECT_TRUE(platform::isKeyboardGrabWanted());
        EXPECT_TRUE(press(keyCode, modifiers));
        EXPECT_FALSE(platform::isKeyboardGrabWanted());
        EXPECT_EQ(recorder->visibleText(), text);
        EXPECT_EQ(recorded, (std::vector<Hotkey> { { keyCode, modifiers & 0xFFFF } }));
        EXPECT_FALSE(press(keyCode, modifiers)) << "while not recording";
    }
    EXPECT_EQ(recorded.size(), 1u);
}

TEST_F(Recording, StartedByKeyboard_returnsTheFocus)
{
    window->makeFirstResponder(recorder);
    press(platform::key::space);
    EXPECT_EQ(window->firstResponder(), nullptr);
    press(platform::key::space);
    EXPECT_EQ(recorder->visibleText(), "Space");
    EXPECT_EQ(window->firstResponder(), recorder);
}

TEST_F(Recording, ClosedWindow_endsItEachTime)
{
    for (int opening = 0; opening < 2; ++opening) {
        window->makeKeyAndOrderFront();
        click(recorder);
        window->userClosed();
        EXPECT_FALSE(recorder->isRecording());
        window->makeKeyAndOrderFront();
        EXPECT_FALSE(platform::isKeyboardGrabWanted());
    }
}

} // namespace
} // namespace quillbar
