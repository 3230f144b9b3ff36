// Every screen and every popup in every language on the real widgets: no text is cut, no widget lies over
// another or leaves its box. Each language is a row of its own; a failure names all that is wrong in it. What
// counts as a fault stands in fit.h.
//
// The bus is left alone: the poll of the radio module is off, and the model is fed by its setters. Popups may
// scroll; rows, captions and the lines of running connections may not even be shortened.
#include "screens/fitstates.h"

#include "common/log.h"
#include "model/menu_items.h"
#include "screens/fit.h"
#include "screens/popup_rules.h"
#include "screens/screenmessage.h"
#include "screens/screenpopup.h"
#include "screens/screenstatus.h"
#include "widgets/tlabel.h"
#include "widgets/ttreewidget.h"

#include "support/patience.h"

#include <QMap>
#include <QScopedPointer>

using namespace windowfixture;

namespace {

class MessagePage : public ScreenMessage {
public:
    explicit MessagePage(Window* window) : ScreenMessage(window, SCREEN_ENTER_PIN, nullptr) {}
    QLabel* message() const { return pMessageLabel; }
};

} // namespace

class FitTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanupTestCase() { m_window.reset(); }
    void cleanup();

    void statusTextsFit_data() { addLanguages(); }
    void statusTextsFit();
    void runningConnectionsFit_data() { addLanguages(); }
    void runningConnectionsFit();
    void statusIconsFit_data() { addLanguages(); }
    void statusIconsFit();
    void listOfConnectionsFits_data() { addLanguages(); }
    void listOfConnectionsFits();
    void menuFits_data() { addLanguages(); }
    void menuFits();
    void alertsFit_data() { addLanguages(); }
    void alertsFit();
    void pointingFits_data() { addLanguages(); }
    void pointingFits();
    void antennaFits_data() { addLanguages(); }
    void antennaFits();
    void batteryFits_data() { addLanguages(); }
    void batteryFits();
    void pinFits_data() { addLanguages(); }
    void pinFits();
    void messageFits_data() { addLanguages(); }
    void messageFits();
    void popupsFit_data() { addLanguages(); }
    void popupsFit();
    void propertiesFit_data() { addLanguages(); }
    void propertiesFit();
    void rowsHaveTheRoomOfThePlaces();
    void faultsAreFound();

private:
    static void addLanguages();
    static void settle();
    static QString words(const char* context, const char* source);
    void speak();
    void open(Screen::SCREEN_ID_ENUM id);
    void closePopups();
    Screen* screen(Screen::SCREEN_ID_ENUM id) { return m_window->getScreenById(id); }
    ScreenPopup* popups() { return static_cast<ScreenPopup*>(screen(Screen::SCREEN_POPUP)); }
    TTreeWidget* treeOf(Screen::SCREEN_ID_ENUM id) { return screen(id)->findChild<TTreeWidget*>(); }
    void look(const QString& state);
    void lookAtLabel(const QString& state, const QString& label);
    void lookAtRows(Screen::SCREEN_ID_ENUM id, const QString& state);
    void lookAtPopup(const popup_event_t& popup, const QString& state);
    void add(const QString& state, const QStringList& faults);
    void judge();

    QScopedPointer<Window> m_window;
    QMap<QString, QString> m_faults; // each once, with the first state that has it
};

void FitTest::initTestCase()
{
    syslogtap_stop(); // thousands of popups write much
    setDebugLogWanted(false);
    resetModel();
    model()->setExtendedSystemStatus(SYSTEM_STATUS_NORMAL);
    m_window.reset(new Window);
    m_window->setVisible(true);
    model()->setBrightnessAllowed(false); // no file of the display's driver is written
    // Off, and over, before the first state is set: a poll would put the radio module's own over it.
    emit model()->signalSubscribeToPollRmValues(false);
    terminal().set("ram.status.signal_strength", 1);
    QVERIFY(QTest::qWaitFor([] { return model()->getSignalLevel() == 1; }, PATIENCE_MS));
    quietRadio();
    closePopups();
}

void FitTest::cleanup()
{
    endSessions();
    setCurrentBundle(-1);
    model()->setACA(false);
    model()->setSystemEvents(QList<fmmi_evt_t>());
    model()->setBattData(battery_t(), battery_t());
    model()->setExternalSupplyPresent(false);
    model()->setPosition(gps_data_t());
    model()->setSimPinRetriesLeft(3);
    model()->setScreenSaverTime(300);
    quietRadio();
    settle();
    closePopups();
    m_faults.clear();
}

void FitTest::addLanguages()
{
    QTest::addColumn<LANG_ENUM>("language");
    for (const auto& language : LANGUAGES)
        QTest::newRow(language.name) << language.value;
}

// A signal may lead to another one, and both to a layout.
void FitTest::settle()
{
    for (int step = 0; step < 3; ++step)
        QCoreApplication::sendPostedEvents();
}

QString FitTest::words(const char* context, const char* source)
{
    return QCoreApplication::translate(context, source);
}

// The language of the data row, as the database asks for it.
void FitTest::speak()
{
    QFETCH(LANG_ENUM, language);
    model()->setLanguage(language);
    settle();
    QVERIFY(words("StatusUpdater", "RM_EV_INFOLVL_INFO") != "RM_EV_INFOLVL_INFO");
}

void FitTest::open(Screen::SCREEN_ID_ENUM id)
{
    m_window->showScreen(id, false);
    settle();
    QCOMPARE(m_window->getCurrentScreenId(), id);
}

void FitTest::closePopups()
{
    while (!popups()->events().isEmpty())
        popups()->closePopup(popups()->events().first().eventId, true);
    settle();
}

void FitTest::add(const QString& state, const QStringList& faults)
{
    const QString name = m_window->getScreenNameById(m_window->getCurrentScreenId());
    for (const QString& fault : faults) {
        const QString line = name + ": " + fault;
        if (!m_faults.contains(line))
            m_faults.insert(line, state);
    }
}

void FitTest::look(const QString& state)
{
    settle();
    add(state, fit::faultsOf(screen(m_window->getCurrentScreenId())));
}

// Lines of running connections are shortened where there is no room; here none may be.
void FitTest::lookAtLabel(const QString& state, const QString& label)
{
    const QString text = screen(Screen::SCREEN_STATUS)->findChild<TLabel*>("pStatusLabel")->text();
    if (!text.contains(label))
        add(state, {QString("\"%1\" is shortened: \"%2\"").arg(label, fit::oneLine(text))});
}

// Opens all branches and goes through the rows.
void FitTest::lookAtRows(Screen::SCREEN_ID_ENUM id, const QString& state)
{
    TTreeWidget* const tree = treeOf(id);
    tree->expandAll();
    look(state);
    for (QTreeWidgetItemIterator item(tree, QTreeWidgetItemIterator::NotHidden); *item; ++item) {
        if ((*item)->flags() & Qt::ItemIsEnabled)
            tree->setCurrentItem(*item);
        tree->scrollToItem(*item);
        QCoreApplication::sendPostedEvents();
        add(state, fit::faultsOfRow(tree, *item));
    }
    tree->collapseAll();
}

// All that is wrong, for whoever translates.
void FitTest::judge()
{
    for (auto fault = m_faults.begin(); fault != m_faults.end(); ++fault)
        fprintf(stderr, "%s: %s (%s)\n", QTest::currentDataTag(), qPrintable(fault.key()),
                qPrintable(fault.value()));
    QVERIFY2(m_faults.isEmpty(), qPrintable(QString("%1 faults").arg(m_faults.size())));
}

// --- Status -----------------------------------------------------------------------------------------------

void FitTest::statusTextsFit()
{
    speak();
    open(Screen::SCREEN_STATUS);
    ScreenStatus* const status = static_cast<ScreenStatus*>(screen(Screen::SCREEN_STATUS));
    for (const StatusState& state : STATUS_STATES) {
        quietRadio();
        state.make();
        settle();
        status->setFocusFrame(ScreenStatus::FOCUS_STATUS_LABEL);
        status->updateStatusText();
        QCOMPARE(model()->getCurrentStatusTextId(), state.id);
        look(QString("status text %1").arg(state.id));
        closePopups();
    }
    judge();
}

void FitTest::runningConnectionsFit()
{
    speak();
    open(Screen::SCREEN_STATUS);
    for (const Connection& connection : CONNECTIONS) {
        setSession(0, BUNDLE_STATUS_RUNNING, connection);
        const QString label = connection.label ? words("StatusUpdater", connection.label)
                                               : "256/256" + words("Shared_translations", " kbps");
        look("running " + label);
        lookAtLabel("running", label);
    }
    setSession(0, BUNDLE_STATUS_INITIALIZING, CONNECTIONS[0]);
    look("connecting");
    for (int amount : AMOUNTS) {
        setSession(0, BUNDLE_STATUS_RUNNING, CONNECTIONS[0], amount);
        look(QString("%1 kB").arg(amount));
        lookAtLabel("amount", words("StatusUpdater", "Standard data: "));
    }
    // From the third on the lines swing.
    for (int group = 1; group < 4; ++group) {
        setSession(group, BUNDLE_STATUS_RUNNING, CONNECTIONS[group + 3]);
        look(QString("%1 connections").arg(group + 1));
        QCOMPARE(screen(Screen::SCREEN_STATUS)->findChild<TLabel*>("pStatusLabel")->text().count('\n'),
                 group);
    }
    judge();
}

// The texts and layers over the icons, and the frame on each of them.
void FitTest::statusIconsFit()
{
    speak();
    open(Screen::SCREEN_STATUS);
    ScreenStatus* const status = static_cast<ScreenStatus*>(screen(Screen::SCREEN_STATUS));
    for (int clients : {1, 32}) {
        model()->setWifiNumberOfClients(clients);
        look(QString("%1 clients").arg(clients));
    }
    for (int beam = IAI2_BEAM_TYPE_UNDEFINED; beam <= IAI2_BEAM_TYPE_NARROW; ++beam) {
        Access::iai2BeamType() = beam;
        for (int level : {0, 327, 700}) {
            model()->setSignalLevel(level);
            model()->setSignalLevelIcon(beam + 1);
            look(QString("beam %1, level %2").arg(beam).arg(level));
        }
    }
    for (int group = 0; group < 11; ++group)
        setSession(group, BUNDLE_STATUS_RUNNING, CONNECTIONS[0]);
    look("11 connections");
    for (const State& state : batteries(LONG_BATTERY_TIME / 2)) { // the sum is shown
        state.make();
        look(state.name);
    }
    model()->setExternalSupplyPresent(true);
    look("charging");
    model()->setWarningsPresent(true);
    look("warnings");
    for (int state : {INTERFACE_STATE_OFF, INTERFACE_STATE_ACTIVATING, INTERFACE_STATE_ON}) {
        for (int name = INTERFACE_NAME_FIRST; name <= INTERFACE_NAME_LAST; ++name)
            model()->setInterfaceState(INTERFACE_NAME_ENUM(name), INTERFACE_STATE_ENUM(state));
        look(QString("interfaces in state %1").arg(state));
    }
    for (int focus = ScreenStatus::FOCUS_NONE; focus <= ScreenStatus::FOCUS_MENU; ++focus) {
        status->setFocusFrame(ScreenStatus::FOCUS_STATE_ENUM(focus));
        look(QString("focus %1").arg(focus));
    }
    model()->setWarningsPresent(false);
    judge();
}

// --- Lists ------------------------------------------------------------------------------------------------

void FitTest::listOfConnectionsFits()
{
    speak();
    // Names are the user's own; these have the length of a usual one, in each script.
    setBundles({"Standard", "Streaming 256k", QString::fromUtf8("Связь"), QString::fromUtf8("卫星连接")});
    open(Screen::SCREEN_ACTION);
    lookAtRows(Screen::SCREEN_ACTION, "all can be started");
    for (int bundle : {0, 1}) {
        setCurrentBundle(bundle);
        setSession(0, BUNDLE_STATUS_INITIALIZING, CONNECTIONS[0]);
        lookAtRows(Screen::SCREEN_ACTION, "one connects, the others are grey");
        setSession(0, BUNDLE_STATUS_RUNNING, CONNECTIONS[0]);
        emit model()->updateElapsedTimeAndBackgroundDataSignal();
        QCOMPARE(treeOf(Screen::SCREEN_ACTION)->topLevelItem(bundle + 1)->text(1).size(), 8);
        lookAtRows(Screen::SCREEN_ACTION, "one runs");
        model()->setACA(true);
        lookAtRows(Screen::SCREEN_ACTION, "stop is grey");
        model()->setACA(false);
        endSessions();
        setCurrentBundle(-1);
    }
    judge();
}

void FitTest::menuFits()
{
    speak();
    open(Screen::SCREEN_MENU);
    lookAtRows(Screen::SCREEN_MENU, "as it is");
    for (int level = 1; level <= 7; ++level) {
        model()->setBrightness(level);
        model()->setScreenSaverTime(level % 2 ? 5 : 300);
        model()->setAudioPointing(level % 2);
        model()->setPowerUp(level % 2);
        lookAtRows(Screen::SCREEN_MENU, QString("check mark at level %1").arg(level));
    }
    judge();
}

// Each alert of the log as a row of the menu, and as the popup that a press on it shows.
void FitTest::alertsFit()
{
    speak();
    open(Screen::SCREEN_MENU);
    model()->setSystemEvents(allAlerts());
    QVERIFY(model()->getEvents().size() > 70);
    settle();
    closePopups();
    open(Screen::SCREEN_MENU);
    TTreeWidget* const tree = treeOf(Screen::SCREEN_MENU);
    TTreeWidgetItem* const branch = tree->getItemById(ITEM_ALERTS);
    QCOMPARE(branch->childCount(), model()->getEvents().size());
    lookAtRows(Screen::SCREEN_MENU, "alerts");
    for (int row = 0; row < branch->childCount(); ++row) {
        const QString text = branch->child(row)->text(0);
        tree->setCurrentItem(branch->child(row));
        QTest::keyClick(tree, Qt::Key_Return);
        QCOMPARE(m_window->getCurrentScreenId(), Screen::SCREEN_POPUP);
        QVERIFY(popups()->events().first().text.contains("\n14 Nov 2023 22:13:20 ID: "));
        lookAtPopup(popups()->events().first(), "alert " + text);
        closePopups();
        QCOMPARE(m_window->getCurrentScreenId(), Screen::SCREEN_MENU);
    }
    judge();
}

// --- Pages ------------------------------------------------------------------------------------------------

void FitTest::pointingFits()
{
    speak();
    open(Screen::SCREEN_POINTING);
    for (int level : {0, 320, 327, 488, 600, 700}) {
        model()->setSignalLevel(level);
        look(QString("level %1").arg(level));
        add(QString("level %1").arg(level),
            fit::faultsOfInk(screen(Screen::SCREEN_POINTING), "pGridLabel",
                             {"pCancelLabel", "pSignalValueLabel", "pUnitLabel", "pOkLabel"}));
    }
    judge();
}

void FitTest::antennaFits()
{
    speak();
    open(Screen::SCREEN_ANTENNA);
    for (int level : {0, 700}) {
        model()->setSignalLevel(level);
        for (const State& state : positions()) {
            state.make();
            look(state.name);
        }
    }
    judge();
}

void FitTest::batteryFits()
{
    speak();
    open(Screen::SCREEN_BATTERY);
    for (const State& state : batteries()) {
        state.make();
        look(state.name);
    }
    judge();
}

void FitTest::pinFits()
{
    speak();
    // The text of the retries, which nothing on the terminal feeds today, may go over to a second line.
    const QLabel* const message = screen(Screen::SCREEN_ENTER_PIN)->findChild<QLabel*>("pMessageLabel");
    const int oneLine = QFontMetrics(message->font()).lineSpacing() + 1; // of rich text: rounded up
    for (int retries = 3; retries >= 0; --retries) {
        open(Screen::SCREEN_STATUS);
        open(Screen::SCREEN_ENTER_PIN);
        model()->setSimPinRetriesLeft(retries);
        for (int position = 0; position < 4; ++position) {
            QTest::keyClick(screen(Screen::SCREEN_ENTER_PIN), Qt::Key_Down); // a wide digit, 9
            const QString state = QString("position %1, %2 retries").arg(position).arg(retries);
            look(state);
            if (retries == 3 && message->sizeHint().height() > oneLine)
                add(state, {"the line is wrapped: " + message->text()});
            QTest::keyClick(screen(Screen::SCREEN_ENTER_PIN), Qt::Key_Right);
        }
    }
    judge();
}

// The page has no instance of its own. Any event's text will do.
void FitTest::messageFits()
{
    speak();
    MessagePage page(m_window.data());
    page.message()->setText(model()->getEventText(EV_AP_GUI_NOT_REGISTERED_TO_NETWORK));
    page.show();
    settle();
    add("message", fit::faultsOf(&page));
    judge();
}

// --- Popups -----------------------------------------------------------------------------------------------

// A popup that stands, and with every row of buttons: what may close it makes no other difference.
void FitTest::lookAtPopup(const popup_event_t& popup, const QString& state)
{
    const Screen* const page = screen(Screen::SCREEN_POPUP);
    popup_event_t shown = popup;
    shown.timeStamp = QDateTime::currentDateTime().addSecs(-1); // the buttons are to be seen
    for (const PopupCloseRule& rule : POPUP_CLOSE_RULES) {
        shown.closeHandling = rule.closeHandling;
        popups()->updatePopupButtonsAndText(shown);
        look(QString("%1, closing kind %2").arg(state).arg(rule.closeHandling));
        const QLabel* const text = page->findChild<QLabel*>("pTextLabel");
        const bool scrolls = text->height() > page->findChild<QWidget*>("pTextFrame")->height();
        // What the menu shows is closed by OK alone, and its third line may reach the place of Cancel.
        const bool mayBe =
            popup.eventId != EV_AP_GUI_CUSTOM_TEXT || rule.closeHandling == popup.closeHandling;
        if (mayBe && !scrolls)
            add(state, fit::faultsOfInk(page, "pTextFrame", {"pCancelLabel", "pOkLabel"}));
    }
}

// Every event, each through the queue.
void FitTest::popupsFit()
{
    speak();
    for (const EventText& row : EVENT_TEXTS) {
        const bool startsBundle = row.id == EV_AP_GUI_STARTING_BUNDLE_NAME;
        m_window->addEvent(row.id, EVENT_WARNING, POPUP_CLOSE_OK, 0, nullptr, nullptr,
                           startsBundle ? QString("Streaming 256k") : QString(), -1);
        QCOMPARE(m_window->getCurrentScreenId(), Screen::SCREEN_POPUP);
        QCOMPARE(popups()->events().first().eventId, row.id);
        QCOMPARE(popups()->events().first().text.isEmpty(), !row.source);
        lookAtPopup(popups()->events().first(), row.name);
        closePopups();
    }
    judge();
}

// The popups of the menu that show a value: filled, and without one.
void FitTest::propertiesFit()
{
    speak();
    open(Screen::SCREEN_MENU);
    TTreeWidget* const tree = treeOf(Screen::SCREEN_MENU);
    for (int round = 0; round < 3; ++round) {
        const bool known = round == 2;
        const INTERFACE_STATE_ENUM interfaces = round == 0 ? INTERFACE_STATE_OFF : INTERFACE_STATE_ON;
        model()->setInterfaceState(INTERFACE_NAME_LAN, interfaces);
        model()->setInterfaceState(INTERFACE_NAME_WIFI, interfaces);
        setIdentity(known);
        for (int id : {ITEM_IP_ADDRESS, ITEM_UNIT_SERIAL_NUMBER, ITEM_ANTENNA_SERIAL_NUMBER, ITEM_LAN,
                       ITEM_WLAN, ITEM_SOFTWARE, ITEM_CONFORMITY, ITEM_IMEI, ITEM_HELP_DESK}) {
            tree->setCurrentItem(tree->getItemById(WIDGET_ITEM_ID_ENUM(id)));
            QTest::keyClick(tree, Qt::Key_Return);
            QCOMPARE(popups()->events().size(), 1);
            lookAtPopup(popups()->events().first(), QString("menu item %1, round %2").arg(id).arg(round));
            closePopups();
        }
    }
    judge();
}

// The widths that translations_test.cpp measures the words of rows with, and docs/translating.md tells.
void FitTest::rowsHaveTheRoomOfThePlaces()
{
    setBundles({"Standard"});
    setCurrentBundle(0);
    setSession(0, BUNDLE_STATUS_INITIALIZING, CONNECTIONS[0]);
    const struct {
        Screen::SCREEN_ID_ENUM screen;
        int item;
        int column;
        int width;
    } rooms[] = {
        {Screen::SCREEN_MENU, ITEM_POINT_NOW, 0, 250},
        {Screen::SCREEN_MENU, ITEM_DISPLAY, 0, 230},
        {Screen::SCREEN_MENU, ITEM_BRIGHTNESS, 0, 210},
        {Screen::SCREEN_MENU, ITEM_POWER_UP_MANUAL, 0, 191},
        {Screen::SCREEN_MENU, ITEM_AUDIO_POINTING_ON, 0, 171},
        {Screen::SCREEN_ACTION, ITEM_ACTION_EXIT, 0, 144},
        {Screen::SCREEN_ACTION, ITEM_ACTION_START_STOP, 0, 124},
        {Screen::SCREEN_ACTION, ITEM_ACTION_BUNDLE, 1, 100},
    };
    for (const auto& room : rooms) {
        open(room.screen);
        TTreeWidget* const tree = treeOf(room.screen);
        TTreeWidgetItem* const item = tree->getItemById(WIDGET_ITEM_ID_ENUM(room.item));
        tree->scrollToItem(item); // opens the branch
        QCOMPARE(fit::roomForText(tree, item, room.column), room.width);
    }
}

// What the looks above would say: one fault of each kind, by name and sizes.
void FitTest::faultsAreFound()
{
    QWidget page;
    page.setFixedSize(fit::PANEL);
    const auto label = [&page](const char* name, const QString& text, const QRect& place) {
        QLabel* const made = new QLabel(text, &page);
        made->setObjectName(name);
        made->setGeometry(place);
        return made;
    };
    label("pCut", "Registering", QRect(0, 0, 20, 20));
    label("pHalf", "Two\nlines", QRect(30, 0, 60, 20));
    label("pWord", "Verbindungsabbruch", QRect(100, 0, 40, 20))->setWordWrap(true);
    label("pRich", "<u>Registering</u>", QRect(150, 0, 20, 20));
    label("pOutside", "-", QRect(240, 40, 20, 20));
    label("pOne", "-", QRect(0, 30, 20, 20));
    label("pOther", "-", QRect(10, 30, 20, 20));
    label("pHidden", "Registering", QRect(10, 30, 5, 20))->hide();
    label("pGood", "Ready", QRect(150, 30, 60, 20));
    page.show();
    settle();
    const QStringList faults = fit::faultsOf(&page);
    const QStringList expected = {"pOne \"-\" and pOther \"-\" overlap: 20x20 at 0,30 and 20x20 at 10,30",
                                  "pCut \"Registering\" is cut: needs ",
                                  "pHalf \"Two\\nlines\" is cut: needs ",
                                  "pWord \"Verbindungsabbruch\" is cut: needs ",
                                  "pRich \"<u>Registering</u>\" is cut: needs ",
                                  "pOutside \"-\" leaves its box: 20x20 at 240,40 in 256x64"};
    QCOMPARE(faults.size(), expected.size());
    for (int i = 0; i < expected.size(); ++i)
        QVERIFY2(faults.at(i).startsWith(expected.at(i)), qPrintable(faults.at(i)));

    TTreeWidget list(nullptr);
    list.setUpList(1);
    list.setFixedSize(120, 20);
    TTreeWidgetItem* const fits = new TTreeWidgetItem(&list, ITEM_ACTION_EXIT, "Exit");
    TTreeWidgetItem* const cut = new TTreeWidgetItem(&list, ITEM_POINT_NOW, "Registering in a network");
    list.show();
    settle();
    QCOMPARE(fit::faultsOfRow(&list, fits).join(", "), QString());
    const QStringList rowFaults = fit::faultsOfRow(&list, cut);
    QCOMPARE(rowFaults.size(), 2);
    QVERIFY(rowFaults.first().startsWith("row \"Registering in a network\" is cut: needs "));
    QVERIFY(rowFaults.last().startsWith("row \"Registering in a network\" leaves the list: "));
}

int main(int argc, char** argv)
{
    return windowfixture::run<FitTest>(argc, argv);
}

#include "fit_test.moc"
