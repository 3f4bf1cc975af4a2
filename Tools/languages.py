#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""languages.py [update]: judges the languages of the program, or brings the files of Translations/ up to date.

The sources hold the texts in English. Each must be found by lupdate, whole and not pieced together; each language but
English must have all of them, with the same placeholders, mnemonics and ends; English has the plural forms alone.
`update` writes new texts into the files, unfinished, and takes out those that are gone. The programs for scripts speak
English, so their rooms are not read."""
import re
import shutil
import subprocess
import sys
import tempfile
import xml.etree.ElementTree as ElementTree
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
FILES = sorted((ROOT / "Translations").glob("pixelweft_*.ts"))
ROOMS = [room for room in sorted((ROOT / "Sources").iterdir())
         if room.is_dir() and room.name not in ("FixtureTool", "PatchTool")]
PLURAL_FORMS = {"en": 2, "de": 2}
# Values of documents, which look like words.
NO_TEXTS = {"ArtNet"}

LITERALS = r'((?:\s*"(?:[^"\\]|\\.)*")+)'
MARKED = re.compile(r"\b(?:tr|QT_TR_NOOP|WindowText)\(" + LITERALS
                    + r"|\b(?:translate|QT_TRANSLATE_NOOP)\(\s*\"\w+\",\s*" + LITERALS)
# A text in a variable, and a function that translates what it is handed: lupdate must find that text elsewhere.
VARIABLE = re.compile(r'\btranslate\(\s*"(\w+)",\s*[A-Za-z_]')
HELPER = re.compile(r"(\w+)(?: = \[\w*\])?\(const char\* (\w+)\)\s*\{\s*return [\w:]*translate\([^;]*\b\2\b")
CONTEXT = re.compile(r'\bQT_TRANSLATE_NOOP\(\s*"(\w+)"')
CALL = r"(?:tr|translate|WindowText)\((?:[^()]|\((?:[^()]|\([^()]*\))*\))*\)"
PIECED = re.compile(rf"\b{CALL}\s*\+|\+=?\s*(?:\w+::)?{CALL}(?!\s*\.)")
UNMARKED = re.compile(r"\b(?:set(?:Text|ToolTip|Title|WindowTitle|AccessibleName|AccessibleDescription|PlaceholderText"
                      r"|SpecialValueText|Suffix|Prefix|StatusTip)|addItem|addAction|showMessage|(?:QLabel|QPushButton"
                      r"|QCheckBox|QRadioButton|QGroupBox|QAction|QDockWidget|QMenu))\(\s*"
                      r'(?:QStringLiteral|QLatin1String|QString)?\(?\s*"([^"]*[A-Za-z]{2}[^"]*)"')


def lupdate(files, *options):
    """Brings these files up to date, with the texts of the sources."""
    tool = next((path for path in (Path("/usr/lib/qt6/bin/lupdate"), Path("/usr/lib/qt5/bin/lupdate"))
                 if path.exists()), None) or shutil.which("lupdate") or sys.exit("languages.py: there is no lupdate")
    for file in files:
        plural = ["-pluralonly"] if file.stem.endswith("_en") else []
        # It takes a ' between digits for the beginning of a character and says so; see the_sources_mark().
        done = subprocess.run([tool, "-silent", "-locations", "none", "-source-language", "en", *options, *plural,
                               *ROOMS, "-ts", file], capture_output=True, text=True)
        if done.returncode:
            sys.exit(f"languages.py: lupdate failed\n{done.stderr}")


def messages(file):
    """Each message of the file, with its context."""
    for context in ElementTree.parse(file).getroot().iter("context"):
        for message in context.iter("message"):
            yield context.findtext("name"), message


def the_sources_mark():
    """The texts that the sources mark, and the faults of how they do it."""
    texts, faults, used, given = set(), [], {}, set()
    for file in (path for room in ROOMS for path in sorted(room.rglob("*")) if path.suffix in (".cpp", ".h")):
        code = file.read_text()

        def fault(found, says):
            line = code.count("\n", 0, found.start()) + 1
            faults.append(f"{file.relative_to(ROOT)}:{line}: {says}")

        for found in MARKED.finditer(code):
            parts = re.findall(r'"((?:[^"\\]|\\.)*)"', found[1] or found[2])
            texts.add("".join(parts).replace("\\n", "\n").replace('\\"', '"'))
        used.update((found[1], file.relative_to(ROOT)) for found in VARIABLE.finditer(code))
        given.update(CONTEXT.findall(code))
        for helper in HELPER.finditer(code):
            for found in re.finditer(rf'\b{helper[1]}\(\s*"', code):
                fault(found, f"the text of {helper[1]}() is not in QT_TRANSLATE_NOOP")
        for found in PIECED.finditer(code):
            fault(found, "a text is pieced together: use %1")
        for found in UNMARKED.finditer(code):
            if found[1] not in NO_TEXTS:
                fault(found, f'"{found[1]}" is not marked with tr()')
    faults += [f"{file}: no QT_TRANSLATE_NOOP has a text of {context}"
               for context, file in used.items() if context not in given]
    return texts, faults


def marks(text):
    """What a translation must have as the text has it: placeholders, a mnemonic, and how it begins and ends."""
    ends = re.fullmatch(r"(\s*).*?(\.\.\.|:)?(\s*)", text, re.S)
    return {"placeholders": sorted(set(re.findall(r"%(?:\d|n)", text))),
            "mnemonics": len(re.findall(r"&(?![&\s])", text)), "blanks": (ends[1], ends[3]), "end": ends[2]}


def judge(file, updated):
    """The faults of a language: `updated` is its file with the present texts."""
    language = file.stem.split("_")[-1]
    faults = []
    for context, message in messages(updated):
        source, translation = message.findtext("source"), message.find("translation")
        where = f"{file.relative_to(ROOT)}: {context}: {source!r}"
        state = translation.get("type")
        if state in ("vanished", "obsolete"):
            faults.append(f"{where} is in the sources no more")
            continue
        forms = [form.text or "" for form in translation.iter("numerusform")] or [translation.text or ""]
        if state == "unfinished" or not all(forms):
            faults.append(f"{where} has no translation")
            continue
        if message.get("numerus") and len(forms) != PLURAL_FORMS[language]:
            faults.append(f"{where} has {len(forms)} plural forms")
        for form in forms:
            wanted, found = marks(source), marks(form)
            faults += [f"{where}: other {what} in {form!r}" for what in wanted if wanted[what] != found[what]]
    return faults


def main():
    if sys.argv[1:] == ["update"]:
        lupdate(FILES, "-no-obsolete")
        return 0
    marked, faults = the_sources_mark()
    with tempfile.TemporaryDirectory() as folder:
        copies = [Path(shutil.copy(file, folder)) for file in FILES]
        lupdate(copies)
        for file, copy in zip(FILES, copies):
            faults += judge(file, copy)
            if not file.stem.endswith("_en"):
                found = {message.findtext("source") for _, message in messages(copy)}
                faults += [f"lupdate does not find {text!r}" for text in sorted(marked - found)]
    print("\n".join(faults) or f"{len(marked)} texts in {len(FILES)} languages")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
