// Entry of the SIM's PIN, four digits with five keys: up and down change a digit, left, right and OK move
// from one to the next, and OK on the last one has the PIN checked.
//
// Only the digit being edited is readable. The PIN stays here until the next entry begins; nothing else keeps
// it. GUI thread only.
#ifndef LUMENPANEL_SCREENS_SCREENENTERPIN_H
#define LUMENPANEL_SCREENS_SCREENENTERPIN_H

#include "screens/screenmessage.h"

#include <QList>
#include <QString>

class ScreenEnterPin : public ScreenMessage {
    Q_OBJECT

public:
    // pWindow is not owned and must outlive the screen.
    explicit ScreenEnterPin(Window* pWindow);

    // Four zeros, the first digit current.
    void resetScreen();
    // The digits as decimal text, nothing between them.
    QString getEnteredPin() const;
    int getNumOfDigits() const;
    // Hands the PIN to the model and puts up the popup that waits for the answer. Writes to the database.
    void validatePin();

    void keyLeftClicked() override;
    void keyRightClicked() override;
    void keyUpClicked() override;
    void keyDownClicked() override;
    void keyOkClicked() override;
    void retranslate() override;

public slots:
    void updateText();
    // The SIM has refused the PIN: tells it and begins anew.
    void handleWrongPin();

protected:
    void showEvent(QShowEvent* event) override;

private:
    bool isOnLastDigit() const;
    void turnDigit(int step);
    void updateCaptions();

    QList<int> pinDigits; // 0 to 9 each
    int cursorPos;        // the digit being edited
    int retriesLeft;      // before the SIM blocks
};

#endif
