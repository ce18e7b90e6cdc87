#pragma once

#include "platform/HotkeyObstacles.h"
#include "platform/Notifications.h"
#include "platform/view/Alert.h"
#include "platform/view/StatusItem.h"
#include "platform/view/Window.h"

#include <chrono>
#include <cstdint>
#include <deque>
#include <filesystem>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

/// The backend that records what the program does and answers as a test prepared it. It has no
/// display, and its clock moves only when it is told to. Main thread, which is the one that runs
/// the test.
namespace quillbar::platform::headless {

struct RegisteredHotkey {
    std::uint32_t keyCode = 0;
    std::uint32_t modifiers = 0;
    std::uint32_t signature = 0;
    std::uint32_t id = 0;
    std::string title;

    friend bool operator==(RegisteredHotkey const&, RegisteredHotkey const&) = default;
};

enum class ChildStart : std::uint8_t { Succeeds, Fails };

/// What becomes of a child process. By default it succeeds at once, without output.
struct ChildScript {
    ChildStart start = ChildStart::Succeeds;
    /// Empty when a signal ended it.
    std::optional<int> exitStatus = 0;
    std::chrono::milliseconds duration { 0 };
    /// What readChildOutput() returns, at once.
    std::optional<std::string> output = std::string();
};

struct StartedChild {
    std::vector<std::string> arguments;
    std::chrono::milliseconds startedAt { 0 };
};

/// What the program has done since the last reset(), and what it is answered.
struct Record {
    /// The names of the platform functions that had an effect, in the order of the calls.
    std::vector<std::string> journal;

    /// Virtual time since the last reset().
    std::chrono::milliseconds now { 0 };
    /// Keyed by the time at which it is due; work due at the same time is in the order of posting.
    std::multimap<std::chrono::milliseconds, std::function<void()>> waitingWork;
    bool isTerminated = false;
    Menu mainMenu;

    /// The visible windows, the front one first.
    std::vector<Window*> windows;
    /// Null while no window has the keyboard. A window gets it as soon as it asks.
    Window* keyWindow = nullptr;
    /// The status item that exists, or null.
    StatusItem* statusItem = nullptr;

    std::vector<Alert> shownAlerts;
    /// The answers to the next alerts. An alert without one is answered with its last button.
    std::deque<AlertAnswer> alertAnswers;
    /// Called, if set, while an alert is shown; what was posted runs afterwards, before the answer.
    std::function<void(Alert const&)> onAlert;

    NotificationAuthorization notificationAuthorization = NotificationAuthorization::NotDetermined;
    /// What the person answers to the request for authorisation.
    NotificationAuthorization notificationAnswer = NotificationAuthorization::Denied;
    std::vector<Notification> postedNotifications;

    /// The present registrations, in the order in which they were made.
    std::vector<RegisteredHotkey> registeredHotkeys;
    /// The combinations that another program owns.
    std::set<KeyCombination> refusedHotkeys;
    /// What hotkeyObstacles() answers; nothing for any other combination.
    std::map<KeyCombination, HotkeyObstacle> hotkeyObstacles;

    /// What becomes of the children with these arguments.
    std::map<std::vector<std::string>, ChildScript> childScripts;
    /// The children that runChild() was asked for, those that failed to start too.
    std::vector<StartedChild> startedChildren;
    /// The arguments of every readChildOutput().
    std::vector<std::vector<std::string>> readChildren;

    std::vector<std::filesystem::path> applicationSupportFolders;
    std::filesystem::path stateFolder;
    /// The names that symbolExists() denies; all others exist.
    std::set<std::string, std::less<>> missingSymbols;
};

[[nodiscard]] Record& record();

/// Forgets all that was recorded, prepared and posted. Destroy what is under test first.
void reset();

/// Moves the clock on by `duration` and runs all work that falls due, each at its own time.
void advance(std::chrono::milliseconds duration);
/// Runs the work that is due now.
void runPosted();

/// Presses the combination, which does nothing unless it is registered.
void fire(std::uint32_t keyCode, std::uint32_t modifiers);
/// Calls the observers of observeHotkeyObstacles().
void tellHotkeyObstacleObservers();

} // namespace quillbar::platform::headless
