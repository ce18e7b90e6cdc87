#include "contract/Backend.h"

void quillbar::test::settle() { }
