// What the pages share in laying out their widgets. GUI thread only.
#ifndef LUMENPANEL_SCREENS_LAYOUTS_H
#define LUMENPANEL_SCREENS_LAYOUTS_H

#include "common/checked.h"

#include <QLabel>
#include <QString>

// No margins and no spacing. A template, since setSpacing() is not virtual.
template <typename Layout> void removeSpace(Layout* layout)
{
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
}

// A label with its object name, owned by the parent. source and line are those of checkedNew().
inline QLabel* newLabel(const char* source, int line, const char* objectName, Qt::Alignment alignment,
                        QWidget* parent)
{
    QLabel* const label = checkedNew<QLabel>(source, line, parent);
    label->setObjectName(QString::fromLatin1(objectName));
    label->setAlignment(alignment);
    return label;
}

// The label's own font in another size, in pixels. The family goes on following the application's.
inline void setPixelSize(QLabel* label, int size)
{
    QFont font = label->font();
    font.setPixelSize(size);
    label->setFont(font);
}

#endif
