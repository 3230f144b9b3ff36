// The pointing screen: the signal level as number and bar while the antenna is aimed, under a scale of
// twelve fields.
//
// It neither begins nor ends by itself: the window brings it up and takes it away as the model reports
// pointing, and OK and Cancel only ask the pointing process. GUI thread only; the level from the bus thread
// arrives queued.
#ifndef LUMENPANEL_SCREENS_SCREENPOINTING_H
#define LUMENPANEL_SCREENS_SCREENPOINTING_H

#include "screens/screen.h"

class QHBoxLayout;
class QProgressBar;

class ScreenPointing : public Screen {
    Q_OBJECT

public:
    // pWindow is not owned and must outlive the screen. Ends the process if the picture of the scale cannot
    // be loaded.
    explicit ScreenPointing(Window* pWindow);

    // The place where up and down shall mute the buzzer one day; today it only logs.
    void toogleMuteBuzzer() const;

    // Cancel: gives pointing up. Writes to the bus.
    void keyLeftClicked() override;
    void keyUpClicked() override;
    void keyDownClicked() override;
    // Ends pointing, so that the terminal registers. Writes to the bus; the screen stays until the model
    // reports the end.
    void keyOkClicked() override;
    void retranslate() override;

public slots:
    // level: tenths of dBHz; below 320 there is no signal, and above 600 the bar is full.
    void updateSignalLevel(int level);

protected:
    void changeEvent(QEvent* event) override;

private:
    void createBar();
    QHBoxLayout* createBottomRow();
    void createGrid();

    // All owned.
    QProgressBar* pProgressBar;
    QLabel* pCancelLabel;
    QLabel* pSignalValueLabel;
    QLabel* pUnitLabel;
    QLabel* pOkLabel;
    QLabel* pGridLabel; // the scale, above everything else
};

#endif
