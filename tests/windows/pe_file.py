"""Reads what a Windows program or library says of itself: imports, exports, sections and version."""

import struct
from pathlib import Path

EXPORTS, IMPORTS, RESOURCES = 0, 1, 2
DELAYED_IMPORTS = 13
VERSION_RESOURCE = 16


class PeFile:
    def __init__(self, path):
        self.data = Path(path).read_bytes()
        header = self.u32(0x3C)
        assert self.data[header:header + 4] == b"PE\0\0", path
        self.machine, section_count = struct.unpack_from("<HH", self.data, header + 4)
        self.symbol_count = self.u32(header + 16)
        self.optional = header + 24
        self.is_64 = self.u16(self.optional) == 0x20B
        self.directories = self.optional + (112 if self.is_64 else 96)
        self.sections = []
        table = self.optional + self.u16(header + 20)
        for i in range(section_count):
            name, size, address, raw_size, raw = struct.unpack_from("<8sIIII", self.data, table + 40 * i)
            self.sections.append((name.rstrip(b"\0").decode(), address, max(size, raw_size), raw))

    def u16(self, offset):
        return struct.unpack_from("<H", self.data, offset)[0]

    def u32(self, offset):
        return struct.unpack_from("<I", self.data, offset)[0]

    def text(self, offset):
        return self.data[offset:self.data.index(b"\0", offset)].decode()

    def characteristics(self):
        return self.u16(self.optional + 70)

    def offset_of(self, address):
        for _, start, size, raw in self.sections:
            if start <= address < start + size:
                return raw + address - start
        raise ValueError(hex(address))

    def directory(self, number):
        address, size = struct.unpack_from("<II", self.data, self.directories + 8 * number)
        return address, size

    def imports(self):
        """Of each library, lower case: names as texts and ordinals as numbers."""
        assert self.directory(DELAYED_IMPORTS) == (0, 0)
        found = {}
        entry = self.offset_of(self.directory(IMPORTS)[0])
        width, by_ordinal = (8, 1 << 63) if self.is_64 else (4, 1 << 31)
        while self.u32(entry + 12):
            items = found.setdefault(self.text(self.offset_of(self.u32(entry + 12))).lower(), [])
            thunk = self.offset_of(self.u32(entry) or self.u32(entry + 16))
            while value := int.from_bytes(self.data[thunk:thunk + width], "little"):
                items.append(value & 0xFFFF if value & by_ordinal else self.text(self.offset_of(value) + 2))
                thunk += width
            entry += 20
        return found

    def exports(self):
        """The library's own name, and of each ordinal the name, or None."""
        table = self.offset_of(self.directory(EXPORTS)[0])
        base, function_count, name_count = struct.unpack_from("<III", self.data, table + 16)
        functions, names, ordinals = map(self.offset_of, struct.unpack_from("<III", self.data, table + 28))
        found = {base + i: None for i in range(function_count) if self.u32(functions + 4 * i)}
        for i in range(name_count):
            found[base + self.u16(ordinals + 2 * i)] = self.text(self.offset_of(self.u32(names + 4 * i)))
        return self.text(self.offset_of(self.u32(table + 12))), found

    def resource(self, kind):
        """The bytes of the first resource of a kind."""
        root = self.offset_of(self.directory(RESOURCES)[0])
        place, wanted = root, kind
        for _ in range(3):  # kind, name, language
            names, numbers = struct.unpack_from("<HH", self.data, place + 12)
            entries = [struct.unpack_from("<II", self.data, place + 16 + 8 * i) for i in range(names + numbers)]
            place = root + (next(target for name, target in entries if wanted in (None, name)) & 0x7FFFFFFF)
            wanted = None
        address, size = struct.unpack_from("<II", self.data, place)
        start = self.offset_of(address)
        return self.data[start:start + size]

    def version_numbers(self):
        """File version and product version of the fixed part."""
        block = self.resource(VERSION_RESOURCE)
        start = block.index(struct.pack("<I", 0xFEEF04BD))
        low_high = struct.unpack_from("<IIII", block, start + 8)
        return [(number >> 16, number & 0xFFFF) for number in low_high]

    def version_texts(self):
        """The texts of the version resource by their names."""
        block = self.resource(VERSION_RESOURCE)
        found = {}

        def walk(start, end):
            while start + 6 <= end:
                length, value_length, is_text = struct.unpack_from("<HHH", block, start)
                if length == 0:
                    return
                stop = start + 6
                while block[stop:stop + 2] != b"\0\0":
                    stop += 2
                name = block[start + 6:stop].decode("utf-16-le")
                value = (stop + 2 + 3) // 4 * 4
                if is_text and value_length:
                    found[name] = block[value:value + 2 * value_length].decode("utf-16-le").rstrip("\0")
                else:
                    walk((value + value_length + 3) // 4 * 4, start + length)
                start = (start + length + 3) // 4 * 4

        walk(0, len(block))
        return found
