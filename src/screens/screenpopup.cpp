// The popup screen: construction, text and buttons, screen saver. The queue stands in screenpopup_queue.cpp,
// the keys in screenpopup_keys.cpp.
#include "screens/screenpopup.h"

#include "app/guiapp.h"
#include "common/checked.h"
#include "common/log.h"
#include "common/richtext.h"
#include "model/event_ids.h"
#include "model/statusupdater.h"
#include "runtime/config_client_api.h"
#include "screens/popup_rules.h"

#include <QApplication>
#include <QDateTime>
#include <QFrame>
#include <QHBoxLayout>
#include <QLabel>
#include <QPoint>
#include <QPropertyAnimation>
#include <QTimer>
#include <QVBoxLayout>

#include <climits>

namespace {

const char SOURCE[] = "screenpopup";

const int MARGIN = 10;            // pixels left and right
const int TEXT_FRAME_HEIGHT = 52; // pixels; a text that is higher swings
const int TEXT_WIDTH = 246;       // pixels
const int SWING_BASE_HEIGHT = 48; // pixels that cost no time
const int SWING_MS_PER_PIXEL = 125;
const int SWING_MS_MINIMUM = 2000;
const int FONT_SIZE = 14;
const int USER_GRACE_MS = 700; // from the event's own time
const int MS_PER_SECOND = 1000;
const int SCREEN_SAVER_S_MINIMUM = 1; // less would leave no time to press a key
const int SCREEN_SAVER_S_MAXIMUM = INT_MAX / MS_PER_SECOND;
const qint64 CLOCK_SET_BACK_MS = 3600000; // no event lies so far ahead of the clock by itself

const char ACTIVITY_KEY[] = "ram.powersave.activity.display";

// Events that arise from the user's own key press: they need no time to be read.
const unsigned int eventsOfTheUser[] = {EV_AP_GUI_NO_BUNDLES_DEFINED, EV_AP_GUI_CUSTOM_TEXT,
                                        EV_AP_GUI_SCREEN_SAVER};

// A wrapped label left to itself tries half and quarter widths for its hint, and a text that fits would
// swing: this one answers for the width that it has.
class PopupTextLabel : public QLabel {
public:
    explicit PopupTextLabel(QWidget* parent) : QLabel(parent) {}
    QSize sizeHint() const override { return QSize(TEXT_WIDTH, heightForWidth(TEXT_WIDTH)); }
};

} // namespace

ScreenPopup::ScreenPopup(Window* pWindow)
    : Screen(pWindow, Screen::SCREEN_POPUP, nullptr), autoCloseTimerCounter(0),
      currentEventShowedAtEpochTime(-1), textScrolls(false), pTextFrame(nullptr), pTextLabel(nullptr),
      pTextLabelAnimation(nullptr), pOkLabel(nullptr), pCancelLabel(nullptr), pAutoCloseTimer(nullptr),
      pScreenSaverTimer(nullptr), pHideButtonsTimer(nullptr)
{
    QVBoxLayout* const layout = checkedNew<QVBoxLayout>(SOURCE, __LINE__, this);
    layout->setContentsMargins(MARGIN, 0, 0, 0);
    layout->setSpacing(0);
    createTextFrame();
    layout->addStretch();
    layout->addWidget(pTextFrame);
    layout->addStretch();
    createButtonRow();
    createTimers();
    // Direct: the wake-up must have happened when the key reaches its screen.
    connect(qApp, SIGNAL(someKeyWasPressed()), this, SLOT(restartScreenSaverTimer()), Qt::DirectConnection);
}

void ScreenPopup::createTextFrame()
{
    pTextFrame = checkedNew<QFrame>(SOURCE, __LINE__, this);
    pTextFrame->setObjectName(QString::fromLatin1("pTextFrame"));
    pTextFrame->setFixedHeight(TEXT_FRAME_HEIGHT);
    pTextLabel = checkedNew<PopupTextLabel>(SOURCE, __LINE__, pTextFrame);
    pTextLabel->setObjectName(QString::fromLatin1("pTextLabel"));
    pTextLabel->setFixedWidth(TEXT_WIDTH);
    pTextLabel->setWordWrap(true);
    pTextLabel->setAlignment(Qt::AlignLeft);
    pTextLabelAnimation =
        checkedNew<QPropertyAnimation>(SOURCE, __LINE__, pTextLabel, QByteArray("pos"), this);
    pTextLabelAnimation->setObjectName(QString::fromLatin1("pTextLabelAnimation"));
    connect(pTextLabelAnimation, SIGNAL(finished()), this, SLOT(changeTextLabelAnimationDirection()));
}

QLabel* ScreenPopup::createButtonLabel(const char* objectName)
{
    QLabel* const label = checkedNew<QLabel>(SOURCE, __LINE__, this);
    label->setObjectName(QString::fromLatin1(objectName));
    return label;
}

void ScreenPopup::createButtonRow()
{
    pCancelLabel = createButtonLabel("pCancelLabel");
    pOkLabel = createButtonLabel("pOkLabel");
    QHBoxLayout* const row = checkedNew<QHBoxLayout>(SOURCE, __LINE__);
    static_cast<QVBoxLayout*>(layout())->addLayout(row);
    row->setContentsMargins(0, 0, MARGIN, 0);
    row->setSpacing(0);
    row->addWidget(pCancelLabel);
    row->addStretch();
    row->addWidget(pOkLabel);
}

QTimer* ScreenPopup::createTimer(const char* objectName, const char* slot, Qt::ConnectionType type)
{
    QTimer* const timer = checkedNew<QTimer>(SOURCE, __LINE__, this);
    timer->setObjectName(QString::fromLatin1(objectName));
    connect(timer, SIGNAL(timeout()), this, slot, type);
    return timer;
}

void ScreenPopup::createTimers()
{
    // Queued: addEvent lets a tick that is already on its way arrive before it judges the list.
    pAutoCloseTimer = createTimer("pAutoCloseTimer", SLOT(handleAutoCloseTimeout()), Qt::QueuedConnection);
    pScreenSaverTimer = createTimer("pScreenSaverTimer", SLOT(showScreenSaver()), Qt::AutoConnection);
    pHideButtonsTimer =
        createTimer("pHideButtonsTimer", SLOT(handleHideButtonsTimeout()), Qt::AutoConnection);
}

// --- Text and buttons --------------------------------------------------------------------------------------

bool ScreenPopup::updatePopupButtonsAndText(const popup_event_t& popup)
{
    const QString before = pTextLabel->text();
    showText(popup);
    const bool popupTextChanged = pTextLabel->text() != before;
    showButtons(popup);
    return popupTextChanged;
}

// A text that fits stands still in the middle of the frame; any other swings between its ends.
void ScreenPopup::showText(const popup_event_t& popup)
{
    pTextLabelAnimation->stop();
    // The label's hint is never below its fixed height: a text that fits gets the whole frame.
    pTextLabel->setFixedHeight(TEXT_FRAME_HEIGHT);
    const bool isRichText = popup.text.contains(QLatin1String("<html>"), Qt::CaseSensitive);
    pTextLabel->setTextFormat(isRichText ? Qt::RichText : Qt::PlainText);
    const LANG_ENUM fontLanguage = pStatusUpdater->unicodeNeeded(popup.text) ? LANG_RUSSIAN : LANG_UNDEFINED;
    pTextLabel->setFont(*GuiApp::getFont(FONT_SIZE, fontLanguage));
    // Names and alerts come here as they were chosen: what they ask Qt to load must not be loaded.
    pTextLabel->setText(isRichText ? harmlessRichText(popup.text) : popup.text);
    // A picture in the text may claim any height; no label is higher than this.
    const int textHeight = qMin(pTextLabel->sizeHint().height(), QWIDGETSIZE_MAX);
    textScrolls = textHeight > TEXT_FRAME_HEIGHT;
    pTextLabel->setFixedHeight(textHeight);
    // The captions lie over the frame's last pixels: what swings passes behind them.
    pOkLabel->setAutoFillBackground(textScrolls);
    pCancelLabel->setAutoFillBackground(textScrolls);
    if (textScrolls) {
        startSwinging(textHeight);
    } else {
        pTextLabel->setAlignment(Qt::AlignVCenter);
        pTextLabel->move(0, TEXT_FRAME_HEIGHT / 2 - textHeight / 2);
    }
}

void ScreenPopup::startSwinging(int textHeight)
{
    pTextLabelAnimation->setDuration(
        qMax((textHeight - SWING_BASE_HEIGHT) * SWING_MS_PER_PIXEL, SWING_MS_MINIMUM));
    pTextLabelAnimation->setStartValue(QPoint(0, 0));
    pTextLabelAnimation->setEndValue(QPoint(0, TEXT_FRAME_HEIGHT - textHeight));
    pTextLabelAnimation->setDirection(QAbstractAnimation::Forward);
    pTextLabelAnimation->start();
}

void ScreenPopup::changeTextLabelAnimationDirection()
{
    const bool forward = pTextLabelAnimation->direction() == QAbstractAnimation::Forward;
    pTextLabelAnimation->setDirection(forward ? QAbstractAnimation::Backward : QAbstractAnimation::Forward);
    pTextLabelAnimation->start();
}

// During the grace the texts are black on black: the buttons appear when their keys begin to work.
void ScreenPopup::showButtons(const popup_event_t& popup)
{
    const PopupCloseRule* const rule = findPopupCloseRule(popup.closeHandling);
    if (rule) {
        pOkLabel->setVisible(rule->okShown);
        pCancelLabel->setVisible(rule->cancelShown);
    } else {
        logDebug() << "ERROR: Illegal closeHandling=" << popup.closeHandling;
    }
    if (popupAllowedToBeClosedByUser(popup)) {
        handleHideButtonsTimeout();
        return;
    }
    const qint64 left = QDateTime::currentDateTime().msecsTo(popup.timeStamp.addMSecs(USER_GRACE_MS));
    if (left < 1)
        return; // the grace has ended since it was asked for; the labels keep their last colour
    pHideButtonsTimer->start(static_cast<int>(qMin<qint64>(left, INT_MAX)));
    setButtonTexts(QString::fromLatin1("<font color=\"black\">"), QString::fromLatin1("</font>"));
}

void ScreenPopup::handleHideButtonsTimeout()
{
    pHideButtonsTimer->stop();
    setButtonTexts(QString::fromLatin1("<font color=\"white\">"), QString::fromLatin1("</font>"));
}

void ScreenPopup::setButtonTexts(const QString& before, const QString& behind)
{
    pOkLabel->setText(before + QCoreApplication::translate("Shared_translations", "OK") + behind);
    pCancelLabel->setText(before + QCoreApplication::translate("Shared_translations", "Cancel") + behind);
}

// By the event's own time, not by that of its showing: what has waited in the queue can be closed at once.
bool ScreenPopup::popupAllowedToBeClosedByUser(const popup_event_t& popup) const
{
    const qint64 passed = popup.timeStamp.msecsTo(QDateTime::currentDateTime());
    if (passed >= USER_GRACE_MS)
        return true;
    // The clock was set back since, by a year perhaps, and the keys would be dead until it is there again.
    if (passed < -CLOCK_SET_BACK_MS) {
        logWarning() << "ScreenPopup::popupAllowedToBeClosedByUser(" << getEventIdAsString(popup.eventId)
                     << "): ERROR!!! timeStamp lies " << -passed << " ms ahead of the clock. Not waiting.";
        return true;
    }
    for (unsigned int eventId : eventsOfTheUser) {
        if (eventId == popup.eventId)
            return true;
    }
    logDebug() << "ScreenPopup::popupAllowedToBeClosedByUser(" << getEventIdAsString(popup.eventId)
               << "): Popup seems to be created by (event) system"
                  "=> Ignoring key press, as user needs to read it.";
    return false;
}

// The texts of the popups themselves come translated.
void ScreenPopup::retranslate()
{
    setButtonTexts(QString(), QString());
    showNextEvent();
}

// --- Screen saver ------------------------------------------------------------------------------------------

void ScreenPopup::init()
{
    connect(pStatusUpdater, SIGNAL(screenSaverTimeChanged()), this, SLOT(updateScreenSaverTime()),
            Qt::UniqueConnection);
    pScreenSaverTimer->start(screenSaverDelay());
    // The model starts as subscribed without having told anybody; only a change is written to the bus.
    pStatusUpdater->subscribeToChanges(false);
    pStatusUpdater->subscribeToChanges(true);
}

// In milliseconds. The setting comes from the database as it stands there.
int ScreenPopup::screenSaverDelay() const
{
    const int seconds = pStatusUpdater->getScreenSaverTime();
    const int bounded = qBound(SCREEN_SAVER_S_MINIMUM, seconds, SCREEN_SAVER_S_MAXIMUM);
    if (bounded != seconds)
        logDebug() << "ScreenPopup::screenSaverDelay(): ERROR!!! Illegal screen saver time=" << seconds
                   << ", using " << bounded;
    return bounded * MS_PER_SECOND;
}

void ScreenPopup::restartScreenSaverTimer()
{
    pScreenSaverTimer->start(screenSaverDelay());
    pStatusUpdater->subscribeToChanges(true);
    config_write_int(ACTIVITY_KEY, 1);
}

void ScreenPopup::updateScreenSaverTime()
{
    pScreenSaverTimer->start(screenSaverDelay());
    pStatusUpdater->subscribeToChanges(true);
}

// While the display sleeps, nothing is polled that nobody sees.
void ScreenPopup::showScreenSaver()
{
    pScreenSaverTimer->stop();
    pStatusUpdater->subscribeToChanges(false);
    popup_event_t popup;
    popup.eventId = EV_AP_GUI_SCREEN_SAVER;
    popup.severity = EVENT_SCREEN_SAVER;
    popup.closeHandling = POPUP_CLOSE_ANY_KEY;
    popup.timeStamp = QDateTime::currentDateTime();
    addEvent(popup);
    config_write_int(ACTIVITY_KEY, 0);
}
