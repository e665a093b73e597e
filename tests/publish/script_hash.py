#!/usr/bin/env python3
"""Holds the hash in the report's policy against the script that it is of.

    script_hash.py SOURCE     SOURCE is src/publish/page_script.cpp

Exit code 1, and the right hash, when they do not belong together: then no browser runs the script.
"""

import base64
import hashlib
import pathlib
import re
import sys


def main(arguments):
    source = pathlib.Path(arguments[0]).read_text(encoding="utf-8")
    script = re.search(r'R"js\((.*?)\)js"', source, re.DOTALL).group(1)
    right = base64.b64encode(hashlib.sha256(script.encode("utf-8")).digest()).decode("ascii")
    found = re.search(r'kPageScriptHash =\s*"([^"]*)"', source).group(1)
    if found == right:
        return 0
    print(f"kPageScriptHash is {found}, but the script's is\n{right}")
    return 1


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
