// Validators of the database: clients that judge keys before a modifyv stores them.
#include "sim/database_bus_impl.h"

#include "sim/vbuf.h"

#include "runtime/config_client_api.h"
#include "runtime/fdloop.h"

#include <algorithm>

namespace sim {

DatabaseBus::~DatabaseBus()
{
    for (const auto& validation : validations)
        fdloop_timer_del(loop, validation->timer);
}

void DatabaseBus::registerValidator(const BusFrame& frame, const std::string&)
{
    std::string name(frame.data.substr(0, frame.data.find('\0')));
    if (name.empty() || name.size() > CONFIG_VALIDATOR_NAME_MAX) {
        report(frame, "bad name");
        return;
    }
    if (!server.hasClient(frame.client)) // its message came late, and it has gone
        return;
    validators[name] = frame.client;
}

const std::string* DatabaseBus::validatorOf(const std::string& key, uint64_t writer) const
{
    const std::string* best = nullptr;
    for (const auto& [name, client] : validators) {
        if (client != writer && key.compare(0, name.size(), name) == 0 &&
            (!best || name.size() > best->size()))
            best = &name;
    }
    return best;
}

// Sends the questions of a modifyv, one for each validator that its keys belong to.
void DatabaseBus::ask(const std::shared_ptr<Validation>& validation)
{
    std::map<std::string, Question> toAsk;
    for (size_t at = 0; at < validation->writes.size(); at++) {
        if (validation->statuses[at] != 0)
            continue;
        if (const std::string* name = validatorOf(validation->writes[at].key, validation->requester.client))
            toAsk[*name].positions.push_back(at);
    }
    if (toAsk.empty())
        return;
    validations.push_back(validation);
    validation->timer = fdloop_timer_add(loop, validatorTimeout, onValidatorTimeout, validation.get());
    validation->open = toAsk.size();
    for (auto& [name, question] : toAsk) {
        VbufWriter records;
        for (size_t at : question.positions) {
            const Write& write = validation->writes[at];
            records.add(static_cast<uint32_t>(write.value.type), write.key, write.value.bytes);
        }
        question.validation = validation;
        uint64_t client = validators[name];
        questions[client].push_back(std::move(question));
        // To this client alone, since one that does not know the name would take it for a fatal error.
        server.signalTo(client, "config.clnt_validate." + name, records.bytes());
    }
}

void DatabaseBus::takeVerdict(const BusFrame& frame, const std::string&)
{
    auto found = questions.find(frame.client);
    if (found == questions.end() || found->second.empty()) {
        report(frame, "nothing was asked");
        return;
    }
    Question question = std::move(found->second.front());
    found->second.pop_front();
    std::shared_ptr<Validation> validation = question.validation.lock();
    if (!validation) {
        report(frame, "too late");
        return;
    }
    std::vector<VbufEntry> verdicts;
    if (!readVbuf(frame.data, &verdicts)) {
        report(frame, "malformed records");
        refuse(*validation, question);
    }
    for (const VbufEntry& verdict : verdicts) {
        if (verdict.status == 0 || verdict.status == CONFIG_VALIDATE_STATUS_INITIAL)
            continue;
        for (size_t at : question.positions) {
            if (validation->writes[at].key == verdict.key)
                validation->statuses[at] = VX_CONFIG_VERIFY_FAIL;
        }
    }
    validation->open--;
    finishIfDone(validation);
}

void DatabaseBus::refuse(Validation& validation, const Question& question)
{
    for (size_t at : question.positions)
        validation.statuses[at] = VX_CONFIG_VERIFY_FAIL;
}

// Stores what was accepted and answers, unless somebody is still to be heard.
void DatabaseBus::finishIfDone(const std::shared_ptr<Validation>& validation)
{
    if (validation->open > 0)
        return;
    fdloop_timer_del(loop, validation->timer);
    validations.erase(std::remove(validations.begin(), validations.end(), validation), validations.end());

    std::vector<Write> accepted;
    VbufWriter answer;
    for (size_t at = 0; at < validation->writes.size(); at++) {
        const Write& write = validation->writes[at];
        int32_t status = validation->statuses[at];
        note(validation->requester.client, "modifyv", write, status);
        if (status == 0)
            accepted.push_back(write);
        answer.add(static_cast<uint32_t>(write.value.type), write.key, {}, status);
    }
    const ReplyAddress& requester = validation->requester;
    apply(requester.name == DeskModify ? 0 : requester.client, accepted);
    server.reply(validation->requester, answer.bytes());
}

int DatabaseBus::onValidatorTimeout(void* data)
{
    Validation* late = static_cast<Validation*>(data);
    DatabaseBus& bus = *late->owner;
    late->timer = nullptr; // the loop frees it, since this returns 0
    auto found = std::find_if(bus.validations.begin(), bus.validations.end(),
                              [&](const auto& validation) { return validation.get() == late; });
    std::shared_ptr<Validation> validation = *found;
    for (const auto& [client, queue] : bus.questions) {
        for (const Question& question : queue) {
            if (question.validation.lock() == validation)
                bus.refuse(*validation, question);
        }
    }
    if (bus.hooks.log)
        bus.hooks.log("a validator did not answer in time");
    validation->open = 0;
    bus.finishIfDone(validation);
    return 0;
}

void DatabaseBus::onClientGone(uint64_t client)
{
    for (auto at = validators.begin(); at != validators.end();)
        at = at->second == client ? validators.erase(at) : std::next(at);
    auto found = questions.find(client);
    if (found == questions.end())
        return;
    std::deque<Question> unanswered = std::move(found->second);
    questions.erase(found);
    for (const Question& question : unanswered) {
        if (std::shared_ptr<Validation> validation = question.validation.lock()) {
            refuse(*validation, question);
            validation->open--;
            finishIfDone(validation);
        }
    }
}

} // namespace sim
