// The list of the settings menu and of the bundles; see the header.
#include "widgets/ttreewidget.h"

#include "common/checked.h"
#include "common/log.h"

#include <QFontMetrics>
#include <QKeyEvent>
#include <QPainter>
#include <QScrollBar>
#include <QStyle>
#include <QStyledItemDelegate>
#include <QTreeWidgetItemIterator>

namespace {

const char SOURCE[] = "ttreewidget";
const char LIST_STYLE[] = "selection-background-color: rgba(80, 80, 80, 255); "
                          "background: rgba(0,0,0,255); color: rgba(255,255,255,255)";

// Draws a row without the dotted line around the current one: it would run through the letters, and the
// grey ground of the selection says the same.
//
// Accents on the capitals of the Latin font reach out of the row by a line, where the style cuts them, and
// an E with an accent would read as one with a dot. So each row also draws what the next one has to say in
// its last line. (The next one can't: when this row is drawn anew alone, the accents would go.)
class PlainRow : public QStyledItemDelegate {
public:
    explicit PlainRow(TTreeWidget* list) : QStyledItemDelegate(list) {}

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override
    {
        QStyledItemDelegate::paint(painter, option, index);
        const QTreeView* const list = static_cast<const QTreeView*>(parent());
        const QModelIndex below = list->indexBelow(index);
        const QRect place = list->visualRect(below);
        if (index.column() == 0 && below.isValid() && place.top() < list->viewport()->height())
            drawAccents(painter, below, place);
    }

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override
    {
        QStyledItemDelegate::initStyleOption(option, index);
        option->state &= ~QStyle::State_HasFocus;
    }

private:
    // Only of the names: rows with a check mark have their text further right, and stay within.
    void drawAccents(QPainter* painter, const QModelIndex& row, const QRect& place) const
    {
        const QTreeView* const list = static_cast<const QTreeView*>(parent());
        const QVariant ownFont = row.data(Qt::FontRole);
        const QFont font = ownFont.isValid() ? ownFont.value<QFont>() : list->font();
        const QFontMetrics metrics(font);
        const QString text = row.data(Qt::DisplayRole).toString();
        const int above = -metrics.ascent() - metrics.boundingRect(text).top();
        if (above <= 0 || row.data(Qt::CheckStateRole).isValid())
            return;
        const int margin = list->style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, list) + 1;
        const QVariant colour = row.data(Qt::ForegroundRole);
        painter->save();
        painter->setClipRect(QRect(place.left(), place.top() - above, place.width(), above));
        painter->setFont(font);
        painter->setPen(colour.isValid() ? colour.value<QBrush>().color() : QColor(Qt::white));
        painter->drawText(place.left() + margin,
                          place.top() + (place.height() - metrics.height()) / 2 + metrics.ascent(),
                          metrics.elidedText(text, Qt::ElideRight, place.width() - 2 * margin));
        painter->restore();
    }
};

} // namespace

TTreeWidget::TTreeWidget(QWidget* parent) : QTreeWidget(parent)
{
    // By the name that the signal carries, for whoever has it delivered later or records it.
    qRegisterMetaType<TTreeWidgetItem::WIDGET_ITEM_ID_ENUM>("TTreeWidgetItem::WIDGET_ITEM_ID_ENUM");
}

// Without a frame four rows of the Latin fonts fill the panel's height exactly.
void TTreeWidget::setUpList(int columns)
{
    setColumnCount(columns);
    setHeaderHidden(true);
    setRootIsDecorated(false);
    setFrameShape(QFrame::NoFrame);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setSelectionBehavior(QAbstractItemView::SelectItems);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setStyleSheet(QString::fromLatin1(LIST_STYLE));
    setItemDelegate(checkedNew<PlainRow>(SOURCE, __LINE__, this));
    // Rows that move by a copy of their pixels would bring along what the row below them had to say.
    connect(verticalScrollBar(), SIGNAL(valueChanged(int)), viewport(), SLOT(update()));
}

// The lists are short: a walk is good enough.
TTreeWidgetItem* TTreeWidget::getItemById(TTreeWidgetItem::WIDGET_ITEM_ID_ENUM id)
{
    for (QTreeWidgetItemIterator it(this); *it; ++it) {
        TTreeWidgetItem* const item = static_cast<TTreeWidgetItem*>(*it);
        if (item->getId() == id)
            return item;
    }
    return nullptr;
}

// The time in which the screens ignore keys does not cover the keys that are handled here.
void TTreeWidget::keyPressEvent(QKeyEvent* event)
{
    switch (event->key()) {
    case Qt::Key_Return:
        event->accept();
        pressCurrent();
        break;
    case Qt::Key_Space: // the screen's, as the long OK
        event->ignore();
        break;
    case Qt::Key_Left:
        event->accept();
        backOut();
        break;
    case Qt::Key_Right:
        event->accept();
        goIn();
        break;
    default:
        event->accept();
        QTreeView::keyPressEvent(event); // may ignore it again
    }
}

void TTreeWidget::pressCurrent()
{
    logDebug() << "TTreeWidget::keyPressEvent: Key OK pressed on treeWidget. Now the SLOT function on the "
                  "clicked item should be run.";
    const TTreeWidgetItem* const pCurrentItem = static_cast<TTreeWidgetItem*>(currentItem());
    if (!pCurrentItem)
        return;
    logDebug() << "TTreeWidget::keyPressEvent(): pCurrentItem->getId()=" << pCurrentItem->getId();
    emit itemPressed(pCurrentItem->getId());
}

// An open branch is closed. From a row inside of one the way leads to the branch, which is closed, and
// from a closed row at the top level to the first row of the list.
void TTreeWidget::backOut()
{
    QTreeWidgetItem* setToItem = currentItem();
    if (!setToItem)
        return;
    if (!setToItem->isExpanded()) {
        if (setToItem->parent()) {
            setToItem = setToItem->parent();
        } else {
            while (QTreeWidgetItem* const above = itemAbove(setToItem))
                setToItem = above;
        }
        logDebug() << "setToItem=" << setToItem->text(0);
    }
    collapseItem(setToItem);
    setCurrentItem(setToItem);
    scrollToItem(setToItem, QAbstractItemView::EnsureVisible);
}

// Into a branch: to the choice that is made now, or else to the first row. Scrolling there opens the
// branch. A row that is disabled comes into view, but the cursor does not go there.
void TTreeWidget::goIn()
{
    QTreeWidgetItem* setToItem = currentItem();
    if (!setToItem)
        return;
    if (setToItem->childCount() > 0) {
        const QTreeWidgetItem* const branch = setToItem;
        setToItem = branch->child(0);
        for (int i = 0; i < branch->childCount(); ++i) {
            if (branch->child(i)->data(0, Qt::CheckStateRole).toInt() == Qt::Checked) {
                setToItem = branch->child(i);
                break;
            }
        }
    }
    logDebug() << "setToItem=" << setToItem->text(0);
    if (!setToItem->isDisabled())
        setCurrentItem(setToItem);
    scrollToItem(setToItem, QAbstractItemView::EnsureVisible);
}
