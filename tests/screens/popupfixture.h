// The popup screen of a real window on display, and events made by hand for it.
#ifndef TESTS_SCREENS_POPUPFIXTURE_H
#define TESTS_SCREENS_POPUPFIXTURE_H

#include "screens/windowfixture.h"

#include "screens/screenpopup.h"
#include "support/modelaccess.h"

#include <QDateTime>
#include <QElapsedTimer>
#include <QFrame>
#include <QLabel>
#include <QPropertyAnimation>
#include <QStringList>
#include <QTimer>
#include <QTimerEvent>

namespace windowfixture {

// Events without rules of their own, by the letters under which the tests list them.
const unsigned int A = EV_AP_GUI_CONN_FAILED;
const unsigned int B = EV_AP_GUI_CONN_LOST;
const unsigned int C = EV_AP_GUI_NETWORK_FAILURE;
const unsigned int N = EV_AP_GUI_CIPHERING_OFF;
const unsigned int SAVER = EV_AP_GUI_SCREEN_SAVER;

inline QString letterOf(unsigned int eventId)
{
    const struct {
        unsigned int eventId;
        const char* letter;
    } letters[] = {{A, "A"}, {B, "B"}, {C, "C"}, {N, "N"}, {SAVER, "S"}};
    for (const auto& row : letters) {
        if (row.eventId == eventId) {
            return row.letter;
        }
    }
    return QString::number(eventId, 16);
}

inline QString lettersOf(const QList<popup_event_t>& events)
{
    QStringList result;
    for (const popup_event_t& event : events) {
        result.append(letterOf(event.eventId));
    }
    return result.join(" ");
}

// An event that arose so long ago. The text is the letter if none is given.
inline popup_event_t popupOf(unsigned int eventId, EVENT_SEVERITY_ENUM severity = EVENT_WARNING,
                             POPUP_CLOSE_HANDLING_ENUM closeHandling = POPUP_CLOSE_OK,
                             int showForMilliseconds = 0, int ageMs = 0, const QString& text = QString())
{
    popup_event_t popup;
    popup.eventId = eventId;
    popup.severity = severity;
    popup.closeHandling = closeHandling;
    popup.showForMilliseconds = showForMilliseconds;
    popup.text = text.isNull() ? letterOf(eventId) : text;
    popup.timeStamp = QDateTime::currentDateTime().addMSecs(-ageMs);
    return popup;
}

// What the terminal is before a test: in normal operation, so that the window is up and no popup stands.
inline void resetForPopups()
{
    resetModel();
    model()->setExtendedSystemStatus(10);
    model()->setScreenSaverTime(300);
    model()->stopIgnoreGlobalKeyPress();
}

// Qt's timers may be early by a twentieth of their interval, and one that repeats by as much at each tick.
inline qint64 notBefore(qint64 milliseconds)
{
    return milliseconds - milliseconds / 20 - 1;
}

} // namespace windowfixture

class PopupFixture {
public:
    PopupFixture() : screen(static_cast<ScreenPopup*>(window.getScreenById(Screen::SCREEN_POPUP)))
    {
        // The language that the window has loaded is told to the screens later.
        QCoreApplication::sendPostedEvents();
    }

    QString list() const { return windowfixture::lettersOf(screen->events()); }
    void add(unsigned int eventId, EVENT_SEVERITY_ENUM severity = EVENT_WARNING,
             POPUP_CLOSE_HANDLING_ENUM closeHandling = POPUP_CLOSE_OK, int showForMilliseconds = 0,
             int ageMs = 0, const QString& text = QString())
    {
        screen->addEvent(
            windowfixture::popupOf(eventId, severity, closeHandling, showForMilliseconds, ageMs, text));
    }
    bool shown() const { return window.isSetToVisibleScreen(screen) && screen->isVisible(); }

    QLabel* label(const char* name) const { return screen->findChild<QLabel*>(name); }
    QLabel* text() const { return label("pTextLabel"); }
    QFrame* frame() const { return screen->findChild<QFrame*>("pTextFrame"); }
    bool okShown() const { return !label("pOkLabel")->isHidden(); }
    bool cancelShown() const { return !label("pCancelLabel")->isHidden(); }
    // "white", "black", or empty for a text without a colour; both labels always have the same.
    QString colour() const
    {
        const QString ok = colourOfLabel("pOkLabel");
        return ok == colourOfLabel("pCancelLabel") ? ok : QString("differ");
    }
    QPropertyAnimation* animation() const
    {
        return screen->findChild<QPropertyAnimation*>("pTextLabelAnimation");
    }
    QTimer* timer(const char* name) const { return screen->findChild<QTimer*>(name); }
    QTimer* autoClose() const { return timer("pAutoCloseTimer"); }
    QTimer* saver() const { return timer("pScreenSaverTimer"); }
    QTimer* hideButtons() const { return timer("pHideButtonsTimer"); }

    // What the event loop does when the timer's time is over.
    void fireAutoClose()
    {
        QTimerEvent event(autoClose()->timerId());
        QCoreApplication::sendEvent(autoClose(), &event);
    }

    // Presses the key as the panel's keypad does, on whatever screen has the focus.
    void press(Qt::Key key) { QTest::keyClick(window.getScreenById(window.getCurrentScreenId()), key); }

    Window window;
    ScreenPopup* const screen;

private:
    QString colourOfLabel(const char* name) const
    {
        const QString text = label(name)->text();
        for (const char* colour : {"white", "black"}) {
            const QString before = QString("<font color=\"%1\">").arg(colour);
            if (text.startsWith(before) && text.endsWith("</font>")) {
                return colour;
            }
        }
        return QString();
    }
};

#endif
