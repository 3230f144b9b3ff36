// The signal icon: five pictures by the number of bars, and the end of the process without them.
#include "screens/pictures.h"
#include "screens/windowfixture.h"

#include "support/death.h"
#include "widgets/tsignallabel.h"

#include <QFile>
#include <QFrame>

using namespace windowfixture;

class TSignalLabelTest : public QObject {
    Q_OBJECT

private slots:
    void pictureByNumberOfBars();
    void pictureIsNotScaled();
    void numberOutOfRangeKeepsTheOldOneAndRedraws_data();
    void numberOutOfRangeKeepsTheOldOneAndRedraws();
    void neverDark();
    void missingPictureEndsTheProcess();
};

void TSignalLabelTest::pictureByNumberOfBars()
{
    TSignalLabel label(nullptr);
    QVERIFY(pictureOf(label).isNull()); // loaded by its owner
    label.updateIcon();
    QImage last;
    for (int bars = 0; bars <= 4; ++bars) {
        Messages messages;
        label.setNumberOfIconBars(bars);
        const QImage expected(GuiApp::getResourcePath() + QString("/antenna_%1.png").arg(bars));
        QVERIFY(!expected.isNull());
        QCOMPARE(pictureOf(label), expected.convertToFormat(QImage::Format_ARGB32));
        QVERIFY(pictureOf(label) != last);
        last = pictureOf(label);
        QCOMPARE(messages.count(QString("TSignalLabel::setNumberOfIconBars(): numBars=%1").arg(bars)), 1);
        QCOMPARE(messages.countOfPrefix("TSignalLabel::setNumberOfIconBars(): ERROR!!!"), 0);
    }
}

void TSignalLabelTest::pictureIsNotScaled()
{
    Pictures pictures;
    pictures.add("antenna_0", 17, 11);
    TSignalLabel label(nullptr);
    label.updateIcon();
    QCOMPARE(pictureOf(label).size(), QSize(17, 11));
}

void TSignalLabelTest::numberOutOfRangeKeepsTheOldOneAndRedraws_data()
{
    QTest::addColumn<int>("bars");
    QTest::newRow("5") << 5;
    QTest::newRow("-1") << -1;
}

void TSignalLabelTest::numberOutOfRangeKeepsTheOldOneAndRedraws()
{
    QFETCH(int, bars);
    TSignalLabel label(nullptr);
    label.setNumberOfIconBars(3);
    const QImage three = pictureOf(label);
    label.setPixmap(QPixmap());
    Messages messages;
    label.setNumberOfIconBars(bars);
    QCOMPARE(messages.count(QString("TSignalLabel::setNumberOfIconBars(): ERROR!!! numBars=%1 out of range "
                                    "(range 0-4)")
                                .arg(bars)),
             1);
    QCOMPARE(pictureOf(label), three);
}

void TSignalLabelTest::neverDark()
{
    TSignalLabel label(nullptr);
    QFrame* const dark = label.findChild<QFrame*>("pDarkLayer");
    dark->show();
    label.updateIcon();
    QVERIFY(dark->isHidden());
    label.setState(INTERFACE_STATE_OFF);
    QVERIFY(dark->isHidden());
    QVERIFY(!pictureOf(label).isNull()); // one picture for all states
}

void TSignalLabelTest::missingPictureEndsTheProcess()
{
    Pictures pictures;
    const Death death = deathOf([] {
        qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString& text) {
            fprintf(stderr, "%s\n", qPrintable(text));
        });
        TSignalLabel label(nullptr);
        label.setNumberOfIconBars(2);
    });
    QVERIFY(death.signal != 0 || death.status == 1);
    const QByteArray line =
        "TSignalLabel::updateIcon(): ERROR !!!!!!!!!!!!!: Pixmap not found for filename=" +
        pictures.path("antenna_2").toLatin1() + ". Now exiting lumenpanel!";
    QVERIFY2(death.output.find(line.constData()) != std::string::npos, death.output.c_str());
    QVERIFY2(death.output.find("<1> gui: TSignalLabel::updateIcon(): ERROR !!! : Pixmap not found. Exiting "
                               "lumenpanel.") != std::string::npos,
             death.output.c_str());
}

int main(int argc, char** argv)
{
    return windowfixture::run<TSignalLabelTest>(argc, argv);
}

#include "tsignallabel_test.moc"
