"""The legacy sample and the same model in the current format bring the host the same model.

The sample in the current format is made by the script of the samples from the description of the model, with numbers
and units of its own: nothing of it comes from the library. What the imports may not have in common is in
listed_differences.py; anything else that differs fails, and so does a listed difference that does not occur.
"""

import os
import re
import unittest
from pathlib import Path

from listed_differences import listed_differences
from model_dump import imported, problems
from planted_changes import CHANGES_OF_CURRENT, CHANGES_OF_LEGACY, KINDS_THAT_NO_CHANGE_HAS, SECTIONS, planted

SAMPLES = Path(os.environ["KOVA_SAMPLES"])
LEGACY = (SAMPLES / "river-estuary-v7.inp").read_bytes()
CURRENT = (SAMPLES / "river-estuary-v7-as-v8.inp").read_bytes()

# The last datum of every list: a host that holds nothing would be the same twice.
LAST_DATA = """settings.non_point_source_file systems[22].initial_conditions[42].dissolved_fraction
systems[22].boundaries[14].series[2].value systems[1].loads[5].series[5].value systems[21].loads[1].series[2].value
segments[42].weir_type flow_fields[1].functions[8].breakpoints[366].second_value
flow_fields[2].functions[1].pairs[18].routing_fraction exchange_fields[1].functions[4].breakpoints[366].value
exchange_fields[2].functions[1].pairs[6].mixing_length time_functions[11].series[1].breakpoints[2].value
segment_parameters[16].values[42] constants[133].used refreshes.constants""".split()


class SameModel(unittest.TestCase):
    def test_every_datum_but_the_listed_ones_is_the_same(self):
        for scope in ("all", "transport"):
            for index_names in ("no", "yes"):
                with self.subTest(f"{scope}, index names {index_names}"):
                    found = problems(imported(LEGACY, scope, index_names), imported(CURRENT, scope, index_names),
                                     listed_differences(scope, index_names))
                    self.assertEqual(list(found.values()), [])

    def test_the_host_holds_all_of_it(self):
        for content in (LEGACY, CURRENT):
            model = imported(content)
            self.assertGreater(len(model), 40_000)
            self.assertEqual([path for path in LAST_DATA if path not in model], [])
            for path in LAST_DATA:
                if "]" in path:
                    following = re.sub(r"\[(\d+)\](?!.*\])", lambda found: f"[{int(found[1]) + 1}]", path)
                    self.assertNotIn(following, model)


class Comparison(unittest.TestCase):
    """It finds a change of one datum, whichever section the datum belongs to."""

    @classmethod
    def setUpClass(cls):
        cls.legacy, cls.current = imported(LEGACY), imported(CURRENT)
        cls.listed = listed_differences("all", "no")

    def assert_found(self, legacy, current, paths):
        self.assertEqual(sorted(problems(legacy, current, self.listed)), sorted(paths))

    def test_changes_of_the_current_file(self):
        for change in CHANGES_OF_CURRENT:
            with self.subTest(change.section, datum=change.paths[0]):
                self.assert_found(self.legacy, imported(planted(CURRENT, change)), change.paths)

    def test_changes_of_the_legacy_file(self):
        for change in CHANGES_OF_LEGACY:
            with self.subTest(change.section, datum=change.paths[0]):
                self.assert_found(imported(planted(LEGACY, change)), self.current, change.paths)

    def test_every_section_is_changed(self):
        for changes in (CHANGES_OF_CURRENT, CHANGES_OF_LEGACY):
            self.assertEqual(list(dict.fromkeys(change.section for change in changes)), SECTIONS)

    def test_every_kind_of_datum_is_changed(self):
        def kinds(paths):
            return {re.sub(r"\[\d+\]", "[]", path) for path in paths}
        changed = kinds(path for change in CHANGES_OF_CURRENT for path in change.paths)
        self.assertEqual(kinds(self.current) - changed, KINDS_THAT_NO_CHANGE_HAS)

    def listed_data(self, model):
        return {path: value for path, value in model.items() if path in self.listed}

    def test_a_listed_difference_that_does_not_occur(self):
        legacy, current = self.listed_data(self.legacy), self.listed_data(self.current)
        self.assert_found(legacy, current, [])
        for path in self.listed:
            self.assert_found(legacy, current | {path: legacy[path]}, [path])

    def test_a_listed_difference_with_another_value(self):
        legacy, current = self.listed_data(self.legacy), self.listed_data(self.current)
        for path in self.listed:
            self.assert_found(legacy | {path: "another"}, current, [path])


if __name__ == "__main__":
    unittest.main()
