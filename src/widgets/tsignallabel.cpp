// The signal icon; see the header.
#include "widgets/tsignallabel.h"

#include "common/log.h"
#include "runtime/vx_posix_reset.h"

#include <QFrame>
#include <QPixmap>

namespace {

const int NUMBER_OF_BARS_MAX = 4;

} // namespace

TSignalLabel::TSignalLabel(QWidget* parent)
    : TLabel(ICON_ANTENNA, QString::fromLatin1("antenna"), INTERFACE_STATE_ON, parent), numberOfIconBars(0)
{
}

void TSignalLabel::setNumberOfIconBars(int numBars)
{
    logDebug() << "TSignalLabel::setNumberOfIconBars(): numBars=" << numBars;
    if (numBars >= 0 && numBars <= NUMBER_OF_BARS_MAX)
        numberOfIconBars = numBars;
    else
        logDebug() << "TSignalLabel::setNumberOfIconBars(): ERROR!!! numBars=" << numBars
                   << " out of range (range 0-4)";
    updateIcon();
}

void TSignalLabel::updateIcon()
{
    const QString fileName =
        picturePath(QString::fromLatin1("antenna"), QString::fromLatin1("_%1").arg(numberOfIconBars));
    pDarkLayer->setVisible(false);
    const QPixmap pixmap(fileName);
    if (pixmap.isNull()) {
        logDebug() << "TSignalLabel::updateIcon(): ERROR !!!!!!!!!!!!!: Pixmap not found for filename="
                   << fileName << ". Now exiting lumenpanel!";
        vx_panic("TSignalLabel::updateIcon(): ERROR !!! : Pixmap not found. Exiting lumenpanel.");
    }
    setPixmap(pixmap);
}
