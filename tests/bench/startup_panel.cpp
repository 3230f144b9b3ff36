// The display from exec to its first picture with all initial reads done; then it ends with status 0.
// The same steps as the program's main; what it logs goes nowhere, but one line tells that the reads are done.
#include "app/guiapp.h"
#include "app/window.h"
#include "runtime/appmgr.h"

#include <QCoreApplication>
#include <QEvent>
#include <QThread>

#include <cstdarg>
#include <cstring>
#include <unistd.h>

namespace {

const QEvent::Type readsDone = QEvent::User;

// Ends the process at the first picture after the reads, or at the end of the reads after the first picture.
class FirstPicture : public QObject {
public:
    bool eventFilter(QObject* receiver, QEvent* event) override
    {
        if (event->type() == QEvent::UpdateRequest && receiver->isWidgetType()) {
            receiver->removeEventFilter(this);
            receiver->event(event);
            m_painted = true;
            endWhenComplete();
            return true;
        }
        if (event->type() == readsDone) {
            m_read = true;
            endWhenComplete();
            return true;
        }
        return false;
    }

private:
    void endWhenComplete()
    {
        if (m_painted && m_read) {
            _exit(0);
        }
    }
    bool m_painted = false;
    bool m_read = false;
};

} // namespace

extern "C" void vsyslog(int, const char* format, va_list)
{
    if (std::strstr(format, "About to run fdloop_loop") != nullptr) {
        QCoreApplication::postEvent(qApp, new QEvent(readsDone));
    }
}

int main(int argc, char** argv)
{
    appmgr_signal();
    GuiApp* application = GuiApp::createInstance(argc, argv);
    FirstPicture end;
    application->installEventFilter(&end);
    Window window(nullptr);
    window.installEventFilter(&end);
    return application->exec();
}
