// Fuzz target: the queue of the popup screen of a real window. The input is operations of 4 bytes: events
// that come and go, keys, ticks of the timer that closes popups; after each the queue is compared with a
// model of its rules that is written here.
//
// Times are kept out of it: events are new, or some seconds old, or too old; ticks are given by hand while
// the timer runs; and an input that takes longer than LIMIT_MS, as on a busy machine, ends there. With the
// application comes its bus thread and a terminal with an empty database, as in the tests.
// No legal end.
#include "fuzz/windowtarget.h"

using namespace windowfixture;

namespace {

const int LIMIT_MS = 500;
const int MAX_OPERATIONS = 60;

const unsigned int IDS[] = {A,
                            B,
                            C,
                            N,
                            SAVER,
                            EV_BDU_USIM_MISSING,
                            EV_AP_TEMP_CLOSE_TERM,
                            EV_AP_GUI_CUSTOM_TEXT,
                            EV_AP_GUI_NO_BUNDLES_DEFINED};
const size_t ID_COUNT = sizeof(IDS) / sizeof(IDS[0]);
const int AGES[] = {0, 5000, 20000, -1000};
const int TIMES[] = {0, 3000, 5, -1};
const char LONG_TEXT[] =
    "a text that is far too long for the two lines which this screen has for it, so that "
    "it must swing up and down all the time while it stands on the display";
const char* const TEXTS[] = {"one", "two", "<html>three</html>", LONG_TEXT};

struct Entry {
    unsigned int id;
    int severity, closing, time, age;
    std::string text;

    bool closesByItself() const { return closing == 0 || closing == 2; }
    bool isStale() const { return closesByItself() && age > 10000; }
    bool mayBeClosed() const
    {
        return age >= 700 || id == SAVER || id == EV_AP_GUI_CUSTOM_TEXT || id == EV_AP_GUI_NO_BUNDLES_DEFINED;
    }
};

// The rules.
class Model {
public:
    std::vector<Entry> list;
    bool timerRuns = false;
    int ticks = 0;
    bool shownAtKnown = false;
    std::string label = "-";
    bool pointing = false;
    // What the window is before each operation.
    bool visible = false;
    bool shown = false;

    void add(Entry entry)
    {
        if (entry.id == EV_BDU_USIM_MISSING)
            entry.severity = 0;
        if (entry.id == EV_AP_TEMP_CLOSE_TERM) {
            entry.severity = 3;
            entry.closing = 6;
        }
        size_t at = 0;
        while (at < list.size() && list[at].id != entry.id)
            ++at;
        if (at < list.size()) {
            if (at > 0)
                return;
            timerRuns = false;
            list[0] = entry;
            show();
            return;
        }
        if ((entry.time > 0) != entry.closesByItself())
            return;
        const bool firstCloses = !list.empty() && list[0].closesByItself();
        if (entry.id != SAVER)
            for (size_t i = list.size(); i-- > 0;)
                if (list[i].severity == 4)
                    list.erase(list.begin() + long(i));
        insert(entry, firstCloses);
        show();
    }

    void close(unsigned int id, bool byUser)
    {
        if (list.empty())
            return;
        if (shown && list[0].id == id && !byUser && shownAtKnown) {
            if (!timerRuns) {
                timerRuns = true;
                ticks = 0;
                list[0].closing = 0;
                list[0].time = 2000;
            }
            return;
        }
        size_t at = list.size();
        while (at > 0 && list[at - 1].id != id)
            --at;
        if (at == 0)
            return;
        if (at == 1)
            timerRuns = false;
        list.erase(list.begin() + long(at - 1));
        show();
    }

    void tick()
    {
        if (++ticks <= 10)
            return;
        ticks = 0;
        timerRuns = false;
        if (!list.empty() && (list[0].time > 0 || list[0].closing == 6))
            list.erase(list.begin());
        show();
    }

    // 0 OK, 1 left, 2 right, 3 up, 4 down
    void key(int key)
    {
        if (list.empty()) {
            show();
            return;
        }
        const Entry first = list[0];
        const int c = first.closing;
        const bool closes = key == 0   ? c == 1 || c == 2 || c == 4 || c == 5
                            : key == 1 ? c >= 3 && c <= 5
                                       : c == 5;
        if (closes && (key > 1 || first.mayBeClosed()))
            close(first.id, true);
    }

    void show()
    {
        for (size_t i = list.size(); i-- > 0;)
            if (list[i].isStale())
                list.erase(list.begin() + long(i));
        if (list.empty()) {
            label = "-";
            shownAtKnown = false;
            return;
        }
        if (list[0].severity == 0 && pointing)
            return;
        const bool changed = label != list[0].text || !visible;
        label = list[0].text;
        if (list[0].time > 0 && list[0].closesByItself() && !timerRuns) {
            timerRuns = true;
            ticks = 0;
        }
        shownAtKnown = shownAtKnown || changed;
    }

private:
    void insert(const Entry& entry, bool firstCloses)
    {
        if (list.empty()) {
            list.push_back(entry);
            return;
        }
        for (size_t i = list.size(); i-- > 0;) {
            if (list[i].severity >= entry.severity) {
                list.insert(list.begin() + long(i) + 1, entry);
                return;
            }
            if (i == 0 || (i == 1 && firstCloses))
                list.insert(list.begin(), entry);
        }
    }
};

// The real one.
class Panel {
public:
    Panel() : fixture(*fuzz::startWindow()) {}

    ScreenPopup& screen() { return *fixture.screen; }
    bool visible() const { return fixture.window.isSetToVisibleScreen(fixture.screen); }
    bool shown() const
    {
        return fixture.window.isVisible() && fixture.window.getCurrentScreenId() == Screen::SCREEN_POPUP;
    }
    void key(int key)
    {
        static void (ScreenPopup::*const keys[])() = {
            &ScreenPopup::keyOkClicked, &ScreenPopup::keyLeftClicked, &ScreenPopup::keyRightClicked,
            &ScreenPopup::keyUpClicked, &ScreenPopup::keyDownClicked};
        (screen().*keys[key])();
    }
    void reset() { fuzz::resetPopups(fixture); }
    bool timerRuns() const { return fixture.autoClose()->isActive(); }
    std::string label() const { return fixture.text()->text().toStdString(); }

private:
    PopupFixture& fixture;
};

// A finding comes with the log of its input.
void check(bool holds, const char* text)
{
    if (holds)
        return;
    for (const syslogtap::Line& line : syslogtap::lines())
        fprintf(stderr, "%s\n", line.text.c_str());
    fuzz::fail(text);
}

void compare(Panel& panel, const Model& model)
{
    check((windowfixture::model()->getPointingMode() == POINTING_STATUS_POINTING) == model.pointing,
          "another state of the antenna");
    const QList<popup_event_t>& events = panel.screen().events();
    check(size_t(events.size()) == model.list.size(), "another length of the queue");
    int warnings = 0;
    for (int i = 0; i < events.size(); ++i) {
        const popup_event_t& event = events.at(i);
        const Entry& entry = model.list[size_t(i)];
        check(event.eventId == entry.id, "another event");
        check(event.severity == entry.severity, "another severity");
        check(event.closeHandling == entry.closing, "another way of closing");
        check((event.showForMilliseconds > 0) == (entry.time > 0), "another time");
        check(event.text.toStdString() == entry.text, "another text");
        warnings += entry.severity >= 1 && entry.severity <= 3;
        check(panel.screen().eventExistInPopupList(entry.id), "an event that is not there");
    }
    check(panel.screen().getNumberOfPopupWarningsErrorsFatals() == warnings, "another number of warnings");
    const bool saver = !model.list.empty() && model.list[0].severity == 4;
    check(panel.screen().getNumberOfPopupsToShow() == int(model.list.size()) - saver, "another number");
    check(panel.timerRuns() == model.timerRuns, "another state of the timer");
    check(panel.label() == model.label, "another text on display");
}

Entry entryOf(fuzz::Input& input)
{
    const int first = input.byte(), second = input.byte(), third = input.byte();
    Entry entry;
    entry.id = IDS[size_t(first) % ID_COUNT];
    entry.severity = first / 16 % 5;
    entry.closing = second % 8; // 7 is none
    // Times that fit, mostly.
    entry.time = (second & 0x80) != 0 ? TIMES[second / 16 % 4] : entry.closesByItself() ? 3000 : 0;
    entry.age = AGES[third % 4];
    entry.text = TEXTS[third / 4 % 4];
    return entry;
}

popup_event_t popupOf(const Entry& entry)
{
    popup_event_t popup;
    popup.eventId = entry.id;
    popup.severity = static_cast<EVENT_SEVERITY_ENUM>(entry.severity);
    popup.closeHandling = static_cast<POPUP_CLOSE_HANDLING_ENUM>(entry.closing);
    popup.showForMilliseconds = entry.time;
    popup.text = QString::fromStdString(entry.text);
    popup.timeStamp = QDateTime::currentDateTime().addMSecs(-entry.age);
    return popup;
}

// Ticks as the running timer gives them: one, or all that the popup has left.
void tick(Panel& panel, Model& model, int count)
{
    for (; count && model.timerRuns && panel.timerRuns(); --count) {
        panel.screen().handleAutoCloseTimeout();
        model.tick();
    }
}

void operate(Panel& panel, Model& model, fuzz::Input& input)
{
    const int operation = input.byte();
    const Entry entry = entryOf(input);
    switch (operation % 8) {
    case 0:
    case 1:
    case 2:
        panel.screen().addEvent(popupOf(entry));
        model.add(entry);
        break;
    case 3:
        panel.screen().closePopup(entry.id, operation & 8);
        model.close(entry.id, operation & 8);
        break;
    case 4:
        panel.key(operation / 8 % 5);
        model.key(operation / 8 % 5);
        break;
    case 5:
        tick(panel, model, operation & 8 ? 1 : 11);
        break;
    case 6:
        panel.screen().showNextEvent();
        model.show();
        break;
    case 7:
        if (model.list.empty()) {
            model.pointing = operation & 8;
            windowfixture::model()->setPointingMode(model.pointing ? POINTING_STATUS_POINTING
                                                                   : POINTING_STATUS_POINTED);
        }
        break;
    }
}

Panel* panel;

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    panel = new Panel;
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    fuzz::Input input(data, size);
    Model model;
    panel->reset();
    syslogtap_start();
    QElapsedTimer clock;
    clock.start();
    fuzz::survives(
        [&] {
            for (int count = 0; !input.empty() && count < MAX_OPERATIONS; ++count) {
                model.visible = panel->visible();
                model.shown = panel->shown();
                operate(*panel, model, input);
                if (clock.elapsed() > LIMIT_MS)
                    return;
                compare(*panel, model);
            }
        },
        {});
    return 0;
}
