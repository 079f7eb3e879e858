"""The example files of the documents are files that can be imported."""

import os
import re
import subprocess
import tempfile
import unittest
from pathlib import Path

COMMAND = os.environ["KOVA_IMPORT_COMMAND"]
DOCUMENTS = Path(os.environ["KOVA_DOCUMENTS"])


class ExampleFiles(unittest.TestCase):
    def test_the_legacy_example_is_imported_whole(self):
        blocks = re.findall(r"^```\n(.*?)^```$", (DOCUMENTS / "legacy-format.md").read_text("utf-8"), re.M | re.S)
        examples = [block for block in blocks if block.startswith("   11      2")]
        self.assertEqual(len(examples), 1)
        with tempfile.TemporaryDirectory() as folder:
            path = Path(folder, "example.inp")
            path.write_text(examples[0], "utf-8")
            run = subprocess.run([COMMAND, path], capture_output=True, text=True, check=False)
        self.assertEqual(run.returncode, 0, run.stderr)
        self.assertNotIn("not imported by this version", run.stdout)


if __name__ == "__main__":
    unittest.main()
