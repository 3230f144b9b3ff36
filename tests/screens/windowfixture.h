// The application, the bus thread and a server with an empty database, for tests of the main window and
// its screens. One application in a program; each test makes its own window and deletes it.
//
// The initial reads are over when the test begins, so that values set at the model by hand stay; the
// state of the SIM is read by the bus thread once a second and must be set in the database.
#ifndef TESTS_SCREENS_WINDOWFIXTURE_H
#define TESTS_SCREENS_WINDOWFIXTURE_H

#include "app/guiapp.h"
#include "app/window.h"
#include "common/paths.h"
#include "model/event_ids.h"
#include "model/statusupdater.h"
#include "sim/syslogtap/syslogtap.h"
#include "sim/terminal.h"
#include "support/emptyterminal.h"
#include "support/messages.h"
#include "support/patience.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <functional>
#include <string>
#include <unistd.h>

namespace windowfixture {

inline sim::Terminal*& terminalPointer()
{
    static sim::Terminal* terminal = nullptr;
    return terminal;
}
inline sim::Terminal& terminal()
{
    return *terminalPointer();
}
inline StatusUpdater* model()
{
    return StatusUpdater::getStatusUpdater();
}

// Whether a line of the log holds the text.
inline bool logHolds(const std::string& part)
{
    for (const syslogtap::Line& line : syslogtap::lines()) {
        if (line.text.find(part) != std::string::npos) {
            return true;
        }
    }
    return false;
}

// Brings the SIM to a state of SIM_STATUS_ENUM by way of the database and waits for the model.
inline bool setSim(int status)
{
    const struct {
        int status;
        const char* text;
    } texts[] = {{SIM_INVALID, "Invalid"},
                 {SIM_PIN_NEEDED, "Needed"},
                 {SIM_BLOCKED, "Blocked"},
                 {SIM_READY, "Valid"},
                 {SIM_LOCKED, "SIM Lock Blocked"}};
    // A window's construction switches the poll off and on, which the bus thread notices when it next
    // wakes; any change that is signalled to it will do.
    static int nudges = 0;
    terminal().set("ram.status.position.nudge", ++nudges);
    terminal().erase("rmcfg.platform.usim.pin.status");
    if (status == SIM_STATUS_UNKNOWN) {
        terminal().erase("rmcfg.platform.usim.status");
    } else if (status == SIM_NOT_PRESENT) {
        terminal().set("rmcfg.platform.usim.status", 0);
    } else {
        for (const auto& row : texts) {
            if (row.status == status) {
                terminal().set("rmcfg.platform.usim.pin.status", std::string(row.text));
            }
        }
        terminal().set("rmcfg.platform.usim.status", 1);
    }
    return QTest::qWaitFor([status] { return model()->getSimStatus() == status; }, PATIENCE_MS);
}

// What the model starts with, as far as the window looks at it.
inline void resetModel()
{
    model()->setSystemEvents(QList<fmmi_evt_t>());
    model()->setSwUploadStatus(0, 0, 512);
    model()->setPointingMode(POINTING_STATUS_NOT_POINTED);
    model()->setPointingAtStartup(1);
    model()->setWanActive(WAN_ACTIVE_UNKNOWN);
    model()->setModemActivated(-1);
    model()->setModemPresent(-1);
    model()->setWanUserSelection(WAN_USER_SELECTION_UNKNOWN);
    model()->setModemOrBganAtStartup(STARTUP_WAN_UNKNOWN);
    model()->setExtendedSystemStatus(0);
    model()->setLanguage(LANG_ENGLISH);
    model()->setCiphering(3);
    model()->setBrightnessAllowed(false);
    QCoreApplication::sendPostedEvents();
}

// Starts everything and runs the test object; returns the program's exit status.
template <typename Test> int run(int argc, char** argv, const sim::TerminalOptions& options = emptyTerminal())
{
    terminalPointer() = new sim::Terminal(options);
    if (!terminal().running()) {
        qFatal("no terminal: %s", terminal().error().c_str());
    }
    terminal().useForProcess();
    syslogtap_start();
    char debugArgument[] = "logQtDebug";
    char* applicationArguments[] = {argv[0], debugArgument, nullptr};
    int applicationCount = 2;
    GuiApp::createInstance(applicationCount, applicationArguments);
    if (!QTest::qWaitFor([] { return logHolds("About to run fdloop_loop"); }, PATIENCE_MS)) {
        qFatal("the bus thread did not come up");
    }
    QCoreApplication::sendPostedEvents();
    Test test;
    const int result = QTest::qExec(&test, argc, argv);
    fflush(nullptr);
    _exit(result); // the bus thread never ends
}

} // namespace windowfixture

#endif
