// The shared style texts and characters.
#include "common/constants.h"

const QString& frameStyle = *new QString(QLatin1String("border: 2px solid white; border-radius: 6px"));
const QString& dimStyle = *new QString(QLatin1String("background: rgba(0,0,0,150)"));
const QString& labelOverlayStyle =
    *new QString(QLatin1String("border: none; color: white; background-color: rgba(0, 0, 0, 127); "
                               "border-radius: 3px; margin: 0px;"));
const QChar arrowLeftChar(0x25C0);
const QChar degreeChar(0x00B0);
const QChar chargeChar(0x26A1);
