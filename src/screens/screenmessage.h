// A page with one wrapped text above two key captions. It has no instance of its own; the entry of the PIN
// is built on it. GUI thread only.
#ifndef LUMENPANEL_SCREENS_SCREENMESSAGE_H
#define LUMENPANEL_SCREENS_SCREENMESSAGE_H

#include "screens/screen.h"

class QHBoxLayout;

class ScreenMessage : public Screen {
    Q_OBJECT

public:
    // pWindow is not owned and must outlive the screen.
    ScreenMessage(Window* pWindow, Screen::SCREEN_ID_ENUM screenId, QWidget* parent);

    void retranslate() override;

protected:
    // All owned.
    QLabel* pMessageLabel; // empty at start
    QLabel* pLeftLabel;    // "Cancel"
    QLabel* pRightLabel;   // "OK"

private:
    QHBoxLayout* createButtonRow();
};

#endif
