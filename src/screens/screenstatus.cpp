// The status screen: construction, values and status text. The frame's moves and OK stand in
// screenstatus_focus.cpp.
#include "screens/screenstatus.h"

#include "app/window.h"
#include "common/checked.h"
#include "common/constants.h"
#include "common/log.h"
#include "common/qtcompat.h"
#include "model/bundle.h"
#include "model/event_ids.h"
#include "model/statusupdater.h"
#include "screens/layouts.h"
#include "widgets/focusframe.h"
#include "widgets/tbattlabel.h"
#include "widgets/tlabel.h"
#include "widgets/tsignallabel.h"

#include <QEvent>
#include <QFontMetrics>
#include <QFrame>
#include <QHBoxLayout>
#include <QPropertyAnimation>
#include <QSpacerItem>
#include <QStringList>
#include <QVBoxLayout>

namespace {

const char SOURCE[] = "screenstatus";
const int ICON_ROW_HEIGHT = 24;
const int STATUS_WIDTH = 184;
const int STATUS_HEIGHT = 40;
const int STATUS_LINES_AT_ONCE = 2;
const int SWING_MS_PER_LINE = 2000;

// What the model tells, and what it leads to.
const struct {
    const char* signal;
    const char* slot;
} connections[] = {
    {SIGNAL(signalLevelChanged(int)), SLOT(updateAntennaLabel(int))},
    {SIGNAL(signalLevelNumBarsChanged(int)), SLOT(updateAntennaIcon(int))},
    {SIGNAL(beamTypeChanged()), SLOT(updateBeamType())},
    {SIGNAL(numberOfConnectionsChanged()), SLOT(updateNumberOfConnections())},
    {SIGNAL(numberOfConnectionsChanged()), SLOT(updateStatusText())},
    {SIGNAL(numberOfWlanClientsChanged()), SLOT(updateNumberOfWifiClients())},
    {SIGNAL(controlledByATCommandsChanged()), SLOT(updateConnectIcon())},
    {SIGNAL(controlledByATCommandsChanged()), SLOT(updateNumberOfConnections())},
    {SIGNAL(controlledByATCommandsChanged()), SLOT(updateStatusText())},
    {SIGNAL(bondingStateChanged()), SLOT(updateConnectIcon())},
    {SIGNAL(bondingStateChanged()), SLOT(updateStatusText())},
    {SIGNAL(interfaceStateChanged(INTERFACE_NAME_ENUM)), SLOT(updateInterfaceState(INTERFACE_NAME_ENUM))},
    {SIGNAL(warningsPresentChanged(bool)), SLOT(handleWarningsPresentChanged(bool))},
    {SIGNAL(statusChanged()), SLOT(updateStatusText())},
    {SIGNAL(updateElapsedTimeAndBackgroundDataSignal()), SLOT(updateStatusText())},
    {SIGNAL(battDataChanged()), SLOT(updateBatteryRemainingTime())},
};

} // namespace

ScreenStatus::ScreenStatus(Window* pWindow)
    : Screen(pWindow, SCREEN_STATUS, nullptr), focusState(FOCUS_NONE), pAntennaLabel(nullptr),
      pConnectLabel(nullptr), pWifiLabel(nullptr), pIsdnLabel(nullptr), pLanLabel(nullptr),
      pPhoneLabel(nullptr), pUsbLabel(nullptr), pWarningLabel(nullptr), pWarningSpacer(nullptr),
      pIconRow(nullptr), pBattLabel(nullptr), pMenuLabel(nullptr), pStatusLabelFrame(nullptr),
      pStatusLabel(nullptr), pStatusLabelAnimation(nullptr), pSelectionFrame(nullptr)
{
    createIcons();
    createStatusLabel();
    createLayout();
    createSelectionFrame();
    connectModel();
    fillFromModel();
    setFocusFrame(FOCUS_STATUS_LABEL);
    logDebug() << "ScreenStatus::ScreenStatus(): Contructor: setting focus to itself.";
    setFocus();
}

TLabel* ScreenStatus::createIcon(int iconId, const char* iconName, const char* objectName)
{
    TLabel* const icon =
        checkedNew<TLabel>(SOURCE, __LINE__, static_cast<TLabel::ICON_ID_ENUM>(iconId),
                           QString::fromLatin1(iconName), INTERFACE_STATE_ON, static_cast<QWidget*>(this));
    icon->setObjectName(QString::fromLatin1(objectName));
    icon->updateIcon();
    return icon;
}

void ScreenStatus::createIcons()
{
    pAntennaLabel = checkedNew<TSignalLabel>(SOURCE, __LINE__, this);
    pAntennaLabel->setObjectName(QString::fromLatin1("pAntennaLabel"));
    pAntennaLabel->setTopLayerTextAlignment(Qt::AlignLeft);
    pAntennaLabel->updateIcon();
    pConnectLabel = createIcon(TLabel::ICON_CONNECT, "connect", "pConnectLabel");
    pWifiLabel = createIcon(TLabel::ICON_WIFI, "wifi", "pWifiLabel");
    pIsdnLabel = createIcon(TLabel::ICON_ISDN, "isdn", "pIsdnLabel");
    pLanLabel = createIcon(TLabel::ICON_LAN, "lan", "pLanLabel");
    pPhoneLabel = createIcon(TLabel::ICON_PHONE, "phone", "pPhoneLabel");
    pUsbLabel = createIcon(TLabel::ICON_USB, "usb", "pUsbLabel");
    pWarningLabel = createIcon(TLabel::ICON_WARNING, "warning", "pWarningLabel");
    pWarningLabel->setBlinkIconNames(QString::fromLatin1("warning"), QString::fromLatin1("warning_no_sign"));
    pMenuLabel = createIcon(TLabel::ICON_MENU, "menu", "pMenuLabel");
    pBattLabel = checkedNew<TBattLabel>(SOURCE, __LINE__, this);
    pBattLabel->setObjectName(QString::fromLatin1("pBattLabel"));
    pBattLabel->updateIcon();
    for (TLabel* const icon : {pConnectLabel, pWifiLabel}) {
        icon->setTopLayerTextAlignment(Qt::AlignRight);
        icon->setTopLayerStylesheet(labelOverlayStyle);
    }
    for (TLabel* const icon : {pWifiLabel, pIsdnLabel, pLanLabel, pPhoneLabel, pUsbLabel, pWarningLabel})
        icon->setFixedHeight(ICON_ROW_HEIGHT);
}

void ScreenStatus::createStatusLabel()
{
    pStatusLabelFrame = checkedNew<QFrame>(SOURCE, __LINE__, this);
    pStatusLabelFrame->setObjectName(QString::fromLatin1("pStatusLabelFrame"));
    pStatusLabelFrame->setFixedSize(STATUS_WIDTH, STATUS_HEIGHT);
    pStatusLabel = checkedNew<TLabel>(SOURCE, __LINE__, TLabel::ICON_STATUS_TEXT, QString(),
                                      INTERFACE_STATE_ON, static_cast<QWidget*>(pStatusLabelFrame));
    pStatusLabel->setObjectName(QString::fromLatin1("pStatusLabel"));
    pStatusLabel->setAlignment(Qt::AlignRight);
    pStatusLabelAnimation =
        checkedNew<QPropertyAnimation>(SOURCE, __LINE__, pStatusLabel, QByteArray("pos"), this);
    pStatusLabelAnimation->setObjectName(QString::fromLatin1("pStatusLabelAnimation"));
    connect(pStatusLabelAnimation, SIGNAL(finished()), this, SLOT(changeStatusLabelAnimationDirection()));
}

// Three columns; in the middle the row of icons above the status text.
void ScreenStatus::createLayout()
{
    QHBoxLayout* const columns = checkedNew<QHBoxLayout>(SOURCE, __LINE__, this);
    QVBoxLayout* const left = checkedNew<QVBoxLayout>(SOURCE, __LINE__);
    QVBoxLayout* const middle = checkedNew<QVBoxLayout>(SOURCE, __LINE__);
    QVBoxLayout* const right = checkedNew<QVBoxLayout>(SOURCE, __LINE__);
    pIconRow = checkedNew<QHBoxLayout>(SOURCE, __LINE__);
    removeSpace(columns);
    removeSpace(left);
    removeSpace(middle);
    removeSpace(right);
    removeSpace(pIconRow);
    columns->addLayout(left);
    columns->addLayout(middle);
    columns->addLayout(right);

    left->addWidget(pAntennaLabel);
    left->addWidget(pConnectLabel);

    pIconRow->addStretch();
    for (TLabel* const icon : {pWifiLabel, pIsdnLabel, pLanLabel, pPhoneLabel, pUsbLabel, pWarningLabel})
        pIconRow->addWidget(icon);
    pWarningSpacer = checkedNew<QSpacerItem>(SOURCE, __LINE__, 0, 0, QSizePolicy::Fixed, QSizePolicy::Fixed);
    pIconRow->addItem(pWarningSpacer);
    pIconRow->addStretch();
    middle->addLayout(pIconRow);
    middle->addStretch();
    middle->addWidget(pStatusLabelFrame);

    right->addWidget(pBattLabel, 0, Qt::AlignRight);
    right->addWidget(pMenuLabel, 0, Qt::AlignRight);
}

// Outside of the layouts and made last, so that it lies above everything.
void ScreenStatus::createSelectionFrame()
{
    pSelectionFrame = checkedNew<FocusFrame>(SOURCE, __LINE__, frameStyle, this);
    pSelectionFrame->setObjectName(QString::fromLatin1("pSelectionFrame"));
    pSelectionFrame->setGeometry(QRect(QPoint(10, 10), QPoint(245, 53)));
}

void ScreenStatus::connectModel()
{
    for (const auto& connection : connections)
        connect(pStatusUpdater, connection.signal, this, connection.slot);
}

void ScreenStatus::fillFromModel()
{
    updateAntennaLabel(pStatusUpdater->getSignalLevel());
    updateAntennaIcon(pStatusUpdater->getSignalLevelNumBars());
    updateBeamType();
    for (int interface = INTERFACE_NAME_FIRST; interface <= INTERFACE_NAME_LAST; ++interface)
        updateInterfaceState(static_cast<INTERFACE_NAME_ENUM>(interface));
    updateNumberOfWifiClients();
    updateConnectIcon();
    updateNumberOfConnections();
    handleWarningsPresentChanged(pStatusUpdater->getWarningsPresent());
    updateBatteryRemainingTime();
    updateStatusText();
}

void ScreenStatus::updateAntennaLabel(int level)
{
    QString beam;
    switch (pStatusUpdater->getIai2BeamType()) {
    case IAI2_BEAM_TYPE_GLOBAL:
        beam = tr("G");
        break;
    case IAI2_BEAM_TYPE_REGIONAL:
        beam = tr("R");
        break;
    case IAI2_BEAM_TYPE_NARROW:
        beam = tr("N");
        break;
    default:
        break;
    }
    const int rounded = qRound(pStatusUpdater->getSignalLevelStr(level).toFloat());
    pAntennaLabel->setTopLayerText(beam + QString::number(rounded));
}

void ScreenStatus::updateAntennaIcon(int bars)
{
    pAntennaLabel->setNumberOfIconBars(bars);
}

void ScreenStatus::updateBeamType()
{
    updateAntennaLabel(pStatusUpdater->getSignalLevel());
}

// While AT commands or another terminal have the connections in hand, nothing can be done about them here.
bool ScreenStatus::isConnectAllowed() const
{
    return !pStatusUpdater->getControlledByATCommands() &&
           pStatusUpdater->getBondingState() != BONDING_STATE_SLAVE;
}

void ScreenStatus::updateNumberOfConnections()
{
    const int number = pStatusUpdater->getNumberOfActiveConnectionsAndBundles();
    pConnectLabel->setTopLayerText(isConnectAllowed() && number != 0 ? QString::number(number) : QString());
}

void ScreenStatus::updateConnectIcon()
{
    if (isConnectAllowed()) {
        pConnectLabel->setState(INTERFACE_STATE_ON);
    } else {
        pConnectLabel->setState(INTERFACE_STATE_OFF);
        if (focusState == FOCUS_CONNECT)
            setFocusFrame(FOCUS_NONE);
    }
    updateNumberOfConnections();
}

void ScreenStatus::updateNumberOfWifiClients()
{
    const int number = pStatusUpdater->getWifiNumberOfClients();
    const bool shown = number >= 1 && pWifiLabel->getState() == INTERFACE_STATE_ON;
    pWifiLabel->setTopLayerText(shown ? QString::number(number) : QString());
}

void ScreenStatus::updateBatteryRemainingTime()
{
    pBattLabel->setState(pStatusUpdater->getNumberOfBatteries() != 0 ? INTERFACE_STATE_ON
                                                                     : INTERFACE_STATE_OFF);
    pBattLabel->setTopLayerText(pStatusUpdater->getTotalBattRemainingTimeStr());
    pBattLabel->setCapacity(pStatusUpdater->getTotalBattCapacity());
}

// The spacer keeps the sign's place, so that the row of icons does not shift.
void ScreenStatus::handleWarningsPresentChanged(bool present)
{
    if (present) {
        pWarningLabel->setBlinking(true);
        pWarningSpacer->changeSize(0, 0, QSizePolicy::Fixed, QSizePolicy::Fixed);
        pWarningLabel->setVisible(true);
        m_pMainWindow->removePopupIfExist(EV_AP_GUI_NO_EVENTS); // out of date
    } else {
        pWarningSpacer->changeSize(pWarningLabel->getPixmapWidth(), 0, QSizePolicy::Fixed,
                                   QSizePolicy::Fixed);
        pWarningLabel->setVisible(false);
        pWarningLabel->setBlinking(false);
        if (focusState == FOCUS_WARNING)
            setFocusFrame(FOCUS_NONE);
    }
    pIconRow->invalidate();
}

void ScreenStatus::updateStatusText()
{
    pStatusUpdater->updateCurrentStatusTextId();
    setStatusText(pStatusUpdater->getStatusText());
    if (focusState == FOCUS_STATUS_LABEL)
        setFocusFrame(focusState);
}

void ScreenStatus::setStatusText(const QString& text)
{
    if (!pStatusLabel || !pStatusLabelFrame) {
        logDebug() << "ScreenStatus::setStatusText(): ERROR: this->"
                   << (pStatusLabel ? "pStatusLabelFrame" : "pStatusLabel") << " == NULL";
        return;
    }
    pStatusLabel->setText(text);
    const QFontMetrics metrics(pStatusLabel->font());
    const QStringList lines = text.split(QChar::fromLatin1('\n'));
    int maxWidth = 0;
    for (int i = 0; i < lines.size(); ++i)
        maxWidth = qMax(maxWidth, qtcompat::textWidth(metrics, lines.at(i)));
    const int blockHeight = lines.size() * metrics.height();
    pStatusLabel->setFixedWidth(maxWidth);
    pStatusLabel->setFixedHeight(blockHeight);
    placeStatusText(pStatusLabelFrame->width() / 2 - maxWidth / 2, lines.size(), blockHeight);
    setFocusFrame(focusState); // the label may have another size now
}

// A text that fits stands still in the middle; any other swings between its first and its last line.
void ScreenStatus::placeStatusText(int x, int lines, int blockHeight)
{
    if (blockHeight <= STATUS_HEIGHT) {
        pStatusLabelAnimation->stop();
        pStatusLabel->move(x, STATUS_HEIGHT / 2 - blockHeight / 2);
        return;
    }
    pStatusLabelAnimation->setDuration(
        qMax((lines - STATUS_LINES_AT_ONCE) * SWING_MS_PER_LINE, SWING_MS_PER_LINE));
    pStatusLabelAnimation->setStartValue(QPoint(x, 0));
    pStatusLabelAnimation->setEndValue(QPoint(x, STATUS_HEIGHT - blockHeight));
    if (pStatusLabelAnimation->state() == QAbstractAnimation::Stopped)
        pStatusLabelAnimation->start();
}

void ScreenStatus::changeStatusLabelAnimationDirection()
{
    const bool forward = pStatusLabelAnimation->direction() == QAbstractAnimation::Forward;
    pStatusLabelAnimation->setDirection(forward ? QAbstractAnimation::Backward : QAbstractAnimation::Forward);
    pStatusLabelAnimation->start();
}

// The base class is left out on purpose: it would announce a retranslation that this screen does itself.
void ScreenStatus::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange) {
        if (!pStatusUpdater) {
            logDebug() << "ScreenStatus::changeEvent(): LanguageChange: ERROR: this->pStatusUpdater == NULL";
            return;
        }
        setStatusText(pStatusUpdater->getStatusText());
        updateAntennaLabel(pStatusUpdater->getSignalLevel());
    } else if (event->type() == QEvent::FontChange) {
        if (!pStatusUpdater || !pStatusLabel) {
            logDebug() << "ScreenStatus::changeEvent(): FontChange: ERROR: this->"
                       << (pStatusUpdater ? "pStatusLabel" : "pStatusUpdater") << " == NULL";
            return;
        }
        pStatusUpdater->setStatusLabelFont(pStatusLabel->font());
        setStatusText(pStatusUpdater->getStatusText());
    }
}

// Geometries are right only after the layout.
void ScreenStatus::showEvent(QShowEvent* event)
{
    Screen::showEvent(event);
    setFocusFrame(focusState);
}
