// The display from exec to its first picture with all initial reads done; then it ends with status 0.
// The same steps as the program's main; what it logs goes nowhere, but one line tells that the reads are
// done.
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
const QEvent::Type painted = QEvent::Type(QEvent::User + 1);

// Ends the process once the reads are done and a picture stands: at the first turn of the event loop behind
// the first paint, when all widgets have painted.
class FirstPicture : public QObject {
public:
    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == QEvent::Paint && !m_asked) {
            m_asked = true;
            QCoreApplication::postEvent(qApp, new QEvent(painted));
        }
        m_painted = m_painted || event->type() == painted;
        m_read = m_read || event->type() == readsDone;
        if (m_painted && m_read) {
            _exit(0);
        }
        return false;
    }

private:
    bool m_asked = false;
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
    return application->exec();
}
