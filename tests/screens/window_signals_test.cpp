// The signals of the model that the main window follows: each reaches its slot, once, from either thread.
#include "screens/windowcase.h"

#include <thread>

using namespace windowfixture;

namespace {

// Each signal, how it is sent, and the line by which its slot shows that it ran.
const char MODEM[] = "Window::handleModemChanged(): wanActive = ";
const struct {
    const char* signal;
    void (*send)();
    const char* line;
} signalsOfTheModel[] = {
    {"guiAllowedToBeShown", [] { emit model()->guiAllowedToBeShown(); },
     "Window::show(): About to show black splash screen and then show the main window"},
    {"showPopup", [] { emit model()->showPopup(eventOf(EV_AP_TEMP_LOW)); },
     "Window::addEvent(EV_AP_TEMP_LOW, "},
    {"signalRemovePopup", [] { emit model()->signalRemovePopup(EV_AP_TEMP_LOW); },
     "Window::handleRemovePopup(): "},
    {"stateEventReceived", [] { emit model()->stateEventReceived(STATE_EVENT_POINTED); },
     "Window::handleStateEvent(STATE_EVENT stateEvent): stateEvent=5: "},
    {"signalPinAccepted", [] { emit model()->signalPinAccepted(); },
     "Window::handleSignalPinAccepted(): About to remove popup"},
    {"bganConnectionErrorChanged", [] { emit model()->bganConnectionErrorChanged(9); },
     "Window::handleBganConnectionErrorChanged(): value=9"},
    {"signalWanActiveChanged", [] { emit model()->signalWanActiveChanged(); }, MODEM},
    {"signalModemPresentChanged", [] { emit model()->signalModemPresentChanged(); }, MODEM},
    {"signalModemActivatedChanged", [] { emit model()->signalModemActivatedChanged(); }, MODEM},
    {"signalWanUserSelectionChanged", [] { emit model()->signalWanUserSelectionChanged(); }, MODEM},
    {"signalModemOrBganAtStartupChanged", [] { emit model()->signalModemOrBganAtStartupChanged(); }, MODEM},
    {"signalExtendedSystemStatusChanged", [] { emit model()->signalExtendedSystemStatusChanged(); },
     "Window::handleSignalExtendedSystemStatusChanged(): getExtendedSystemStatus()="},
    {"signalTakeScreenshot", [] { emit model()->signalTakeScreenshot(); }, "Is about to create screenshot"},
    {"requestLoadLanguage", [] { emit model()->requestLoadLanguage(LANG_GERMAN); },
     "Window::handleRequestLoadLanguage(): Start of function."},
    {"signalSwUploadActiveChanged", [] { emit model()->signalSwUploadActiveChanged(0); },
     "Window::handleSignalSwUploadActiveChanged(): swUploadActive=0"},
    {"cipheringChanged", [] { emit model()->cipheringChanged(1); },
     "Window::handleCipheringChanged(int value): Start of function. value=1"},
};

} // namespace

class WindowSignalsTest : public QObject, protected WindowCase {
    Q_OBJECT

private slots:
    void init() { startTest(); }
    void cleanup() { endTest(); }

    void signalOfTheModelReachesItsSlot_data();
    void signalOfTheModelReachesItsSlot();
};

void WindowSignalsTest::signalOfTheModelReachesItsSlot_data()
{
    QTest::addColumn<int>("row");
    int row = 0;
    for (const auto& signal : signalsOfTheModel) {
        QTest::newRow(signal.signal) << row++;
    }
}

// At once from this thread, and once; from the bus thread only when the events of this one are dealt with.
void WindowSignalsTest::signalOfTheModelReachesItsSlot()
{
    QFETCH(int, row);
    const auto& signal = signalsOfTheModel[row];
    makeWindow();
    {
        Messages messages;
        signal.send();
        QCOMPARE(messages.countOfPrefix(signal.line), 1);
    }
    m_window->hide();
    Messages messages;
    std::thread(signal.send).join();
    QCOMPARE(messages.countOfPrefix(signal.line), 0);
    QCoreApplication::sendPostedEvents();
    QCOMPARE(messages.countOfPrefix(signal.line), 1);
}

int main(int argc, char** argv)
{
    return windowfixture::run<WindowSignalsTest>(argc, argv);
}

#include "window_signals_test.moc"
