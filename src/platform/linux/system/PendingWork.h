#pragma once

namespace quillbar::platform {

/// Destroys, without running it, all work that waits in the main queue or for its delay: it may
/// hold windows, which must not outlive the application object. Main thread.
void dropPendingWork();

} // namespace quillbar::platform
