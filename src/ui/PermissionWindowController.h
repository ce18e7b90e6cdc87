#pragma once

#include "ui/WindowController.h"

namespace quillbar {

/// Explains, once, what Quillbar needs of the system. It neither checks nor asks for anything.
class PermissionWindowController : public WindowController {
public:
    PermissionWindowController();

private:
    void buildUserInterface() override;
    void buildButtons();
};

} // namespace quillbar
