"""What the scripts that make source files share."""
import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
FACTS = ROOT / "fexora" / "resources" / "currency-facts.tsv"
FORMS = {  # fact: form of the value, form of the date
    "successor": (r"[A-Z]{3}( [0-9.]+(:[0-9.]+)?)?", r"\d{4}(-\d\d){0,2}"),
    "ratio": (r"", r"\d{4}-\d\d-\d\d"),
    "last-day": (r"", r"\d{4}-\d\d-\d\d"),
    "cash": (r"[0-9.]+( half-down)?", r"\d{4}-\d\d-\d\d"),
    "regions": (r"\+?[A-Z]{2}( [A-Z]{2})*", r".*"),
    "sign": (r"\S+( \S+)*", r".*"),
    "digits": (r"[0-4]|-", r".*"),
}
KINDS = ["traded", "iso", "local", "metal", "crypto", "withdrawn"]


def fail(message):
    sys.exit(f"{sys.argv[0]}: {message}")


def finish(files, data=None):
    """Writes the files (path to bytes), or with --check only compares them.

    Files that name the data they are made from are compared only where the machine's is the same.
    """
    if sys.argv[1:] not in ([], ["--check"]):
        fail("the only argument is --check")
    if not sys.argv[1:]:
        for path, content in files.items():
            path.write_bytes(content)
        return
    named = {found[0] for path in files if path.exists()
             for found in [re.search(r"CLDR \d+ of ICU \d+", path.read_text(encoding="utf-8"))]
             if found}
    if data and named and data not in named:
        print(f"not compared: made from {' and '.join(named)}, here is {data}")
        return
    stale = [str(path) for path, content in files.items()
             if not path.exists() or path.read_bytes() != content]
    if stale:
        fail("not up to date, run this without --check: " + " ".join(stale))


def currency_table():
    """The checked rows of fexora/resources/currencies.tsv: code, kind, English name, digits."""
    path = ROOT / "fexora" / "resources" / "currencies.tsv"
    rows = []
    for number, line in enumerate(path.read_text(encoding="utf-8").splitlines(), 1):
        if line.startswith("#"):
            continue
        cells = line.split("\t")
        if len(cells) != 4:
            fail(f"{path.name}:{number}: {len(cells)} columns instead of 4")
        code, kind, name, digits = cells
        if not code or code != code.strip().upper() or not code.isascii():
            fail(f"{path.name}:{number}: the code {code!r}")
        if kind not in KINDS:
            fail(f"{path.name}:{number}: the kind {kind!r}")
        if not name or name != name.strip():
            fail(f"{path.name}:{number}: the name {name!r}")
        if digits not in ("", "0", "2", "3", "4"):
            fail(f"{path.name}:{number}: the digits {digits!r}")
        rows.append((code, kind, name, digits))
    return rows


def currency_facts():
    """The checked rows of currency-facts.tsv: by code and fact the value and the date."""
    facts = {}
    for number, line in enumerate(FACTS.read_text(encoding="utf-8").splitlines(), 1):
        if line.startswith("#"):
            continue
        cells = line.split("\t")
        if len(cells) != 5 or not cells[4]:
            fail(f"{FACTS.name}:{number}: not five columns, the last with the source")
        code, fact, value, date, _ = cells
        forms = FORMS.get(fact)
        if forms is None or not all(map(re.fullmatch, forms, (value, date))):
            fail(f"{FACTS.name}:{number}: the {fact} {value!r} with the date {date!r}")
        if (code, fact) in facts:
            fail(f"{FACTS.name}:{number}: {code} has its {fact} already")
        facts[code, fact] = value, date
    return facts
