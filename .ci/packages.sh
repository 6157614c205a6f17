# shellcheck shell=bash
# Debian packages that building, testing and the demo need. Sourced by the scripts of the top folder. The presets
# debug and fuzz need the run-time libraries of clang besides, lint its tools.
packages=(cmake ninja-build g++ clang binutils python3 pkg-config libgtest-dev libeigen3-dev libsndfile1-dev libpng-dev
  libcairo2-dev libclang-rt-dev clang-tidy clang-format jq)

# Installs what is missing where that is allowed; otherwise says what is missing and fails.
need_packages() {
  if ! command -v dpkg-query >/dev/null; then
    echo "No Debian package system here. Needed are what Debian calls: ${packages[*]}" >&2
    return 0
  fi
  local missing=() package
  for package in "${packages[@]}"; do
    dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null | grep -qx installed || missing+=("$package")
  done
  [ ${#missing[@]} -eq 0 ] && return 0
  if [ "$(id -u)" -eq 0 ]; then
    echo "Installing ${missing[*]}"
    apt-get update -qq && DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "${missing[@]}" &&
      return 0
  fi
  echo "Missing packages: ${missing[*]}" >&2
  echo "Install them with: sudo apt-get install ${missing[*]}" >&2
  return 1
}
