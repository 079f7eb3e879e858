"""The parts of documents that programs write: what stands between `<!-- begin of NAME: … -->` and `<!-- end of NAME -->`."""

import re
from pathlib import Path

DOCUMENTS = Path(__file__).resolve().parent.parent / "docs"


def record(document, name, text):
    path = DOCUMENTS / document
    before = path.read_text(encoding="utf-8")
    part = re.compile(rf"(<!-- begin of {name}:[^\n]*-->\n).*?(<!-- end of {name} -->)", re.DOTALL)
    after, count = part.subn(lambda found: found.group(1) + "\n" + text.strip("\n") + "\n\n" + found.group(2), before)
    if count != 1:
        raise SystemExit(f"{path} has no single part for {name}")
    path.write_text(after, encoding="utf-8")
