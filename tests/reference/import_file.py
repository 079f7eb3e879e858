"""Write the command log and the console lines that importing a model input file has to yield.

    python3 tests/reference/import_file.py FILE [--scope all|transport] [--index-names yes|no]
                                           [--report-tables] [--log OUT] [--console OUT] [--path-text TEXT]

Without --log and --console the log goes to standard output and the console lines to standard error. The exit status is
0 when every section that exists here was read, 1 otherwise; what stopped the import is said on standard error.
"""

import argparse
import os
import sys

from command_log import Answers
from driver import import_file


def parse_arguments():
    parser = argparse.ArgumentParser(description="expected command log and console lines of an import")
    parser.add_argument("file")
    parser.add_argument("--scope", choices=("all", "transport"), default="all")
    parser.add_argument("--index-names", choices=("yes", "no"), default="yes")
    parser.add_argument("--report-tables", action="store_true",
                        help="the host asks for the tables of the sections")
    parser.add_argument("--log", help="file for the command log")
    parser.add_argument("--console", help="file for the console lines")
    parser.add_argument("--path-text", help="what the host gives as the file's path (default: FILE)")
    return parser.parse_args()


def write_lines(lines, path, standard_stream):
    content = b"".join(line + b"\n" for line in lines)
    if path is None:
        standard_stream.write(content)
        standard_stream.flush()
    else:
        with open(path, "wb") as file:
            file.write(content)


def main():
    arguments = parse_arguments()
    answers = Answers(scope=0 if arguments.scope == "transport" else 1,
                      index_names=0 if arguments.index_names == "yes" else 1)
    path_text = None if arguments.path_text is None else os.fsencode(arguments.path_text)
    result = import_file(arguments.file, answers, path_text, report_tables=int(arguments.report_tables))
    write_lines([line.encode("ascii") for line in result.log_lines], arguments.log, sys.stdout.buffer)
    write_lines(result.console_lines, arguments.console, sys.stderr.buffer)
    if result.failure:
        print(result.failure, file=sys.stderr)
    return 1 if result.failure else 0


if __name__ == "__main__":
    sys.exit(main())
