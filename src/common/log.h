// The log lines of the front end: logDebug() << "Class::function(): value=" << value;
//
// A line is put together here, part by part, without blanks or quotes of Qt's making, and goes as one
// text into Qt's message path when the expression ends. What becomes of it there is the message
// handler's business (app/guiapp.h).
// Any thread may log. A line that isn't wanted formats nothing, but its arguments are still evaluated:
// where an argument is dear, ask debugLogWanted() first.
#ifndef LUMENPANEL_COMMON_LOG_H
#define LUMENPANEL_COMMON_LOG_H

#include <QChar>
#include <QString>
#include <QtGlobal>

class QObject;

// Whether debug lines are put together at all. Process-wide, true at start: until the application
// object has read the command line nobody knows whether they are wanted, and what was not formatted
// cannot be brought back. The application object sets it once; tests set it as they like.
void setDebugLogWanted(bool wanted);
bool debugLogWanted();

// One line of the log. The destructor hands it over.
class LogLine {
public:
    explicit LogLine(QtMsgType type) : m_type(type), m_wanted(type != QtDebugMsg || debugLogWanted()) {}
    LogLine(LogLine&& other) : m_type(other.m_type), m_wanted(other.m_wanted)
    {
        m_text.swap(other.m_text);
        other.m_wanted = false;
    }
    ~LogLine()
    {
        if (m_wanted)
            send();
    }

    LogLine& operator<<(const char* text) // UTF-8; null prints "(null)"
    {
        if (m_wanted)
            append(text);
        return *this;
    }
    LogLine& operator<<(const QString& text)
    {
        if (m_wanted)
            m_text += text;
        return *this;
    }
    LogLine& operator<<(QChar character)
    {
        if (m_wanted)
            m_text += character;
        return *this;
    }
    LogLine& operator<<(bool value) // "true" or "false"
    {
        return *this << (value ? "true" : "false");
    }
    LogLine& operator<<(int value) { return number(value); } // enumerations come here, too
    LogLine& operator<<(long value) { return number(value); }
    LogLine& operator<<(long long value) { return number(value); }
    LogLine& operator<<(unsigned int value) { return number(value); }
    LogLine& operator<<(unsigned long value) { return number(value); }
    LogLine& operator<<(unsigned long long value) { return number(value); }
    LogLine& operator<<(double value) { return number(value); } // six significant digits
    LogLine& operator<<(const void* pointer);                   // "0x" and lower-case digits
    LogLine& operator<<(const QObject* object);                 // class, address, and name if it has one

private:
    LogLine(const LogLine&);
    LogLine& operator=(const LogLine&);

    template <typename Number> LogLine& number(Number value)
    {
        if (m_wanted)
            m_text += QString::number(value);
        return *this;
    }
    void append(const char* text);
    void send();

    QString m_text;
    QtMsgType m_type;
    bool m_wanted;
};

inline LogLine logDebug()
{
    return LogLine(QtDebugMsg);
}
inline LogLine logWarning()
{
    return LogLine(QtWarningMsg);
}
inline LogLine logCritical()
{
    return LogLine(QtCriticalMsg);
}

// Upper-case hexadecimal digits without a prefix, as event ids are logged: logDebug() << hexText(id).
QString hexText(unsigned long long value);

#endif
