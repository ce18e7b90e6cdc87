#include "platform/Application.h"

#include <QCoreApplication>

namespace quillbar::platform {

// Weak, so that the program's own one is taken where it is linked.
__attribute__((weak)) void terminate()
{
    QCoreApplication::quit();
}

} // namespace quillbar::platform
