#pragma once

namespace quillbar::test {

/// Lets the backend under test carry out what it has put off.
void settle();

} // namespace quillbar::test
