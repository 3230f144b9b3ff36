// The frame that keeps its picture: to the pixel what its style sheet draws on any other frame.
#include "screens/windowfixture.h"

#include "common/constants.h"
#include "widgets/focusframe.h"

#include <QImage>

using namespace windowfixture;

namespace {

// The ground of all screens.
class Ground : public QWidget {
public:
    Ground()
    {
        resize(256, 64);
        QPalette black;
        black.setColor(QPalette::Window, Qt::black);
        setPalette(black);
        setAutoFillBackground(true);
    }
};

} // namespace

class FocusFrameTest : public QObject {
    Q_OBJECT

private slots:
    void looksLikeAnyOtherFrame_data();
    void looksLikeAnyOtherFrame();
    void followsItsSize();
};

void FocusFrameTest::looksLikeAnyOtherFrame_data()
{
    QTest::addColumn<QRect>("geometry");
    QTest::newRow("icon") << QRect(38, 0, 30, 24);
    QTest::newRow("menu") << QRect(220, 28, 36, 36);
    QTest::newRow("question") << QRect(80, 32, 91, 24);
    QTest::newRow("tiny") << QRect(3, 3, 5, 5);
    QTest::newRow("whole panel") << QRect(0, 0, 256, 64);
}

void FocusFrameTest::looksLikeAnyOtherFrame()
{
    QFETCH(QRect, geometry);
    Ground expected;
    QFrame plain(&expected);
    plain.setStyleSheet(frameStyle);
    plain.setGeometry(geometry);
    Ground ground;
    FocusFrame frame(frameStyle, &ground);
    frame.setGeometry(geometry);
    QCOMPARE(ground.grab().toImage(), expected.grab().toImage());
    QVERIFY(ground.grab().toImage() != Ground().grab().toImage());
}

void FocusFrameTest::followsItsSize()
{
    Ground ground;
    FocusFrame frame(frameStyle, &ground);
    for (const QRect& geometry : {QRect(0, 0, 30, 24), QRect(40, 0, 30, 24), QRect(40, 0, 36, 36)}) {
        frame.setGeometry(geometry);
        const QImage picture = ground.grab().toImage();
        QCOMPARE(picture.pixel(geometry.right(), geometry.center().y()), qRgb(255, 255, 255));
        QCOMPARE(picture.pixel(geometry.center().x(), geometry.bottom()), qRgb(255, 255, 255));
        QVERIFY(picture.pixel(geometry.center()) != qRgb(255, 255, 255));
    }
}

int main(int argc, char** argv)
{
    return windowfixture::run<FocusFrameTest>(argc, argv);
}

#include "focusframe_test.moc"
