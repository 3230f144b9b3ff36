// The interfaces: what a user asks for is followed by what is, after a moment. Who is connected to them, the
// addresses that are known while they are up, and the address of the LAN in client mode.
#include "sim/command_actor.h"

#include <algorithm>

namespace sim {

namespace {

// A switched interface takes a moment to come up or go down, and those connected to it to come back.
constexpr uint32_t InterfaceDelay = 1500; // ms
constexpr uint32_t ClientsDelay = 4000;   // ms
constexpr uint32_t LeaseDelay = 2500;     // ms

const char ExtendedStatus[] = "ram.status.ext_system";
const char LanState[] = "ram.status.interfaces.lan.enabled";
const char DhcpClient[] = "ram.net.eth0.dhcp_client_mode";
const char Address[] = "ram.net.eth0.ip_address";
const char LeasedAddress[] = "10.47.11.20";
enum { Dark = 0, NormalOperation = 10 };

struct Kind {
    const char* name;
    int32_t maxClients;
    const char* macAddress; // of one that has never been up; null: it has none
};
const Kind Kinds[] = {{"wlan", 16, "02:4c:50:00:00:02"},
                      {"isdn", 2, nullptr},
                      {"lan", 4, "02:4c:50:00:00:01"},
                      {"phone", 2, nullptr},
                      {"usb", 1, nullptr}};

const Kind* findKind(const std::string& name)
{
    auto found =
        std::find_if(std::begin(Kinds), std::end(Kinds), [&](const Kind& kind) { return kind.name == name; });
    return found == std::end(Kinds) ? nullptr : found;
}

std::string settingOf(const std::string& name, const char* field)
{
    return "cfg.interfaces." + name + "." + field;
}
std::string stateOf(const std::string& name, const char* field)
{
    return "ram.status.interfaces." + name + "." + field;
}

class Interface : public Actor {
public:
    Interface(const Surroundings& surroundings, const Kind& kind)
        : Actor(surroundings), kind(kind), requested(settingOf(kind.name, "enabled")),
          state(stateOf(kind.name, "enabled")), clients(stateOf(kind.name, "clients")),
          mac(settingOf(kind.name, "mac_address")), name(settingOf(kind.name, "ssid")),
          broadcast(settingOf(kind.name, "bssid")), timer(surroundings.loop), clientsTimer(surroundings.loop)
    {
    }

    void start() override
    {
        knownMac = terminal.text(mac);
        if (knownMac.empty() && kind.macAddress)
            knownMac = kind.macAddress;
        usualClients = terminal.number(clients, 0);
        wasUp = isUp();
        follow();
    }
    void onChange(const std::string& key) override
    {
        if (key == requested || key == TemperatureStageKey)
            follow();
        else if (key == state)
            onState();
        else if (key == clients && isUp())
            usualClients = terminal.number(clients, 0);
        else if (key == ExtendedStatus)
            onSystem();
        else if ((key == name || key == broadcast) && isUp())
            restart();
    }
    void setBroken(bool broken)
    {
        isBroken = broken;
        if (broken && isUp())
            show(false);
        follow();
    }

    const Kind& kind;

private:
    bool isUp() const { return terminal.number(state, 0) == 1; }
    bool isPowered() const { return terminal.number(ExtendedStatus, NormalOperation) != Dark; }
    bool isWanted() const
    {
        int32_t stage = terminal.number(TemperatureStageKey, StageNormal);
        bool isTooHot = stage >= StageUsb && kind.name == std::string("usb");
        return terminal.number(requested, 0) == 1 && !isBroken && !isTooHot && isPowered();
    }
    void follow()
    {
        timer.stop();
        if (isWanted() != isUp())
            timer.once(terminal.scaled(InterfaceDelay), [this] { show(isWanted()); });
    }
    void onSystem()
    {
        if (!isPowered() && isUp())
            show(false);
        follow();
    }
    // A new name on the air.
    void restart()
    {
        show(false);
        follow();
    }
    void show(bool up) { terminal.set(state, up); }
    // Its address can be read while it is up, and who was connected comes back by and by.
    void onState()
    {
        bool up = isUp();
        if (up == wasUp)
            return;
        wasUp = up;
        std::vector<Write> writes;
        if (kind.macAddress)
            writes.push_back({mac, Value::text(up ? knownMac : "")});
        if (!up && terminal.database.find(clients))
            writes.push_back({clients, Value::integer(0)});
        terminal.database.apply(writes);
        clientsTimer.stop();
        if (up && usualClients > 0)
            clientsTimer.once(terminal.scaled(ClientsDelay), [this] { terminal.set(clients, usualClients); });
    }

    std::string requested;
    std::string state;
    std::string clients;
    std::string mac;
    std::string name; // on the air; only the WLAN has one
    std::string broadcast;
    Timer timer;
    Timer clientsTimer;
    std::string knownMac;
    int32_t usualClients = 0;
    bool wasUp = false;
    bool isBroken = false;
};

const char NotAnInterface[] = "an interface is wlan, lan, phone, isdn or usb, not ";

class InterfacesActor : public CommandActor {
public:
    explicit InterfacesActor(const Surroundings& surroundings) : CommandActor(surroundings, "interfaces")
    {
        for (const Kind& kind : Kinds)
            interfaces.push_back(std::make_unique<Interface>(surroundings, kind));
    }

    void start() override
    {
        for (const auto& interface : interfaces)
            interface->start();
        CommandActor::start();
    }
    void onChange(const std::string& key) override
    {
        for (const auto& interface : interfaces)
            interface->onChange(key);
        CommandActor::onChange(key);
    }

protected:
    std::string carryOut(const Words& words) override
    {
        if (words.size() != 2 || (words[1] != "up" && words[1] != "down" && words[1] != "fail"))
            return "an interface and up, down or fail";
        if (!findKind(words[0]))
            return NotAnInterface + words[0];
        for (const auto& interface : interfaces) {
            if (words[0] != interface->kind.name)
                continue;
            interface->setBroken(words[1] == "fail");
            if (words[1] != "fail")
                terminal.set(settingOf(words[0], "enabled"), words[1] == "up");
        }
        return "";
    }

private:
    std::vector<std::unique_ptr<Interface>> interfaces;
};

class ClientsActor : public CommandActor {
public:
    explicit ClientsActor(const Surroundings& surroundings) : CommandActor(surroundings, "clients") {}

protected:
    std::string carryOut(const Words& words) override
    {
        if (words.size() != 2)
            return "an interface and a number";
        const Kind* kind = findKind(words[0]);
        int64_t number = 0;
        if (!kind)
            return NotAnInterface + words[0];
        if (!parseNumber(words[1], 0, kind->maxClients, &number))
            return words[0] + " takes 0 to " + std::to_string(kind->maxClients) + ", not " + words[1];
        if (terminal.number(stateOf(words[0], "enabled"), 0) != 1)
            return words[0] + " is not up";
        terminal.set(stateOf(words[0], "clients"), static_cast<int32_t>(number));
        return "";
    }
};

// In client mode the address comes from somebody else on the LAN.
class DhcpActor : public CommandActor {
public:
    explicit DhcpActor(const Surroundings& surroundings)
        : CommandActor(surroundings, "dhcp"), timer(surroundings.loop)
    {
    }

    void start() override
    {
        ownAddress = terminal.text(Address);
        isClient = wantsClient();
        if (isClient)
            ask();
        CommandActor::start();
    }
    void onChange(const std::string& key) override
    {
        CommandActor::onChange(key);
        if (key == DhcpClient && wantsClient() != isClient) {
            isClient = wantsClient();
            if (isClient)
                ownAddress = terminal.text(Address);
            if (isClient)
                ask();
            else
                leave();
        } else if (key == LanState && isClient) {
            ask();
        }
    }

protected:
    std::string carryOut(const Words& words) override
    {
        const std::string word = joined(words, 0);
        if (word != "on" && word != "off" && word != "none")
            return "one of on, off, none, not " + word;
        bool was = isAnswered;
        isAnswered = word != "none";
        if (isClient && word != "off" && was != isAnswered)
            ask();
        terminal.set(DhcpClient, word != "off");
        return "";
    }

private:
    bool wantsClient() const { return terminal.number(DhcpClient, 0) == 1; }
    void setAddress(const std::string& address)
    {
        terminal.database.apply({{Address, Value::text(address)}});
    }
    void ask()
    {
        setAddress("");
        timer.stop();
        if (isAnswered && terminal.number(LanState, 0) == 1)
            timer.once(terminal.scaled(LeaseDelay), [this] { setAddress(LeasedAddress); });
    }
    void leave()
    {
        timer.stop();
        setAddress(ownAddress);
    }

    Timer timer;
    std::string ownAddress;
    bool isClient = false;
    bool isAnswered = true;
};

} // namespace

void addInterfaceActors(const Surroundings& surroundings, Actors* actors)
{
    actors->push_back(std::make_unique<InterfacesActor>(surroundings));
    actors->push_back(std::make_unique<ClientsActor>(surroundings));
    actors->push_back(std::make_unique<DhcpActor>(surroundings));
}

} // namespace sim
