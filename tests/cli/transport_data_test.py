"""Runs the built program with a library that sends a known model: what the command shows of it, and what it says is missing."""

import json
import os
import re
import subprocess
import tempfile
import unittest
from pathlib import Path

COMMAND = os.environ["KOVA_IMPORT_COMMAND"]
MADE_UP_LIBRARY = os.environ["KOVA_MADE_UP_LIBRARY"]


def run(*arguments):
    folder = os.path.dirname(MADE_UP_LIBRARY)
    return subprocess.run([COMMAND, *arguments], capture_output=True, timeout=60, check=False,
                          env=dict(os.environ, LD_LIBRARY_PATH=folder))


class TransportDataTest(unittest.TestCase):
    def test_summary(self):
        result = run("river.inp")
        self.assertEqual(result.returncode, 0)
        lines = [" ".join(line.split()) for line in result.stdout.decode().splitlines()]
        self.assertEqual(lines[0], "river.inp: imported, with warnings")
        for line in ("flow paths 1 field, 1 function, 1 pair, 1 text cut",
                     "flow time series 2 breakpoints",
                     "exchanges 1 field, 1 function, 1 pair, 1 breakpoint, 1 datum replaced by a later one",
                     "boundary conditions 1 boundary, 3 breakpoints, 2 systems dropped",
                     "loads 1 load, 1 breakpoint, 1 placeholder, 1 load replaced by a later one, 1 factor dropped",
                     "environmental time functions 1 function, 2 series, 3 breakpoints, "
                     "2 functions without a counterpart, 1 function converted",
                     "segment parameters 1 parameter, 2 values, 1 parameter of something that is not simulated",
                     "kinetic constants 1 constant, 1 time function, 1 constant without a counterpart",
                     "initial conditions 2 systems, 4 concentrations, 2 systems dropped"):
            self.assertIn(line, lines)

    def test_notices(self):
        messages = run("river.inp").stderr.decode()
        self.assertIn("warning: loads: the system has several loads on the segment; the host keeps the last one (number 2)",
                      messages)
        self.assertIn("its boundaries do not come across (number 3)\n      = and 1 more like it, number 4\n", messages)
        self.assertEqual(run("check", "river.inp").returncode, 1)

    def test_names(self):
        messages = run("river.inp").stderr.decode()
        for text in ('note: environmental time functions: the unit changes (number 5, "Sun <b>\\x1b[31m")\n',
                     'no such function (number 17, "Ice cover")\n'
                     '      = and 1 more like it, number 18 ("Ice, later")\n',
                     'not on the list (number 10, "Rate @20 \u00b0C (1/day)")\n'):
            self.assertIn(text, messages)
        document = json.loads(run("--json", "river.inp").stdout)
        self.assertEqual([notice["name"] for notice in document["notices"] if notice["section"] == 8],
                         ["Sun <b>\x1b[31m"])
        self.assertEqual([notice["name"] for notice in document["warnings"] if notice["section"] == 10],
                         ["Rate @20 \u00b0C (1/day)"])
        sarif = json.loads(run("check", "--format", "sarif", "river.inp").stdout)
        names = [result["properties"].get("name") for result in sarif["runs"][0]["results"]]
        self.assertIn("Settling Rate -- Solids", names)

    def test_json(self):
        document = json.loads(run("--json", "--data", "river.inp").stdout)
        self.assertFalse(document["whole"])
        sections = {section["name"]: section for section in document["summary"]["sections"]}
        for section in sections.values():
            self.assertGreaterEqual(len(section["remarks"]), 8)
            section["remarks"] = {name: count for name, count in section["remarks"].items() if count}
        self.assertEqual(sections["boundary conditions"]["brought"], {"boundaries": 1, "breakpoints": 3})
        self.assertEqual(sections["boundary conditions"]["remarks"], {"systems_dropped": 2})
        self.assertEqual(sections["loads"]["brought"], {"loads": 1, "breakpoints": 1})
        self.assertEqual(sections["loads"]["remarks"], {"placeholders": 1, "loads_replaced": 1, "factors_dropped": 1})
        self.assertEqual(sections["kinetic constants"]["brought"], {"constants": 1, "time_functions": 1})
        data = document["data"]
        self.assertEqual(data["flow_paths"]["flow_options"], [3, 3])
        self.assertEqual(data["flow_paths"]["hydrodynamic_file"], "river.hyd")
        self.assertEqual(data["flow_paths"]["fields"][0]["functions"][0]["description"],
                         "A creek with a name that is fa")
        self.assertEqual(data["flow_time_series"]["fields"], [
            {"function_count": 1, "scale_factor": 1.5, "conversion_factor": 2.5, "functions": [
                {"breakpoint_count": 2, "first_values": [10, 20], "second_values": [0, 365]}]}])
        self.assertEqual(data["exchanges"]["fields"][0]["functions"][0]["pairs"], [
            {"first_segment": 1, "second_segment": 2, "interfacial_area": 50, "mixing_length": 60}])
        self.assertEqual(data["boundary_conditions"]["systems"][0]["boundaries"], [
            {"segment": 2, "breakpoint_count": 3, "times": [1, 1, 365], "values": [7, 7, 32]}])
        loads = data["loads"]
        self.assertEqual((loads["load_option"], loads["non_point_source_file"]), (1, "runoff.nps"))
        self.assertEqual([load["placeholder"] for system in loads["systems"] for load in system["loads"]],
                         [False, True])
        self.assertEqual(data["environmental_time_functions"]["functions"], [
            {"number": 4, "series": [{"breakpoint_count": 2, "times": [0, 365], "values": [48.5, 96.5]},
                                     {"breakpoint_count": 1, "times": [0], "values": [12.5]}]}])
        self.assertEqual(data["segment_parameters"]["parameters"], [
            {"number": 19, "class_index": 2, "scale_factor": 1.5, "values": [0.25, 0.75]}])
        self.assertEqual(data["kinetic_constants"], {
            "constants": [{"number": 64, "column": 1, "value": 0.5, "used": 1}],
            "time_functions": [{"number": 37, "series": [
                {"breakpoint_count": 2, "times": [0, 365], "values": [15, 15]}]}]})
        self.assertEqual(data["initial_conditions"]["systems"][1], {
            "name": "Ammonia", "maximum_concentration": 1000, "density": 1, "flow_field": 3,
            "concentrations": [21, 22], "dissolved_fractions": [0.5, 0.5]})

    def test_report_page(self):
        with tempfile.TemporaryDirectory() as folder:
            path = Path(folder, "page.html")
            run("--report", str(path), "river.inp")
            page = path.read_text("utf-8")
        rows = [re.findall("<td[^>]*>(.*?)</td>", row) for row in re.findall("<tr>.*?</tr>", page)]
        remarks = {row[0]: row[2:] for row in rows if len(row) == 4}
        self.assertEqual(remarks["6"], ["1 boundary, 3 breakpoints", "2 systems dropped"])
        self.assertEqual(remarks["7"], ["1 load, 1 breakpoint",
                                        "1 placeholder, 1 load replaced by a later one, 1 factor dropped"])
        self.assertEqual(remarks["8"], ["1 function, 2 series, 3 breakpoints",
                                        "2 functions without a counterpart, 1 function converted"])
        # of sections 3 and 5 to 11 something is lost
        self.assertEqual(page.count("Imported in part"), 8)
        self.assertIn("number 5, &quot;Sun &lt;b&gt;\\x1b[31m&quot;", page)
        self.assertIn("And 1 more like it, number 4.", page)


if __name__ == "__main__":
    unittest.main()
