#pragma once

#include "platform/LoginEntry.h"
#include "platform/Notifications.h"
#include "platform/SystemHotkeys.h"
#include "platform/view/Alert.h"
#include "platform/view/Menu.h"
#include "platform/view/StatusItem.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <set>
#include <string>
#include <vector>

/// The backend that records what the program does and answers as a test prepared it. Everything
/// is for the main thread, which is the one that runs the test.
namespace quillbar::platform::headless {

/// Forgets all that was recorded and prepared, drops waiting work and deletes the temporary home.
/// The clock stands at 0 again. Destroy what is under test first, except hotkeyManager(), whose
/// registrations stay.
void reset();

/// The kinds of effects in the order in which they came, named after the platform functions; for
/// asserting an order across topics.
[[nodiscard]] std::vector<std::string> const& journal();

// Main queue

/// Moves the clock on by `duration` and runs all work that falls due, each at its own time.
void advance(std::chrono::milliseconds duration);
/// Runs the work that is due now.
void runPosted();
/// Virtual time since the last reset().
[[nodiscard]] std::chrono::milliseconds now();
/// Whether any work waits, due or not.
[[nodiscard]] bool isWorkWaiting();

// Application

[[nodiscard]] Menu const& mainMenu();
[[nodiscard]] int activationCount();

// Status item

/// The status item that exists, or null.
[[nodiscard]] StatusItem* statusItem();
/// How often the face and the menu were brought over.
[[nodiscard]] int statusButtonSyncCount();
[[nodiscard]] int statusMenuSyncCount();
/// Whether the next status items get a face; they do unless told otherwise.
void setStatusItemsHaveButtons(bool haveButtons);

// Notifications

/// The authorisation as it is now; NotDetermined unless told otherwise.
void setNotificationAuthorization(NotificationAuthorization authorization);
/// What the person answers to the request for authorisation: Denied unless told otherwise.
void setNotificationAnswer(NotificationAuthorization answer);
[[nodiscard]] int authorizationRequestCount();
[[nodiscard]] std::vector<Notification> const& postedNotifications();

// System hotkeys

struct RegisteredHotkey {
    std::uint32_t keyCode = 0;
    std::uint32_t modifiers = 0;
    std::uint32_t signature = 0;
    std::uint32_t id = 0;
    std::string title;

    friend bool operator==(RegisteredHotkey const&, RegisteredHotkey const&) = default;
};

/// The registrations that live, in the order of registration; they outlive reset().
[[nodiscard]] std::vector<RegisteredHotkey> registeredHotkeys();
/// Presses the combination; nothing happens when it is not registered.
void fire(std::uint32_t keyCode, std::uint32_t modifiers);
/// Reports a press of that id to the program, registered or not.
void fire(std::uint32_t id);
/// Has another program own the combination.
void refuseHotkey(std::uint32_t keyCode, std::uint32_t modifiers);
/// Prepares what hotkeyObstacles() says of the combination, without telling anybody; nothing unless
/// told otherwise.
void setHotkeyObstacle(KeyCombination combination, std::optional<HotkeyObstacle> obstacle);
/// Reports that obstacles may have changed.
void tellHotkeyObstacleObservers();
[[nodiscard]] int hotkeyHandlerInstallCount();

// Child processes

enum class ChildStart : std::uint8_t { Succeeds, Fails };

/// What becomes of a child.
struct ChildScript {
    ChildStart start = ChildStart::Succeeds;
    /// Nothing stands for a signal.
    std::optional<int> exitStatus = 0;
    std::chrono::milliseconds duration { 0 };
    /// What readChildOutput() returns, at once.
    std::optional<std::string> output = std::string();
};

struct StartedChild {
    std::vector<std::string> arguments;
    std::chrono::milliseconds startedAt { 0 };

    friend bool operator==(StartedChild const&, StartedChild const&) = default;
};

/// Prepares every child with these arguments. Others succeed at once, without output.
void scriptChild(std::vector<std::string> arguments, ChildScript script);
/// The children that runChild() was asked for, those that failed to start too.
[[nodiscard]] std::vector<StartedChild> const& startedChildren();
/// The arguments of every readChildOutput().
[[nodiscard]] std::vector<std::vector<std::string>> const& readChildren();

// Alerts

/// Prepares the answer to the next alert that has none yet. Without one the last button is chosen.
void queueAlertAnswer(AlertAnswer answer);
/// As above; called while the alert is shown, so it can look at the program behind it.
void queueAlertAnswer(std::function<AlertAnswer(Alert const&)> answer);
[[nodiscard]] std::vector<Alert> const& shownAlerts();

// Workspace, login entry, updater

[[nodiscard]] std::vector<std::string> const& openedAddresses();

/// Whether the system has security settings; it does unless told otherwise.
void setHasSecuritySettings(bool haveSecuritySettings);
[[nodiscard]] int securitySettingsOpenings();

struct WrittenLoginEntry {
    LoginEntry entry;
    LoginSwitch loginSwitch = LoginSwitch::Keep;
};

/// The login entry that stands now.
[[nodiscard]] std::optional<WrittenLoginEntry> const& loginEntry();
/// The labels whose entry was to be removed.
[[nodiscard]] std::vector<std::string> const& removedLoginLabels();

/// Whether the system has an updater; it does unless told otherwise.
void setHasUpdater(bool hasUpdater);
[[nodiscard]] int updateCheckCount();

// Folders and symbols

/// A fresh folder, made on first use.
[[nodiscard]] std::filesystem::path const& temporaryHome();
/// Replaces the application-support folders; by default one inside temporaryHome().
void setApplicationSupportFolders(std::vector<std::filesystem::path> paths);
void setExecutablePath(std::string path);
void setBundleVersion(std::string version);

/// The names that symbolExists() denies; all others exist.
void setMissingSymbols(std::set<std::string, std::less<>> names);
/// Has the bundle carry this image under every name; it carries none unless told otherwise.
void setBundleImage(Image image);

} // namespace quillbar::platform::headless
