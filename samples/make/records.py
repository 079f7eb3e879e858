"""Writing and reading back the records of a model input file."""

REST = object()


class RecordWriter:
    """Collects the lines of one file, one record at a time."""

    def __init__(self):
        self._lines = []

    def line(self, text):
        """A caption, a heading or a record that the caller has laid out in columns."""
        self._lines.append(text.rstrip())

    def values(self, *values, note=""):
        """A free-form record; readers skip what follows the last value they ask for."""
        self.line(f"{'  '.join(str(value) for value in values):>10}   {note}")

    def pairs(self, pairs, digits="12.4f"):
        """One breakpoint a line, in two fields of twelve columns."""
        for first, second in pairs:
            self.line(f"{first:{digits}}{second:12.4f}")

    def text(self):
        return "\n".join(self._lines) + "\n"


def list_items(line):
    """The items of one free-form line, repeat counts unrolled; REST stands for a slash."""
    position, items = 0, []
    while position < len(line):
        character = line[position]
        if character in " ,":
            position += 1
        elif character == "/":
            return items + [REST]
        elif character in "'\"":
            end = line.index(character, position + 1)
            items.append(line[position + 1:end])
            position = end + 1
        else:
            end = position
            while end < len(line) and line[end] not in " ,/":
                end += 1
            word, position = line[position:end], end
            count, star, value = word.partition("*")
            items += [value] * int(count) if star and count.isdigit() else [word]
    return items


class RecordReader:
    """Reads a file back by its grammar alone, so that a slip in a writer cannot hide."""

    def __init__(self, text):
        self._lines = text.split("\n")[:-1]
        self._next = 0

    def line(self):
        self._next += 1
        return self._lines[self._next - 1]

    def list(self, *kinds):
        """One free-form record; items behind a slash are zero or empty."""
        items = []
        while len(items) < len(kinds) and REST not in items:
            items += list_items(self.line())
        if REST in items:
            items = items[:items.index(REST)]
            return [kind(item) for kind, item in zip(kinds, items)] + [
                kind() for kind in kinds[len(items):]]
        return [kind(item) for kind, item in zip(kinds, items)]

    def integer(self):
        return self.list(int)[0]

    def pairs(self):
        """A count and as many pairs."""
        return [tuple(self.list(float, float)) for _ in range(self.integer())]

    def columns(self, *fields):
        """One fixed-column record; a field is its width and kind, or a width to skip. Blank is 0."""
        line, position, values = self.line(), 0, []
        for field in fields:
            width, kind = field if isinstance(field, tuple) else (field, None)
            text = line[position:position + width]
            position += width
            if kind is float and text.strip() and not set(text) & set(".Ee"):
                raise ValueError(f"no decimal point in '{text}' of '{line}'")
            if kind is str:
                values.append(text.rstrip())
            elif kind:
                values.append(kind(text) if text.strip() else kind())
        return values

    def finished(self):
        return self._next == len(self._lines)
