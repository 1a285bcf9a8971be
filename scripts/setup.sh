#!/usr/bin/env bash
# Installs the Debian packages the build, the tests and the demo need. Idempotent: when
# everything is present it only asks dpkg and returns.
set -euo pipefail

packages=(
  cmake ninja-build g++ make pkg-config       # build
  libcairo2-dev libfreetype-dev zlib1g-dev    # painting, font files, CRC-32
  libgtest-dev libgmock-dev libbenchmark-dev  # tests and benchmarks
  libcli11-dev                                # zel-sim's command line (header-only)
  nlohmann-json3-dev                          # zelctl's JSON answers and program descriptions
  doxygen                                     # the reference documentation (docs target)
  help2man                                    # man pages of zel-sim and zelctl
  dpkg-dev                                    # the Debian package (dpkg-shlibdeps for cpack)
  fonts-dejavu-core fonts-wqy-microhei        # Latin and Chinese test fonts
  clang libclang-rt-14-dev                    # libFuzzer targets
  iproute2                                    # network namespaces for the broadcast tests
  libcpp-httplib-dev                          # the HTTP server of zel-sim --web (live view)
  chromium                                    # headless browser of the live view's test (large)
  python3-pytest                              # the Python package's tests
)

missing=()
for p in "${packages[@]}"; do
  if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'install ok installed'; then
    missing+=("$p")
  fi
done

if [ ${#missing[@]} -eq 0 ]; then
  exit 0
fi

if [ "$(id -u)" -ne 0 ]; then
  echo "setup: missing packages: ${missing[*]} (run as root to install them)" >&2
  exit 1
fi
echo "setup: installing ${missing[*]}"
export DEBIAN_FRONTEND=noninteractive
apt-get update -qq
apt-get install -y -qq --no-install-recommends "${missing[@]}"
