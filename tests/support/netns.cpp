#include "support/netns.h"

#include <atomic>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sched.h>
#include <spawn.h>
#include <stdexcept>
#include <sys/wait.h>
#include <unistd.h>

extern char **environ;

namespace zel::test {
namespace {

std::atomic<unsigned> g_pairCounter{0};

void must(const std::vector<std::string> &argv) {
    std::string output;
    if (run_command(argv, &output) != 0) {
        std::string line;
        for (const auto &a : argv)
            line += a + " ";
        throw std::runtime_error("netns: '" + line + "' failed: " + output);
    }
}

} // namespace

int run_command(const std::vector<std::string> &argv, std::string *output) {
    int pipeFds[2];
    if (::pipe2(pipeFds, O_CLOEXEC) != 0) throw std::runtime_error("pipe failed");
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, pipeFds[1], 1);
    posix_spawn_file_actions_adddup2(&actions, pipeFds[1], 2);
    std::vector<char *> args;
    for (const auto &a : argv)
        args.push_back(const_cast<char *>(a.c_str()));
    args.push_back(nullptr);
    pid_t pid = 0;
    // The child is made by the calling thread and so starts in that thread's namespace.
    const int rc = ::posix_spawnp(&pid, args[0], &actions, nullptr, args.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    ::close(pipeFds[1]);
    if (rc != 0) {
        ::close(pipeFds[0]);
        throw std::runtime_error(std::string("cannot start ") + argv[0] + ": " + std::strerror(rc));
    }
    std::string text;
    char buf[512];
    ssize_t n;
    while ((n = ::read(pipeFds[0], buf, sizeof buf)) > 0)
        text.append(buf, static_cast<std::size_t>(n));
    ::close(pipeFds[0]);
    int status = 0;
    while (::waitpid(pid, &status, 0) < 0 && errno == EINTR) {
    }
    if (output != nullptr) *output = text;
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

NamespaceThread::NamespaceThread() {
    m_thread = std::thread([this] { loop(); });
    std::unique_lock<std::mutex> lock(m_mutex);
    m_cv.wait(lock, [this] { return m_ready; });
}

NamespaceThread::~NamespaceThread() {
    {
        std::lock_guard<std::mutex> lock(m_mutex);
        m_stop = true;
    }
    m_cv.notify_all();
    m_thread.join();
}

void NamespaceThread::post(std::function<void()> job) {
    {
        std::lock_guard<std::mutex> lock(m_mutex);
        m_jobs.push_back(std::move(job));
    }
    m_cv.notify_all();
}

void NamespaceThread::loop() {
    {
        std::lock_guard<std::mutex> lock(m_mutex);
        // A network namespace is a property of the thread: this one alone moves.
        if (::unshare(CLONE_NEWNET) == 0) {
            m_ok = true;
        } else {
            m_error = std::string("cannot make a network namespace: ") + std::strerror(errno);
        }
        m_tid = static_cast<int>(::gettid());
        m_ready = true;
    }
    m_cv.notify_all();
    for (;;) {
        std::function<void()> job;
        {
            std::unique_lock<std::mutex> lock(m_mutex);
            m_cv.wait(lock, [this] { return m_stop || !m_jobs.empty(); });
            if (m_jobs.empty()) return;
            job = std::move(m_jobs.front());
            m_jobs.pop_front();
        }
        job();
    }
}

NetnsPair::NetnsPair(Options options) {
    if (!m_host.ok() || !m_sim.ok()) {
        m_skipReason = !m_host.ok() ? m_host.error() : m_sim.error();
        return;
    }
    m_id = g_pairCounter.fetch_add(1);
    m_links = options.hostAddresses.size();
    m_host.run([&] {
        must({"ip", "link", "set", "lo", "up"});
        for (std::size_t i = 0; i < m_links; ++i) {
            must({"ip", "link", "add", host_link(i), "type", "veth", "peer", "name", sim_link(i),
                  "netns", std::to_string(m_sim.tid())});
            for (const auto &a : options.hostAddresses[i]) {
                must({"ip", "addr", "add", a, "dev", host_link(i)});
            }
            must({"ip", "link", "set", host_link(i), "up"});
        }
    });
    m_sim.run([&] {
        must({"ip", "link", "set", "lo", "up"});
        for (std::size_t i = 0; i < m_links; ++i) {
            if (i < options.simAddresses.size()) {
                for (const auto &a : options.simAddresses[i]) {
                    must({"ip", "addr", "add", a, "dev", sim_link(i)});
                }
            }
            must({"ip", "link", "set", sim_link(i), "up"});
        }
    });
    // Wait until both ends report a carrier, or the first packets vanish.
    m_host.run([&] {
        for (std::size_t i = 0; i < m_links; ++i) {
            for (int tries = 0; tries < 200; ++tries) {
                std::string out;
                run_command({"ip", "-o", "link", "show", "dev", host_link(i)}, &out);
                if (out.find("LOWER_UP") != std::string::npos) break;
                std::this_thread::sleep_for(std::chrono::milliseconds(10));
            }
        }
    });
    m_available = true;
}

NetnsPair::~NetnsPair() {
    if (!m_available) return;
    // Deleting one end removes the pair; the namespaces go when their threads end.
    m_host.run([&] {
        for (std::size_t i = 0; i < m_links; ++i)
            run_command({"ip", "link", "del", host_link(i)});
    });
}

std::string NetnsPair::host_link(std::size_t i) const {
    return "zh" + std::to_string(::getpid() % 100000) + "_" + std::to_string(m_id * 4 + i);
}

std::string NetnsPair::sim_link(std::size_t i) const {
    return "zs" + std::to_string(::getpid() % 100000) + "_" + std::to_string(m_id * 4 + i);
}

} // namespace zel::test
