// One page of a real window while the terminal is in normal operation and no popup stands.
#ifndef TESTS_SCREENS_PAGEFIXTURE_H
#define TESTS_SCREENS_PAGEFIXTURE_H

#include "screens/statusfixture.h"

#include "model/bundle.h"
#include "screens/screenpopup.h"

#include <QImage>
#include <QLabel>
#include <QSet>
#include <QTranslator>

// Shows which texts were translated, and in which context.
class Brackets : public QTranslator {
public:
    Brackets()
    {
        QCoreApplication::installTranslator(this);
        QCoreApplication::sendPostedEvents();
    }
    ~Brackets() override
    {
        QCoreApplication::removeTranslator(this);
        QCoreApplication::sendPostedEvents();
    }
    bool isEmpty() const override { return false; }
    QString translate(const char* context, const char* text, const char*, int) const override
    {
        return QString("[%1|%2]").arg(context, text);
    }
};

class PageFixture {
public:
    explicit PageFixture(Screen::SCREEN_ID_ENUM id)
        : prepared(prepare()), page(static_cast<Screen*>(window.getScreenById(id)))
    {
        QCoreApplication::sendPostedEvents(); // the language that the window has loaded
        window.showScreen(id, false);
        windowfixture::passBus();
    }

    QLabel* label(const char* name) const { return page->findChild<QLabel*>(name); }
    QString text(const char* name) const { return label(name)->text(); }
    // Whether it can be seen, or could if the page were shown.
    bool shown(const char* name) const { return !page->findChild<QWidget*>(name)->isHidden(); }
    void press(Qt::Key key) { QTest::keyClick(window.focusWidget(), key); }
    ScreenPopup* popups() const
    {
        return static_cast<ScreenPopup*>(const_cast<Window&>(window).getScreenById(Screen::SCREEN_POPUP));
    }
    QImage picture() const { return page->grab().toImage().convertToFormat(QImage::Format_RGB32); }

    // What stands badly on the page as it is now: outside of the panel, over one another, or cut. Empty if
    // nothing does. layers: widgets that lie over or under others on purpose.
    QString flaws(const QSet<QString>& layers = {}) const
    {
        QCoreApplication::sendPostedEvents();
        QStringList result;
        QList<QWidget*> seen;
        for (QWidget* const widget : page->findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly)) {
            if (!widget->isVisible()) {
                continue;
            }
            if (!page->rect().contains(widget->geometry())) {
                result.append(widget->objectName() + " outside");
            }
            if (isCut(qobject_cast<QLabel*>(widget))) {
                result.append(widget->objectName() + " cut");
            }
            if (layers.contains(widget->objectName())) {
                continue;
            }
            for (const QWidget* const other : seen) {
                if (other->geometry().intersects(widget->geometry())) {
                    result.append(widget->objectName() + " over " + other->objectName());
                }
            }
            seen.append(widget);
        }
        return result.join(", ");
    }

    const bool prepared;
    Window window;
    Screen* const page;

private:
    static bool prepare()
    {
        windowfixture::resetStatus();
        StatusUpdater* const model = windowfixture::model();
        model->setPosition(gps_data_t());
        model->setSimPinRetriesLeft(3);
        model->setPointingAtStartup(0);
        model->stopHidePointNowText();
        model->stopIgnoreGlobalKeyPress();
        model->setExtendedSystemStatus(10);
        return true;
    }
    static bool isCut(const QLabel* label)
    {
        if (!label || label->text().isEmpty()) {
            return false;
        }
        const int height =
            label->wordWrap() ? label->heightForWidth(label->width()) : label->sizeHint().height();
        return label->height() < height || (!label->wordWrap() && label->width() < label->sizeHint().width());
    }
};

#endif
