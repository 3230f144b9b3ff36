// Instructions of the whole display where it grows: alerts that arrive and go, with popups and menu; the list
// of bundles; texts. Started by `run` under callgrind, beside a terminal of its own.
//
// The model is fed on the GUI thread, so that all that follows is counted there; the bus thread rests
// meanwhile.
#include "app/guiapp.h"
#include "app/window.h"
#include "bench/counted.h"
#include "common/log.h"
#include "model/event_ids.h"
#include "model/statusupdater.h"
#include "screens/screenpopup.h"
#include "screens/screenstatus.h"
#include "support/modelaccess.h"

#include <QElapsedTimer>
#include <QLabel>

#include <cstdio>
#include <unistd.h>

namespace {

Window* window;

StatusUpdater& model()
{
    return *StatusUpdater::getStatusUpdater();
}

void settle()
{
    QCoreApplication::sendPostedEvents();
    QCoreApplication::processEvents();
}

ScreenPopup& popups()
{
    return *static_cast<ScreenPopup*>(window->getScreenById(Screen::SCREEN_POPUP));
}

// --- Alerts

// All of different kinds, so that each has a popup of its own.
QList<fmmi_evt_t> alerts(int count, int64_t newestMs)
{
    QList<fmmi_evt_t> events;
    for (int i = 0; i < count; ++i) {
        fmmi_evt_t event;
        event.identifier = 0x20000 + unsigned(i);
        event.severity = EVENT_WARNING;
        event.state = 2;
        event.time = newestMs - 1000 * i;
        qstrncpy(event.shorttext, "Temperature out of range", sizeof(event.shorttext));
        events.append(event);
    }
    return events;
}

// The popups that stay for their minimum time are closed as the user would, outside of what counts.
void dismissAll()
{
    model().setSystemEvents(QList<fmmi_evt_t>());
    while (!popups().events().isEmpty())
        popups().closePopup(popups().events().first().eventId, true);
    settle();
}

void countAlerts()
{
    for (int count : {1, 10, 100, 1000}) {
        dismissAll();
        const QList<fmmi_evt_t> events = alerts(count, 1600000000000);
        counted::once("alerts arrive: popups and menu, by alerts", "", count, [&events] {
            model().setSystemEvents(events);
            settle();
        });
        QList<fmmi_evt_t> more = events;
        more += alerts(1, 1600000001000);
        more.last().identifier = 0x30000;
        counted::once("one more alert: popup and menu, by alerts", "", count, [&more] {
            model().setSystemEvents(more);
            settle();
        });
        window->scrollToAlertMenuAndExpand();
        settle();
        counted::warm("rows of the alerts made anew, by alerts", "", count, [] {
            emit model().eventListChanged();
            settle();
        });
        counted::once("alerts go: popups and menu, by alerts", "", count, [] {
            model().setSystemEvents(QList<fmmi_evt_t>());
            settle();
        });
    }
    dismissAll();
}

// --- Bundles

void countBundles()
{
    for (int count : {1, 10, 100, 1000}) {
        QList<bundle_t> bundles;
        for (int i = 0; i < count; ++i) {
            bundle_t bundle;
            bundle.bundleNumber = i;
            bundle.name = QString("Bundle %1").arg(i);
            bundle.status = BUNDLE_STATUS_IDLE;
            bundle.connections.append(connection_t());
            bundles.append(bundle);
        }
        Access::definedBundles() = bundles;
        window->showScreen(Screen::SCREEN_ACTION, false);
        settle();
        counted::warm("rows of the bundles made anew, by bundles", "", count, [] {
            emit model().definedBundlesCfgChanged();
            settle();
        });
        counted::warm("a bundle changes its state, by bundles", "", count, [count] {
            emit model().bundleStateChanged(count - 1, BUNDLE_STATUS_IDLE);
            settle();
        });
    }
    window->showScreen(Screen::SCREEN_STATUS, false);
    settle();
}

// --- Texts

QString words(int length)
{
    return QString("A word or two, ").repeated(length / 15 + 1).left(length);
}

void showPopup(const QString& text)
{
    popup_event_t popup;
    popup.eventId = EV_AP_GUI_CUSTOM_TEXT;
    popup.severity = EVENT_WARNING;
    popup.closeHandling = POPUP_CLOSE_OK;
    popup.timeStamp = QDateTime::currentDateTime();
    popup.text = text;
    popups().addEvent(popup);
    settle();
}

void countTexts()
{
    for (int length : {1, 10, 100, 1000, 10000}) {
        showPopup("");
        counted::warm("a popup's text shown, by characters", "", length, [length] {
            showPopup(words(length) + ".");
            showPopup(words(length));
        });
    }
    dismissAll();
    window->showScreen(Screen::SCREEN_STATUS, false);
    settle();
    ScreenStatus* const screen = window->findChild<ScreenStatus*>();
    QLabel* const label = screen->findChild<QLabel*>("pStatusLabel");
    if (!label)
        std::fprintf(stderr, "counted_screens: no label of the status\n");
    for (int length : {1, 10, 100, 1000}) {
        counted::warm("a status text shown, by characters", "", length, [screen, length] {
            screen->setStatusText("-");
            screen->setStatusText(words(length));
            settle();
        });
    }
}

} // namespace

int main(int argc, char** argv)
{
    GuiApp* const application = GuiApp::createInstance(argc, argv);
    window = new Window(nullptr);
    QElapsedTimer start;
    start.start();
    while (!window->isVisible() && start.elapsed() < 300000)
        application->processEvents(QEventLoop::WaitForMoreEvents, 100);
    if (!window->isVisible()) {
        std::fprintf(stderr, "counted_screens: the window did not show itself\n");
        return 1;
    }
    setDebugLogWanted(false);
    settle();
    countAlerts();
    countBundles();
    countTexts();
    std::fflush(nullptr);
    _exit(0); // the bus thread still runs
}
