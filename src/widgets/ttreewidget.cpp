// The list of the settings menu and of the bundles; see the header.
#include "widgets/ttreewidget.h"

#include "common/checked.h"
#include "common/log.h"

#include <QKeyEvent>
#include <QStyledItemDelegate>
#include <QTreeWidgetItemIterator>

namespace {

const char SOURCE[] = "ttreewidget";
const char LIST_STYLE[] = "selection-background-color: rgba(80, 80, 80, 255); "
                          "background: rgba(0,0,0,255); color: rgba(255,255,255,255)";

// Draws a row without the dotted line around the current one: it would run through the letters, and the
// grey ground of the selection says the same.
class PlainRow : public QStyledItemDelegate {
public:
    explicit PlainRow(QObject* parent) : QStyledItemDelegate(parent) {}

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override
    {
        QStyledItemDelegate::initStyleOption(option, index);
        option->state &= ~QStyle::State_HasFocus;
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
    setItemDelegate(checkedNew<PlainRow>(SOURCE, __LINE__, static_cast<QObject*>(this)));
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
