"""Runs the MDCT example: round_trip_test.py MDCT INPUT.wav"""

import os
import re
import subprocess
import sys
import tempfile
import wave


def samples(path):
    with wave.open(path) as sound:
        return sound.getparams()[:4], sound.readframes(sound.getnframes())


def run(*arguments):
    return subprocess.run(arguments, capture_output=True, text=True)


def decibels(done):
    return float(re.search(r"ratio (\S+) dB", done.stdout).group(1))


def main(mdct, source):
    with tempfile.TemporaryDirectory() as folder:
        result = os.path.join(folder, "result.wav")
        for frame in ("2", "64", "1024", "8192"):
            done = run(mdct, "--frame", frame, source, result)
            assert done.returncode == 0, done.stderr
            assert samples(result) == samples(source), f"frames of {frame}: not the input"
            assert decibels(done) > 280, done.stdout
            os.remove(result)

        coarse = decibels(run(mdct, "--quantise", "0.01", source, result))
        fine = decibels(run(mdct, "--quantise", "0.001", source, result))
        assert 5 < coarse < fine - 10, f"{coarse} dB with the coarse step, {fine} dB with the fine one"
        assert samples(result) != samples(source)
        os.remove(result)

        cut = os.path.join(folder, "cut.wav")
        with open(source, "rb") as whole, open(cut, "wb") as part:
            part.write(whole.read(20))
        for arguments in (
            ("--frame", "1000", source, result),
            ("--frame", "33", source, result),
            ("--frame", "x", source, result),
            ("--quantise", "-1", source, result),
            ("--unknown", "1", source, result),
            (source,),
            (cut, result),
            (os.path.join(folder, "absent.wav"), result),
            (source, os.path.join(folder, "absent", "result.wav")),
        ):
            done = run(mdct, *arguments)
            assert done.returncode != 0 and done.stderr.startswith("mdct: "), arguments
        assert os.listdir(folder) == ["cut.wav"], "a failure has left something behind"


main(*sys.argv[1:])
