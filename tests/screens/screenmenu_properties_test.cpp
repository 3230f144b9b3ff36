// The properties of the terminal, which the menu shows as popups, and the row that starts the pointing.
#include "screens/menufixture.h"

#include "model/event_ids.h"
#include "support/records.h"

#include <QDateTime>
#include <QRegularExpression>
#include <QTranslator>

using namespace windowfixture;

class ScreenMenuPropertiesTest : public QObject {
    Q_OBJECT

private slots:
    void init() { resetMenu(); }

    void popupShowsTheValue_data();
    void popupShowsTheValue();
    void conformityIsTranslated();
    void popupLeavesTheCursorInPlace_data();
    void popupLeavesTheCursorInPlace();
    void popupShowsTheValueOfThePress();

    void pointNowSendsTheCommand();
    void pointNowStopsABundleFirst();
    void pointNowGoesToThePreviousScreenFirst();
    void pointNowOfATerminalThatIsNotUp();
};

// The values come from the database where the bus thread follows it, otherwise as it tells them at the start.
static const struct {
    const char* name;
    int item;
    void (*feed)();
    const char* text;
} PROPERTIES[] = {
    {"IP address", 53, [] { terminal().setString("ram.net.eth0.ip_address", "192.0.2.7"); },
     "IP address: 192.0.2.7"},
    {"IP address, none", 53, [] {}, "IP address: "},
    {"unit", 55, [] { model()->setUnitSerialNumber("81234567"); }, "Unit serial number: 81234567"},
    {"unit, none", 55, [] {}, "Unknown unit serial number"},
    {"antenna", 56, [] { model()->setHpaSerialNumber("555"); }, "Antenna serial number: 555"},
    {"antenna, none", 56, [] {}, "Unknown antenna serial number"},
    {"LAN", 57, [] { terminal().setString("cfg.interfaces.lan.mac_address", "02:00:5e:00:00:01"); },
     "MAC: 02:00:5e:00:00:01"},
    {"LAN, off", 57, [] { model()->setInterfaceState(INTERFACE_NAME_LAN, INTERFACE_STATE_OFF); },
     "Enable LAN to be able to read MAC for LAN"},
    {"LAN, on", 57, [] { model()->setInterfaceState(INTERFACE_NAME_LAN, INTERFACE_STATE_ON); },
     "Unknown MAC for LAN"},
    {"WLAN, hidden", 58, [] { terminal().setString("cfg.interfaces.wlan.mac_address", "02:00:5e:00:00:02"); },
     "MAC: 02:00:5e:00:00:02\n(WLAN name hidden)"},
    {"WLAN, open", 58,
     [] {
         terminal().setString("cfg.interfaces.wlan.mac_address", "02:00:5e:00:00:02");
         terminal().setString("cfg.interfaces.wlan.ssid", "Camp");
         terminal().set("cfg.interfaces.wlan.bssid", 1);
     },
     "MAC: 02:00:5e:00:00:02\nWLAN name: Camp"},
    {"WLAN, off", 58, [] { model()->setInterfaceState(INTERFACE_NAME_WIFI, INTERFACE_STATE_OFF); },
     "Enable WLAN to be able to read MAC for WLAN\n(WLAN name hidden)"},
    {"software", 59, [] { model()->setSwBuildDetails("1.04", 17, 0, "id", "date"); },
     "Software version: 1.04\nBuild number: 17"},
    {"software, red label", 59, [] { model()->setSwBuildDetails("0.9", 18, 1, "id", "date"); },
     "Warning: Red label software!\nSoftware version: 0.9\nBuild number: 18\ndate\nid"},
    {"conformity", 60, [] {}, nullptr}, // whatever the translation says
    {"IMEI", 61, [] { model()->setImeiStr("35693803564380"); }, "IMEI: 35693803564380"},
    {"IMEI, none", 61, [] {}, "Unknown IMEI"},
    {"help desk", 62, [] { terminal().setString("cfg.help_desk_number", "+870 772 000 001"); },
     "+870 772 000 001"},
    {"help desk, none", 62, [] {}, "Help desk not configured.\nSee User Manual."},
};

void ScreenMenuPropertiesTest::popupShowsTheValue_data()
{
    QTest::addColumn<int>("row");
    int number = 0;
    for (const auto& row : PROPERTIES) {
        QTest::newRow(row.name) << number++;
    }
}

void ScreenMenuPropertiesTest::popupShowsTheValue()
{
    QFETCH(int, row);
    const int item = PROPERTIES[row].item;
    QVERIFY(passBus());
    PROPERTIES[row].feed();
    QVERIFY(passBus());
    MenuFixture f;
    f.open();
    const QString text = PROPERTIES[row].text ? QString(PROPERTIES[row].text)
                                              : QCoreApplication::translate("ScreenMenu", "CONFORMITY_TEXT");
    QVERIFY(f.press(item));
    QCOMPARE(f.popup->events().size(), 1);
    const popup_event_t popup = f.popup->events().first();
    QCOMPARE(popup.eventId, unsigned(EV_AP_GUI_CUSTOM_TEXT));
    QCOMPARE(popup.severity, EVENT_INFO);
    QCOMPARE(popup.closeHandling, POPUP_CLOSE_OK);
    QCOMPARE(popup.showForMilliseconds, 0);
    QVERIFY(!popup.okFunction);
    QVERIFY(!popup.cancelFunction);
    QCOMPARE(popup.text, text);
    QVERIFY(qAbs(popup.timeStamp.msecsTo(QDateTime::currentDateTime())) < 60000);
    QCOMPARE(f.window.getCurrentScreenId(), Screen::SCREEN_POPUP);
}

void ScreenMenuPropertiesTest::conformityIsTranslated()
{
    class Words : public QTranslator {
        bool isEmpty() const override { return false; }
        QString translate(const char* context, const char* text, const char*, int) const override
        {
            return !qstrcmp(context, "ScreenMenu") && !qstrcmp(text, "CONFORMITY_TEXT") ? "It conforms."
                                                                                        : QString();
        }
    };
    MenuFixture f;
    f.open();
    Words words;
    QCoreApplication::installTranslator(&words);
    const bool pressed = f.press(60);
    QCoreApplication::removeTranslator(&words);
    QVERIFY(pressed);
    QCOMPARE(f.popup->events().first().text, QString("It conforms."));
}

void ScreenMenuPropertiesTest::popupLeavesTheCursorInPlace_data()
{
    QTest::addColumn<int>("item");
    for (int item : {53, 55, 56, 57, 58, 59, 60, 61, 62}) {
        QTest::newRow(qPrintable(QString::number(item))) << item;
    }
}

// The menu is beneath the popup and comes back when OK closes it; the popup has no grace, since it arises
// from a press.
void ScreenMenuPropertiesTest::popupLeavesTheCursorInPlace()
{
    QFETCH(int, item);
    MenuFixture f;
    f.open();
    QVERIFY(f.press(item));
    QCOMPARE(f.window.getCurrentScreenId(), Screen::SCREEN_POPUP);
    QCOMPARE(f.currentId(), item);
    f.key(Qt::Key_Return);
    QVERIFY(f.popup->events().isEmpty());
    QVERIFY(f.isOpen());
    QVERIFY(f.tree->hasFocus());
    QCOMPARE(f.currentId(), item);
    QVERIFY(f.rowsInView().contains(f.currentText()));
    f.key(Qt::Key_Up); // the keys are the menu's again
    QVERIFY(f.currentId() != item);
}

void ScreenMenuPropertiesTest::popupShowsTheValueOfThePress()
{
    MenuFixture f;
    f.open();
    QVERIFY(f.walkTo(62));
    terminal().set("cfg.help_desk_number", std::string("+1 555 0100"));
    QVERIFY(passBus());
    f.key(Qt::Key_Return);
    QCOMPARE(f.popup->events().first().text, QString("+1 555 0100"));
    f.key(Qt::Key_Return);
    terminal().set("cfg.help_desk_number", std::string("+1 555 0199"));
    QVERIFY(passBus());
    f.key(Qt::Key_Return);
    QCOMPARE(f.popup->events().first().text, QString("+1 555 0199"));
}

// --- Point now ---------------------------------------------------------------------------------------------

void ScreenMenuPropertiesTest::pointNowSendsTheCommand()
{
    MenuFixture f;
    f.open();
    QVERIFY(f.walkTo(3));
    terminal().clearLogs();
    f.key(Qt::Key_Return);
    QVERIFY(terminal().waitForMessage("bp_ctrl.pointing"));
    QCOMPARE(terminal().messagesNamed("bp_ctrl.pointing").size(), size_t(1));
    QCOMPARE(terminal().messagesNamed("bp_ctrl.pointing").at(0).text(), std::string("start"));
    QCOMPARE(f.window.getCurrentScreenId(), Screen::SCREEN_STATUS);
    QCOMPARE(f.currentId(), 1);
    // No bundle runs, so nothing is stopped.
    QVERIFY(passBus());
    QVERIFY(terminal().writesOf("ram.net.user_groups.0.activated").empty());
    QVERIFY(terminal().writesOf("ram.net.user_groups.0.current_bundle").empty());
}

void ScreenMenuPropertiesTest::pointNowStopsABundleFirst()
{
    Records session;
    session.number("ram.status.ongoing_data_sessions.0.status", 2)
        .number("ram.status.ongoing_data_sessions.0.context.1.traffic_class", 3);
    model()->setActiveConnectionsAndBundles(session.count(), session.data());
    Records current;
    current.number("ram.net.user_groups.0.current_bundle", 5);
    terminal().set("ram.net.user_groups.0.current_bundle", 5);
    model()->setCurrentBundleNumber(current.count(), current.data());
    MenuFixture f;
    QVERIFY(model()->predefinedBundleActive());
    f.open();
    QVERIFY(f.walkTo(3));
    terminal().clearLogs();
    Messages messages;
    f.key(Qt::Key_Return);
    QVERIFY(terminal().waitForMessage("bp_ctrl.pointing"));
    QCOMPARE(messages.count("StatusUpdater::stopBundle(): bundleNumber=-1"), 1);
    QVERIFY(terminal().writesOf("ram.net.user_groups.0.activated") ==
            std::vector<sim::Value>{sim::Value::integer(0)});
    QVERIFY(terminal().writesOf("ram.net.user_groups.0.current_bundle") ==
            std::vector<sim::Value>{sim::Value::integer(-1)});
    QStringList order; // on the bus
    for (const sim::Message& message : terminal().messages()) {
        const QString name = QString::fromStdString(message.name);
        if (name.startsWith("config.write.ram.net.") || name == "bp_ctrl.pointing") {
            order.append(name.section('.', -1));
        }
    }
    QCOMPARE(order, QStringList({"activated", "current_bundle", "pointing"}));
    Records end;
    end.deleted("ram.status.ongoing_data_sessions.0.status");
    model()->setActiveConnectionsAndBundles(end.count(), end.data());
}

void ScreenMenuPropertiesTest::pointNowGoesToThePreviousScreenFirst()
{
    MenuFixture f;
    f.window.showScreen(Screen::SCREEN_BATTERY, false);
    f.window.showScreen(Screen::SCREEN_MENU, true);
    QVERIFY(f.walkTo(3));
    Messages messages;
    f.key(Qt::Key_Return);
    QCOMPARE(f.window.getCurrentScreenId(), Screen::SCREEN_BATTERY);
    const QStringList texts = messages.texts();
    const int shown = int(texts.indexOf(QRegularExpression("Window::ShowScreen\\(screenId=8 .*")));
    const int sent = int(texts.indexOf(QString("cbus_if: send_pointing_msg: data=start")));
    QVERIFY(shown >= 0);
    QVERIFY(sent > shown);
}

void ScreenMenuPropertiesTest::pointNowOfATerminalThatIsNotUp()
{
    MenuFixture f;
    model()->setExtendedSystemStatus(1);
    f.closePopups();
    f.open();
    QVERIFY(f.walkTo(3));
    terminal().clearLogs();
    f.key(Qt::Key_Return);
    QVERIFY(passBus());
    QVERIFY(terminal().messagesNamed("bp_ctrl.pointing").empty());
    QVERIFY(!f.isOpen());
}

int main(int argc, char** argv)
{
    return run<ScreenMenuPropertiesTest>(argc, argv);
}

#include "screenmenu_properties_test.moc"
