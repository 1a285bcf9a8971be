// Ratios between benchmarks of one run. A benchmark program declares pairs of a subject and
// the reference it is measured against; every program links this part's main, which runs the
// benchmarks as usual and then prints one table row per pair of runs with the same arguments:
// both times, the subject's throughput where it counts bytes or pixels, and the ratio
// reference time / subject time (above 1: the subject is that many times faster). With
// --benchmark_repetitions the medians are compared. Absolute times depend on the machine and its
// load; the ratios are what to compare.
#pragma once

#include <string>

namespace zel::bench {

enum class Clock { Cpu, Real };

// Compares every run of `subject` with the run of `reference` that has the same arguments
// (or, when `reference_args` is given, with that one run of `reference`). `target` is the
// speed-up the subject should reach (0: none), printed next to the ratio.
struct Comparison {
    std::string title;
    std::string subject;
    std::string reference;
    double target = 0;
    Clock clock = Clock::Cpu;
    const char *reference_args = nullptr;
    // How many of the reference's units one iteration of the subject covers (its time is
    // divided by this before the comparison).
    double subject_units = 1;
};

// Declares a comparison; returns true so that it can initialise a static.
bool compare(Comparison comparison);

} // namespace zel::bench
