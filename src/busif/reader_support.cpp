// One key read with its log lines, for all readers. Bus thread only.
#include "busif/reader_support.h"

#include "common/log.h"
#include "model/statusupdater.h"
#include "runtime/config_client_api.h"

const char* const NOT_IN_DATABASE = " not in database???";

void logReaderStart(const char* function)
{
    logDebug() << function << "(): Start of function";
}

void logReaderValue(const char* function, int value)
{
    logDebug() << function << "(): value=" << value;
}

int readKeyOr(int fallback, const char* function, const QByteArray& key, const char* missing,
              const char* introduction)
{
    int value = fallback;
    if (config_read_int(key.constData(), &value) != 0) {
        logDebug() << function << introduction << key.constData() << missing;
        return fallback;
    }
    return value;
}

int readSingleInt(const char* function, const char* key, int fallback, const char* missing)
{
    logReaderStart(function);
    const int value = readKeyOr(fallback, function, key, missing);
    logReaderValue(function, value);
    return value;
}

int askSingleInt(const char* function, const char* key, const char* missing)
{
    logReaderStart(function);
    const int value = StatusUpdater::getStatusUpdater()->getCBusValueInt(QString::fromLatin1(key));
    if (value == -1 && missing)
        logDebug() << function << "(): " << key << missing;
    logReaderValue(function, value);
    return value;
}

QString askSingleText(const char* function, const char* key)
{
    logReaderStart(function);
    const QString text = StatusUpdater::getStatusUpdater()->getCBusValueStr(QString::fromLatin1(key));
    if (text.isEmpty())
        logDebug() << function << "(): ERROR !!! " << key << NOT_IN_DATABASE;
    logDebug() << function << "(): value=" << text;
    return text;
}

bool truthOf(const char* function, int value)
{
    if (value != 0 && value != 1)
        logDebug() << function << "(): ERROR!!! illegal value=" << value;
    return value == 1;
}
