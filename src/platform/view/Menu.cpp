#include "platform/view/Menu.h"

#include "platform/Application.h"

namespace quillbar::platform {

void performAction(MenuItem const& item)
{
    if (!item.isEnabled)
        return;
    if (item.command == StandardCommand::Terminate)
        terminate();
    else if (item.action)
        item.action(item);
}

} // namespace quillbar::platform
