"""The links of texts, and whether they lead anywhere."""

import re
import urllib.parse

TEXTS = (".md", ".txt")
LINK = re.compile(r"\]\(<?([^)>\s]+)[^)]*\)|(?:src|href)=\"([^\"]+)\"|^\[[^]]+\]:\s+(\S+)", re.MULTILINE)
CODE = re.compile(r"^```.*?^```|`[^`\n]*`", re.MULTILINE | re.DOTALL)
HEADING = re.compile(r"^#+ +(.*)$", re.MULTILINE)


def links_of(text):
    """What the text links to: Markdown's links and pictures, and HTML's."""
    return [next(filter(None, groups)) for groups in LINK.findall(CODE.sub("", text))]


def anchor_of(heading):
    """The name under which Markdown's readers find a heading."""
    return re.sub(r"[^\w\- ]", "", heading.lower()).replace(" ", "-")


def anchors_of(text):
    return {anchor_of(heading) for heading in HEADING.findall(re.sub(r"(?ms)^```.*?^```", "", text))}


def leads_somewhere(path, link):
    """Whether the link of the text at `path` leads to a file that is there, and to a heading in it."""
    target = urllib.parse.urlsplit(link)
    if target.scheme or target.netloc:
        return True  # another machine's
    there = path.parent / urllib.parse.unquote(target.path) if target.path else path
    if not there.exists():
        return False
    is_text = there.suffix in TEXTS
    return not (target.fragment and is_text) or target.fragment in anchors_of(read(there))


def read(path):
    return path.read_text(encoding="utf-8", errors="replace")


def dead_links_of(path):
    """The links of the text at `path` that lead nowhere."""
    return [link for link in links_of(read(path)) if not leads_somewhere(path, link)]


def dead_links(directory):
    """A line for each link of a text in the directory that leads nowhere."""
    texts = [path for path in sorted(directory.rglob("*")) if path.is_file() and path.suffix in TEXTS]
    return [f"{path.relative_to(directory)}: {link}" for path in texts for link in dead_links_of(path)]
