// The common floor of the front end: log lines, checked allocation, paths and shared constants.
#include "common/checked.h"
#include "common/constants.h"
#include "common/log.h"
#include "common/paths.h"
#include "common/qtcompat.h"
#include "support/death.h"
#include "support/messages.h"

#include <QLabel>
#include <QTest>

#include <csignal>
#include <cstdlib>
#include <functional>
#include <new>

// The non-throwing new of this program fails when it is told to.
static thread_local bool noMemory = false;

void* operator new(std::size_t size, const std::nothrow_t&) noexcept
{
    return noMemory ? nullptr : std::malloc(size);
}

void operator delete(void* memory) noexcept
{
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept
{
    std::free(memory);
}

void* operator new(std::size_t size)
{
    void* const memory = std::malloc(size);
    if (!memory) {
        std::abort();
    }
    return memory;
}

namespace {

enum Colour { RED = 7 };

} // namespace

class LogTest : public QObject {
    Q_OBJECT

private slots:
    void init() { setDebugLogWanted(true); }
    void cleanup() { setDebugLogWanted(true); }

    void eachValueStandsAsItIs_data();
    void eachValueStandsAsItIs();
    void partsAreJoinedWithoutBlanksOrQuotes();
    void aPerCentSignIsNoFormat();
    void eachFunctionHasItsType();
    void anUnwantedDebugLineIsNotSent();
    void warningsAreSentThoughDebugLinesAreUnwanted();
    void anObjectIsNamedByClassAddressAndName();
    void aLineThatWasMovedIsSentOnce();
    void hexTextIsUpperCaseWithoutPrefix();
    void checkedNewPassesItsArguments();
    void checkedNewWithoutMemoryPanics();
    void panelAssertPanicsOnWhatDoesNotExist();
    void pathsAreTheBuildsUnlessATestOverridesThem();
    void sharedConstants();
    void textWidthIsTheAdvance();
    void grabbedPictureHasTheWidgetsSize();
};

void LogTest::eachValueStandsAsItIs_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("expected");
    const auto made = [](const std::function<void(LogLine&)>& fill) {
        Messages messages;
        {
            LogLine line(QtWarningMsg);
            fill(line);
        }
        return messages.texts().value(0);
    };
    QTest::newRow("text") << made([](LogLine& line) { line << "a b"; }) << "a b";
    QTest::newRow("UTF-8 text") << made([](LogLine& line) { line << "\xc2\xb0"; }) << QString(QChar(0xb0));
    QTest::newRow("null text") << made([](LogLine& line) { line << static_cast<const char*>(nullptr); })
                               << "(null)";
    QTest::newRow("QString") << made([](LogLine& line) { line << QString("quote\"d"); }) << "quote\"d";
    QTest::newRow("QChar") << made([](LogLine& line) { line << QChar('x'); }) << "x";
    QTest::newRow("true") << made([](LogLine& line) { line << true; }) << "true";
    QTest::newRow("false") << made([](LogLine& line) { line << false; }) << "false";
    QTest::newRow("int") << made([](LogLine& line) { line << -12; }) << "-12";
    QTest::newRow("enumeration") << made([](LogLine& line) { line << RED; }) << "7";
    QTest::newRow("unsigned") << made([](LogLine& line) { line << 4000000000u; }) << "4000000000";
    QTest::newRow("long") << made([](LogLine& line) { line << -5000000000L; }) << "-5000000000";
    QTest::newRow("long long") << made([](LogLine& line) { line << 5000000000LL; }) << "5000000000";
    QTest::newRow("double") << made([](LogLine& line) { line << 0.5; }) << "0.5";
    QTest::newRow("pointer") << made([](LogLine& line) { line << reinterpret_cast<void*>(0x1aF); })
                             << "0x1af";
}

void LogTest::eachValueStandsAsItIs()
{
    QFETCH(QString, line);
    QFETCH(QString, expected);
    QCOMPARE(line, expected);
}

void LogTest::partsAreJoinedWithoutBlanksOrQuotes()
{
    Messages messages;
    logDebug() << "Class::function(): value=" << 3 << ", name=" << QString("x y") << ".";
    QCOMPARE(messages.texts(), QStringList("Class::function(): value=3, name=x y."));
}

void LogTest::aPerCentSignIsNoFormat()
{
    Messages messages;
    logDebug() << "100%n%s " << QString("%d%%");
    QCOMPARE(messages.texts(), QStringList("100%n%s %d%%"));
}

void LogTest::eachFunctionHasItsType()
{
    Messages messages;
    logDebug() << "one";
    logWarning() << "two";
    logCritical() << "three";
    QCOMPARE(messages.all().size(), 3);
    QCOMPARE(messages.count(QtDebugMsg, "one"), 1);
    QCOMPARE(messages.count(QtWarningMsg, "two"), 1);
    QCOMPARE(messages.count(QtCriticalMsg, "three"), 1);
}

void LogTest::anUnwantedDebugLineIsNotSent()
{
    Messages messages;
    setDebugLogWanted(false);
    QVERIFY(!debugLogWanted());
    logDebug() << "text" << QString("text") << 1 << 0.5 << this;
    QCOMPARE(messages.texts(), QStringList());
}

void LogTest::warningsAreSentThoughDebugLinesAreUnwanted()
{
    Messages messages;
    setDebugLogWanted(false);
    logWarning() << "two";
    logCritical() << "three";
    QCOMPARE(messages.texts(), QStringList({"two", "three"}));
}

void LogTest::anObjectIsNamedByClassAddressAndName()
{
    Messages messages;
    QObject object;
    const QString address = "0x" + QString::number(reinterpret_cast<quintptr>(&object), 16);
    logDebug() << "receiver=." << &object;
    object.setObjectName("panel");
    logDebug() << &object;
    logDebug() << static_cast<QObject*>(nullptr);
    QCOMPARE(messages.texts(), QStringList({"receiver=.QObject(" + address + ")",
                                            "QObject(" + address + ", name=panel)", "QObject(0x0)"}));
}

void LogTest::aLineThatWasMovedIsSentOnce()
{
    Messages messages;
    {
        LogLine first(QtDebugMsg);
        first << "a";
        LogLine second(std::move(first));
        second << "b";
    }
    QCOMPARE(messages.texts(), QStringList("ab"));
}

void LogTest::hexTextIsUpperCaseWithoutPrefix()
{
    QCOMPARE(hexText(0x1010d), QString("1010D"));
    QCOMPARE(hexText(0), QString("0"));
}

void LogTest::checkedNewPassesItsArguments()
{
    QString* const text = checkedNew<QString>("log_test", __LINE__, 3, QChar('x'));
    QCOMPARE(*text, QString("xxx"));
    delete text;
}

void LogTest::checkedNewWithoutMemoryPanics()
{
    const Death death = deathOf([] {
        noMemory = true;
        checkedNew<QString>("window", 120);
    });
    QCOMPARE(death.signal, SIGABRT);
    QVERIFY2(death.output.find("<1> ") != std::string::npos, death.output.c_str());
    QVERIFY2(death.output.find("*** ASSERT in window at 120") != std::string::npos, death.output.c_str());
}

void LogTest::panelAssertPanicsOnWhatDoesNotExist()
{
    panelAssert(true, "window", 1);
    const Death death = deathOf([] { panelAssert(false, "guiapp", 34); });
    QCOMPARE(death.signal, SIGABRT);
    QVERIFY2(death.output.find("*** ASSERT in guiapp at 34") != std::string::npos, death.output.c_str());
}

void LogTest::pathsAreTheBuildsUnlessATestOverridesThem()
{
    const QString resources = paths::resourcePath();
    QVERIFY(!resources.isEmpty());
    paths::overrideForTest("/r", nullptr, "/c");
    QCOMPARE(paths::resourcePath(), QString("/r"));
    QCOMPARE(paths::contrastFile(), QString("/c"));
    QVERIFY(paths::screenshotDirectory().startsWith('/'));
    QVERIFY(paths::screenshotDirectory() != QString("/c"));
    paths::overrideForTest(nullptr, nullptr, nullptr);
    QCOMPARE(paths::resourcePath(), resources);
    QVERIFY(paths::contrastFile().endsWith("contrast"));
}

void LogTest::sharedConstants()
{
    QCOMPARE(frameStyle, QString("border: 2px solid white; border-radius: 6px"));
    QCOMPARE(dimStyle, QString("background: rgba(0,0,0,150)"));
    QCOMPARE(labelOverlayStyle, QString("border: none; color: white; background-color: rgba(0, 0, 0, 127); "
                                        "border-radius: 3px; margin: 0px;"));
    QCOMPARE(arrowLeftChar, QChar(9664));
    QCOMPARE(degreeChar, QChar(176));
    QCOMPARE(chargeChar, QChar(9889));
}

void LogTest::textWidthIsTheAdvance()
{
    const QFontMetrics metrics{QFont()};
    QCOMPARE(qtcompat::textWidth(metrics, QString()), 0);
    QCOMPARE(qtcompat::textWidth(metrics, "ab"), metrics.horizontalAdvance("ab"));
    QVERIFY(qtcompat::textWidth(metrics, "ab") > qtcompat::textWidth(metrics, "a"));
}

void LogTest::grabbedPictureHasTheWidgetsSize()
{
    QLabel label;
    label.setFixedSize(256, 64);
    QVERIFY(qtcompat::labelPixmap(&label).isNull());
    QCOMPARE(qtcompat::grabWidget(&label).size(), QSize(256, 64));
    label.setPixmap(QPixmap(3, 2));
    QCOMPARE(qtcompat::labelPixmap(&label).size(), QSize(3, 2));
    QCOMPARE(qtcompat::escapedHtml("<a&b>"), QString("&lt;a&amp;b&gt;"));
}

QTEST_MAIN(LogTest)
#include "log_test.moc"
