// An icon of the status screen: a picture chosen by name and state, a small text on top of it, a dark
// layer that fades in and out while the state is changing, and an optional blink between two pictures.
//
// Pictures lie in the resource path as NAME_enabled.png and NAME_disabled.png. A picture that is missing
// is logged and leaves the icon empty. Owns its layers and timers. GUI thread only; nothing blocks but the
// reading of a picture. A failed allocation ends the process.
#ifndef LUMENPANEL_WIDGETS_TLABEL_H
#define LUMENPANEL_WIDGETS_TLABEL_H

#include "model/interfaces.h"

#include <QLabel>
#include <QString>

class QFrame;
class QHBoxLayout;
class QTimer;

class TLabel : public QLabel {
    Q_OBJECT

public:
    // Decides the height at which the picture is drawn.
    enum ICON_ID_ENUM {
        ICON_BATTERY = 1,
        ICON_WIFI = 2,
        ICON_ISDN = 3,
        ICON_LAN = 4,
        ICON_PHONE = 5,
        ICON_USB = 6,
        ICON_WARNING = 7,
        ICON_ANTENNA = 8,
        ICON_STATUS_TEXT = 9, // text only, no picture
        ICON_CONNECT = 10,
        ICON_MENU = 11
    };

    // iconName: base name of the picture's files, empty for none. Loads nothing: the owner calls
    // updateIcon() next.
    TLabel(ICON_ID_ENUM iconId, const QString& iconName, INTERFACE_STATE_ENUM state, QWidget* parent);

    // Loads the picture of the present name, state and phase of the blink, and sets the dark layer.
    virtual void updateIcon();
    // The text on the upper edge of the icon; an empty text hides its layer. Wants the picture to be
    // loaded, since its height gives the text its place.
    virtual void setTopLayerText(const QString& text);
    virtual void setTopLayerStylesheet(const QString& style);
    // Qt::AlignLeft, Qt::AlignRight or Qt::AlignHCenter: where on the icon the text stands.
    virtual void setTopLayerTextAlignment(QFlags<Qt::AlignmentFlag> alignment);
    // Any value is kept, an illegal one with a log line; the two states of change run the fade.
    virtual void setState(INTERFACE_STATE_ENUM state);
    virtual INTERFACE_STATE_ENUM getState();

    // The two pictures of a blink. To be called before setBlinking().
    void setBlinkIconNames(const QString& iconName, const QString& blinkIconName);
    // Without names this is logged and does nothing. A stopped blink starts again when the label is shown.
    void setBlinking(bool blinking);
    // Width of the present picture in pixels, 0 without one.
    int getPixmapWidth() const;
    // Name of the state, "ERROR!!! undefined m_state str" for one that has none.
    QString getStateStr() const;

public slots:
    // One step of the blink or of the fade; both start their timer again.
    void handleBlinkTimeout();
    void handleActivatingTimeout();

protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void changeEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

    // Path of a picture: the resource path, the name, the suffix and ".png".
    static QString picturePath(const QString& name, const QString& suffix);

    QLabel* pTopLayerLabel; // owned
    QFrame* pDarkLayer;     // owned
    INTERFACE_STATE_ENUM m_state;

private:
    void updateDarkLayer();
    void setDarkLayerStyle(const QString& style);
    QString fadeStyle() const;
    bool isChangingState() const;
    void stepFade();
    void startActivatingTimer();
    void stopActivatingTimer(const char* state);
    int pictureHeight() const;

    const ICON_ID_ENUM m_iconId;
    QString m_iconName;
    QString m_blinkIconName;
    QHBoxLayout* pLayout;     // owned
    QTimer* pBlinkTimer;      // owned; null until setBlinkIconNames()
    QTimer* pActivatingTimer; // owned; null until the first state of change
    bool blinkPhase;          // whether the other picture is due
    int fadeLevel;            // 0 to 10
    bool fadeUp;
};

#endif
