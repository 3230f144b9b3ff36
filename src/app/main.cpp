// The process: tells the application manager that it is up, makes the application and the main window,
// and runs until the event loop ends.
#include "app/guiapp.h"
#include "app/window.h"
#include "common/qtcompat.h"
#include "runtime/appmgr.h"
#include "runtime/vx_log.h"

#include <cstdio>
#include <syslog.h>
#include <unistd.h>

// The first two lines go to the log before the application opens it, so they bear the program's name
// and the default facility.
static int runPanel(int& argc, char** argv)
{
    vx_slog(LOG_DEBUG, "%lu: main(): About to send appmgr_signal()", qtcompat::threadIdNumber());
    appmgr_signal();
    vx_slog(LOG_DEBUG, "%lu: main():About to run GuiApp::createInstance", qtcompat::threadIdNumber());
    GuiApp::createInstance(argc, argv);
    vx_slog(LOG_DEBUG, "%lu: main(): About to create window", qtcompat::threadIdNumber());
    Window window(nullptr);
    vx_slog(LOG_DEBUG, "%lu: main(): Done creating window", qtcompat::threadIdNumber());
    return QApplication::exec();
}

int main(int argc, char** argv)
{
    const int result = runPanel(argc, argv);
    // The bus thread never ends, so nothing with static storage may be destroyed under it.
    fflush(nullptr);
    _exit(result);
}
