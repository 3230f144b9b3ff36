// The battery screen: capacity, temperature and state of the internal and the external battery.
//
// Read-only; any key leads back to the status screen. All texts about a battery are the model's. GUI thread
// only; the model's signals from the bus thread arrive queued.
#ifndef LUMENPANEL_SCREENS_SCREENBATTERY_H
#define LUMENPANEL_SCREENS_SCREENBATTERY_H

#include "model/battery.h"
#include "screens/screen.h"

class QFrame;
class QGridLayout;
class TBattLabel;

class ScreenBattery : public Screen {
    Q_OBJECT

public:
    // pWindow is not owned and must outlive the screen.
    explicit ScreenBattery(Window* pWindow);

    void retranslate() override;

public slots:
    // Fetches both batteries from the model.
    void updateBatteryStatus();

private:
    struct Half;
    static const Half halves[2];

    void createBackground();
    void createHalf(const Half& half, QGridLayout* grid);
    void updateHalf(const Half& half);

    battery_t battInt;
    battery_t battExt;
    // All owned.
    QFrame* pBackgroundFrame; // the lighter band behind the external battery, if there are two
    QLabel* pNoBatteryLabel;
    TBattLabel* pBattIntIcon;
    QLabel* pBattIntCapacityLabel;
    QLabel* pBattIntTempTitleLabel;
    QLabel* pBattIntTempLabel;
    QLabel* pBattInt2ndLabel;
    TBattLabel* pBattExtIcon;
    QLabel* pBattExtCapacityLabel;
    QLabel* pBattExtTempTitleLabel;
    QLabel* pBattExtTempLabel;
    QLabel* pBattExt2ndLabel;
};

#endif
