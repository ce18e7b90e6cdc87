#include "platform/linux/input/UserAction.h"

namespace quillbar::platform {

UserAction& lastUserAction()
{
    static UserAction action;
    return action;
}

void noteUserAction(std::uint32_t time)
{
    lastUserAction().time = time;
    lastUserAction().shownWindow.clear();
    lastUserAction().activatedWindow.clear();
}

} // namespace quillbar::platform
