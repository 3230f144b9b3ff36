// The menu of a real window, worked with keys as its user does, and fed through the database.
#ifndef TESTS_SCREENS_MENUFIXTURE_H
#define TESTS_SCREENS_MENUFIXTURE_H

#include "screens/windowfixture.h"

#include "screens/screenmenu.h"
#include "screens/screenpopup.h"
#include "support/modelaccess.h"
#include "support/patience.h"
#include "widgets/ttreewidget.h"

#include <QApplication>
#include <QList>
#include <QStringList>
#include <QtTest>

#include <map>
#include <string>
#include <utility>
#include <vector>

// What the class keeps to itself and no key leads to. The functions of the settings by number: brightness,
// timeout, audio, power-up, language.
struct ScreenMenuTestAccess {
    static void deleteAlertItems(const QList<QTreeWidgetItem*>& items)
    {
        ScreenMenu::deleteAlertItems(items);
    }
    static void deleteAlertSubItems(const QList<QTreeWidgetItem*>& items)
    {
        ScreenMenu::deleteAlertSubItems(items);
    }
    static void store(ScreenMenu& menu, int setting, WIDGET_ITEM_ID_ENUM id)
    {
        typedef void (ScreenMenu::*Store)(WIDGET_ITEM_ID_ENUM);
        const Store functions[] = {&ScreenMenu::storeBrightnessLevelToCBus,
                                   &ScreenMenu::storeTimeoutLevelToCBus,
                                   &ScreenMenu::storeAudioPointingToCBus,
                                   &ScreenMenu::storePowerUpLevelToCBus, &ScreenMenu::storeLanguageToCBus};
        (menu.*functions[setting])(id);
    }
    static void check(ScreenMenu& menu, int setting, WIDGET_ITEM_ID_ENUM id)
    {
        typedef void (ScreenMenu::*Check)(WIDGET_ITEM_ID_ENUM);
        const Check functions[] = {&ScreenMenu::setBrightnessLevelCheckmark,
                                   &ScreenMenu::setTimeoutLevelCheckmark,
                                   &ScreenMenu::setAudioPointingCheckmark, &ScreenMenu::setPowerUp,
                                   &ScreenMenu::updateLanguageMenuItemsFromEnum};
        (menu.*functions[setting])(id);
    }
};

namespace windowfixture {

// Waits until the bus thread has dealt with every change of the database up to now, and the GUI thread with
// what follows from it.
inline bool passBus()
{
    static int number = 0;
    terminal().set("ram.status.signal_strength", ++number);
    const bool passed = QTest::qWaitFor([] { return model()->getSignalLevel() == number; }, PATIENCE_MS);
    // A signal loads a language, which is told to the windows, which tell their pages.
    for (int step = 0; step < 3; ++step) {
        QCoreApplication::sendPostedEvents();
    }
    return passed;
}

struct Alert {
    int identifier;
    int subId;
    int seconds; // since the epoch
    std::string text = "Some words";
};

// The alert log of the terminal, as a whole: all of it changes at once.
inline void setAlertLog(const std::vector<Alert>& alerts)
{
    static int count = 0;
    std::map<std::string, sim::Value> values;
    for (const auto& old : terminal().list("ram.log.alert.")) {
        values[old.first] = sim::Value();
    }
    for (size_t i = 0; i < alerts.size(); ++i) {
        const std::string key = "ram.log.alert." + std::to_string(i) + ".";
        values[key + "identifier"] = sim::Value::integer(alerts[i].identifier);
        values[key + "sub_id"] = sim::Value::integer(alerts[i].subId);
        values[key + "severity"] = sim::Value::integer(EVENT_WARNING);
        values[key + "time"] = sim::Value::integer(alerts[i].seconds);
        values[key + "shorttext"] = sim::Value::text(alerts[i].text);
    }
    values["ram.log.alert.latest.entry_count"] = sim::Value::integer(++count); // the signal to read it
    terminal().setAll({values.begin(), values.end()});
    passBus();
}

// A quiet terminal in English with all settings at known values.
inline void resetMenu()
{
    terminal().clear();
    terminal().setAll({{"cfg.display.brightness", sim::Value::integer(4)},
                       {"cfg.display.timeout", sim::Value::integer(300)},
                       {"cfg.audio_indication.pointing", sim::Value::integer(1)},
                       {"cfg.power_up.switch_on_when_external_power", sim::Value::integer(0)},
                       {"cfg.language", sim::Value::integer(0)}});
    setAlertLog({});
    resetModel();
    // What is read at the start only.
    model()->setUnitSerialNumber(QString());
    model()->setHpaSerialNumber(QString());
    model()->setImeiStr(QString());
    model()->setSwBuildDetails(QString(), 0, 0, QString(), QString());
    model()->setExtendedSystemStatus(10); // up: pointing is allowed
    QCoreApplication::sendPostedEvents();
}

} // namespace windowfixture

class MenuFixture {
public:
    MenuFixture()
        : menu(static_cast<ScreenMenu*>(window.getScreenById(Screen::SCREEN_MENU))),
          popup(static_cast<ScreenPopup*>(window.getScreenById(Screen::SCREEN_POPUP))),
          tree(menu->findChild<TTreeWidget*>("pTreeWidget"))
    {
        window.setVisible(true); // however the terminal's state has it
        // The language that the window has loaded is told to the screens later.
        QCoreApplication::sendPostedEvents();
        windowfixture::passBus();
        closePopups();
        windowfixture::terminal().clearLogs();
    }

    void open() { window.showScreen(Screen::SCREEN_MENU, false); }
    void leave() { window.showScreen(Screen::SCREEN_STATUS, false); }
    bool isOpen() const { return window.getCurrentScreenId() == Screen::SCREEN_MENU; }

    // A real key, to whatever has the focus.
    void key(Qt::Key key) const { QTest::keyClick(QApplication::focusWidget(), key); }

    TTreeWidgetItem* item(int id) const { return tree->getItemById(static_cast<WIDGET_ITEM_ID_ENUM>(id)); }
    TTreeWidgetItem* current() const { return static_cast<TTreeWidgetItem*>(tree->currentItem()); }
    int currentId() const { return current() ? current()->getId() : 0; }
    QString currentText() const { return current() ? current()->text(0) : QString(); }

    // Moves the cursor to a row with keys alone, from wherever it is: back to the first row, and then down
    // into one branch after the other. False if there is no way.
    bool walkTo(int id) const
    {
        QList<QTreeWidgetItem*> way;
        for (QTreeWidgetItem* step = item(id); step; step = step->parent()) {
            way.prepend(step);
        }
        for (int i = 0; i < 10 && currentId() != ITEM_ACTION_EXIT; ++i) {
            key(Qt::Key_Left);
        }
        for (QTreeWidgetItem* const step : way) {
            for (int i = 0; i < 300 && current() != step; ++i) {
                const QTreeWidgetItem* const before = current();
                key(Qt::Key_Down);
                if (current() == before) {
                    break;
                }
            }
            if (current() != step) {
                return false;
            }
            if (step != way.last() && !step->isExpanded()) {
                key(Qt::Key_Return);
            }
        }
        return currentId() == id;
    }
    bool press(int id) const
    {
        if (!walkTo(id)) {
            return false;
        }
        key(Qt::Key_Return);
        return true;
    }

    // Ids of the rows of a branch that bear the check mark.
    QList<int> checked(int branchId) const
    {
        QList<int> ids;
        const QTreeWidgetItem* const branch = item(branchId);
        for (int i = 0; i < branch->childCount(); ++i) {
            if (branch->child(i)->data(0, Qt::CheckStateRole).toInt() == Qt::Checked) {
                ids.append(static_cast<TTreeWidgetItem*>(branch->child(i))->getId());
            }
        }
        return ids;
    }

    // The rows below Alerts, from the top.
    QStringList alerts() const
    {
        QStringList texts;
        for (int i = 0; i < item(ITEM_ALERTS)->childCount(); ++i) {
            texts.append(item(ITEM_ALERTS)->child(i)->text(0));
        }
        return texts;
    }
    TTreeWidgetItem* alert(int row) const
    {
        return static_cast<TTreeWidgetItem*>(item(ITEM_ALERTS)->child(row));
    }
    // The texts of the rows in view, from the top.
    QStringList rowsInView() const
    {
        QStringList texts;
        for (QTreeWidgetItem* row = tree->itemAt(0, 0); row; row = tree->itemBelow(row)) {
            if (tree->visualItemRect(row).bottom() >= tree->viewport()->height()) {
                break;
            }
            texts.append(row->text(0));
        }
        return texts;
    }

    void closePopups() const
    {
        while (!popup->events().isEmpty()) {
            popup->closePopup(popup->events().first().eventId, true);
        }
    }

    Window window;
    ScreenMenu* const menu;
    ScreenPopup* const popup;
    TTreeWidget* const tree;
};

#endif
