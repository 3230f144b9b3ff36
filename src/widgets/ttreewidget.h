// The list that the settings menu and the bundle list share: a tree that is worked with four arrow keys
// and OK. Left backs out of a branch, right goes in, up and down move, OK tells the owner which entry was
// pressed. A long OK is left to the screen around the list.
//
// All its rows are TTreeWidgetItem. What an entry does is its owner's business. GUI thread only; nothing
// blocks.
#ifndef LUMENPANEL_WIDGETS_TTREEWIDGET_H
#define LUMENPANEL_WIDGETS_TTREEWIDGET_H

#include "widgets/ttreewidgetitem.h"

#include <QTreeWidget>

class TTreeWidget : public QTreeWidget {
    Q_OBJECT

public:
    explicit TTreeWidget(QWidget* parent);

    // The look that both lists share: bare rows, white on black, that fill the whole widget, and one of
    // them selected. columns: 1 or more.
    void setUpList(int columns);

    // The first row with the id, from the top and depth first, hidden and collapsed ones included. Null
    // if there is none; owned by the list.
    TTreeWidgetItem* getItemById(TTreeWidgetItem::WIDGET_ITEM_ID_ENUM id);

signals:
    // OK was pressed on the current row, which has this id.
    void itemPressed(TTreeWidgetItem::WIDGET_ITEM_ID_ENUM id);

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void pressCurrent();
    void backOut();
    void goIn();
};

#endif
