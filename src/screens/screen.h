// The base of all pages of the panel: 256 by 64 pixels on black, an id, a neighbour for each key, and the
// way of a key press to its handler. It also takes the screenshots.
//
// A page reacts by overriding the key handlers or by naming neighbours. Key releases do nothing, and
// auto-repeat counts as presses. GUI thread only; createScreenshot() writes its file at once.
#ifndef LUMENPANEL_SCREENS_SCREEN_H
#define LUMENPANEL_SCREENS_SCREEN_H

#include <QString>
#include <QWidget>

class QLabel;
class QVBoxLayout;
class StatusUpdater;
class Window;

class Screen : public QWidget {
    Q_OBJECT

public:
    enum SCREEN_ID_ENUM {
        SCREEN_UNDEFINED = 0,
        SCREEN_ENTER_PIN = 3,
        SCREEN_POINTING = 6,
        SCREEN_STATUS = 7,
        SCREEN_BATTERY = 8,
        SCREEN_ANTENNA = 9,
        SCREEN_ACTION = 10,
        SCREEN_POPUP = 11,
        SCREEN_MENU = 12
    };

    enum { PANEL_WIDTH = 256, PANEL_HEIGHT = 64 }; // pixels

    // pWindow: the gate of screen changes, not owned; must outlive the screen.
    Screen(Window* pWindow, SCREEN_ID_ENUM screenId, QWidget* parent);
    ~Screen() override;

    // What a key without a handler of its own leads to; SCREEN_UNDEFINED, as at start, for nothing.
    void setUpScreen(SCREEN_ID_ENUM screenId);
    void setDownScreen(SCREEN_ID_ENUM screenId);
    void setLeftScreen(SCREEN_ID_ENUM screenId);
    void setRightScreen(SCREEN_ID_ENUM screenId);
    void setOkScreen(SCREEN_ID_ENUM screenId);
    void setLongOkScreen(SCREEN_ID_ENUM screenId);

    SCREEN_ID_ENUM getId() const;
    // "SCREEN_STATUS" and so on; "UNDEFINED" for a number that is no screen.
    QString getScreenName() const;
    // A picture over the whole screen. A file that doesn't load leaves it empty, without an error.
    void setPixmap(const QString& fileName);
    // Writes the screen as screen_yyyyMMdd_hhmmss.bmp into the screenshot directory. Blocks on the file;
    // what goes wrong is only logged. A second one within the second overwrites the first.
    void createScreenshot();

    // By default each goes to the key's neighbour, without a trace in the history.
    virtual void keyLeftClicked();
    virtual void keyRightClicked();
    virtual void keyUpClicked();
    virtual void keyDownClicked();
    virtual void keyOkClicked();
    virtual void keyLongOkPressed();
    // The language has changed. Empty by default.
    virtual void retranslate();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void changeEvent(QEvent* event) override;

    Window* m_pMainWindow;         // not owned
    StatusUpdater* pStatusUpdater; // the model, not owned

private:
    void showNeighbour(SCREEN_ID_ENUM neighbour, const char* keyName);

    const SCREEN_ID_ENUM m_screenId;
    SCREEN_ID_ENUM upScreen;
    SCREEN_ID_ENUM downScreen;
    SCREEN_ID_ENUM leftScreen;
    SCREEN_ID_ENUM rightScreen;
    SCREEN_ID_ENUM okScreen;
    SCREEN_ID_ENUM longOkScreen;
    QVBoxLayout* pPixmapLayout; // owned; null until setPixmap()
    QLabel* pPixmapLabel;       // owned; null until setPixmap()
};

#endif
