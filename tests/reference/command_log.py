"""Host commands as lines of the command log, and a host that writes them down.

The recording host answers like a user who has made up his mind: the dialogs by their titles, the file name with one
path. It formats numbers as C's printf does.
"""

import re
from dataclasses import dataclass, field
from itertools import groupby

FILE_NAME_WIDTH = 512
SEND_BUFFER_LENGTH = 170000
# Commands whose third argument says how many entries of the send buffers the next command is about.
ANNOUNCING_KEYWORDS = ("PNBFP", "PNBWK")
LONG_RUN = re.compile(rb"\x00{8,}| {8,}")
# The build identification differs from build to build: name of the line, width with the NUL.
STAMPED_TEXTS = (
    (b"Built on: ", 51), (b"Model sha: ", 31), (b"Model branch: ", 31), (b"Gui sha: ", 31), (b"Gui branch: ", 31),
    (b"Platform: ", 31), (b"Architecture: ", 31), (b"Build type: ", 31))


@dataclass(frozen=True)
class Integer:
    value: int


@dataclass(frozen=True)
class Real:
    value: float


@dataclass(frozen=True)
class Text:
    """A field that travels as it stands."""
    value: bytes


@dataclass
class SendBuffer:
    """170000 reals that travel as they stand. Held are those ever written; the others are still 0."""
    written: list = field(default_factory=list)

    def fill(self, values):
        """Put the values into the first entries; what stands behind them stays."""
        self.written[:len(values)] = values


@dataclass
class SendBuffers:
    """The two buffers that the boundaries and the loads use in turn, and one import after the other."""
    values: SendBuffer = field(default_factory=SendBuffer)
    times: SendBuffer = field(default_factory=SendBuffer)

    def fill(self, breakpoints):
        self.values.fill([value for value, _ in breakpoints])
        self.times.fill([time for _, time in breakpoints])


def literal(text):
    """A literal text travels with a NUL behind it."""
    return Text(text.encode("ascii") + b"\0")


def with_nul(text):
    """A data text to which the sender joins a NUL."""
    return Text(text + b"\0")


@dataclass
class Answers:
    """What the user answers to the questions; 0 is the first button, 1 the second."""
    verbose: int = 0
    scope: int = 1
    index_names: int = 0
    closing: int = 0


def quoted_piece(piece):
    written = []
    for byte in piece:
        if byte in b'\\"':
            written.append("\\" + chr(byte))
        elif byte == 0:
            written.append("\\0")
        elif 0x20 <= byte <= 0x7E:
            written.append(chr(byte))
        else:
            written.append(f"\\x{byte:02x}")
    return '"' + "".join(written) + '"'


def text_pieces(text):
    """All bytes of a text; long runs of NULs or blanks as a count."""
    if not text:
        return '""'
    pieces = []
    position = 0
    for run in LONG_RUN.finditer(text):
        if run.start() > position:
            pieces.append(quoted_piece(text[position:run.start()]))
        pieces.append(f"{run.end() - run.start()}*" + quoted_piece(run.group()[:1]))
        position = run.end()
    if position < len(text):
        pieces.append(quoted_piece(text[position:]))
    return " ".join(pieces)


def text_on_log(text):
    for name, length in STAMPED_TEXTS:
        if len(text) == length and text.startswith(name):
            return quoted_piece(name)[:-1] + '<stamped>"'
    return text_pieces(text)


def real_on_log(value):
    return "%.9g" % value


def send_buffer_on_log(buffer, announced):
    """The announced entries one by one, and behind the bar the rest as runs of equal values."""
    announced = min(max(announced, 0), SEND_BUFFER_LENGTH)
    entries = [real_on_log(value) for value in buffer.written]
    entries += ["0"] * (announced - len(entries))
    runs = [(len(list(run)), entry) for entry, run in groupby(entries[announced:])]
    untouched = SEND_BUFFER_LENGTH - len(entries)
    if untouched > 0 and runs and runs[-1][1] == "0":
        untouched += runs.pop()[0]
    if untouched > 0:
        runs.append((untouched, "0"))
    pieces = entries[:announced] + ["|"] + [f"{length}*{entry}" for length, entry in runs]
    return f"real[{SEND_BUFFER_LENGTH}] " + " ".join(pieces)


def argument_on_log(argument, announced=0):
    """`announced` is how many entries of a send buffer count."""
    if isinstance(argument, SendBuffer):
        return send_buffer_on_log(argument, announced)
    if isinstance(argument, Integer):
        return f"int {argument.value}"
    if isinstance(argument, Real):
        return "real " + real_on_log(argument.value)
    return f"text[{len(argument.value)}] {text_on_log(argument.value)}"


def command_on_log(keyword, written_arguments):
    line = f"{len(written_arguments)} {keyword}[{len(keyword) + 1}]"
    return line + (" " + ", ".join(written_arguments) if written_arguments else "")


@dataclass
class RecordingHost:
    answers: Answers
    path_text: bytes
    log_lines: list = field(default_factory=list)
    announced: int = 0

    def call(self, keyword, *arguments):
        """A command whose arguments the host only takes."""
        if keyword in ANNOUNCING_KEYWORDS:
            self.announced = arguments[2].value
        self.write(keyword, [argument_on_log(argument, self.announced) for argument in arguments])

    def information(self, fragment):
        """A fragment of the information pane: literal text, or a field as it stands."""
        self.call("PINFOHTML", literal(fragment) if isinstance(fragment, str) else fragment)

    def dialog(self, title, question, first_button, second_button):
        """A question; its answer stands at -1 until the host has written it."""
        answer = {"Set Verbose Option:": self.answers.verbose, "Import Options": self.answers.scope,
                  "Index Segment Names": self.answers.index_names, "Continue": self.answers.closing}[title]
        texts = [argument_on_log(literal(text)) for text in (title, question, first_button, second_button)]
        self.write("PDIALOG", texts + [f"int -1 -> {answer}"])
        return answer

    def file_name(self):
        left = self.path_text[:FILE_NAME_WIDTH].ljust(FILE_NAME_WIDTH)
        self.write("GFILENAME", [f"text[{FILE_NAME_WIDTH}] -> {text_pieces(left)}"])
        return left

    def formatted_integer(self, width, conversion, value):
        return self.formatted("GSPRINTFI", width, conversion, Integer(value))

    def formatted_real(self, width, conversion, value):
        return self.formatted("GSPRINTFR", width, conversion, Real(value))

    def formatted(self, keyword, width, conversion, number):
        left = (conversion % number.value).encode("ascii")[:width].ljust(width)
        self.write(keyword, [f"text[{width}] -> {text_pieces(left)}", argument_on_log(literal(conversion)),
                             argument_on_log(number)])
        return left

    def write(self, keyword, written_arguments):
        self.log_lines.append(command_on_log(keyword, written_arguments))
