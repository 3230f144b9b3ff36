// What Qt itself costs: a program that shows one 256 by 64 window with ten labels, and ends at its first
// picture; or, with an argument, stays.
#include <QApplication>
#include <QEvent>
#include <QLabel>

#include <unistd.h>

namespace {

const QEvent::Type painted = QEvent::User;

// Ends the process at the first turn of the event loop behind the first paint, when all labels have painted.
class FirstPicture : public QObject {
public:
    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == QEvent::Paint && !m_asked) {
            m_asked = true;
            QCoreApplication::postEvent(qApp, new QEvent(painted));
        }
        if (event->type() == painted) {
            _exit(0);
        }
        return false;
    }

private:
    bool m_asked = false;
};

} // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    QFont font("helvetica");
    font.setPixelSize(14);
    font.setStyleStrategy(QFont::NoAntialias);
    QApplication::setFont(font);
    FirstPicture end;
    if (argc == 1)
        application.installEventFilter(&end);
    QWidget window;
    window.setFixedSize(256, 64);
    for (int i = 0; i < 10; ++i) {
        QLabel* label = new QLabel(QString("Label %1").arg(i), &window);
        label->setGeometry(i % 5 * 51, i / 5 * 32, 51, 32);
    }
    window.show();
    return application.exec();
}
