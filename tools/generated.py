"""What the scripts that make source files share."""
import sys


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
