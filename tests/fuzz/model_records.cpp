// Fuzz target: records of the database into the model: alerts, sessions, bundles and their connections, the
// current bundle, bonding. The input is lines: what a record is, its key and its value.
//
//     i KEY VALUE   a whole number        s KEY VALUE   a text
//     n KEY VALUE   a number of any size  t KEY VALUE   a text without its NUL
//     b KEY VALUE   bytes                 d KEY         a deleted key
//     ! LETTERS     hands the records so far to the setters of these letters: a alerts, s sessions,
//                   b bundles, c current bundle, v bonding services
//
// After each the model is asked for all that comes of it. There is no database: what a setter reads of it by
// itself is missing.
// Legal end: a session's number that is none (assertion).
#include "fuzz/qttarget.h"

#include "runtime/config_client_impl.h"

#include <deque>

using fuzz::check;

namespace {

const size_t MAX_RECORDS = 200;

class Lines {
public:
    void add(char kind, const std::string& text)
    {
        if (records.size() == MAX_RECORDS || !strchr("isntbd", kind))
            return;
        const size_t blank = text.find(' ');
        keys.push_back(text.substr(0, blank));
        std::string value = blank == std::string::npos ? std::string() : text.substr(blank + 1);
        const int32_t number = static_cast<int32_t>(strtoll(value.c_str(), nullptr, 10));
        if (kind == 'i')
            value.assign(reinterpret_cast<const char*>(&number), sizeof(number));
        else if (kind == 's')
            value += '\0';
        else if (kind == 'd')
            value.clear();
        // Of just this size, as the sanitizer shall see its end.
        values.push_back(fuzz::exactCopy(reinterpret_cast<const uint8_t*>(value.data()), value.size()));
        config_data_t record;
        config_fill_record(&record, typeOf(kind), keys.back().c_str(), values.back().get(),
                           static_cast<uint32_t>(value.size()), 0);
        records.push_back(record);
    }
    unsigned count() const { return static_cast<unsigned>(records.size()); }
    const config_data_t* data() const { return records.data(); }
    void clear()
    {
        keys.clear();
        values.clear();
        records.clear();
    }

private:
    static uint32_t typeOf(char kind)
    {
        switch (kind) {
        case 'i':
        case 'n':
            return VX_CONFIG_TYPE_INT;
        case 's':
        case 't':
            return VX_CONFIG_TYPE_STRING;
        case 'b':
            return VX_CONFIG_TYPE_BLOB;
        }
        return VX_CONFIG_TYPE_NONE;
    }

    std::deque<std::string> keys;
    std::deque<std::unique_ptr<uint8_t[]>> values;
    std::vector<config_data_t> records;
};

const struct {
    char letter;
    void (StatusUpdater::*set)(unsigned int count, const config_data_t* records);
} SETTERS[] = {
    {'a', &StatusUpdater::setAlertList},
    {'s', &StatusUpdater::setActiveConnectionsAndBundles},
    {'b', &StatusUpdater::setDefinedBundlesCfg},
    {'c', &StatusUpdater::setCurrentBundleNumber},
    {'v', &StatusUpdater::setBondingServicesAvailable},
};

void askAll(StatusUpdater& model)
{
    for (const fmmi_evt_t& event : model.getEvents()) {
        check(memchr(event.shorttext, 0, sizeof(event.shorttext)), "an event's text without an end");
        check(model.eventExist(event.identifier), "an event that is not there");
        model.getEventText(event.identifier);
        model.getEventSeverityAsString(event.severity);
    }
    model.showAllSystemEvents();
    for (const bundle_t& bundle : model.getDefinedBundles()) {
        bundle_t found;
        check(model.getBundleByBundleNumber(bundle.bundleNumber, &found), "a bundle that is not there");
        check(bundle.name.size() <= 299, "a name without an end");
        model.bondingDemandsReached(bundle);
        model.getBackgroundTotalStr(bundle);
    }
    int running = 0;
    for (const bundle_t& session : Access::activeConnectionsAndBundles())
        running += session.status == BUNDLE_STATUS_INITIALIZING || session.status == BUNDLE_STATUS_RUNNING;
    check(running == model.getNumberOfActiveConnectionsAndBundles(), "another number of sessions");
    model.predefinedBundleActive();
    model.wanUsergroupZeroActive();
    model.getPredefinedBundleName();
    model.setExtendedSystemStatus(10);
    model.updateCurrentStatusTextId();
    check(running == 0 || model.getCurrentStatusTextId() == STATUS_TEXT_ACTIVE_BUNDLES,
          "sessions without their text");
    const QString text = model.getActiveBundlesStatusStr();
    check(!text.endsWith(QChar('\n')) || running > 0, "lines without a session");
}

void run(StatusUpdater& model, fuzz::Input& input)
{
    Lines lines;
    while (!input.empty()) {
        const std::string line = input.line();
        if (line.size() < 2)
            continue;
        if (line[0] != '!') {
            lines.add(line[0], line.substr(2));
            continue;
        }
        for (const auto& setter : SETTERS) {
            if (line.find(setter.letter, 1) == std::string::npos)
                continue;
            (model.*setter.set)(lines.count(), lines.data());
            askAll(model);
        }
        lines.clear();
    }
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    fuzz::startQt();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    fuzz::Input input(data, size);
    StatusUpdater& model = fuzz::freshModel();
    model.updateTranslatedStatusTexts();
    fuzz::survives([&] { run(model, input); }, {"*** ASSERT in statusupdater at "});
    return 0;
}
