"""What the command says of texts that come across cut, and of values that a file leaves out."""

import json
import unittest

from command_test import SMALL, CommandTest, run


def linked_to(file_name):
    """SMALL with one flow field, linked to a hydrodynamic file; how many functions it has is left out."""
    opening, last_value, rest = SMALL.rpartition(b"0.03 0.1\n")
    assert rest.startswith(b"0\n0\n0\n"), "flow option, flow fields, their series"
    return (opening + last_value + b"3\n1\nSurface water\n" + file_name + b"\n/\n"
            + b"1\nSurface water\n0\n" + rest[6:])


class Remarks(CommandTest):
    def remarks(self, file_name):
        """The summary's words for the flow paths; from the JSON their remarks and kinds of notices."""
        path = self.file("linked.inp", linked_to(file_name))
        (line,) = [line for line in run(path).stdout.decode().splitlines()
                   if line.startswith("    flow paths ")]
        document = json.loads(run("--json", path).stdout)
        section = document["summary"]["sections"][2]
        self.assertEqual(section["name"], "flow paths")
        kinds = {level: [notice["kind"] for notice in document[level] if notice["section"] == 3]
                 for level in ("warnings", "notices")}
        remarks = {name: count for name, count in section["remarks"].items() if count != 0}
        return line[len("    flow paths "):].strip(), remarks, kinds

    def test_name_that_fills_its_columns(self):
        self.assertEqual(
            self.remarks(b"x" * 512 + b"   "),
            ("1 field, 1 datum given a default", {"data_defaulted": 1},
             {"warnings": [], "notices": ["defaulted"]}))

    def test_name_that_is_cut(self):
        self.assertEqual(
            self.remarks(b"x" * 513),
            ("1 field, 1 text cut, 1 datum given a default", {"texts_cut": 1, "data_defaulted": 1},
             {"warnings": ["cut"], "notices": ["defaulted"]}))


if __name__ == "__main__":
    unittest.main()
