// The parts of a log line that are too long for the header, and the flag.
#include "common/log.h"

#include "common/qtcompat.h"

#include <QMetaObject>
#include <QObject>

#include <atomic>

namespace {

// Set once at start and read by both threads; nothing else hangs on it.
std::atomic<bool> debugWanted(true);

QString addressText(const void* pointer)
{
    return QString::fromLatin1("0x") + QString::number(reinterpret_cast<quintptr>(pointer), 16);
}

} // namespace

void setDebugLogWanted(bool wanted)
{
    debugWanted.store(wanted, std::memory_order_relaxed);
}

bool debugLogWanted()
{
    return debugWanted.load(std::memory_order_relaxed);
}

LogLine& LogLine::operator<<(const void* pointer)
{
    if (m_wanted)
        m_text += addressText(pointer);
    return *this;
}

LogLine& LogLine::operator<<(const QObject* object)
{
    if (!m_wanted)
        return *this;
    if (!object) {
        m_text += QString::fromLatin1("QObject(0x0)");
        return *this;
    }
    m_text += QString::fromLatin1(object->metaObject()->className());
    m_text += QChar::fromLatin1('(') + addressText(object);
    if (!object->objectName().isEmpty())
        m_text += QString::fromLatin1(", name=") + object->objectName();
    m_text += QChar::fromLatin1(')');
    return *this;
}

void LogLine::append(const char* text)
{
    m_text += QString::fromUtf8(text ? text : "(null)");
}

void LogLine::send()
{
    qtcompat::sendMessage(m_type, m_text);
}

QString hexText(unsigned long long value)
{
    return QString::number(value, 16).toUpper();
}
