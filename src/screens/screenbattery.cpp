// The battery screen; see the header.
#include "screens/screenbattery.h"

#include "common/checked.h"
#include "model/statusupdater.h"
#include "screens/layouts.h"
#include "widgets/tbattlabel.h"

#include <QFrame>
#include <QGridLayout>
#include <QLabel>
#include <QVBoxLayout>

namespace {

const char SOURCE[] = "screenbattery";
const int SECOND_LINE_WIDTH_MAX = 220;
const int GAP_COLUMN_STRETCH = 10;
const char BACKGROUND_STYLE[] = "border: none; background: rgba(255,255,255,50)";

} // namespace

// One battery: its record, its widgets, and the row of the grid where they begin.
struct ScreenBattery::Half {
    BATT_TYPE_ENUM type;
    battery_t ScreenBattery::*battery;
    const char* name; // for the object names
    int row;
    TBattLabel* ScreenBattery::*icon;
    QLabel* ScreenBattery::*capacity;
    QLabel* ScreenBattery::*tempTitle;
    QLabel* ScreenBattery::*temp;
    QLabel* ScreenBattery::*secondLine;
};

const ScreenBattery::Half ScreenBattery::halves[2] = {
    {BATT_TYPE_INTERNAL, &ScreenBattery::battInt, "Int", 0, &ScreenBattery::pBattIntIcon,
     &ScreenBattery::pBattIntCapacityLabel, &ScreenBattery::pBattIntTempTitleLabel,
     &ScreenBattery::pBattIntTempLabel, &ScreenBattery::pBattInt2ndLabel},
    {BATT_TYPE_EXTERNAL, &ScreenBattery::battExt, "Ext", 3, &ScreenBattery::pBattExtIcon,
     &ScreenBattery::pBattExtCapacityLabel, &ScreenBattery::pBattExtTempTitleLabel,
     &ScreenBattery::pBattExtTempLabel, &ScreenBattery::pBattExt2ndLabel},
};

ScreenBattery::ScreenBattery(Window* pWindow)
    : Screen(pWindow, SCREEN_BATTERY, nullptr), pBackgroundFrame(nullptr), pNoBatteryLabel(nullptr),
      pBattIntIcon(nullptr), pBattIntCapacityLabel(nullptr), pBattIntTempTitleLabel(nullptr),
      pBattIntTempLabel(nullptr), pBattInt2ndLabel(nullptr), pBattExtIcon(nullptr),
      pBattExtCapacityLabel(nullptr), pBattExtTempTitleLabel(nullptr), pBattExtTempLabel(nullptr),
      pBattExt2ndLabel(nullptr)
{
    setLeftScreen(SCREEN_STATUS);
    setRightScreen(SCREEN_STATUS);
    setUpScreen(SCREEN_STATUS);
    setDownScreen(SCREEN_STATUS);
    setOkScreen(SCREEN_STATUS);

    createBackground();
    QVBoxLayout* const rows = checkedNew<QVBoxLayout>(SOURCE, __LINE__, this);
    removeSpace(rows);
    pNoBatteryLabel = newLabel(SOURCE, __LINE__, "pNoBatteryLabel", Qt::AlignCenter, this);
    // Four lines of text fill the panel's height, so nothing may stand between them.
    QGridLayout* const grid = checkedNew<QGridLayout>(SOURCE, __LINE__);
    removeSpace(grid);
    grid->setColumnStretch(1, GAP_COLUMN_STRETCH);
    grid->setColumnStretch(3, GAP_COLUMN_STRETCH);
    for (const Half& half : halves)
        createHalf(half, grid);
    rows->addStretch();
    rows->addWidget(pNoBatteryLabel);
    rows->addLayout(grid);
    rows->addStretch();

    connect(pStatusUpdater, SIGNAL(battDataChanged()), this, SLOT(updateBatteryStatus()),
            Qt::UniqueConnection);
    retranslate();
}

// Made first, so that it lies under everything.
void ScreenBattery::createBackground()
{
    pBackgroundFrame = checkedNew<QFrame>(SOURCE, __LINE__, this);
    pBackgroundFrame->setObjectName(QString::fromLatin1("pBackgroundFrame"));
    pBackgroundFrame->setGeometry(
        QRect(QPoint(0, PANEL_HEIGHT / 2), QPoint(PANEL_WIDTH - 1, PANEL_HEIGHT - 1)));
    pBackgroundFrame->setStyleSheet(QString::fromLatin1(BACKGROUND_STYLE));
}

void ScreenBattery::createHalf(const Half& half, QGridLayout* grid)
{
    const auto label = [this, &half](const char* name) {
        return newLabel(SOURCE, __LINE__, ("pBatt" + QByteArray(half.name) + name).constData(),
                        Qt::AlignLeft | Qt::AlignVCenter, this);
    };
    TBattLabel* const icon = checkedNew<TBattLabel>(SOURCE, __LINE__, this);
    icon->setObjectName(QString::fromLatin1("pBatt%1Icon").arg(QString::fromLatin1(half.name)));
    icon->updateIcon();
    this->*half.icon = icon;
    this->*half.capacity = label("CapacityLabel");
    this->*half.tempTitle = label("TempTitleLabel");
    this->*half.temp = label("TempLabel");
    this->*half.secondLine = label("2ndLabel");
    (this->*half.secondLine)->setMaximumWidth(SECOND_LINE_WIDTH_MAX);
    grid->addWidget(icon, half.row, 0, 2, 1);
    grid->addWidget(this->*half.capacity, half.row, 2);
    grid->addWidget(this->*half.tempTitle, half.row, 4);
    grid->addWidget(this->*half.temp, half.row, 5);
    grid->addWidget(this->*half.secondLine, half.row + 1, 2, 1, 4);
}

void ScreenBattery::updateBatteryStatus()
{
    battInt = pStatusUpdater->getBattInt();
    battExt = pStatusUpdater->getBattExt();
    const bool internal = battInt.batteryConnectionStatus != BATT_ABSENT;
    const bool external = battExt.batteryConnectionStatus != BATT_ABSENT;
    pNoBatteryLabel->setVisible(!internal && !external);
    pBackgroundFrame->setVisible(internal && external);
    for (const Half& half : halves)
        updateHalf(half);
}

void ScreenBattery::updateHalf(const Half& half)
{
    const battery_t& battery = this->*half.battery;
    const bool present = battery.batteryConnectionStatus != BATT_ABSENT;
    (this->*half.icon)->setVisible(present);
    for (QLabel* const label :
         {this->*half.capacity, this->*half.tempTitle, this->*half.temp, this->*half.secondLine})
        label->setVisible(present);
    if (!present)
        return;
    (this->*half.icon)->setCapacity(battery.capacity);
    (this->*half.capacity)->setText(pStatusUpdater->getBattCapacityLabel(half.type));
    (this->*half.temp)->setText(pStatusUpdater->getBattTempValueLabel(half.type));
    QLabel* const secondLine = this->*half.secondLine;
    secondLine->setText(pStatusUpdater->getBatt2ndLabel(half.type));
    secondLine->setMaximumWidth(SECOND_LINE_WIDTH_MAX);
    // The widest line and the icon are more than the panel. A line that doesn't fit is to be cut at its end,
    // and not to squeeze the texts above it.
    secondLine->setMinimumWidth(
        qMin(secondLine->sizeHint().width(), PANEL_WIDTH - (this->*half.icon)->sizeHint().width()));
}

void ScreenBattery::retranslate()
{
    pNoBatteryLabel->setText(tr("No battery connected"));
    pBattIntIcon->setTopLayerText(tr("Int"));
    pBattExtIcon->setTopLayerText(tr("Ext"));
    pBattIntTempTitleLabel->setText(tr("Temp: "));
    pBattExtTempTitleLabel->setText(tr("Temp: "));
    updateBatteryStatus();
}
