// The one place where the front end gives up.
#include "common/checked.h"

#include "runtime/vx_posix_reset.h"

#include <cstdlib>

void panelAssertFailed(const char* source, int line)
{
    vx_panic("*** ASSERT in %s at %d\n", source, line);
    abort(); // vx_panic does not come back; this only tells the compiler
}
