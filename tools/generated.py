"""What the scripts that make source files share."""
import pathlib
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
KINDS = ["traded", "iso", "local", "metal", "crypto", "withdrawn"]


def fail(message):
    sys.exit(f"{sys.argv[0]}: {message}")


def finish(files):
    """Writes the files (path to bytes), or with --check only compares them."""
    if sys.argv[1:] not in ([], ["--check"]):
        fail("the only argument is --check")
    if not sys.argv[1:]:
        for path, content in files.items():
            path.write_bytes(content)
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
