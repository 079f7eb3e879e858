"""Checks the index of host commands in a document: check_command_index.py PROGRAM DOCUMENT

Between the two markers the document must hold exactly what PROGRAM prints. With --write in front the index is
put there.
"""

import difflib
import subprocess
import sys
from pathlib import Path

BEGIN = "<!-- begin of the command index: printed by print_command_index -->\n"
END = "<!-- end of the command index -->\n"


def main(arguments):
    write = arguments[:1] == ["--write"]
    if len(arguments) != 2 + write:
        sys.exit(__doc__)
    program, document = arguments[write:]
    expected = subprocess.run([program], check=True, capture_output=True, encoding="utf-8").stdout
    if not expected:
        sys.exit(f"{program} printed nothing")
    text = Path(document).read_text(encoding="utf-8")
    if text.count(BEGIN) != 1 or text.count(END) != 1 or text.index(BEGIN) > text.index(END):
        sys.exit(f"{document}: the two markers of the command index are missing or stand more than once")
    before, rest = text.split(BEGIN)
    found, behind = rest.split(END)
    if found == expected:
        return
    if write:
        Path(document).write_text(before + BEGIN + expected + END + behind, encoding="utf-8")
        return
    difference = difflib.unified_diff(
        found.splitlines(), expected.splitlines(), document, "the table of commands", lineterm="", n=0
    )
    print("\n".join(difference))
    sys.exit(f"{document}: the command index is not that of the table of commands; mend it with\n"
             f"  {Path(__file__).name} --write {program} {document}")


main(sys.argv[1:])
