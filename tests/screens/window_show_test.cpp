// How the display comes on: the window's one show with its black splash, the backlight after it, what
// leads there, and the window's state as the model knows it.
#include "screens/windowcase.h"

#include <QImage>
#include <QSplashScreen>

using namespace windowfixture;

namespace {

// Notes which top-level widgets are shown, with what colours, and whether the backlight is allowed by then.
class ShowOrder : public QObject {
public:
    ShowOrder() { qApp->installEventFilter(this); }
    ~ShowOrder() override { qApp->removeEventFilter(this); }

    bool eventFilter(QObject* receiver, QEvent* event) override
    {
        if (event->type() == QEvent::Show && receiver->isWidgetType()) {
            const QWidget* const widget = static_cast<QWidget*>(receiver);
            if (widget->isWindow()) {
                shown.append(QString("%1 %2x%3, %4")
                                 .arg(qobject_cast<QSplashScreen*>(receiver) ? "splash" : "window")
                                 .arg(widget->width())
                                 .arg(widget->height())
                                 .arg(model()->getBrightnessAllowed() ? "lit" : "dark"));
                if (const QSplashScreen* const splash = qobject_cast<QSplashScreen*>(receiver)) {
                    splashPicture = splash->pixmap().toImage();
                }
            }
        }
        return false;
    }

    QStringList shown;
    QImage splashPicture;
};

} // namespace

class WindowShowTest : public QObject, protected WindowCase {
    Q_OBJECT

private slots:
    void init() { startTest(); }
    void cleanup() { endTest(); }

    void isNotRunByTheConstructorBeforeTheTerminalIsUp();
    void bringsTheWindowAndThenTheBacklight();
    void blackSplashComesBeforeTheWindow();
    void twiceIsAnErrorAndHarmless();
    void startOfAnUploadShowsTheWindow();
    void popupOfTheStartStandsWhenTheWindowComes();
    void windowNeverHidesAgain();
    void modelKnowsTheWindowsState();
};

void WindowShowTest::isNotRunByTheConstructorBeforeTheTerminalIsUp()
{
    makeWindow(INITIALIZING);
    QVERIFY(!m_window->isVisible());
    QCOMPARE(QFile(m_directory->filePath("contrast")).size(), qint64(0)); // the driver is left alone
    QVERIFY(!model()->getBrightnessAllowed());
}

void WindowShowTest::bringsTheWindowAndThenTheBacklight()
{
    makeWindow();
    Messages messages;
    m_window->show();
    QVERIFY(m_window->isVisible());
    QVERIFY(model()->getBrightnessAllowed());
    QVERIFY(QFile(m_directory->filePath("contrast")).size() > 0);
    QCOMPARE(messages.count("Window::show(): About to show black splash screen and then show the main "
                            "window"),
             1);
    int visibleWindows = 0;
    for (QWidget* widget : QApplication::topLevelWidgets()) {
        visibleWindows += widget->isVisible() ? 1 : 0;
    }
    QCOMPARE(visibleWindows, 1); // the splash is gone
}

void WindowShowTest::blackSplashComesBeforeTheWindow()
{
    makeWindow();
    ShowOrder order;
    m_window->show();
    QCOMPARE(order.shown, QStringList({"splash 256x64, dark", "window 256x64, dark"}));
    QVERIFY(model()->getBrightnessAllowed());
    QImage black(256, 64, order.splashPicture.format());
    black.fill(Qt::black);
    QCOMPARE(order.splashPicture, black);
}

void WindowShowTest::twiceIsAnErrorAndHarmless()
{
    makeWindow();
    m_window->show();
    model()->setBrightnessAllowed(false);
    Messages messages;
    m_window->show();
    QCOMPARE(messages.texts().filter("Window::show()"),
             QStringList("Window::show(): ERROR!!! Window is already visible. This function is not supposed "
                         "to be run twice!"));
    QVERIFY(m_window->isVisible());
    QVERIFY(!model()->getBrightnessAllowed()); // nothing else is done
}

void WindowShowTest::startOfAnUploadShowsTheWindow()
{
    makeWindow(INITIALIZING);
    QVERIFY(!m_window->isVisible());
    model()->setSwUploadStatus(1, 0, 512);
    QVERIFY(m_window->isVisible());
    QCOMPARE(queued(), QStringList("EV_SW_UPDATE_ON"));
}

void WindowShowTest::popupOfTheStartStandsWhenTheWindowComes()
{
    makeWindow(INITIALIZING);
    QCOMPARE(queued(), QStringList("EV_AP_GUI_STATUS_SYSTEM_INITIALIZING"));
    QCOMPARE(m_window->getCurrentScreenId(), Screen::SCREEN_POPUP);
    QVERIFY(!popupScreen()->isVisible());
    m_window->show();
    QVERIFY(popupScreen()->isVisible());
    QVERIFY(!screen(Screen::SCREEN_STATUS)->isVisible());
}

void WindowShowTest::windowNeverHidesAgain()
{
    makeWindow(NORMAL);
    for (int status : {0, 1, 2, 3, 4, 5, 8, 9, 10}) {
        model()->setExtendedSystemStatus(status);
        QVERIFY2(m_window->isVisible(), QByteArray::number(status).constData());
    }
}

void WindowShowTest::modelKnowsTheWindowsState()
{
    QCOMPARE(model()->getMainWindowState(), MAIN_WINDOW_NONE);
    makeWindow();
    QCOMPARE(model()->getMainWindowState(), MAIN_WINDOW_HIDDEN);
    m_window->show();
    QCOMPARE(model()->getMainWindowState(), MAIN_WINDOW_VISIBLE);
    m_window->hide();
    QCOMPARE(model()->getMainWindowState(), MAIN_WINDOW_HIDDEN);
    m_window.reset();
    QCOMPARE(model()->getMainWindowState(), MAIN_WINDOW_NONE);
}

int main(int argc, char** argv)
{
    return windowfixture::run<WindowShowTest>(argc, argv);
}

#include "window_show_test.moc"
