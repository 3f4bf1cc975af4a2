#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""debian_changelog.py CHANGELOG.md RELEASE MAINTAINER: the changelog for users, on the standard output in the form
that Debian's packages have theirs."""
import datetime
import pathlib
import re
import sys
import textwrap

HEAD = re.compile(r"^## ([0-9.]+) \((\d{4}-\d{2}-\d{2})\)$", re.MULTILINE)


def entry(version, day, body, maintainer):
    points = re.split(r"^- ", body.strip(), flags=re.MULTILINE)[1:]
    lines = [textwrap.fill(re.sub(r"[`*]", "", " ".join(point.split())), 78, initial_indent="  * ",
                           subsequent_indent="    ") for point in points]
    date = datetime.date.fromisoformat(day).strftime("%a, %d %b %Y 12:00:00 +0000")
    return f"pixelweft ({version}) stable; urgency=medium\n\n" + "\n".join(lines) + f"\n\n -- {maintainer}  {date}\n"


def main():
    path, release, maintainer = sys.argv[1:]
    parts = HEAD.split(pathlib.Path(path).read_text())[1:]
    entries = [entry(f"{version}-{release}", day, body, maintainer)
               for version, day, body in zip(parts[::3], parts[1::3], parts[2::3])]
    print("\n".join(entries), end="")


main()
