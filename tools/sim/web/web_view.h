// The live view of a simulated controller: a small web server on the loopback address that
// shows the panel as it is now and updates itself as programs land, with the program list,
// the last requests and the controller's settings beside it.
//
//   GET /            the page (one HTML file with its script, built into the program)
//   GET /panel.png   the panel as it stands now (LivePanel::current_image)
//   GET /state.json  programs, last requests, settings, the program on the panel
//   GET /events      server-sent events: "changed" whenever the state moves on
//
// Only GET is served, only on 127.0.0.1, only to requests that name that address (or
// localhost) as their host.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

namespace zel::sim {

class LivePanel;
class Simulator;

class WebView {
  public:
    // Takes the simulator's request hook (until the view ends) and listens to the panel.
    WebView(Simulator &sim, LivePanel &panel);
    ~WebView();
    WebView(const WebView &) = delete;
    WebView &operator=(const WebView &) = delete;

    // Listens on 127.0.0.1:port (0 picks a free port) and serves on threads of its own.
    // Throws std::runtime_error when the port cannot be had.
    void start(int port);
    // Ends the event streams and stops serving. Also done by the destructor.
    void stop();

    uint16_t port() const;
    // What GET /state.json answers.
    std::string state_json() const;

  private:
    struct Impl;
    std::shared_ptr<Impl> m_impl; // the panel's change listener holds it weakly
};

// The page, as built into the program.
const std::string &web_page();

} // namespace zel::sim
