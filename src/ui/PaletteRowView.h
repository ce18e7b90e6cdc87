#pragma once

#include "platform/view/Label.h"
#include "platform/view/View.h"

#include <memory>
#include <string>

namespace quillbar {

/// One row of the palette: a shortcut's name with its group at the right edge, or a message.
class PaletteRowView : public platform::View {
public:
    enum class Role : std::uint8_t { Shortcut, Message };

    PaletteRowView();

    /// Sets everything that differs from row to row. A message never shows a group.
    void setRole(Role role, std::string name, std::string group);

protected:
    void layout() override;

private:
    std::shared_ptr<platform::Label> const nameLabel_;
    std::shared_ptr<platform::Label> const groupLabel_;
};

} // namespace quillbar
