// The list of data bundles of a real window, worked with keys as its user does. Bundles and sessions come
// out of the database, by way of the bus thread.
#ifndef TESTS_SCREENS_ACTIONFIXTURE_H
#define TESTS_SCREENS_ACTIONFIXTURE_H

#include "screens/windowfixture.h"

#include "common/qtcompat.h"
#include "screens/screenaction.h"
#include "screens/screenpopup.h"
#include "support/modelaccess.h"
#include "support/patience.h"
#include "widgets/ttreewidget.h"

#include <QApplication>
#include <QDateTime>
#include <QImage>
#include <QStringList>
#include <QTranslator>
#include <QtTest>

#include <map>
#include <string>
#include <utility>
#include <vector>

namespace windowfixture {

// Waits until the bus thread has dealt with every change of the database up to now, and the GUI thread with
// what follows from it.
inline bool passBus()
{
    static int number = 0;
    terminal().set("ram.status.signal_strength", ++number);
    const bool passed = QTest::qWaitFor([] { return model()->getSignalLevel() == number; }, PATIENCE_MS);
    QCoreApplication::sendPostedEvents();
    return passed;
}

// A bundle of the configuration, whole enough to be started. Rates are those of each connection.
struct Bundle {
    int number;
    std::string name;
    int trafficClass = 1;
    int connections = 1;
    int upload = 64;
    int download = 64;
};

// In the order in which they are listed: number 0 before all, then the faster one.
const std::vector<Bundle> THREE = {{0, "Standard data", 3}, {1, "Streaming", 1}, {2, "Voice", 1, 1, 32, 32}};

inline void addBundle(std::map<std::string, sim::Value>& values, const Bundle& bundle)
{
    const std::string key = "cfg.admin.bundle." + std::to_string(bundle.number) + ".";
    values[key + "name"] = sim::Value::text(bundle.name);
    values[key + "pd1"] = sim::Value::text("");
    values[key + "pd2"] = sim::Value::text("");
    values[key + "header_comp"] = sim::Value::integer(0);
    values[key + "apn_type"] = sim::Value::integer(0);
    for (int i = 0; i < bundle.connections; ++i)
        values[key + "connections." + std::to_string(i) + ".connection_index"] =
            sim::Value::integer(bundle.number);
    const std::string connection = "cfg.admin.connection." + std::to_string(bundle.number) + ".";
    values[connection + "name"] = sim::Value::text(bundle.name);
    for (const char* field :
         {"guaranteed_bit_rate_upload", "guaranteed_bit_rate_download", "delivery_order", "max_sdu_size",
          "sdu_error_rate", "delivery_of_erroneous_sdus", "transfer_delay", "traffic_handling_priority"})
        values[connection + field] = sim::Value::integer(0);
    values[connection + "max_bit_rate_upload"] = sim::Value::integer(bundle.upload);
    values[connection + "max_bit_rate_download"] = sim::Value::integer(bundle.download);
    values[connection + "traffic_class"] = sim::Value::integer(bundle.trafficClass);
}

// Makes these the bundles of the configuration, all in one change.
inline void defineBundles(const std::vector<Bundle>& bundles)
{
    std::map<std::string, sim::Value> values = terminal().list("cfg.admin.");
    for (auto& entry : values)
        entry.second = sim::Value(); // deletes it
    for (const Bundle& bundle : bundles)
        addBundle(values, bundle);
    terminal().setAll({values.begin(), values.end()});
    passBus();
}

const char CURRENT_BUNDLE[] = "ram.net.user_groups.0.current_bundle";
const char SESSION_STATUS[] = "ram.status.ongoing_data_sessions.0.status";
const char SESSION_TIME[] = "ram.status.ongoing_data_sessions.0.time";

// The session of user group 0 as the network reports it for a bundle; seconds: how long it has been up.
inline void setSession(int bundleNumber, BUNDLE_STATUS status, int seconds = 0)
{
    terminal().set(CURRENT_BUNDLE, bundleNumber);
    terminal().set(SESSION_STATUS, int(status));
    if (seconds > 0)
        terminal().set(SESSION_TIME, int(QDateTime::currentMSecsSinceEpoch() / 1000 - seconds));
    passBus();
}
inline void endSession()
{
    terminal().set(SESSION_STATUS, int(BUNDLE_STATUS_IDLE));
    terminal().set(CURRENT_BUNDLE, -1);
    terminal().erasePrefix("ram.status.ongoing_data_sessions.");
    passBus();
}

// Brings the terminal onto the network, or leaves it looking for one.
inline bool setNetwork(bool registered)
{
    terminal().set("rmcfg.protocols.umts.plmn.status", std::string(registered ? "Selected" : "Searching"));
    if (!setSim(SIM_READY)) // wakes the bus thread, too
        return false;
    const STATUS_TEXT_ENUM text = registered ? STATUS_TEXT_READY : STATUS_TEXT_SEARCHING;
    return QTest::qWaitFor(
        [text] {
            model()->updateCurrentStatusTextId();
            return model()->getCurrentStatusTextId() == text;
        },
        20000);
}

// A radio module that works: while it doesn't, the poll forgets where the antenna points.
inline bool startRadioModule()
{
    terminal().setAll({{"rmcfg.sys.status.mode", sim::Value::text("operating")},
                       {"rmcfg.protocols.umts.cs.status", sim::Value::text("Attached")},
                       {"rmcfg.protocols.umts.ps.status", sim::Value::text("Attached")},
                       {"rmcfg.protocols.bgan.status.state", sim::Value::text("Registered")}});
    return QTest::qWaitFor(
        [] {
            passBus();
            return model()->getRmOperating();
        },
        20000);
}

// A terminal on the air with nothing going on, and without bundles.
inline void resetAction()
{
    endSession();
    terminal().erasePrefix("ram.bonding.");
    defineBundles({});
    resetModel();
    model()->setExtendedSystemStatus(SYSTEM_STATUS_NORMAL);
    model()->setPointingMode(POINTING_STATUS_POINTED);
    model()->setControlledByATCommands(false);
    model()->setBondingEnabled(false);
    model()->setDhcpClientMode(false);
    model()->setACA(false);
    QCoreApplication::sendPostedEvents();
}

} // namespace windowfixture

// Answers each text with itself in brackets, for as long as it lives.
class Brackets : public QTranslator {
public:
    Brackets() { QCoreApplication::installTranslator(this); }
    ~Brackets() override { QCoreApplication::removeTranslator(this); }
    bool isEmpty() const override { return false; }
    QString translate(const char*, const char* text, const char*, int) const override
    {
        return QString("[%1]").arg(text);
    }
};

class ActionFixture {
public:
    ActionFixture()
        : screen(static_cast<ScreenAction*>(window.getScreenById(Screen::SCREEN_ACTION))),
          popup(static_cast<ScreenPopup*>(window.getScreenById(Screen::SCREEN_POPUP))),
          tree(screen->findChild<TTreeWidget*>("pTreeWidget"))
    {
        window.setVisible(true); // however the terminal's state has it
        // The language that the window has loaded is told to the screens later.
        QCoreApplication::sendPostedEvents();
        windowfixture::passBus();
        closePopups();
        windowfixture::terminal().clearLogs();
    }

    // By the way of the status screen, as a user comes.
    void open()
    {
        window.showScreen(Screen::SCREEN_ACTION, true);
        QCoreApplication::sendPostedEvents();
    }
    Screen::SCREEN_ID_ENUM shown() const { return window.getCurrentScreenId(); }
    bool isOpen() const { return shown() == Screen::SCREEN_ACTION; }
    void closePopups()
    {
        for (int i = 0; i < 20 && !popup->events().isEmpty(); ++i)
            popup->closePopup(popup->events().first().eventId, true);
        model()->stopIgnoreGlobalKeyPress();
    }
    static StatusUpdater* model() { return windowfixture::model(); }

    // Real keys, to whatever has the focus.
    void key(Qt::Key key) const { QTest::keyClick(QApplication::focusWidget(), key); }
    void keys(const QList<Qt::Key>& list) const
    {
        for (Qt::Key each : list)
            key(each);
    }

    // The rows that are open, children with a blank in front, the second column behind a bar.
    QStringList rows() const
    {
        QStringList list;
        for (int i = 0; i < tree->topLevelItemCount(); ++i) {
            const QTreeWidgetItem* const item = tree->topLevelItem(i);
            const QString time = item->text(1);
            list.append(item->text(0) + (time.isEmpty() ? QString() : "|" + time));
            for (int child = 0; item->isExpanded() && child < item->childCount(); ++child)
                list.append(" " + item->child(child)->text(0));
        }
        return list;
    }
    QString current() const
    {
        const QTreeWidgetItem* const item = tree->currentItem();
        if (!item)
            return QString();
        return item->parent() ? item->parent()->text(0) + "/" + item->text(0) : item->text(0);
    }
    TTreeWidgetItem* bundle(int number) const { return screen->getBundleWidgetItem(number); }
    QTreeWidgetItem* button(int number) const { return bundle(number)->child(0); }
    // The text of a bundle's "Start" or "Stop", in brackets while it is grey and out of reach.
    QString buttonText(int number) const
    {
        const QTreeWidgetItem* const item = button(number);
        const QColor grey(100, 100, 100, 255);
        const QColor white(255, 255, 255, 255);
        const QColor colour = item->foreground(0).color();
        const bool enabled = item->flags() & Qt::ItemIsEnabled;
        if (colour != (enabled ? white : grey))
            return "wrong colour " + colour.name();
        return enabled ? item->text(0) : "(" + item->text(0) + ")";
    }
    QList<unsigned int> popups() const
    {
        QList<unsigned int> ids;
        for (const popup_event_t& event : popup->events())
            ids.append(event.eventId);
        return ids;
    }
    QImage picture() { return qtcompat::grabWidget(screen).toImage().convertToFormat(QImage::Format_RGB32); }

    Window window;
    ScreenAction* const screen;
    ScreenPopup* const popup;
    TTreeWidget* const tree;
};

#endif
