"""The commands that compile the objects of a build."""

import json
import shlex
from dataclasses import dataclass
from pathlib import Path


@dataclass(frozen=True)
class Command:
    folder: Path
    source: Path
    words: tuple

    @property
    def object(self):
        return self.folder / self.words[self.words.index("-o") + 1]

    def writing(self, target, *options):
        """The words of this command with another object and more options."""
        words = list(self.words)
        words[words.index("-o") + 1] = str(target)
        return [*words, *options]


def commands_of(build, objects):
    """What compiles each of `objects` in the folder `build`; all of them must be in its list."""
    wanted = {Path(o) for o in objects}
    entries = json.loads((Path(build) / "compile_commands.json").read_text())
    commands = [Command(Path(e["directory"]), Path(e["file"]), tuple(shlex.split(e["command"]))) for e in entries]
    found = [c for c in commands if "-o" in c.words and c.object in wanted]
    missing = wanted - {c.object for c in found}
    if missing or not found:
        raise SystemExit(f"no command compiles {sorted(map(str, missing))[:5]}")
    return found
