#pragma once

namespace quillbar::platform {

/// Has every key press of the program's windows pass through the monitors and the portable windows
/// before AppKit gets it. Once is enough; lasts as long as the program. Main thread.
void installKeyFilter();

} // namespace quillbar::platform
