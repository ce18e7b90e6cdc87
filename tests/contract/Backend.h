#pragma once

/// What the contract tests need of the backend under test; each backend defines it for itself.
namespace quillbar::test {

/// Lets the backend carry out what it has put off.
void settle();

} // namespace quillbar::test
