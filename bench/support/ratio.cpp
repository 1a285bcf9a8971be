#include "support/ratio.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace zel::bench {
namespace {

struct Timing {
    double cpu = 0;  // seconds per iteration
    double real = 0; // seconds per iteration
    double bytes_per_second = 0;
    double mpix_per_second = 0;
    bool median = false;
    int samples = 1;
};

using Key = std::pair<std::string, std::string>; // function name, arguments

// Arguments in natural order ("w:64/..." before "w:256/..."), so that the tables read the same
// when the repetitions run interleaved in random order.
bool natural_less(const std::string &a, const std::string &b) {
    std::size_t i = 0, j = 0;
    while (i < a.size() && j < b.size()) {
        if (std::isdigit(static_cast<unsigned char>(a[i])) &&
            std::isdigit(static_cast<unsigned char>(b[j]))) {
            unsigned long long na = 0, nb = 0;
            for (; i < a.size() && std::isdigit(static_cast<unsigned char>(a[i])); ++i)
                na = na * 10 + static_cast<unsigned>(a[i] - '0');
            for (; j < b.size() && std::isdigit(static_cast<unsigned char>(b[j])); ++j)
                nb = nb * 10 + static_cast<unsigned>(b[j] - '0');
            if (na != nb) return na < nb;
        } else {
            if (a[i] != b[j]) return a[i] < b[j];
            ++i;
            ++j;
        }
    }
    return a.size() - i < b.size() - j;
}

std::vector<Comparison> &comparisons() {
    static std::vector<Comparison> list;
    return list;
}

// Forwards everything to the console and keeps one timing per benchmark and arguments: the
// median when repetitions give one, the single run otherwise.
class RatioReporter : public benchmark::ConsoleReporter {
  public:
    void ReportRuns(const std::vector<Run> &runs) override {
        ConsoleReporter::ReportRuns(runs);
        for (const Run &run : runs) {
            if (run.error_occurred) continue;
            const bool median = run.run_type == Run::RT_Aggregate && run.aggregate_name == "median";
            if (run.run_type == Run::RT_Aggregate && !median) continue;
            Timing &t = m_timings[{run.run_name.function_name, run.run_name.args}];
            if (t.median && !median) continue;
            const double unit = benchmark::GetTimeUnitMultiplier(run.time_unit);
            t.cpu = run.GetAdjustedCPUTime() / unit;
            t.real = run.GetAdjustedRealTime() / unit;
            const auto bytes = run.counters.find("bytes_per_second");
            t.bytes_per_second = bytes == run.counters.end() ? 0 : bytes->second.value;
            const auto pixels = run.counters.find("Mpix/s");
            t.mpix_per_second = pixels == run.counters.end() ? 0 : pixels->second.value;
            if (m_order.insert({run.run_name.function_name, run.run_name.args}).second)
                m_keys.push_back({run.run_name.function_name, run.run_name.args});
            if (median) {
                t.median = true;
                t.samples = static_cast<int>(run.repetitions);
            }
        }
    }

    void print_ratios() const {
        bool any_median = false;
        for (const auto &entry : m_timings)
            any_median = any_median || entry.second.median;
        std::printf("\n## Ratios%s\n", any_median ? " (medians of the repetitions)" : "");
        for (const Comparison &c : comparisons()) {
            std::printf("\n%s (%s time)\n\n", c.title.c_str(),
                        c.clock == Clock::Cpu ? "CPU" : "real");
            std::printf("| case | %s | %s | throughput | ratio | difference | target |\n",
                        c.subject.c_str(), c.reference.c_str());
            std::printf("|---|---:|---:|---:|---:|---:|---:|\n");
            std::vector<Key> keys;
            for (const Key &key : m_keys) {
                if (key.first == c.subject) keys.push_back(key);
            }
            std::stable_sort(keys.begin(), keys.end(), [](const Key &a, const Key &b) {
                return natural_less(a.second, b.second);
            });
            for (const Key &key : keys) {
                const Timing &subject = m_timings.at(key);
                const std::string ref_args = c.reference_args ? c.reference_args : key.second;
                const auto ref = m_timings.find({c.reference, ref_args});
                if (ref == m_timings.end()) continue;
                const double s =
                    (c.clock == Clock::Cpu ? subject.cpu : subject.real) / c.subject_units;
                const double r = c.clock == Clock::Cpu ? ref->second.cpu : ref->second.real;
                const double ratio = s > 0 ? r / s : 0;
                char throughput[32] = "";
                if (subject.bytes_per_second > 0)
                    std::snprintf(throughput, sizeof throughput, "%.2f GB/s",
                                  subject.bytes_per_second / 1e9);
                else if (subject.mpix_per_second > 0)
                    std::snprintf(throughput, sizeof throughput, "%.0f Mpix/s",
                                  subject.mpix_per_second);
                char target[32] = "";
                if (c.target > 0)
                    std::snprintf(target, sizeof target, "%s %g×",
                                  ratio >= c.target ? "≥" : "MISSED", c.target);
                else if (c.within > 0)
                    std::snprintf(target, sizeof target, "%s %s",
                                  s - r <= c.within ? "≤" : "MISSED",
                                  format_time(c.within).c_str());
                const std::string difference =
                    (s < r ? "-" : "+") + format_time(s < r ? r - s : s - r);
                std::printf("| %s | %s | %s | %s | %.2f× | %s | %s |\n",
                            key.second.empty() ? "-" : key.second.c_str(), format_time(s).c_str(),
                            format_time(r).c_str(), throughput, ratio, difference.c_str(), target);
            }
        }
    }

  private:
    static std::string format_time(double seconds) {
        char text[32];
        if (seconds >= 1e-3)
            std::snprintf(text, sizeof text, "%.3f ms", seconds * 1e3);
        else if (seconds >= 1e-6)
            std::snprintf(text, sizeof text, "%.3f µs", seconds * 1e6);
        else
            std::snprintf(text, sizeof text, "%.1f ns", seconds * 1e9);
        return text;
    }

    std::map<Key, Timing> m_timings;
    std::set<Key> m_order;
    std::vector<Key> m_keys; // in the order the benchmarks ran
};

} // namespace

bool compare(Comparison comparison) {
    comparisons().push_back(std::move(comparison));
    return true;
}

} // namespace zel::bench

int main(int argc, char **argv) {
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    zel::bench::RatioReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    reporter.print_ratios();
    benchmark::Shutdown();
    return 0;
}
