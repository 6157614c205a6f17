#!/bin/bash
# demo.sh [WAV [PNG [LENGTH]]]: builds the library and draws the spectrogram of a recording, LENGTH samples a frame.
set -eu -o pipefail
wav=$(realpath -m "${1:-$(dirname "$0")/examples/data/speech.wav}")
png=$(realpath -m "${2:-$(dirname "$0")/build/spectrogram.png}")
cd "$(dirname "$0")"
. .ci/packages.sh

need_packages
cmake --preset release
cmake --build --preset demo
build/release/bin/spectrogram "$wav" "$png" "${3:-64}"
