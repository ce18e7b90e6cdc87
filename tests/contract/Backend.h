#pragma once

#include <functional>

/// What the contract tests need of the backend under test; each backend defines it for itself.
namespace quillbar::test {

/// Lets the backend carry out what it has put off.
void settle();

/// Runs the backend's event loop until `isDone`.
void runUntil(std::function<bool()> const& isDone);

/// Has the person close the alert that is shown.
void closeAlert();

} // namespace quillbar::test
