// Walks through the screens of a window, written as text: one word a step, and what stands afterwards.
#ifndef TESTS_SCREENS_WINDOWWALK_H
#define TESTS_SCREENS_WINDOWWALK_H

#include "screens/windowcase.h"

#include <vector>

struct WalkStep {
    const char* words; // one or several steps
    const char* state; // afterwards
};

struct Walk {
    const char* name;
    std::vector<WalkStep> steps;
};

class WindowWalk : protected WindowCase {
protected:
    static const char* legend()
    {
        return "Steps: NAME is showScreen(SCREEN_NAME, false), NAME+ the same with true, OTHER an id that is "
               "no "
               "screen, back is showPreviousScreen(), -NAME is hideAndRemoveScreenFromHistory(); I W E F: a "
               "popup comes that informs, warns, tells an error, is fatal; saver: the screen saver comes; "
               "ok: "
               "the user closes the popup on display; gone: the program removes it; point, pointed, "
               "unpointed: the terminal's pointing mode changes. State: the current screen and the history, "
               "oldest first, then behind a bar the queue of popups by their letters, S for the saver.";
    }

    // Empty if the window goes through all steps as written, else what went otherwise.
    QString walk(const Walk& walk)
    {
        for (const WalkStep& step : walk.steps) {
            go(step.words);
            if (state() != step.state) {
                return QString("after \"%1\": \"%2\" instead of \"%3\". %4")
                    .arg(step.words, state(), step.state, legend());
            }
            if (const QString fault = visibleScreens(); !fault.isEmpty()) {
                return QString("after \"%1\": %2").arg(step.words, fault);
            }
        }
        return QString();
    }

    // Takes the steps, whatever comes of them.
    void go(const QString& steps)
    {
        for (const QString& word : steps.split(' ')) {
            if (!take(word)) {
                qFatal("there is no step %s", qPrintable(word));
            }
        }
    }

    QString state() const
    {
        QString text = nameOf(m_window->getCurrentScreenId());
        if (!history().isEmpty()) {
            text += " " + history();
        }
        if (!queue().isEmpty()) {
            text += " |";
        }
        for (const popup_event_t& popup : queue()) {
            text += QString(" ") + LETTERS[popup.severity];
        }
        return text;
    }

private:
    static constexpr const char* LETTERS = "IWEFS";

    QString nameOf(Screen::SCREEN_ID_ENUM id) const { return m_window->getScreenNameById(id).mid(7); }

    // Just the current one is set to be visible.
    QString visibleScreens() const
    {
        QStringList others;
        for (int id = 3; id <= 12; ++id) {
            const Screen::SCREEN_ID_ENUM screenId = static_cast<Screen::SCREEN_ID_ENUM>(id);
            if (nameOf(screenId) == "UNDEFINED") {
                continue;
            }
            const bool current = m_window->getCurrentScreenId() == screenId;
            if (screen(screenId)->isHidden() == current) {
                others.append(nameOf(screenId) + (current ? " is hidden" : " is visible"));
            }
        }
        return others.join(", ");
    }

    bool take(const QString& word)
    {
        using windowfixture::model;
        if (word.size() == 1 && QString(LETTERS).contains(word)) {
            const int severity = int(QString(LETTERS).indexOf(word));
            // One event for each severity, so that it can come again.
            add(EV_AP_GUI_CONN_LIMIT_EXCEEDED + static_cast<unsigned int>(severity),
                static_cast<EVENT_SEVERITY_ENUM>(severity));
        } else if (word == "saver") {
            popupScreen()->showScreenSaver();
        } else if (word == "ok") {
            popupScreen()->closePopup(queue().first().eventId, true);
        } else if (word == "gone") {
            m_window->removePopupIfExist(queue().first().eventId);
        } else if (word == "point") {
            model()->setPointingMode(POINTING_STATUS_POINTING);
        } else if (word == "pointed") {
            model()->setPointingMode(POINTING_STATUS_POINTED);
        } else if (word == "unpointed") {
            model()->setPointingMode(POINTING_STATUS_NOT_POINTED);
        } else if (word == "back") {
            m_window->showPreviousScreen();
        } else {
            return takeScreen(word);
        }
        return true;
    }

    bool takeScreen(const QString& word)
    {
        QString name = word;
        const bool remove = name.startsWith('-');
        const bool addToHistory = name.endsWith('+');
        name.remove('-').remove('+');
        for (int id = 0; id <= 12; ++id) {
            const Screen::SCREEN_ID_ENUM screenId = static_cast<Screen::SCREEN_ID_ENUM>(id);
            if (name == (id == OTHER ? QString("OTHER") : nameOf(screenId))) {
                if (remove) {
                    m_window->hideAndRemoveScreenFromHistory(screenId);
                } else {
                    m_window->showScreen(screenId, addToHistory);
                }
                return true;
            }
        }
        return false;
    }

    enum { OTHER = 5 }; // within the range of the enumeration, but no screen
};

#endif
