// Fuzz target: what a database answers, and what it asks validators. The first byte of the input says which
// operation of the configuration client waits; the rest is the data of the reply, or of the signal.
//
// The server is a socket that gets its answer put in before the question is asked.
// Legal ends: replies of a wrong length, broken buffers, a validator that nobody has installed (assertions),
// a validator's question without a name.
#include "fuzz/fuzz.h"

#include "runtime/config_client_api.h"
#include "runtime/config_client_impl.h"
#include "support/busclient.h"
#include "support/rawbus.h"

#include <csignal>

using fuzz::check;

namespace {

const uint32_t LONG_SIZE = 40;

void judge(unsigned count, config_data_t* records, void*)
{
    for (unsigned i = 0; i < count; ++i) {
        records[i].status = static_cast<int32_t>(strlen(records[i].name));
        if (records[i].type == VX_CONFIG_TYPE_STRING && records[i].data)
            records[i].status += static_cast<int32_t>(strlen(static_cast<const char*>(records[i].data)));
    }
}

// Destinations whose ends the sanitizer watches.
struct Destinations {
    std::unique_ptr<char[]> text{new char[7]};
    std::unique_ptr<char[]> longText{new char[LONG_SIZE]};
    std::unique_ptr<int32_t[]> number{new int32_t[1]};
    std::unique_ptr<char[]> blob{new char[5]};
    std::vector<config_data_t> records = {
        {VX_CONFIG_TYPE_STRING, "cfg.text", text.get(), 7, 0, 0},
        {VX_CONFIG_TYPE_INT, "cfg.number", number.get(), 4, 0, 0},
        {VX_CONFIG_TYPE_BLOB, "cfg.blob", blob.get(), 5, 0, 0},
        {VX_CONFIG_TYPE_STRING, nullptr, text.get(), 7, 0, 0},
        {VX_CONFIG_TYPE_STRING, "cfg.nowhere", nullptr, 0, 0, 0},
        {VX_CONFIG_TYPE_INT, "cfg.short", number.get(), 2, 0, 0},
        {VX_CONFIG_TYPE_STRING, "cfg.long", longText.get(), LONG_SIZE, 0, 0},
    };

    Destinations()
    {
        memset(text.get(), 0, 7);
        memset(longText.get(), 0, LONG_SIZE);
    }
};

void readText(uint32_t size)
{
    std::unique_ptr<char[]> text(new char[size]);
    if (config_read_string("cfg.text", text.get(), size) == 0)
        check(memchr(text.get(), 0, size) != nullptr, "a text without an end");
}

void readTyped()
{
    std::unique_ptr<char[]> bytes(new char[9]);
    uint32_t length = 0, type = VX_CONFIG_TYPE_NONE;
    config_read_typed("cfg.any", bytes.get(), 9, &length, &type);
    check(length <= 9, "a length beyond the buffer");
}

void readMany()
{
    Destinations to;
    config_readv("", static_cast<uint32_t>(to.records.size()), to.records.data());
}

void modifyMany()
{
    Destinations from;
    config_modifyv("blk", static_cast<uint32_t>(from.records.size()), from.records.data());
}

void list()
{
    uint32_t count = 0;
    config_data_t* records = nullptr;
    config_readm("cfg\\..*", &count, &records);
    for (uint32_t i = 0; i < count; ++i) {
        check(strlen(records[i].name) < 70000, "a name without an end");
        if (records[i].type == VX_CONFIG_TYPE_STRING && records[i].data)
            check(strlen(static_cast<char*>(records[i].data)) < records[i].length, "a text without an end");
    }
    free(records);
}

void readBlock()
{
    Destinations to;
    config_blk_t block;
    config_blk_init(&block);
    config_blk_set_prefix(&block, "cfg.group", 1);
    config_blk_add_int_read(&block, "number", to.number.get());
    config_blk_add_str_read(&block, "text", to.text.get(), 7);
    config_blk_add_blob_read(&block, "blob", to.blob.get(), 5);
    config_blk_commit_read(&block);
    config_blk_free(&block);
}

void readNumber()
{
    int number = 0;
    config_read_int("cfg.number", &number);
}

void askStatus()
{
    uint32_t value = 0;
    config_status("cfg.number", &value);
}

void testFlag()
{
    const int on = config_dbg_test("cfg.debug");
    check(on == 0 || on == 1, "neither on nor off");
}

void reset()
{
    config_factory_reset();
}

void readShort()
{
    readText(4);
}

void readLong()
{
    readText(300);
}

void (*const OPERATIONS[])() = {readNumber, readShort, readLong,  readTyped, readMany, modifyMany,
                                list,       readBlock, askStatus, testFlag,  reset};
const size_t OPERATION_COUNT = sizeof(OPERATIONS) / sizeof(OPERATIONS[0]);

void validate(fuzz::Input& input)
{
    const std::string name = input.line();
    const std::string data = input.rest();
    const auto copy = fuzz::exactCopy(reinterpret_cast<const uint8_t*>(data.data()), data.size());
    config_handle_validate(nullptr, nullptr, ("config.clnt_validate." + name).c_str(), copy.get(),
                           static_cast<uint32_t>(data.size()));
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    signal(SIGPIPE, SIG_IGN);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    static RawBus* const bus = new RawBus;
    if (size < 1 || size > 65536)
        return 0;
    fuzz::Input input(data, size);
    const size_t which = input.byte() % (OPERATION_COUNT + 1);

    fuzz::Blocks blocks;
    cbus_conn_t* const conn = bus->connect();
    config_init_cbus(conn, nullptr);
    config_validator_register(judge, "fuzz", nullptr);
    if (which < OPERATION_COUNT)
        bus->send(replyBytes(conn->next_seqn, input.rest()));
    shutdown(bus->fd(), SHUT_WR);
    const bool survived = fuzz::survives(
        [&] {
            if (which < OPERATION_COUNT)
                OPERATIONS[which]();
            else
                validate(input);
        },
        {"*** ASSERT in config_client_api at ", "*** ASSERT in config_vbuf at ",
         "Error retrieving identifying name from "});
    bus->close();
    if (survived) {
        config_reset_for_test();
        endConnection(conn);
    } else {
        close(conn->fd);
        config_state = config_state_t();
        blocks.freeRest();
    }
    return 0;
}
