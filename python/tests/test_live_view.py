"""What the live view of zel-sim --web lets through: GET from its own loopback name only."""

import http.client


def ask(sim, method, path, host=None):
    connection = http.client.HTTPConnection("127.0.0.1", sim.web_port, timeout=5)
    headers = {"Host": host} if host else {}
    connection.request(method, path, headers=headers)
    answer = connection.getresponse()
    if path == "/events":
        body = b""
        while b"\n\n" not in body:  # the first event, which never ends the stream
            body += answer.read1(100)
    else:
        body = answer.read(200)
    connection.close()
    return answer.status, answer.getheader("Content-Type"), body


def test_only_gets_from_its_own_names(sim):
    port = sim.web_port
    assert ask(sim, "GET", "/")[:2] == (200, "text/html; charset=utf-8")
    assert ask(sim, "GET", "/", host=f"localhost:{port}")[0] == 200
    status, kind, body = ask(sim, "GET", "/panel.png")
    assert (status, kind, body[:8]) == (200, "image/png", b"\x89PNG\r\n\x1a\n")
    assert ask(sim, "GET", "/nothing")[0] == 404
    for method in ("POST", "PUT", "DELETE"):
        assert ask(sim, method, "/state.json")[0] == 405
    # A name of another site pointed at 127.0.0.1, or another port, is refused.
    assert ask(sim, "GET", "/state.json", host=f"example.test:{port}")[0] == 403
    assert ask(sim, "GET", "/state.json", host=f"127.0.0.1:{port + 1}")[0] == 403


def test_events_start_with_a_change(sim):
    status, kind, first = ask(sim, "GET", "/events")
    assert (status, kind) == (200, "text/event-stream")
    assert first == b"event: changed\ndata: 0\n\n"
