// A row of the settings menu or of the bundle list; see the header.
#include "widgets/ttreewidgetitem.h"

#include "common/log.h"

#include <QDateTime>

namespace {

const int NO_BUNDLE = -1;
const long long START_OF_2013_MS = 1356998400000LL; // 1 January 2013, 00:00 UTC

} // namespace

TTreeWidgetItem::TTreeWidgetItem(QTreeWidget* parent, WIDGET_ITEM_ID_ENUM id, const QString& text)
    : QTreeWidgetItem(parent), m_id(id), m_eventId(0), m_eventSubId(0), m_definedBundleNumber(NO_BUNDLE),
      m_timeStampMs(0)
{
    setText(0, text);
}

TTreeWidgetItem::TTreeWidgetItem(QTreeWidgetItem* parent, WIDGET_ITEM_ID_ENUM id, const QString& text,
                                 unsigned int eventSubId, unsigned int eventId, long long timeStampMs)
    : QTreeWidgetItem(parent), m_id(id), m_eventId(eventId), m_eventSubId(eventSubId),
      m_definedBundleNumber(static_cast<TTreeWidgetItem*>(parent)->getDefinedBundleNumber()),
      m_timeStampMs(timeStampMs)
{
    setText(0, text);
}

TTreeWidgetItem::WIDGET_ITEM_ID_ENUM TTreeWidgetItem::getId() const
{
    return m_id;
}

int TTreeWidgetItem::getDefinedBundleNumber() const
{
    return m_definedBundleNumber;
}

void TTreeWidgetItem::setDefinedBundleNumber(int number)
{
    m_definedBundleNumber = number;
}

unsigned int TTreeWidgetItem::getEventSubId() const
{
    return m_eventSubId;
}

unsigned int TTreeWidgetItem::getEventId() const
{
    return m_eventId;
}

long long TTreeWidgetItem::getAlertTimeEpoch() const
{
    return m_timeStampMs;
}

void TTreeWidgetItem::setTextSecondColumn(const QString& text)
{
    setData(1, Qt::DisplayRole, text);
}

QString TTreeWidgetItem::getEventTimeStr() const
{
    logDebug() << "TTreeWidgetItem::getEventTimeStr(): m_timeStampMs=" << m_timeStampMs << " for m_eventId=0x"
               << hexText(m_eventId);
    const QString returnStr =
        QDateTime::fromMSecsSinceEpoch(m_timeStampMs).toString(QString::fromLatin1("d MMM yyyy hh:mm:ss"));
    if (m_timeStampMs < START_OF_2013_MS) {
        logDebug() << "TTreeWidgetItem::getEventTimeStr(): time is before 1/1-2013 (m_timeStampMs="
                   << m_timeStampMs << " is less than " << START_OF_2013_MS << "). Do not show time.";
        return QString();
    }
    logDebug() << "TTreeWidgetItem::getEventTimeStr(): About to return returnStr= " << returnStr;
    return returnStr;
}
