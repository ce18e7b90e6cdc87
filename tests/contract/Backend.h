#pragma once

#include <chrono>
#include <functional>

/// What the contract tests need of the backend under test; each backend defines it for itself.
namespace quillbar::test {

/// Lets the backend carry out what it has put off.
void settle();

/// Lets the main thread's events come in until `isDone`. Returns at once when that holds already,
/// and fails the test when it never does.
void waitUntil(std::function<bool()> const& isDone);

/// The time by which delays are measured.
[[nodiscard]] std::chrono::milliseconds now();

} // namespace quillbar::test
