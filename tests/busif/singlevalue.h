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

inline Given number(int value, const QString& kept, const QString& log = QString())
{
    return {sim::Value::integer(value), kept, log};
}
inline Given number(int value)
{
    return number(value, QString::number(value));
}
inline Given text(const char* value)
{
    return {sim::Value::text(value), QString::fromUtf8(value), QString()};
}
inline QString truth(bool value)
{
    return value ? "true" : "false";
}
inline QString digits(int value)
{
    return QString::number(value);
}

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
