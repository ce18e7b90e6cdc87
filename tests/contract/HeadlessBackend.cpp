#include "contract/Backend.h"

namespace quillbar::test {

void settle() { }

} // namespace quillbar::test
