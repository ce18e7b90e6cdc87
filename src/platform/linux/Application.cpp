#include "platform/Application.h"

#include "platform/MainQueue.h"
#include "platform/linux/TextScale.h"
#include "platform/linux/desktop/ApplicationId.h"
#include "platform/linux/desktop/DesktopApplication.h"
#include "platform/linux/input/UserAction.h"
#include "platform/linux/process/ChildEnvironment.h"
#include "platform/linux/process/SignalNotifier.h"
#include "platform/linux/widgets/ColorScheme.h"
#include "platform/linux/widgets/Memory.h"

#include <QApplication>
#include <QFont>
#include <QSessionManager>

#include <array>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <string_view>

namespace quillbar::platform {

namespace {

using MakeDelegate = std::function<std::shared_ptr<ApplicationDelegate>()>;

bool isTerminating = false;

std::string_view variable(char const* name)
{
    auto const* const value = std::getenv(name);
    return value ? value : std::string_view {};
}

void prepareProcess()
{
    // A descriptor opened later must not become the standard input or output of a child.
    while (true) {
        auto const descriptor = ::open("/dev/null", O_RDWR);
        if (descriptor > STDERR_FILENO)
            ::close(descriptor);
        if (descriptor < 0 || descriptor > STDERR_FILENO)
            break;
    }
    // Inherited as ignored, it would make the system forget how children ended.
    ::signal(SIGCHLD, SIG_DFL);
    // A message to a terminal that has gone must not end the program.
    ::signal(SIGPIPE, SIG_IGN);
    // Nor must a limit on the size of files: like a full disk it makes a write fail.
    ::signal(SIGXFSZ, SIG_IGN);
}

bool hasDisplay()
{
    return !variable("DISPLAY").empty() || !variable("WAYLAND_DISPLAY").empty()
        || !variable("QT_QPA_PLATFORM").empty();
}

void chooseTheme()
{
    auto const theme = variable("QT_QPA_PLATFORMTHEME");
    if (!theme.empty() && qstrnicmp(theme.data(), "gtk", 3) != 0)
        return;
    // The GTK theme would more than double the program's memory and start-up time; KDE's, which is
    // part of Qt, brings the colours and fonts that the person chose there.
    auto const isKde = variable("XDG_CURRENT_DESKTOP").find("KDE") != std::string_view::npos;
    setOwnVariable("QT_QPA_PLATFORMTHEME", isKde ? "kde" : "generic");
}

/// Scales every window by the text size, unless the person set a scale for Qt's programs.
void scaleByTextSize()
{
    auto const scale = variable("QT_SCALE_FACTOR").empty() ? textScale() : 1;
    if (scale > 1)
        setOwnVariable("QT_SCALE_FACTOR", QByteArray::number(scale));
}

// KDE's theme brings the font in its size, which is in the scale of all windows already. Setting a
// style makes it bring that again.
void forgetFontSize()
{
    if (variable("QT_QPA_PLATFORMTHEME") != "kde")
        return;
    auto font = QApplication::font();
    font.setPointSizeF(usualKdeFontSize);
    QApplication::setFont(font);
}

void setUp(QApplication& application)
{
    QCoreApplication::setApplicationName(QStringLiteral("Quillbar"));
    QGuiApplication::setDesktopFileName(QLatin1String(applicationId));
    QGuiApplication::setQuitOnLastWindowClosed(false);
    QCoreApplication::setQuitLockEnabled(false);
    keepNoDrawnPictures();
    // The login entry starts the program; a session that restored it would start it twice.
    auto const neverRestart
        = [](QSessionManager& manager) { manager.setRestartHint(QSessionManager::RestartNever); };
    QObject::connect(&application, &QGuiApplication::commitDataRequest, &application, neverRestart,
        Qt::DirectConnection);
    QObject::connect(&application, &QGuiApplication::saveStateRequest, &application, neverRestart,
        Qt::DirectConnection);
}

/// The program from the claim of its name to the end of its event loop.
class Program {
public:
    Program(MakeDelegate const& makeDelegate, LaunchTokens tokens)
        : makeDelegate_(makeDelegate)
        , tokens_(std::move(tokens))
    {
    }
    Program(Program const&) = delete;
    Program& operator=(Program const&) = delete;
    ~Program()
    {
        if (delegate_)
            delegate_->applicationWillTerminate();
    }

    void start()
    {
        using Instance = DesktopApplication::Instance;
        DesktopApplication::claimName([this](Instance instance) {
            // A command to quit that started this process must not use up the welcome.
            if (isTerminating)
                return;
            if (instance == Instance::First)
                launch();
            else
                DesktopApplication::activateFirst(tokens_, terminate);
        });
    }

private:
    void launch()
    {
        noteUserAction(launchTime(tokens_.startupId));
        // First, for the start may wait for an alert to be answered.
        colorScheme_.follow();
        forgetFontSize();
        delegate_ = makeDelegate_();
        delegate_->applicationDidFinishLaunching();
        onTheDesktop_.serve(delegate_);
    }

    MakeDelegate const& makeDelegate_;
    LaunchTokens tokens_;
    std::shared_ptr<ApplicationDelegate> delegate_;
    DesktopApplication onTheDesktop_;
    ColorScheme colorScheme_;
};

} // namespace

int runApplication(int /*argumentCount*/, char** arguments, MakeDelegate const& makeDelegate)
{
    useOneHeap();
    prepareProcess();
    if (!hasDisplay()) {
        std::fputs(
            "quillbar: no graphical session: neither DISPLAY nor WAYLAND_DISPLAY is set\n", stderr);
        return 1;
    }
    auto tokens = LaunchTokens::fromEnvironment();
    chooseTheme();
    scaleByTextSize();
    // The program has no options, nor has Qt any here.
    int count = 1;
    std::array<char*, 2> nameOnly { arguments[0], nullptr };
    QApplication application(count, nameOnly.data());
    setUp(application);
    // A second one ends the process at once.
    SignalNotifier const quit(
        { SIGTERM, SIGINT, SIGHUP }, static_cast<int>(SA_RESETHAND), terminate);
    Program program(makeDelegate, std::move(tokens));
    program.start();
    return QApplication::exec();
}

void terminate()
{
    isTerminating = true;
    // Unlike quit(), it cannot be refused by a window.
    QCoreApplication::exit(0);
}

} // namespace quillbar::platform
