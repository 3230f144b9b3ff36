// The status screen of a real window, and its widgets by their names.
#ifndef TESTS_SCREENS_STATUSFIXTURE_H
#define TESTS_SCREENS_STATUSFIXTURE_H

#include "screens/windowfixture.h"

#include "common/qtcompat.h"
#include "screens/screenstatus.h"
#include "support/modelaccess.h"
#include "support/patience.h"
#include "support/records.h"
#include "widgets/tbattlabel.h"
#include "widgets/tlabel.h"
#include "widgets/tsignallabel.h"

#include <QFontMetrics>
#include <QFrame>
#include <QLabel>
#include <QPropertyAnimation>

namespace windowfixture {

// Waits until the bus thread has dealt with every change of the database up to now, and the GUI thread with
// what follows from it.
inline bool passBus()
{
    static int number = 0;
    terminal().set("cfg.power_up.switch_on_when_external_power", ++number);
    const bool passed = QTest::qWaitFor([] { return Access::powerUpSetting() == number; }, PATIENCE_MS);
    QCoreApplication::sendPostedEvents();
    return passed;
}

} // namespace windowfixture

class StatusFixture {
public:
    StatusFixture() : screen(static_cast<ScreenStatus*>(window.getScreenById(Screen::SCREEN_STATUS)))
    {
        // The language that the window has loaded is told to the screens later.
        QCoreApplication::sendPostedEvents();
        // While the terminal initialises a popup covers the screen.
        window.removePopupIfExist(EV_AP_GUI_STATUS_SYSTEM_INITIALIZING);
        // It also switches the poll off and on again from the GUI thread, and the bus thread may not notice
        // before something wakes it.
        windowfixture::passBus();
    }

    TLabel* icon(const char* name) const { return screen->findChild<TLabel*>(name); }
    QFrame* frame() const { return screen->findChild<QFrame*>("pSelectionFrame"); }
    bool frameShown() const { return !frame()->isHidden(); }
    QFrame* textFrame() const { return screen->findChild<QFrame*>("pStatusLabelFrame"); }
    TLabel* text() const { return icon("pStatusLabel"); }
    QPropertyAnimation* animation() const
    {
        return screen->findChild<QPropertyAnimation*>("pStatusLabelAnimation");
    }
    QLabel* top(const char* name) const { return icon(name)->findChild<QLabel*>("pTopLayerLabel"); }
    QString topText(const char* name) const { return top(name)->text(); }

    Window window;
    ScreenStatus* const screen;
};

namespace windowfixture {

// What the model starts with, as far as the status screen looks at it.
inline void resetStatus()
{
    terminal().erasePrefix("cfg.interfaces.");
    terminal().erasePrefix("ram.status.interfaces.");
    passBus();
    resetModel();
    for (int interface = INTERFACE_NAME_FIRST; interface <= INTERFACE_NAME_LAST; ++interface) {
        model()->setInterfaceState(static_cast<INTERFACE_NAME_ENUM>(interface), INTERFACE_STATE_ON);
    }
    model()->setControlledByATCommands(false);
    model()->setBondingEnabled(false);
    model()->setDhcpClientMode(false);
    model()->setWifiNumberOfClients(0);
    model()->setSignalLevel(0);
    model()->setSignalLevelIcon(0);
    model()->setBattData(battery_t(), battery_t());
    model()->setExternalSupplyPresent(false);
    model()->setWarningsPresent(false);
    model()->updateTranslatedStatusTexts();
}

// While it lives one connection of a bundle runs.
class RunningConnection {
public:
    RunningConnection()
    {
        Records start;
        start.number("ram.status.ongoing_data_sessions.0.status", 2)
            .number("ram.status.ongoing_data_sessions.0.time", 1000)
            .number("ram.status.ongoing_data_sessions.0.context.1.traffic_class", 3);
        model()->setActiveConnectionsAndBundles(start.count(), start.data());
    }
    ~RunningConnection()
    {
        Records end;
        end.deleted("ram.status.ongoing_data_sessions.0.status");
        model()->setActiveConnectionsAndBundles(end.count(), end.data());
    }
};

// A font whose lines are this high.
inline QFont fontOfHeight(int height)
{
    for (const char* family : {"DejaVu Sans", "New Century Schoolbook"}) {
        QFont font(family);
        for (int size = 4; size < 40; ++size) {
            font.setPixelSize(size);
            if (QFontMetrics(font).height() == height) {
                return font;
            }
        }
    }
    qFatal("no font of height %d", height);
}

inline int lineHeight(const StatusFixture& f)
{
    return QFontMetrics(f.text()->font()).height();
}

inline int width(const StatusFixture& f, const QString& text)
{
    return qtcompat::textWidth(QFontMetrics(f.text()->font()), text);
}

} // namespace windowfixture

#endif
