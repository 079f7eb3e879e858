"""Files that want memory: tables made of the shortest records there are. An import may take 16 MB and four times the bytes of
its file, whatever stands in it."""

import json
import os
import subprocess
import tempfile
import unittest
from pathlib import Path

from tables import CASES, MODELS, file_text

IMPORT_ONCE = os.environ["KOVA_IMPORT_ONCE"]
LIBRARY = Path(os.environ["KOVA_LIBRARY"])
FIXED_BYTES = 16 << 20
TIMES_FILE = 4
# The last section of the current format; a library that lacks it passes over the sections behind the segments.
LAST_CURRENT_SECTION = b"initial_conditions_v2\0"


class Memory(unittest.TestCase):
    def import_file(self, text):
        """What the import of such a file says of itself."""
        with tempfile.TemporaryDirectory() as folder:
            path = Path(folder) / "model.inp"
            path.write_bytes(text)
            done = subprocess.run([IMPORT_ONCE, path], stdout=subprocess.PIPE, check=False)
            return json.loads(done.stdout)

    def test_small_models(self):
        """The models that the files are made of are whole, so that a table is reached."""
        for file_format, model in MODELS.items():
            with self.subTest(file_format):
                self.assertTrue(self.import_file(b"".join(model.values()))["went_well"])

    def test_tables(self):
        has_all_sections = LAST_CURRENT_SECTION in LIBRARY.read_bytes()
        for name, file_format, section, make in CASES:
            if file_format == "current" and not has_all_sections and section not in ("model parameters", "segments"):
                continue
            with self.subTest(name):
                text = file_text(file_format, section, make())
                result = self.import_file(text)
                self.assertTrue(result["went_well"] or name.endswith("alone"), "the table is not imported")
                peak, bound = result["peak_memory_kib"] << 10, FIXED_BYTES + TIMES_FILE * len(text)
                print(f"{name:66} {len(text) / 1e6:5.1f} MB of file {peak / 1e6:6.1f} MB of memory, "
                      f"{(peak - FIXED_BYTES) / len(text):5.2f} times the file beyond 16 MB")
                self.assertLessEqual(peak, bound)


if __name__ == "__main__":
    unittest.main()
