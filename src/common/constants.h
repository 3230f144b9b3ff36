// Style texts and characters that the widgets and screens share. Objects with static storage, built
// before main; do not use them in the construction of other static objects. Read-only, any thread.
#ifndef LUMENPANEL_COMMON_CONSTANTS_H
#define LUMENPANEL_COMMON_CONSTANTS_H

#include <QChar>
#include <QString>

// The texts are references to objects that are never destroyed: the process may end by exit() in a
// signal handler while the other thread still uses them.
extern const QString& frameStyle;        // white rounded frame
extern const QString& dimStyle;          // dark layer over a disabled icon
extern const QString& labelOverlayStyle; // white text on a half-transparent black plate
extern const QChar arrowLeftChar;        // left-pointing triangle
extern const QChar degreeChar;           // degree sign
extern const QChar chargeChar;           // high-voltage sign, the charging mark

#endif
