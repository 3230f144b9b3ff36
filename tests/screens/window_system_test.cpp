// The state of the terminal's system and the software upload: their popups, and the rule by which the
// display turns on.
#include "screens/windowcase.h"

#include <QSet>

using namespace windowfixture;

namespace {

const char INITIALIZING_POPUP[] = "EV_AP_GUI_STATUS_SYSTEM_INITIALIZING";
const char REBOOTING_POPUP[] = "EV_AP_GUI_STATUS_SYSTEM_REBOOTING";
const char SHUTTING_DOWN_POPUP[] = "EV_AP_GUI_STATUS_SYSTEM_SHUTTING_DOWN";
const unsigned int SYSTEM_POPUPS[] = {EV_AP_GUI_STATUS_SYSTEM_INITIALIZING, EV_AP_GUI_STATUS_SYSTEM_REBOOTING,
                                      EV_AP_GUI_STATUS_SYSTEM_SHUTTING_DOWN};

QStringList sorted(QStringList list)
{
    list.sort();
    return list;
}

// What is left of the popups that stood after the changes "+NAME" and "-NAME".
QStringList after(QStringList names, const QStringList& changes)
{
    for (const QString& change : changes) {
        names.removeAll(change.mid(1));
        if (change.startsWith('+')) {
            names.append(change.mid(1));
        }
    }
    return sorted(names);
}

} // namespace

class WindowSystemTest : public QObject, protected WindowCase {
    Q_OBJECT

private slots:
    void init()
    {
        startTest();
        makeWindow();
        forgetBus();
    }
    void cleanup() { endTest(); }

    void statusHasItsPopups_data();
    void statusHasItsPopups();
    void showRule_data();
    void showRule();
    void updatingWhileVisibleDoesNothing();
    void normalWhileVisibleShowsNothingAgain();
    void closedTerminalSuppressesRebootAndShutdown_data();
    void closedTerminalSuppressesRebootAndShutdown();

    void softwareUpload_data();
    void softwareUpload();
    void softwareUploadStopsPointing_data();
    void softwareUploadStopsPointing();
    void endOfUploadBringsTheInitialisationBack_data();
    void endOfUploadBringsTheInitialisationBack();

private:
    // All three of the system's popups, put up by hand.
    void addSystemPopups()
    {
        for (unsigned int id : SYSTEM_POPUPS) {
            add(id, EVENT_INFO);
        }
    }
};

// --- Extended system status --------------------------------------------------------------------------------

void WindowSystemTest::statusHasItsPopups_data()
{
    QTest::addColumn<int>("status");
    QTest::addColumn<QStringList>("changes");
    QTest::addColumn<QString>("arguments"); // of the popup that is added
    const QString plus = "+";
    const QString minus = "-";
    const QStringList initializing = {plus + INITIALIZING_POPUP, minus + REBOOTING_POPUP,
                                      minus + SHUTTING_DOWN_POPUP};
    const QStringList rebooting = {plus + REBOOTING_POPUP, minus + INITIALIZING_POPUP,
                                   minus + SHUTTING_DOWN_POPUP};
    const QStringList stopping = {plus + SHUTTING_DOWN_POPUP, minus + INITIALIZING_POPUP,
                                  minus + REBOOTING_POPUP};
    const QStringList normal = {minus + INITIALIZING_POPUP, minus + REBOOTING_POPUP,
                                minus + SHUTTING_DOWN_POPUP};
    const QString warning = "EVENT_WARNING 6 0 - -";
    const QString fatal = "EVENT_FATAL 6 0 - -";
    QTest::newRow("0") << 0 << initializing << warning;
    QTest::newRow("1") << 1 << initializing << warning;
    QTest::newRow("2 updating") << 2 << QStringList(minus + INITIALIZING_POPUP) << "";
    QTest::newRow("3") << 3 << rebooting << fatal;
    QTest::newRow("4 stopping") << 4 << stopping << fatal;
    QTest::newRow("5") << 5 << rebooting << fatal;
    QTest::newRow("8 safe mode") << 8 << QStringList() << "";
    for (int status : {10, 11, 12, 13, 14, 20}) {
        QTest::addRow("%d", status) << status << normal << "";
    }
    for (int status : {-1, 6, 7, 9, 15, 16, 17, 18, 19, 21}) {
        QTest::addRow("%d illegal", status) << status << QStringList() << "";
    }
}

// From an empty queue, and from one in which all three stand.
void WindowSystemTest::statusHasItsPopups()
{
    QFETCH(int, status);
    QFETCH(QStringList, changes);
    QFETCH(QString, arguments);
    for (bool standing : {false, true}) {
        m_window->hide();
        model()->setExtendedSystemStatus(status == 8 ? 9 : 8); // neither touches the queue
        empty();
        if (standing) {
            addSystemPopups();
        }
        const QStringList before = queued();
        Messages messages;
        model()->setExtendedSystemStatus(status); // through the model's signal
        QCOMPARE(changesIn(messages), changes);
        QCOMPARE(sorted(queued()), after(before, changes));
        if (!standing && !queue().isEmpty()) {
            QCOMPARE(argumentsOf(queue().first().eventId), arguments);
        }
        const bool illegal = QByteArray(QTest::currentDataTag()).endsWith("illegal");
        QCOMPARE(messages.count(QString("Window::handleSignalExtendedSystemStatusChanged(): ERROR!!! Illegal "
                                        "value getExtendedSystemStatus()=%1")
                                    .arg(status)),
                 illegal ? 1 : 0);
        QCOMPARE(messages.count("Window::handleSignalExtendedSystemStatusChanged(): Safemode. GUI not "
                                "shown. Do nothing"),
                 status == 8 ? 1 : 0);
    }
}

void WindowSystemTest::showRule_data()
{
    QTest::addColumn<int>("status");
    QTest::addColumn<bool>("shown");
    const QSet<int> showing = {2, 10, 11, 12, 13, 14, 20};
    for (int status = -1; status <= 21; ++status) {
        QTest::addRow("%d", status) << status << showing.contains(status);
    }
}

void WindowSystemTest::showRule()
{
    QFETCH(int, status);
    QFETCH(bool, shown);
    QVERIFY(!m_window->isVisible());
    model()->setExtendedSystemStatus(status == 0 ? 1 : 0);
    QVERIFY(!m_window->isVisible());
    Messages messages;
    model()->setExtendedSystemStatus(status);
    QCOMPARE(m_window->isVisible(), shown);
    QCOMPARE(model()->getBrightnessAllowed(), shown);
    const QString updating = "Window::handleSignalExtendedSystemStatusChanged(): SYSTEM_STATUS_UPDATING: "
                             "About to run this->show()";
    QCOMPARE(messages.count(updating), status == 2 ? 1 : 0);
    QCOMPARE(messages.count("Window::handleSignalExtendedSystemStatusChanged(): About to run this->show()"),
             shown && status != 2 ? 1 : 0);
}

void WindowSystemTest::updatingWhileVisibleDoesNothing()
{
    model()->setExtendedSystemStatus(0);
    m_window->show();
    QCOMPARE(queued(), QStringList(INITIALIZING_POPUP));
    Messages messages;
    model()->setExtendedSystemStatus(2);
    QCOMPARE(changesIn(messages), QStringList());
    QCOMPARE(messages.countOfPrefix("Window::show()"), 0);
    QCOMPARE(argumentsOf(EV_AP_GUI_STATUS_SYSTEM_INITIALIZING), QString("EVENT_WARNING 6 0 - -"));
}

void WindowSystemTest::normalWhileVisibleShowsNothingAgain()
{
    m_window->show();
    Messages messages;
    model()->setExtendedSystemStatus(10);
    QCOMPARE(messages.countOfPrefix("Window::show()"), 0);
    QCOMPARE(messages.count("Window::handleSignalExtendedSystemStatusChanged(): About to run this->show()"),
             0);
}

void WindowSystemTest::closedTerminalSuppressesRebootAndShutdown_data()
{
    QTest::addColumn<int>("status");
    QTest::addColumn<QString>("line");
    QTest::addColumn<QStringList>("changes");
    const QString prefix = "Window::handleSignalExtendedSystemStatusChanged(): Ingoring ";
    const QString suffix = " as EV_AP_TEMP_CLOSE_TERM shall be shown instead.";
    const QString minus = "-";
    const QString rebooting = prefix + "EV_AP_GUI_STATUS_SYSTEM_REBOOTING" + suffix;
    const QStringList notRebooting = {minus + INITIALIZING_POPUP, minus + SHUTTING_DOWN_POPUP};
    QTest::newRow("3") << 3 << rebooting << notRebooting;
    QTest::newRow("5") << 5 << rebooting << notRebooting;
    QTest::newRow("4") << 4 << prefix + "SYSTEM_STATUS_STOPPING" + suffix
                       << QStringList({minus + INITIALIZING_POPUP, minus + REBOOTING_POPUP});
}

// Its counterparts go as usual; the popup itself is not taken away by this.
void WindowSystemTest::closedTerminalSuppressesRebootAndShutdown()
{
    QFETCH(int, status);
    QFETCH(QString, line);
    QFETCH(QStringList, changes);
    model()->setSystemEvents({eventOf(EV_AP_TEMP_CLOSE_TERM)});
    QCOMPARE(queued(), QStringList("EV_AP_TEMP_CLOSE_TERM"));
    for (bool standing : {false, true}) {
        model()->setExtendedSystemStatus(8);
        if (standing) {
            addSystemPopups();
        }
        const QStringList before = queued();
        Messages messages;
        model()->setExtendedSystemStatus(status);
        QCOMPARE(messages.count(line), 1);
        QCOMPARE(changesIn(messages), changes);
        QCOMPARE(sorted(queued()), after(before, changes));
    }
}

// --- Software upload ---------------------------------------------------------------------------------------

void WindowSystemTest::softwareUpload_data()
{
    QTest::addColumn<int>("value");
    QTest::addColumn<QStringList>("changes");
    const QStringList system = {"+EV_SW_UPDATE_ON", "-EV_AP_GUI_SW_UPDATE_ANTENNA",
                                "-EV_AP_GUI_STATUS_SYSTEM_INITIALIZING"};
    QTest::newRow("the antenna") << 2
                                 << QStringList({"+EV_AP_GUI_SW_UPDATE_ANTENNA", "-EV_SW_UPDATE_ON",
                                                 "-EV_AP_GUI_STATUS_SYSTEM_INITIALIZING"});
    QTest::newRow("1") << 1 << system;
    QTest::newRow("3") << 3 << system;
    const QStringList none = {"-EV_SW_UPDATE_ON", "-EV_AP_GUI_SW_UPDATE_ANTENNA"};
    QTest::newRow("0") << 0 << none;
    QTest::newRow("negative") << -1 << none;
}

void WindowSystemTest::softwareUpload()
{
    QFETCH(int, value);
    QFETCH(QStringList, changes);
    for (bool standing : {false, true}) {
        empty();
        if (standing) {
            for (unsigned int id : {unsigned(EV_SW_UPDATE_ON), unsigned(EV_AP_GUI_SW_UPDATE_ANTENNA),
                                    unsigned(EV_AP_GUI_STATUS_SYSTEM_INITIALIZING)}) {
                add(id, EVENT_INFO);
            }
        }
        const QStringList before = queued();
        Messages messages;
        emit model()->signalSwUploadActiveChanged(value);
        QCOMPARE(messages.count(
                     QString("Window::handleSignalSwUploadActiveChanged(): swUploadActive=%1").arg(value)),
                 1);
        QCOMPARE(changesIn(messages), changes);
        QCOMPARE(sorted(queued()), after(before, changes));
        if (!standing && value > 0) {
            QCOMPARE(argumentsOf(queue().first().eventId), QString("EVENT_WARNING 6 0 - -"));
        }
    }
}

void WindowSystemTest::softwareUploadStopsPointing_data()
{
    QTest::addColumn<int>("value");
    QTest::addColumn<int>("pointing");
    QTest::addColumn<bool>("stopped");
    QTest::newRow("1, pointing") << 1 << 1 << true;
    QTest::newRow("2, pointing") << 2 << 1 << true;
    QTest::newRow("0, pointing") << 0 << 1 << false;
    QTest::newRow("1, pointed") << 1 << 2 << false;
    QTest::newRow("1, not pointed") << 1 << 0 << false;
}

void WindowSystemTest::softwareUploadStopsPointing()
{
    QFETCH(int, value);
    QFETCH(int, pointing);
    QFETCH(bool, stopped);
    model()->setExtendedSystemStatus(10); // up, so that the command is sent
    model()->setPointingMode(static_cast<ENUM_POINTED_STATUS>(pointing));
    forgetBus();
    Messages messages;
    m_window->handleSignalSwUploadActiveChanged(value);
    // The lines bear the name of another function, as ever.
    QCOMPARE(messages.count("Window::handleShowPopUpEvent(): About to run send_pointing_msg(\"stop\")"),
             stopped ? 1 : 0);
    QCOMPARE(messages.count("Window::handleShowPopUpEvent(): finished command send_pointing_msg(\"stop\")"),
             stopped ? 1 : 0);
    QCOMPARE(pointingCommands(stopped ? 1 : 0), QString(stopped ? "stop" : ""));
    // Before any popup is touched.
    const QStringList texts = messages.texts();
    if (stopped) {
        QVERIFY(texts.indexOf("Window::handleShowPopUpEvent(): finished command "
                              "send_pointing_msg(\"stop\")") <
                texts.indexOf(messages.withPrefix("Window::addEvent(").first()));
    }
}

void WindowSystemTest::endOfUploadBringsTheInitialisationBack_data()
{
    QTest::addColumn<int>("status");
    QTest::addColumn<bool>("back");
    QTest::newRow("0") << 0 << true;
    QTest::newRow("1") << 1 << true;
    QTest::newRow("3") << 3 << false;
    QTest::newRow("10") << 10 << false;
}

void WindowSystemTest::endOfUploadBringsTheInitialisationBack()
{
    QFETCH(int, status);
    QFETCH(bool, back);
    model()->setExtendedSystemStatus(status);
    m_window->hide();
    m_window->handleSignalSwUploadActiveChanged(1);
    QVERIFY(!queued().contains(INITIALIZING_POPUP));
    Messages messages;
    m_window->handleSignalSwUploadActiveChanged(0);
    QStringList expected = {"-EV_SW_UPDATE_ON", "-EV_AP_GUI_SW_UPDATE_ANTENNA"};
    if (back) {
        expected.prepend(QString("+") + INITIALIZING_POPUP);
    }
    QCOMPARE(changesIn(messages), expected);
    QCOMPARE(argumentsOf(EV_AP_GUI_STATUS_SYSTEM_INITIALIZING), QString(back ? "EVENT_WARNING 6 0 - -" : ""));
    QVERIFY(!queued().contains("EV_SW_UPDATE_ON"));
}

int main(int argc, char** argv)
{
    return windowfixture::run<WindowSystemTest>(argc, argv);
}

#include "window_system_test.moc"
