#include "session.h"

#include <cctype>
#include <cstdio>
#include <unistd.h>

namespace zelctl {

int exit_status(int32_t result) {
    if (result == 0) return exit_code::kSuccess;
    if (result > 0)
        return result < exit_code::kLargeControllerCode ? result : exit_code::kLargeControllerCode;
    if (result >= -5) return exit_code::kFailureBase - result;
    return exit_code::kFailureBase + 1; // the library has no other negative result
}

std::string describe_result(int32_t result) {
    switch (result) {
    case 0:
        return "success";
    case 1:
        return "the answer was longer than the room for it";
    case -1:
        return "failure: no connection, no answer in time, or a bad frame";
    case -2:
        return "the answer's header check failed";
    case -3:
        return "the CRC-16 over the answer's body failed";
    case -4:
        return "the answer's header version is unknown";
    case -5:
        return "the answer was not the one expected";
    default:
        break;
    }
    if (result > 0) return "the controller reported error code " + std::to_string(result);
    return "failure " + std::to_string(result);
}

std::string Target::describe() const {
    if (is_serial()) return serial + " at " + std::to_string(speed) + " bit/s";
    return host + ":" + std::to_string(port);
}

TraceRedirect::TraceRedirect(bool toStderr) {
    std::fflush(stdout);
    m_savedStdout = ::dup(STDOUT_FILENO);
    m_out = ::fdopen(::dup(m_savedStdout), "w");
    if (toStderr) {
        ::dup2(STDERR_FILENO, STDOUT_FILENO);
    } else if ((m_capture = std::tmpfile()) != nullptr) {
        ::dup2(::fileno(m_capture), STDOUT_FILENO);
    }
}

TraceRedirect::~TraceRedirect() {
    std::fflush(stdout);
    if (m_savedStdout >= 0) {
        ::dup2(m_savedStdout, STDOUT_FILENO);
        ::close(m_savedStdout);
    }
    if (m_out != nullptr) std::fclose(m_out);
    if (m_capture != nullptr) std::fclose(m_capture);
}

std::vector<std::string> TraceRedirect::error_lines() const {
    std::vector<std::string> lines;
    if (m_capture == nullptr) return lines;
    std::fflush(stdout);
    std::rewind(m_capture);
    std::string line;
    for (int c = std::fgetc(m_capture);; c = std::fgetc(m_capture)) {
        if (c == EOF || c == '\n') {
            while (!line.empty() && (line.back() == '\r' || line.back() == ' '))
                line.pop_back();
            if (line.rfind("Error", 0) == 0) lines.push_back(line);
            line.clear();
            if (c == EOF) break;
        } else {
            line.push_back(static_cast<char>(c));
        }
    }
    return lines;
}

std::string hex_bytes(const uint8_t *bytes, std::size_t length) {
    static const char kDigits[] = "0123456789abcdef";
    std::string text;
    for (std::size_t i = 0; i < length; ++i) {
        if (i != 0) text.push_back(' ');
        text.push_back(kDigits[bytes[i] >> 4]);
        text.push_back(kDigits[bytes[i] & 15]);
    }
    return text;
}

std::optional<std::vector<uint8_t>> parse_hex(const std::string &text) {
    std::vector<uint8_t> bytes;
    int high = -1;
    for (char c : text) {
        if (c == ' ' || c == ':' || c == '-' || c == ',') {
            if (high >= 0) return std::nullopt; // a lone digit
            continue;
        }
        if (std::isxdigit(static_cast<unsigned char>(c)) == 0) return std::nullopt;
        const int digit = std::isdigit(static_cast<unsigned char>(c)) != 0
                              ? c - '0'
                              : std::tolower(static_cast<unsigned char>(c)) - 'a' + 10;
        if (high < 0) {
            high = digit;
        } else {
            bytes.push_back(static_cast<uint8_t>(high * 16 + digit));
            high = -1;
        }
    }
    if (high >= 0) return std::nullopt;
    return bytes;
}

} // namespace zelctl
