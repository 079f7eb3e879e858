"""The programs and commands of docs/embedding.md."""

import re
from pathlib import Path

PAGE = Path(__file__).resolve().parents[2] / "docs/embedding.md"


def marked_blocks(kind):
    """The code blocks with a mark such as `<!-- file: host.c -->`, by what the mark says."""
    found = re.findall(rf"^<!-- {kind}: (\S+) -->\n```\w+\n(.*?)^```$", PAGE.read_text(), re.MULTILINE | re.DOTALL)
    return dict(found)


def write_programs(folder):
    for name, text in marked_blocks("file").items():
        (folder / name).write_text(text)


