// zelctl: drives a LED panel controller from a terminal or a shell script, through the
// library's exported entries.
#include <CLI/CLI.hpp>
#include <iostream>
#include <unistd.h>

#include "commands.h"
#include "program_json.h"
#include "session.h"
#include "zel_sdk_dual.h"

namespace {

constexpr const char *kFooter = R"(
Every command talks to the controller at --host ADDRESS [--port PORT] or on the serial line
--serial PATH [--speed 9600|57600]; these and --json, --trace, --packet-len, --no-progress may
stand before or after the command. Each command has --help.

Exit status: 0 success; 1 to 99 the controller's error code (1 also: the answer did not fit);
100 a controller error code of 100 or more; 101 no connection, no answer in time or a bad frame;
102 bad header check; 103 bad body CRC; 104 unknown header version; 105 an unexpected answer;
110 a wrong command line; 111 a local file or program description that cannot be used.)";

void print_report(FILE *out, zelctl::Report &report, bool json) {
    if (json) {
        const std::string text = report.data().dump(2) + "\n";
        std::fwrite(text.data(), 1, text.size(), out);
    } else {
        for (const auto &line : report.lines())
            std::fprintf(out, "%s\n", line.c_str());
    }
    std::fflush(out);
}

} // namespace

// fontconfig keeps its configuration and pattern caches until the process ends; fonts chosen by
// family name reach them. A build with LeakSanitizer is told that they are not leaks.
extern "C" __attribute__((visibility("default"))) const char *__lsan_default_suppressions() {
    return "leak:libfontconfig.so\n";
}

int main(int argc, char **argv) {
    using namespace zelctl;
    CLI::App app{"zelctl: drive a G5 or G6 LED panel controller from the command line", "zelctl"};
    app.fallthrough();
    app.require_subcommand(1);
    app.footer(kFooter);
    app.set_version_flag("--version", std::string("zelctl ") + ZELCTL_VERSION);
    Options options;
    Chosen chosen;
    app.add_option("--host", options.target.host, "the controller's address (TCP)");
    app.add_option("--port", options.target.port, "its TCP port (default 5005)");
    app.add_option("--serial", options.target.serial, "a serial line, such as /dev/ttyUSB0");
    app.add_option("--speed", options.target.speed, "the serial line's speed (default 57600)")
        ->check(CLI::IsMember({9600u, 57600u}));
    app.add_flag("--json", options.json, "answer as one JSON object on standard output");
    app.add_flag("--trace", options.trace, "show the library's console trace on standard error");
    app.add_flag("--no-progress", options.noProgress, "no progress bar, also on a terminal");
    app.add_option("--packet-len", options.packetLen, "block size of file writes (default 1024)")
        ->check(CLI::Range(16, 16000));
    add_commands(app, options, chosen);
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError &e) {
        const int status = app.exit(e);
        return status == 0 ? 0 : exit_code::kUsage;
    }

    Report report(chosen.name);
    int status = exit_code::kSuccess;
    int32_t result = 0;
    std::string problem;
    std::vector<std::string> libraryErrors;
    {
        TraceRedirect trace(options.trace);
        zelDual_InitSdk();
        if (options.packetLen != 0) zelDual_set_packetLen(options.packetLen);
        Context context{options, report, !options.noProgress && ::isatty(STDERR_FILENO) == 1};
        try {
            const bool local = chosen.name == "time get";
            if (!local && options.target.host.empty() == options.target.serial.empty())
                throw UsageError("give the controller as --host ADDRESS or as --serial PATH");
            result = chosen.run(context);
            status = exit_status(result);
            if (result != 0) problem = describe_result(result);
        } catch (const UsageError &e) {
            status = exit_code::kUsage;
            problem = e.what();
        } catch (const ProgramError &e) {
            status = exit_code::kInput;
            problem = e.what();
        } catch (const std::exception &e) {
            status = exit_code::kInput;
            problem = e.what();
        }
        zelDual_ReleaseSdk();
        if (status != 0) libraryErrors = trace.error_lines();
        report.set("result", result);
        report.set("exit", status);
        if (!problem.empty()) report.set("error", problem);
        if (!libraryErrors.empty()) report.set("libraryErrors", libraryErrors);
        print_report(trace.out(), report, options.json);
    }
    if (status != 0 && !options.json) {
        std::cerr << "zelctl: " << chosen.name << ": " << problem;
        if (result != 0) std::cerr << " (result " << result << ")";
        std::cerr << "\n";
        for (const auto &line : libraryErrors)
            std::cerr << "zelctl: library: " << line << "\n";
    }
    return status;
}
