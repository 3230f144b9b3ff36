// The pictures of the icons and the tool that makes them from their drawings.
#include "common/paths.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

namespace {

struct Result {
    int status;
    QString errors;
};

Result makeIcons(const QStringList& arguments)
{
    QProcess process;
    process.start(PROJECT_BINARY_DIR "/res/mkicons", arguments);
    if (!process.waitForFinished() || process.exitStatus() != QProcess::NormalExit) {
        return {-1, process.errorString()};
    }
    return {process.exitCode(), QString::fromLocal8Bit(process.readAllStandardError())};
}

} // namespace

class IconsTest : public QObject {
    Q_OBJECT

private slots:
    void everyNameHasBothStates_data();
    void everyNameHasBothStates();
    void fiveSignalPictures();
    void picturesHaveWholePixels();
    void drawingBecomesAPicture();
    void badDrawingIsToldWithFileAndLine_data();
    void badDrawingIsToldWithFileAndLine();
    void toolWithoutDrawingsTellsItsUse();
};

void IconsTest::everyNameHasBothStates_data()
{
    QTest::addColumn<int>("height");
    QTest::newRow("battery") << 28;
    QTest::newRow("wifi") << 24;
    QTest::newRow("isdn") << 24;
    QTest::newRow("lan") << 24;
    QTest::newRow("phone") << 24;
    QTest::newRow("usb") << 24;
    QTest::newRow("warning") << 24;
    QTest::newRow("warning_no_sign") << 24;
    QTest::newRow("connect") << 36;
    QTest::newRow("menu") << 36;
}

// At the height at which they are drawn, so that nothing is scaled; and both of one width.
void IconsTest::everyNameHasBothStates()
{
    const QString path = paths::resourcePath() + "/" + QTest::currentDataTag();
    const QImage enabled(path + "_enabled.png");
    const QImage disabled(path + "_disabled.png");
    QTEST(enabled.height(), "height");
    QCOMPARE(disabled.size(), enabled.size());
    QVERIFY(enabled != disabled);
}

void IconsTest::fiveSignalPictures()
{
    QList<QImage> pictures;
    for (int bars = 0; bars <= 4; ++bars) {
        const QImage picture(paths::resourcePath() + QString("/antenna_%1.png").arg(bars));
        QCOMPARE(picture.height(), 28);
        QVERIFY(!pictures.contains(picture));
        pictures.append(picture);
        QCOMPARE(picture.width(), pictures.first().width());
    }
}

// White, the grey of the battery's bar, black, or nothing.
void IconsTest::picturesHaveWholePixels()
{
    const QStringList files = QDir(paths::resourcePath()).entryList({"*.png"});
    QCOMPARE(files.size(), 26);
    for (const QString& file : files) {
        const QImage picture =
            QImage(paths::resourcePath() + "/" + file).convertToFormat(QImage::Format_ARGB32);
        for (int y = 0; y < picture.height(); ++y) {
            for (int x = 0; x < picture.width(); ++x) {
                const QRgb pixel = picture.pixel(x, y);
                QVERIFY2(pixel == 0xffffffff || pixel == 0xff999999 || pixel == 0xff000000 || pixel == 0,
                         qPrintable(QString("%1 at %2,%3").arg(file).arg(x).arg(y)));
            }
        }
    }
}

void IconsTest::drawingBecomesAPicture()
{
    QTemporaryDir directory;
    QFile file(directory.path() + "/try.txt");
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("4x3 a try\n#+. \n\n");
    file.close();
    const Result result = makeIcons({directory.path(), file.fileName()});
    QCOMPARE(result.status, 0);
    const QImage picture = QImage(directory.path() + "/try.png").convertToFormat(QImage::Format_ARGB32);
    QCOMPARE(picture.size(), QSize(4, 3));
    QCOMPARE(picture.pixel(0, 0), 0xffffffffu);
    QCOMPARE(picture.pixel(1, 0), 0xff999999u);
    QCOMPARE(picture.pixel(2, 0), 0xff000000u);
    QCOMPARE(picture.pixel(3, 0), 0u);
    QCOMPARE(picture.pixel(0, 1), 0u); // an empty row
    QCOMPARE(picture.pixel(3, 2), 0u); // a missing row
}

void IconsTest::badDrawingIsToldWithFileAndLine_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("error");
    QTest::newRow("no size") << QByteArray("##\n") << ":1: expected the size";
    QTest::newRow("too large") << QByteArray("257x10 wide\n") << ":1: expected the size";
    QTest::newRow("too high") << QByteArray("10x65 high\n") << ":1: expected the size";
    QTest::newRow("nothing") << QByteArray("0x5 thin\n") << ":1: expected the size";
    QTest::newRow("wide row") << QByteArray("2x2 a\n##\n###\n") << ":3: the row is wider";
    QTest::newRow("too many rows") << QByteArray("2x1 a\n##\n#\n") << ":3: more rows";
    QTest::newRow("strange pixel") << QByteArray("2x1 a\n#x\n") << ":2: a pixel is one of";
}

void IconsTest::badDrawingIsToldWithFileAndLine()
{
    QFETCH(QByteArray, text);
    QFETCH(QString, error);
    QTemporaryDir directory;
    QFile file(directory.path() + "/try.txt");
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(text);
    file.close();
    const Result result = makeIcons({directory.path(), file.fileName()});
    QCOMPARE(result.status, 1);
    QVERIFY2(result.errors.startsWith(file.fileName() + error), qPrintable(result.errors));
    QVERIFY(!QFile::exists(directory.path() + "/try.png"));
}

void IconsTest::toolWithoutDrawingsTellsItsUse()
{
    const Result result = makeIcons({"somewhere"});
    QCOMPARE(result.status, 1);
    QVERIFY(result.errors.startsWith("usage: mkicons"));
    QCOMPARE(makeIcons({"/nonexistent", "/nonexistent/try.txt"}).errors,
             QString("/nonexistent/try.txt:0: cannot be read\n"));
}

QTEST_APPLESS_MAIN(IconsTest)

#include "icons_test.moc"
