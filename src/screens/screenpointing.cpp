// The pointing screen; see the header.
#include "screens/screenpointing.h"

#include "app/guiapp.h"
#include "app/window.h"
#include "common/checked.h"
#include "common/log.h"
#include "model/pointing_command.h"
#include "model/statusupdater.h"
#include "runtime/vx_posix_reset.h"
#include "screens/layouts.h"

#include <QCoreApplication>
#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QPixmap>
#include <QProgressBar>
#include <QVBoxLayout>

namespace {

const char SOURCE[] = "screenpointing";
const int LEVEL_MIN = 320; // tenths of dBHz; the two ends of the bar
const int LEVEL_MAX = 600;
const int BAR_HEIGHT = 30;
const int VALUE_FONT_SIZE = 18;
const char GRID_PICTURE[] = "/grid_12_fields.png";
// The margins put the bar between the two ends of the scale.
const char BAR_STYLE[] =
    "QProgressBar {border: 2px solid #424242;background-color: #BDBDBD;margin-left: 28px;margin-right: "
    "32px;margin-top: 7px;margin-bottom: 0px;}QProgressBar::chunk {background-color: #424242;margin: "
    "1px;border: 1px solid black;}";

} // namespace

ScreenPointing::ScreenPointing(Window* pWindow)
    : Screen(pWindow, SCREEN_POINTING, nullptr), pProgressBar(nullptr), pCancelLabel(nullptr),
      pSignalValueLabel(nullptr), pUnitLabel(nullptr), pOkLabel(nullptr), pGridLabel(nullptr)
{
    QVBoxLayout* const rows = checkedNew<QVBoxLayout>(SOURCE, __LINE__, this);
    removeSpace(rows);
    createBar();
    rows->addWidget(pProgressBar);
    rows->addStretch();
    rows->addLayout(createBottomRow());
    createGrid();
    retranslate(); // in case no translation is ever loaded
    updateSignalLevel(pStatusUpdater->getSignalLevel());
    connect(pStatusUpdater, SIGNAL(signalLevelChanged(int)), this, SLOT(updateSignalLevel(int)),
            Qt::UniqueConnection);
}

void ScreenPointing::createBar()
{
    pProgressBar = checkedNew<QProgressBar>(SOURCE, __LINE__, this);
    pProgressBar->setObjectName(QString::fromLatin1("pProgressBar"));
    pProgressBar->setRange(LEVEL_MIN, LEVEL_MAX);
    pProgressBar->setValue(LEVEL_MIN);
    pProgressBar->setTextVisible(false);
    pProgressBar->setFixedWidth(PANEL_WIDTH);
    pProgressBar->setFixedHeight(BAR_HEIGHT);
    pProgressBar->setStyleSheet(QString::fromLatin1(BAR_STYLE));
}

// The captions at the edges, the value with its unit in the middle.
QHBoxLayout* ScreenPointing::createBottomRow()
{
    QHBoxLayout* const row = checkedNew<QHBoxLayout>(SOURCE, __LINE__);
    pCancelLabel = newLabel(SOURCE, __LINE__, "pCancelLabel", Qt::AlignBottom, this);
    pSignalValueLabel = newLabel(SOURCE, __LINE__, "pSignalValueLabel", Qt::AlignBottom, this);
    setPixelSize(pSignalValueLabel, VALUE_FONT_SIZE);
    pUnitLabel = newLabel(SOURCE, __LINE__, "pUnitLabel", Qt::AlignBottom, this);
    pUnitLabel->setText(QString::fromLatin1(" dBHz"));
    pOkLabel = newLabel(SOURCE, __LINE__, "pOkLabel", Qt::AlignBottom, this);
    row->addWidget(pCancelLabel);
    row->addStretch();
    row->addWidget(pSignalValueLabel);
    row->addWidget(pUnitLabel);
    row->addStretch();
    row->addWidget(pOkLabel);
    return row;
}

// Outside of the layouts and made last, so that it lies above everything.
void ScreenPointing::createGrid()
{
    pGridLabel = newLabel(SOURCE, __LINE__, "pGridLabel", Qt::AlignLeft | Qt::AlignTop, this);
    pGridLabel->setFixedHeight(PANEL_HEIGHT);
    pGridLabel->setFixedWidth(PANEL_WIDTH);
    const QString fileName = GuiApp::getResourcePath() + QString::fromLatin1(GRID_PICTURE);
    const QPixmap pixmap(fileName);
    if (pixmap.isNull()) {
        logDebug() << "ScreenPointing::ScreenPointing(): ERROR !!!!!!!! Pixmap not found for filename="
                   << fileName << ". Now exiting lumenpanel!";
        vx_panic("ERROR!!! Missing file used by lumenpanel. Exiting lumenpanel.");
    }
    pGridLabel->setPixmap(pixmap);
}

void ScreenPointing::updateSignalLevel(int level)
{
    pSignalValueLabel->setText(pStatusUpdater->getSignalLevelStr(level));
    pProgressBar->setValue(qBound(LEVEL_MIN, level, LEVEL_MAX));
    update();
}

// While the model goes on reporting pointing, the window brings this screen up again at once.
void ScreenPointing::keyLeftClicked()
{
    logDebug() << "ScreenPointing::keyLeftClicked(): About to run send_pointing_msg(\"cancel\")";
    send_pointing_msg("cancel");
    logDebug() << "ScreenPointing::keyLeftClicked(): finished command send_pointing_msg(\"cancel\")";
    m_pMainWindow->hideAndRemoveScreenFromHistory(SCREEN_POINTING);
}

void ScreenPointing::keyOkClicked()
{
    logDebug() << "ScreenPointing::keyOkClicked(): About to ask the RadioModule to stop pointing and start "
                  "registering.";
    pStatusUpdater->startHidePointNowText(); // the end of pointing must not ask for the next one at once
    m_pMainWindow->setStatusText(QString());
    send_pointing_msg("stop");
}

void ScreenPointing::keyUpClicked()
{
    toogleMuteBuzzer();
}

void ScreenPointing::keyDownClicked()
{
    toogleMuteBuzzer();
}

void ScreenPointing::toogleMuteBuzzer() const
{
    logDebug() << "ScreenPointing::toogleMuteBuzzer(): Here the buzzer mute shall be toggled on/off";
}

void ScreenPointing::retranslate()
{
    logDebug() << "ScreenPointing::retranslate(): Start of function.";
    pCancelLabel->setText(QCoreApplication::translate("Shared_translations", "Cancel"));
    pOkLabel->setText(QCoreApplication::translate("Shared_translations", "OK"));
}

// A change of the language retranslates twice, here and in the base class. That is kept: it costs nothing
// that is seen.
void ScreenPointing::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange) {
        logDebug() << "ScreenPointing::changeEvent(): shall re-translate here...";
        retranslate();
    } else if (event->type() == QEvent::FontChange) {
        pSignalValueLabel->setFont(*GuiApp::getFont(VALUE_FONT_SIZE, LANG_UNDEFINED));
    }
    Screen::changeEvent(event);
}
