"""Reads report pages strictly, and makes import files that try to get into them."""

from html.parser import HTMLParser
from pathlib import Path

import command_test as program

VOID = {"meta", "br"}
ATTRIBUTES = {"lang", "charset", "http-equiv", "content", "name", "class", "id", "scope", "style",
              "colspan", "rowspan", "tabindex", "role", "aria-label", "aria-labelledby",
              "aria-hidden"}
ELEMENTS = VOID | {"html", "head", "title", "style", "body", "header", "main", "footer", "section",
                   "article", "h1", "h2", "h3", "p", "dl", "dt", "dd", "div", "span", "bdi", "b",
                   "strong", "pre", "ul", "ol", "li", "table", "caption", "thead", "tbody", "tr",
                   "th", "td"}
PARENTS = {"tbody": {"table"}, "thead": {"table"}, "caption": {"table"}, "tr": {"tbody", "thead"},
           "td": {"tr"}, "th": {"tr"}, "li": {"ul", "ol"}, "dt": {"dl"}, "dd": {"dl"},
           "head": {"html"}, "body": {"html"}, "main": {"body"}, "title": {"head"},
           "style": {"head"}, "meta": {"head"}}


class Element:
    def __init__(self, tag, attributes, parent):
        self.tag = tag
        self.attributes = attributes
        self.parent = parent
        self.text = ""


class Page(HTMLParser):
    """Raises AssertionError where a page is not well-formed or has what no report needs."""

    def __init__(self, text):
        super().__init__(convert_charrefs=True)
        self.elements = []
        self._open = []
        self.feed(text)
        self.close()
        assert not self._open, [element.tag for element in self._open]

    def handle_starttag(self, tag, attrs):
        assert tag in ELEMENTS, tag
        names = [name for name, _ in attrs]
        assert len(set(names)) == len(names), names
        assert set(names) <= ATTRIBUTES, names
        parent = self._open[-1] if self._open else None
        if tag in PARENTS:
            assert parent.tag in PARENTS[tag], (tag, parent.tag)
        element = Element(tag, dict(attrs), parent)
        self.elements.append(element)
        if tag not in VOID:
            self._open.append(element)

    def handle_startendtag(self, tag, attrs):
        raise AssertionError(tag)

    def handle_endtag(self, tag):
        assert self._open and self._open[-1].tag == tag, tag
        self._open.pop()

    def handle_data(self, data):
        assert not data.strip() or self._open[-1].tag not in ("table", "tbody", "thead", "tr", "ul",
                                                               "ol", "dl", "html", "head")
        for element in self._open:
            element.text += data

    def handle_comment(self, data):
        raise AssertionError(data)

    def handle_pi(self, data):
        raise AssertionError(data)

    def handle_decl(self, decl):
        assert decl == "DOCTYPE html" and not self.elements, decl

    def all(self, tag, name=None):
        return [element for element in self.elements if element.tag == tag and
                (name is None or name in element.attributes.get("class", "").split())]

    def one(self, tag, name=None):
        (element,) = self.all(tag, name)
        return element


# What texts of a file may try. Long names have 30 columns, short ones 5.
HOSTILE_NAMES = [b"<script>alert(1)</script>", b"<img src=x onerror=alert(1)>",
                 b"</td></tr></tbody></table>", b"</main></body></html>", b"<svg/onload=alert(1)>",
                 b"<a href=javascript:alert(1)>x", b"<style>*{display:none}</style>", b"<!-- x",
                 b"&lt;script&gt;", b"<b>bold</b>", b"\xe2\x80\xaetxet", b"\x1b[31mred\x00\x07",
                 b"\xff\xfe<td onclick=x>", b"\" onclick=\"alert(1)", b"<iframe src=//x.example>",
                 b"</td>", b"<td>", b"<center>", b"</style><script>", b"<base href=//x.example>"]
HOSTILE_SHORT_NAMES = [b"</td>", b"<td>", b"<!--", b"<b>", b"<tr>", b"</b>", b"<br>", b"&lt;", b"\"'>"]


def hostile_file():
    """The current sample with other names."""
    lines = Path(program.CURRENT).read_bytes().split(b"\n")
    first = next(i for i, line in enumerate(lines) if line.startswith(b"NH-34"))
    for i, name in enumerate(HOSTILE_NAMES):
        short = HOSTILE_SHORT_NAMES[i % len(HOSTILE_SHORT_NAMES)]
        lines[first + i] = short.ljust(10) + name.ljust(30)
    segments = lines.index(b"Segment names") + 1
    for i, name in enumerate(HOSTILE_NAMES):
        lines[segments + i] = b"%5d     " % (i + 1) + name
    return b"\n".join(lines)


def hostile_broken_file():
    """The same, with markup where a number should stand."""
    lines = hostile_file().split(b"\n")
    geometry = lines.index(b"Segment geometry and hydraulics") + 1
    lines[geometry] = b"    1  <script>alert(1)</script>" + lines[geometry][10:]
    return b"\n".join(lines)
