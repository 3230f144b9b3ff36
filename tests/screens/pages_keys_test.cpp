// The pages that only show something, antenna and battery: any key leads back from them.
#include "screens/pagefixture.h"

#include "support/messages.h"

class PagesKeysTest : public QObject {
    Q_OBJECT

private slots:
    void init() { windowfixture::resetStatus(); }

    void anyKeyLeadsToTheStatusScreen_data()
    {
        addPages({Qt::Key_Left, Qt::Key_Right, Qt::Key_Up, Qt::Key_Down, Qt::Key_Return});
    }
    void anyKeyLeadsToTheStatusScreen();
    void longOkOnlyLogs_data() { addPages({Qt::Key_Space}); }
    void longOkOnlyLogs();

private:
    static void addPages(const QList<Qt::Key>& keys);
};

void PagesKeysTest::addPages(const QList<Qt::Key>& keys)
{
    static const struct {
        const char* name;
        Screen::SCREEN_ID_ENUM id;
    } pages[] = {{"antenna", Screen::SCREEN_ANTENNA}, {"battery", Screen::SCREEN_BATTERY}};
    QTest::addColumn<int>("page");
    QTest::addColumn<int>("key");
    for (const auto& page : pages) {
        for (Qt::Key key : keys)
            QTest::newRow(qPrintable(QString("%1, key %2").arg(page.name).arg(int(key), 0, 16)))
                << int(page.id) << int(key);
    }
}

void PagesKeysTest::anyKeyLeadsToTheStatusScreen()
{
    QFETCH(int, page);
    QFETCH(int, key);
    PageFixture f(static_cast<Screen::SCREEN_ID_ENUM>(page));
    f.press(static_cast<Qt::Key>(key));
    QCOMPARE(f.window.getCurrentScreenId(), Screen::SCREEN_STATUS);
    QVERIFY(f.page->isHidden());
    Messages messages;
    f.window.debugHistory("now");
    QCOMPARE(messages.count("now: The history is empty"), 1);
}

void PagesKeysTest::longOkOnlyLogs()
{
    QFETCH(int, page);
    QFETCH(int, key);
    PageFixture f(static_cast<Screen::SCREEN_ID_ENUM>(page));
    Messages messages;
    f.press(static_cast<Qt::Key>(key));
    QCOMPARE(messages.count("Button LONG OK not defined on this screen."), 1);
    QCOMPARE(int(f.window.getCurrentScreenId()), page);
}

int main(int argc, char** argv)
{
    return windowfixture::run<PagesKeysTest>(argc, argv);
}

#include "pages_keys_test.moc"
