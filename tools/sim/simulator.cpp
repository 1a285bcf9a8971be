#include "sim/simulator.h"

namespace zel::sim {

struct Simulator::Impl {};

Simulator::Simulator(Config config) : m_config(std::move(config)) {
    register_network_handlers(*this);
    register_control_handlers(*this);
    register_files_handlers(*this);
}

Simulator::~Simulator() {
    stop();
}

void Simulator::start() {}
void Simulator::stop() {}

void Simulator::on(uint8_t group, uint8_t code, Handler handler) {
    std::lock_guard<std::recursive_mutex> guard(m_mutex);
    m_handlers[{group, code}] = std::move(handler);
}

void Simulator::on_at(AtHandler handler) {
    std::lock_guard<std::recursive_mutex> guard(m_mutex);
    m_atHandler = std::move(handler);
}

void Simulator::set_file_written_hook(FileWrittenHook hook) {
    std::lock_guard<std::recursive_mutex> guard(m_mutex);
    m_fileHook = std::move(hook);
}

void Simulator::notify_file_written(uint8_t space, const std::string &name,
                                    const std::vector<uint8_t> &content) {
    std::lock_guard<std::recursive_mutex> guard(m_mutex);
    if (m_fileHook) {
        m_fileHook(space, name, content);
    }
}

} // namespace zel::sim
