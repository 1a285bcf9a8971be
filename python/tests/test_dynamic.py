"""A text pushed to a dynamic area of zel-sim, G5 and G6, then deleted."""

import urllib.request

import pytest

from zel_sdk_dual import SCREEN_TWO_COLORS, Controller, ZelError


@pytest.mark.parametrize("fixture, family", [("sim", "G5"), ("sim_g6", "G6")])
def test_a_pushed_text_is_shown_then_deleted(request, fixture, family):
    sim = request.getfixturevalue(fixture)
    before = panel_png(sim)
    controller = Controller("127.0.0.1", sim.tcp_port)
    # The family comes from the ping here, so the controller sees it twice (the library pings
    # again before it sends).
    controller.show_text(2, 32, 16, 64, 32, "42", screen_color=SCREEN_TWO_COLORS, fontSize=14,
                         fontColor=2)
    output = sim.output()
    assert "panel: 1 dynamic areas over no program;" in output, output
    assert (sim.panel / "live-panel.png").read_bytes()[:8] == b"\x89PNG\r\n\x1a\n"
    assert panel_png(sim) != before  # the live view shows the area too
    last = sim.state()["requests"]["last"]
    assert any(" A7 00" in line for line in last), last

    # Replacing the area keeps one; deleting it leaves none.
    controller.show_text(2, 32, 16, 64, 32, "43", screen_color=SCREEN_TWO_COLORS, family=family)
    assert sim.output().count("panel: 1 dynamic areas") == 2
    controller.delete_dynamic_area(2, family=family)
    assert "panel: 0 dynamic areas" in sim.output()
    assert panel_png(sim) == before

    # A G5 area number above 64 is refused before any traffic; an unknown family at once.
    if family == "G5":
        with pytest.raises(ZelError) as refused:
            controller.delete_dynamic_area(65, family="G5")
        assert refused.value.code == -1
    with pytest.raises(ValueError):
        controller.show_text(1, 0, 0, 8, 8, "x", family="G7")


def panel_png(sim):
    url = f"http://127.0.0.1:{sim.web_port}/panel.png"
    direct = urllib.request.build_opener(urllib.request.ProxyHandler({}))
    with direct.open(url, timeout=5) as answer:
        return answer.read()
