#pragma once

#include "ui/WindowController.h"

#include <string>

namespace quillbar {

/// Explains, once, what Quillbar needs of the system. It neither checks nor asks for anything.
class PermissionWindowController : public WindowController {
public:
    PermissionWindowController();

private:
    struct Permission;

    void buildUserInterface() override;
    void buildPermission(platform::View& content, Permission const& permission);
    void buildButtons(platform::View& content);
    void gotItTapped();
    void openSystemSettings();
};

} // namespace quillbar
