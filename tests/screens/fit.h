// What stands badly on a screen of the panel as its widgets are now: texts that are cut, widgets that lie
// over one another, widgets that leave the box of their parent. Looks at what is visible and changes nothing.
// A fault is one line that names the widget, its text and the sizes, in pixels. Layouts must be settled
// (QCoreApplication::sendPostedEvents).
#ifndef TESTS_SCREENS_FIT_H
#define TESTS_SCREENS_FIT_H

#include "common/qtcompat.h"

#include <QFontMetrics>
#include <QImage>
#include <QLabel>
#include <QPainter>
#include <QStringList>
#include <QTextDocument>
#include <QTreeWidget>
#include <QTreeWidgetItemIterator>
#include <QWidget>

namespace fit {

const QSize PANEL(256, 64);
const int ANY = -1;

// Widgets that share pixels with their neighbours, and how many rows of them they may share.
const struct Shared {
    const char* widget;
    const char* other; // null: whichever
    int rows;          // ANY: all of them
    const char* reason;
} SHARED[] = {
    {"pSelectionFrame", nullptr, ANY, "the focus frame stands around what has the focus"},
    {"pGridLabel", nullptr, ANY, "the scale is transparent where the others are seen; looked at by pixels"},
    {"pBackgroundFrame", nullptr, ANY, "the lighter band lies under the lower battery"},
    {"pDarkLayer", nullptr, ANY, "the dark layer covers the icon"},
    {"pTopLayerLabel", "pProgressBar", ANY, "the text of the battery stands on its icon, over the bar"},
    {"pTextFrame", "pOkLabel", 4, "frame and buttons of a popup are 68 pixels high; looked at by pixels"},
    {"pTextFrame", "pCancelLabel", 4, "the same"},
};

// Texts that swing up and down in a box that cuts them off: they may be higher than it, but not wider.
const char* const SWINGING[] = {"pStatusLabel", "pTextLabel"};

inline QString sizeText(const QSize& size)
{
    return QString("%1x%2").arg(size.width()).arg(size.height());
}

inline QString rectText(const QRect& rect)
{
    return QString("%1 at %2,%3").arg(sizeText(rect.size())).arg(rect.x()).arg(rect.y());
}

// "pWifiLabel/pTopLayerLabel" of the screen's descendants; a widget without a name shows its class.
inline QString nameOf(const QWidget* widget)
{
    const QString name = widget->objectName();
    const QString own = name.isEmpty() ? QString(widget->metaObject()->className()) : name;
    const QWidget* const parent = widget->parentWidget();
    const bool isInner = parent && parent->parentWidget() && parent->parentWidget()->parentWidget();
    return isInner ? nameOf(parent) + "/" + own : own;
}

inline QString oneLine(const QString& text)
{
    return QString(text).replace('\n', "\\n");
}

// A visible widget has this text, empty if it has none.
inline QString textOf(const QWidget* widget)
{
    const QLabel* const label = qobject_cast<const QLabel*>(widget);
    return label ? label->text() : QString();
}

inline bool isRich(const QLabel* label)
{
    return label->textFormat() == Qt::RichText ||
           (label->textFormat() == Qt::AutoText && Qt::mightBeRichText(label->text()));
}

// The room that a text takes. A wrapped one is given the label's width; it is still wider than that where
// one of its words is.
inline QSize neededSize(const QLabel* label)
{
    const int width = label->contentsRect().width();
    if (isRich(label)) {
        QTextDocument document;
        document.setDefaultFont(label->font());
        document.setDocumentMargin(0);
        document.setHtml(label->text());
        if (label->wordWrap())
            document.setTextWidth(width);
        return QSize(qRound(document.idealWidth()), qRound(document.size().height()));
    }
    const QFontMetrics metrics(label->font());
    if (label->wordWrap())
        return metrics.boundingRect(QRect(0, 0, width, 10000), Qt::TextWordWrap, label->text()).size();
    const QStringList lines = label->text().split('\n');
    QSize needed(0, lines.size() * metrics.height());
    for (const QString& line : lines)
        needed.setWidth(qMax(needed.width(), qtcompat::textWidth(metrics, line)));
    // Where the text hangs from the upper edge, nobody misses rows of the font that it leaves empty.
    if (!(label->alignment() & (Qt::AlignVCenter | Qt::AlignBottom)))
        needed.rheight() += metrics.tightBoundingRect(lines.last()).bottom() + 1 - metrics.descent();
    return needed;
}

inline bool isSwinging(const QWidget* widget)
{
    for (const char* const name : SWINGING) {
        if (widget->objectName() == QLatin1String(name))
            return widget->height() > widget->parentWidget()->height();
    }
    return false;
}

inline void lookAtText(const QWidget* widget, QStringList& faults)
{
    const QLabel* const label = qobject_cast<const QLabel*>(widget);
    if (!label || label->text().isEmpty())
        return;
    const QSize needed = neededSize(label);
    const QSize given = label->contentsRect().size();
    if (needed.width() > given.width() || needed.height() > given.height())
        faults.append(QString("%1 \"%2\" is cut: needs %3, has %4")
                          .arg(nameOf(widget), oneLine(label->text()), sizeText(needed), sizeText(given)));
}

inline void lookAtBox(const QWidget* widget, QStringList& faults)
{
    QRect box = widget->parentWidget()->rect();
    if (isSwinging(widget)) {
        box.setTop(qMin(box.top(), widget->y()));
        box.setBottom(qMax(box.bottom(), widget->geometry().bottom()));
    }
    if (!box.contains(widget->geometry()))
        faults.append(QString("%1 \"%2\" leaves its box: %3 in %4")
                          .arg(nameOf(widget), oneLine(textOf(widget)), rectText(widget->geometry()),
                               sizeText(widget->parentWidget()->size())));
}

inline bool mayShare(const QWidget* one, const QWidget* other, int rows)
{
    for (const Shared& row : SHARED) {
        const bool isFirst = one->objectName() == QLatin1String(row.widget);
        if (!isFirst && other->objectName() != QLatin1String(row.widget))
            continue;
        const QWidget* const neighbour = isFirst ? other : one;
        if (row.other && neighbour->objectName() != QLatin1String(row.other))
            continue;
        return row.rows == ANY || rows <= row.rows;
    }
    return false;
}

inline void lookAtNeighbours(const QList<QWidget*>& siblings, QStringList& faults)
{
    for (int i = 0; i < siblings.size(); ++i) {
        for (int j = i + 1; j < siblings.size(); ++j) {
            const QWidget* const one = siblings.at(i);
            const QWidget* const other = siblings.at(j);
            const QRect common = one->geometry() & other->geometry();
            if (common.isEmpty() || mayShare(one, other, common.height()))
                continue;
            faults.append(QString("%1 \"%2\" and %3 \"%4\" overlap: %5 and %6")
                              .arg(nameOf(one), oneLine(textOf(one)), nameOf(other), oneLine(textOf(other)),
                                   rectText(one->geometry()), rectText(other->geometry())));
        }
    }
}

inline void lookAtChildren(const QWidget* parent, QStringList& faults)
{
    QList<QWidget*> visible;
    for (QWidget* const child : parent->findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly)) {
        if (child->isVisible() && !child->size().isEmpty())
            visible.append(child);
    }
    lookAtNeighbours(visible, faults);
    for (const QWidget* const child : visible) {
        lookAtBox(child, faults);
        lookAtText(child, faults);
        lookAtChildren(child, faults);
    }
}

// All of a screen that is on display. Rows of a list are looked at one by one, see below.
inline QStringList faultsOf(const QWidget* screen)
{
    QStringList faults;
    const QRect inWindow(screen->mapTo(screen->window(), QPoint()), screen->size());
    if (!screen->isVisible())
        faults.append(nameOf(screen) + " is not on display");
    if (!QRect(QPoint(), PANEL).contains(inWindow))
        faults.append(QString("%1 leaves the panel: %2").arg(nameOf(screen), rectText(inWindow)));
    lookAtChildren(screen, faults);
    return faults;
}

// --- Pixels -----------------------------------------------------------------------------------------------

// What a widget with its children draws, white on black as the panel has it, at its place on the screen.
inline QImage inkOf(QWidget* widget, const QWidget* screen)
{
    QImage image(PANEL, QImage::Format_RGB32);
    image.fill(Qt::black);
    QPainter painter(&image);
    widget->render(&painter, widget->mapTo(screen, QPoint()), QRegion(), QWidget::DrawChildren);
    return image;
}

// Whether both draw something at one of the pixels.
inline bool inkMeets(const QImage& one, const QImage& other)
{
    for (int y = 0; y < PANEL.height(); ++y) {
        for (int x = 0; x < PANEL.width(); ++x) {
            if (qGray(one.pixel(x, y)) && qGray(other.pixel(x, y)))
                return true;
        }
    }
    return false;
}

// The names of what is drawn over one another, of widgets that may share room but no letters.
inline QStringList faultsOfInk(const QWidget* screen, const char* under, const QStringList& others)
{
    QStringList faults;
    QWidget* const lower = screen->findChild<QWidget*>(under);
    const QImage ink = inkOf(lower, screen);
    for (const QString& name : others) {
        QWidget* const other = screen->findChild<QWidget*>(name);
        if (other->isVisible() && inkMeets(ink, inkOf(other, screen)))
            faults.append(QString("%1 \"%2\" is drawn over %3")
                              .arg(nameOf(other), oneLine(textOf(other)), nameOf(lower)));
    }
    return faults;
}

// --- Rows of a list ---------------------------------------------------------------------------------------

inline QModelIndex indexOf(const QTreeWidget* tree, QTreeWidgetItem* item, int column)
{
    QTreeWidgetItem* const parent = item->parent();
    if (!parent)
        return tree->model()->index(tree->indexOfTopLevelItem(item), column);
    return tree->model()->index(parent->indexOfChild(item), column, indexOf(tree, parent, 0));
}

// Pixels that a row has for its text, without indentation, check mark and margins.
inline int roomForText(const QTreeWidget* tree, QTreeWidgetItem* item, int column)
{
    const QModelIndex index = indexOf(tree, item, column);
    const QVariant font = index.data(Qt::FontRole);
    const QFontMetrics metrics(font.isValid() ? font.value<QFont>() : tree->font());
    const int text = qtcompat::textWidth(metrics, index.data().toString());
    return tree->visualRect(index).width() - (tree->sizeHintForIndex(index).width() - text);
}

// A row that has been scrolled to: each of its texts, with a check mark and the indentation, in its column,
// and all of it on display.
inline QStringList faultsOfRow(const QTreeWidget* tree, QTreeWidgetItem* item)
{
    QStringList faults;
    for (int column = 0; column < tree->columnCount(); ++column) {
        const QModelIndex index = indexOf(tree, item, column);
        if (index.data().toString().isEmpty())
            continue;
        const QString name = QString("row \"%1\"").arg(oneLine(index.data().toString()));
        const QRect given = tree->visualRect(index);
        const QSize needed = tree->sizeHintForIndex(index);
        if (needed.width() > given.width() || needed.height() > given.height())
            faults.append(
                QString("%1 is cut: needs %2, has %3").arg(name, sizeText(needed), sizeText(given.size())));
        if (!tree->viewport()->rect().contains(given))
            faults.append(QString("%1 leaves the list: %2 in %3")
                              .arg(name, rectText(given), sizeText(tree->viewport()->size())));
    }
    return faults;
}

} // namespace fit

#endif
