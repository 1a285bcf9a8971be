// Two fresh network namespaces joined by veth pairs, for everything that broadcasts: the
// library runs on the host side, the simulator on the other. Both namespaces are anonymous and
// belong to two threads of this process, so they vanish with the process whatever happens;
// the veth pairs are also deleted explicitly at the end.
#pragma once

#include <cstdlib>

#include <condition_variable>
#include <deque>
#include <functional>
#include <future>
#include <mutex>
#include <string>
#include <thread>
#include <type_traits>
#include <vector>

namespace zel::test {

// A thread that lives in a network namespace of its own and runs what it is given.
class NamespaceThread {
  public:
    NamespaceThread();
    ~NamespaceThread();
    NamespaceThread(const NamespaceThread &) = delete;
    NamespaceThread &operator=(const NamespaceThread &) = delete;

    // Whether the namespace could be made (false without CAP_SYS_ADMIN); why not.
    bool ok() const { return m_ok; }
    const std::string &error() const { return m_error; }
    int tid() const { return m_tid; }

    // Runs `fn` on the thread and returns its result; exceptions come back too.
    template <class F> auto run(F &&fn) -> std::invoke_result_t<F> {
        using R = std::invoke_result_t<F>;
        auto task = std::make_shared<std::packaged_task<R()>>(std::forward<F>(fn));
        auto result = task->get_future();
        post([task] { (*task)(); });
        return result.get();
    }

  private:
    void post(std::function<void()> job);
    void loop();

    std::thread m_thread;
    std::mutex m_mutex;
    std::condition_variable m_cv;
    std::deque<std::function<void()>> m_jobs;
    bool m_stop = false;
    bool m_ready = false;
    bool m_ok = false;
    int m_tid = 0;
    std::string m_error;
};

class NetnsPair {
  public:
    struct Options {
        // Addresses (CIDR) per link, on the host's end and on the simulator's end. One link
        // unless more are given.
        std::vector<std::vector<std::string>> hostAddresses = {{"10.77.0.2/24"}};
        std::vector<std::vector<std::string>> simAddresses = {{"10.77.0.1/24"}};
    };

    NetnsPair() : NetnsPair(Options{}) {}
    explicit NetnsPair(Options options);
    ~NetnsPair();

    // False when namespaces cannot be made here; the reason is in skip_reason().
    bool available() const { return m_available; }
    const std::string &skip_reason() const { return m_skipReason; }

    template <class F> auto in_host(F &&fn) { return m_host.run(std::forward<F>(fn)); }
    template <class F> auto in_sim(F &&fn) { return m_sim.run(std::forward<F>(fn)); }

    // The name of link i's end on either side.
    std::string host_link(std::size_t i) const;
    std::string sim_link(std::size_t i) const;

  private:
    NamespaceThread m_host;
    NamespaceThread m_sim;
    std::size_t m_links = 0;
    unsigned m_id = 0;
    bool m_available = false;
    std::string m_skipReason;
};

// Runs a command (no shell) in the calling thread's namespaces; its exit status, and its
// output in `output` if given. Throws when it cannot be started.
int run_command(const std::vector<std::string> &argv, std::string *output = nullptr);

} // namespace zel::test

// Skips the current test when namespaces cannot be made (no privileges): broadcast traffic
// must never leave a namespace of the test's own. Under CI, where the suite runs as root, a
// missing namespace is a failure instead, so that the broadcast tests cannot pass unseen.
#define ZEL_REQUIRE_NETNS(pair)                                                                    \
    do {                                                                                           \
        if (!(pair).available()) {                                                                 \
            if (std::getenv("CI") != nullptr) FAIL() << (pair).skip_reason();                      \
            GTEST_SKIP() << (pair).skip_reason();                                                  \
        }                                                                                          \
    } while (0)
