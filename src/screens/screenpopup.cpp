// The popup screen without its queue; the header tells what that means.
#include "screens/screenpopup.h"

#include "common/log.h"
#include "model/event_ids.h"
#include "model/event_texts.h"
#include "model/statusupdater.h"
#include "runtime/config_client_api.h"

#include <QApplication>

ScreenPopup::ScreenPopup(Window* pWindow) : Screen(pWindow, Screen::SCREEN_POPUP, nullptr)
{
    // Direct: the wake-up must have happened when the key reaches its screen.
    connect(qApp, SIGNAL(someKeyWasPressed()), this, SLOT(restartScreenSaverTimer()), Qt::DirectConnection);
}

void ScreenPopup::init()
{
    // The model starts as subscribed without having told anybody; only a change is written to the bus.
    pStatusUpdater->subscribeToChanges(false);
    pStatusUpdater->subscribeToChanges(true);
}

void ScreenPopup::restartScreenSaverTimer()
{
    pStatusUpdater->subscribeToChanges(true);
    config_write_int("ram.powersave.activity.display", 1);
}

void ScreenPopup::addEvent(const popup_event_t& popup)
{
    logDebug() << "ScreenPopup::addEvent(" << getEventIdAsString(popup.eventId)
               << "): Popups are not shown yet. Event dropped. closeHandling=" << popup.closeHandling
               << ", okFunction=" << (popup.okFunction ? popup.okFunction : "none")
               << ", timeStamp=" << popup.timeStamp.toString(QString::fromLatin1("yyyy-MM-ddThh:mm:ss.zzz"))
               << ", text=" << popup.text;
}

void ScreenPopup::closePopup(unsigned int, bool)
{
    logDebug() << "ScreenPopup::closePopup(): eventList is empty! Do nothing.";
}

void ScreenPopup::showNextEvent()
{
    logDebug() << "ScreenPopup::showNextEvent(): eventList is empty.";
}

bool ScreenPopup::eventExistInPopupList(unsigned int) const
{
    return false;
}

bool ScreenPopup::screenSaverInPopupList() const
{
    return eventExistInPopupList(EV_AP_GUI_SCREEN_SAVER);
}

int ScreenPopup::getNumberOfPopupsToShow()
{
    return 0;
}

int ScreenPopup::getNumberOfPopupWarningsErrorsFatals() const
{
    return 0;
}

QString ScreenPopup::getEventIdAsString(unsigned int eventId) const
{
    const EventText* const row = findEventText(eventId);
    if (!row)
        return QString::fromLatin1("No debug text for eventId=0x") + hexText(eventId);
    return QString::fromLatin1(row->name);
}
