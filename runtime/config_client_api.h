// The configuration client: reads, writes, deletes and watches the keys of the terminal's database, which
// lives in another process and is reached over the bus.
//
// Keys are dotted texts; their first component names the area: "cfg" stored settings, "ram" run-time
// values, "rmcfg" values of the radio module. Values are the database's; texts are ASCII or UTF-8.
//
// Threads: the library is one set of process-wide state without a lock. It belongs to the thread that owns
// the connections; change handlers and validators run there, from the event loop. Only config_write_int(),
// config_write_string(), config_write_typed(), config_delete(), config_writev() and config_sync() may also
// be called from another thread, since they wait for no reply (see cbus_send_signal()).
//
// Blocking: what waits for an answer (read, readv, readm, modifyv, status, factory reset, debug test) waits
// without a time limit. What does not (write, delete, sync) returns when the frame is in the socket, and
// nobody tells whether the database took it. Nothing reconnects: on a lost connection reads return -1.
//
// A reply of a wrong length is an assertion and ends the process.
#ifndef RUNTIME_CONFIG_CLIENT_API_H
#define RUNTIME_CONFIG_CLIENT_API_H

#include <stdint.h>

#include "runtime/cbus.h"

// Types of a value, as the database numbers them. 0 in a read takes any type, in a write deletes the key.
enum {
    VX_CONFIG_TYPE_NONE = 0,
    VX_CONFIG_TYPE_BLOB = 1,
    VX_CONFIG_TYPE_STRING = 2, // text with its NUL, which the length counts
    VX_CONFIG_TYPE_INT = 3,    // 4 bytes in the byte order of the host
};

// What functions return beside 0, and the status of a key, as the database numbers them.
enum {
    VX_CONFIG_ERR = -1, // also: the bus failed
    VX_CONFIG_DB_ERR = -2,
    VX_CONFIG_DB_FULL = -3,
    VX_CONFIG_READONLY = -4,
    VX_CONFIG_NO_RECORD = -5,
    VX_CONFIG_WRONG_TYPE = -6,
    VX_CONFIG_BUFFER_TOO_SMALL = -7,
    VX_CONFIG_VERIFY_FAIL = -8,
};

// One key in memory, for vectors and callbacks. The order of the fields is fixed.
struct config_data_t {
    uint32_t type;
    const char* name; // the key
    void* data;       // in: value to write or destination of a read; out of changes and lists: the value,
                      // null if it is empty
    uint32_t size;    // in: bytes of the value or of the destination
    uint32_t length;  // out: bytes of the value received
    int32_t status;   // out: status of this key
};

// --- Start ----------------------------------------------------------------------------------------------

// Takes the connections into use, which stay the caller's: `req` for requests and writes, `notify` for
// subscriptions, null for the same. A null `req` panics with "Could not connect to cbus server\n".
// Installs the name tables on `notify`. Returns 0.
int config_init_cbus(cbus_conn_t* req, cbus_conn_t* notify);

// For tests: forgets connections, subscriptions and validators, so that config_init_cbus() starts anew.
// The connections themselves are left alone.
void config_reset_for_test();

// --- Single keys ----------------------------------------------------------------------------------------

// Reads a value into `size` bytes at `buf`. `*type` is the type wanted (0, or a null pointer, for any) and
// becomes the value's; `*length` (may be null) becomes the smaller of size and the value's length. Where the
// types differ: VX_CONFIG_WRONG_TYPE, nothing copied. Returns the database's status otherwise; with
// VX_CONFIG_BUFFER_TOO_SMALL as much as fits has been copied. If the bus failed, both stay as they were.
int config_read_typed(const char* key, void* buf, uint32_t size, uint32_t* length, uint32_t* type);

// Reads an int. On failure `*out` stays as it was.
int config_read_int(const char* key, int* out);

// Reads a text into `size` bytes, always terminated on success. A text too long is cut and still returns 0.
// A null buffer or size 0 returns VX_CONFIG_BUFFER_TOO_SMALL.
int config_read_string(const char* key, char* buf, uint32_t size);

// Writes a value. Always 0: a write that is lost on the way is not noticed.
int config_write_typed(const char* key, const void* value, uint32_t length, uint32_t type);
int config_write_int(const char* key, int value);
int config_write_string(const char* key, const char* text); // null writes length 0

// Deletes a key: a write of VX_CONFIG_TYPE_NONE. Always 0.
int config_delete(const char* key);

// Asks for the status of a key; `*value` (may be null) takes the database's second word, unchanged.
int config_status(const char* key, uint32_t* value);

// --- Many keys ------------------------------------------------------------------------------------------
// `route` is a routing word behind the verb in the message's name, not a prefix of keys; null or empty
// leaves it out. Records without a name are passed over.

// Reads the records' keys in one request: `type`, `name`, `data` and `size` go in, `length` and `status`
// come out. A failure of one key shows in its record only; the result is negative if the bus failed.
int config_readv(const char* route, uint32_t count, config_data_t* recs);

// Writes all records in one signal. Returns as cbus_send_signal().
int config_writev(const char* route, uint32_t count, const config_data_t* recs);

// Writes all records and waits for the result: each record's `status`. Returns the first of them that is
// not 0, or a negative number if the bus failed.
int config_modifyv(const char* route, uint32_t count, config_data_t* recs);

// Lists the keys that match a regular expression, which the database evaluates. `*recs` is one block with
// all records, keys and values, which the caller frees with one free(); null with a count of 0 if there is
// none. Returns 0; negative if the bus failed, -1 also if memory ran out or if there were more entries than
// announced (those announced are returned nevertheless).
int config_readm(const char* expr, uint32_t* count, config_data_t** recs);

// Deletes the keys that match a regular expression. Returns as cbus_send_signal().
int config_deletem(const char* expr);

// --- The database ---------------------------------------------------------------------------------------

// Asks for an area ("cfg") to be saved to disk. Returns as cbus_send_signal().
int config_sync(const char* area);

// Asks for a reset to factory settings and waits for its status.
int config_factory_reset();

// --- Changes --------------------------------------------------------------------------------------------

struct config_change_row_t;

// Told of changed keys: `nrec` records, valid with their values during the call only; `data` as registered;
// `row` the subscription that matched. A deleted key comes with `data` null and length 0. May call
// everything in this header, requests included.
typedef void (*config_change_func_t)(unsigned nrec, const config_data_t* prec, void* data,
                                     const config_change_row_t* row);

struct config_change_row_t {
    char* key;
    config_change_func_t func;
    void* data;
};

// Subscribes to all keys that begin with `key`, as plain text: "ram.status.battery" takes
// "ram.status.battery.1.status". One message calls a subscription once, with all its matching records.
// A null handler is an assertion. Returns 0.
int config_change_register(const char* key, config_change_func_t func, void* data);

// Removes the first subscription with just this key, handler and data. The server goes on sending what was
// subscribed to. Returns 0.
int config_change_deregister(const char* key, config_change_func_t func, void* data);

// --- Validators -----------------------------------------------------------------------------------------

enum {
    CONFIG_VALIDATOR_NAME_MAX = 59,
    CONFIG_VALIDATE_STATUS_INITIAL = 2, // what else a status says is for the database to define
};

// Judges keys before the database takes them: sets the records' `status`. Valid during the call only.
typedef void (*config_validator_func_t)(unsigned nrec, config_data_t* prec, void* data);

// Installs a validator under `name`, of up to 59 characters; a null or longer name and a null handler are
// assertions. It is called with as many records as fit 65,000 bytes; what goes beyond is logged and left out
// of the answer. Returns 0, or -1, with nothing installed, if the database could not be told.
int config_validator_register(config_validator_func_t func, const char* name, void* data);

// --- Blocks ---------------------------------------------------------------------------------------------

// Collects reads and writes to be performed together. The order of the fields up to `index` is fixed.
struct config_blk_t {
    uint32_t writes;
    uint32_t reads;
    config_data_t* write_recs;
    config_data_t* read_recs;
    const char* prefix; // the caller's
    uint32_t index;
    // How many of the counts above stand in the arrays: a failed allocation raises the count alone.
    uint32_t write_room;
    uint32_t read_room;
};

void config_blk_init(config_blk_t* blk);

// From now on keys are completed: to "prefix<index>.key", with index 0 to "prefix.key" (both up to 255
// characters). A null prefix leaves keys as they stand. `prefix` must live until the last key is added.
void config_blk_set_prefix(config_blk_t* blk, const char* prefix, uint32_t index);

// Adds a write; key and value are copied. Returns 0, or 1, 2, 3 if there was no memory for the array, the
// key, the value.
int config_blk_add_write(config_blk_t* blk, uint32_t type, const char* key, const void* value, uint32_t size);

// Adds a read; the key is copied, the destination stays the caller's and takes the value on commit. Returns
// 0, or 1, 2 as above.
int config_blk_add_read(config_blk_t* blk, uint32_t type, const char* key, void* dest, uint32_t size);

// Adds a deletion: a write of an empty blob (where config_delete() writes no type).
int config_blk_add_del(config_blk_t* blk, const char* key);

int config_blk_add_int_read(config_blk_t* blk, const char* key, int* dest);
int config_blk_add_str_read(config_blk_t* blk, const char* key, char* dest, uint32_t size);
int config_blk_add_blob_read(config_blk_t* blk, const char* key, void* dest, uint32_t size);
int config_blk_add_int_write(config_blk_t* blk, const char* key, int value);
int config_blk_add_str_write(config_blk_t* blk, const char* key, const char* text);
int config_blk_add_blob_write(config_blk_t* blk, const char* key, const void* value, uint32_t size);

// Performs all reads with config_readv(); 0 if there are none. The block stays filled: the records tell each
// key's length and status.
int config_blk_commit_read(config_blk_t* blk);

// Performs all writes, with config_writev() or config_modifyv(), and frees the block.
int config_blk_commit_write(config_blk_t* blk);
int config_blk_commit_modify(config_blk_t* blk);

// Frees keys, copies of values and arrays. The counts go to 0, the prefix stays.
void config_blk_free(config_blk_t* blk);

// --- Options --------------------------------------------------------------------------------------------

// Flags of an option row.
enum {
    CONFIG_OPT_TYPE_MASK = 0x000f, // the expected type, VX_CONFIG_TYPE_STRING or VX_CONFIG_TYPE_INT
    CONFIG_OPT_FORM_MASK = 0x00f0, // of an int's destination:
    CONFIG_OPT_FORM_U32 = 0x0010,
    CONFIG_OPT_FORM_U16 = 0x0020,
    CONFIG_OPT_FORM_U8 = 0x0030,
    CONFIG_OPT_FORM_BOOL = 0x0040, // 0 or 1, in the row's size: 1, 2 or 4 bytes
    CONFIG_OPT_DEFAULT = 0x8000,   // the row has a default
};

// What config_parse() adds to a row's index.
enum : uint32_t {
    CONFIG_PARSE_CUT = 0x10000000u,        // a text did not fit and was cut
    CONFIG_PARSE_OTHER_TYPE = 0x20000000u, // the record's data is of another type
    CONFIG_PARSE_NO_DATA = 0x40000000u,    // the record has no data
    CONFIG_PARSE_NO_ROW = 0x80000000u,     // no row has this key (alone, without an index)
};

// A row's default: a text for string rows, a number for int rows.
union config_option_default_t {
    const char* text;
    intptr_t number;
    constexpr config_option_default_t() : text(nullptr) {}
    constexpr config_option_default_t(const char* t) : text(t) {}
    constexpr config_option_default_t(int n) : number(n) {}
};

struct config_option_t {
    const char* key;
    void* dest;
    uint16_t size; // of the destination, bytes
    uint16_t flags;
    config_option_default_t def;
};

// Applies a record to the row of `table` whose key is the record's name: stores its value, or the row's
// default if the record has none that fits. An int of a length other than 4 counts as data of another type.
// Returns the row's index with the bits above.
uint32_t config_parse(const config_data_t* rec, const config_option_t* table, uint32_t rows);

// --- Debug flags ----------------------------------------------------------------------------------------
// A debug flag is a key; it is on if its text begins with y or Y.

int config_dbg_set(const char* key, int on); // writes "yes", or deletes the key
int config_dbg_test(const char* key);        // 1 or 0, also if it cannot be read
int config_dbg_test_value(const char* text); // the same for a given text; null is off

#endif
