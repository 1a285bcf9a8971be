#!/usr/bin/env python3
"""Pushes a counter to dynamic area 1 of a controller once a second, then removes the area.

    python3 python/examples/push_counter.py 127.0.0.1 5005 [SECONDS]

A dynamic area needs no program: the text shows at once, over whatever program is playing.
"""

import sys
import time

from zel_sdk_dual import SCREEN_ONE_COLOR, Controller, ZelError, is_g6

AREA = 1


def main():
    address = sys.argv[1] if len(sys.argv) > 1 else "127.0.0.1"
    port = int(sys.argv[2]) if len(sys.argv) > 2 else 5005
    seconds = int(sys.argv[3]) if len(sys.argv) > 3 else 5
    controller = Controller(address, port)
    try:
        family = "G6" if is_g6(controller.ping().ControllerType) else "G5"
        for count in range(1, seconds + 1):
            controller.show_text(AREA, 0, 0, 64, 32, f"{count:03d}", family=family,
                                 screen_color=SCREEN_ONE_COLOR, fontSize=16,
                                 arrMode=0)
            print(f"area {AREA}: {count:03d}")
            time.sleep(1)
        controller.delete_dynamic_area(AREA, family=family)
        print(f"area {AREA} deleted")
    except ZelError as error:
        print(f"failed: {error}", file=sys.stderr)
        return 1
    return 0


if __name__ == "__main__":
    sys.exit(main())
