#!/usr/bin/env python3
"""Pings a controller and sets its clock to this host's time.

    python3 python/examples/ping_and_set_time.py 127.0.0.1 5005
"""

import sys

from zel_sdk_dual import Controller, ZelError


def main():
    address = sys.argv[1] if len(sys.argv) > 1 else "127.0.0.1"
    port = int(sys.argv[2]) if len(sys.argv) > 2 else 5005
    controller = Controller(address, port)
    try:
        record = controller.ping()
        print(f"controller type 0x{record.ControllerType:04X} at "
              f"{record.address.decode('latin-1') or address}")
        controller.set_time()
        print("clock set to this host's time")
    except ZelError as error:
        print(f"failed: {error}", file=sys.stderr)
        return 1
    return 0


if __name__ == "__main__":
    sys.exit(main())
