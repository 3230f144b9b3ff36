// The identity of the terminal: serial numbers, addresses, network name and software, as the properties
// show them. Setters take the bare text; getters put a translated label in front, or answer with a
// fall-back where the text is empty.
#include "model/statusupdater.h"

#include <QCoreApplication>

namespace {

const char CONTEXT[] = "StatusUpdater";

} // namespace

QString StatusUpdater::labelled(const char* label, const QString& text, const char* unknown) const
{
    if (text.isEmpty())
        return QCoreApplication::translate(CONTEXT, unknown);
    return QCoreApplication::translate(CONTEXT, label) + text;
}

// A MAC address can be read only while its interface is on; the fall-back tells which it is.
QString StatusUpdater::macText(const QString& mac, INTERFACE_NAME_ENUM interface, const char* unknown,
                               const char* off) const
{
    if (!mac.isEmpty())
        return QCoreApplication::translate("Shared_translations", "MAC: ") + mac;
    const bool on = getInterfaceState(interface) == INTERFACE_STATE_ON;
    return QCoreApplication::translate(CONTEXT, on ? unknown : off);
}

void StatusUpdater::setHelpDeskStr(const QString& text)
{
    store(helpDeskStr, text, __func__);
}

QString StatusUpdater::getHelpDeskStr() const
{
    const QString text = read(helpDeskStr, __func__);
    return text.isEmpty() ? tr("Help desk not configured.\nSee User Manual.") : text;
}

void StatusUpdater::setUnitSerialNumber(const QString& text)
{
    store(unitSerialNumber, text, __func__);
}

QString StatusUpdater::getUnitSerialNumber() const
{
    return labelled(QT_TR_NOOP("Unit serial number: "), read(unitSerialNumber, __func__),
                    QT_TR_NOOP("Unknown unit serial number"));
}

void StatusUpdater::setHpaSerialNumber(const QString& text)
{
    store(hpaSerialNumber, text, __func__);
}

QString StatusUpdater::getHpaSerialNumber() const
{
    return labelled(QT_TR_NOOP("Antenna serial number: "), read(hpaSerialNumber, __func__),
                    QT_TR_NOOP("Unknown antenna serial number"));
}

void StatusUpdater::setImeiStr(const QString& text)
{
    store(imeiStr, text, __func__);
}

QString StatusUpdater::getImeiStr() const
{
    return labelled(QT_TR_NOOP("IMEI: "), read(imeiStr, __func__), QT_TR_NOOP("Unknown IMEI"));
}

void StatusUpdater::setIpAddress(const QString& text)
{
    store(ipAddress, text, __func__);
}

QString StatusUpdater::getIpAddrStr() const
{
    return tr("IP address: ") + read(ipAddress, __func__); // the label alone, if there is no address
}

void StatusUpdater::setLanMacStr(const QString& text)
{
    store(lanMacStr, text, __func__);
}

QString StatusUpdater::getLanMacStr() const
{
    return macText(read(lanMacStr, __func__), INTERFACE_NAME_LAN, QT_TR_NOOP("Unknown MAC for LAN"),
                   QT_TR_NOOP("Enable LAN to be able to read MAC for LAN"));
}

void StatusUpdater::setWifiMacStr(const QString& text)
{
    store(wifiMacStr, text, __func__);
}

QString StatusUpdater::getWifiMacStr() const
{
    return macText(read(wifiMacStr, __func__), INTERFACE_NAME_WIFI, QT_TR_NOOP("Unknown MAC for WLAN"),
                   QT_TR_NOOP("Enable WLAN to be able to read MAC for WLAN"));
}

void StatusUpdater::setWifiBroadcastSsid(bool value)
{
    store(wifiBroadcastSsid, value, __func__);
}

bool StatusUpdater::getWifiBroadcastSsid() const
{
    return read(wifiBroadcastSsid, __func__);
}

void StatusUpdater::setWifiSsidStr(const QString& text)
{
    store(wifiSsidStr, text, __func__);
}

QString StatusUpdater::getWifiSsidStr() const
{
    return read(wifiSsidStr, __func__);
}

QString StatusUpdater::getWifiSsidUserStr() const
{
    return getWifiBroadcastSsid() ? tr("WLAN name: ") + getWifiSsidStr() : tr("(WLAN name hidden)");
}

void StatusUpdater::setWifiNumberOfClients(int value)
{
    store(wifiNumberOfClients, value, __func__);
    announce(__func__, "numberOfWlanClientsChanged", &StatusUpdater::numberOfWlanClientsChanged);
}

int StatusUpdater::getWifiNumberOfClients() const
{
    return read(wifiNumberOfClients, __func__);
}

void StatusUpdater::setSwBuildDetails(const QString& version, int buildNr, int redLabel,
                                      const QString& buildId, const QString& buildDate)
{
    StatusLock lock(statusMutex, __func__);
    swVersion = version;
    swBuildNr = buildNr;
    swRedLabel = redLabel;
    swBuildId = buildId;
    swBuildDate = buildDate;
}

QString StatusUpdater::getSoftwareVersion() const
{
    StatusLock lock(statusMutex, __func__);
    const QChar newLine = QChar::fromLatin1('\n');
    QString text;
    if (swRedLabel != 0)
        text += QString::fromLatin1("Warning: Red label software!\n"); // for testers, never translated
    text +=
        tr("Software version: ") + swVersion + newLine + tr("Build number: ") + QString::number(swBuildNr);
    if (swVersion.startsWith(QChar::fromLatin1('0'))) // a development version
        text += newLine + swBuildDate + newLine + swBuildId;
    return text;
}
