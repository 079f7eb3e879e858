"""Imports a file with the library and takes the model that the reference host then holds, datum by datum."""

import os
import subprocess
import tempfile
from pathlib import Path

DUMP_MODEL = os.environ["KOVA_DUMP_MODEL"]


def imported(content, scope="all", index_names="no"):
    """The text of every datum by its path, such as "segments[5].volume"."""
    with tempfile.TemporaryDirectory() as folder:
        # The host is given a name that follows from that of the file: the same one for every file.
        (Path(folder) / "model.inp").write_bytes(content)
        subprocess.run([DUMP_MODEL, scope, index_names, "model.inp", "model.txt"], cwd=folder, check=True,
                       stdout=subprocess.DEVNULL, timeout=120)
        lines = (Path(folder) / "model.txt").read_bytes().decode("latin-1").split("\n")[:-1]
    model = dict(line.split(" ", 1) for line in lines)
    assert len(model) == len(lines), "a datum stands twice in the dump"
    return model


def differences(left, right):
    """(left, right) of every datum that is not the same in both models; None is one that is not there."""
    return {path: (left.get(path), right.get(path)) for path in [*left, *(path for path in right if path not in left)]
            if left.get(path) != right.get(path)}


def problems(left, right, expected):
    """By datum: a sentence for each difference that is not expected as it is, and for each expected one that does not occur."""
    found = differences(left, right)
    sentences = {path: f"{path}: {found[path][0]} and {found[path][1]}, expected {expected.get(path, 'the same')}"
                 for path in found if expected.get(path) != found[path]}
    sentences |= {path: f"{path}: {left.get(path)} in both, expected {expected[path]}"
                  for path in expected if path not in found}
    return sentences
