// A walk over the panel at random: keys pressed on the widget that has the focus, changes of the database in
// between, as a user and a terminal make them, and after each step what must hold of the window at all times.
//
// LUMENPANEL_WALK_SEED repeats a walk and LUMENPANEL_WALK_STEPS makes it longer or shorter; without them the
// seed is new in each run, and told. What the terminal does arrives on another thread, so that a seed repeats
// the presses and changes but not their very moments.
#include "screens/windowcase.h"

#include <QElapsedTimer>

#include <algorithm>
#include <cstdlib>
#include <random>

namespace {

const int STEPS = 20000;

const struct {
    Qt::Key key;
    const char* name;
    int weight;
} keys[] = {
    {Qt::Key_Left, "Left", 5}, {Qt::Key_Right, "Right", 7}, {Qt::Key_Up, "Up", 5},
    {Qt::Key_Down, "Down", 8}, {Qt::Key_Return, "OK", 7},   {Qt::Key_Space, "long OK", 1},
    {Qt::Key_F12, "F12", 1},
};

struct Change {
    const char* key;
    const char* text;
};

// What goes on in a terminal all the time.
const Change calmChanges[] = {
    {"ram.desk.signal", "up"},         {"ram.desk.signal", "down"},        {"ram.desk.signal", "45.6"},
    {"ram.desk.battery", "1 12"},      {"ram.desk.battery", "2 present"},  {"ram.desk.battery", "2 absent"},
    {"ram.desk.battery", "supply on"}, {"ram.desk.battery", "supply off"}, {"ram.desk.bundle", "start 1"},
    {"ram.desk.bundle", "stop"},       {"ram.desk.bonding", "master"},     {"ram.desk.bonding", "off"},
};

const struct {
    const char* key;
    int lowest, highest;
} settings[] = {
    {"cfg.language", 0, 6},
    {"cfg.display.brightness", 0, 7},
    {"cfg.interfaces.lan.enabled", 0, 1},
    {"cfg.interfaces.wlan.enabled", 0, 1},
    {"ram.status.interfaces.wlan.clients", 0, 12},
    {"ram.net.user_groups.0.current_bundle", -1, 4},
    {"cfg.power_up.pointing_required", 0, 1},
    {"ram.status.position.fix", 0, 3},
};

// What puts a popup or another screen before the user, and what ends it some steps later: most of these
// popups no key can close, and all stay for a while.
const struct {
    Change begin, end;
} incidents[] = {
    {{"ram.desk.alert", "add 0x210 warning Temperature out of range"}, {"ram.desk.alert", "clear"}},
    {{"ram.desk.alert", "add 0x240 error Something has failed"}, {"ram.desk.alert", "clear"}},
    {{"ram.desk.alert", "add 0x250 fatal Nothing goes"}, {"ram.desk.alert", "clear"}},
    {{"ram.desk.alert", "add 0x260 info Nothing much"}, {"ram.desk.alert", "clear"}},
    {{"ram.desk.fail", "33"}, {"ram.desk.fail", "off"}},
    {{"ram.desk.update", "antenna"}, {"ram.desk.update", "cancel"}},
    {{"ram.desk.update", "fail 0x10301"}, {"ram.desk.alert", "clear"}},
    {{"ram.desk.system", "shutdown"}, {"ram.desk.system", "ready"}},
    {{"ram.desk.system", "start"}, {"ram.desk.system", "ready"}},
    {{"ram.desk.system", "reboot"}, {"ram.desk.system", "ready"}},
    {{"ram.desk.modem", "insert"}, {"ram.desk.modem", "remove"}},
    {{"ram.desk.modem", "on"}, {"ram.desk.modem", "off"}},
    {{"ram.desk.modem", "search"}, {"ram.desk.modem", "off"}},
    {{"ram.desk.sim", "pin 1111"}, {"ram.desk.sim", "nopin"}},
    {{"ram.desk.sim", "remove"}, {"ram.desk.sim", "insert"}},
    {{"ram.desk.sim", "block"}, {"ram.desk.sim", "unblock"}},
    {{"ram.desk.bonding", "slave"}, {"ram.desk.bonding", "off"}},
    {{"ram.desk.at", "on"}, {"ram.desk.at", "off"}},
    {{"ram.desk.dhcp", "on"}, {"ram.desk.dhcp", "off"}},
    {{"ram.status.pointed_status", "1"}, {"ram.status.pointed_status", "2"}},
    {{"rmcfg.protocols.umts.ciphering_capabilities", "0"},
     {"rmcfg.protocols.umts.ciphering_capabilities", "3"}},
    {{"cfg.display.timeout", "2"}, {"cfg.display.timeout", "300"}},
};
const char* const FIRST_INCIDENT = "pin 1111"; // asked for a PIN seldom else: under a popup it isn't seen
const int INCIDENTS = int(sizeof(incidents) / sizeof(incidents[0]));
const int LONGEST_WAIT_MS = 15000;
const int INCIDENT_MS = 1300; // long enough for the poll of the SIM, once a second, to see it

} // namespace

class RandomWalkTest : public QObject, private WindowCase {
    Q_OBJECT

private slots:
    void init() { startTest(); }
    void cleanup() { endTest(); }

    void theWindowHoldsItsRules()
    {
        const unsigned seed = number("LUMENPANEL_WALK_SEED", std::random_device()());
        const int steps = int(number("LUMENPANEL_WALK_STEPS", STEPS));
        fprintf(stderr, "LUMENPANEL_WALK_SEED=%u\n", seed);
        m_random.seed(seed);
        m_sinceIncident.start();
        makeVisibleWindow();
        int presses = 0;
        // Popups take most of the time, so that the walk may have to go on until it has come everywhere.
        const auto goesOn = [&] {
            return presses < steps || (steps >= STEPS && presses < 3 * STEPS && m_visited.size() < 8);
        };
        for (int step = 0; goesOn(); ++step) {
            QString what;
            if (m_sinceIncident.elapsed() >= INCIDENT_MS && (m_incidentGoesOn || mayBegin())) {
                what = goOnWithIncidents();
            } else if (below(10) < 7) {
                what = pressAKey();
                ++presses;
            } else {
                what = changeTheDatabase();
            }
            letPass();
            QString fault = whatIsWrong();
            // The model is ahead of the window by what is still under way between their threads.
            for (int again = 0; again < 20 && !fault.isEmpty(); ++again) {
                QTest::qWait(10);
                fault = whatIsWrong();
            }
            m_last.append(QString("%1: %2 -> %3").arg(step).arg(what, state()));
            if (m_last.size() > 25)
                m_last.removeFirst();
            if (!fault.isEmpty())
                QFAIL(qPrintable(QString("%1. LUMENPANEL_WALK_SEED=%2. The last steps:\n%3")
                                     .arg(fault)
                                     .arg(seed)
                                     .arg(m_last.join('\n'))));
        }
        QStringList shares;
        for (auto visit = m_visited.constBegin(); visit != m_visited.constEnd(); ++visit)
            shares.append(QString("%1 %2")
                              .arg(m_window->getScreenNameById(Screen::SCREEN_ID_ENUM(visit.key())))
                              .arg(visit.value()));
        fprintf(stderr, "steps on each screen: %s\n", qPrintable(shares.join(", ")));
        // The walk was one: it came to every screen there is.
        if (steps >= STEPS)
            QCOMPARE(m_visited.size(), 8);
    }

private:
    static unsigned number(const char* variable, unsigned otherwise)
    {
        const QByteArray value = qgetenv(variable);
        return value.isEmpty() ? otherwise : value.toUInt();
    }
    int below(int limit) { return std::uniform_int_distribution<int>(0, limit - 1)(m_random); }

    QString pressAKey()
    {
        int total = 0;
        for (const auto& key : keys)
            total += key.weight;
        int drawn = below(total);
        size_t index = 0;
        while (drawn >= keys[index].weight)
            drawn -= keys[index++].weight;
        QTest::keyClick(m_window->focusWidget(), keys[index].key);
        return keys[index].name;
    }

    QString apply(const Change& change)
    {
        bool isNumber = false;
        const int value = QString(change.text).toInt(&isNumber);
        if (isNumber)
            windowfixture::terminal().set(change.key, value);
        else
            windowfixture::terminal().set(change.key, std::string(change.text));
        return QString("%1 %2").arg(change.key, change.text);
    }

    QString changeTheDatabase()
    {
        if (below(2))
            return apply(calmChanges[below(int(sizeof(calmChanges) / sizeof(calmChanges[0])))]);
        const auto& setting = settings[below(int(sizeof(settings) / sizeof(settings[0])))];
        const int value = setting.lowest + below(setting.highest - setting.lowest + 1);
        const QByteArray text = QByteArray::number(value);
        return apply({setting.key, text.constData()});
    }

    // Popups stay for seconds, so that incidents that followed each other at once would all be hidden by
    // them.
    bool mayBegin()
    {
        if (m_waitsForCalm && !queue().isEmpty() && m_sinceIncident.elapsed() < LONGEST_WAIT_MS)
            return false;
        m_waitsForCalm = below(3) == 0;
        return true;
    }

    // An incident begins, or the one that has begun ends. All of them come in turn, in an order of chance.
    QString goOnWithIncidents()
    {
        m_sinceIncident.start();
        m_incidentGoesOn = !m_incidentGoesOn;
        if (!m_incidentGoesOn)
            return apply(incidents[m_order.takeLast()].end);
        if (m_order.empty()) {
            for (int index = 0; index < INCIDENTS; ++index)
                m_order.append(index);
            std::shuffle(m_order.begin(), m_order.end(), m_random);
            for (int index = 0; index < INCIDENTS; ++index) {
                if (m_visited.size() < 8 && !qstrcmp(incidents[index].begin.text, FIRST_INCIDENT))
                    m_order.append(index);
            }
        }
        return apply(incidents[m_order.last()].begin);
    }

    // Mostly the next step follows at once; now and then there is time for what the bus brings.
    void letPass()
    {
        QCoreApplication::processEvents();
        if (below(10) == 0)
            QTest::qWait(below(35));
    }

    QString whatIsWrong()
    {
        QStringList faults;
        const Screen::SCREEN_ID_ENUM current = m_window->getCurrentScreenId();
        ++m_visited[current];
        QStringList shown;
        for (const Screen* screen : m_window->findChildren<Screen*>()) {
            if (!screen->isHidden())
                shown.append(screen->getScreenName());
        }
        if (shown != QStringList(m_window->getScreenNameById(current)))
            faults.append("set to be visible: " + shown.join(", "));
        const QWidget* const focus = m_window->focusWidget();
        if (!focus || !(focus == screen(current) || screen(current)->isAncestorOf(focus)))
            faults.append(
                QString("the focus is on %1").arg(focus ? focus->metaObject()->className() : "nothing"));
        for (const char* never : {"POPUP", "STATUS", "POINTING"}) {
            if (history().split(' ').contains(never))
                faults.append(QString("%1 is in the history").arg(never));
        }
        faults += faultsOfThePopups(current);
        return faults.join("; ");
    }

    QStringList faultsOfThePopups(Screen::SCREEN_ID_ENUM current) const
    {
        QStringList faults;
        const bool up = current == Screen::SCREEN_POPUP;
        const bool pointing = windowfixture::model()->getPointingMode() == POINTING_STATUS_POINTING;
        if (queue().isEmpty()) {
            if (up)
                faults.append("an empty popup screen is shown");
            return faults;
        }
        const EVENT_SEVERITY_ENUM severity = queue().first().severity;
        const bool mayWait = pointing && (severity == EVENT_INFO || severity == EVENT_SCREEN_SAVER);
        if (!up && !mayWait)
            faults.append("the popup at position 0 is not shown");
        // A popup that goes in front of one that leaves by itself stands there twice, and may so stand above
        // a higher one; but never a third time.
        QMap<unsigned int, int> counts;
        for (const popup_event_t& popup : queue()) {
            if (++counts[popup.eventId] == 3)
                faults.append(popupScreen()->getEventIdAsString(popup.eventId) +
                              " stands in the queue three times");
        }
        return faults;
    }

    QString state() const
    {
        return QString("%1 [%2] %3")
            .arg(m_window->getScreenNameById(m_window->getCurrentScreenId()), history(), popups());
    }

    // The queue as "NAME/severity/closing", the popup on display first.
    QString popups() const
    {
        QStringList list;
        for (const popup_event_t& popup : queue()) {
            list.append(QString("%1/%2/%3")
                            .arg(popupScreen()->getEventIdAsString(popup.eventId))
                            .arg(popup.severity)
                            .arg(popup.closeHandling));
        }
        return list.join(",");
    }

    std::mt19937 m_random;
    QStringList m_last;
    QMap<int, int> m_visited;
    QList<int> m_order; // of the incidents to come; the last one comes next
    bool m_incidentGoesOn = false;
    bool m_waitsForCalm = true;
    QElapsedTimer m_sinceIncident;
};

int main(int argc, char** argv)
{
    sim::TerminalOptions options;
    options.actors = true;
    options.moving = true;
    options.speed = 20;
    options.record = false;
    return windowfixture::run<RandomWalkTest>(argc, argv, options);
}

#include "random_walk_test.moc"
