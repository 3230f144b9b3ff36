// What the tests of the main window share: a window of the test's own with a directory of its own, a look
// at its history and at its queue of popups, and walks through its screens written as text.
#ifndef TESTS_SCREENS_WINDOWCASE_H
#define TESTS_SCREENS_WINDOWCASE_H

#include "screens/windowfixture.h"

#include "screens/screenpopup.h"

#include "support/patience.h"

#include <QList>
#include <QScopedPointer>
#include <QStringList>

#include <map>
#include <string>

// The screen saver as the log names it: it is an event without a text.
const char SCREEN_SAVER[] = "No debug text for eventId=0x10109";

// A test object inherits it beside QObject and calls startTest in init and endTest in cleanup.
class WindowCase {
protected:
    // Values of the extended system status, by what they do to a new window.
    enum {
        INITIALIZING = 0, // a popup tells of it, and the display stays dark
        SAFE_MODE = 8,    // no popup, and the display stays dark
        NORMAL = 10       // no popup, and the display is on
    };

    void startTest()
    {
        m_directory.reset(new QTemporaryDir);
        m_files = m_directory->path().toUtf8();
        m_contrast = m_directory->filePath("contrast").toUtf8();
        QFile(m_contrast).open(QIODevice::WriteOnly);
        paths::overrideForTest(nullptr, m_files.constData(), m_contrast.constData());
        windowfixture::resetModel();
        windowfixture::model()->stopIgnoreGlobalKeyPress();
        syslogtap_clear();
    }
    void endTest()
    {
        m_window.reset();
        paths::overrideForTest(nullptr, nullptr, nullptr);
    }

    Window* makeWindow(int extendedSystemStatus = SAFE_MODE)
    {
        m_window.reset();
        windowfixture::model()->setExtendedSystemStatus(extendedSystemStatus);
        m_window.reset(new Window);
        // The language that the window has loaded is told to the screens later.
        QCoreApplication::sendPostedEvents();
        return m_window.data();
    }
    // Shown, active, and so with a focus widget.
    Window* makeVisibleWindow()
    {
        Window* const window = makeWindow(NORMAL);
        window->activateWindow();
        if (!QTest::qWaitForWindowActive(window, PATIENCE_MS)) {
            qFatal("the window did not become active");
        }
        return window;
    }
    // From here on translations come from the test's own directory. The icons must be loaded by then.
    void useOwnTranslations()
    {
        paths::overrideForTest(m_files.constData(), m_files.constData(), m_contrast.constData());
    }

    // Forgets what the terminal was sent so far.
    static void forgetBus()
    {
        windowfixture::terminal().settle();
        windowfixture::terminal().clearLogs();
    }
    // The pointing commands sent since then, as "start stop"; waits for as many as there should be.
    static QString pointingCommands(size_t expected)
    {
        windowfixture::terminal().settle();
        if (expected > 0) {
            windowfixture::terminal().waitForMessage("bp_ctrl.pointing", sim::Terminal::DefaultTimeout,
                                                     expected);
        }
        QStringList commands;
        for (const auto& message : windowfixture::terminal().messagesNamed("bp_ctrl.pointing")) {
            commands.append(QString::fromStdString(message.text()));
        }
        return commands.join(" ");
    }

    // The bundles of the terminal, by number and name; waits until the model has them.
    static bool setBundles(const std::map<int, std::string>& bundles)
    {
        windowfixture::terminal().erasePrefix("cfg.admin.bundle.");
        for (const auto& bundle : bundles) {
            windowfixture::terminal().set("cfg.admin.bundle." + std::to_string(bundle.first) + ".name",
                                          bundle.second);
        }
        return QTest::qWaitFor(
            [&] { return windowfixture::model()->getNumberOfDefinedBundles() == int(bundles.size()); },
            PATIENCE_MS);
    }

    Screen* screen(Screen::SCREEN_ID_ENUM id) const { return m_window->getScreenById(id); }
    ScreenPopup* popupScreen() const { return static_cast<ScreenPopup*>(screen(Screen::SCREEN_POPUP)); }
    const QList<popup_event_t>& queue() const { return popupScreen()->events(); }

    // The queue by the names of its events, the popup on display first.
    QStringList queued() const
    {
        QStringList names;
        for (const popup_event_t& popup : queue()) {
            names.append(popupScreen()->getEventIdAsString(popup.eventId));
        }
        return names;
    }
    // What a popup was put up with, beside its text and time: severity, close handling, milliseconds, the
    // functions of OK and Cancel, as "EVENT_INFO 1 0 - -". Empty if there is none of this id.
    QString argumentsOf(unsigned int eventId) const
    {
        for (const popup_event_t& popup : queue()) {
            if (popup.eventId == eventId) {
                return QString("%1 %2 %3 %4 %5")
                    .arg(windowfixture::model()->getEventSeverityAsString(popup.severity))
                    .arg(popup.closeHandling)
                    .arg(popup.showForMilliseconds)
                    .arg(popup.okFunction ? popup.okFunction : "-",
                         popup.cancelFunction ? popup.cancelFunction : "-");
            }
        }
        return QString();
    }
    void add(unsigned int eventId, EVENT_SEVERITY_ENUM severity = EVENT_WARNING)
    {
        m_window->addEvent(eventId, severity, POPUP_CLOSE_OK, 0, nullptr, nullptr, QString(), -1);
    }
    void empty()
    {
        while (!queue().isEmpty()) {
            popupScreen()->closePopup(queue().first().eventId, true);
        }
    }

    // The screens that wait in the history, the oldest first, as "MENU BATTERY".
    QString history() const
    {
        QStringList names;
        for (Screen::SCREEN_ID_ENUM id : m_window->screenHistory()) {
            names.append(m_window->getScreenNameById(id).remove("SCREEN_"));
        }
        return names.join(" ");
    }

    QScopedPointer<Window> m_window;
    QScopedPointer<QTemporaryDir> m_directory;

private:
    QByteArray m_files;
    QByteArray m_contrast;
};

// Popups that the window was asked to add and to remove, in order: "+NAME" and "-NAME". A removal counts
// whether the popup was there or not.
inline QStringList changesIn(const Messages& messages)
{
    const struct {
        const char* sign;
        const char* start;
        const char* end;
    } lines[] = {{"+", "Window::addEvent(", ", eventId="}, {"-", "Window::removePopupIfExist(", "): Event "}};
    QStringList result;
    for (const QString& text : messages.texts()) {
        for (const auto& line : lines) {
            if (text.startsWith(line.start) && text.contains(line.end)) {
                const int start = int(strlen(line.start));
                result.append(line.sign + text.mid(start, text.indexOf(line.end) - start));
            }
        }
    }
    return result;
}

// An event as the terminal's log holds it.
inline fmmi_evt_t eventOf(unsigned int id, int severity = EVENT_ERROR)
{
    fmmi_evt_t event;
    event.identifier = id;
    event.severity = severity;
    strcpy(event.shorttext, "the log's own words");
    return event;
}

#endif
