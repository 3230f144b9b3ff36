// What the fuzz targets with a real window share: the application with its bus thread, a terminal with an
// empty database around it, as in the tests, and the popup screen of a window in normal operation.
#ifndef TESTS_FUZZ_WINDOWTARGET_H
#define TESTS_FUZZ_WINDOWTARGET_H

#include "fuzz/qttarget.h"

#include "screens/popupfixture.h"

#include <csignal>

namespace fuzz {

// Once. The window lives to the end of the process.
inline PopupFixture* startWindow()
{
    using namespace windowfixture;
    prepareQt();
    sim::TerminalOptions options = emptyTerminal();
    options.record = false;
    terminalPointer() = new sim::Terminal(options);
    terminal().useForProcess();
    syslogtap_start();
    static char name[] = "fuzz", debug[] = "logQtDebug";
    static char* arguments[] = {name, debug, nullptr};
    static int count = 2;
    GuiApp::createInstance(count, arguments);
    if (!QTest::qWaitFor([] { return logHolds("About to run fdloop_loop"); }, 60000))
        fail("the bus thread did not come up");
    syslogtap_stop();
    syslogtap_clear();
    // The application has handlers of its own, which would hide from libFuzzer that it has found something.
    for (int signo : {SIGABRT, SIGSEGV, SIGBUS, SIGILL, SIGFPE, SIGINT, SIGTERM})
        signal(signo, SIG_DFL);
    resetForPopups();
    // Without a radio module that operates, the bus thread's poll would forget where the antenna points.
    terminal().setString("rmcfg.sys.status.mode", "operating");
    if (!QTest::qWaitFor([] { return model()->getRmOperating() == 1; }, 60000))
        fail("the radio module is not polled");
    atexit([] { _exit(0); }); // the bus thread never ends; nothing may be destroyed under it
    return new PopupFixture;
}

// An empty queue, nothing on display, the antenna at rest.
inline void resetPopups(PopupFixture& fixture)
{
    fixture.autoClose()->stop();
    while (!fixture.screen->events().isEmpty())
        fixture.screen->closePopup(fixture.screen->events().at(0).eventId, true);
    fixture.autoClose()->stop();
    windowfixture::model()->setPointingMode(POINTING_STATUS_POINTED);
    QCoreApplication::processEvents();
    fixture.screen->showNextEvent();
    check(fixture.screen->events().isEmpty(), "the queue fills itself");
}

} // namespace fuzz

#endif
