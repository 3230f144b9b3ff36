// The application's way with keys: what it logs and tells of a press before the widget has it, and what it
// leaves alone.
#include "screens/windowfixture.h"

#include "support/patience.h"

#include <QKeyEvent>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QWidget>
#include <QWindow>

namespace {

// A receiver of keys.
class KeyWidget : public QWidget {
public:
    explicit KeyWidget(QWidget* parent = nullptr) : QWidget(parent) {}

    QList<int> pressed;
    QList<int> released;
    QStringList* order = nullptr;
    bool accept = true;

protected:
    void keyPressEvent(QKeyEvent* event) override
    {
        pressed.append(event->key());
        if (order) {
            order->append("widget");
        }
        event->setAccepted(accept);
    }
    void keyReleaseEvent(QKeyEvent* event) override { released.append(event->key()); }
};

const char SOME_KEY[] = "GuiApp::notify: Some key was pressed.";
const char DONE[] = "GuiApp::notify: Done handling the keypress.";

} // namespace

class GuiAppKeysTest : public QObject {
    Q_OBJECT

public slots:
    void noteKey() { m_order.append("signal"); }

private slots:
    void init() { m_order.clear(); }

    void panelKeyIsLoggedAndTold_data();
    void panelKeyIsLoggedAndTold();
    void panelKeyIsToldBeforeItIsDelivered();
    void otherKeysReachTheWidgetButAreNotTold_data();
    void otherKeysReachTheWidgetButAreNotTold();
    void pressThroughTheNativeWindowCountsOnce();
    void pressThatIsPassedOnToTheParentCountsOnce();
    void releaseIsDeliveredAndNotLogged();
    void pressForAnObjectThatIsNoWidgetIsNotLogged();

private:
    QStringList m_order;
};

void GuiAppKeysTest::panelKeyIsLoggedAndTold_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<QString>("text");
    QTest::newRow("OK") << 0x1000004 << "Key_Return (OK-key) was pressed for receiver=.";
    QTest::newRow("left") << 0x1000012 << "Key_Left was pressed for receiver=.";
    QTest::newRow("up") << 0x1000013 << "Key_Up was pressed for receiver=.";
    QTest::newRow("right") << 0x1000014 << "Key_Right was pressed for receiver=.";
    QTest::newRow("down") << 0x1000015 << "Key_Down was pressed for receiver=.";
}

void GuiAppKeysTest::panelKeyIsLoggedAndTold()
{
    QFETCH(int, key);
    QFETCH(QString, text);
    KeyWidget widget;
    widget.setObjectName("page");
    QSignalSpy spy(qApp, SIGNAL(someKeyWasPressed()));
    Messages messages;
    QTest::keyPress(&widget, static_cast<Qt::Key>(key));
    const QString receiver =
        "QWidget(0x" + QString::number(reinterpret_cast<quintptr>(&widget), 16) + ", name=page)";
    QCOMPARE(messages.texts().filter(QRegularExpression("^(GuiApp|Key)")),
             QStringList({SOME_KEY, text + receiver, DONE}));
    QCOMPARE(messages.count(QtDebugMsg, SOME_KEY), 1);
    QCOMPARE(spy.count(), 1);
    QCOMPARE(widget.pressed, QList<int>({key}));
}

void GuiAppKeysTest::panelKeyIsToldBeforeItIsDelivered()
{
    KeyWidget widget;
    widget.order = &m_order;
    connect(qApp, SIGNAL(someKeyWasPressed()), this, SLOT(noteKey()));
    QTest::keyPress(&widget, Qt::Key_Up);
    disconnect(qApp, SIGNAL(someKeyWasPressed()), this, SLOT(noteKey()));
    QCOMPARE(m_order, QStringList({"signal", "widget"}));
}

void GuiAppKeysTest::otherKeysReachTheWidgetButAreNotTold_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<QString>("text");
    QTest::newRow("Space, a long OK") << 0x20 << " ";
    QTest::newRow("F12, a screenshot") << 0x100003b << "";
    QTest::newRow("Enter of a keypad") << int(Qt::Key_Enter) << "\r";
    QTest::newRow("a letter") << int(Qt::Key_A) << "a";
}

void GuiAppKeysTest::otherKeysReachTheWidgetButAreNotTold()
{
    QFETCH(int, key);
    QFETCH(QString, text);
    KeyWidget widget;
    QSignalSpy spy(qApp, SIGNAL(someKeyWasPressed()));
    Messages messages;
    QTest::sendKeyEvent(QTest::Press, &widget, static_cast<Qt::Key>(key), text, Qt::NoModifier);
    QCOMPARE(spy.count(), 0);
    QCOMPARE(widget.pressed, QList<int>({key}));
    QCOMPARE(messages.count(SOME_KEY), 1);
    QCOMPARE(messages.count(DONE), 1);
    QCOMPARE(messages.count("KeyPress: Unhandled key with key->text()=" + text +
                            ", key=" + QString::number(key) + " for receiver=QWidget(0x" +
                            QString::number(reinterpret_cast<quintptr>(&widget), 16) + ")"),
             1);
}

void GuiAppKeysTest::pressThroughTheNativeWindowCountsOnce()
{
    KeyWidget widget;
    widget.setFixedSize(256, 64);
    widget.show();
    widget.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&widget, PATIENCE_MS));
    widget.setFocus();
    QSignalSpy spy(qApp, SIGNAL(someKeyWasPressed()));
    Messages messages;
    QTest::keyPress(widget.windowHandle(), Qt::Key_Down);
    QTRY_COMPARE_WITH_TIMEOUT(widget.pressed, QList<int>({int(Qt::Key_Down)}), PATIENCE_MS);
    QCOMPARE(messages.count(SOME_KEY), 1);
    QCOMPARE(messages.countOfPrefix("Key_Down was pressed for receiver=."), 1);
    QCOMPARE(messages.count(DONE), 1);
    QCOMPARE(spy.count(), 1);
}

void GuiAppKeysTest::pressThatIsPassedOnToTheParentCountsOnce()
{
    KeyWidget parent;
    KeyWidget child(&parent);
    child.accept = false;
    QSignalSpy spy(qApp, SIGNAL(someKeyWasPressed()));
    Messages messages;
    QTest::keyPress(&child, Qt::Key_Left);
    QCOMPARE(child.pressed, QList<int>({int(Qt::Key_Left)}));
    QCOMPARE(parent.pressed, QList<int>({int(Qt::Key_Left)}));
    QCOMPARE(messages.count(SOME_KEY), 1);
    QCOMPARE(spy.count(), 1);
}

void GuiAppKeysTest::releaseIsDeliveredAndNotLogged()
{
    KeyWidget widget;
    QSignalSpy spy(qApp, SIGNAL(someKeyWasPressed()));
    Messages messages;
    QTest::keyRelease(&widget, Qt::Key_Return);
    QCOMPARE(widget.released, QList<int>({int(Qt::Key_Return)}));
    QCOMPARE(messages.texts().filter(QRegularExpression("^(GuiApp|Key)")), QStringList());
    QCOMPARE(spy.count(), 0);
}

void GuiAppKeysTest::pressForAnObjectThatIsNoWidgetIsNotLogged()
{
    QObject receiver;
    QSignalSpy spy(qApp, SIGNAL(someKeyWasPressed()));
    Messages messages;
    QKeyEvent event(QEvent::KeyPress, Qt::Key_Left, Qt::NoModifier);
    QCoreApplication::sendEvent(&receiver, &event);
    QCOMPARE(messages.count(SOME_KEY), 0);
    QCOMPARE(spy.count(), 0);
}

int main(int argc, char** argv)
{
    return windowfixture::run<GuiAppKeysTest>(argc, argv);
}

#include "guiapp_keys_test.moc"
