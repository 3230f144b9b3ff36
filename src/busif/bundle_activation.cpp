// Starting a bundle. Bus thread only.
#include "busif/bundle_activation.h"

#include "runtime/vx_log.h"

int start_bundle(int bundleNumber)
{
    vx_slog(3, "start_bundle: bundleNumber=%d can't be started by this display yet", bundleNumber);
    return -1;
}
