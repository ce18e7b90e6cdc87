#pragma once

#include "model/Config.h"

namespace quillbar {

/// Shortly from now, runs the pinned shortcuts that are flagged for it, one after another and
/// without feedback. Later changes of the configuration do not alter the schedule.
void scheduleAutoRun(Config const& config);

} // namespace quillbar
