// The base of the pages: names, look, the way of a key to its handler, neighbours, the picture over the
// whole screen, and screenshots.
#include "screens/pictures.h"
#include "screens/windowfixture.h"

#include "support/death.h"
#include "support/failingnew.h"
#include "support/patience.h"

#include <QDateTime>
#include <QDir>
#include <QElapsedTimer>
#include <QKeyEvent>
#include <QLabel>
#include <QScopedPointer>
#include <QVBoxLayout>

using namespace windowfixture;

namespace {

// Notes which handlers run.
class KeyScreen : public Screen {
public:
    explicit KeyScreen(QWidget* parent = nullptr) : Screen(nullptr, SCREEN_MENU, parent) {}
    void keyLeftClicked() override { calls.append("left"); }
    void keyRightClicked() override { calls.append("right"); }
    void keyUpClicked() override { calls.append("up"); }
    void keyDownClicked() override { calls.append("down"); }
    void keyOkClicked() override { calls.append("ok"); }
    void keyLongOkPressed() override { calls.append("long ok"); }
    void retranslate() override { calls.append("retranslate"); }
    using QWidget::changeEvent;
    QStringList calls;
};

class PlainScreen : public Screen {
public:
    explicit PlainScreen(SCREEN_ID_ENUM id, Window* window = nullptr) : Screen(window, id, nullptr) {}
};

// The parent to which an ignored key goes on.
class KeyTaker : public QWidget {
public:
    QList<int> keys;

protected:
    void keyPressEvent(QKeyEvent* event) override { keys.append(event->key()); }
};

// Sends a key press and tells whether it was accepted.
bool press(QWidget* widget, int key, bool autoRepeat = false)
{
    QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier, QString(), autoRepeat);
    event.ignore();
    QCoreApplication::sendEvent(widget, &event);
    return event.isAccepted();
}

QStringList screenshotsIn(const QString& path)
{
    return QDir(path).entryList({"screen*"}, QDir::Files);
}

// A screenshot directory of the test's own.
class Screenshots {
public:
    explicit Screenshots(const QString& path) : m_path(path.toLocal8Bit())
    {
        paths::overrideForTest(nullptr, m_path.constData(), nullptr);
    }
    ~Screenshots() { paths::overrideForTest(nullptr, nullptr, nullptr); }

private:
    const QByteArray m_path;
};

} // namespace

class ScreenTest : public QObject {
    Q_OBJECT

private slots:
    void init() { model()->setExtendedSystemStatus(10); } // no popup of a start is in the way
    void cleanup() { model()->stopIgnoreGlobalKeyPress(); }

    void idAndName_data();
    void idAndName();
    void constructorIsLogged();
    void whiteOnBlackPanel();
    void keyReachesItsHandler_data();
    void keyReachesItsHandler();
    void keyIsLoggedWithTheScreen();
    void otherKeyGoesToTheParent();
    void releaseDoesNothing();
    void autoRepeatCountsAsPress();
    void ignoredTimeIgnoresEveryKey();
    void ignoredTimeEnds();
    void keyWithoutNeighbourIsLogged_data();
    void keyWithoutNeighbourIsLogged();
    void longOkChangesNothingOnTheStatusScreen();
    void neighbourIsShownWithoutHistory_data();
    void neighbourIsShownWithoutHistory();
    void languageChangeRetranslates();
    void fontChangeIsLogged();
    void pictureOverTheWholeScreen();
    void pictureThatDoesNotLoadLeavesAnEmptyLabel();
    void pictureWithoutMemoryEndsTheProcess();
    void screenshotIsThePicture();
    void screenshotByF12();
    void screenshotsOfOneSecondOverwrite();
    void screenshotWithoutDirectory();
    void screenshotThatCannotBeOpened();
};

void ScreenTest::idAndName_data()
{
    QTest::addColumn<int>("id");
    QTest::addColumn<QString>("name");
    QTest::newRow("0") << 0 << "SCREEN_UNDEFINED";
    for (int unused : {1, 2, 4, 5, 13}) {
        QTest::newRow(QByteArray::number(unused)) << unused << "UNDEFINED";
    }
    QTest::newRow("3") << 3 << "SCREEN_ENTER_PIN";
    QTest::newRow("6") << 6 << "SCREEN_POINTING";
    QTest::newRow("7") << 7 << "SCREEN_STATUS";
    QTest::newRow("8") << 8 << "SCREEN_BATTERY";
    QTest::newRow("9") << 9 << "SCREEN_ANTENNA";
    QTest::newRow("10") << 10 << "SCREEN_ACTION";
    QTest::newRow("11") << 11 << "SCREEN_POPUP";
    QTest::newRow("12") << 12 << "SCREEN_MENU";
}

void ScreenTest::idAndName()
{
    QFETCH(int, id);
    const PlainScreen screen(static_cast<Screen::SCREEN_ID_ENUM>(id));
    QCOMPARE(int(screen.getId()), id);
    QTEST(screen.getScreenName(), "name");
}

void ScreenTest::constructorIsLogged()
{
    Messages messages;
    const PlainScreen screen(Screen::SCREEN_ANTENNA);
    QCOMPARE(messages.count("Screen::Screen(): Start of constructor. screenId=9 (SCREEN_ANTENNA)"), 1);
}

void ScreenTest::whiteOnBlackPanel()
{
    PlainScreen screen(Screen::SCREEN_MENU);
    QCOMPARE(screen.geometry(), QRect(QPoint(0, 0), QPoint(255, 63)));
    QCOMPARE(screen.minimumSize(), QSize(256, 64));
    QCOMPARE(screen.maximumSize(), QSize(256, 64));
    for (QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
        QCOMPARE(screen.palette().color(group, QPalette::Window), QColor(Qt::black));
        QCOMPARE(screen.palette().color(group, QPalette::WindowText), QColor(Qt::white));
    }
    QVERIFY(screen.autoFillBackground());
    const QImage picture = screen.grab().toImage();
    QCOMPARE(picture.pixel(0, 0), qRgb(0, 0, 0));
    QCOMPARE(picture.pixel(255, 63), qRgb(0, 0, 0));
}

void ScreenTest::keyReachesItsHandler_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<QString>("handler");
    QTest::newRow("left") << 0x1000012 << "left";
    QTest::newRow("right") << 0x1000014 << "right";
    QTest::newRow("up") << 0x1000013 << "up";
    QTest::newRow("down") << 0x1000015 << "down";
    QTest::newRow("OK") << 0x1000004 << "ok";
    QTest::newRow("long OK") << 0x20 << "long ok";
}

void ScreenTest::keyReachesItsHandler()
{
    QFETCH(int, key);
    QFETCH(QString, handler);
    KeyScreen screen;
    QVERIFY(press(&screen, key));
    QCOMPARE(screen.calls, QStringList(handler));
}

void ScreenTest::keyIsLoggedWithTheScreen()
{
    KeyScreen screen;
    Messages messages;
    press(&screen, Qt::Key_Left);
    const QString pointer = QString::number(reinterpret_cast<quintptr>(static_cast<Screen*>(&screen)), 16);
    QCOMPARE(messages.count("Current screen=SCREEN_MENU(this=0x" + pointer + ") now received the keypress"),
             1);
}

void ScreenTest::otherKeyGoesToTheParent()
{
    KeyTaker parent;
    KeyScreen* const screen = new KeyScreen(&parent);
    Messages messages;
    press(screen, Qt::Key_Enter);
    QCOMPARE(messages.count("Screen::keyPressEvent: Ingoring keyPress."), 1);
    QVERIFY(screen->calls.isEmpty());
    QCOMPARE(parent.keys, QList<int>() << Qt::Key_Enter);
    press(screen, Qt::Key_Left); // an accepted one stays
    QCOMPARE(parent.keys.size(), 1);
    KeyScreen alone;
    QVERIFY(!press(&alone, Qt::Key_Enter));
}

void ScreenTest::releaseDoesNothing()
{
    KeyScreen screen;
    QKeyEvent event(QEvent::KeyRelease, Qt::Key_Left, Qt::NoModifier);
    QCoreApplication::sendEvent(&screen, &event);
    QVERIFY(screen.calls.isEmpty());
}

void ScreenTest::autoRepeatCountsAsPress()
{
    KeyScreen screen;
    press(&screen, Qt::Key_Down);
    press(&screen, Qt::Key_Down, true);
    QCOMPARE(screen.calls, QStringList({"down", "down"}));
}

void ScreenTest::ignoredTimeIgnoresEveryKey()
{
    QTemporaryDir directory;
    Screenshots screenshots(directory.path());
    KeyScreen screen;
    model()->startIgnoreGlobalKeyPress();
    Messages messages;
    for (int key : {Qt::Key_Left, Qt::Key_Right, Qt::Key_Up, Qt::Key_Down, Qt::Key_Return, Qt::Key_Space,
                    Qt::Key_F12, Qt::Key_A}) {
        QVERIFY(!press(&screen, key));
    }
    QVERIFY(screen.calls.isEmpty());
    QVERIFY(screenshotsIn(directory.path()).isEmpty());
    QCOMPARE(messages.count("StatusUpdater::getIgnoreGlobalKeyPress(): Ignoring keypress."), 8);
    QCOMPARE(messages.count("Screen::keyPressEvent: Ingoring keyPress."), 0);
}

void ScreenTest::ignoredTimeEnds()
{
    KeyScreen screen;
    QElapsedTimer timer;
    timer.start();
    model()->startIgnoreGlobalKeyPress();
    QTRY_VERIFY_WITH_TIMEOUT(!model()->getIgnoreGlobalKeyPress(), PATIENCE_MS);
    QVERIFY(timer.elapsed() >= 650); // 700 ms, less the play of a coarse timer
    QVERIFY(press(&screen, Qt::Key_Left));
    QCOMPARE(screen.calls, QStringList("left"));
}

void ScreenTest::keyWithoutNeighbourIsLogged_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<QString>("name");
    QTest::newRow("up") << int(Qt::Key_Up) << "UP";
    QTest::newRow("down") << int(Qt::Key_Down) << "DOWN";
    QTest::newRow("left") << int(Qt::Key_Left) << "LEFT";
    QTest::newRow("right") << int(Qt::Key_Right) << "RIGHT";
    QTest::newRow("OK") << int(Qt::Key_Return) << "OK";
    QTest::newRow("long OK") << int(Qt::Key_Space) << "LONG OK";
}

void ScreenTest::keyWithoutNeighbourIsLogged()
{
    QFETCH(int, key);
    QFETCH(QString, name);
    PlainScreen screen(Screen::SCREEN_MENU);
    Messages messages;
    QVERIFY(press(&screen, key));
    QCOMPARE(messages.count("Button " + name + " not defined on this screen."), 1);
}

void ScreenTest::longOkChangesNothingOnTheStatusScreen()
{
    Window window;
    const QImage before = window.grab().toImage();
    Messages messages;
    QTest::keyClick(window.getScreenById(Screen::SCREEN_STATUS), Qt::Key_Space);
    QCOMPARE(messages.count("Button LONG OK not defined on this screen."), 1);
    QCOMPARE(window.getCurrentScreenId(), Screen::SCREEN_STATUS);
    QCOMPARE(window.grab().toImage(), before);
}

void ScreenTest::neighbourIsShownWithoutHistory_data()
{
    keyWithoutNeighbourIsLogged_data();
}

void ScreenTest::neighbourIsShownWithoutHistory()
{
    QFETCH(int, key);
    const struct {
        int key;
        void (Screen::*set)(Screen::SCREEN_ID_ENUM);
    } setters[] = {{Qt::Key_Up, &Screen::setUpScreen},     {Qt::Key_Down, &Screen::setDownScreen},
                   {Qt::Key_Left, &Screen::setLeftScreen}, {Qt::Key_Right, &Screen::setRightScreen},
                   {Qt::Key_Return, &Screen::setOkScreen}, {Qt::Key_Space, &Screen::setLongOkScreen}};
    Window window;
    PlainScreen page(Screen::SCREEN_UNDEFINED, &window);
    for (const auto& setter : setters) {
        (page.*setter.set)(setter.key == key ? Screen::SCREEN_BATTERY : Screen::SCREEN_UNDEFINED);
    }
    window.showScreen(Screen::SCREEN_ANTENNA, false);
    QTest::keyClick(&page, static_cast<Qt::Key>(key));
    QCOMPARE(window.getCurrentScreenId(), Screen::SCREEN_BATTERY);
    window.showPreviousScreen(); // nothing to return to
    QCOMPARE(window.getCurrentScreenId(), Screen::SCREEN_STATUS);
}

void ScreenTest::languageChangeRetranslates()
{
    KeyScreen screen;
    Messages messages;
    QEvent event(QEvent::LanguageChange);
    QCoreApplication::sendEvent(&screen, &event);
    QCOMPARE(screen.calls, QStringList("retranslate"));
    QCOMPARE(messages.count("Screen::changeEvent(): LanguageChange. Shall run retranslate."), 1);
    PlainScreen plain(Screen::SCREEN_MENU); // the base has nothing to translate
    QCoreApplication::sendEvent(&plain, &event);
}

void ScreenTest::fontChangeIsLogged()
{
    KeyScreen screen;
    Messages messages;
    screen.setFont(*GuiApp::getFont(18, LANG_ENGLISH));
    QCOMPARE(messages.count("Screen::changeEvent(QEvent *pEvent): QEvent::FontChange. Nothing to do here."),
             1);
    QVERIFY(screen.calls.isEmpty());
}

void ScreenTest::pictureOverTheWholeScreen()
{
    Pictures pictures;
    pictures.add("one", 256, 64, Qt::green);
    pictures.add("two", 256, 64, Qt::red);
    PlainScreen screen(Screen::SCREEN_MENU);
    QVERIFY(!screen.layout());
    screen.setPixmap(pictures.path("one"));
    QVERIFY(qobject_cast<QVBoxLayout*>(screen.layout()));
    QCOMPARE(screen.layout()->contentsMargins(), QMargins());
    QCOMPARE(screen.layout()->spacing(), 0);
    QImage picture = screen.grab().toImage();
    QCOMPARE(picture.pixelColor(0, 0), QColor(Qt::green));
    QCOMPARE(picture.pixelColor(255, 63), QColor(Qt::green));
    screen.layout()->setSpacing(7);
    screen.setPixmap(pictures.path("two"));
    QCOMPARE(screen.layout()->spacing(), 0); // each time
    QCOMPARE(screen.findChildren<QLabel*>().size(), 1);
    QCOMPARE(screen.grab().toImage().pixelColor(255, 63), QColor(Qt::red));
}

void ScreenTest::pictureThatDoesNotLoadLeavesAnEmptyLabel()
{
    Pictures pictures;
    PlainScreen screen(Screen::SCREEN_MENU);
    screen.setPixmap(pictures.path("missing"));
    QLabel* const label = screen.findChild<QLabel*>("pPixmapLabel");
    QVERIFY(label);
    QVERIFY(pictureOf(*label).isNull());
}

void ScreenTest::pictureWithoutMemoryEndsTheProcess()
{
    for (int granted : {0, 1}) { // the layout, the label
        PlainScreen screen(Screen::SCREEN_MENU);
        const Death death = deathOf([&screen, granted] {
            grantedAllocations = granted;
            screen.setPixmap("any");
        });
        QVERIFY(death.status != 111);
        QVERIFY2(death.output.find("<1> gui: *** ASSERT in screen at ") != std::string::npos,
                 death.output.c_str());
    }
}

void ScreenTest::screenshotIsThePicture()
{
    QTemporaryDir directory;
    Screenshots screenshots(directory.path());
    Window window;
    Screen* const screen = window.getScreenById(Screen::SCREEN_STATUS);
    Messages messages;
    const QDateTime before = QDateTime::currentDateTime();
    screen->createScreenshot();
    const QDateTime after = QDateTime::currentDateTime();
    const QStringList files = screenshotsIn(directory.path());
    QCOMPARE(files.size(), 1);
    const QDateTime time = QDateTime::fromString(files.first(), "'screen_'yyyyMMdd_hhmmss'.bmp'");
    QVERIFY(time.isValid());
    QVERIFY(time.addSecs(1) > before && time <= after);
    const QString fileName = directory.path() + "/" + files.first();
    const QImage picture(fileName, "BMP");
    QCOMPARE(picture.size(), QSize(256, 64));
    QCOMPARE(picture.convertToFormat(QImage::Format_RGB32),
             screen->grab().toImage().convertToFormat(QImage::Format_RGB32));
    QCOMPARE(messages.count("Is about to create screenshot"), 1);
    QCOMPARE(messages.count("Default path=."), 1);
    QCOMPARE(messages.count("File " + fileName + " saved."), 1);
}

void ScreenTest::screenshotByF12()
{
    QTemporaryDir directory;
    Screenshots screenshots(directory.path());
    KeyScreen screen;
    QVERIFY(press(&screen, Qt::Key_F12));
    QCOMPARE(screenshotsIn(directory.path()).size(), 1);
    QVERIFY(screen.calls.isEmpty());
}

void ScreenTest::screenshotsOfOneSecondOverwrite()
{
    QTemporaryDir directory;
    Screenshots screenshots(directory.path());
    PlainScreen screen(Screen::SCREEN_MENU);
    // The start of a second, so that both fall into it.
    QTRY_VERIFY_WITH_TIMEOUT(QTime::currentTime().msec() < 100, PATIENCE_MS);
    const QTime start = QTime::currentTime();
    screen.createScreenshot();
    screen.createScreenshot();
    if (QTime::currentTime().second() != start.second()) {
        QSKIP("The machine is too busy for two screenshots within a second.");
    }
    QCOMPARE(screenshotsIn(directory.path()).size(), 1);
}

void ScreenTest::screenshotWithoutDirectory()
{
    QTemporaryDir directory;
    const QString path = directory.path() + "/misc";
    Screenshots screenshots(path);
    Window window;
    Screen* const screen = window.getScreenById(Screen::SCREEN_STATUS);
    Messages messages;
    QTest::keyClick(screen, Qt::Key_F12);
    QCOMPARE(messages.count("Screen::createScreenshot(): ERROR !!! Path=" + path + " does not exist!"), 1);
    QVERIFY(!QDir(path).exists());
    QCOMPARE(window.getCurrentScreenId(), Screen::SCREEN_STATUS); // no popup comes up
}

void ScreenTest::screenshotThatCannotBeOpened()
{
    QTemporaryDir directory;
    Screenshots screenshots(directory.path());
    // Directories stand where the file would be written, for as long as the test may take.
    for (int second = 0; second < 60; ++second) {
        const QDateTime time = QDateTime::currentDateTime().addSecs(second);
        QDir(directory.path()).mkdir(time.toString("'screen_'yyyyMMdd_hhmmss'.bmp'"));
    }
    PlainScreen screen(Screen::SCREEN_MENU);
    Messages messages;
    screen.createScreenshot();
    QCOMPARE(messages.count("Screen::createScreenshot: Open for write only failed."), 1);
    QCOMPARE(messages.countOfPrefix("File "), 0);
    QVERIFY(screenshotsIn(directory.path()).isEmpty());
}

int main(int argc, char** argv)
{
    return windowfixture::run<ScreenTest>(argc, argv);
}

#include "screen_test.moc"
