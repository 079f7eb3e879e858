"""The example files of the documents are files that can be imported."""

import json
import os
import re
import subprocess
import tempfile
import unittest
from pathlib import Path

COMMAND = os.environ["KOVA_IMPORT_COMMAND"]
DOCUMENTS = Path(os.environ["KOVA_DOCUMENTS"])


class ExampleFiles(unittest.TestCase):
    def import_example(self, page, first_columns):
        """Imports the example file of a page, all eleven sections, and returns its data."""
        blocks = re.findall(r"^```\n(.*?)^```$", (DOCUMENTS / page).read_text("utf-8"), re.M | re.S)
        examples = [block for block in blocks if block.startswith(first_columns)]
        self.assertEqual(len(examples), 1)
        with tempfile.TemporaryDirectory() as folder:
            path = Path(folder, "example.inp")
            path.write_text(examples[0], "utf-8")
            run = subprocess.run([COMMAND, "--json", "--data", path], capture_output=True, text=True,
                                 check=False)
        self.assertEqual(run.returncode, 0, run.stderr)
        document = json.loads(run.stdout)
        self.assertEqual([section["status"] for section in document["summary"]["sections"]],
                         ["imported"] * 11)
        return document["data"]

    def test_the_legacy_example_is_imported_whole(self):
        data = self.import_example("legacy-format.md", "   11      2")
        self.assertEqual([function["number"] for function
                          in data["environmental_time_functions"]["functions"]], [1, 4])

    def test_the_current_example_is_imported_whole(self):
        # digits in a wrong column would not be refused, but be other numbers
        data = self.import_example("current-format.md", "   11      3")
        self.assertEqual(data["flow_paths"]["flow_options"], [1, 1])
        self.assertEqual(data["segment_parameters"]["parameters"], [
            {"number": 1, "class_index": 1, "scale_factor": 1.0, "values": [1.0, 0.9]},
            {"number": 17, "class_index": 1, "scale_factor": 1.0, "values": [1.3, 1.2]}])
        self.assertEqual(data["kinetic_constants"]["constants"], [
            {"number": 27, "column": 1, "value": 0.1, "used": 1},
            {"number": 28, "column": 1, "value": 1.07, "used": 1}])
        for system in data["initial_conditions"]["systems"]:
            self.assertEqual(system["maximum_concentration"], 0)


if __name__ == "__main__":
    unittest.main()
