"""The examples in Markdown files."""

import re


def blocks(path, *languages):
    """(language, text) of the fenced blocks in these languages."""
    return re.findall(rf"^```({'|'.join(languages)})\n(.*?)^```", path.read_text(), re.M | re.S)
