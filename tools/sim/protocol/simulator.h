// A simulated controller: it speaks the controller's side of the protocol over TCP, UDP
// broadcast, a Wi-Fi module's AT commands and a serial line (a pseudo-terminal it creates),
// records every request for tests, and misbehaves on request.
//
// Commands are answered by handlers registered per (group, code). The handlers of one command
// group live in one module file with one registration function, called by the simulator's
// setup. Handlers run on the simulator's thread, one request at a time, with the simulator's
// lock held: module state needs no lock of its own.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <ostream>
#include <string>
#include <thread>
#include <typeindex>
#include <typeinfo>
#include <utility>
#include <vector>

namespace zel::sim {

class Simulator;

enum class Transport { Tcp, Udp, Serial };
const char *transport_name(Transport transport);

// One request as the simulator received it.
struct Request {
    Transport transport = Transport::Tcp;
    std::string peer;    // "address:port" of the host, or the serial line's path
    std::string local;   // the simulator's own address text on this path ("" on a serial line)
    uint8_t version = 0; // header version: 0 probe, 5, 7, 240
    uint16_t screen = 0; // destination word
    uint16_t deviceType = 0;
    uint16_t sequence = 0;
    uint8_t echo = 0; // byte 5
    uint8_t group = 0;
    uint8_t code = 0;
    // The command data. For version 240 the group and code stand inside it (bytes 1 and 2 of
    // the dynamic command) and this is all of it.
    std::vector<uint8_t> data;
    std::vector<uint8_t> frame; // the bytes as they came, start run and end byte included
    std::vector<uint8_t> inner; // the unescaped packet
    bool valid = false;         // header check and CRC (where the version has them) are right
    uint32_t lineSpeed = 0;     // serial: the line's speed in bit/s when the request came
    bool is_probe() const { return version == 0; }
};

// What a handler wants sent back.
struct Reply {
    enum class Kind {
        Data, // group, code + 128, the error code and the data
        Ack,  // group 0xA0: code 0 when the error code is 0, else code 1 with the error code
        None, // no answer at all
    };
    Kind kind = Kind::Ack;
    uint16_t errorCode = 0;
    std::vector<uint8_t> data;
    bool closeAfter = false; // drop the connection once the answer is out (TCP only)

    static Reply ack() { return {}; }
    static Reply error(uint16_t code) { return {Kind::Ack, code, {}, false}; }
    static Reply answer(std::vector<uint8_t> bytes, uint16_t code = 0) {
        return {Kind::Data, code, std::move(bytes), false};
    }
    static Reply none() { return {Kind::None, 0, {}, false}; }
};

using Handler = std::function<Reply(Simulator &sim, const Request &request)>;
// An AT command line as the Wi-Fi module received it; the text to answer, or nullopt for none.
using AtHandler =
    std::function<std::optional<std::string>(Simulator &sim, const std::string &line)>;
// Called whenever a file has been written completely (the files module calls it).
using FileWrittenHook = std::function<void(uint8_t space, const std::string &name,
                                           const std::vector<uint8_t> &content)>;

// Called with every request as it is recorded (a live view lists the last ones).
using RequestHook = std::function<void(const Request &request)>;

// Which requests a fault touches.
enum class FaultScope { Probe, Commands, All };

struct Faults {
    FaultScope scope = FaultScope::Commands;
    bool silent = false;      // receive and record, never answer
    bool splitAnswer = false; // TCP: the answer goes out in two segments, some time apart
    uint16_t errorCode = 0;   // non-zero: acknowledge with this error code instead of answering
    int padIndex = -1;        // 0 to 255: cover the answer's body with the XOR pad at this index
    bool badHeaderCheck = false;
    bool badCrc = false;
    int headerVersion = -1;    // 0 to 255: put this header version into the answer
    int closeAfterBlocks = -1; // 0 or more: drop the connection after this many file blocks
    bool any() const;
};

struct Config {
    uint16_t controllerType = 0x0051;
    std::string bindAddress = "127.0.0.1";
    int tcpPort = 0;     // 0: any free port; -1: no TCP
    int udpPort = -1;    // the controller's protocol on UDP, usually 5007; -1: none
    int atPort = -1;     // the Wi-Fi module, usually 13769; -1: none
    bool serial = false; // serve a serial line on a pseudo-terminal
    // 9600 or 57600: like a controller set to that speed, the line hears nothing while the host
    // has it at another speed. 0: any speed.
    uint32_t serialSpeed = 0;
    uint8_t echoByte = 0x00;   // byte 5 of every answer header
    uint8_t capability = 0x00; // byte 9 of every version 7 answer header
    int splitDelayMs = 200;    // pause between the two segments of a split answer
    // Requests (and AT lines) kept for requests(): 0 keeps every one, as tests want; a
    // simulator that runs for days keeps between the last that many and twice that many.
    std::size_t keepRequests = 0;
    Faults faults;
};

// The header version a controller type answers with: 7 for the G6 codes, 5 otherwise.
uint8_t answer_version_for(uint16_t controllerType);

class Simulator {
  public:
    explicit Simulator(Config config = {});
    ~Simulator();
    Simulator(const Simulator &) = delete;
    Simulator &operator=(const Simulator &) = delete;

    // Binds the sockets and opens the pseudo-terminal in the calling thread's network
    // namespace, then serves on a thread of its own. Throws std::runtime_error on failure.
    void start();
    // Stops serving and closes everything. Also done by the destructor.
    void stop();

    uint16_t tcp_port() const { return m_tcpPort; }
    uint16_t udp_port() const { return m_udpPort; }
    uint16_t at_port() const { return m_atPort; }
    const std::string &serial_path() const { return m_serialPath; }

    // Handlers. A later registration for the same key replaces the earlier one, so a test can
    // override any module's handler.
    void on(uint8_t group, uint8_t code, Handler handler);
    void on_at(AtHandler handler);

    // Everything received so far (only the latest when Config::keepRequests is set), in order
    // of arrival.
    std::vector<Request> requests() const;
    // The requests other than probes.
    std::vector<Request> commands() const;
    std::vector<std::string> at_lines() const;
    void clear_requests();
    // Blocks until `count` requests have arrived since the start or the last clear_requests(),
    // or `timeoutMs` passed; true if reached.
    bool wait_for_requests(std::size_t count, int timeoutMs) const;

    Faults faults() const;
    void set_faults(const Faults &faults);
    uint16_t controller_type() const;
    void set_controller_type(uint16_t type);
    const Config &config() const { return m_config; }

    // State of one handler module, created on first use and kept for the simulator's life.
    // Handlers call it freely (they hold the lock); other threads take lock() first.
    template <class T> T &module_state() {
        std::lock_guard<std::recursive_mutex> guard(m_mutex);
        auto &slot = m_moduleStates[std::type_index(typeid(T))];
        if (!slot) {
            slot = std::make_shared<T>();
        }
        return *static_cast<T *>(slot.get());
    }
    std::unique_lock<std::recursive_mutex> lock() const {
        return std::unique_lock<std::recursive_mutex>(m_mutex);
    }

    // Program files and other written files: the files module calls notify_file_written when
    // a file is complete; a test or a decoder hooks in here.
    void set_file_written_hook(FileWrittenHook hook);
    void notify_file_written(uint8_t space, const std::string &name,
                             const std::vector<uint8_t> &content);

    // Runs on the simulator's thread with its lock held, after each request is recorded: it
    // must be quick and must not wait for another thread that takes the lock.
    void set_request_hook(RequestHook hook);

    // One readable line per request (and per AT line) goes here; null for none.
    void set_trace(std::ostream *out);

    // One conversation: a TCP connection, the UDP port, or the serial line.
    struct Session {
        Transport transport = Transport::Tcp;
        std::string peer;
        std::string local;
        uint32_t fileBlocks = 0; // file blocks answered on this conversation
        uint32_t lineSpeed = 0;  // serial: the line's speed when the last bytes came
    };
    // The transport-independent core: what the simulator answers to one frame, for the fuzz
    // target and for tests that need no transport. Records the request. Returns the bytes to
    // send: nothing, one segment, or two when the answer is split.
    struct Outcome {
        std::vector<std::vector<uint8_t>> segments;
        bool close = false;
    };
    Outcome handle_frame(Session &session, const std::vector<uint8_t> &frame);
    // The same for one AT line.
    std::optional<std::string> handle_at(const std::string &peer, const std::string &line);

  private:
    struct Impl;
    Reply dispatch(const Request &request);
    std::vector<uint8_t> build_reply_frame(const Request &request, const Reply &reply,
                                           const Faults &faults, bool faulty) const;
    void trace_request(const Request &request) const;

    Config m_config;
    mutable std::recursive_mutex m_mutex;
    std::map<std::pair<uint8_t, uint8_t>, Handler> m_handlers;
    AtHandler m_atHandler;
    std::vector<Request> m_requests;
    std::size_t m_requestsArrived = 0;
    std::vector<std::string> m_atLines;
    std::map<std::type_index, std::shared_ptr<void>> m_moduleStates;
    FileWrittenHook m_fileHook;
    RequestHook m_requestHook;
    std::ostream *m_trace = nullptr;

    std::unique_ptr<Impl> m_impl;
    uint16_t m_tcpPort = 0;
    uint16_t m_udpPort = 0;
    uint16_t m_atPort = 0;
    std::string m_serialPath;
};

// Module registration, one per handler file; the simulator's constructor calls all three.
void register_network_handlers(Simulator &sim);
void register_control_handlers(Simulator &sim);
void register_files_handlers(Simulator &sim);

} // namespace zel::sim
