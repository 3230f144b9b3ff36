// Starting a bundle, against the real server: what is read, deleted and written, and what the log says.
#include "busif/bundle_activation.h"

#include "busif/bundle_records.h"
#include "busif/busfixture.h"
#include "sim/syslogtap/syslogtap.h"

#include <climits>

namespace {

const char* const QOS_WORDS[] = {"traffic_class",
                                 "max_bit_rate_upload",
                                 "max_bit_rate_download",
                                 "guaranteed_bit_rate_upload",
                                 "guaranteed_bit_rate_download",
                                 "delivery_order",
                                 "max_sdu_size",
                                 "sdu_error_rate",
                                 "delivery_of_erroneous_sdus",
                                 "transfer_delay",
                                 "traffic_handling_priority"};

// The keys of the one message, in order, with their values as text.
typedef QPair<QString, QString> Record;
typedef QList<Record> Records;

QString shown(const sim::Value& value)
{
    return value.isInt() ? QString::number(value.toInt())
                         : '"' + QString::fromStdString(value.toText()) + '"';
}

void append(Records& records, const QString& prefix, std::initializer_list<const char*> words,
            const QStringList& values)
{
    int i = 0;
    for (const char* word : words)
        records.append(Record(prefix + word, values[i++]));
}

// What one connection of index `stored` gives, see storeConnection().
void appendQos(Records& records, int index, int stored)
{
    const auto value = [stored](int word) { return QString::number(100 * stored + word); };
    append(records, QString("ram.net.qos.0.%1.").arg(index),
           {"traffic_class",
            "guaranteed_bit_rate_d",
            "guaranteed_bit_rate_u",
            "max_bit_rate_d",
            "max_bit_rate_u",
            "delivery_order",
            "transfer_delay",
            "traffic_handling_priority",
            "delivery_of_erroneous_sdus",
            "sdu_error_rate",
            "max_sdu_size",
            "entry_owner",
            "active",
            "cid",
            "residual_bit_error_rate",
            "precedence",
            "delay",
            "reliability",
            "peak",
            "mean"},
           {value(0),  value(4), value(3), value(2), value(1), value(5), value(9),
            value(10), value(8), value(7), value(6), "0",      "1",      QString::number(index + 1),
            "0",       "0",      "0",      "0",      "0",      "0"});
}

void appendPdp(Records& records, int index, const QString& header, const QString& type, const QString& apn)
{
    const QString prefix = QString("ram.net.pdp_contexts.0.%1.").arg(index);
    append(records, prefix,
           {"entry_owner", "active", "cid", "pcid", "data_comp", "header_comp", "secondary_context"},
           {"0", "1", QString::number(index + 1), "1", "0", header, index == 0 ? "0" : "1"});
    if (index == 0)
        append(records, prefix, {"apn_type", "ip4_addr", "apn", "pdp_type", "pd1", "pd2", "high_prio_pool"},
               {type, "\"\"", '"' + apn + '"', "0", "\"user\"", "\"secret\"", "0"});
}

void appendFilter(Records& records, int index, int cid, int stored, const QStringList& rest)
{
    append(records, QString("ram.net.tft.0.%1.").arg(index),
           {"entry_owner", "active", "cid", "packet_filter_identifier", "evaluation_precedence",
            "protocol_number", "tos", "tos_mask", "spi", "source_address", "source_mask", "source_port_begin",
            "source_port_end", "destination_port_begin", "destination_port_end", "bit_mask"},
           QStringList(
               {"0", "1", QString::number(cid), QString::number(stored + 1), QString::number(index + 1)}) +
               rest);
}

Records startingWith(const QString& prefix, const Records& records)
{
    Records found;
    for (const auto& record : records) {
        if (record.first.startsWith(prefix))
            found.append(record);
    }
    return found;
}

// What a filter of bit mask 0 gives.
const QStringList OPEN_FILTER = {"0", "-1",    "0", "-1",    "\"\"", "\"255.255.255.0\"",
                                 "0", "65535", "0", "65535", "0"};

} // namespace

class BundleActivationTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase()
    {
        bus = new BusFixture;
        syslogtap_start();
    }
    void cleanupTestCase() { delete bus; }
    void init()
    {
        bus->reset();
        syslogtap_clear();
    }

    void oneConnection()
    {
        storeBundle(3, 1);
        storeConnection(3, 0, 7);
        QCOMPARE(start(3), 0);
        Records expected;
        appendQos(expected, 0, 7);
        appendPdp(expected, 0, "5", "1", "");
        expected.append(Record("ram.net.user_groups.0.current_bundle", "3"));
        QCOMPARE(written(), expected);
        QVERIFY(bus->terminal.waitForWrite("ram.net.user_groups.0.activated", sim::Value::integer(1)));
        // All in one message of that name, the activation behind it in one of its own.
        QCOMPARE(bus->terminal.messagesNamed("config.writev").size(), size_t(1));
        QCOMPARE(bus->terminal.messagesNamed("config.write.ram.net.user_groups.0.activated").size(),
                 size_t(1));
        QCOMPARE(QString::fromStdString(bus->terminal.messages().back().name),
                 QString("config.write.ram.net.user_groups.0.activated"));
        QCOMPARE(logged(6, "sleepMs(200)"), 1);
        QCOMPARE(logged(6, "start_bundle: numberOfConnectionsInBundle=1"), 1);
        QCOMPARE(logged(6, "start_bundle: numberOfTftFiltersInBundle=0"), 1);
        QCOMPARE(logged(6, "start_bundle: numberOfElementsInPrecItems=35"), 1);
        QCOMPARE(logged(6, "start_bundle: debug precItems: last precItemNo = 34"), 1);
        QCOMPARE(logged(7, "start_bundle: numberOfElementsInPrecItems(=35) , number of precItems (=35)."), 1);
        QCOMPARE(logged(6, "start_bundle: precItems[34].name=ram.net.user_groups.0.current_bundle , data=3"),
                 1);
        QCOMPARE(logged(6, "start_bundle: precItems[31].name=ram.net.pdp_contexts.0.0.pd1 , data=user"), 1);
        QCOMPARE(errors(), QStringList());
    }

    // An empty text has its NUL: without it the write would delete the key.
    void emptyTextsAreWrittenWithTheirNul()
    {
        storeBundle(0, 0);
        storeConnection(0, 0, 1);
        QCOMPARE(start(0), 0);
        bus->terminal.settle();
        QVERIFY(bus->terminal.get("ram.net.pdp_contexts.0.0.ip4_addr") == sim::Value::text(""));
        QVERIFY(bus->terminal.get("ram.net.pdp_contexts.0.0.apn") == sim::Value::text(""));
    }

    void readsInOrder()
    {
        storeBundle(3, 2);
        storeConnection(3, 0, 7);
        storeFilterOf(3, 0, 0, 4);
        storeFilter(4, 63);
        QCOMPARE(start(3), 0);
        QStringList expected = {"cfg.admin.bundle.3.header_comp",
                                "cfg.admin.bundle.3.apn_type",
                                "cfg.admin.bundle.3.apn_user_defined_name",
                                "cfg.admin.bundle.3.pd1",
                                "cfg.admin.bundle.3.pd2",
                                "readm cfg.admin.bundle.3.connections.*"};
        for (const char* word : QOS_WORDS)
            expected.append(QString("cfg.admin.connection.7.") + word);
        for (const char* word : {"bit_mask", "source_ip", "subnet_mask", "prot_no", "dest_port_range_start",
                                 "dest_port_range_end", "source_port_range_start", "source_port_range_end",
                                 "ipsec_spi", "type_of_service", "type_of_service_mask"})
            expected.append(QString("cfg.admin.traffic_flow_filters.4.") + word);
        QCOMPARE(bus->reads(), expected);
    }

    void cleanupComesFirst()
    {
        for (const char* key : {"ram.net.tft.0.5.cid", "ram.net.qos.0.5.cid", "ram.net.pdp_contexts.0.5.cid"})
            bus->terminal.set(key, 6);
        bus->terminal.set("ram.net.other", 1);
        start(3);
        bus->terminal.settle();
        QStringList deletions;
        for (const sim::Message& message : bus->terminal.messages())
            deletions.append(QString::fromStdString(message.name));
        QCOMPARE(deletions.mid(0, 3),
                 QStringList({"config.delm.ram.net.tft.0.*", "config.delm.ram.net.qos.0.*",
                              "config.delm.ram.net.pdp_contexts.0.*"}));
        QVERIFY(bus->terminal.list("ram.net.").size() == 1);
        QCOMPARE(logged(6, "start_bundle: start of function"), 1);
        QCOMPARE(logged(6, "start_bundle: Successfully cleaned up before setting new values."), 1);
    }

    // "A bundle with no connections keys: cleanup happens, -1 is returned, and neither current_bundle nor
    // activated is written."
    void noConnections()
    {
        storeBundle(3, 1);
        bus->terminal.set("ram.net.qos.0.0.cid", 1);
        QCOMPARE(start(3), -1);
        bus->terminal.settle();
        QVERIFY(!bus->terminal.has("ram.net.qos.0.0.cid"));
        QCOMPARE(written(), Records());
        QVERIFY(!bus->terminal.has("ram.net.user_groups.0.activated"));
        QCOMPARE(logged(6, "start_bundle: numberOfConnectionsInBundle=0"), 1);
    }

    // "A bundle with three connections uses qos indices 0, 1, 2 and cid 1, 2, 3, whatever their
    // connection_index numbers are, and only context 0 has an apn." "Connections appear in the order of the
    // array, that is by their number under .connections., and not in the order of the records."
    void threeConnections()
    {
        storeBundle(1, 2);
        storeConnection(1, 10, 4); // comes before 2 and 3 in the list of keys
        storeConnection(1, 2, 9);
        storeConnection(1, 3, 0);
        QCOMPARE(start(1), 0);
        Records expected;
        const int stored[] = {9, 0, 4};
        for (int i = 0; i < 3; ++i) {
            appendQos(expected, i, stored[i]);
            appendPdp(expected, i, "5", "2", "my.apn");
        }
        expected.append(Record("ram.net.user_groups.0.current_bundle", "1"));
        QCOMPARE(written(), expected);
        int apns = 0;
        for (const auto& record : written())
            apns += record.first.endsWith(".apn");
        QCOMPARE(apns, 1);
    }

    // "Two connections of two filters each give the tft indices 0 to 3 with precedence 1 to 4, and
    // packet_filter_identifier = the stored filter number + 1." "A filter with .bit_mask 0 still gives all 16
    // records."
    void twoConnectionsOfTwoFilters()
    {
        storeBundle(1, 1);
        storeConnection(1, 0, 1);
        storeConnection(1, 1, 2);
        const int stored[] = {8, 6, 20, 0};
        for (int filter = 0; filter < 4; ++filter) {
            storeFilterOf(1, filter / 2, filter % 2 ? 7 : 3, stored[filter]);
            storeFilter(stored[filter], 0);
        }
        QCOMPARE(start(1), 0);
        Records expected;
        for (int connection = 0; connection < 2; ++connection) {
            appendQos(expected, connection, connection + 1);
            for (int filter = 2 * connection; filter < 2 * connection + 2; ++filter)
                appendFilter(expected, filter, connection + 1, stored[filter], OPEN_FILTER);
            appendPdp(expected, connection, "5", "1", "");
        }
        expected.append(Record("ram.net.user_groups.0.current_bundle", "1"));
        QCOMPARE(written(), expected);
        // What a filter does not use is not read.
        for (const QString& key : bus->reads().filter("traffic_flow_filters"))
            QVERIFY2(key.endsWith(".bit_mask"), qPrintable(key));
        QCOMPARE(logged(6, "start_bundle: Handling connectionsInPackage[1].filterArray[3]=20"), 1);
        QCOMPARE(logged(6, "start_bundle: filterData[2].packet_filter_identifier = 21"), 1);
        QCOMPARE(logged(6, "start_bundle: filterData[2].source_mask = 255.255.255.0"), 1);
    }

    void filterBits_data()
    {
        QTest::addColumn<int>("mask");
        QTest::addColumn<QStringList>("values");
        QTest::addColumn<QString>("name");
        const auto row = [](int mask, std::initializer_list<QPair<int, const char*>> changes,
                            const char* name) {
            QStringList values = OPEN_FILTER;
            values[10] = QString::number(mask);
            for (const auto& change : changes)
                values[change.first] = change.second;
            QTest::addRow("%d", mask) << mask << values << QString(name);
        };
        row(1, {{4, "\"10.1.2.3\""}, {5, "\"255.0.0.0\""}}, "SMGW_TFT_BITMASK_IP_ADDRESS_AND_SUBNET_MASK");
        row(2, {{0, "17"}}, "SMGW_TFT_BITMASK_PROTOCOL_NUMBER");
        row(4, {{8, "80"}, {9, "90"}}, "SMGW_TFT_BITMASK_DESTINATION_PORT_RANGE");
        row(8, {{6, "1000"}, {7, "2000"}}, "SMGW_TFT_BITMASK_SOURCE_PORT_RANGE");
        row(16, {{3, "4711"}}, "SMGW_TFT_BITMASK_IPSEC_SPI");
        row(32, {{1, "46"}, {2, "252"}}, "SMGW_TFT_BITMASK_TOS");
        row(64, {}, ""); // a bit that nobody knows is passed on
    }
    void filterBits()
    {
        QFETCH(int, mask);
        QFETCH(QStringList, values);
        QFETCH(QString, name);
        storeBundle(1, 1);
        storeConnection(1, 0, 1);
        storeFilterOf(1, 0, 0, 5);
        storeFilter(5, mask);
        QCOMPARE(start(1), 0);
        Records expected;
        appendFilter(expected, 0, 1, 5, values);
        QCOMPARE(startingWith("ram.net.tft", written()), expected);
        QStringList names;
        for (const syslogtap::Line& line : syslogtap::lines()) {
            const QString text = QString::fromStdString(line.text);
            if (text.startsWith("start_bundle: filterData[0].bit_mask = SMGW"))
                names.append(text.mid(39));
        }
        QCOMPARE(names, name.isEmpty() ? QStringList() : QStringList(name));
    }

    // ".apn_type other than 2 gives an empty apn, and .apn_user_defined_name is not read."
    void apnOfAnotherType()
    {
        storeBundle(1, 0);
        storeConnection(1, 0, 1);
        QCOMPARE(start(1), 0);
        QVERIFY(bus->reads().filter("apn_user_defined_name").isEmpty());
        QVERIFY(written().contains(Record("ram.net.pdp_contexts.0.0.apn", "\"\"")));
    }

    // "A missing .pd1 stops the start at step 12, and the three run-time key families stay deleted."
    void missingPd1StopsTheStart()
    {
        bus->terminal.set("ram.net.tft.0.0.cid", 1);
        storeBundle(1, 1);
        storeConnection(1, 0, 1);
        bus->terminal.erase("cfg.admin.bundle.1.pd1");
        QCOMPARE(start(1), -1);
        bus->terminal.settle();
        QCOMPARE(written(), Records());
        QVERIFY(bus->terminal.list("ram.net.").empty());
        QCOMPARE(errors(),
                 QStringList({"start_bundle: Cound not read cfg.admin.bundle.1.pd1",
                              "start_bundle: ERROR!!! Cound not start bundle with bundleNumber 1"}));
        // Reading went on all the same.
        QVERIFY(bus->reads().contains("cfg.admin.connection.1.traffic_handling_priority"));
    }

    // The result is the sum; what can't be read counts as 0 for what is read next.
    void failuresAddUp()
    {
        storeConnection(1, 0, 1);
        storeFilterOf(1, 0, 0, 5); // a filter that isn't stored at all
        bus->terminal.erase("cfg.admin.connection.1.transfer_delay");
        QCOMPARE(start(1), -6); // header_comp, apn_type, pd1, pd2, the delay, the bit mask
        QCOMPARE(written(), Records());
        QVERIFY(bus->reads().filter("apn_user_defined_name").isEmpty());
        QCOMPARE(errors().size(), 7);
    }

    // Stored numbers without a place, wrong types and bad names are logged and skipped; the rest starts.
    void badRecords_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<bool>("isText");
        QTest::addColumn<QString>("complaint");
        const auto row = [](const char* title, const QString& rest, bool isText, const QString& complaint) {
            const QString key = "cfg.admin.bundle.1.connections." + rest;
            QTest::newRow(title) << key << isText
                                 << "start_bundle: ERROR!!! " + QString(complaint).replace("KEY", key);
        };
        row("connection 11", "11.connection_index", false,
            "connectionNumber=11 out of range in prec[i].name=KEY");
        row("connection -1", "-1.connection_index", false,
            "connectionNumber=-1 out of range in prec[i].name=KEY");
        row("filter 8", "0.filters.8.index", false, "filterNumber=8 out of range in prec[i].name=KEY");
        row("filter -1", "0.filters.-1.index", false, "filterNumber=-1 out of range in prec[i].name=KEY");
        row("huge", "99999999999999999999.connection_index", false,
            "connectionNumber=2147483647 out of range in prec[i].name=KEY");
        row("0 in the lowest 32 bits", "4294967296.connection_index", false,
            "connectionNumber=2147483647 out of range in prec[i].name=KEY");
        row("filter that is 0 in the lowest 32 bits", "0.filters.4294967296.index", false,
            "filterNumber=2147483647 out of range in prec[i].name=KEY");
        row("far below 0", "-99999999999999999999.connection_index", false,
            "connectionNumber=-2147483648 out of range in prec[i].name=KEY");
        row("key that ends with the filter", "0.filters.2", false,
            "Could not find filter number in tmpFilterString=2");
        row("filters without a position", "0.filters", false,
            "Could not find filter number in tmpFilterString=");
        row("no connection number", "connection_index", false,
            "Could not find connectionIndex in prec[i].name=KEY");
        row("index is a text", "4.connection_index", true,
            "Wrong type. Expected VX_CONFIG_TYPE_INT for prec[i].name=KEY but got 2");
        row("filter is a text", "0.filters.2.index", true,
            "Wrong type. Expected VX_CONFIG_TYPE_INT for prec[i].name=KEY but got 2");
    }
    void badRecords()
    {
        QFETCH(QString, key);
        QFETCH(bool, isText);
        QFETCH(QString, complaint);
        storeBundle(1, 1);
        storeConnection(1, 0, 1);
        bus->terminal.set(key.toStdString(), isText ? sim::Value::text("3") : sim::Value::integer(3));
        QCOMPARE(start(1), 0);
        QCOMPARE(errors(), QStringList(complaint));
        QCOMPARE(written().size(), 35);
    }

    // There is no such filter, so that the start fails; the sum that is made with its number must not.
    void largestNumberOfAFilter()
    {
        storeBundle(1, 1);
        storeConnection(1, 0, 1);
        bus->terminal.set("cfg.admin.bundle.1.connections.0.filters.0.index", INT_MAX);
        QVERIFY(start(1) < 0);
        QCOMPARE(written(), Records());
    }

    // Words of the key that are neither an index nor a filter are no error.
    void otherWordsAreIgnored()
    {
        storeBundle(1, 1);
        storeConnection(1, 0, 1);
        bus->terminal.set("cfg.admin.bundle.1.connections.0.comment", "x");
        QCOMPARE(start(1), 0);
        QCOMPARE(errors(), QStringList());
    }

    // A record that counts as both: an index of a connection, and a filter at position 1.
    void oneRecordCanBeBoth()
    {
        storeBundle(1, 1);
        bus->terminal.set("cfg.admin.bundle.1.connections.0.filters.1.connection_index", 1);
        storeConnectionValues(1);
        storeFilter(1, 0);
        QCOMPARE(start(1), 0);
        QCOMPARE(written().size(), 35 + 16);
    }

    // As many as there is room for: eleven connections of eight filters each.
    void fullBundle()
    {
        storeBundle(1, 1);
        for (int connection = 0; connection < 11; ++connection) {
            storeConnection(1, connection, connection);
            for (int position = 0; position < 8; ++position)
                storeFilterOf(1, connection, position, position);
        }
        for (int filter = 0; filter < 8; ++filter)
            storeFilter(filter, 63);
        QCOMPARE(start(1), 0);
        QCOMPARE(written().size(), 27 * 11 + 16 * 88 + 8);
        QCOMPARE(logged(7, "start_bundle: numberOfElementsInPrecItems(=1713) , number of precItems (=1713)."),
                 1);
    }

    // A text longer than its place is cut, a per cent sign in it does no harm.
    void longText()
    {
        storeBundle(1, 2);
        storeConnection(1, 0, 1);
        bus->terminal.set("cfg.admin.bundle.1.apn_user_defined_name", "%s%n" + std::string(300, 'a'));
        QCOMPARE(start(1), 0);
        QVERIFY(
            written().contains(Record("ram.net.pdp_contexts.0.0.apn", "\"%s%n" + QString(195, 'a') + "\"")));
    }

    void arrayTooSmallIsCountedAndLosesTheRest()
    {
        config_data_t items[1];
        char names[1][PrecItems::NAME_SIZE];
        int numbers[1];
        PrecItems precItems = {items, names, numbers, 1, 0};
        char text[] = "x";
        precItems.addNumber("ram.net.qos.0.", 0, "cid", 1);
        precItems.addText("ram.net.qos.0.", 0, "name", text);
        precItems.addNumberAt("ram.x", 2);
        QCOMPARE(precItems.count, 3);
        QCOMPARE(precItems.stored(), 1);
        QCOMPARE(QString(items[0].name), QString("ram.net.qos.0.0.cid"));
    }

    // The bus is lost when the connections are asked for: nothing is known of them, and nothing is written.
    // Then "cleanup fails: -1, nothing is read or written". Last, since the connection is lost then.
    void zLostBusStopsAtTheConnectionsAndAtTheCleanup()
    {
        storeBundle(1, 1);
        storeConnection(1, 0, 1);
        bus->terminal.answerWith([](const sim::Message& message) {
            std::optional<sim::Terminal::RawAnswer> answer;
            if (message.name.rfind("config.readm.", 0) == 0) {
                answer.emplace();
                answer->close = true;
            }
            return answer;
        });
        QCOMPARE(start(1), -1);
        bus->terminal.answerWith(nullptr);
        QCOMPARE(errors(), QStringList("start_bundle: Cound not read cfg.admin.bundle.1.connections.*"));
        QCOMPARE(written(), Records());

        bus->turnUntil([] { return conn->fd < 0; });
        bus->terminal.clearLogs();
        syslogtap_clear();
        QCOMPARE(start_bundle(1), -1);
        QCOMPARE(errors(),
                 QStringList({"netparm_setup: cleanup_bundle: ERROR!!!!!: Could not clean up values. "
                              "result=-3",
                              "start_bundle: ERROR!!!!!: Could not clean up before setting new "
                              "values."}));
        QVERIFY(bus->terminal.messages().empty());
    }

private:
    // Header compression 5, user "user", password "secret", APN "my.apn".
    void storeBundle(int number, int apnType)
    {
        const std::string prefix = "cfg.admin.bundle." + std::to_string(number) + ".";
        bus->terminal.set(prefix + "header_comp", 5);
        bus->terminal.set(prefix + "apn_type", apnType);
        bus->terminal.set(prefix + "apn_user_defined_name", "my.apn");
        bus->terminal.set(prefix + "pd1", "user");
        bus->terminal.set(prefix + "pd2", "secret");
    }
    void storeConnection(int bundle, int number, int stored)
    {
        bus->terminal.set("cfg.admin.bundle." + std::to_string(bundle) + ".connections." +
                              std::to_string(number) + ".connection_index",
                          stored);
        storeConnectionValues(stored);
    }
    // Value 100 * index + place of the word.
    void storeConnectionValues(int stored)
    {
        for (int word = 0; word < 11; ++word)
            bus->terminal.set("cfg.admin.connection." + std::to_string(stored) + "." + QOS_WORDS[word],
                              100 * stored + word);
    }
    void storeFilterOf(int bundle, int connection, int position, int stored)
    {
        bus->terminal.set("cfg.admin.bundle." + std::to_string(bundle) + ".connections." +
                              std::to_string(connection) + ".filters." + std::to_string(position) + ".index",
                          stored);
    }
    void storeFilter(int number, int mask)
    {
        const std::string prefix = "cfg.admin.traffic_flow_filters." + std::to_string(number) + ".";
        bus->terminal.set(prefix + "bit_mask", mask);
        bus->terminal.set(prefix + "source_ip", "10.1.2.3");
        bus->terminal.set(prefix + "subnet_mask", "255.0.0.0");
        bus->terminal.set(prefix + "prot_no", 17);
        bus->terminal.set(prefix + "dest_port_range_start", 80);
        bus->terminal.set(prefix + "dest_port_range_end", 90);
        bus->terminal.set(prefix + "source_port_range_start", 1000);
        bus->terminal.set(prefix + "source_port_range_end", 2000);
        bus->terminal.set(prefix + "ipsec_spi", 4711);
        bus->terminal.set(prefix + "type_of_service", 46);
        bus->terminal.set(prefix + "type_of_service_mask", 252);
    }
    int start(int bundle)
    {
        bus->clearLogs();
        const int result = start_bundle(bundle);
        bus->terminal.settle();
        return result;
    }
    Records written() const
    {
        Records records;
        for (const sim::WriteRecord& write : bus->terminal.writes()) {
            if (write.verb == "writev")
                records.append(Record(QString::fromStdString(write.key), shown(write.value)));
        }
        return records;
    }
    static int logged(int priority, const char* text) { return int(syslogtap::count(priority, text)); }
    static QStringList errors()
    {
        QStringList texts;
        for (const syslogtap::Line& line : syslogtap::lines()) {
            if (line.priority == 3)
                texts.append(QString::fromStdString(line.text));
        }
        return texts;
    }

    BusFixture* bus = nullptr;
};

QTEST_MAIN(BundleActivationTest)
#include "bundle_activation_test.moc"
