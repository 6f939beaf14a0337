"""The structure of a report's page: well-formed, of one file, and what its texts are."""
import html.parser
import re

VOID = {"meta", "img", "br", "hr", "link", "input"}
ADDRESSES = {"src", "href", "action", "data", "srcset", "poster", "background"}


class Page(html.parser.HTMLParser):
    """Raises AssertionError where an element is not closed, a script stands, or something is fetched."""

    def __init__(self, text):
        super().__init__(convert_charrefs=True)
        self.open, self.text, self.names, self.ids, self.pictures = [], [], [], [], 0
        assert text.startswith("<!DOCTYPE html>")
        self.feed(text)
        self.close()
        assert not self.open, f"not closed: {self.open}"
        assert len(self.ids) == len(set(self.ids)), "an id occurs twice"
        assert "http:" not in text and "https:" not in text, "an address of the network"
        assert not re.search(r"@import|url\(\s*['\"]?(?!#)", text), "a style from elsewhere"

    def handle_starttag(self, tag, attributes):
        self.names.append(tag)
        self.check(tag, dict(attributes))
        if tag not in VOID:
            self.open.append(tag)

    def handle_startendtag(self, tag, attributes):
        self.names.append(tag)
        self.check(tag, dict(attributes))
        assert tag in VOID or "svg" in self.open, f"<{tag}/>"

    def check(self, tag, attributes):
        assert tag not in ("script", "iframe", "object", "embed", "link"), f"<{tag}>"
        for name, value in attributes.items():
            assert not name.startswith("on"), f"{tag} {name}"
            if name in ADDRESSES:
                assert value.startswith(("data:", "#")), f"{tag} {name}={value}"
        if "id" in attributes:
            self.ids.append(attributes["id"])
        self.pictures += tag == "img"

    def handle_endtag(self, tag):
        assert self.open and self.open[-1] == tag, f"</{tag}> in {self.open[-3:]}"
        self.open.pop()

    def handle_data(self, data):
        if not self.open or self.open[-1] not in ("style",):
            self.text.append(data)

    def words(self):
        return " ".join(" ".join(self.text).split())
