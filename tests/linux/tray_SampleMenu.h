#pragma once

#include "platform/view/Menu.h"

#include <functional>
#include <string>
#include <utility>

namespace quillbar::testing {

inline platform::MenuItem command(
    std::string title, std::function<void(std::string const&)> run = {})
{
    platform::MenuItem item;
    item.title = std::move(title);
    item.action = [run = std::move(run)](platform::MenuItem const& chosen) {
        if (run)
            run(chosen.representedObject.value_or(chosen.title));
    };
    return item;
}

inline platform::MenuItem pin(
    std::string const& name, std::function<void(std::string const&)> run = {})
{
    auto item = command(name, std::move(run));
    item.representedObject = name;
    return item;
}

inline platform::MenuItem heading(std::string const& title)
{
    platform::MenuItem item;
    item.title = title;
    item.isEnabled = false;
    return item;
}

} // namespace quillbar::testing
