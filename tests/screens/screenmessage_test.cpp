// The page that the entry of the PIN is built on: a wrapped text above two captions.
#include "screens/pagefixture.h"

#include "screens/screenmessage.h"
#include "support/death.h"
#include "support/failingnew.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

using namespace windowfixture;

namespace {

class TestMessage : public ScreenMessage {
public:
    explicit TestMessage(Window* window) : ScreenMessage(window, SCREEN_ENTER_PIN, nullptr) {}
    QLabel* message() const { return pMessageLabel; }
    QLabel* left() const { return pLeftLabel; }
    QLabel* right() const { return pRightLabel; }
};

class MessageFixture : public PageFixture {
public:
    MessageFixture() : PageFixture(Screen::SCREEN_STATUS), screen(&window) {}
    TestMessage screen;
};

} // namespace

class ScreenMessageTest : public QObject {
    Q_OBJECT

private slots:
    void idIsTheOneGiven();
    void layoutIsAsTold();
    void captionsStandFromTheStart();
    void languageChange();
    void longTextIsWrapped();
    void keysOnlyLog();
    void withoutMemoryTheProcessEnds();
};

void ScreenMessageTest::idIsTheOneGiven()
{
    MessageFixture f;
    QCOMPARE(f.screen.getId(), Screen::SCREEN_ENTER_PIN);
    QCOMPARE(f.screen.size(), QSize(256, 64));
}

void ScreenMessageTest::layoutIsAsTold()
{
    MessageFixture f;
    QVBoxLayout* const rows = qobject_cast<QVBoxLayout*>(f.screen.layout());
    QVERIFY(rows);
    QCOMPARE(rows->contentsMargins(), QMargins(10, 0, 0, 0));
    QCOMPARE(rows->spacing(), 0);
    QCOMPARE(rows->count(), 4);
    QVERIFY(rows->itemAt(0)->spacerItem());
    QCOMPARE(rows->itemAt(1)->widget(), static_cast<QWidget*>(f.screen.message()));
    QVERIFY(rows->itemAt(2)->spacerItem());
    QHBoxLayout* const buttons = qobject_cast<QHBoxLayout*>(rows->itemAt(3)->layout());
    QVERIFY(buttons);
    QCOMPARE(buttons->contentsMargins(), QMargins(0, 0, 10, 0));
    QCOMPARE(buttons->spacing(), 0);
    QCOMPARE(buttons->count(), 3);
    QCOMPARE(buttons->itemAt(0)->widget(), static_cast<QWidget*>(f.screen.left()));
    QVERIFY(buttons->itemAt(1)->spacerItem());
    QCOMPARE(buttons->itemAt(2)->widget(), static_cast<QWidget*>(f.screen.right()));
    QCOMPARE(f.screen.message()->minimumWidth(), 246);
    QCOMPARE(f.screen.message()->maximumWidth(), 246);
    QCOMPARE(f.screen.message()->alignment(), Qt::Alignment(Qt::AlignLeft));
    QVERIFY(f.screen.message()->wordWrap());
    QCOMPARE(f.screen.message()->text(), QString());
}

void ScreenMessageTest::captionsStandFromTheStart()
{
    MessageFixture f;
    QCOMPARE(f.screen.left()->text(), QString("Cancel"));
    QCOMPARE(f.screen.right()->text(), QString("OK"));
}

void ScreenMessageTest::languageChange()
{
    MessageFixture f;
    f.screen.message()->setText("kept");
    Brackets brackets;
    QCOMPARE(f.screen.left()->text(), QString("[Shared_translations|Cancel]"));
    QCOMPARE(f.screen.right()->text(), QString("[Shared_translations|OK]"));
    QCOMPARE(f.screen.message()->text(), QString("kept"));
}

void ScreenMessageTest::longTextIsWrapped()
{
    MessageFixture f;
    f.screen.message()->setText("A message of some length that does not go into one line of the panel");
    f.screen.show();
    QCoreApplication::sendPostedEvents();
    const int line = QFontMetrics(f.screen.message()->font()).height();
    QCOMPARE(f.screen.message()->width(), 246);
    QCOMPARE(f.screen.message()->height(), 2 * line);
    QCOMPARE(f.screen.left()->geometry().bottom(), 63);
    QCOMPARE(f.screen.left()->x(), 10);
    QCOMPARE(f.screen.right()->geometry().right(), 245);
    QVERIFY(f.screen.message()->geometry().bottom() < f.screen.left()->y());
}

void ScreenMessageTest::keysOnlyLog()
{
    MessageFixture f;
    const struct {
        Qt::Key key;
        const char* name;
    } keys[] = {{Qt::Key_Left, "LEFT"}, {Qt::Key_Right, "RIGHT"}, {Qt::Key_Up, "UP"},
                {Qt::Key_Down, "DOWN"}, {Qt::Key_Return, "OK"},   {Qt::Key_Space, "LONG OK"}};
    for (const auto& row : keys) {
        Messages messages;
        QTest::keyClick(&f.screen, row.key);
        QCOMPARE(messages.count(QString("Button %1 not defined on this screen.").arg(row.name)), 1);
    }
}

void ScreenMessageTest::withoutMemoryTheProcessEnds()
{
    MessageFixture f;
    Window* const window = &f.window;
    int deaths = 0;
    for (;; ++deaths) {
        const Death death = deathOf([window, deaths] {
            grantedAllocations = deaths;
            TestMessage screen(window);
        });
        if (death.status == 111) {
            break; // as many as it needs
        }
        QVERIFY2(death.output.find("<1> gui: *** ASSERT in screenmessage at ") != std::string::npos,
                 death.output.c_str());
    }
    QCOMPARE(deaths, 2 + 3); // layouts, labels
}

int main(int argc, char** argv)
{
    return windowfixture::run<ScreenMessageTest>(argc, argv);
}

#include "screenmessage_test.moc"
