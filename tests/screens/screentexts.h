// Every text that the screens of a window hold, shown or not, with the place where it stands and the font in
// which it is written: labels, texts on icons, rows of lists. To be compared with those of another window.
#ifndef TESTS_SCREENS_SCREENTEXTS_H
#define TESTS_SCREENS_SCREENTEXTS_H

#include "app/window.h"
#include "screens/screen.h"

#include <QLabel>
#include <QMap>
#include <QRegularExpression>
#include <QStringList>
#include <QTreeWidget>

struct ScreenText {
    QString text;
    QString font; // family and size in pixels
    bool hidden;  // by itself, not by the screen around it
};
// By place, as "SCREEN_MENU/pTreeWidget/2/0/1" for a row or "SCREEN_STATUS/pWifiLabel/pTopLayerLabel".
typedef QMap<QString, ScreenText> ScreenTexts;

namespace screentexts {

inline QString fontOf(const QFont& font)
{
    return font.family() + " " + QString::number(font.pixelSize());
}

inline QString placeOf(const QWidget* widget)
{
    QStringList names;
    for (const QWidget* at = widget; at && !qobject_cast<const Screen*>(at); at = at->parentWidget())
        names.prepend(at->objectName());
    return names.join("/");
}

// Without what changes by itself: the time for which a bundle has run, and the colour of a popup's captions,
// which are black until their keys work.
inline QString lasting(QString text, const QString& place)
{
    static const QRegularExpression time("\\d+:\\d\\d:\\d\\d");
    static const QRegularExpression colour("</?font[^>]*>");
    text.replace(time, "h:mm:ss");
    if (place.startsWith("SCREEN_POPUP"))
        text.remove(colour);
    return text;
}

inline void addRows(ScreenTexts& texts, const QString& place, const QTreeWidget* list, QTreeWidgetItem* row)
{
    for (int column = 0; column < list->columnCount(); ++column) {
        const QVariant own = row->data(column, Qt::FontRole);
        const QFont font = own.isValid() ? own.value<QFont>() : list->font();
        texts.insert(place + (column > 0 ? "|" + QString::number(column) : QString()),
                     {lasting(row->text(column), place), fontOf(font), row->isHidden()});
    }
    for (int i = 0; i < row->childCount(); ++i)
        addRows(texts, place + "/" + QString::number(i), list, row->child(i));
}

} // namespace screentexts

inline ScreenTexts textsOf(const Window& window)
{
    using namespace screentexts;
    ScreenTexts texts;
    for (const Screen* screen : window.findChildren<Screen*>()) {
        for (const QLabel* label : screen->findChildren<QLabel*>()) {
            const QString place = screen->getScreenName() + "/" + placeOf(label);
            texts.insert(place, {lasting(label->text(), place), fontOf(label->font()), label->isHidden()});
        }
        for (const QTreeWidget* list : screen->findChildren<QTreeWidget*>()) {
            for (int i = 0; i < list->topLevelItemCount(); ++i) {
                addRows(texts, QString("%1/%2/%3").arg(screen->getScreenName(), placeOf(list)).arg(i), list,
                        list->topLevelItem(i));
            }
        }
    }
    return texts;
}

#endif
