// A row of the settings menu or of the bundle list: a tree item with an id that tells the list's owner
// which entry it is, and with room for the number of a bundle or for the identity and time of an alert.
//
// It knows nothing of what its entry does. GUI thread only; nothing blocks.
#ifndef LUMENPANEL_WIDGETS_TTREEWIDGETITEM_H
#define LUMENPANEL_WIDGETS_TTREEWIDGETITEM_H

#include "model/menu_items.h"

#include <QMetaType>
#include <QString>
#include <QTreeWidgetItem>

class TTreeWidgetItem : public QTreeWidgetItem {
public:
    typedef ::WIDGET_ITEM_ID_ENUM WIDGET_ITEM_ID_ENUM;

    // A row at the top level, appended to the list, which owns it. It belongs to no bundle and no alert.
    TTreeWidgetItem(QTreeWidget* parent, WIDGET_ITEM_ID_ENUM id, const QString& text);
    // A row below another, appended to its children and owned by it. parent must be a TTreeWidgetItem,
    // whose bundle number the row inherits. The last three are an alert's, 0 for any other row; the time
    // is in milliseconds since the epoch.
    TTreeWidgetItem(QTreeWidgetItem* parent, WIDGET_ITEM_ID_ENUM id, const QString& text,
                    unsigned int eventSubId, unsigned int eventId, long long timeStampMs);

    WIDGET_ITEM_ID_ENUM getId() const;
    // Number of the bundle, -1 for a row that belongs to none. Rows below are not changed by the setter.
    int getDefinedBundleNumber() const;
    void setDefinedBundleNumber(int number);
    unsigned int getEventSubId() const;
    unsigned int getEventId() const;
    // Time of the alert in milliseconds since the epoch, 0 without one.
    long long getAlertTimeEpoch() const;
    // Time of the alert in local time, as "4 Mar 2015 09:07:05"; empty for a time before 2013, when the
    // clock of the terminal was not set.
    QString getEventTimeStr() const;

    void setTextSecondColumn(const QString& text);

private:
    const WIDGET_ITEM_ID_ENUM m_id;
    const unsigned int m_eventId;
    const unsigned int m_eventSubId;
    int m_definedBundleNumber;
    const long long m_timeStampMs;
};

Q_DECLARE_METATYPE(TTreeWidgetItem::WIDGET_ITEM_ID_ENUM)

#endif
