// How a test drives the emulated switch: what it holds, what goes wrong on it, and what its callers did.
//
// The emulated switch is one per process, as the platform library of a switch is. It starts from the scenario
// file that KESTO_SWITCH names, or from the built-in switch. A test fixture calls reset() first: that brings
// back the built-in switch with the queue open, forgets every fault, call and misuse, and starts recording.
//
// Every function here may be called at any time from any thread, with or without the platform's lock. The
// records have a value for every member, so that a test names only those that it is about:
//
//     emulator::add_port({.ifIndex = 0x9B010004, .mtu = 9000});
//     emulator::add_fault({.symbol = "mts_recv", .first = 2, .last = 2, .status = 5});
#ifndef KESTO_EMULATOR_CONTROL_H
#define KESTO_EMULATOR_CONTROL_H

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "platform/platform_records.h"

#define EMULATOR_API __attribute__((visibility("default")))

namespace emulator {

// What the switch holds.

// A scenario that was refused. what() names the source, the line or JSON pointer, and what is wrong there.
class EMULATOR_API ScenarioError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
    ~ScenarioError() override;
};

// The built-in switch, an open queue, the wall clock, no faults, no misuse, an empty call log, recording on.
EMULATOR_API void reset();

// These replace the whole switch, and with it every fault, fixed reply and queued message; the queue is open
// afterwards. When they throw ScenarioError the switch is as before. `source` names the text in errors.
EMULATOR_API void load_builtin();
EMULATOR_API void load_empty(); // a switch with its names and empty tables
EMULATOR_API void load_json(std::string_view text, std::string_view source = "scenario");
EMULATOR_API void load_file(const std::string& path);
EMULATOR_API std::string builtin_text(); // the JSON of the built-in switch

// A counter reads start + rate * the seconds since the switch was loaded. set_clock stops the clock at that
// many seconds, advance_clock stops it that much later than it is now, and run_clock returns to real time.
EMULATOR_API void set_clock(double seconds);
EMULATOR_API void advance_clock(double seconds);
EMULATOR_API void run_clock();

// Rows as the services hand them out. A row replaces the one with the same key.
EMULATOR_API void add_link(const FcipLinkEntry& row);
EMULATOR_API void remove_link(const FcipLinkKey& key); // only the link row; its errors and connections stay
EMULATOR_API void clear_links();
EMULATOR_API void add_entity(const FcipEntityEntry& row);
EMULATOR_API void remove_entity(std::uint32_t entityId);
EMULATOR_API void clear_entities();
EMULATOR_API void set_link_errors(const FcipLinkErrors& row); // these values do not move
EMULATOR_API void remove_link_errors(const FcipLinkKey& key);
EMULATOR_API void clear_link_errors();
EMULATOR_API void add_tcp_connection(const FcipTcpConnKey& key, const FcipTcpConnEntry& row);
EMULATOR_API void remove_tcp_connection(const FcipTcpConnKey& key);
EMULATOR_API void clear_tcp_connections();
EMULATOR_API std::optional<FcipLinkEntry> find_link(const FcipLinkKey& key);
EMULATOR_API std::optional<FcipEntityEntry> find_entity(std::uint32_t entityId);

struct Counter {
    std::uint64_t start = 0;
    double rate = 0; // per second
};

// What a line card answers to one of its three statistics requests for a port.
struct LineCardReply {
    std::uint16_t status = 0; // at byte 10 of the payload; 0 = success
    std::uint32_t size = 0;   // bytes of payload; 0 = 172 (IP), 256 (Ethernet), 1352 (TCP)
    // Big-endian counters by byte offset. A word has 32 bits in the IP and TCP replies and 64 in the Ethernet
    // reply; a long always has 64.
    std::map<std::uint32_t, Counter> words{};
    std::map<std::uint32_t, Counter> longs{};
    std::uint32_t continuations = 1; // TCP: messages that follow the reply
};

struct Port {
    std::uint32_t ifIndex = 0;
    std::uint8_t type = 26; // 26 = Gigabit Ethernet, see README.md for the others
    std::uint16_t slot = 1;
    std::uint16_t port = 1;
    // The line card's node; without it node_of_slot(slot).
    std::optional<std::uint32_t> node{};
    // At most 30 characters; without it "GigabitEthernet1/1" and the like.
    std::string name{};
    // At most 15 characters; without it the device, or a name made from `name`.
    std::string linuxName{};
    // At most 31 characters: MAC or network address text.
    std::string address{};
    std::uint32_t vsan = 0;
    std::uint32_t otherVsan = 0;
    std::optional<std::uint32_t> mtu{};
    std::optional<std::uint32_t> subnetMask{}; // in host order
    std::optional<std::uint32_t> prefixLength{};
    // A network interface of the host, whose MTU, MAC address, mask, prefix and counters this port then
    // shows. "first" is the host's first real interface. Where the host has no such interface, the values
    // here count.
    std::string device{};
    Counter inMulticast{}, inBroadcast{}, outMulticast{}, outBroadcast{};
    Counter inBytes{}, inUnicast{}, outBytes{}, outUnicast{};
    // Without a reply the line card answers with a status alone.
    std::optional<LineCardReply> ipStats{}, ethernetStats{}, tcpStats{};
};

EMULATOR_API void add_port(const Port& port);
EMULATOR_API void remove_port(std::uint32_t ifIndex);
EMULATOR_API void clear_ports();
EMULATOR_API std::optional<Port> find_port(std::uint32_t ifIndex);
EMULATOR_API std::vector<std::uint32_t> port_indexes(); // in the table's order, as unsigned numbers
EMULATOR_API std::uint32_t node_of_slot(std::uint16_t slot);

struct Vsan {
    std::uint32_t id = 1;
    std::string name{};
    bool hasDomain = true;    // false: dm_cim_get_dmEntry fails for this VSAN
    std::string systemName{}; // the text that both VSAN key services return, at most 63 characters
};

EMULATOR_API void add_vsan(const Vsan& vsan);
EMULATOR_API void remove_vsan(std::uint32_t id);
EMULATOR_API void clear_vsans();

EMULATOR_API void set_system(const std::string& hostName, const std::string& name,
                             const std::uint8_t (&wwn)[8]);
EMULATOR_API std::string host_name();   // what getCSName returns
EMULATOR_API std::string system_name(); // what CSgetName returns
EMULATOR_API void set_ip_configuration(const IpMiscCfg& configuration);

// What goes wrong.

enum class Effect {
    None,              // only `action` happens
    Fail,              // `status` is returned and the out-parameter left alone; a pointer result is NULL
    FailWithRow,       // `status` is returned, and yet a row is stored
    SucceedWithoutRow, // 0 is returned and NULL is stored
    // Of the line card (symbol LINE_CARD) only:
    NoAnswer,     // the request is never answered
    LateAnswer,   // the answer arrives after the first receive for it has failed
    ShortPayload, // the answer has `size` bytes
    ReplyStatus,  // the answer carries `status`
};

// The line cards' name in Fault::symbol. One call of theirs is one request that they are sent.
inline constexpr const char* LINE_CARD = "line_card";

// What happens to some of the calls of a service.
//
// A fault counts the calls whose arguments contain the text `where`, such as "op=1", "key={2,0}" or
// "if=0x9b010000", or "code=1920" of LINE_CARD, starting with 1 when the fault is added. It hits the calls
// `first` to `last`, and of these each with `probability`, drawn from `seed`. If several faults hit a call,
// the one added first decides its outcome; the actions of all of them run.
struct Fault {
    std::string symbol{};
    std::string where{};
    std::uint32_t first = 1;
    std::uint32_t last = UINT32_MAX;
    double probability = 1;
    std::uint32_t seed = 1;
    Effect effect = Effect::Fail;
    int status = -1;
    std::uint32_t size = 0;
    // Runs before the call is answered; may change the switch through this header.
    std::function<void()> action{};
};

EMULATOR_API void add_fault(Fault fault); // throws std::invalid_argument for an unknown symbol
EMULATOR_API void fail_call(const std::string& symbol, std::uint32_t nth = 1, int status = -1); // once
EMULATOR_API void fail_always(const std::string& symbol, int status = -1);
EMULATOR_API void clear_faults();

// Makes every reply to a request of this code carry exactly these bytes, which include the status at byte 10,
// followed by exactly these messages. clear_replies brings back the ports' own replies.
EMULATOR_API void set_reply(std::uint32_t code, std::vector<std::uint8_t> payload,
                            std::vector<std::vector<std::uint8_t>> continuations = {});
EMULATOR_API void clear_replies();
// Puts a message that answers no request on the queue, after those that wait there.
EMULATOR_API void queue_message(std::vector<std::uint8_t> payload);
EMULATOR_API void close_queue(); // as before init_mts: mts_q is 0 and every service that takes it fails

// What the callers did.

// While recording is on, each service call is kept as one text, and each request with its payload. Constants
// are written as they were passed, if-indexes in hexadecimal, and the queue is left out:
//
//     fcip_get_link_entry op=2 key={0,0} 30 1
//     pm_cim_get_port_info op=1 if=0x9b010000
//     mts_send node=0x0101 service=943 code=1917 length=32
//     mts_recv token=1 option=5
//     mutex_lock
//
// Recording is off until reset(), so that a server does not grow.
EMULATOR_API void record_calls(bool on);
EMULATOR_API std::vector<std::string> calls();                        // in order
EMULATOR_API std::vector<std::string> calls(std::string_view symbol); // only those of this service
EMULATOR_API std::size_t count(std::string_view symbol);              // also while recording is off
EMULATOR_API void clear_calls();                                      // log, counts and requests

struct SentRequest {
    std::uint32_t node = 0, service = 0, code = 0, token = 0;
    std::vector<std::uint8_t> payload{};
};
EMULATOR_API std::vector<SentRequest> sent_requests();

// Messages that callers hold and have not dropped, requests and replies; and those that wait on the queue.
EMULATOR_API std::size_t messages_outstanding();
EMULATOR_API std::size_t messages_queued();
EMULATOR_API void release_messages(); // takes both away without complaint

// What the callers did wrong: they called a service that takes the queue without holding the lock, took the
// lock twice (the second time is refused, not waited for) or released it without holding it, used a message
// after its drop, dropped it twice or still held it when the lock was released, or passed a wrong constant,
// NULL or a foreign record. Each misuse is printed on stderr as it happens ("emulated switch: ...") and
// counted; the report has the first hundred, one a line.
EMULATOR_API std::size_t misuse_count();
EMULATOR_API std::string misuse_report();
EMULATOR_API void clear_misuse();

EMULATOR_API bool lock_held(); // by this thread

// Holds the platform's lock, for tests that call the services or the provider's inner functions themselves.
class EMULATOR_API Locked {
  public:
    Locked();
    ~Locked();
    Locked(const Locked&) = delete;
    Locked& operator=(const Locked&) = delete;
};

// The members that the scenario loader accepts, by the name of the object's definition in switch.schema.json.
EMULATOR_API std::map<std::string, std::vector<std::string>> scenario_members();

} // namespace emulator

#endif
