// The terminal's public functions: each goes to the terminal's thread, or to its logs. What happens there is
// in terminal_impl.cpp.
#include "sim/terminal_impl.h"

#include "sim/initial_values.h"

#include <algorithm>
#include <cstdlib>

namespace sim {

Terminal::Terminal() : Terminal(TerminalOptions()) {}

Terminal::Terminal(const TerminalOptions& options) : impl(std::make_unique<Impl>(*this, options)) {}

Terminal::~Terminal()
{
    stop();
}

const std::string& Terminal::address() const
{
    return impl->address;
}

void Terminal::useForProcess() const
{
    setenv("CBUS_ADDR", impl->address.c_str(), 1);
}

bool Terminal::running() const
{
    std::lock_guard<std::mutex> lock(impl->mutex);
    return impl->state == Impl::State::Running;
}

std::string Terminal::error() const
{
    std::lock_guard<std::mutex> lock(impl->mutex);
    return impl->error;
}

void Terminal::run()
{
    if (running())
        impl->loopUntilQuit();
}

void Terminal::requestQuit()
{
    impl->requestQuit();
}

void Terminal::stop()
{
    impl->stop();
}

bool Terminal::start()
{
    return impl->start();
}

// --- The database

void Terminal::set(const std::string& key, int32_t number)
{
    setAll({{key, Value::integer(number)}});
}

void Terminal::set(const std::string& key, const std::string& text)
{
    setAll({{key, Value::text(text)}});
}

void Terminal::set(const std::string& key, const Value& value)
{
    setAll({{key, value}});
}

void Terminal::setAll(const std::vector<std::pair<std::string, Value>>& values)
{
    std::vector<Write> writes;
    for (const auto& [key, value] : values)
        writes.push_back({key, value});
    impl->run([&] { impl->database.apply(writes); });
}

bool Terminal::erase(const std::string& key)
{
    bool found = false;
    impl->run([&] {
        found = impl->database.find(key) != nullptr;
        impl->database.apply({{key, Value()}});
    });
    return found;
}

static void eraseKeys(Database& database, const std::vector<std::string>& keys, std::vector<Write> then = {})
{
    std::vector<Write> writes;
    for (const std::string& key : keys)
        writes.push_back({key, Value()});
    writes.insert(writes.end(), then.begin(), then.end());
    database.apply(writes);
}

size_t Terminal::erasePrefix(const std::string& prefix)
{
    size_t count = 0;
    impl->run([&] {
        std::vector<std::string> keys = impl->database.keysWithPrefix(prefix);
        count = keys.size();
        eraseKeys(impl->database, keys);
    });
    return count;
}

void Terminal::resetValues()
{
    replaceAll(impl->initial);
}

void Terminal::replaceAll(const std::vector<Write>& values)
{
    impl->run([&] { eraseKeys(impl->database, impl->database.keysWithPrefix(""), values); });
}

void Terminal::clear()
{
    erasePrefix("");
}

void Terminal::factoryReset()
{
    impl->run([&] { impl->factoryReset(); });
}

bool Terminal::save()
{
    bool saved = false;
    impl->run([&] { saved = impl->save(); });
    return saved;
}

std::optional<Value> Terminal::get(const std::string& key) const
{
    std::optional<Value> value;
    impl->run([&] {
        if (const Value* found = impl->database.find(key))
            value = *found;
    });
    return value;
}

std::optional<int32_t> Terminal::getInt(const std::string& key) const
{
    std::optional<Value> value = get(key);
    return value && value->isInt() ? std::optional<int32_t>(value->toInt()) : std::nullopt;
}

std::optional<std::string> Terminal::getString(const std::string& key) const
{
    std::optional<Value> value = get(key);
    return value && value->type == Type::String ? std::optional<std::string>(value->toText()) : std::nullopt;
}

std::map<std::string, Value> Terminal::list(const std::string& prefix) const
{
    std::map<std::string, Value> values;
    impl->run([&] {
        for (const std::string& key : impl->database.keysWithPrefix(prefix))
            values[key] = *impl->database.find(key);
    });
    return values;
}

bool Terminal::waitForValue(const std::string& key, const Value& value, int timeout) const
{
    return impl->waitUntil([&] { return get(key) == value; }, timeout);
}

bool Terminal::waitForAbsence(const std::string& key, int timeout) const
{
    return impl->waitUntil([&] { return !has(key); }, timeout);
}

// --- The logs

std::vector<WriteRecord> Terminal::writes() const
{
    std::lock_guard<std::mutex> lock(impl->mutex);
    return impl->writes;
}

std::vector<Value> Terminal::writesOf(const std::string& key) const
{
    std::vector<Value> values;
    for (const WriteRecord& write : writes()) {
        if (write.key == key)
            values.push_back(write.value);
    }
    return values;
}

std::vector<Message> Terminal::messages() const
{
    std::lock_guard<std::mutex> lock(impl->mutex);
    return impl->messages;
}

std::vector<Message> Terminal::messagesNamed(const std::string& name) const
{
    std::vector<Message> named;
    for (const Message& message : messages()) {
        if (message.name == name)
            named.push_back(message);
    }
    return named;
}

void Terminal::clearLogs()
{
    std::lock_guard<std::mutex> lock(impl->mutex);
    impl->writes.clear();
    impl->messages.clear();
    impl->log.clear();
}

bool Terminal::waitForWrite(const std::string& key, const Value& value, int timeout) const
{
    return waitForWrite(
        key, [&](const Value& written) { return written == value; }, timeout);
}

bool Terminal::waitForWrite(const std::string& key, const std::function<bool(const Value&)>& predicate,
                            int timeout) const
{
    return impl->waitUntil(
        [&] {
            std::vector<Value> values = writesOf(key);
            return std::any_of(values.begin(), values.end(), predicate);
        },
        timeout);
}

bool Terminal::waitForMessage(const std::string& name, int timeout, size_t count) const
{
    return impl->waitUntil([&] { return messagesNamed(name).size() >= count; }, timeout);
}

bool Terminal::waitForClients(size_t count, int timeout) const
{
    return impl->waitUntil([&] { return clientCount() == count; }, timeout);
}

bool Terminal::waitForFilter(const std::string& name, int timeout) const
{
    return impl->waitUntil(
        [&] {
            bool wanted = false;
            impl->run([&] { wanted = impl->server && impl->server->isWanted(name); });
            return wanted;
        },
        timeout);
}

size_t Terminal::clientCount() const
{
    size_t count = 0;
    impl->run([&] { count = impl->server ? impl->server->clients().size() : 0; });
    return count;
}

void Terminal::settle() const
{
    impl->run([&] {
        if (impl->server)
            impl->server->drain();
    });
}

std::vector<std::string> Terminal::serverLog() const
{
    std::lock_guard<std::mutex> lock(impl->mutex);
    return impl->log;
}

bool Terminal::waitForLog(const std::string& part, int timeout) const
{
    return impl->waitUntil(
        [&] {
            std::vector<std::string> lines = serverLog();
            return std::any_of(lines.begin(), lines.end(),
                               [&](const std::string& line) { return line.find(part) != std::string::npos; });
        },
        timeout);
}

// --- Signals and faults

void Terminal::sendSignal(const std::string& name, std::string_view data)
{
    impl->run([&] {
        if (impl->server)
            impl->server->publish(name, data);
    });
}

void Terminal::sendClientSignal(const std::string& name, std::string_view data)
{
    impl->run([&] {
        if (!impl->server)
            return;
        impl->server->publish(name, data);
        BusFrame frame;
        frame.header.type = CBUS_TYPE_SIGNAL;
        frame.name = name;
        frame.data = data;
        if (impl->behaviour)
            impl->behaviour->onSignal(frame);
    });
}

void Terminal::sendRaw(std::string_view bytes, uint64_t client)
{
    impl->run([&] {
        if (!impl->server)
            return;
        for (uint64_t id : impl->server->clients()) {
            if (client == 0 || client == id)
                impl->server->sendRaw(id, bytes);
        }
    });
}

void Terminal::killConnections()
{
    impl->run([&] {
        if (impl->faults)
            impl->faults->cut(0);
    });
}

void Terminal::hold()
{
    impl->run([&] {
        if (impl->faults)
            impl->faults->stop();
    });
}

void Terminal::release()
{
    impl->run([&] {
        if (impl->faults)
            impl->faults->go();
    });
}

void Terminal::answerWith(std::function<std::optional<RawAnswer>(const Message&)> hook)
{
    impl->run([&] {
        impl->answerHook = std::move(hook);
        impl->updateWatcher();
    });
}

void Terminal::onMessage(std::function<void(const Message&)> hook)
{
    impl->run([&] {
        impl->messageHook = std::move(hook);
        impl->updateWatcher();
    });
}

fdloop_t* Terminal::loop() const
{
    return impl->loop;
}

void Terminal::onThread(const std::function<void()>& function)
{
    impl->run(function);
}

uint64_t Terminal::listenToChanges(std::function<void(const std::vector<Write>&)> listener)
{
    uint64_t number = 0;
    impl->run([&] {
        number = ++impl->lastListener;
        impl->changeListeners[number] = std::move(listener);
    });
    return number;
}

uint64_t Terminal::listenToTraffic(std::function<void(const Traffic&)> listener)
{
    uint64_t number = 0;
    impl->run([&] {
        number = ++impl->lastListener;
        impl->trafficListeners[number] = std::move(listener);
        impl->updateTap();
    });
    return number;
}

void Terminal::forget(uint64_t listener)
{
    impl->run([&] {
        impl->changeListeners.erase(listener);
        impl->trafficListeners.erase(listener);
        impl->updateTap();
    });
}

Faults* Terminal::faults() const
{
    return impl->faults.get();
}

BusServer* Terminal::server() const
{
    return impl->server.get();
}

Recorder& Terminal::recorder() const
{
    return impl->recorder;
}

void Terminal::setBehaviourMuted(bool muted)
{
    impl->run([&] {
        if (impl->behaviour)
            impl->behaviour->setMuted(muted);
    });
}

void Terminal::tell(const std::string& line)
{
    impl->run([&] { impl->tell(line); });
}

std::string Terminal::frame(uint8_t type, uint8_t src, uint16_t seqn, std::string_view name,
                            std::string_view data)
{
    cbus_header_t header{};
    header.type = type;
    header.src = src;
    header.seqn = seqn;
    header.nlen = name.empty() ? 0 : static_cast<uint16_t>(name.size() + 1);
    header.dlen = static_cast<uint32_t>(data.size());
    std::string bytes(cbus_frame_size(&header), '\0');
    std::string terminated(name);
    cbus_frame_pack(reinterpret_cast<uint8_t*>(&bytes[0]), &header, terminated.c_str(), data.data());
    return bytes;
}

} // namespace sim
