// What Qt itself costs: a program that shows one 256 by 64 window with ten labels, and ends at its first picture.
#include <QApplication>
#include <QEvent>
#include <QLabel>

#include <unistd.h>

namespace {

class FirstPicture : public QObject {
public:
    bool eventFilter(QObject* receiver, QEvent* event) override
    {
        if (event->type() == QEvent::UpdateRequest) {
            receiver->removeEventFilter(this);
            receiver->event(event);
            _exit(0);
        }
        return false;
    }
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
    QWidget window;
    window.setFixedSize(256, 64);
    for (int i = 0; i < 10; ++i) {
        QLabel* label = new QLabel(QString("Label %1").arg(i), &window);
        label->setGeometry(i % 5 * 51, i / 5 * 32, 51, 32);
    }
    window.installEventFilter(&end);
    window.show();
    return application.exec();
}
