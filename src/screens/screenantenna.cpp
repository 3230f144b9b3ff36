// The antenna screen; see the header.
#include "screens/screenantenna.h"

#include "common/checked.h"
#include "common/log.h"
#include "model/statusupdater.h"
#include "screens/layouts.h"

#include <QEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QTimer>

namespace {

const char SOURCE[] = "screenantenna";
const int VALUE_FONT_SIZE = 16;
const int BLINK_MS = 500;
const int SATELLITES_MAX = 4; // as many as a fix needs
const int BAR_WIDTH = 100;
const int BAR_HEIGHT = 35;
const int SIDE_COLUMN_STRETCH = 10;
const char BAR_STYLE[] =
    "QProgressBar {border: 2px solid #424242;border-radius: 4px;background-color: #BDBDBD;margin-left: "
    "0px;margin-right: 0px;margin-top: 0px;margin-bottom: 0px;}QProgressBar::chunk {background-color: "
    "#424242;width: 20px;margin: 1px;border: 1px solid black;border-radius: 2px;}";

} // namespace

ScreenAntenna::ScreenAntenna(Window* pWindow)
    : Screen(pWindow, SCREEN_ANTENNA, nullptr), pBganSignalTitleLabel(nullptr), pBganSignalLabel(nullptr),
      pBganSignalUnitLabel(nullptr), pGpsTitleLabel(nullptr), pGpsValueLabel(nullptr), pGpsWideLabel(nullptr),
      pGpsProgressBar(nullptr), pProgressBarBlinkTimer(nullptr), gpsBlinkPhase(false)
{
    setLeftScreen(SCREEN_STATUS);
    setRightScreen(SCREEN_STATUS);
    setUpScreen(SCREEN_STATUS);
    setDownScreen(SCREEN_STATUS);
    setOkScreen(SCREEN_STATUS);

    QGridLayout* const grid = checkedNew<QGridLayout>(SOURCE, __LINE__, this);
    removeSpace(grid);
    grid->setColumnStretch(0, SIDE_COLUMN_STRETCH);
    grid->setColumnStretch(3, SIDE_COLUMN_STRETCH);
    createSignalRow(grid);
    createGpsRows(grid);
    pProgressBarBlinkTimer = checkedNew<QTimer>(SOURCE, __LINE__, this);
    pProgressBarBlinkTimer->setObjectName(QString::fromLatin1("pProgressBarBlinkTimer"));

    connect(pProgressBarBlinkTimer, SIGNAL(timeout()), this, SLOT(handleGpsBlinkTimeout()));
    connect(pStatusUpdater, SIGNAL(gpsDataChanged()), this, SLOT(updateGps()));
    connect(pStatusUpdater, SIGNAL(signalLevelChanged(int)), this, SLOT(updateBganSignalLabel(int)),
            Qt::UniqueConnection);
    updateBganSignalLabel(pStatusUpdater->getSignalLevel());
}

void ScreenAntenna::createSignalRow(QGridLayout* grid)
{
    const Qt::Alignment left = Qt::AlignLeft | Qt::AlignVCenter;
    pBganSignalTitleLabel =
        newLabel(SOURCE, __LINE__, "pBganSignalTitleLabel", Qt::AlignRight | Qt::AlignVCenter, this);
    pBganSignalTitleLabel->setText(tr("BGAN signal: "));
    pBganSignalLabel = newLabel(SOURCE, __LINE__, "pBganSignalLabel", left, this);
    pBganSignalLabel->setText(QString::fromLatin1("-"));
    setPixelSize(pBganSignalLabel, VALUE_FONT_SIZE);
    pBganSignalUnitLabel = newLabel(SOURCE, __LINE__, "pBganSignalUnitLabel", left, this);
    pBganSignalUnitLabel->setText(QString::fromLatin1(" dBHz"));
    QHBoxLayout* const value = checkedNew<QHBoxLayout>(SOURCE, __LINE__);
    removeSpace(value);
    value->addWidget(pBganSignalLabel);
    value->addWidget(pBganSignalUnitLabel);
    value->addStretch();
    grid->addWidget(pBganSignalTitleLabel, 0, 1);
    grid->addLayout(value, 0, 2);
}

void ScreenAntenna::createGpsRows(QGridLayout* grid)
{
    pGpsTitleLabel = newLabel(SOURCE, __LINE__, "pGpsTitleLabel", Qt::AlignRight | Qt::AlignVCenter, this);
    pGpsValueLabel = newLabel(SOURCE, __LINE__, "pGpsValueLabel", Qt::AlignLeft | Qt::AlignVCenter, this);
    setPixelSize(pGpsValueLabel, VALUE_FONT_SIZE);
    pGpsValueLabel->setVisible(false);
    pGpsWideLabel = newLabel(SOURCE, __LINE__, "pGpsWideLabel", Qt::AlignCenter, this);
    setPixelSize(pGpsWideLabel, VALUE_FONT_SIZE);
    pGpsWideLabel->setVisible(false);
    QHBoxLayout* const value = checkedNew<QHBoxLayout>(SOURCE, __LINE__);
    removeSpace(value);
    value->addWidget(pGpsValueLabel);
    createGpsBar(value);
    value->addStretch();
    grid->addWidget(pGpsTitleLabel, 1, 1);
    grid->addLayout(value, 1, 2);
    grid->addWidget(pGpsWideLabel, 2, 1, 1, 2);
}

void ScreenAntenna::createGpsBar(QHBoxLayout* row)
{
    pGpsProgressBar = checkedNew<QProgressBar>(SOURCE, __LINE__, this);
    pGpsProgressBar->setObjectName(QString::fromLatin1("pGpsProgressBar"));
    pGpsProgressBar->setRange(0, SATELLITES_MAX);
    pGpsProgressBar->setValue(0);
    pGpsProgressBar->setTextVisible(false);
    pGpsProgressBar->setFixedWidth(BAR_WIDTH);
    pGpsProgressBar->setFixedHeight(BAR_HEIGHT);
    pGpsProgressBar->setContentsMargins(0, 0, 0, 0);
    pGpsProgressBar->setAlignment(Qt::AlignLeft);
    pGpsProgressBar->setStyleSheet(QString::fromLatin1(BAR_STYLE));
    row->addWidget(pGpsProgressBar);
}

// What the base class does; the place where this screen could have more of the key.
void ScreenAntenna::keyLeftClicked()
{
    Screen::keyLeftClicked();
}

void ScreenAntenna::updateBganSignalLabel(int level)
{
    pBganSignalLabel->setText(pStatusUpdater->getSignalLevelStr(level));
}

// The model's signal comes to a hidden screen, too, and then the timer runs on it until it is next hidden.
// That is as it must be.
void ScreenAntenna::updateGps()
{
    if (pStatusUpdater->getGpsAcquired())
        showPosition();
    else
        showAcquiring();
    update();
}

void ScreenAntenna::showAcquiring()
{
    pGpsProgressBar->setVisible(true);
    pGpsTitleLabel->setText(tr("Acquiring position: "));
    pGpsTitleLabel->setVisible(true);
    pGpsValueLabel->setVisible(false);
    pGpsWideLabel->setVisible(false);
    pProgressBarBlinkTimer->start(BLINK_MS);
}

void ScreenAntenna::showPosition()
{
    pGpsProgressBar->setVisible(false);
    pProgressBarBlinkTimer->stop();
    const bool allowed = pStatusUpdater->getGpsDisplayPositionAllowed();
    QLabel* const shownLabel = allowed ? pGpsValueLabel : pGpsWideLabel;
    QLabel* const hiddenLabel = allowed ? pGpsWideLabel : pGpsValueLabel;
    if (allowed)
        pGpsTitleLabel->setText(tr("Position: "));
    pGpsTitleLabel->setVisible(allowed);
    shownLabel->setText(pStatusUpdater->getGpsPositionStr());
    shownLabel->setVisible(true);
    hiddenLabel->setVisible(false);
}

// With all satellites found the lit phase asks for more than the bar's range, and the bar stays as it is.
void ScreenAntenna::handleGpsBlinkTimeout()
{
    gpsBlinkPhase = !gpsBlinkPhase;
    pGpsProgressBar->setValue(pStatusUpdater->getNumberOfGpsFound() + (gpsBlinkPhase ? 1 : 0));
}

void ScreenAntenna::showEvent(QShowEvent* event)
{
    logDebug() << "ScreenAntenna::showEvent(): About to update GPS (and start timer if needed).";
    updateGps();
    Screen::showEvent(event);
}

void ScreenAntenna::hideEvent(QHideEvent* event)
{
    logDebug() << "ScreenAntenna::hideEvent(): About to stop pProgressBarBlinkTimer.";
    if (pProgressBarBlinkTimer)
        pProgressBarBlinkTimer->stop();
    Screen::hideEvent(event);
}

void ScreenAntenna::retranslate()
{
    pBganSignalTitleLabel->setText(tr("BGAN signal: "));
    updateGps();
}

// Past the base class Screen on purpose: it would retranslate a second time.
void ScreenAntenna::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange) {
        logDebug() << "ScreenAntenna::changeEvent(): LanguageChange detected.";
        retranslate();
    }
    QWidget::changeEvent(event);
}
