// What every zelctl command shares: where the controller is, how the answer is shown, and how a
// library result becomes an exit status.
#pragma once

#include <cstdint>
#include <cstdio>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <vector>

namespace zelctl {

using Json = nlohmann::ordered_json;

// Exit statuses. A controller's error code passes through as it is up to 99; the library's own
// failures (-1 to -5) become 101 to 105, so that a script can tell them from the controller's.
namespace exit_code {
inline constexpr int kSuccess = 0;
inline constexpr int kLargeControllerCode = 100; // a controller error code of 100 or more
inline constexpr int kFailureBase = 100;         // -n becomes 100 + n
inline constexpr int kUsage = 110;               // the command line is wrong
inline constexpr int kInput = 111;               // a local file or program description is wrong
} // namespace exit_code

// The library's result as an exit status.
int exit_status(int32_t result);
// A short English text for a library result ("transport failure or time-out", ...).
std::string describe_result(int32_t result);

// The controller: a TCP address and port, or a serial line and its speed.
struct Target {
    std::string host;
    uint16_t port = 5005;
    std::string serial;
    unsigned speed = 57600;

    bool is_serial() const { return !serial.empty(); }
    // The speed index the library takes: 1 for 9600, 2 for 57600.
    uint8_t speed_index() const { return speed == 9600 ? 1 : 2; }
    std::string describe() const;
};

// A command's outcome: the library's result, fields for --json and lines for a person.
class Report {
  public:
    explicit Report(std::string command) { m_data["command"] = std::move(command); }
    void set(const std::string &key, Json value) { m_data[key] = std::move(value); }
    void say(std::string line) { m_lines.push_back(std::move(line)); }
    Json &data() { return m_data; }
    const std::vector<std::string> &lines() const { return m_lines; }

  private:
    Json m_data;
    std::vector<std::string> m_lines;
};

// The library writes its console trace to standard output. zelctl keeps standard output for
// its own answer, so the trace goes to a scratch file (or to stderr with --trace) and its error
// lines are shown when a command fails.
class TraceRedirect {
  public:
    explicit TraceRedirect(bool toStderr);
    ~TraceRedirect();
    TraceRedirect(const TraceRedirect &) = delete;
    TraceRedirect &operator=(const TraceRedirect &) = delete;

    // zelctl's own output: the standard output the program was started with.
    FILE *out() const { return m_out; }
    // The trace's lines that report an error ("Error:..."), in order.
    std::vector<std::string> error_lines() const;

  private:
    FILE *m_out = nullptr;
    FILE *m_capture = nullptr;
    int m_savedStdout = -1;
};

// Formats bytes as hexadecimal pairs separated by spaces.
std::string hex_bytes(const uint8_t *bytes, std::size_t length);
// Reads hexadecimal pairs ("0a 1B ff", "0a1bff"); nothing when the text is not that.
std::optional<std::vector<uint8_t>> parse_hex(const std::string &text);

} // namespace zelctl
