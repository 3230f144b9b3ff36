// The antenna screen: signal level and position; while there is no fix, a bar with the satellites found,
// its next segment blinking.
//
// Read-only; any key leads back to the status screen. GUI thread only; the model's signals from the bus
// thread arrive queued.
#ifndef LUMENPANEL_SCREENS_SCREENANTENNA_H
#define LUMENPANEL_SCREENS_SCREENANTENNA_H

#include "screens/screen.h"

class QGridLayout;
class QHBoxLayout;
class QProgressBar;
class QTimer;

class ScreenAntenna : public Screen {
    Q_OBJECT

public:
    // pWindow is not owned and must outlive the screen.
    explicit ScreenAntenna(Window* pWindow);

    void keyLeftClicked() override;
    void retranslate() override;

public slots:
    // level: tenths of dBHz.
    void updateBganSignalLabel(int level);
    // Shows what the model knows of the position; without a fix it starts the blinking anew.
    void updateGps();
    // The blinking segment turns on or off.
    void handleGpsBlinkTimeout();

protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void createSignalRow(QGridLayout* grid);
    void createGpsRows(QGridLayout* grid);
    void createGpsBar(QHBoxLayout* row);
    void showAcquiring();
    void showPosition();

    // All owned.
    QLabel* pBganSignalTitleLabel;
    QLabel* pBganSignalLabel;
    QLabel* pBganSignalUnitLabel;
    QLabel* pGpsTitleLabel;
    QLabel* pGpsValueLabel;
    QLabel* pGpsWideLabel; // what stands instead of a position, over the whole width
    QProgressBar* pGpsProgressBar;
    QTimer* pProgressBarBlinkTimer;
    bool gpsBlinkPhase; // whether the blinking segment is lit
};

#endif
