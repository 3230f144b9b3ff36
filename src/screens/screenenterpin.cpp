// Entry of the SIM's PIN; see the header.
#include "screens/screenenterpin.h"

#include "app/window.h"
#include "common/log.h"
#include "model/event_ids.h"
#include "model/statusupdater.h"

#include <QCoreApplication>
#include <QLabel>

namespace {

const int NUMBER_OF_DIGITS = 4;
const int LAST_POSITION = NUMBER_OF_DIGITS - 1;
const int LAST_BLIND_POSITION = 5; // the row of blind digits is longer than the PIN
const int RETRIES_AT_FIRST = 3;    // as many as a SIM grants
const char MASKED_DIGIT[] = "*";
// Black on black: it holds its width, so that what follows does not move with the cursor.
const char BLIND_DIGIT[] = "<font color=\"black\">0</font>";

} // namespace

ScreenEnterPin::ScreenEnterPin(Window* pWindow)
    : ScreenMessage(pWindow, SCREEN_ENTER_PIN, nullptr), cursorPos(0), retriesLeft(0)
{
    pMessageLabel->setTextFormat(Qt::RichText);
    resetScreen();
    connect(pStatusUpdater, SIGNAL(simPinRetriesLeftChanged()), this, SLOT(updateText()),
            Qt::UniqueConnection);
    connect(pStatusUpdater, SIGNAL(signalWrongPin()), this, SLOT(handleWrongPin()), Qt::UniqueConnection);
}

void ScreenEnterPin::resetScreen()
{
    pRightLabel->setVisible(false);
    pLeftLabel->setVisible(true);
    pinDigits.clear();
    for (int i = 0; i < NUMBER_OF_DIGITS; ++i)
        pinDigits.append(0);
    cursorPos = 0;
    updateText();
}

QString ScreenEnterPin::getEnteredPin() const
{
    QString pin;
    for (int digit : pinDigits)
        pin += QString::number(digit);
    return pin;
}

int ScreenEnterPin::getNumOfDigits() const
{
    return static_cast<int>(pinDigits.size());
}

bool ScreenEnterPin::isOnLastDigit() const
{
    return cursorPos == LAST_POSITION;
}

void ScreenEnterPin::keyUpClicked()
{
    turnDigit(+1);
}

void ScreenEnterPin::keyDownClicked()
{
    turnDigit(-1);
}

// 0 follows 9, in both directions.
void ScreenEnterPin::turnDigit(int step)
{
    pinDigits[cursorPos] = (pinDigits.at(cursorPos) + step + 10) % 10;
    updateText();
}

void ScreenEnterPin::keyRightClicked()
{
    if (!isOnLastDigit())
        ++cursorPos;
    updateText();
}

void ScreenEnterPin::keyLeftClicked()
{
    if (cursorPos > 0)
        --cursorPos;
    else
        m_pMainWindow->showPreviousScreen();
    updateText();
}

void ScreenEnterPin::keyOkClicked()
{
    if (isOnLastDigit())
        validatePin();
    else
        ++cursorPos;
    updateText();
}

void ScreenEnterPin::updateText()
{
    retriesLeft = pStatusUpdater->getSimPinRetriesLeft();
    updateCaptions();
    QString text = tr("Enter PIN: ");
    text += QString::fromLatin1(MASKED_DIGIT).repeated(cursorPos);
    text += QString::fromLatin1("<u>%1</u>").arg(pinDigits.at(cursorPos));
    for (int i = cursorPos; i <= LAST_BLIND_POSITION; ++i)
        text += QString::fromLatin1(BLIND_DIGIT);
    if (retriesLeft < RETRIES_AT_FIRST)
        text += QString::fromLatin1("(Retries left: %1)").arg(retriesLeft); // never translated
    pMessageLabel->setText(text);
}

// A word stands only where its key does more than move the cursor. The left caption is blank and not
// hidden, as it holds the row's height.
void ScreenEnterPin::updateCaptions()
{
    if (isOnLastDigit())
        pRightLabel->setText(QCoreApplication::translate("Shared_translations", "OK"));
    pRightLabel->setVisible(isOnLastDigit());
    pLeftLabel->setText(cursorPos == 0 ? QCoreApplication::translate("Shared_translations", "Cancel")
                                       : QString::fromLatin1(" "));
}

void ScreenEnterPin::validatePin()
{
    m_pMainWindow->addEvent(EV_AP_GUI_VALIDATING_PIN, EVENT_INFO, POPUP_CLOSE_NOT_BY_USER, 0, nullptr,
                            nullptr, QString(), -1);
    logDebug() << "About to run statusUpdater->validatePin()";
    pStatusUpdater->startValidatePin(getEnteredPin());
}

void ScreenEnterPin::handleWrongPin()
{
    m_pMainWindow->removePopupIfExist(EV_AP_GUI_VALIDATING_PIN);
    m_pMainWindow->addEvent(EV_AP_GUI_WRONG_PIN, EVENT_WARNING, POPUP_CLOSE_OK, 0, nullptr, nullptr,
                            QString(), -1);
    resetScreen();
}

// The captions are updateText()'s business, so the base class's version is left out on purpose.
void ScreenEnterPin::retranslate()
{
    updateText();
}

void ScreenEnterPin::showEvent(QShowEvent* event)
{
    ScreenMessage::showEvent(event);
    updateText();
}
