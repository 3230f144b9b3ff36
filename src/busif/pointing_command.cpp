// The pointing command: a bus signal of its own, outside the database.
//
// Any thread that may write to the bus; in fact the GUI thread.
#include "model/pointing_command.h"

#include <string.h>

#include "busif/cbusifthread.h"
#include "common/log.h"
#include "model/statusupdater.h"
#include "model/wan.h"

int send_pointing_msg(const char* data)
{
    const int extendedSystemStatus = StatusUpdater::getStatusUpdater()->getExtendedSystemStatus();
    logDebug() << "cbus_if: send_pointing_msg: data=" << data;
    logDebug() << "send_pointing_msg(): extendedSystemStatus=" << extendedSystemStatus;
    // The status comes over the bus: where it says that the terminal is up, there is a connection. A null
    // one is refused all the same, with the same line.
    if (extendedSystemStatus <= SYSTEM_STATUS_NOT_UP_LAST || !conn) {
        logDebug() << "ERROR: send_pointing_msg(): Extended system status=" << extendedSystemStatus
                   << " , pointing not allowed yet.";
        return -1;
    }
    return cbus_send_signal(conn, "bp_ctrl.pointing", data, static_cast<uint32_t>(strlen(data) + 1));
}
