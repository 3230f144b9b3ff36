// The tests that every reader of one key has to pass, over a table of readers: key present, missing, of
// another type, out of range, with the lines that it logs.
#ifndef LUMENPANEL_TESTS_BUSIF_SINGLEVALUE_H
#define LUMENPANEL_TESTS_BUSIF_SINGLEVALUE_H

#include "busif/busfixture.h"

namespace singlevalue {

struct Given {
    sim::Value value;
    QString kept; // what the model has afterwards
    QString log;  // a line that must come, whole; null: no complaint must come
};

struct Case {
    const char* name;
    void (*read)();
    const char* key;
    QString (*kept)();
    QString keptWhenMissing;
    QString logWhenMissing; // null: no complaint of the reader's own
    QList<Given> values;
};

// A reader with the name that its lines begin with.
#define READER(function) #function, function

inline QString truth(bool value)
{
    return value ? "true" : "false";
}
inline QString digits(int value)
{
    return QString::number(value);
}

// --- Values ------------------------------------------------------------------------------------------------

inline Given number(int value, const QString& kept, const QString& log = QString())
{
    return {sim::Value::integer(value), kept, log};
}
// Numbers that are kept as they are.
inline QList<Given> numbers(const QList<int>& values)
{
    QList<Given> result;
    for (int value : values)
        result.append(number(value, digits(value)));
    return result;
}
// 1, 0, and numbers that the reader calls illegal and takes for false.
inline QList<Given> truthOr(const char* reader, const QList<int>& illegal)
{
    QList<Given> result = {number(1, "true"), number(0, "false")};
    for (int value : illegal)
        result.append(
            number(value, "false", QString("%1(): ERROR!!! illegal value=%2").arg(reader).arg(value)));
    return result;
}
// Numbers that the reader doesn't support and takes for -1.
inline QList<Given> unsupported(const char* reader, const QList<int>& values)
{
    QList<Given> result;
    for (int value : values)
        result.append(number(value, "-1", QString("%1(): value=%2 not supported!").arg(reader).arg(value)));
    return result;
}

// --- Readers -----------------------------------------------------------------------------------------------

// A reader of a number that complains of a missing key in the usual words.
inline Case ofNumber(const char* name, void (*read)(), const char* key, QString (*kept)(),
                     const QString& keptWhenMissing, const QList<Given>& values)
{
    return {name,  read, key, kept, keptWhenMissing, QString("%1(): %2 not in database???").arg(name, key),
            values};
}
// The same with words of its own.
inline Case ofNumber(const char* name, void (*read)(), const char* key, QString (*kept)(),
                     const QString& keptWhenMissing, const QString& logWhenMissing,
                     const QList<Given>& values)
{
    return {name, read, key, kept, keptWhenMissing, logWhenMissing, values};
}
// A reader of a text, which is empty if it is missing.
inline Case ofText(const char* name, void (*read)(), const char* key, QString (*kept)(), const char* value)
{
    return {name,
            read,
            key,
            kept,
            "",
            QString("%1(): ERROR !!! %2 not in database???").arg(name, key),
            {{sim::Value::text(value), QString::fromUtf8(value), QString()}}};
}

// --- The test ----------------------------------------------------------------------------------------------

// The columns of a data-driven test over all values of all readers.
inline void addRows(const QList<Case>& cases)
{
    QTest::addColumn<int>("reader");
    QTest::addColumn<int>("value"); // -1 missing, -2 of another type, else index of the value
    for (int reader = 0; reader < cases.size(); ++reader) {
        QTest::addRow("%s, missing", cases[reader].name) << reader << -1;
        QTest::addRow("%s, another type", cases[reader].name) << reader << -2;
        for (int value = 0; value < cases[reader].values.size(); ++value) {
            const sim::Value& given = cases[reader].values[value].value;
            if (given.isInt())
                QTest::addRow("%s, %d", cases[reader].name, given.toInt()) << reader << value;
            else
                QTest::addRow("%s, \"%s\"", cases[reader].name, given.toText().c_str()) << reader << value;
        }
    }
}

inline void check(const BusFixture& bus, const Case& reader, const QString& kept, const QString& log)
{
    const QString name = reader.name;
    QCOMPARE(reader.kept(), kept);
    QCOMPARE(bus.log.count(QtDebugMsg, name + "(): Start of function"), 1);
    // Complaints begin with the reader's name, or with the word itself.
    QStringList complaints;
    const QStringList all = bus.log.texts();
    for (const QString& line : all.filter("not in database") + all.filter("ERROR") +
                                   all.filter("not supported") + all.filter("Using ") +
                                   all.filter("Warning: Could")) {
        const bool own = line.startsWith(name) || line.startsWith("ERROR");
        if (own && !complaints.contains(line))
            complaints.append(line);
    }
    QCOMPARE(complaints, log.isNull() ? QStringList() : QStringList(log));
    if (!log.isNull())
        QCOMPARE(bus.log.count(QtDebugMsg, log), 1);
}

inline void run(BusFixture& bus, const Case& reader, int value)
{
    // The model first holds another value, so that a default is seen to replace it.
    bus.terminal.set(reader.key, reader.values.first().value);
    reader.read();
    QString kept = reader.keptWhenMissing;
    QString log = reader.logWhenMissing;
    if (value == -1) {
        bus.terminal.erase(reader.key);
    } else if (value == -2) {
        const bool isText = !reader.values.first().value.isInt();
        bus.terminal.set(reader.key, isText ? sim::Value::integer(1) : sim::Value::text("1"));
    } else {
        bus.terminal.set(reader.key, reader.values[value].value);
        kept = reader.values[value].kept;
        log = reader.values[value].log;
    }
    bus.clearLogs();
    reader.read();
    QCOMPARE(bus.reads(), QStringList(reader.key));
    check(bus, reader, kept, log);
}

} // namespace singlevalue

#endif
