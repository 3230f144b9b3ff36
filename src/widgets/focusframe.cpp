// The frame; see the header.
#include "widgets/focusframe.h"

#include <QPainter>
#include <QStyle>
#include <QStyleOption>

FocusFrame::FocusFrame(const QString& style, QWidget* parent) : QFrame(parent)
{
    setStyleSheet(style);
    // The style lets Qt draw the frame as the widget's background, before paintEvent(); here that is done
    // once.
    ensurePolished();
    setAttribute(Qt::WA_StyledBackground, false);
}

void FocusFrame::renewPicture()
{
    QPixmap picture(size());
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    QStyleOption option;
    option.initFrom(this);
    style()->drawPrimitive(QStyle::PE_Widget, &option, &painter, this);
    painter.end();
    m_picture = picture;
}

void FocusFrame::paintEvent(QPaintEvent*)
{
    if (m_picture.size() != size())
        renewPicture();
    QPainter painter(this);
    painter.drawPixmap(0, 0, m_picture);
}
