// A frame drawn by its style sheet, kept as a picture: rounded corners of a style sheet are stroked anew at
// each repaint, which costs as much as half of a screen, and the frame lies above items that repaint often.
//
// Looks exactly like a QFrame with the same style sheet. GUI thread only.
#ifndef LUMENPANEL_WIDGETS_FOCUSFRAME_H
#define LUMENPANEL_WIDGETS_FOCUSFRAME_H

#include <QFrame>
#include <QPixmap>
#include <QString>

class FocusFrame : public QFrame {
    Q_OBJECT

public:
    // style: the frame's own style sheet, for good.
    FocusFrame(const QString& style, QWidget* parent);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void renewPicture();

    QPixmap m_picture; // of the present size, null before the first paint
};

#endif
