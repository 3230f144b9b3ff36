// Durations as texts. Any thread.
#ifndef LUMENPANEL_MODEL_DURATION_H
#define LUMENPANEL_MODEL_DURATION_H

#include <QChar>
#include <QString>

// A number of at least two digits, padded with "0".
inline QString twoDigits(long long value)
{
    return QString::fromLatin1("%1").arg(value, 2, 10, QChar::fromLatin1('0'));
}

// hh:mm:ss; the hours take as many digits as they need. A clock that was set back gives 00:00:00.
inline QString hoursMinutesSeconds(long long seconds)
{
    const long long shown = seconds < 0 ? 0 : seconds;
    return twoDigits(shown / 3600) + QChar::fromLatin1(':') + twoDigits(shown / 60 % 60) +
           QChar::fromLatin1(':') + twoDigits(shown % 60);
}

#endif
